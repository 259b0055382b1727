// STTABLE cut short, empty or random: look-ups of Simplified text still end,
// and valid input gives valid UTF-8.
#include <gtest/gtest.h>
#include <iconv.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/robustness/Hostile.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

// Traditional forms only; the Simplified ones are found through STTABLE.
const std::string kTable =
    "中   ㄓㄨㄥ\n國   ㄍㄨㄛˊ\n說   ㄕㄨㄛ\n們   ㄇㄣ˙\n這   ㄓㄜˋ\n";

std::string ReadWhole(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Every `step`th double-byte code of GB 2312 in UTF-8, with a blank now and
// then.
std::string AllOfGb2312(int step) {
  std::string gb;
  for (int lead = 0xA1; lead <= 0xF7; ++lead) {
    for (int trail = 0xA1; trail <= 0xFE; trail += step) {
      gb += static_cast<char>(lead);
      gb += static_cast<char>(trail);
      if (trail % 23 == 0) gb += ' ';
    }
  }
  iconv_t cd = iconv_open("UTF-8", "EUC-CN");
  std::string out;
  char buffer[4096];
  char* in = gb.data();
  std::size_t inLeft = gb.size();
  while (inLeft > 0) {
    char* to = buffer;
    std::size_t toLeft = sizeof buffer;
    const std::size_t rc = iconv(cd, &in, &inLeft, &to, &toLeft);
    out.append(buffer, to);
    if (rc == static_cast<std::size_t>(-1) && errno != E2BIG) {
      in += 2;  // a code GB 2312 leaves empty
      inLeft = inLeft >= 2 ? inLeft - 2 : 0;
    }
  }
  iconv_close(cd);
  return out;
}

class HostileSttableTest : public TableFixture {
 protected:
  // The real STTABLE cut to `size` bytes, or random bytes of that size.
  void WriteSttable(std::size_t size, bool random) {
    const std::string real =
        ReadWhole(std::string(QUILLMERE_SOURCE_DIR) + "/data/STTABLE");
    ASSERT_EQ(real.size(), 14102u);
    WriteFile(Path("STTABLE"),
              random ? hostile::RandomBytes(size, size) : real.substr(0, size));
  }

  // The first line in dictionary mode: the characters that have a reading.
  std::string Found(const std::string& table, const std::string& input) {
    LookUpEngine engine(FilesWithTable(table));
    LookUpSettings settings;
    settings.mode = Mode::kDictionary;
    const std::string text = engine.LookUp(input, settings).text;
    return text.substr(0, text.find('\r'));
  }
};

// The rows of lead bytes from 0xB0 on start at byte 566: a table cut before
// a cell leaves its character without a reading, and nothing else happens.
TEST_F(HostileSttableTest, ATableCutShortFindsWhatItHolds) {
  struct Case {
    std::size_t size;
    const char* found;
  };
  const Case cases[] = {
      {0, "中"}, {1, "中"}, {565, "中"}, {566, "中"}, {14101, "中国说们这"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.size);
    WriteSttable(c.size, false);
    EXPECT_EQ(Found(kTable, "中国说们这"), c.found);
  }
}

TEST_F(HostileSttableTest, CutAndRandomTablesGiveValidUtf8) {
  // Under a sanitizer or valgrind every seventh character will do.
  const int step = hostile::Shrunk() ? 7 : 1;
  const std::string simplified = AllOfGb2312(step);
  ASSERT_GT(Len(simplified), 7000u / step);
  const std::string realTable =
      ReadWhole(std::string(QUILLMERE_SOURCE_DIR) + "/data/zhuyintable");
  struct Case {
    std::size_t size;
    bool random;
  };
  const Case cases[] = {{0, false},     {1, false},     {565, false},
                        {14101, false}, {14102, false}, {1, true},
                        {565, true},    {14101, true},  {14102, true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.size) + (c.random ? " random" : ""));
    WriteSttable(c.size, c.random);
    for (const std::string* table : {&kTable, &realTable}) {
      LookUpEngine engine(FilesWithTable(*table));
      for (const Mode mode : {Mode::kConverter, Mode::kDictionary}) {
        LookUpSettings settings;
        settings.mode = mode;
        const auto result = engine.LookUp(simplified, settings);
        EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
        EXPECT_TRUE(IsValidUtf8(result.text));
        EXPECT_EQ(engine.LookUp(simplified, settings).text, result.text);
        if (mode == Mode::kConverter) {
          const auto page = BuildPhoneticPage(simplified, settings, engine);
          EXPECT_EQ(page.status, ExportPage::Status::kDone);
          EXPECT_TRUE(IsValidUtf8(page.text));
        }
      }
    }
  }
}

// A folder where a file should be reads as no file, and is looked for
// again at the next look-up.
TEST_F(HostileSttableTest, AFolderAsTheTableCountsAsNone) {
  std::filesystem::create_directory(Path("STTABLE"));
  LookUpEngine engine(FilesWithTable(kTable));
  LookUpSettings settings;
  settings.mode = Mode::kDictionary;
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 5), "中\r\r");
  std::filesystem::remove(Path("STTABLE"));
  WriteSttable(14102, false);
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 8), "中国\r\r");
}

TEST_F(HostileSttableTest, TheCliRefusesAFolderAsInput) {
  const hostile::CliRun run = hostile::RunCli("-i '" + Path("") + "'");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.out.find("quillmere-cli: cannot read"), std::string::npos);
}

TEST_F(HostileSttableTest, TheCliTakesAnyTable) {
  WriteFile(Path("zhuyintable"), kTable);
  for (const std::size_t size : {0, 1, 565, 14102}) {
    SCOPED_TRACE(size);
    WriteSttable(size, true);
    const hostile::CliRun run = hostile::RunCli(
        "--raw --mode dictionary --table '" + Path("zhuyintable") +
        "' --sttable '" + Path("STTABLE") + "' 中国说们这");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(IsValidUtf8(run.out));
    EXPECT_EQ(run.out.substr(0, 3), "中");
  }
}

}  // namespace
}  // namespace quill
