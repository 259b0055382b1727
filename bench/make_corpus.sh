#!/bin/sh
# Builds the benchmark corpus from the Chinese manual pages that Debian's
# manpages-zh ships: zh_CN pages are Simplified, zh_TW pages Traditional.
# Any Debian machine rebuilds the same text, so figures can be compared.
#
#   bench/make_corpus.sh [OUTDIR]      (default: build/corpus)
#
# Writes, for S in simplified and traditional:
#   S.txt           every line of the pages that holds a Chinese character,
#                   roff markup stripped (a few MB)
#   S-1k.txt, S-100k.txt, S-1m.txt, S-10m.txt
#                   the same text cut (or repeated) to about that many bytes,
#                   always at a line end
set -eu

here=$(cd "$(dirname "$0")" && pwd)
out=${1:-$here/../build/corpus}
mkdir -p "$out"
out=$(cd "$out" && pwd)

# The package, not the folders: passwd and man-db put a few zh_CN pages there
# too, which would make a corpus of a few KB.
if ! dpkg-query -W -f='${Status}' manpages-zh 2>/dev/null | grep -q "ok installed"; then
  if [ "$(id -u)" -eq 0 ]; then
    apt-get install -y -o DPkg::Lock::Timeout=600 manpages-zh >/dev/null
  else
    sudo apt-get install -y manpages-zh >/dev/null
  fi
fi

python3 - "$out" <<'PY'
import glob, gzip, os, re, sys

out = sys.argv[1]
SIZES = [("1k", 1 << 10), ("100k", 100 << 10), ("1m", 1 << 20), ("10m", 10 << 20)]

# Font and size changes, special characters, string and number registers.
ESCAPES = [
    (re.compile(r'\\f(\[[^\]]*\]|\(..|.)'), ''),
    (re.compile(r'\\s[+-]?\d+'), ''),
    (re.compile(r'\\\((em|en)'), '—'),
    (re.compile(r'\\\(bu'), '•'),
    (re.compile(r'\\\((lq|rq|oq|cq|dq)'), '"'),
    (re.compile(r'\\\(..'), ''),
    (re.compile(r'\\\[[^\]]*\]'), ''),
    (re.compile(r'\\\*(\(..|\[[^\]]*\]|.)'), ''),
    (re.compile(r'\\n(\(..|\[[^\]]*\]|.)'), ''),
    (re.compile(r'\\[/,&:%|^)]'), ''),
    (re.compile(r'\\[-e]'), lambda m: '-' if m.group(0) == '\\-' else '\\'),
    (re.compile(r'\\ '), ' '),
    (re.compile(r'\\c$'), ''),
]
# Requests whose arguments are running text worth keeping.
TEXT_REQUESTS = re.compile(r'^\.(SH|SS|B|I|BI|BR|IB|IR|RB|RI|IP|TP|Nm|Nd)\b\s*(.*)$')
CJK = re.compile(r'[\u3400-\u9fff\uf900-\ufaff]')

def strip(text):
    lines = []
    for line in text.splitlines():
        if line.startswith('.\\"') or line.startswith("'\\\"") or line.startswith('\\"'):
            continue
        m = TEXT_REQUESTS.match(line)
        if m:
            line = m.group(2).replace('"', '')
        elif line.startswith('.') or line.startswith("'"):
            continue
        line = line.split('\\"')[0]
        for pattern, repl in ESCAPES:
            line = pattern.sub(repl, line)
        line = line.strip()
        if CJK.search(line):
            lines.append(line)
    return lines

for locale, name in (("zh_CN", "simplified"), ("zh_TW", "traditional")):
    lines = []
    for path in sorted(glob.glob(f"/usr/share/man/{locale}/man*/*")):
        if os.path.islink(path):
            continue
        opener = gzip.open if path.endswith('.gz') else open
        with opener(path, 'rb') as f:
            text = f.read().decode('utf-8', 'replace')
        lines += strip(text)
    whole = ''.join(l + '\n' for l in lines).encode('utf-8')
    with open(os.path.join(out, name + '.txt'), 'wb') as f:
        f.write(whole)
    for label, size in SIZES:
        data = bytearray()
        while len(data) < size:
            data += whole
        # The last line end at or before the size (line ends are ASCII, so
        # this never cuts a character).
        cut = data.rfind(b'\n', 0, size + 1) + 1
        with open(os.path.join(out, f"{name}-{label}.txt"), 'wb') as f:
            f.write(bytes(data[:cut]))
    chinese = sum(len(CJK.findall(l)) for l in lines)
    print(f"{name}: {len(whole)} bytes, {chinese} Chinese characters, {len(lines)} lines")
PY
ls -l "$out"
