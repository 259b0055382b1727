#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "readings/ContextReadings.hpp"
#include "readings/PhraseTable.hpp"
#include "readings/UserPhrases.hpp"
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

const std::string kData = std::string(QUILLMERE_TEST_DATA) + "/readings/";

TEST(Readings, ChooseReadingsTable) {
  PhraseTable table;
  ASSERT_TRUE(table.Open(kData + "phrases"));
  UserPhrases user(kData + "userphrases");
  user.Refresh();
  ASSERT_TRUE(user.Problems().empty());
  const PhraseTable none;
  const auto rows = ReadCaseTable("readings/choose.txt");
  ASSERT_GE(rows.size(), 20u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4u);
    const auto readings =
        ChooseReadings(row[2], table, row[1] == "user" ? user.Table() : none);
    std::string got;
    for (const auto r : readings) {
      got += (got.empty() ? "" : " ") + (r.empty() ? "-" : std::string(r));
    }
    EXPECT_EQ(got, row[3]) << "line " << row[0];
  }
}

TEST(Readings, PutFirstTable) {
  const auto rows = ReadCaseTable("readings/putfirst.txt");
  ASSERT_GE(rows.size(), 7u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4u);
    EXPECT_EQ(PutFirst(row[1], row[2]), row[3]) << "line " << row[0];
  }
}

TEST(Readings, UserPhraseLinesTable) {
  const auto rows = ReadCaseTable("readings/userlines.txt");
  ASSERT_GE(rows.size(), 30u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 3u);
    const ParsedUserPhrases parsed = ParseUserPhrases(row[1]);
    std::string got;
    for (const auto& e : parsed.entries) {
      got += (got.empty() ? "" : " | ") + e.word + "=" + e.readings;
    }
    for (const auto& p : parsed.problems) {
      got +=
          (got.empty() ? "" : " | ") + std::to_string(p.line) + ": " + p.what;
    }
    EXPECT_EQ(got, row[2]) << "line " << row[0];
  }
}

// Every standard syllable reads alike as numbered pinyin and as Zhuyin.
TEST(Readings, EveryStandardSyllable) {
  std::istringstream in(ReadFile(std::string(QUILLMERE_SOURCE_DIR) +
                                 "/tools/standard_syllables.txt"));
  int count = 0;
  for (std::string zhuyin, pinyin; in >> zhuyin >> pinyin;) {
    if (zhuyin == "#") {
      std::getline(in, zhuyin);
      continue;
    }
    if (zhuyin != "ㄝ") {
      EXPECT_EQ(ReadingToZhuyin(pinyin + "4"), zhuyin + "ˋ");
    }
    EXPECT_EQ(ReadingToZhuyin(zhuyin + "ˇ"), zhuyin + "ˇ");
    ++count;
  }
  EXPECT_GT(count, 400);
  EXPECT_EQ(ReadingToZhuyin("ê2"), "ㄝˊ");
}

// A damaged file gives the lines that can be read.
std::string Repeat(const std::string& s, int times, const std::string& gap) {
  std::string out = s;
  for (int i = 1; i < times; ++i) out += gap + s;
  return out;
}

TEST(Readings, DamagedPhraseFiles) {
  const std::string good = "中国\tㄓㄨㄥ ㄍㄨㄛˊ\t500\n";
  const struct {
    std::string content;
    std::size_t entries;
  } cases[] = {
      {"", 0},
      {good + "银\tㄧㄣˊ\t9", 1},                       // no final LF
      {good + "银\tㄧㄣˊ\t9\r\n", 1},                   // CR
      {good + std::string("银\0\tㄧㄣˊ\t9\n", 15), 1},  // NUL
      {good + "银行\tㄧㄣˊ\t9\n", 1},                   // one syllable short
      {good + "银行\tㄧㄣˊ  ㄏㄤˊ\t9\n", 1},            // two blanks
      {good + "银\tyin2\t9\n", 1},                      // not Zhuyin
      {good + "银\tㄧㄧㄣㄣ\t9\n", 1},                  // four letters
      {good + "银\tˊ\t9\n", 1},                         // a mark alone
      {good + "不\tㄅㄨˋ\t9\n", 2},                     // ㄅ, the first letter
      {good + "银\t䄅\t9\n", 1},            // bytes 84 85 behind another lead
      {good + "银\tㄧㄣˊ\t-9\n", 1},        // no cost
      {good + "a\tㄧㄣˊ\t9\n\n\t\t\n", 1},  // not Chinese, empty
      {"银\tㄧㄣˊ\t9\n" + good + good, 2},  // unsorted, twice
      {std::string(300, '\xE4') + "\tㄚ\t1\n" + good, 1},
      {Repeat("𠀀", 64, "") + "\t" + Repeat("ㄚ", 64, " ") + "\t1\n" + good,
       1},  // a word of 256 bytes, one more than a word may have
  };
  for (const auto& c : cases) {
    PhraseTable table;
    table.Assign(c.content);
    EXPECT_EQ(table.size(), c.entries) << c.content;
    if (c.entries == 0) continue;
    std::vector<PhraseTable::Match> words;
    table.WordsAt("中国", 0, words);
    ASSERT_EQ(words.size(), 1u) << c.content;
    EXPECT_EQ(table.Readings(words[0].entry), "ㄓㄨㄥ ㄍㄨㄛˊ");
  }
  PhraseTable missing;
  EXPECT_FALSE(missing.Open(kData + "no such file"));
  EXPECT_TRUE(missing.empty());
  // A table moved away from is left empty.
  PhraseTable moved;
  moved.Assign(good);
  missing = std::move(moved);
  EXPECT_EQ(missing.size(), 1u);
  EXPECT_EQ(missing.skippedLines(), 0u);
  EXPECT_TRUE(moved.empty());
  // A mapped one moves its mapping: the table moved to still reads it.
  ASSERT_TRUE(moved.Open(kData + "phrases"));
  missing = std::move(moved);
  std::vector<PhraseTable::Match> words;
  missing.WordsAt("银行", 0, words);
  ASSERT_EQ(words.size(), 2u);
  EXPECT_EQ(missing.Readings(words[1].entry), "ㄧㄣˊ ㄏㄤˊ");
}

std::string ReadingsOf(const PhraseTable& table, std::string_view word) {
  std::vector<PhraseTable::Match> words;
  table.WordsAt(word, 0, words);
  if (words.empty() || words.back().bytes != word.size()) return "(none)";
  return std::string(table.Readings(words.back().entry));
}

class UserPhrasesFile : public TempFolderTest {};

TEST_F(UserPhrasesFile, IsReadAgainWhenItChanges) {
  const std::string path = Path("phrases");
  UserPhrases user("");
  user.SetPath(path);
  EXPECT_TRUE(user.Refresh());
  EXPECT_TRUE(user.Table().empty());
  EXPECT_FALSE(user.HasUnreportedProblems());
  EXPECT_FALSE(user.Refresh());
  std::ofstream(path) << "银行 yin2 xing2\n银行 yin2 hang2\nbad\n";
  EXPECT_TRUE(user.Refresh());
  EXPECT_EQ(user.Table().size(), 1u);
  EXPECT_EQ(ReadingsOf(user.Table(), "银行"),
            "ㄧㄣˊ ㄏㄤˊ");  // the last line wins
  EXPECT_TRUE(user.HasUnreportedProblems());
  user.MarkProblemsReported();
  EXPECT_FALSE(user.Refresh());
  EXPECT_FALSE(user.HasUnreportedProblems());
  std::ofstream(path) << "银行 yin2 xing2\n";
  EXPECT_TRUE(user.Refresh());
  EXPECT_EQ(ReadingsOf(user.Table(), "银行"), "ㄧㄣˊ ㄒㄧㄥˊ");
  EXPECT_FALSE(user.HasUnreportedProblems());
  std::filesystem::remove(path);
  EXPECT_TRUE(user.Refresh());
  EXPECT_TRUE(user.Table().empty());
}

}  // namespace
}  // namespace quill
