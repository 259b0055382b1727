#!/usr/bin/env python3
"""Writes the running text of the accuracy check, one file per script.

    make_text.py OUTDIR

OUTDIR/simplified.txt and OUTDIR/traditional.txt: lines of Chinese text
taken, at even strides, from three kinds of Debian text that the reading
table is not built from. Each kind gives up to its share of Chinese
characters:

  debian-reference-zh-cn/-zh-tw   the Debian Reference, a book of prose
  manpages-zh                     manual pages (zh_CN, zh_TW), roff stripped
  coreutils, bash, apt, ...       message catalogues (.mo) of packages
                                  that every Debian system has

The same packages give the same text. Beside each, NAME.runs holds its
runs of Chinese characters one a line, and NAME.refruns the same runs as
the references are given them: Traditional runs in their Simplified
spelling (OpenCC's t2s, character for character; a run whose length that
changes stays as it is), since both references read Simplified text best.
"""
import glob
import gettext
import gzip
import os
import re
import subprocess
import sys

CJK = re.compile(r"[\u3400-\u9fff\uf900-\ufaff]")
RUN = re.compile(r"[\u3400-\u9fff\uf900-\ufaff]+")
SHARES = {"reference": 9000, "manpages": 7000, "messages": 4000}
CATALOGUES = ["coreutils", "bash", "apt", "dpkg", "tar", "sed", "grep",
              "diffutils", "findutils", "libc", "shadow"]
LOCALES = {"simplified": ("zh_CN", "zh-cn"), "traditional": ("zh_TW", "zh-tw")}


def reference_lines(tag):
    path = f"/usr/share/debian-reference/debian-reference.{tag}.txt.gz"
    with gzip.open(path, "rt", encoding="utf-8", errors="replace") as f:
        return [line.strip() for line in f]


def roff_lines(text):
    lines = []
    for line in text.splitlines():
        if line.startswith((".\\\"", "'\\\"", "\\\"")):
            continue
        m = re.match(r"^\.(SH|SS|B|I|BI|BR|IB|IR|RB|RI|IP|TP)\b\s*(.*)$", line)
        if m:
            line = m.group(2).replace('"', "")
        elif line.startswith((".", "'")):
            continue
        line = re.sub(r"\\f(\[[^\]]*\]|\(..|.)|\\s[+-]?\d+|\\\(..|\\.", "",
                      line.split('\\"')[0])
        lines.append(line.strip())
    return lines


def manpage_lines(locale):
    lines = []
    for path in sorted(glob.glob(f"/usr/share/man/{locale}/man*/*")):
        if os.path.islink(path):
            continue
        opener = gzip.open if path.endswith(".gz") else open
        with opener(path, "rb") as f:
            lines += roff_lines(f.read().decode("utf-8", "replace"))
    return lines


def message_lines(locale):
    lines = []
    for name in CATALOGUES:
        path = f"/usr/share/locale/{locale}/LC_MESSAGES/{name}.mo"
        if not os.path.exists(path):
            continue
        with open(path, "rb") as f:
            catalogue = gettext.GNUTranslations(f)._catalog
        for key in sorted(catalogue, key=str):
            if key:  # the empty key holds the header
                lines += catalogue[key].splitlines()
    return [line.strip() for line in lines]


def sample(lines, share):
    """Lines at an even stride whose Chinese characters add up to about
    `share`."""
    lines = [line for line in lines if CJK.search(line)]
    total = sum(len(CJK.findall(line)) for line in lines)
    stride = max(1, total // share)
    picked, count = [], 0
    for line in lines[::stride]:
        if count >= share:
            break
        picked.append(line)
        count += len(CJK.findall(line))
    return picked


def main():
    out = sys.argv[1]
    os.makedirs(out, exist_ok=True)
    for name, (locale, tag) in LOCALES.items():
        lines = (sample(reference_lines(tag), SHARES["reference"]) +
                 sample(manpage_lines(locale), SHARES["manpages"]) +
                 sample(message_lines(locale), SHARES["messages"]))
        with open(os.path.join(out, name + ".txt"), "w", encoding="utf-8",
                  newline="\n") as f:
            f.writelines(line + "\n" for line in lines)
        runs = [r for line in lines for r in RUN.findall(line)]
        ref_runs = runs
        if name == "traditional":
            ref_runs = subprocess.run(
                ["opencc", "-c", "t2s.json"], input="\n".join(runs) + "\n",
                capture_output=True, text=True, check=True).stdout.split("\n")
            ref_runs = [s if len(s) == len(t) else t
                        for s, t in zip(ref_runs, runs)]
        for suffix, items in ((".runs", runs), (".refruns", ref_runs)):
            with open(os.path.join(out, name + suffix), "w", encoding="utf-8",
                      newline="\n") as f:
                f.writelines(item + "\n" for item in items)
        chinese = sum(len(CJK.findall(line)) for line in lines)
        print(f"{name}: {chinese} Chinese characters, {len(lines)} lines")


if __name__ == "__main__":
    main()
