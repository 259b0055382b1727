// Worked conversions, the tone-mark routines on their own, and every
// syllable of the four spelling tables at every tone in the three tone
// forms, all from the tables in tests/data/romanization.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "romanization/Romanization.hpp"
#include "tests/text/CaseTable.hpp"

namespace quill {
namespace {

// "off", "digits", "marks", "-first" for the first reading only, or the
// three values spelled out as "INDICATE,NUMBERS,MULTIPLE".
ToneSettings SettingsNamed(const std::string& name) {
  if (name == "off") return {"0", "1", "1"};
  if (name == "digits") return {"1", "1", "1"};
  if (name == "marks") return {"1", "0", "1"};
  if (name == "digits-first") return {"1", "1", "0"};
  if (name == "marks-first") return {"1", "0", "0"};
  const std::size_t a = name.find(','), b = name.rfind(',');
  return {name.substr(0, a), name.substr(a + 1, b - a - 1), name.substr(b + 1)};
}

// A system as the look-up calls it (Zhuyin 2 with the trailing blank), or
// a tone-mark routine.
std::string ConvertWith(const std::string& system, const std::string& reading,
                        const ToneSettings& s) {
  if (system == "pinyin") return ZhuyinToPinyin(reading, s);
  if (system == "tongyong") return ZhuyinToTungyong(reading, s);
  if (system == "wade") return ZhuyinToWade(reading, s);
  if (system == "zhuyin2") return ZhuyinToZhuyin2(reading + " ", s);
  if (system == "mark-pinyin") return AddPinyinToneSymbol(reading);
  if (system == "mark-tongyong") return AddTongYongPinyinToneSymbol(reading);
  if (system == "mark-zhuyin2") return AddZhuyin2ToneSymbol(reading);
  return "unknown system " + system;
}

TEST(Romanization, WorkedConversionsAndToneMarks) {
  const auto rows = ReadCaseTable("romanization/cases.txt");
  ASSERT_GT(rows.size(), 300u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 5u) << "line " << row[0];
    EXPECT_EQ(ConvertWith(row[1], row[3], SettingsNamed(row[2])), row[4])
        << "line " << row[0] << ": " << row[1] << " " << row[2] << " \""
        << row[3] << "\"";
  }
}

// Each line: a syllable, then its five tones (ˉ ˊ ˇ ˋ ˙) with tones off,
// in digits and in marks.
TEST(Romanization, EverySyllableAtEveryToneInEachForm) {
  const char* const kTones[] = {"", "ˊ", "ˇ", "ˋ", "˙"};
  const char* const kForms[] = {"off", "digits", "marks"};
  for (const char* system : {"pinyin", "tongyong", "wade", "zhuyin2"}) {
    const auto rows =
        ReadCaseTable(std::string("romanization/") + system + ".txt");
    EXPECT_EQ(rows.size(), 412u) << system;
    for (const auto& row : rows) {
      ASSERT_EQ(row.size(), 5u) << system << " line " << row[0];
      for (int form = 0; form < 3; ++form) {
        std::istringstream spellings(row[2 + form]);
        for (const char* tone : kTones) {
          std::string want;
          spellings >> want;
          EXPECT_EQ(
              ConvertWith(system, row[1] + tone, SettingsNamed(kForms[form])),
              want)
              << system << " " << row[1] << tone << " " << kForms[form];
        }
      }
    }
  }
}

}  // namespace
}  // namespace quill
