#!/usr/bin/env python3
"""Reads libchewing's binary phrase dictionary (Debian: libchewing3-data).

    python3 tools/chewing_dict.py [DIR] | head

prints every entry as PHRASE<TAB>ZHUYIN<TAB>FREQUENCY.

Layout, as the two packaged files show it:
- dictionary.dat holds the phrases as NUL-terminated UTF-8 strings.
- index_tree.dat is a tree of 8-byte records: a 16-bit key (little endian),
  then two 24-bit fields. A record with a non-zero key is an inner node: the
  key is one syllable and the fields are the first and one-past-last index
  of its children. Record 0 is the root. A record with key 0 is a leaf: the
  fields are the phrase's byte offset in dictionary.dat and its frequency.
  The keys on the way from the root to a leaf spell the phrase's syllables.
- A syllable key packs initial << 9 | medial << 7 | final << 3 | tone, each
  an index into the Zhuyin letters in alphabetical order (0 = none); tone 0
  is the first tone, 1 the neutral tone, 2 to 4 the marks ˊ ˇ ˋ.
"""

import os
import struct
import sys

CHEWING_DIR = "/usr/share/libchewing"

INITIALS = "ㄅㄆㄇㄈㄉㄊㄋㄌㄍㄎㄏㄐㄑㄒㄓㄔㄕㄖㄗㄘㄙ"
MEDIALS = "ㄧㄨㄩ"
FINALS = "ㄚㄛㄜㄝㄞㄟㄠㄡㄢㄣㄤㄥㄦ"
TONES = ["", "˙", "ˊ", "ˇ", "ˋ"]


def syllable(key):
    """The Zhuyin spelling of a syllable key; None if the key is malformed."""
    initial, medial = key >> 9, (key >> 7) & 3
    final, tone = (key >> 3) & 15, key & 7
    if initial > len(INITIALS) or final > len(FINALS) or tone >= len(TONES):
        return None
    letters = ((INITIALS[initial - 1] if initial else "") +
               (MEDIALS[medial - 1] if medial else "") +
               (FINALS[final - 1] if final else ""))
    return letters + TONES[tone] if letters else None


def read_chewing(directory=CHEWING_DIR):
    """[(phrase, [syllables], frequency)] in the order of the tree."""
    with open(os.path.join(directory, "index_tree.dat"), "rb") as f:
        tree = f.read()
    with open(os.path.join(directory, "dictionary.dat"), "rb") as f:
        phrases = f.read()
    count = len(tree) // 8

    def record(i):
        key, = struct.unpack_from("<H", tree, i * 8)
        first = int.from_bytes(tree[i * 8 + 2:i * 8 + 5], "little")
        second = int.from_bytes(tree[i * 8 + 5:i * 8 + 8], "little")
        return key, first, second

    result = []
    stack = [(0, [])]
    while stack:
        node, path = stack.pop()
        _, begin, end = record(node)
        children = []
        for i in range(begin, min(end, count)):
            key, first, second = record(i)
            if key == 0:
                stop = phrases.find(b"\0", first)
                if path and stop > first:
                    text = phrases[first:stop].decode("utf-8", "replace")
                    result.append((text, list(path), second))
            elif i > node:  # children lie after their parent: no cycles
                zhuyin = syllable(key)
                if zhuyin:
                    children.append((i, path + [zhuyin]))
        stack.extend(reversed(children))
    return result


def main():
    directory = sys.argv[1] if len(sys.argv) > 1 else CHEWING_DIR
    out = sys.stdout
    for text, syllables, frequency in read_chewing(directory):
        out.write(f"{text}\t{' '.join(syllables)}\t{frequency}\n")


if __name__ == "__main__":
    main()
