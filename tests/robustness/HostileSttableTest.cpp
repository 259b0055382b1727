// STTABLE as a folder: it counts as none, and is looked for again.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

// Traditional forms only; the Simplified ones are found through STTABLE.
const std::string kTable =
    "中   ㄓㄨㄥ\n國   ㄍㄨㄛˊ\n說   ㄕㄨㄛ\n們   ㄇㄣ˙\n這   ㄓㄜˋ\n";

class HostileSttableTest : public TableFixture {};

// A folder where a file should be reads as no file, and is looked for
// again at the next look-up.
TEST_F(HostileSttableTest, AFolderAsTheTableCountsAsNone) {
  std::filesystem::create_directory(Path("STTABLE"));
  LookUpEngine engine(FilesWithTable(kTable));
  LookUpSettings settings;
  settings.mode = Mode::kDictionary;
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 5), "中\r\r");
  std::filesystem::remove(Path("STTABLE"));
  std::filesystem::copy_file(QUILLMERE_SOURCE_DIR "/data/STTABLE",
                             Path("STTABLE"));
  EXPECT_EQ(engine.LookUp("中国", settings).text.substr(0, 8), "中国\r\r");
}

}  // namespace
}  // namespace quill
