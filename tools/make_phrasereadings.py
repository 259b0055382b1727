#!/usr/bin/env python3
"""Builds the phrase-reading files: words with their readings in context.

    python3 tools/make_phrasereadings.py data

writes data/phrasereadings (mainland standard), data/phrasereadings-tw
(Taiwan standard) and data/taiwanreadings (each character's first reading
by the Taiwan standard where it is not zhuyintable's first).

A phrase line is WORD<TAB>READINGS<TAB>COST: one Zhuyin syllable per
character in citation tones, and round(100 * -ln p) for the word's share p
of its frequency source. Simplified and Traditional spellings are lines of
their own with the same readings. Lines are sorted by their bytes.

Mainland: the words and readings of CC-CEDICT. Where it lists a word more
than once, the lower-case (common noun) entry that is no variant wins, then
the one with more senses, then the one whose syllables are the more counted
readings of their characters (Unihan kHanyuPinlu). The neutral tone stays
on particles and suffixes only; elsewhere a character takes its own tone.
Frequencies: the mean of the word's share in jieba's dictionary
(Simplified) and in rime-essay (Traditional), lowered for words whose
readings are rare ones of their characters. A single character stands for
the character used as a word on its own: its most counted reading.

Taiwan: the phrases of libchewing with their frequencies, and CC-CEDICT's
words that libchewing lacks (by the reading CC-CEDICT notes as Taiwan's, or
else the mainland reading with each character's Taiwan reading where the
mainland one is the character's first). Tone changes of 一 and 不 are
undone; a word libchewing lists with several readings takes its most
frequent one (ties: see chewing_words). Suffixes that libchewing reads with
a full tone although the word takes the neutral tone (我們 ㄇㄣˊ) are set by
rule. Frequencies: rime-essay, or libchewing's scaled to it where
rime-essay lacks the word. Simplified spellings come from CC-CEDICT or else
OpenCC's t2s conversion.

Rarer words whose readings the split into shorter words gives anyway are
left out: they change no reading.
"""

import math
import os
import statistics
import sys

import hanzi_sources as src
import phrase_sources as ps
from chewing_dict import read_chewing
from make_zhuyintable import pinlu_counts, unihan_readings

HERE = os.path.dirname(os.path.abspath(__file__))
ZHUYINTABLE = os.path.join(os.path.dirname(HERE), "data", "zhuyintable")

VARIANT_MARKS = ("variant of", "old variant", "unofficial variant",
                 "archaic variant", "used in ", "see ", "surname ")
# Suffixes that take the neutral tone when they end a word of two or more
# characters, whatever reading libchewing gives them there.
# Particles and suffixes that keep the neutral tone inside mainland words;
# elsewhere a neutral syllable of CC-CEDICT takes the character's full tone,
# as most readers of the mainland standard write it (时候 ㄏㄡˋ, 名字 ㄗˋ).
PARTICLES = set("的地得了们們么麼吗嗎呢吧啊呀嘛啦着著子头頭巴")
# The measure word after a demonstrative: 这个 ㄓㄜˋ ㄍㄜ˙ (but 一个 ㄍㄜˋ).
DEMONSTRATIVES = set("这這那哪")
NEUTRAL_SUFFIXES = {"們": "ㄇㄣ˙", "们": "ㄇㄣ˙", "麼": "ㄇㄜ˙", "么": "ㄇㄜ˙"}


# What the reader adds for a character that no word covers.
PENALTY = 2000
# Words at least this rare may be dropped when they change no reading.
PRUNE_FROM = 1000


def cost_of(p):
    return max(0, round(-100 * math.log(p)))


def read_zhuyintable(path=ZHUYINTABLE):
    table = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            char, _, readings = line.rstrip("\n").partition("   ")
            table[char] = readings.split("  ")
    return table


def write_phrases(path, entries):
    """entries: {word: (readings, cost)}."""
    lines = sorted(f"{w}\t{' '.join(r)}\t{c}\n" for w, (r, c) in
                   entries.items())
    lines.sort(key=lambda line: line.split("\t", 1)[0].encode("utf-8"))
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.writelines(lines)
    print(f"{len(lines)} words written to {path}")


class Shares:
    """A word's share of a count list, with half a count for unseen words."""

    def __init__(self, counts):
        self.counts = counts
        self.total = float(sum(counts.values()))

    def __call__(self, word):
        return self.counts.get(word, 0) / self.total

    def floor(self):
        return 0.5 / self.total


def full_tones(word, readings, pinlu, table):
    """Replaces the neutral tone of a mainland word by the character's own
    tone, except on particles, suffixes and the second of a doubled
    character (哥哥)."""
    result = list(readings)
    for i, (ch, r) in enumerate(zip(word, readings)):
        if not r.endswith("˙"):
            continue
        if i > 0 and (ch in PARTICLES or word[i - 1] == ch or
                      (ch in "个個" and word[i - 1] in DEMONSTRATIVES)):
            continue
        letters = ps.letters_of(r)
        counts = pinlu.get(ch, {})
        toned = [x for x in sorted(counts, key=lambda x: -counts[x])
                 if ps.letters_of(x) == letters and not x.endswith("˙")]
        toned += [x for x in table.get(ch, [])
                  if ps.letters_of(x) == letters and not x.endswith("˙")]
        if toned:
            result[i] = toned[0]
    return result


def is_variant(defs):
    return all(d.lower().startswith(VARIANT_MARKS) for d in defs)


ALPHA = 0.5


def rarity(word, readings, pinlu):
    """How much rarer the word's readings are than its characters' usual
    ones: a frequency list counts the string, and a string such as 中的
    is mostly two words, seldom the word 中的 ㄓㄨㄥˋ ㄉㄧˋ."""
    factor = 1.0
    for ch, r in zip(word, readings):
        counts = pinlu.get(ch)
        if counts:
            top = max(counts.values())
            own = counts.get(r, 0)
            if own == 0:
                same = [c for x, c in counts.items()
                        if ps.letters_of(x) == ps.letters_of(r)]
                own = max(same) if same else 0
            factor *= min(1.0, (own + 1.0) / (top + 1.0))
    return factor ** ALPHA


def pinlu_score(word, readings, pinlu):
    score = 0.0
    for ch, r in zip(word, readings):
        counts = pinlu.get(ch)
        if counts:
            score += math.log((counts.get(r, 0) + 0.5) /
                              (sum(counts.values()) + 0.5))
    return score


def standalone_reading(char, candidates, pinlu, table):
    """The reading of a character standing alone: its most counted one in
    kHanyuPinlu, with a full tone unless it is a particle (里 ㄌㄧˇ); else
    zhuyintable's first if CC-CEDICT has it; else CC-CEDICT's first."""
    counts = pinlu.get(char)
    if counts:
        order = sorted(counts, key=lambda r: (-counts[r], r))
        toned = [r for r in order if not r.endswith("˙")]
        if order[0].endswith("˙") and char not in PARTICLES:
            toned += [r for r in table.get(char, []) if not r.endswith("˙")]
            if toned:
                return toned[0]
        return order[0]
    first = table.get(char, [None])[0]
    if first in candidates:
        return first
    return candidates[0]


def build_mainland(cedict, syllables, pinlu, table, jieba, essay):
    """{word: (readings, p)} by the mainland standard, and each character's
    reading standing alone."""
    by_word = {}
    for trad, simp, pinyin, defs in cedict:
        readings = syllables.from_pinyin(pinyin)
        if readings is None or len(readings) != len(trad) or \
                len(trad) != len(simp):
            continue
        lower = pinyin == pinyin.lower()
        for word in dict.fromkeys((trad, simp)):
            if not ps.is_word(word):
                continue
            readings = ps.citation(word, readings)
            if len(word) > 1:
                readings = full_tones(word, readings, pinlu, table)
            key = (lower, not is_variant(defs), len(defs),
                   pinlu_score(word, readings, pinlu))
            by_word.setdefault(word, []).append((key, readings, trad, simp))

    shares_j, shares_e = Shares(jieba), Shares(essay)
    words = {}
    for word, options in by_word.items():
        _, readings, trad, simp = max(options, key=lambda o: o[0])
        p = 0.5 * (shares_j(simp) + shares_e(trad))
        seen = p > 0
        if not seen:
            p = 0.5 * (shares_j.floor() + shares_e.floor())
        if len(word) > 1:
            p *= rarity(word, readings, pinlu)
        words[word] = (readings, p, seen,
                       [o[1] for o in sorted(options, key=lambda o: o[0],
                                             reverse=True)])

    result = {}
    alone = {}
    for word, (readings, p, seen, options) in words.items():
        if len(word) == 1:
            candidates = [o[0] for o in options]
            r = standalone_reading(word, candidates, pinlu, table)
            alone[word] = r
            result[word] = ([r], p)
    for word, (readings, p, seen, _) in words.items():
        if len(word) > 1:
            plain = all(alone.get(ch) == r for ch, r in zip(word, readings))
            if seen or not plain:
                result[word] = (readings, p)
    return result, alone


def cedict_neutral(cedict, syllables):
    """{word: {position}}: the particles and suffixes CC-CEDICT reads with
    the neutral tone in a word (覺得 ㄉㄜ˙), under both spellings."""
    result = {}
    for trad, simp, pinyin, _ in cedict:
        readings = syllables.from_pinyin(pinyin)
        if not readings or len(readings) != len(trad) or len(trad) < 2:
            continue
        for word in (trad, simp):
            for i, (ch, r) in enumerate(zip(word, readings)):
                if i > 0 and ch in PARTICLES and r.endswith("˙"):
                    result.setdefault(word, set()).add(i)
    return result


# Words whose tie libchewing settles on a colloquial or wrong reading, with
# the reading of Taiwan's dictionary; they fix every phrase holding them.
TAIWAN_FIXES = {
    "什麼": ["ㄕㄣˊ", "ㄇㄜ˙"],
    "怎麼": ["ㄗㄣˇ", "ㄇㄜ˙"],
    "從而": ["ㄘㄨㄥˊ", "ㄦˊ"],
}


def chewing_words(syllables, mainland, neutral):
    """{phrase: (readings, frequency)}: libchewing's phrases by their most
    frequent reading, in citation tones.

    libchewing often lists a word under two readings with one frequency
    (播放 ㄅㄛ and ㄅㄛˋ), the mainland's and Taiwan's. Such a tie goes to
    the reading whose characters libchewing's other words, those it reads
    one way only, use the most, a neutral tone counting as used always
    (東西 ㄒㄧ˙, 媽媽); then to the mainland reading."""
    variants = {}
    for text, readings, freq in read_chewing():
        if not ps.is_word(text) or len(text) != len(readings):
            continue
        if not all(syllables.valid(r) for r in readings):
            continue
        readings = tuple(ps.citation(text, readings))
        v = variants.setdefault(text, {})
        v[readings] = max(v.get(readings, -1), freq)
    evidence = {}
    for text, v in variants.items():
        top = max(v.values())
        best = [r for r in v if v[r] == top]
        if len(text) > 1 and len(best) == 1:
            for ch, r in zip(text, best[0]):
                e = evidence.setdefault(ch, {})
                e[r] = e.get(r, 0) + top + 1

    def support(text, readings):
        # A neutral tone costs nothing: where libchewing lists a word with
        # and without it alike (東西, 媽媽), the dictionary has it.
        score = 0.0
        for ch, r in zip(text, readings):
            if r.endswith("˙"):
                continue
            e = evidence.get(ch, {})
            score += math.log((e.get(r, 0) + 1) / (sum(e.values()) + 1))
        return score

    result = {}
    for text, v in variants.items():
        top = max(v.values())
        tied = sorted(r for r in v if v[r] == top)
        main = tuple(mainland.get(text, ([], 0))[0])
        best = max(tied, key=lambda r: (support(text, r), sum(
            s.endswith("˙") for s in r), r == main))
        readings = list(best)
        if len(text) > 1 and text[-1] in NEUTRAL_SUFFIXES:
            readings[-1] = NEUTRAL_SUFFIXES[text[-1]]
        for i in neutral.get(text, ()):
            readings[i] = ps.letters_of(readings[i]) + "˙"
        for part, fixed in TAIWAN_FIXES.items():
            at = text.find(part)
            while at >= 0:
                readings[at:at + len(part)] = fixed
                at = text.find(part, at + 1)
        result[text] = (readings, top)
    return result


def taiwan_first_readings(chewing, table, kmandarin, essay, st):
    """{char: reading}: a character's first reading by the Taiwan standard,
    for the characters where it is not zhuyintable's first.

    The reading weighed by the frequencies of libchewing's words that hold
    the character decides when it clearly wins over the table's first
    reading, unless the character is mostly used on its own (都, whose
    words are 首都 and 都市 but whose use is the adverb) or is mainly the
    Simplified form of another character (万, 几: its Traditional forms
    decide); Unihan kMandarin's second value (Taiwan's where the two
    standards differ) decides first."""
    in_words = {}
    for word, count in essay.items():
        if len(word) > 1:
            for ch in set(word):
                in_words[ch] = in_words.get(ch, 0) + count
    weights = {}
    for text, (readings, freq) in chewing.items():
        if len(text) < 2:
            continue
        for ch, r in zip(text, readings):
            if r.endswith("˙") or ch in (ps.ONE, ps.NOT):
                continue
            w = weights.setdefault(ch, {})
            w[r] = w.get(r, 0) + freq + 1
    result = {}
    for ch in sorted(set(weights) | set(kmandarin)):
        first = table.get(ch, [None])[0]
        if first is None or first.endswith("˙"):
            continue  # particles: 的 and 了 stand alone far more often
        tw = None
        values = unihan_readings(kmandarin.get(ch, ""))
        if st.get(ch, [ch])[0] != ch or (
                essay.get(ch, 0) >= 1000 and
                essay[ch] >= in_words.get(ch, 0) / 2):
            continue
        if len(values) > 1:
            tw = values[1]
        elif ch in weights:
            w = weights[ch]
            total = sum(w.values())
            best = max(sorted(w), key=lambda r: w[r])
            if total >= 50 and w[best] >= 0.6 * total and \
                    w.get(first, 0) <= 0.2 * total:
                tw = best
        if tw and tw != first:
            result[ch] = tw
    return result


def build_taiwan(chewing, cedict, syllables, mainland_alone, table, tw_first,
                 essay, jieba):
    shares_e, shares_j = Shares(essay), Shares(jieba)
    # libchewing's frequencies on rime-essay's scale.
    ratios = [essay[w] / f for w, (_, f) in chewing.items()
              if len(w) > 1 and f > 0 and essay.get(w)]
    scale = statistics.median(ratios) if ratios else 1.0

    def share(trad, simp, chewing_freq):
        if essay.get(trad):
            return shares_e(trad), True
        if chewing_freq:
            return chewing_freq * scale / shares_e.total, True
        if jieba.get(simp):
            return shares_j(simp), True
        return shares_e.floor(), False

    simplified_of = {}
    for trad, simp, _, _ in cedict:
        if len(trad) == len(simp):
            simplified_of.setdefault(trad, simp)
    missing = sorted(w for w in chewing if w not in simplified_of)
    for trad, simp in zip(missing, ps.opencc(missing)):
        if len(simp) == len(trad) and ps.is_word(simp):
            simplified_of[trad] = simp

    def taiwan_char(ch, r):
        # A character read its usual mainland way reads its Taiwan way.
        if ch in tw_first and r == table.get(ch, [None])[0]:
            return tw_first[ch]
        return r

    trad_words = {}
    for text, (readings, freq) in chewing.items():
        if len(text) == 1:
            continue
        p, seen = share(text, simplified_of.get(text, ""), freq)
        trad_words[text] = (readings, p, seen)
    for trad, simp, pinyin, defs in cedict:
        if trad in trad_words or len(trad) < 2 or not ps.is_word(trad) \
                or len(trad) != len(simp):
            continue
        readings = None
        for noted in ps.taiwan_pronunciations(defs):
            readings = syllables.from_pinyin(noted)
            if readings and len(readings) == len(trad):
                break
            readings = None
        if readings is None:
            readings = syllables.from_pinyin(pinyin)
            if readings is None or len(readings) != len(trad):
                continue
            readings = [taiwan_char(c, r) for c, r in zip(trad, readings)]
        p, seen = share(trad, simp, 0)
        trad_words[trad] = (ps.citation(trad, readings), p, seen)
    # Single characters: the mainland reading standing alone, moved to the
    # Taiwan one where that is the character's usual reading.
    singles = set(mainland_alone) | {w for w in chewing if len(w) == 1}
    alone = {}
    for ch in sorted(singles):
        r = mainland_alone.get(ch) or chewing[ch][0][0]
        alone[ch] = taiwan_char(ch, r)
        p, seen = share(ch, ch, 0)
        trad_words.setdefault(ch, ([alone[ch]], p, True))

    result = {}
    for text, (readings, p, seen) in trad_words.items():
        if len(text) > 1 and not seen and all(
                alone.get(c) == r for c, r in zip(text, readings)):
            continue
        result[text] = (list(readings), p)
    # Simplified spellings, unless the spelling is a word of its own.
    for text in sorted(list(result), key=lambda w: result[w][1],
                       reverse=True):
        simp = simplified_of.get(text)
        if len(text) == 1 or not simp or simp == text or \
                not ps.is_word(simp):
            continue
        if simp not in result:
            result[simp] = result[text]
    return result


def split_readings(word, entries):
    """The readings of the split of `word` into entries with the lowest
    total cost, a character no entry covers reading None."""
    n = len(word)
    best = [0] + [None] * n
    back = [(0, None)] * (n + 1)
    for i in range(1, n + 1):
        best[i], back[i] = best[i - 1] + PENALTY, (i - 1, None)
        for j in range(i):
            e = entries.get(word[j:i])
            if e and best[j] + e[1] < best[i]:
                best[i], back[i] = best[j] + e[1], (j, e[0])
    readings = [None] * n
    i = n
    while i > 0:
        j, r = back[i]
        readings[j:i] = r if r else [None]
        i = j
    return readings


def prune(entries):
    """Drops the rarer words whose readings the split into shorter words
    gives anyway; the common ones stay, so that a split never prefers a rare
    word over them. Shorter words are decided first, so a longer word is
    judged by the words that stay."""
    kept = {}
    for word in sorted(entries, key=lambda w: (len(w), w)):
        readings, cost = entries[word]
        if len(word) > 1 and cost >= PRUNE_FROM and \
                split_readings(word, kept) == readings:
            continue
        kept[word] = (readings, cost)
    return kept


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_phrasereadings.py OUTPUT_DIR")
    out = sys.argv[1]
    syllables = ps.Syllables()
    table = read_zhuyintable()
    unihan = src.read_unihan("Unihan_Readings.txt.bz2",
                             ["kMandarin", "kHanyuPinlu"])
    pinlu = {c: pinlu_counts(v) for c, v in unihan["kHanyuPinlu"].items()}
    cedict = ps.read_cedict()
    jieba, essay = ps.read_jieba(), ps.read_essay()

    mainland, alone = build_mainland(cedict, syllables, pinlu, table, jieba,
                                     essay)
    write_phrases(os.path.join(out, "phrasereadings"), prune(
        {w: (r, cost_of(p)) for w, (r, p) in mainland.items()}))

    chewing = chewing_words(syllables, mainland,
                            cedict_neutral(cedict, syllables))
    st = src.read_opencc_st()
    tw_first = taiwan_first_readings(chewing, table, unihan["kMandarin"],
                                     essay, st)
    # Simplified forms share the Taiwan reading of their Traditional forms
    # (those of libchewing's words, by OpenCC either way) when these agree.
    in_words = {c for w in chewing if len(w) > 1 for c in w}
    traditional = sorted(c for c in in_words if c not in tw_first) + \
        sorted(tw_first)
    sources = {}
    for trad, simp in zip(traditional, ps.opencc(traditional)):
        if simp != trad and len(simp) == 1:
            sources.setdefault(simp, set()).add(trad)
    for simp, forms in st.items():
        sources.setdefault(simp, set()).update(
            f for f in forms if f != simp and f in in_words)
    for simp, forms in sorted(sources.items()):
        found = {tw_first.get(f, table.get(f, [None])[0]) for f in forms}
        if len(found) == 1 and simp not in tw_first and \
                any(f in tw_first for f in forms):
            r = found.pop()
            if r != table.get(simp, [None])[0]:
                tw_first[simp] = r
    taiwan = build_taiwan(chewing, cedict, syllables, alone, table, tw_first,
                          essay, jieba)
    write_phrases(os.path.join(out, "phrasereadings-tw"), prune(
        {w: (r, cost_of(p)) for w, (r, p) in taiwan.items()}))

    lines = sorted(f"{c}\t{r}\n" for c, r in tw_first.items()
                   if ps.is_hanzi(c))
    lines.sort(key=lambda line: line.encode("utf-8"))
    path = os.path.join(out, "taiwanreadings")
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.writelines(lines)
    print(f"{len(lines)} characters written to {path}")


if __name__ == "__main__":
    main()
