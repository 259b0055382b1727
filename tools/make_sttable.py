#!/usr/bin/env python3
"""Builds data/STTABLE: GB 2312 code -> Big5 code of the Traditional form.

    python3 tools/make_sttable.py data/STTABLE

Cells of 2 bytes, rows of 94 cells for the trail bytes 161 to 254. The
rows of the lead bytes 161 to 163 come first (bytes 0 to 563), then one
spare cell (564), then the rows of the lead bytes 176 to 247 from byte 566;
14,102 bytes in all.

A cell holds the Big5 code of the first Traditional form OpenCC gives
(its preferred one) that Big5 has; a character OpenCC leaves alone is
the same in both scripts and holds its own code, and one that Big5 lacks
tries Unihan's kTraditionalVariant last. A character with
no form in Big5, a code that is no GB 2312 character, and the spare cell
hold NO_FORM: a code Big5 decodes (to a fullwidth question mark) and that
no line of zhuyintable has, so the search after it simply misses.
"""

import sys

import hanzi_sources as src

ROWS = list(range(161, 164)) + list(range(176, 248))
TRAILS = range(161, 255)
SPARE = 564
SIZE = 566 + 72 * 188
NO_FORM = bytes([0xA1, 0x48])  # U+FF1F FULLWIDTH QUESTION MARK


def cell(lead, trail):
    if lead < 176:
        return (lead - 161) * 188 + (trail - 161) * 2
    return 566 + (lead - 176) * 188 + (trail - 161) * 2


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_sttable.py OUTPUT")
    from_gb = src.Iconv("UTF-8", "EUC-CN")
    to_big5 = src.Iconv("BIG5", "UTF-8")
    from_big5 = src.Iconv("UTF-8", "BIG5")
    assert from_big5(NO_FORM) == "？".encode()
    st = src.read_opencc_st()
    variants = src.read_unihan("Unihan_Variants.txt.bz2",
                               ["kTraditionalVariant"])["kTraditionalVariant"]

    def big5(char):
        code = to_big5(char.encode())
        # Only a code that comes back as the same character will find it.
        if code and len(code) == 2 and from_big5(code) == char.encode():
            return code
        return None

    table = bytearray(NO_FORM * (SIZE // 2))
    without_form = []
    for lead in ROWS:
        for trail in TRAILS:
            decoded = from_gb(bytes([lead, trail]))
            if not decoded:
                continue
            char = decoded.decode()
            forms = st.get(char, []) + [char]
            forms += [chr(int(v[2:], 16))
                      for v in variants.get(char, "").split()]
            code = next((c for c in map(big5, forms) if c), None)
            if code is None:
                without_form.append(char)
                continue
            table[cell(lead, trail):cell(lead, trail) + 2] = code
    assert len(table) == SIZE
    with open(sys.argv[1], "wb") as f:
        f.write(table)
    print(f"{SIZE} bytes written to {sys.argv[1]}; no Big5 form for "
          f"{len(without_form)}: {''.join(without_form)}")


if __name__ == "__main__":
    main()
