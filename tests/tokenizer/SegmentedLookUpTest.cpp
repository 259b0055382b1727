// Only a look-up in converter mode with segmentation on runs the tool;
// what it makes of the text is in tests/data/lookup/lookups.txt.
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"

namespace quill {
namespace {

class SegmentedLookUpTest : public TableFixture {};

TEST_F(SegmentedLookUpTest, OnlyConverterModeRunsTheTool) {
  const std::string tool = Path("tool");
  const std::string ran = Path("ran");
  WriteScript(tool, "touch '" + ran + "'\nprintf '中國 人'");
  DataFiles files = FilesWithTable("中   ㄓㄨㄥ\n國   ㄍㄨㄛˊ\n人   ㄖㄣˊ\n");
  files.tokenizer = tool;
  LookUpEngine engine(files);
  LookUpSettings settings;
  settings.segmentation = true;
  settings.mode = Mode::kDictionary;
  auto result = engine.LookUp("中國人", settings);
  EXPECT_FALSE(std::filesystem::exists(ran));
  EXPECT_EQ(result.text.substr(0, result.text.find('\r')), "中國人");
  settings.mode = Mode::kConverter;
  settings.segmentation = false;
  engine.LookUp("中國人", settings);
  EXPECT_FALSE(std::filesystem::exists(ran));
  settings.segmentation = true;
  result = engine.LookUp("中國人", settings);
  EXPECT_TRUE(std::filesystem::exists(ran));
  EXPECT_FALSE(std::filesystem::exists(Path("textforsegmentationtemp")));
}

}  // namespace
}  // namespace quill
