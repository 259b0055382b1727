#!/usr/bin/env python3
"""Writes the list of the BMP's CJK compatibility ideographs with their
canonical equivalents, which the table's test compares line by line:

    python3 tools/make_compatibility_list.py tests/tables/compatibility_ideographs.txt

One line each: the compatibility ideograph, a blank, the character it
stands for; from Unicode's UnicodeData.txt (Debian's unicode-data).
"""
import sys

import hanzi_sources as src


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_compatibility_list.py OUTPUT")
    pairs = src.read_compatibility_ideographs()
    with open(sys.argv[1], "w", encoding="utf-8", newline="\n") as f:
        f.write("# CJK compatibility ideographs of the BMP and their "
                "canonical equivalents\n")
        for char in sorted(pairs):
            f.write(f"{char} {pairs[char]}\n")
    print(f"{len(pairs)} pairs written to {sys.argv[1]}")


if __name__ == "__main__":
    main()
