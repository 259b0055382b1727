// Every syllable of the four spelling tables, at every tone, in all three
// tone forms. The tables are golden files, one "ㄇㄚ ma" line per syllable.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "RomanizationTestData.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

using testing::ConvertWith;
using testing::ReadGoldenRows;
using testing::SettingsNamed;

struct Tone {
  const char* mark;   // as the reading table writes it
  const char* digit;  // as the digit form shows it
};
constexpr Tone kTones[] = {
    {"", "1"}, {"ˊ", "2"}, {"ˇ", "3"}, {"ˋ", "4"}, {"˙", ""}};

bool IsNeutral(const Tone& tone) { return std::string(tone.mark) == "˙"; }

// The tables hold at any tone but one: ㄧ and ㄨ stand alone only with the
// three marks of the full tones, so in the neutral tone they are y and w.
std::string SpellingAt(const std::string& syllable, const std::string& spelling,
                       const Tone& tone) {
  if (IsNeutral(tone) && syllable == "ㄧ") return "y";
  if (IsNeutral(tone) && syllable == "ㄨ") return "w";
  return spelling;
}

// A marked spelling taken back to its letters, and how many tone marks it
// carried. The third-tone u with caron (U+01D4) is deliberately unknown here,
// so it shows as a wrong letter.
std::pair<std::string, int> StripToneMarks(const std::string& s) {
  static const std::pair<std::uint32_t, const char*> kMarked[] = {
      {0x0101, "a"}, {0x00E1, "a"}, {0x01CE, "a"}, {0x00E0, "a"}, {0x0113, "e"},
      {0x00E9, "e"}, {0x011B, "e"}, {0x00E8, "e"}, {0x014D, "o"}, {0x00F3, "o"},
      {0x01D2, "o"}, {0x00F2, "o"}, {0x012B, "i"}, {0x00ED, "i"}, {0x01D0, "i"},
      {0x00EC, "i"}, {0x016B, "u"}, {0x00FA, "u"}, {0x016D, "u"}, {0x00F9, "u"},
      {0x01D6, "ü"}, {0x01D8, "ü"}, {0x01DA, "ü"}, {0x01DC, "ü"}, {0x00E5, "a"},
      {0x016F, "u"}};
  std::string letters;
  int marks = 0;
  for (std::size_t pos = 0; pos < s.size();) {
    const Utf8Char c = DecodeChar(s, pos);
    pos += c.length;
    if (c.code == 0x0304 || c.code == 0x0301 || c.code == 0x0306 ||
        c.code == 0x0300 || c.code == 0x030A) {
      ++marks;
      continue;
    }
    if (c.code == 0x0131) {  // dotless i, only ever under the neutral ring
      letters += "i";
      continue;
    }
    std::string letter = Chr(c.code);
    for (const auto& [code, base] : kMarked) {
      if (code == c.code) letter = base, ++marks;
    }
    letters += letter;
  }
  return {letters, marks};
}

class SyllableTableTest : public ::testing::TestWithParam<const char*> {
 protected:
  std::string System() const { return GetParam(); }
  std::vector<std::vector<std::string>> Table() const {
    auto rows = ReadGoldenRows(System() + ".txt", true);
    EXPECT_EQ(rows.size(), 412u) << "syllable table of " << System();
    return rows;
  }
};

TEST_P(SyllableTableTest, TonesOffGiveTheTableSpellingAtEveryTone) {
  for (const auto& row : Table()) {
    ASSERT_EQ(row.size(), 2u);
    for (const Tone& tone : kTones) {
      EXPECT_EQ(ConvertWith(System(), row[0] + tone.mark, SettingsNamed("off")),
                SpellingAt(row[0], row[1], tone))
          << row[0] << tone.mark;
    }
  }
}

TEST_P(SyllableTableTest, ToneDigitsFollowTheSpellingAndNeutralHasNone) {
  for (const auto& row : Table()) {
    for (const Tone& tone : kTones) {
      EXPECT_EQ(
          ConvertWith(System(), row[0] + tone.mark, SettingsNamed("digits")),
          SpellingAt(row[0], row[1], tone) + tone.digit)
          << row[0] << tone.mark;
    }
  }
}

// In mark form each syllable keeps its letters and carries one mark, or none
// where the rules give none: no vowel (ng, and y/w in the neutral tone), ê in
// Zhuyin 2, the first tone of Tongyong, the neutral tone of Hanyu and
// Zhuyin 2. Wade-Giles keeps its digits. Where the mark goes is checked
// syllable by syllable in the worked cases.
TEST_P(SyllableTableTest, ToneMarksKeepTheLettersAndAddOneMark) {
  const std::string system = System();
  for (const auto& row : Table()) {
    for (const Tone& tone : kTones) {
      const std::string spelling = SpellingAt(row[0], row[1], tone);
      const std::string out =
          ConvertWith(system, row[0] + tone.mark, SettingsNamed("marks"));
      SCOPED_TRACE(row[0] + tone.mark + " -> " + out);
      if (system == "wade") {
        EXPECT_EQ(out, spelling + tone.digit);
        continue;
      }
      const bool plain =
          (system != "tongyong" && IsNeutral(tone)) ||
          (system == "tongyong" && std::string(tone.digit) == "1");
      if (plain) {
        EXPECT_EQ(out, spelling);
        continue;
      }
      const bool markless = spelling == "ng" || spelling == "y" ||
                            spelling == "w" ||
                            (system == "zhuyin2" && spelling == "ê");
      const auto [letters, marks] = StripToneMarks(out);
      EXPECT_EQ(letters, spelling);
      EXPECT_EQ(marks, markless ? 0 : 1);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllSystems, SyllableTableTest,
                         ::testing::Values("pinyin", "tongyong", "wade",
                                           "zhuyin2"));

}  // namespace
}  // namespace quill
