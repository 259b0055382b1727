#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "lookup/ReadingTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

const std::string kTable =
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n"
    "文   ㄨㄣˊ\n"
    "好   ㄏㄠˇ  ㄏㄠˋ\n";

TEST(ReadingTable, FindsTheFirstAndTheLastLineAlike) {
  ReadingTable table;
  table.Assign(kTable);
  const long first = table.Find("中");
  const long last = table.Find("好");
  EXPECT_EQ(first, 1);
  EXPECT_EQ(table.ReadingEntry(first), "ㄓㄨㄥ  ㄓㄨㄥˋ");
  EXPECT_EQ(table.ReadingEntry(last), "ㄏㄠˇ  ㄏㄠˋ");
  EXPECT_EQ(
      CountFields(std::string(table.ReadingEntry(table.Find("文"))), "  "), 1);
  EXPECT_EQ(table.Find("國"), 0);
  EXPECT_EQ(table.Find(""), 0);
}

TEST(ReadingTable, MalformedLinesGiveWhatTheByteArithmeticGives) {
  ReadingTable table;
  // A line too short for its six leading bytes, and a last line without LF.
  table.Assign("中\n文   ㄨㄣˊ");
  EXPECT_EQ(table.ReadingEntry(table.Find("中")), "");
  EXPECT_EQ(table.ReadingEntry(table.Find("文")), "");
  // A CR before the LF becomes part of the last reading.
  table.Assign("中   ㄓㄨㄥ\r\n");
  EXPECT_EQ(table.ReadingEntry(1), "ㄓㄨㄥ\r");
}

// The index must answer exactly what a byte search from the start answers,
// whatever the content: keys inside readings, misaligned bytes, garbage.
TEST(ReadingTable, IndexAgreesWithAByteSearchOnAnyContent) {
  std::mt19937 random(7);
  const std::vector<std::string> pieces = {"中",
                                           "文",
                                           "好",
                                           "ㄓ",
                                           "ˋ",
                                           " ",
                                           "\n",
                                           "\xE4",
                                           "\xB8",
                                           "\xAD",
                                           "é",
                                           "a",
                                           "\xF0\x9F\x98\x80",
                                           "\xC0",
                                           "\xFF",
                                           "Ā"};
  for (int round = 0; round < 200; ++round) {
    std::string content;
    for (int i = 0; i < 40; ++i) content += pieces[random() % pieces.size()];
    ReadingTable table;
    table.Assign(content);
    for (const std::string& needle : pieces) {
      EXPECT_EQ(table.Find(needle), InStrB(0, content, needle))
          << "needle " << needle << " in round " << round;
    }
    EXPECT_EQ(table.Find("中文"), InStrB(0, content, "中文"));
  }
}

class ReadingTableFile : public TempFolderTest {};

TEST_F(ReadingTableFile, LoadsOnceAndKeepsTheTextWhenTheFileGoes) {
  const std::string path = Path("zhuyintable");
  ReadingTable table;
  EXPECT_FALSE(table.Load(path + "-missing"));
  EXPECT_TRUE(table.empty());
  { std::ofstream(path) << ""; }
  EXPECT_FALSE(table.Load(path));  // an empty file counts as missing
  { std::ofstream(path) << kTable; }
  EXPECT_TRUE(table.Load(path));
  std::filesystem::remove(path);
  EXPECT_TRUE(table.Load(path));
  EXPECT_EQ(table.Find("好"), InStrB(0, kTable, "好"));
}

}  // namespace
}  // namespace quill
