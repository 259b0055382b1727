// Worked conversions and tone marks, the three settings, the exact code
// points of the marks, and input that no table holds.
#include <gtest/gtest.h>

#include <string>

#include "RomanizationTestData.hpp"
#include "romanization/Romanization.hpp"

namespace quill {
namespace {

using testing::ConvertWith;
using testing::ReadGoldenRows;
using testing::SettingsNamed;

TEST(RomanizationCases, WorkedConversions) {
  const auto rows = ReadGoldenRows("cases.txt", false);
  ASSERT_GT(rows.size(), 100u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4u) << row[0];
    EXPECT_EQ(ConvertWith(row[0], row[2], SettingsNamed(row[1])), row[3])
        << row[0] << " " << row[1] << " \"" << row[2] << "\"";
  }
}

TEST(RomanizationCases, ToneMarkRoutines) {
  const auto rows = ReadGoldenRows("tone-marks.txt", false);
  ASSERT_GT(rows.size(), 50u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 3u) << row[0];
    std::string out;
    if (row[0] == "pinyin") out = AddPinyinToneSymbol(row[1]);
    if (row[0] == "tongyong") out = AddTongYongPinyinToneSymbol(row[1]);
    if (row[0] == "zhuyin2") out = AddZhuyin2ToneSymbol(row[1]);
    EXPECT_EQ(out, row[2]) << row[0] << " \"" << row[1] << "\"";
  }
}

// ㄇㄚˇ under every setting: "0" alone switches tones off, "1" alone
// switches digits on; any other value, the empty one too, means the other.
TEST(RomanizationCases, SettingsMatrixOnMa3) {
  struct Row {
    const char* indicate;
    const char* numbers;
    const char* pinyin;
    const char* tongyong;
    const char* zhuyin2;
    const char* wade;
  };
  const Row rows[] = {
      {"0", "1", "ma", "ma", "ma", "ma"},
      {"0", "0", "ma", "ma", "ma", "ma"},
      {"0", "", "ma", "ma", "ma", "ma"},
      {"1", "1", "ma3", "ma3", "ma3", "ma3"},
      {"", "1", "ma3", "ma3", "ma3", "ma3"},
      {"yes", "1", "ma3", "ma3", "ma3", "ma3"},
      {"1", "0", "mǎ", "mǎ", "mǎ", "ma3"},
      {"1", "", "mǎ", "mǎ", "mǎ", "ma3"},
      {"", "", "mǎ", "mǎ", "mǎ", "ma3"},
      {"1", "2", "mǎ", "mǎ", "mǎ", "ma3"},
  };
  for (const Row& r : rows) {
    for (const char* multiple : {"0", "1", ""}) {
      const ToneSettings s{r.indicate, r.numbers, multiple};
      SCOPED_TRACE(std::string("indicate \"") + r.indicate + "\" numbers \"" +
                   r.numbers + "\" multiple \"" + multiple + "\"");
      EXPECT_EQ(ZhuyinToPinyin("ㄇㄚˇ", s), r.pinyin);
      EXPECT_EQ(ZhuyinToTungyong("ㄇㄚˇ", s), r.tongyong);
      EXPECT_EQ(ZhuyinToZhuyin2("ㄇㄚˇ ", s), r.zhuyin2);
      EXPECT_EQ(ZhuyinToWade("ㄇㄚˇ", s), r.wade);
    }
  }
}

TEST(RomanizationCases, OnlyZeroLimitsToTheFirstReading) {
  const char* reading = "ㄇㄚ  ㄇㄛˊ";
  EXPECT_EQ(ZhuyinToPinyin(reading, {"1", "1", "0"}), "ma1");
  EXPECT_EQ(ZhuyinToPinyin(reading, {"1", "1", ""}), "ma1(mo2)");
  EXPECT_EQ(ZhuyinToPinyin(reading, {"1", "1", "2"}), "ma1(mo2)");
}

// The marks whose code points matter and are easy to get wrong.
TEST(RomanizationCases, ExactCodePointsOfTheMarks) {
  // Third-tone u is u with breve, never u with caron (U+01D4).
  EXPECT_EQ(AddPinyinToneSymbol("bu3"), "b\u016D");
  EXPECT_EQ(AddZhuyin2ToneSymbol("bu3"), "b\u016D");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("yu3"), "y\u016D");
  EXPECT_EQ(ZhuyinToPinyin("ㄅㄨˇ", SettingsNamed("marks")).find("\u01D4"),
            std::string::npos);
  // Zhuyin 2 consonants: base letter and combining mark, never precomposed.
  EXPECT_EQ(AddZhuyin2ToneSymbol("r1"), "r\u0304");
  EXPECT_EQ(AddZhuyin2ToneSymbol("r2"), "r\u0301");
  EXPECT_NE(AddZhuyin2ToneSymbol("r2"), "\u0155");
  EXPECT_EQ(AddZhuyin2ToneSymbol("r3"), "r\u0306");
  EXPECT_EQ(AddZhuyin2ToneSymbol("r4"), "r\u0300");
  EXPECT_EQ(AddZhuyin2ToneSymbol("tz1"), "tz\u0304");
  EXPECT_EQ(AddZhuyin2ToneSymbol("tz2"), "tz\u0301");
  EXPECT_NE(AddZhuyin2ToneSymbol("tz2"), "t\u017A");
  EXPECT_EQ(AddZhuyin2ToneSymbol("tz3"), "tz\u0306");
  EXPECT_EQ(AddZhuyin2ToneSymbol("tz4"), "tz\u0300");
  // Tongyong neutral tone: a ring, precomposed only on a and u, and on the
  // dotless i.
  EXPECT_EQ(AddTongYongPinyinToneSymbol("ma"), "m\u00E5");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("de"), "de\u030A");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("wo"), "wo\u030A");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("di"), "d\u0131\u030A");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("lu"), "l\u016F");
  EXPECT_EQ(AddTongYongPinyinToneSymbol("n\u00FC"), "n\u00FC\u030A");
  // Tongyong first tone: the plain letter.
  EXPECT_EQ(AddTongYongPinyinToneSymbol("ma1"), "ma");
}

TEST(RomanizationCases, MarksOfEveryVowelAndTone) {
  const char* vowels[] = {"a", "e", "o", "i", "u", "\u00FC"};
  const char* marked[6][4] = {
      {"\u0101", "\u00E1", "\u01CE", "\u00E0"},
      {"\u0113", "\u00E9", "\u011B", "\u00E8"},
      {"\u014D", "\u00F3", "\u01D2", "\u00F2"},
      {"\u012B", "\u00ED", "\u01D0", "\u00EC"},
      {"\u016B", "\u00FA", "\u016D", "\u00F9"},
      {"\u01D6", "\u01D8", "\u01DA", "\u01DC"},
  };
  for (int v = 0; v < 6; ++v) {
    for (int t = 0; t < 4; ++t) {
      const std::string arg =
          std::string("b") + vowels[v] + "n" + std::to_string(t + 1);
      const std::string want = std::string("b") + marked[v][t] + "n";
      EXPECT_EQ(AddPinyinToneSymbol(arg), want) << arg;
      EXPECT_EQ(AddZhuyin2ToneSymbol(arg), want) << arg;
      EXPECT_EQ(AddTongYongPinyinToneSymbol(arg),
                t == 0 ? std::string("b") + vowels[v] + "n" : want)
          << arg;
    }
  }
}

// Nothing of this comes from a well-formed table; it must still come back
// whole, without a crash, and with the unknown parts copied through.
TEST(RomanizationCases, OddInputIsCopiedThrough) {
  const ToneSettings digits = SettingsNamed("digits");
  const ToneSettings marks = SettingsNamed("marks");
  EXPECT_EQ(ZhuyinToPinyin("", digits), "1");
  EXPECT_EQ(ZhuyinToWade("   ", digits), "1");
  EXPECT_EQ(ZhuyinToPinyin("", SettingsNamed("off")), "");
  EXPECT_EQ(AddPinyinToneSymbol(""), "");
  EXPECT_EQ(AddTongYongPinyinToneSymbol(""), "");
  EXPECT_EQ(AddZhuyin2ToneSymbol(""), "");
  EXPECT_EQ(ZhuyinToPinyin("ㄇxㄚ", digits), "mxa1");
  EXPECT_EQ(ZhuyinToTungyong("中ㄚ", digits), "中a1");

  const std::string invalid = "\xFF\xC3ㄇㄚ\x80";
  EXPECT_EQ(ZhuyinToPinyin(invalid, digits),
            "\xFF\xC3ma\x80"
            "1");
  EXPECT_EQ(AddPinyinToneSymbol("\xFF"
                                "a\xC3"
                                "3"),
            "\xFF\u01CE\xC3");
  const std::string nul("ㄇ\0ㄚ", 7);
  EXPECT_EQ(ZhuyinToWade(nul, digits), std::string("m\0a1", 4));

  std::string huge;
  for (int i = 0; i < 20000; ++i) huge += i == 0 ? "ㄇㄚˇ" : "  ㄇㄚˇ";
  const std::string out = ZhuyinToZhuyin2(huge, marks);
  const std::string head = "mǎ(mǎ,mǎ,";
  EXPECT_EQ(out.substr(0, head.size()), head);
  EXPECT_EQ(out.back(), ')');
  EXPECT_EQ(ZhuyinToZhuyin2(huge, SettingsNamed("marks-first")), "mǎ");
}

}  // namespace
}  // namespace quill
