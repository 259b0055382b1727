#include "romanization/Romanization.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

#include "text/TextOps.hpp"

// Each system is one ordered table of rows over the Zhuyin letters, read by
// RunRows. A row holds a test, a letter and its replacement, and what happens
// when the test fails: nothing, another replacement of the same letter, or the
// row below is tried instead (and passed by when this row replaces). Tests
// read the field, the reading as it came out of the reading string, except
// two Latin repairs that read the working text; replacements act on the
// working text, on the first occurrence of the letter only.
//
// A replacement finds its text as Replace does (ASCII letter case ignored),
// and the tests count characters as Left and Mid do, so that odd input
// behaves as the tables say and never crashes: a letter no row names is
// copied through.

namespace quill {

namespace {

// What a row tests, made by the functions below.
struct Test {
  enum Kind : std::uint8_t {
    kAlways,
    kBeginsWith,
    kStandsAlone,
    kStandsAloneUnlessNeutral,
    kSecondBehindNeitherIOrYu,
    kBehindNeitherIOrYu,
    kWorkBeginsWithNone,
  };
  Kind kind = kAlways;
  std::array<std::string_view, 3> of{};  // the letters it looks for
};

constexpr Test Always() { return {}; }

// The field begins with one of the texts.
constexpr Test BeginsWith(std::string_view a, std::string_view b = {},
                          std::string_view c = {}) {
  return {Test::kBeginsWith, {a, b, c}};
}

constexpr Test FirstLetterIs(std::string_view a, std::string_view b = {},
                             std::string_view c = {}) {
  return BeginsWith(a, b, c);
}

// The first two characters of the field are the letter (blanks trimmed), or
// the letter and a tone mark: ㄓ, ㄓˊ and ㄓ˙ all stand alone.
constexpr Test StandsAlone(std::string_view letter) {
  return {Test::kStandsAlone, {letter}};
}

// As StandsAlone, but the neutral mark does not count: ㄧˊ stands alone and
// ㄧ˙ does not, so ㄧ˙ is spelled as if a final followed.
constexpr Test StandsAloneUnlessNeutral(std::string_view letter) {
  return {Test::kStandsAloneUnlessNeutral, {letter}};
}

// The letter is the second character, right behind a first letter that is
// neither ㄧ nor ㄩ (an initial, or ㄨ).
constexpr Test SecondBehindNeitherIOrYu(std::string_view letter) {
  return {Test::kSecondBehindNeitherIOrYu, {letter}};
}

// The field holds the letter, and the character in front of its first
// occurrence is neither ㄧ nor ㄩ; a letter that stands first passes.
constexpr Test BehindNeitherIOrYu(std::string_view letter) {
  return {Test::kBehindNeitherIOrYu, {letter}};
}

// The working text, as the rows above have left it, begins with none of the
// texts. The only test that does not read the field.
constexpr Test WorkBeginsWithNone(std::string_view a, std::string_view b = {}) {
  return {Test::kWorkBeginsWithNone, {a, b}};
}

// Ends a row whose failing test hands over to the row below. When the row
// replaces, the rows that it hands over to are passed by.
struct TryNextRow {};
constexpr TryNextRow kTryNextRow;

// The letters of the Zhuyin block, U+3100 to U+313F, as one bit each: a
// letter is the bytes E3 84 and one byte of 80 to BF. Any other text has no
// bit.
constexpr std::uint64_t LetterBit(std::string_view letter) {
  if (letter.size() != 3 || letter[0] != '\xE3' || letter[1] != '\x84') {
    return 0;
  }
  return std::uint64_t{1} << (static_cast<unsigned char>(letter[2]) & 0x3F);
}

struct Row {
  Test test;
  std::string_view find;       // replaced at its first occurrence
  std::string_view with;       // when the test passes
  std::string_view otherwise;  // when it fails; empty: nothing
  bool handsOver = false;      // when it fails, the row below is tried
  std::uint64_t findBit = 0;   // LetterBit of `find`

  constexpr Row() = default;
  constexpr Row(Test t, std::string_view f, std::string_view w,
                std::string_view o = {})
      : test(t), find(f), with(w), otherwise(o), findBit(LetterBit(f)) {}
  constexpr Row(Test t, std::string_view f, std::string_view w, TryNextRow)
      : test(t), find(f), with(w), handsOver(true), findBit(LetterBit(f)) {}
};

// A system's table: groups of rows, run in this order.
using Table = std::span<const std::span<const Row>>;

// ASCII and two-byte letters such as ü and ê, and not empty.
constexpr bool IsLatin(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto b = static_cast<unsigned char>(text[i]);
    if (b < 0x80) continue;
    if (b < 0xC2 || b > 0xDF || i + 1 == text.size() ||
        (static_cast<unsigned char>(text[i + 1]) & 0xC0) != 0x80) {
      return false;
    }
    ++i;
  }
  return !text.empty();
}

// What RunRows relies on to pass rows by without a search. Every replacement
// is Latin, so no row puts a Zhuyin letter into the working text, not even
// next to stray bytes: the letters that the text holds before the first row
// are all that any row can find. A row that hands over to the row below names
// the same letter, so that when the letter is missing, both rows would do
// nothing anyway.
constexpr bool RowsAreSound(Table table) {
  for (std::span<const Row> rows : table) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const Row& row = rows[i];
      if (row.find.empty() || !IsLatin(row.with) ||
          !(row.otherwise.empty() || IsLatin(row.otherwise))) {
        return false;
      }
      if (row.handsOver &&
          (i + 1 == rows.size() || rows[i + 1].find != row.find)) {
        return false;
      }
    }
  }
  return true;
}

// ---------------------------------------------------------------------------
// The rows. Groups that several systems spell alike are written once and
// listed in each system's table, which runs its groups in the same order: ㄧ,
// ㄩ, ㄨ, the plain initials, ㄓ to ㄙ, the finals, the Latin repairs, the mend
// for a syllable that opens with ㄣ.

// ㄧ: yi as a syllable of its own (ㄧ, ㄧㄣ, ㄧㄥ), y opening any other
// syllable, i after an initial. All four systems.
constexpr Row kMedialI[] = {
    {BeginsWith("ㄧㄥ", "ㄧㄣ"), "ㄧ", "yi", kTryNextRow},
    {StandsAloneUnlessNeutral("ㄧ"), "ㄧ", "yi", kTryNextRow},
    {FirstLetterIs("ㄧ"), "ㄧ", "y", "i"},
};

// ㄩ in Hanyu Pinyin and Wade-Giles: yü opening a syllable, ü after an
// initial. ㄐㄩㄥ, ㄑㄩㄥ, ㄒㄩㄥ go through "iu", which a repair later turns
// into "io" (jiong) or which stays (chiung).
constexpr Row kMedialYuWithDots[] = {
    {FirstLetterIs("ㄩ"), "ㄩ", "yü", kTryNextRow},
    {BeginsWith("ㄐㄩㄥ", "ㄑㄩㄥ", "ㄒㄩㄥ"), "ㄩ", "iu", "ü"},
};

// ㄨ: wu by itself, w opening a longer syllable, u after an initial. All four
// systems; once wu has replaced it no ㄨ is left for the second row.
constexpr Row kMedialU[] = {
    {StandsAloneUnlessNeutral("ㄨ"), "ㄨ", "wu"},
    {FirstLetterIs("ㄨ"), "ㄨ", "w", "u"},
};

// The plain initials that Hanyu Pinyin, Tongyong Pinyin and Zhuyin 2 spell
// alike; ㄑ and ㄒ follow in each system's own rows.
constexpr Row kInitialsBToJ[] = {
    {Always(), "ㄅ", "b"}, {Always(), "ㄆ", "p"}, {Always(), "ㄇ", "m"},
    {Always(), "ㄈ", "f"}, {Always(), "ㄉ", "d"}, {Always(), "ㄊ", "t"},
    {Always(), "ㄋ", "n"}, {Always(), "ㄌ", "l"}, {Always(), "ㄍ", "g"},
    {Always(), "ㄎ", "k"}, {Always(), "ㄏ", "h"}, {Always(), "ㄐ", "j"},
};

// The finals ㄚ to ㄢ of Hanyu Pinyin and Tongyong Pinyin.
constexpr Row kFinalsAToAn[] = {
    {Always(), "ㄚ", "a"},  {Always(), "ㄛ", "o"},  {Always(), "ㄜ", "e"},
    {Always(), "ㄝ", "e"},  {Always(), "ㄞ", "ai"}, {Always(), "ㄟ", "ei"},
    {Always(), "ㄠ", "ao"}, {Always(), "ㄡ", "ou"}, {Always(), "ㄢ", "an"},
};

// ㄣ takes the vowel e only right behind the first letter, and not behind ㄧ
// or ㄩ: ㄅㄣ ben, ㄨㄣ wen, ㄍㄨㄣ gun, ㄧㄣ yin. Standing first it is a bare
// n, which the mend at the end of the table makes en.
constexpr Row kFinalEnAfterFirst[] = {
    {SecondBehindNeitherIOrYu("ㄣ"), "ㄣ", "en", "n"},
};

// ㄤ, ㄥ and ㄦ of Hanyu Pinyin, Tongyong Pinyin and Zhuyin 2. ㄥ follows the
// rule of ㄣ above, and nothing mends ㄥ by itself: it is ng.
constexpr Row kFinalsAngToEr[] = {
    {Always(), "ㄤ", "ang"},
    {SecondBehindNeitherIOrYu("ㄥ"), "ㄥ", "eng", "ng"},
    {Always(), "ㄦ", "er"},
};

// The dots come off ü everywhere but in nü and lü. The test reads the working
// text, so a bracketed reading ("(nü") loses them too. Then ung is ong.
constexpr Row kRepairsOfU[] = {
    {WorkBeginsWithNone("nü", "lü"), "ü", "u"},
    {Always(), "ung", "ong"},
};

// ㄣ by itself came out of the finals as a bare "n".
constexpr Row kMendLoneEn[] = {{FirstLetterIs("ㄣ"), "n", "en"}};

// ㄓ ㄔ ㄕ ㄖ ㄗ ㄘ ㄙ, which every system spells one way when the letter
// stands alone and another before a final: their rows, out of the two
// spellings of each, in this order.
constexpr std::array<Row, 7> ZhToS(const std::string_view (&alone)[7],
                                   const std::string_view (&beforeFinal)[7]) {
  constexpr std::string_view kLetters[] = {"ㄓ", "ㄔ", "ㄕ", "ㄖ",
                                           "ㄗ", "ㄘ", "ㄙ"};
  std::array<Row, 7> rows;
  for (std::size_t i = 0; i < 7; ++i) {
    rows[i] =
        Row(StandsAlone(kLetters[i]), kLetters[i], alone[i], beforeFinal[i]);
  }
  return rows;
}

// ---------------------------------------------------------------------------
// Hanyu Pinyin: ㄓ to ㄙ by themselves take an i; guei is gui, liou is liu.

constexpr Row kPinyinQX[] = {{Always(), "ㄑ", "q"}, {Always(), "ㄒ", "x"}};

constexpr auto kPinyinZhToS =
    ZhToS({"zhi", "chi", "shi", "ri", "zi", "ci", "si"},
          {"zh", "ch", "sh", "r", "z", "c", "s"});

constexpr Row kPinyinShortenings[] = {
    {Always(), "uei", "ui"},
    {Always(), "iou", "iu"},
};

constexpr std::span<const Row> kPinyinRows[] = {
    kMedialI,       kMedialYuWithDots, kMedialU,           kInitialsBToJ,
    kPinyinQX,      kPinyinZhToS,      kFinalsAToAn,       kFinalEnAfterFirst,
    kFinalsAngToEr, kRepairsOfU,       kPinyinShortenings, kMendLoneEn,
};

// ---------------------------------------------------------------------------
// Tongyong Pinyin: ㄩ is always yu, ㄑ and ㄒ share c and s with ㄘ and ㄙ,
// ㄓ to ㄙ by themselves end in h, and guei and liou keep their vowels. No
// spelling here holds a "ü", so the repair of ü never changes anything.

constexpr Row kTongyongMedialYu[] = {{Always(), "ㄩ", "yu"}};

constexpr Row kTongyongQX[] = {{Always(), "ㄑ", "c"}, {Always(), "ㄒ", "s"}};

constexpr auto kTongyongZhToS =
    ZhToS({"jhih", "chih", "shih", "rih", "zih", "cih", "sih"},
          {"jh", "ch", "sh", "r", "z", "c", "s"});

constexpr Row kTongyongRepairs[] = {
    {Always(), "weng", "wong"},
    {Always(), "feng", "fong"},
    {Always(), "wen", "wun"},
};

constexpr std::span<const Row> kTongyongRows[] = {
    kMedialI,       kTongyongMedialYu, kMedialU,         kInitialsBToJ,
    kTongyongQX,    kTongyongZhToS,    kFinalsAToAn,     kFinalEnAfterFirst,
    kFinalsAngToEr, kRepairsOfU,       kTongyongRepairs, kMendLoneEn,
};

// ---------------------------------------------------------------------------
// Wade-Giles

constexpr Row kWadeInitials[] = {
    {Always(), "ㄅ", "p"},   {Always(), "ㄆ", "p'"}, {Always(), "ㄇ", "m"},
    {Always(), "ㄈ", "f"},   {Always(), "ㄉ", "t"},  {Always(), "ㄊ", "t'"},
    {Always(), "ㄋ", "n"},   {Always(), "ㄌ", "l"},  {Always(), "ㄍ", "k"},
    {Always(), "ㄎ", "k'"},  {Always(), "ㄏ", "h"},  {Always(), "ㄐ", "ch"},
    {Always(), "ㄑ", "ch'"}, {Always(), "ㄒ", "hs"},
};

constexpr auto kWadeZhToS =
    ZhToS({"chih", "ch'ih", "shih", "jih", "tzu", "tz'u", "szu"},
          {"ch", "ch'", "sh", "j", "ts", "ts'", "s"});

// ㄜ is o behind ㄍ, ㄎ, ㄏ (ko, k'o, ho) and ê everywhere else.
constexpr Row kWadeFinals[] = {
    {Always(), "ㄚ", "a"},
    {Always(), "ㄛ", "o"},
    {FirstLetterIs("ㄍ", "ㄎ", "ㄏ"), "ㄜ", "o", "ê"},
    {Always(), "ㄝ", "eh"},
    {Always(), "ㄞ", "ai"},
    {Always(), "ㄟ", "ei"},
    {Always(), "ㄠ", "ao"},
    {Always(), "ㄡ", "ou"},
    {Always(), "ㄢ", "an"},
    {SecondBehindNeitherIOrYu("ㄣ"), "ㄣ", "ên", "n"},
    {Always(), "ㄤ", "ang"},
    {SecondBehindNeitherIOrYu("ㄥ"), "ㄥ", "êng", "ng"},
    {Always(), "ㄦ", "êrh"},
};

// The order matters. "ian" also turns chiang into chieng, which "ieng" takes
// back; "uei" also shortens kuei and k'uei, which "kui" and "k'ui" lengthen
// again.
constexpr Row kWadeRepairs[] = {
    {Always(), "uei", "ui"},     {Always(), "iou", "iu"},
    {Always(), "ian", "ien"},    {Always(), "ieng", "iang"},
    {Always(), "yüng", "yung"},  {Always(), "tuo", "to"},
    {Always(), "t'uo", "t'o"},   {Always(), "luo", "lo"},
    {Always(), "nuo", "no"},     {Always(), "kui", "kuei"},
    {Always(), "k'ui", "k'uei"},
};

// yan is yen, unless the working text begins with yang: in a bracketed
// reading it begins with "(", so "(yang" becomes "(yeng". ㄣ by itself came
// out of the finals as a bare "n".
constexpr Row kWadeYenAndLoneEn[] = {
    {WorkBeginsWithNone("yang"), "yan", "yen"},
    {FirstLetterIs("ㄣ"), "n", "ên"},
};

constexpr std::span<const Row> kWadeRows[] = {
    kMedialI,   kMedialYuWithDots, kMedialU,     kWadeInitials,
    kWadeZhToS, kWadeFinals,       kWadeRepairs, kWadeYenAndLoneEn,
};

// ---------------------------------------------------------------------------
// Zhuyin 2: every spelling comes straight out of the rows. ㄖ and ㄗ are
// spelled the same by themselves and before a final. ㄣ looks at the letter in
// front of it wherever it stands, so ㄍㄨㄣ keeps its e (guen) and ㄣ by itself
// is en without a mend.

constexpr Row kZhuyin2MedialYu[] = {{FirstLetterIs("ㄩ"), "ㄩ", "yu", "iu"}};

constexpr Row kZhuyin2QX[] = {{Always(), "ㄑ", "ch"}, {Always(), "ㄒ", "sh"}};

constexpr auto kZhuyin2ZhToS =
    ZhToS({"jr", "chr", "shr", "r", "tz", "tsz", "sz"},
          {"j", "ch", "sh", "r", "tz", "ts", "s"});

constexpr Row kZhuyin2Finals[] = {
    {Always(), "ㄚ", "a"},
    {Always(), "ㄛ", "o"},
    {Always(), "ㄜ", "e"},
    {FirstLetterIs("ㄝ"), "ㄝ", "ê", "e"},  // ê by itself, e behind a medial
    {Always(), "ㄞ", "ai"},
    {Always(), "ㄟ", "ei"},
    {Always(), "ㄠ", "au"},
    {Always(), "ㄡ", "ou"},
    {Always(), "ㄢ", "an"},
    {BehindNeitherIOrYu("ㄣ"), "ㄣ", "en", "n"},
};

// No syllable gives "een", so this changes no syllable; odd input such as
// "ㄣeen" still meets it.
constexpr Row kZhuyin2MendLoneEn[] = {{FirstLetterIs("ㄣ"), "een", "en"}};

constexpr std::span<const Row> kZhuyin2Rows[] = {
    kMedialI,       kZhuyin2MedialYu, kMedialU,
    kInitialsBToJ,  kZhuyin2QX,       kZhuyin2ZhToS,
    kZhuyin2Finals, kFinalsAngToEr,   kZhuyin2MendLoneEn,
};

static_assert(RowsAreSound(kPinyinRows) && RowsAreSound(kTongyongRows) &&
              RowsAreSound(kWadeRows) && RowsAreSound(kZhuyin2Rows));

// ---------------------------------------------------------------------------
// The interpreter

bool IsAsciiLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

// Byte offset of the first `find` in `work` as Replace finds it (ASCII letter
// case ignored), or npos. A text without ASCII letters, such as every Zhuyin
// letter and mark, is found byte for byte.
std::size_t FindFirst(std::string_view work, std::string_view find) {
  if (find.empty()) return std::string_view::npos;
  if (std::none_of(find.begin(), find.end(), IsAsciiLetter)) {
    return work.find(find);
  }
  const auto folded = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  };
  for (std::size_t at = 0; at + find.size() <= work.size(); ++at) {
    if (folded(work[at]) == folded(find[0]) &&
        Equals(work.substr(at, find.size()), find)) {
      return at;
    }
  }
  return std::string_view::npos;
}

// Replace, done in place.
void Rep(std::string& work, std::string_view find, std::string_view with) {
  const std::size_t at = FindFirst(work, find);
  if (at != std::string_view::npos) work.replace(at, find.size(), with);
}

void RepInOrder(
    std::string& work,
    std::initializer_list<std::pair<std::string_view, std::string_view>>
        pairs) {
  for (const auto& [find, with] : pairs) Rep(work, find, with);
}

// The first `count` characters of `s`, as Left gives them, without a copy.
std::string_view Head(std::string_view s, std::size_t count) {
  std::size_t end = 0;
  for (std::size_t i = 0; i < count && end < s.size(); ++i) {
    end += DecodeChar(s, end).length;
  }
  return s.substr(0, end);
}

// Character number `n` of `s`, as Mid(s, n, 1) gives it: a number below 1
// counts as 1, and past the end there is none.
std::string_view CharAt(std::string_view s, long n) {
  std::size_t at = 0;
  for (long i = 1; i < n && at < s.size(); ++i) at += DecodeChar(s, at).length;
  if (at >= s.size()) return {};
  return s.substr(at, DecodeChar(s, at).length);
}

bool BeginsWithOneOf(std::string_view text,
                     const std::array<std::string_view, 3>& starts) {
  for (std::string_view start : starts) {
    if (!start.empty() && Equals(Head(text, Len(start)), start)) return true;
  }
  return false;
}

bool IsIOrYu(std::string_view c) { return Equals(c, "ㄧ") || Equals(c, "ㄩ"); }

bool LetterStandsAlone(std::string_view field, std::string_view letter,
                       bool neutralToo) {
  const std::string_view two = Head(field, 2);
  if (Equals(TrimView(two), letter)) return true;
  if (two.size() <= letter.size() ||
      !Equals(two.substr(0, letter.size()), letter)) {
    return false;
  }
  const std::string_view mark = two.substr(letter.size());
  return Equals(mark, "ˊ") || Equals(mark, "ˇ") || Equals(mark, "ˋ") ||
         (neutralToo && Equals(mark, "˙"));
}

bool Passes(const Test& test, std::string_view field, std::string_view work) {
  const std::string_view letter = test.of[0];
  switch (test.kind) {
    case Test::kAlways:
      return true;
    case Test::kBeginsWith:
      return BeginsWithOneOf(field, test.of);
    case Test::kStandsAlone:
      return LetterStandsAlone(field, letter, true);
    case Test::kStandsAloneUnlessNeutral:
      return LetterStandsAlone(field, letter, false);
    case Test::kSecondBehindNeitherIOrYu:
      return Equals(CharAt(field, 2), letter) && !IsIOrYu(CharAt(field, 1));
    case Test::kBehindNeitherIOrYu: {
      const long at = InStr(field, letter);
      return at > 0 && !IsIOrYu(CharAt(field, at - 1));
    }
    case Test::kWorkBeginsWithNone:
      return !BeginsWithOneOf(work, test.of);
  }
  return false;
}

// The LetterBit of every Zhuyin letter in `text`. The first byte of a letter
// is no continuation byte, so wherever a byte search finds a letter, the
// letter is one of the characters counted here.
std::uint64_t LettersHeld(std::string_view text) {
  std::uint64_t held = 0;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Char c = DecodeChar(text, at);
    if (c.code >= 0x3100 && c.code <= 0x313F) {
      held |= std::uint64_t{1} << (c.code - 0x3100);
    }
    at += c.length;
  }
  return held;
}

// Runs a system's rows over one field. A row whose letter the working text
// lacks can change nothing, and neither can the rows it hands over to: it is
// passed by before its test is made, and for a Zhuyin letter before any
// search (see RowsAreSound).
void RunRows(Table table, std::string_view field, std::string& work) {
  const std::uint64_t held = LettersHeld(work);
  bool passingBy = false;  // a row replaced and handed over to the next
  for (std::span<const Row> rows : table) {
    for (const Row& row : rows) {
      if (passingBy) {
        passingBy = row.handsOver;
        continue;
      }
      if (row.findBit != 0 && (held & row.findBit) == 0) continue;
      const std::size_t at = FindFirst(work, row.find);
      if (at == std::string_view::npos) continue;
      std::string_view with = row.with;
      if (Passes(row.test, field, work)) {
        passingBy = row.handsOver;
      } else {
        with = row.otherwise;
        if (with.empty()) continue;
      }
      work.replace(at, row.find.size(), with);
    }
  }
}

// ---------------------------------------------------------------------------
// The frame shared by the four systems

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
std::string Convert(std::string_view reading, const ToneSettings& s,
                    Table table, Marker marker, bool trimWorkingText) {
  const std::string_view text = TrimView(reading);
  const long count = CountFields(text, "  ");
  std::string result;
  // Walks the fields left to right, as NthField(text, "  ", index) would give
  // them, without scanning from the start for each one.
  std::size_t from = 0;
  for (long index = 1; index <= count; ++index) {
    const std::size_t end = text.find("  ", from);
    const std::string_view field =
        text.substr(from, end == std::string_view::npos ? end : end - from);
    from = end == std::string_view::npos ? text.size() : end + 2;
    std::string work(trimWorkingText ? TrimView(field) : field);
    if (index == 2) work.insert(0, "(");
    RunRows(table, field, work);
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
  return Convert(reading, s, kPinyinRows, AddPinyinToneSymbol, false);
}

std::string ZhuyinToTungyong(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, kTongyongRows, AddTongYongPinyinToneSymbol, false);
}

// Wade-Giles keeps its digits whatever the tone-number setting says.
std::string ZhuyinToWade(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, kWadeRows, nullptr, true);
}

std::string ZhuyinToZhuyin2(std::string_view reading, const ToneSettings& s) {
  return Convert(reading, s, kZhuyin2Rows, AddZhuyin2ToneSymbol, false);
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
        InStr(syllable, "shr") > 0 || Equals(allButDigit, "r")) {
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
