#include "romanization/Romanization.hpp"

#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

#include "text/TextOps.hpp"

// Each system is one ordered chain of first-occurrence replacements over the
// Zhuyin letters. The chains are written out below row by row, numbered in
// their order, so that each can be read against its table of spellings. The
// tests of a row read the field (the reading as it came out of the reading
// string); the replacements act on the working text. An "else" belongs to the
// row above it; every other row runs whatever happened before.
//
// Everything here goes through the text operations (Replace ignores ASCII
// letter case, Left/Mid count characters), so that odd input behaves as the
// chains say and never crashes: a letter no row names is copied through.

namespace quill {

namespace {

using Pairs =
    std::initializer_list<std::pair<std::string_view, std::string_view>>;

// The marks with which ㄧ and ㄨ stand alone, and those of ㄓ to ㄙ: the
// neutral mark is only in the second set, so ㄧ˙ is "y" but ㄓ˙ is "zhi".
constexpr std::string_view kThreeMarks[] = {"ˊ", "ˇ", "ˋ"};
constexpr std::string_view kFourMarks[] = {"ˊ", "ˇ", "ˋ", "˙"};

// Replace, done in place. A text without ASCII letters (every Zhuyin letter
// and mark) is found byte for byte, which is what Replace's case-blind
// search finds too; only a Latin text needs the case-blind search.
void Rep(std::string& work, std::string_view find, std::string_view with) {
  if (find.empty()) return;
  for (char c : find) {
    if ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') {
      work = Replace(work, find, with);
      return;
    }
  }
  const std::size_t hit = work.find(find);
  if (hit != std::string::npos) work.replace(hit, find.size(), with);
}

void RepInOrder(std::string& work, Pairs pairs) {
  for (const auto& [find, with] : pairs) Rep(work, find, with);
}

bool FirstIs(std::string_view field, std::string_view letter) {
  return Equals(Left(field, 1), letter);
}

bool BeginsWith(std::string_view field, std::string_view start) {
  return Equals(Left(field, static_cast<long>(Len(start))), start);
}

bool SecondIs(std::string_view field, std::string_view letter) {
  return Equals(Mid(field, 2, 1), letter);
}

// The letter is the whole syllable: the first two characters are the letter
// (blanks trimmed) or the letter and one of `marks`.
bool StandsAlone(std::string_view field, std::string_view letter,
                 std::span<const std::string_view> marks) {
  const std::string two = Left(field, 2);
  if (Equals(Trim(two), letter)) return true;
  if (two.size() <= letter.size() ||
      !Equals(std::string_view(two).substr(0, letter.size()), letter)) {
    return false;
  }
  const std::string_view rest = std::string_view(two).substr(letter.size());
  for (std::string_view mark : marks) {
    if (Equals(rest, mark)) return true;
  }
  return false;
}

// ㄣ and ㄥ take a vowel only right behind a first letter that is no medial.
bool FinalTakesVowel(std::string_view field, std::string_view finalLetter) {
  return SecondIs(field, finalLetter) && !FirstIs(field, "ㄧ") &&
         !FirstIs(field, "ㄩ");
}

// ---------------------------------------------------------------------------
// Hanyu Pinyin

void PinyinRows(const std::string& f, std::string& w) {
  // 1-3: yi alone and in ying/yin, y opening a syllable, i after an initial.
  if (BeginsWith(f, "ㄧㄥ") || BeginsWith(f, "ㄧㄣ") ||
      StandsAlone(f, "ㄧ", kThreeMarks)) {
    Rep(w, "ㄧ", "yi");
  } else if (FirstIs(f, "ㄧ")) {
    Rep(w, "ㄧ", "y");
  } else {
    Rep(w, "ㄧ", "i");
  }
  // 4-6: jiong/qiong/xiong go through "iu", which 24 turns into "io".
  if (FirstIs(f, "ㄩ")) {
    Rep(w, "ㄩ", "yü");
  } else if (BeginsWith(f, "ㄐㄩㄥ") || BeginsWith(f, "ㄑㄩㄥ") ||
             BeginsWith(f, "ㄒㄩㄥ")) {
    Rep(w, "ㄩ", "iu");
  } else {
    Rep(w, "ㄩ", "ü");
  }
  // 7-9
  if (StandsAlone(f, "ㄨ", kThreeMarks)) Rep(w, "ㄨ", "wu");
  if (FirstIs(f, "ㄨ")) {
    Rep(w, "ㄨ", "w");
  } else {
    Rep(w, "ㄨ", "u");
  }
  // 10
  RepInOrder(w, {{"ㄅ", "b"},
                 {"ㄆ", "p"},
                 {"ㄇ", "m"},
                 {"ㄈ", "f"},
                 {"ㄉ", "d"},
                 {"ㄊ", "t"},
                 {"ㄋ", "n"},
                 {"ㄌ", "l"},
                 {"ㄍ", "g"},
                 {"ㄎ", "k"},
                 {"ㄏ", "h"},
                 {"ㄐ", "j"},
                 {"ㄑ", "q"},
                 {"ㄒ", "x"}});
  // 11-17
  Rep(w, "ㄓ", StandsAlone(f, "ㄓ", kFourMarks) ? "zhi" : "zh");
  Rep(w, "ㄔ", StandsAlone(f, "ㄔ", kFourMarks) ? "chi" : "ch");
  Rep(w, "ㄕ", StandsAlone(f, "ㄕ", kFourMarks) ? "shi" : "sh");
  Rep(w, "ㄖ", StandsAlone(f, "ㄖ", kFourMarks) ? "ri" : "r");
  Rep(w, "ㄗ", StandsAlone(f, "ㄗ", kFourMarks) ? "zi" : "z");
  Rep(w, "ㄘ", StandsAlone(f, "ㄘ", kFourMarks) ? "ci" : "c");
  Rep(w, "ㄙ", StandsAlone(f, "ㄙ", kFourMarks) ? "si" : "s");
  // 18
  RepInOrder(w, {{"ㄚ", "a"},
                 {"ㄛ", "o"},
                 {"ㄜ", "e"},
                 {"ㄝ", "e"},
                 {"ㄞ", "ai"},
                 {"ㄟ", "ei"},
                 {"ㄠ", "ao"},
                 {"ㄡ", "ou"},
                 {"ㄢ", "an"}});
  // 19-22
  Rep(w, "ㄣ", FinalTakesVowel(f, "ㄣ") ? "en" : "n");
  Rep(w, "ㄤ", "ang");
  Rep(w, "ㄥ", FinalTakesVowel(f, "ㄥ") ? "eng" : "ng");
  Rep(w, "ㄦ", "er");
  // 23: reads the working text, so a bracketed reading loses its dots.
  const std::string head = Left(w, 2);
  if (!Equals(head, "nü") && !Equals(head, "lü")) Rep(w, "ü", "u");
  // 24
  RepInOrder(w, {{"ung", "ong"}, {"uei", "ui"}, {"iou", "iu"}});
  // 25: ㄣ alone came out as a bare "n".
  if (FirstIs(f, "ㄣ")) Rep(w, "n", "en");
}

// ---------------------------------------------------------------------------
// Tongyong Pinyin

void TongyongRows(const std::string& f, std::string& w) {
  // 1-3
  if (BeginsWith(f, "ㄧㄥ") || BeginsWith(f, "ㄧㄣ") ||
      StandsAlone(f, "ㄧ", kThreeMarks)) {
    Rep(w, "ㄧ", "yi");
  } else if (FirstIs(f, "ㄧ")) {
    Rep(w, "ㄧ", "y");
  } else {
    Rep(w, "ㄧ", "i");
  }
  // 4
  Rep(w, "ㄩ", "yu");
  // 5-7
  if (StandsAlone(f, "ㄨ", kThreeMarks)) Rep(w, "ㄨ", "wu");
  if (FirstIs(f, "ㄨ")) {
    Rep(w, "ㄨ", "w");
  } else {
    Rep(w, "ㄨ", "u");
  }
  // 8
  RepInOrder(w, {{"ㄅ", "b"},
                 {"ㄆ", "p"},
                 {"ㄇ", "m"},
                 {"ㄈ", "f"},
                 {"ㄉ", "d"},
                 {"ㄊ", "t"},
                 {"ㄋ", "n"},
                 {"ㄌ", "l"},
                 {"ㄍ", "g"},
                 {"ㄎ", "k"},
                 {"ㄏ", "h"},
                 {"ㄐ", "j"},
                 {"ㄑ", "c"},
                 {"ㄒ", "s"}});
  // 9-15
  Rep(w, "ㄓ", StandsAlone(f, "ㄓ", kFourMarks) ? "jhih" : "jh");
  Rep(w, "ㄔ", StandsAlone(f, "ㄔ", kFourMarks) ? "chih" : "ch");
  Rep(w, "ㄕ", StandsAlone(f, "ㄕ", kFourMarks) ? "shih" : "sh");
  Rep(w, "ㄖ", StandsAlone(f, "ㄖ", kFourMarks) ? "rih" : "r");
  Rep(w, "ㄗ", StandsAlone(f, "ㄗ", kFourMarks) ? "zih" : "z");
  Rep(w, "ㄘ", StandsAlone(f, "ㄘ", kFourMarks) ? "cih" : "c");
  Rep(w, "ㄙ", StandsAlone(f, "ㄙ", kFourMarks) ? "sih" : "s");
  // 16
  RepInOrder(w, {{"ㄚ", "a"},
                 {"ㄛ", "o"},
                 {"ㄜ", "e"},
                 {"ㄝ", "e"},
                 {"ㄞ", "ai"},
                 {"ㄟ", "ei"},
                 {"ㄠ", "ao"},
                 {"ㄡ", "ou"},
                 {"ㄢ", "an"}});
  // 17-20
  Rep(w, "ㄣ", FinalTakesVowel(f, "ㄣ") ? "en" : "n");
  Rep(w, "ㄤ", "ang");
  Rep(w, "ㄥ", FinalTakesVowel(f, "ㄥ") ? "eng" : "ng");
  Rep(w, "ㄦ", "er");
  // 21: kept from the Hanyu chain; no spelling here holds a "ü".
  const std::string head = Left(w, 2);
  if (!Equals(head, "nü") && !Equals(head, "lü")) Rep(w, "ü", "u");
  // 22
  RepInOrder(
      w, {{"ung", "ong"}, {"weng", "wong"}, {"feng", "fong"}, {"wen", "wun"}});
  // 23
  if (FirstIs(f, "ㄣ")) Rep(w, "n", "en");
}

// ---------------------------------------------------------------------------
// Wade-Giles

void WadeRows(const std::string& f, std::string& w) {
  // 1-3
  if (BeginsWith(f, "ㄧㄥ") || BeginsWith(f, "ㄧㄣ") ||
      StandsAlone(f, "ㄧ", kThreeMarks)) {
    Rep(w, "ㄧ", "yi");
  } else if (FirstIs(f, "ㄧ")) {
    Rep(w, "ㄧ", "y");
  } else {
    Rep(w, "ㄧ", "i");
  }
  // 4-6
  if (FirstIs(f, "ㄩ")) {
    Rep(w, "ㄩ", "yü");
  } else if (BeginsWith(f, "ㄐㄩㄥ") || BeginsWith(f, "ㄑㄩㄥ") ||
             BeginsWith(f, "ㄒㄩㄥ")) {
    Rep(w, "ㄩ", "iu");
  } else {
    Rep(w, "ㄩ", "ü");
  }
  // 7-9
  if (StandsAlone(f, "ㄨ", kThreeMarks)) Rep(w, "ㄨ", "wu");
  if (FirstIs(f, "ㄨ")) {
    Rep(w, "ㄨ", "w");
  } else {
    Rep(w, "ㄨ", "u");
  }
  // 10
  RepInOrder(w, {{"ㄅ", "p"},
                 {"ㄆ", "p'"},
                 {"ㄇ", "m"},
                 {"ㄈ", "f"},
                 {"ㄉ", "t"},
                 {"ㄊ", "t'"},
                 {"ㄋ", "n"},
                 {"ㄌ", "l"},
                 {"ㄍ", "k"},
                 {"ㄎ", "k'"},
                 {"ㄏ", "h"},
                 {"ㄐ", "ch"},
                 {"ㄑ", "ch'"},
                 {"ㄒ", "hs"}});
  // 11-17
  Rep(w, "ㄓ", StandsAlone(f, "ㄓ", kFourMarks) ? "chih" : "ch");
  Rep(w, "ㄔ", StandsAlone(f, "ㄔ", kFourMarks) ? "ch'ih" : "ch'");
  Rep(w, "ㄕ", StandsAlone(f, "ㄕ", kFourMarks) ? "shih" : "sh");
  Rep(w, "ㄖ", StandsAlone(f, "ㄖ", kFourMarks) ? "jih" : "j");
  Rep(w, "ㄗ", StandsAlone(f, "ㄗ", kFourMarks) ? "tzu" : "ts");
  Rep(w, "ㄘ", StandsAlone(f, "ㄘ", kFourMarks) ? "tz'u" : "ts'");
  Rep(w, "ㄙ", StandsAlone(f, "ㄙ", kFourMarks) ? "szu" : "s");
  // 18-20
  RepInOrder(w, {{"ㄚ", "a"}, {"ㄛ", "o"}});
  Rep(w, "ㄜ",
      FirstIs(f, "ㄍ") || FirstIs(f, "ㄎ") || FirstIs(f, "ㄏ") ? "o" : "ê");
  RepInOrder(w, {{"ㄝ", "eh"},
                 {"ㄞ", "ai"},
                 {"ㄟ", "ei"},
                 {"ㄠ", "ao"},
                 {"ㄡ", "ou"},
                 {"ㄢ", "an"}});
  // 21-24
  Rep(w, "ㄣ", FinalTakesVowel(f, "ㄣ") ? "ên" : "n");
  Rep(w, "ㄤ", "ang");
  Rep(w, "ㄥ", FinalTakesVowel(f, "ㄥ") ? "êng" : "ng");
  Rep(w, "ㄦ", "êrh");
  // 25: the order matters. "ian" also turns chiang into chieng, which
  // "ieng" takes back; "uei" also shortens kuei and k'uei, which the last
  // two lengthen again.
  RepInOrder(w, {{"uei", "ui"},
                 {"iou", "iu"},
                 {"ian", "ien"},
                 {"ieng", "iang"},
                 {"yüng", "yung"},
                 {"tuo", "to"},
                 {"t'uo", "t'o"},
                 {"luo", "lo"},
                 {"nuo", "no"},
                 {"kui", "kuei"},
                 {"k'ui", "k'uei"}});
  // 26: reads the working text, so a bracketed yang becomes yeng.
  if (!Equals(Left(w, 4), "yang")) Rep(w, "yan", "yen");
  // 27
  if (FirstIs(f, "ㄣ")) Rep(w, "n", "ên");
}

// ---------------------------------------------------------------------------
// Zhuyin 2

void Zhuyin2Rows(const std::string& f, std::string& w) {
  // 1-3
  if (BeginsWith(f, "ㄧㄥ") || BeginsWith(f, "ㄧㄣ") ||
      StandsAlone(f, "ㄧ", kThreeMarks)) {
    Rep(w, "ㄧ", "yi");
  } else if (FirstIs(f, "ㄧ")) {
    Rep(w, "ㄧ", "y");
  } else {
    Rep(w, "ㄧ", "i");
  }
  // 4
  Rep(w, "ㄩ", FirstIs(f, "ㄩ") ? "yu" : "iu");
  // 5-7
  if (StandsAlone(f, "ㄨ", kThreeMarks)) Rep(w, "ㄨ", "wu");
  if (FirstIs(f, "ㄨ")) {
    Rep(w, "ㄨ", "w");
  } else {
    Rep(w, "ㄨ", "u");
  }
  // 8
  RepInOrder(w, {{"ㄅ", "b"},
                 {"ㄆ", "p"},
                 {"ㄇ", "m"},
                 {"ㄈ", "f"},
                 {"ㄉ", "d"},
                 {"ㄊ", "t"},
                 {"ㄋ", "n"},
                 {"ㄌ", "l"},
                 {"ㄍ", "g"},
                 {"ㄎ", "k"},
                 {"ㄏ", "h"},
                 {"ㄐ", "j"},
                 {"ㄑ", "ch"},
                 {"ㄒ", "sh"}});
  // 9-11
  Rep(w, "ㄓ", StandsAlone(f, "ㄓ", kFourMarks) ? "jr" : "j");
  Rep(w, "ㄔ", StandsAlone(f, "ㄔ", kFourMarks) ? "chr" : "ch");
  Rep(w, "ㄕ", StandsAlone(f, "ㄕ", kFourMarks) ? "shr" : "sh");
  // 12: the same spelling alone or not.
  RepInOrder(w, {{"ㄖ", "r"}, {"ㄗ", "tz"}});
  // 13-14
  Rep(w, "ㄘ", StandsAlone(f, "ㄘ", kFourMarks) ? "tsz" : "ts");
  Rep(w, "ㄙ", StandsAlone(f, "ㄙ", kFourMarks) ? "sz" : "s");
  // 15-17
  RepInOrder(w, {{"ㄚ", "a"}, {"ㄛ", "o"}, {"ㄜ", "e"}});
  Rep(w, "ㄝ", FirstIs(f, "ㄝ") ? "ê" : "e");
  RepInOrder(
      w,
      {{"ㄞ", "ai"}, {"ㄟ", "ei"}, {"ㄠ", "au"}, {"ㄡ", "ou"}, {"ㄢ", "an"}});
  // 18: looks at the letter in front of ㄣ wherever it stands, so guen keeps
  // its e and ㄣ alone is en without a mend.
  const long nPos = InStr(f, "ㄣ");
  const std::string beforeN = Mid(f, nPos - 1, 1);
  Rep(w, "ㄣ",
      nPos > 0 && !Equals(beforeN, "ㄧ") && !Equals(beforeN, "ㄩ") ? "en"
                                                                   : "n");
  // 19-21
  Rep(w, "ㄤ", "ang");
  Rep(w, "ㄥ", FinalTakesVowel(f, "ㄥ") ? "eng" : "ng");
  Rep(w, "ㄦ", "er");
  // 22: kept as it is; no field produces "een".
  if (FirstIs(f, "ㄣ")) Rep(w, "een", "en");
}

// ---------------------------------------------------------------------------
// The frame shared by the four chains

using Rows = void (*)(const std::string& field, std::string& work);
using Marker = std::string (*)(std::string_view);

// Marks to digits (or to nothing); then, for all but Wade-Giles, the digit to
// a mark when marks are wanted. The digit stands last, where the mark stood.
void ToneStage(std::string& w, const ToneSettings& s, Marker marker) {
  if (Equals(s.indicateTonesPrefValue, "0")) {
    RepInOrder(w, {{"ˊ", ""}, {"ˇ", ""}, {"ˋ", ""}, {"˙", ""}});
    return;
  }
  if (InStr(w, "ˊ") > 0 || InStr(w, "ˇ") > 0 || InStr(w, "ˋ") > 0 ||
      InStr(w, "˙") > 0) {
    RepInOrder(w, {{"ˊ", "2"}, {"ˇ", "3"}, {"ˋ", "4"}, {"˙", ""}});
  } else {
    w += "1";
  }
  if (marker != nullptr && !Equals(s.UseToneNumbersPrefValue, "1")) {
    w = marker(w);
  }
}

// Converts every reading of the string and brackets the further ones:
// "ㄇㄚ  ㄇㄛˊ  ㄇㄛˋ" gives "ma1(mo2,mo4)" in digits.
std::string Convert(std::string_view reading, const ToneSettings& s, Rows rows,
                    Marker marker, bool trimWorkingText) {
  const std::string text = Trim(reading);
  const long count = CountFields(text, "  ");
  std::string result;
  // Walks the fields left to right, as NthField(text, "  ", index) would give
  // them, without scanning from the start for each one.
  std::size_t from = 0;
  for (long index = 1; index <= count; ++index) {
    const std::size_t end = text.find("  ", from);
    const std::string field =
        text.substr(from, end == std::string::npos ? end : end - from);
    from = end == std::string::npos ? text.size() : end + 2;
    std::string work = trimWorkingText ? Trim(field) : field;
    if (index == 2) work.insert(0, "(");
    rows(field, work);
    ToneStage(work, s, marker);
    if (index == count && count > 1) {
      work += ")";
    } else if (index > 1) {
      work += ",";
    }
    result += work;
    if (Equals(s.ShowMultipleReadingsPrefValue, "0")) index = count;
  }
  return result;
}

// ---------------------------------------------------------------------------
// Tone marks

// A syllable cut into its characters, so that the walks can look one ahead.
std::vector<std::string_view> Characters(std::string_view s) {
  std::vector<std::string_view> out;
  for (std::size_t pos = 0; pos < s.size();) {
    const std::size_t length = DecodeChar(s, pos).length;
    out.push_back(s.substr(pos, length));
    pos += length;
  }
  return out;
}

// The vowels that can carry a mark, in the rows of the mark tables.
constexpr std::string_view kVowels[] = {"a", "e", "o", "i", "u", "ü"};

// Columns: tones 1 to 4. The third-tone u is u with breve (U+016D), not the
// caron letter of the other third tones.
constexpr std::string_view kPinyinMarks[6][4] = {
    {"\u0101", "\u00E1", "\u01CE", "\u00E0"},  // a
    {"\u0113", "\u00E9", "\u011B", "\u00E8"},  // e
    {"\u014D", "\u00F3", "\u01D2", "\u00F2"},  // o
    {"\u012B", "\u00ED", "\u01D0", "\u00EC"},  // i
    {"\u016B", "\u00FA", "\u016D", "\u00F9"},  // u
    {"\u01D6", "\u01D8", "\u01DA", "\u01DC"},  // ü
};

// Columns: tones 1 to 4, then the neutral tone. The first tone is the plain
// letter; the neutral tone is a ring, on the dotless i for i.
constexpr std::string_view kTongyongMarks[6][5] = {
    {"a", "\u00E1", "\u01CE", "\u00E0", "\u00E5"},
    {"e", "\u00E9", "\u011B", "\u00E8", "e\u030A"},
    {"o", "\u00F3", "\u01D2", "\u00F2", "o\u030A"},
    {"i", "\u00ED", "\u01D0", "\u00EC", "\u0131\u030A"},
    {"u", "\u00FA", "\u016D", "\u00F9", "\u016F"},
    {"\u00FC", "\u01D8", "\u01DA", "\u01DC", "\u00FC\u030A"},
};

// Row of `c` in the mark tables, or -1.
int VowelRow(std::string_view c) {
  for (int row = 0; row < 6; ++row) {
    if (Equals(c, kVowels[row])) return row;
  }
  return -1;
}

// The vowel choice shared by all three routines: the first vowel letter takes
// the mark, except that i, u and ü give way to a vowel letter right behind
// them. Walks the first `walked` characters; `mark(row, c)` gives the form of
// the vowel in that row.
template <typename MarkOf>
std::string WalkVowels(const std::vector<std::string_view>& chars,
                       std::size_t walked, MarkOf mark) {
  std::string result;
  bool placed = false;
  for (std::size_t i = 0; i < walked; ++i) {
    const std::string_view c = chars[i];
    const std::string_view n = i + 1 < chars.size() ? chars[i + 1] : "";
    const int row = VowelRow(c);
    const bool givesWay = row >= 3;  // i, u, ü
    if (givesWay) {
      const int next = VowelRow(n);
      if ((next >= 0 && next <= 4) || placed) {
        result += c;
      } else {
        result += mark(row, c);
        placed = true;
      }
    } else if (!placed && row >= 0) {
      result += mark(row, c);
      placed = true;
    } else {
      result += c;
    }
  }
  return result;
}

// Pinyin vowels for a tone digit; a digit above 4 cannot come from the tone
// stage and leaves the letter plain.
std::string PinyinVowelWalk(const std::vector<std::string_view>& chars,
                            int tone) {
  return WalkVowels(chars, chars.size() - 1,
                    [tone](int row, std::string_view c) {
                      return tone <= 4 ? kPinyinMarks[row][tone - 1] : c;
                    });
}

// The tone digit as the walks use it: 0 when the last character is no digit
// from 1 up.
int ToneOf(std::string_view s) { return static_cast<int>(Val(Right(s, 1))); }

void CutTrailingDigit(std::string& s) {
  if (Val(Right(s, 1)) > 0) s.resize(s.size() - Right(s, 1).size());
}

}  // namespace

std::string ZhuyinToPinyin(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, PinyinRows, AddPinyinToneSymbol, false);
}

std::string ZhuyinToTungyong(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, TongyongRows, AddTongYongPinyinToneSymbol, false);
}

// Wade-Giles keeps its digits whatever the tone-number setting says.
std::string ZhuyinToWade(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, WadeRows, nullptr, true);
}

std::string ZhuyinToZhuyin2(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, Zhuyin2Rows, AddZhuyin2ToneSymbol, false);
}

// "hao3" -> "hǎo". A syllable without a digit (neutral tone) comes back as
// it is.
std::string AddPinyinToneSymbol(std::string_view syllable) {
  const int tone = ToneOf(syllable);
  if (tone < 1) return std::string(syllable);
  return PinyinVowelWalk(Characters(syllable), tone);
}

// "ma3" -> "mǎ", "ma1" -> "ma", "ma" -> "må". The digit is walked over with
// the letters and cut off afterwards.
std::string AddTongYongPinyinToneSymbol(std::string_view syllable) {
  const std::string last = Right(syllable, 1);
  int column = 4;
  if (last == "1") column = 0;
  if (last == "2") column = 1;
  if (last == "3") column = 2;
  if (last == "4") column = 3;
  const auto chars = Characters(syllable);
  std::string result =
      WalkVowels(chars, chars.size(), [column](int row, std::string_view) {
        return kTongyongMarks[row][column];
      });
  CutTrailingDigit(result);
  return Trim(result);
}

// "ma3" -> "mǎ"; the vowelless endings carry the mark on the consonant:
// "shr4" -> "shr̀", "tz4" -> "tz̀". Every ㄗ syllable holds "tz", so
// "tzau4" -> "tz̀au", while "tsau4" has its mark on the vowel.
std::string AddZhuyin2ToneSymbol(std::string_view syllable) {
  // Combining marks after the base letter, the breve for the third tone.
  static constexpr std::string_view kConsonantMarks[4] = {"\u0304", "\u0301",
                                                          "\u0306", "\u0300"};
  const int tone = ToneOf(syllable);
  std::string result;
  if (tone < 1) {
    result = syllable;
  } else {
    const std::string_view mark =
        tone <= 4 ? kConsonantMarks[tone - 1] : std::string_view();
    const std::string allButDigit =
        Left(syllable, static_cast<long>(Len(syllable)) - 1);
    if (InStr(syllable, "jr") > 0 || InStr(syllable, "chr") > 0 ||
        InStr(syllable, "shr") > 0 || Equals(syllable, "r") ||
        Equals(allButDigit, "r")) {
      result = Replace(syllable, "r", "r" + std::string(mark));
    } else if (InStr(syllable, "tz") > 0 || InStr(syllable, "tsz") > 0 ||
               InStr(syllable, "sz") > 0) {
      result = Replace(syllable, "z", "z" + std::string(mark));
    } else {
      result = PinyinVowelWalk(Characters(syllable), tone);
    }
  }
  CutTrailingDigit(result);
  return result;
}

}  // namespace quill
