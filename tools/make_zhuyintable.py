#!/usr/bin/env python3
"""Builds data/zhuyintable: every BMP character with a Mandarin reading.

    python3 tools/make_zhuyintable.py data/zhuyintable

A line is the character, three blanks, its readings in Zhuyin two blanks
apart, LF; the lines go in code point order. Readings come from
terra_pinyin (toned readings with their shares of use, written for
Traditional text); characters it lacks take Unihan's kMandarin,
kHanyuPinlu, kTGHZ2013 and kXHC1983.

Order: the most used reading first, by terra_pinyin's share, then by
kHanyuPinlu's count. Readings with a share of 0% are left out unless nothing
else remains. A character that OpenCC turns into another one also serves as
a Simplified form, and terra_pinyin, reading it as a Traditional character,
misses or zeroes how it is read then (几 ㄐㄧˇ, 长 ㄔㄤˊ); such a character
also takes the readings of kMandarin, kHanyuPinlu and kTGHZ2013, which come
from mainland usage, and when it is mainly a Simplified form it is ordered
by kHanyuPinlu first, then by kMandarin's preferred reading.

Syllables: those of tools/standard_syllables.txt; a reading outside them
(syllabic m, hm, Taiwanese-only spellings) is dropped while the character
keeps another one, and hm and hng, which Zhuyin can't spell, always.
"""

import os
import re
import sys

import hanzi_sources as src

HERE = os.path.dirname(os.path.abspath(__file__))

INITIALS = [("zh", "ㄓ"), ("ch", "ㄔ"), ("sh", "ㄕ"), ("b", "ㄅ"), ("p", "ㄆ"),
            ("m", "ㄇ"), ("f", "ㄈ"), ("d", "ㄉ"), ("t", "ㄊ"), ("n", "ㄋ"),
            ("l", "ㄌ"), ("g", "ㄍ"), ("k", "ㄎ"), ("h", "ㄏ"), ("j", "ㄐ"),
            ("q", "ㄑ"), ("x", "ㄒ"), ("r", "ㄖ"), ("z", "ㄗ"), ("c", "ㄘ"),
            ("s", "ㄙ")]
RIMES = {
    "": "", "a": "ㄚ", "o": "ㄛ", "e": "ㄜ", "eh": "ㄝ", "ai": "ㄞ", "ei": "ㄟ",
    "ao": "ㄠ", "ou": "ㄡ", "an": "ㄢ", "en": "ㄣ", "ang": "ㄤ", "eng": "ㄥ",
    "er": "ㄦ", "ong": "ㄨㄥ", "i": "ㄧ", "ia": "ㄧㄚ", "io": "ㄧㄛ",
    "ie": "ㄧㄝ", "iai": "ㄧㄞ", "iao": "ㄧㄠ", "iu": "ㄧㄡ", "iou": "ㄧㄡ",
    "ian": "ㄧㄢ", "in": "ㄧㄣ", "iang": "ㄧㄤ", "ing": "ㄧㄥ", "iong": "ㄩㄥ",
    "u": "ㄨ", "ua": "ㄨㄚ", "uo": "ㄨㄛ", "uai": "ㄨㄞ", "ui": "ㄨㄟ",
    "uei": "ㄨㄟ", "uan": "ㄨㄢ", "un": "ㄨㄣ", "uen": "ㄨㄣ", "uang": "ㄨㄤ",
    "ueng": "ㄨㄥ", "v": "ㄩ", "ve": "ㄩㄝ", "van": "ㄩㄢ", "vn": "ㄩㄣ",
}
# Syllables without an initial, spelled with y and w in pinyin.
ZERO_INITIAL = {
    "yi": "i", "ya": "ia", "yo": "io", "ye": "ie", "yai": "iai", "yao": "iao",
    "you": "iou", "yan": "ian", "yin": "in", "yang": "iang", "ying": "ing",
    "yong": "iong", "yu": "v", "yue": "ve", "yuan": "van", "yun": "vn",
    "wu": "u", "wa": "ua", "wo": "uo", "wai": "uai", "wei": "uei",
    "wan": "uan", "wen": "uen", "wang": "uang", "weng": "ueng",
    "wong": "ueng",
}
# Syllabic nasals and the like, as Zhuyin writes them.
SPECIAL = {"n": "ㄣ", "ng": "ㄥ", "eng": "ㄥ", "r": "ㄦ", "m": "ㄇ",
           "e": "ㄜ", "eh": "ㄝ", "er": "ㄦ"}
TONE_MARKS = {"1": "", "2": "ˊ", "3": "ˇ", "4": "ˋ", "5": "˙"}


def to_zhuyin(numbered):
    """'zhong1' -> 'ㄓㄨㄥ', 'de5' -> 'ㄉㄜ˙'; None when Zhuyin can't spell it."""
    m = re.fullmatch(r"([a-z]+)([1-5])", numbered.replace("ü", "v"))
    if not m:
        return None
    body, tone = m.groups()
    if body in SPECIAL:
        letters = SPECIAL[body]
    elif body in ZERO_INITIAL:
        letters = RIMES[ZERO_INITIAL[body]]
    elif body in RIMES and body not in ("", "i", "u", "v", "iu", "ui", "un"):
        letters = RIMES[body]
    else:
        for latin, zhuyin in INITIALS:
            if body.startswith(latin):
                initial, rest = zhuyin, body[len(latin):]
                break
        else:
            return None
        if initial in "ㄐㄑㄒ" and rest.startswith("u"):
            rest = "v" + rest[1:]
        if initial in "ㄌㄋ" and rest == "ue":
            rest = "ve"
        if initial in "ㄓㄔㄕㄖㄗㄘㄙ" and rest == "i":
            rest = ""
        elif rest == "":
            return None  # hm, hng and the like
        if rest not in RIMES:
            return None
        letters = initial + RIMES[rest]
    return letters + TONE_MARKS[tone]


def read_standard_syllables():
    syllables = set()
    with open(os.path.join(HERE, "standard_syllables.txt"),
              encoding="utf-8") as f:
        for line in f:
            if line.strip() and not line.startswith("#"):
                syllables.add(line.split()[0])
    return syllables


def letters_of(reading):
    return reading.rstrip("ˊˇˋ˙")


def pinlu_counts(value):
    """'jǐ(2523) jī(216)' -> {'ㄐㄧˇ': 2523, 'ㄐㄧ': 216}."""
    counts = {}
    for syllable, count in re.findall(r"(\S+?)\((\d+)\)", value or ""):
        zhuyin = to_zhuyin(src.diacritic_to_numbered(syllable))
        if zhuyin:
            counts[zhuyin] = max(counts.get(zhuyin, 0), int(count))
    return counts


def unihan_readings(value):
    """The syllables of a Unihan reading field, with or without locators."""
    result = []
    for item in (value or "").split():
        syllables = item.split(":", 1)[-1]
        for syllable in syllables.split(","):
            zhuyin = to_zhuyin(src.diacritic_to_numbered(syllable))
            if zhuyin and zhuyin not in result:
                result.append(zhuyin)
    return result


def effective_weights(entries):
    """Shares for terra_pinyin's entries; an unmarked entry takes what the
    marked ones leave, shared evenly."""
    marked = sum(w for _, w in entries if w is not None)
    unmarked = sum(1 for _, w in entries if w is None)
    rest = max(100.0 - marked, 0.0) / unmarked if unmarked else 0.0
    return [(s, rest if w is None else w) for s, w in entries]


def keep_spellable(candidates, standard):
    """Standard syllables only, unless none is left: then what Zhuyin can
    spell at all."""
    good = [r for r in candidates if letters_of(r) in standard]
    return good if good else candidates


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_zhuyintable.py OUTPUT")
    standard = read_standard_syllables()
    terra = src.read_terra_pinyin()
    unihan = src.read_unihan("Unihan_Readings.txt.bz2",
                             ["kMandarin", "kHanyuPinlu", "kTGHZ2013",
                              "kXHC1983"])
    st = src.read_opencc_st()
    pinlu = {c: pinlu_counts(v) for c, v in unihan["kHanyuPinlu"].items()}

    def terra_readings(char):
        result = {}
        for syllable, weight in effective_weights(terra.get(char, [])):
            zhuyin = to_zhuyin(syllable)
            if zhuyin and weight > result.get(zhuyin, -1.0):
                result[zhuyin] = weight
        return result

    lines = []
    chars = set(terra) | set(unihan["kMandarin"])
    for char in sorted(c for c in chars if 0x800 <= ord(c) <= 0xFFFF):
        counts = pinlu.get(char, {})
        mandarin = unihan_readings(unihan["kMandarin"].get(char))
        modern = (mandarin + list(counts) +
                  unihan_readings(unihan["kTGHZ2013"].get(char)))
        if char in terra:
            weights = terra_readings(char)
            forms = [t for t in st.get(char, []) if t != char]
            if forms:
                # terra_pinyin reads the character as a Traditional one and
                # misses or zeroes what it is read as for the forms it
                # stands for; the mainland sources know those readings.
                for r in modern:
                    if weights.get(r, 0) == 0:
                        weights[r] = 1e-9
            order = list(weights)
            main = mandarin[:1]
            if forms and st[char][0] != char:
                key = lambda r: (-counts.get(r, -1), r not in main,
                                 -weights[r], order.index(r))
            else:
                key = lambda r: (-weights[r], -counts.get(r, -1),
                                 order.index(r))
            live = [r for r in order if weights[r] > 0] or order
            readings = sorted(keep_spellable(live, standard), key=key)
        else:
            order = []
            for r in modern + unihan_readings(unihan["kXHC1983"].get(char)):
                if r not in order:
                    order.append(r)
            readings = sorted(keep_spellable(order, standard),
                              key=lambda r: (-counts.get(r, -1),
                                             order.index(r)))
        if readings:
            lines.append(char + "   " + "  ".join(readings) + "\n")
    with open(sys.argv[1], "w", encoding="utf-8", newline="\n") as f:
        f.writelines(lines)
    print(f"{len(lines)} characters written to {sys.argv[1]}")


if __name__ == "__main__":
    main()
