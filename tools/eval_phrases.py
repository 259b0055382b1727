#!/usr/bin/env python3
"""Measures how well the phrase-reading files choose readings in context.

    python3 tools/eval_phrases.py [DATA_DIR]

Text: the Chinese manual pages of Debian's manpages-zh (zh_CN Simplified,
zh_TW Traditional), which the generator does not read. Each run of Chinese
characters is split the way the look-up splits it, into the words of the
file with the lowest total cost (a character no word covers costs
PENALTY), and every character takes its word's reading; a character no
word covers takes its first reading (taiwanreadings, then zhuyintable).

1. Against the common readers: per character, where pinyin-pro and
   @napi-rs/pinyin (with its phrase segmentation) give the same reading,
   the share of characters, and of characters with several readings in
   zhuyintable, that read the same (tone included; the neutral tone
   counts as a tone).
2. Between the standards: inside the words that both libchewing and
   CC-CEDICT list (found in the Traditional text by longest match), the
   characters that libchewing reads otherwise than CC-CEDICT (neutral tone
   and 一/不 aside); the share that follows libchewing under the Taiwan
   files, and the share that follows CC-CEDICT under the mainland file.
"""

import glob
import gzip
import os
import re
import subprocess
import sys

import phrase_sources as ps
from chewing_dict import read_chewing

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
PENALTY = 2000
MAN_DIR = "/usr/share/man"


def read_phrases(path):
    entries = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            word, readings, cost = line.rstrip("\n").split("\t")
            entries[word] = (readings.split(" "), int(cost))
    return entries


def read_first_readings(data_dir, taiwan):
    first = {}
    with open(os.path.join(data_dir, "zhuyintable"), encoding="utf-8") as f:
        for line in f:
            char, _, readings = line.rstrip("\n").partition("   ")
            first[char] = readings.split("  ")
    if taiwan:
        with open(os.path.join(data_dir, "taiwanreadings"),
                  encoding="utf-8") as f:
            for line in f:
                char, reading = line.rstrip("\n").split("\t")
                rest = [r for r in first.get(char, []) if r != reading]
                first[char] = [reading] + rest
    return first


def split_readings(run, entries, longest, first):
    """The readings of a run by the split with the lowest total cost."""
    n = len(run)
    best = [0] + [None] * n
    back = [0] * (n + 1)
    for i in range(1, n + 1):
        best[i] = best[i - 1] + PENALTY
        back[i] = i - 1
        for j in range(max(0, i - longest), i):
            e = entries.get(run[j:i])
            if e and best[j] + e[1] < best[i]:
                best[i] = best[j] + e[1]
                back[i] = j
    result = [None] * n
    i = n
    while i > 0:
        j = back[i]
        e = entries.get(run[j:i])
        if e and (i - j > 1 or best[i] == best[j] + e[1]):
            result[j:i] = e[0]
        else:
            result[j] = first.get(run[j], ["?"])[0]
        i = j
    return result


def man_text(locale):
    runs = []
    for path in sorted(glob.glob(os.path.join(MAN_DIR, locale, "man*",
                                              "*.gz"))):
        with gzip.open(path, "rt", encoding="utf-8", errors="replace") as f:
            for line in f:
                if line.startswith((".", "'")):
                    continue
                line = re.sub(r"\\f[A-Z0-9]|\\[-&/,]", "", line)
                runs += re.findall(r"[\u3007\u3400-\u4dbf\u4e00-\u9fff]+",
                                   line)
    return runs


def references(runs):
    text = "\n".join(runs) + "\n"
    out = subprocess.run(["node", os.path.join(HERE, "eval_reference.mjs"),
                          os.path.join(ps.NPM_DIR, "node_modules")],
                         input=text, capture_output=True, text=True,
                         check=True).stdout.split("\n")
    result = []
    for run, line in zip(runs, out):
        a, _, b = line.partition("\t")
        a, b = a.split(" "), b.split(" ")
        agreed = []
        for i in range(len(run)):
            x = normal(a[i]) if i < len(a) and len(a) == len(run) else None
            y = normal(b[i]) if i < len(b) and len(b) == len(run) else None
            agreed.append(x if x and x == y else None)
        result.append(agreed)
    return result


def normal(numbered):
    s = numbered.lower().replace("ü", "v")
    if not s or not s[0].isalpha():
        return None
    if s[-1] == "0":
        s = s[:-1] + "5"
    elif not s[-1].isdigit():
        s += "5"
    return s


def zhuyin_to_pinyin():
    table = {}
    with open(os.path.join(HERE, "standard_syllables.txt"),
              encoding="utf-8") as f:
        for line in f:
            if line.strip() and not line.startswith("#"):
                zhuyin, pinyin = line.split()[:2]
                table[zhuyin] = pinyin.replace("ü", "v")
    tones = {"": "1", "ˊ": "2", "ˇ": "3", "ˋ": "4", "˙": "5"}

    def convert(reading):
        letters = ps.letters_of(reading)
        if letters not in table:
            return reading
        return table[letters] + tones[ps.tone_of(reading)]
    return convert


def score_common(runs, refs, entries, first, polyphonic, to_pinyin):
    longest = max(len(w) for w in entries)
    total = right = poly = poly_right = 0
    for run, agreed in zip(runs, refs):
        ours = split_readings(run, entries, longest, first)
        for ch, mine, ref in zip(run, ours, agreed):
            if ref is None:
                continue
            ok = to_pinyin(mine) == ref
            total += 1
            right += ok
            if ch in polyphonic:
                poly += 1
                poly_right += ok
    return total, right, poly, poly_right


def standard_pairs(syllables):
    """{word: {position: (mainland reading, {Taiwan readings})}} where
    libchewing and CC-CEDICT read a character of a word differently."""
    chewing = {}
    for text, readings, _ in read_chewing():
        if len(text) > 1 and len(text) == len(readings):
            chewing.setdefault(text, []).append(ps.citation(text, readings))
    pairs = {}
    for trad, _, pinyin, _ in ps.read_cedict():
        if trad not in chewing or pinyin != pinyin.lower():
            continue
        mainland = syllables.from_pinyin(pinyin)
        if not mainland or len(mainland) != len(trad):
            continue
        for i, (ch, m) in enumerate(zip(trad, mainland)):
            taiwan = {r[i] for r in chewing[trad]}
            if ch in (ps.ONE, ps.NOT) or m.endswith("˙") or m in taiwan or \
                    any(t.endswith("˙") for t in taiwan):
                continue
            pairs.setdefault(trad, {})[i] = (m, taiwan)
    return {w: p for w, p in pairs.items()}, {w for w in chewing}


def differing(runs, pairs, words):
    """[(run, character, mainland reading, {Taiwan readings})] for the
    characters read differently inside the words of standard_pairs, found
    in each run by longest match."""
    longest = max(len(w) for w in words)
    found = []
    for r, run in enumerate(runs):
        i = 0
        while i < len(run):
            for n in range(min(longest, len(run) - i), 1, -1):
                if run[i:i + n] in words:
                    break
            else:
                i += 1
                continue
            for k, (m, tw) in pairs.get(run[i:i + n], {}).items():
                found.append((r, i + k, m, tw))
            i += n
    return found


def score_standards(runs, pairs, words, entries, first, taiwan):
    entries_longest = max(len(w) for w in entries)
    ours = [split_readings(run, entries, entries_longest, first)
            for run in runs]
    found = differing(runs, pairs, words)
    right = sum((ours[r][i] in tw) if taiwan else ours[r][i] == m
                for r, i, m, tw in found)
    return len(found), right


def main():
    data_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT,
                                                                  "data")
    to_pinyin = zhuyin_to_pinyin()
    mainland = read_phrases(os.path.join(data_dir, "phrasereadings"))
    taiwan = read_phrases(os.path.join(data_dir, "phrasereadings-tw"))
    first_cn = read_first_readings(data_dir, False)
    first_tw = read_first_readings(data_dir, True)
    polyphonic = {c for c, r in first_cn.items() if len(r) > 1}

    def pct(a, b):
        return f"{100.0 * a / b:.2f}% of {b}" if b else "n/a"

    texts = {"Simplified (zh_CN)": man_text("zh_CN"),
             "Traditional (zh_TW)": man_text("zh_TW")}
    for name, runs in texts.items():
        refs = references(runs)
        t, r, p, pr = score_common(runs, refs, mainland, first_cn,
                                   polyphonic, to_pinyin)
        print(f"{name}, mainland file, where pinyin-pro and @napi-rs/pinyin "
              f"agree: characters {pct(r, t)}, polyphonic {pct(pr, p)}")
    pairs, words = standard_pairs(ps.Syllables())
    runs = texts["Traditional (zh_TW)"]
    t, r = score_standards(runs, pairs, words, taiwan, first_tw, True)
    print(f"Traditional, where the standards differ: Taiwan files follow "
          f"Taiwan for {pct(r, t)}")
    t, r = score_standards(runs, pairs, words, mainland, first_cn, False)
    print(f"Traditional, where the standards differ: mainland file follows "
          f"the mainland for {pct(r, t)}")


if __name__ == "__main__":
    main()
