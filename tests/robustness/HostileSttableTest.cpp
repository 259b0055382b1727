// STTABLE as a folder or as random bytes: look-ups of Simplified text still
// end, and valid input gives valid UTF-8.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

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
};

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
