// Damaged and odd zhuyintable files: each gives the missing-table message or
// a result, never a crash or a hang, through the engine, the page and the
// CLI alike.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/robustness/Hostile.hpp"
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

class HostileTableTest : public TableFixture {
 protected:
  // Looks `input` up with the table `content`, in a fresh engine.
  LookUpEngine::Result LookUpWith(const std::string& content,
                                  const std::string& input,
                                  const LookUpSettings& settings) {
    LookUpEngine engine(FilesWithTable(content));
    return engine.LookUp(input, settings);
  }

  hostile::CliRun Cli(const std::string& args) {
    return hostile::RunCli("--raw --table '" + Path("zhuyintable") + "' " +
                           args);
  }
};

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

// The readings are the bytes from the seventh byte of the key's line up to
// the next LF, whatever the line holds; nothing is checked.
TEST_F(HostileTableTest, MalformedLinesGiveTheirBytesAsReadings) {
  struct Case {
    const char* name;
    std::string table;
    std::string input;
    std::string body;  // converter mode, Zhuyin 1 alone
  };
  const Case cases[] = {
      {"a CR before the LF becomes part of the last reading", "文   ㄨㄣˊ\r\n",
       "文", "ㄨㄣˊ\r "},
      // Ā is two bytes: the seventh byte is inside the first reading.
      {"a 2-byte key", "Ā   ㄚ\n", "Ā", "\x84\x9a "},
      // A 4-byte key: the seventh byte is the last filler byte.
      {"a 4-byte key", "𠀀   ㄚ\n", "𠀀", " ㄚ "},
      // Characters up to U+00FF are never searched, even when keys.
      {"a 1-byte key", "a   ㄚ\n中   ㄓㄨㄥ\n", "a中", "aㄓㄨㄥ "},
      {"a 2-byte key below U+0100", "é   ㄚ\n中   ㄓㄨㄥ\n", "é中", "éㄓㄨㄥ "},
      {"a line too short for its filler, then a whole one", "文\n中   ㄓㄨㄥ\n",
       "中", "ㄓㄨㄥ "},
      {"a filler that runs into the next line", "文 \n中   ㄓㄨㄥ\n", "中",
       "ㄓㄨㄥ "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const auto result = LookUpWith(c.table, c.input, ZhuyinOnly());
    EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
    EXPECT_EQ(result.text, ZhuyinBlock(c.body));
  }
}

// A key whose line has no reading bytes before its LF, or no LF at all,
// gets no reading text; the look-up goes on around it.
TEST_F(HostileTableTest, KeysWithoutReadingBytesStillLetTheRestThrough) {
  const std::string tables[] = {
      "中   ㄓㄨㄥ\n文   ㄨㄣˊ",  // the last line has no LF
      "中   ㄓㄨㄥ\n文",          // the last line is only a key
      "中   ㄓㄨㄥ\n文\n",        // a line too short
      "中   ㄓㄨㄥ\n文   \n",     // filler, then nothing
  };
  for (const std::string& table : tables) {
    SCOPED_TRACE(table);
    for (const Mode mode : {Mode::kConverter, Mode::kDictionary}) {
      LookUpSettings settings;
      settings.mode = mode;
      const auto result = LookUpWith(table, "中文中", settings);
      EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
      EXPECT_TRUE(IsValidUtf8(result.text));
      EXPECT_NE(result.text.find("ㄓㄨㄥ"), std::string::npos);
      EXPECT_NE(result.text.find("zhōng"), std::string::npos);
      EXPECT_EQ(result.text.find("ㄨㄣˊ"), std::string::npos);
    }
    LookUpEngine engine(FilesWithTable(table));
    const auto page = BuildPhoneticPage("中文", ZhuyinOnly(), engine);
    EXPECT_EQ(page.status, ExportPage::Status::kDone);
    EXPECT_NE(page.text.find("<ruby>中<rt>ㄓㄨㄥ</rt></ruby>"),
              std::string::npos);
  }
}

// A line of megabytes, as a table whose line ends were damaged leaves: its
// key gets every field of it, and the look-up ends in good time.
TEST_F(HostileTableTest, AHugeLineIsOneLongReadingEntry) {
  const std::size_t count = hostile::Shrunk() ? 20000 : 100000;
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

// The table with CR line ends and one LF at the end: every key's readings
// run to the end of the file, and still every look-up ends.
TEST_F(HostileTableTest, ATableWithCarriageReturnLineEnds) {
  const std::string source = "中   ㄓㄨㄥ  ㄓㄨㄥˋ\r文   ㄨㄣˊ\r好   ㄏㄠˇ\n";
  LookUpEngine engine(FilesWithTable(source));
  const auto result = engine.LookUp("中文好", ZhuyinOnly());
  EXPECT_EQ(result.text, ZhuyinBlock("ㄓㄨㄥ (ㄓㄨㄥˋ\r文   ㄨㄣˊ\r好   ㄏㄠˇ) "
                                     "ㄨㄣˊ\r好 (ㄏㄠˇ) ㄏㄠˇ "));
}

TEST_F(HostileTableTest, TheCliAnswersMalformedTablesToo) {
  WriteFile(Path("zhuyintable"), "中   ㄓㄨㄥ\r\n文   ㄨㄣˊ");
  const hostile::CliRun run = Cli("--systems 01000 中");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, ZhuyinBlock("ㄓㄨㄥ\r "));
  EXPECT_EQ(Cli("中文").status, 0);
  const hostile::CliRun page = Cli("--systems 01000 --export html 中文");
  EXPECT_EQ(page.status, 0);
  EXPECT_NE(page.out.find("<ruby>中<rt>ㄓㄨㄥ\r</rt></ruby>"),
            std::string::npos);
}

}  // namespace
}  // namespace quill
