#!/usr/bin/env python3
"""Builds data/tokenizerlexicon, the word list of the Tokenizer tool.

Sources (Debian packages):
  rime-essay      /usr/share/rime-data/essay.txt: word<TAB>weight, Traditional
  opencc          TSCharacters.ocd2, read through opencc_dict

The essay list is a vocabulary for an input method: besides words it holds
many frequent word pairs ("我的", "中國人"). A pair is dropped when it is rare
next to the rarer of its two halves, so that the tool cuts it into its
words. Words are keyed by their Simplified spelling (Traditional characters
mapped one by one, first candidate), which lets Simplified and Traditional
text meet the same entries; weights of words that meet are added.

Output, UTF-8 text:
  line 1:  quillmere-lexicon 1 <mapping lines> <word lines> <unknown cost>
  mapping: <Traditional character><TAB><Simplified character>, sorted by bytes
  words:   <key><TAB><cost>, sorted by bytes
A cost is -ln(probability) in hundredths, an integer; the unknown cost is
what a character that no word covers costs as a word of its own.
"""

import argparse
import math
import subprocess
import sys
import tempfile

ESSAY = "/usr/share/rime-data/essay.txt"
TS_CHARACTERS = "/usr/share/opencc/TSCharacters.ocd2"
# An entry is taken for a pair of words when it comes no more than this many
# times as often as its two halves would together by chance: most true words
# stand far above it, "我的" and "是在" near 2, "看了" near 8...
PAIR_ASSOCIATION = 30
# ...or, from three characters on, when its weight is below this share of the
# rarer half, as with "中國人" next to "中國".
PAIR_SHARE = 0.12
# Weight given to entries listed with weight 0.
ZERO_WEIGHT = 0.5


def read_essay(path):
    weights = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.rstrip("\n").split("\t")
            if len(fields) < 2 or not fields[0]:
                continue
            word = fields[0]
            weights[word] = weights.get(word, 0) + max(int(fields[1]), 0)
    return weights


def read_mapping(path):
    with tempfile.NamedTemporaryFile(suffix=".txt") as out:
        subprocess.run(["opencc_dict", "-i", path, "-o", out.name, "-f", "ocd2",
                        "-t", "text"], check=True)
        mapping = {}
        with open(out.name, encoding="utf-8") as f:
            for line in f:
                fields = line.rstrip("\n").split("\t")
                if len(fields) == 2 and len(fields[0]) == 1:
                    target = fields[1].split(" ")[0]
                    if len(target) == 1 and target != fields[0]:
                        mapping[fields[0]] = target
        return mapping


def is_pair(word, weights, total):
    """True when `word` splits into two listed words and looks like a pair
    of them rather than a word of its own."""
    weight = weights[word]
    for cut in range(1, len(word)):
        head, tail = word[:cut], word[cut:]
        if head not in weights or tail not in weights:
            continue
        chance = max(weights[head], 1) * max(weights[tail], 1) / total
        if weight <= PAIR_ASSOCIATION * chance:
            return True
        if len(word) > 2 and weight < PAIR_SHARE * min(weights[head],
                                                       weights[tail]):
            return True
    return False


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("output")
    parser.add_argument("--essay", default=ESSAY)
    parser.add_argument("--ts", default=TS_CHARACTERS)
    parser.add_argument("--dropped", help="write the dropped pairs here")
    args = parser.parse_args()

    weights = read_essay(args.essay)
    mapping = read_mapping(args.ts)
    total = sum(weights.values())
    dropped = [w for w in weights if len(w) > 1 and is_pair(w, weights, total)]
    for word in dropped:
        del weights[word]
    if args.dropped:
        with open(args.dropped, "w", encoding="utf-8") as f:
            for word in sorted(dropped, key=lambda w: -weights.get(w, 0)):
                f.write(word + "\n")

    merged = {}
    for word, weight in weights.items():
        key = "".join(mapping.get(c, c) for c in word)
        merged[key] = merged.get(key, 0) + (weight if weight > 0 else ZERO_WEIGHT)
    total = sum(merged.values())

    def cost(weight):
        return round(-math.log(weight / total) * 100)

    unknown = cost(ZERO_WEIGHT) + 500
    maps = sorted((t.encode(), s.encode()) for t, s in mapping.items())
    words = sorted((k.encode(), cost(w)) for k, w in merged.items())
    with open(args.output, "wb") as out:
        out.write(b"quillmere-lexicon 1 %d %d %d\n" %
                  (len(maps), len(words), unknown))
        for t, s in maps:
            out.write(t + b"\t" + s + b"\n")
        for key, c in words:
            out.write(key + b"\t" + str(c).encode() + b"\n")
    print(f"{len(words)} words, {len(maps)} mappings, {len(dropped)} pairs "
          f"dropped", file=sys.stderr)


if __name__ == "__main__":
    main()
