// Damaged and odd zhuyintable files: each gives the missing-table message or
// a result, never a crash or a hang, through the engine, the page and the
// CLI alike. Tables whose lines are odd are rows of
// tests/data/lookup/lookups.txt. And STTABLE as a folder.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

LookUpSettings ZhuyinOnly(Mode mode = Mode::kConverter) {
  LookUpSettings settings;
  settings.mode = mode;
  settings.PinyinSystemsPrefValue = "01000";
  return settings;
}

// The whole result of a converter-mode look-up with Zhuyin 1 alone.
std::string ZhuyinBlock(const std::string& body) {
  return "\r\rZhuyin 1 (Bopomofo)\r-------------------\r" + body + "\r";
}

class HostileTableTest : public TableFixture {};

// Ways for zhuyintable to give no text; each is the missing table.
struct NoTextCase {
  const char* name;
  void (*make)(const std::string& path);
};
const NoTextCase kNoText[] = {
    {"empty file",
     [](const std::string& p) { std::ofstream(p, std::ios::binary); }},
    {"a folder",
     [](const std::string& p) { std::filesystem::create_directory(p); }},
    {"a folder with a file in it",
     [](const std::string& p) {
       std::filesystem::create_directory(p);
       std::ofstream(p + "/zhuyintable") << "中   ㄓㄨㄥ\n";
     }},
};

TEST_F(HostileTableTest, NoTextMeansTheTableIsMissing) {
  for (const NoTextCase& c : kNoText) {
    SCOPED_TRACE(c.name);
    std::filesystem::remove_all(Path("zhuyintable"));
    c.make(Path("zhuyintable"));
    LookUpEngine engine(FilesWithTable(std::nullopt));
    EXPECT_EQ(engine.LookUp("中", ZhuyinOnly()).outcome,
              LookUpEngine::Outcome::kTableMissing);
    EXPECT_EQ(engine.LookUp("中", ZhuyinOnly(Mode::kDictionary)).outcome,
              LookUpEngine::Outcome::kTableMissing);
    EXPECT_EQ(BuildPhoneticPage("中", ZhuyinOnly(), engine).status,
              ExportPage::Status::kTableMissing);
  }
  DataFiles files = FilesWithTable(std::nullopt);
  files.zhuyintable = "/dev/null";
  LookUpEngine engine(files);
  EXPECT_EQ(engine.LookUp("中", ZhuyinOnly()).outcome,
            LookUpEngine::Outcome::kTableMissing);
}

// A line of megabytes, as a table whose line ends were damaged leaves: its
// key gets every field of it, and the look-up ends in good time.
TEST_F(HostileTableTest, AHugeLineIsOneLongReadingEntry) {
  const std::size_t count = 20000;
  std::string table = "中   ㄓㄨㄥ";
  std::string expected = "ㄓㄨㄥ (";
  for (std::size_t i = 1; i < count; ++i) {
    table += "  ㄓㄨㄥˋ";
    expected += i > 1 ? "  ㄓㄨㄥˋ" : "ㄓㄨㄥˋ";
  }
  table += "\n";
  expected += ") ";
  LookUpEngine engine(FilesWithTable(table));
  const auto zhuyin = engine.LookUp("中", ZhuyinOnly());
  EXPECT_EQ(zhuyin.text, ZhuyinBlock(expected));
  const auto all = engine.LookUp("中", LookUpSettings{});
  EXPECT_EQ(all.outcome, LookUpEngine::Outcome::kShown);
  EXPECT_NE(all.text.find("zhōng(zhòng,zhòng,"), std::string::npos);
  EXPECT_NE(all.text.find("chung1(chung4,chung4,"), std::string::npos);
  EXPECT_EQ(BuildPhoneticPage("中", LookUpSettings{}, engine).status,
            ExportPage::Status::kDone);
}

// A folder where STTABLE should be reads as no file, and is looked for
// again at the next look-up; the table has the Traditional forms only.
TEST_F(HostileTableTest, AFolderAsTheSttableCountsAsNone) {
  std::filesystem::create_directory(Path("STTABLE"));
  LookUpEngine engine(FilesWithTable("中   ㄓㄨㄥ\n國   ㄍㄨㄛˊ\n"));
  const LookUpSettings settings = ZhuyinOnly(Mode::kDictionary);
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 5), "中\r\r");
  std::filesystem::remove(Path("STTABLE"));
  std::filesystem::copy_file(QUILLMERE_SOURCE_DIR "/data/STTABLE",
                             Path("STTABLE"));
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 8), "中国\r\r");
}

}  // namespace
}  // namespace quill
