// A look-up with segmentation on: the tool's blanks separate the words.
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

// Traditional and Simplified forms side by side, so that no STTABLE is
// needed.
const std::string kTable =
    "我   ㄨㄛˇ\n"
    "們   ㄇㄣ˙\n"
    "们   ㄇㄣ˙\n"
    "是   ㄕˋ\n"
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n"
    "國   ㄍㄨㄛˊ\n"
    "国   ㄍㄨㄛˊ\n"
    "人   ㄖㄣˊ\n";

class SegmentedLookUpTest : public TempFolderTest {
 protected:
  SegmentedLookUpTest() {
    WriteFile(Path("zhuyintable"), kTable);
    settings.segmentation = true;
    settings.tones.ShowMultipleReadingsPrefValue = "0";
  }

  DataFiles Files(const std::string& tokenizer) {
    DataFiles files;
    files.zhuyintable = Path("zhuyintable");
    files.sttable = Path("STTABLE");
    files.tokenizer = tokenizer;
    files.temporaryFolder = folder().string();
    return files;
  }

  std::string Py(const std::string& reading) const {
    return ZhuyinToPinyin(reading, settings.tones);
  }
  std::string Wd(const std::string& reading) const {
    return ZhuyinToWade(reading, settings.tones);
  }

  LookUpSettings settings;
};

TEST_F(SegmentedLookUpTest, TheRealToolKeepsTheSyllablesOfAWordTogether) {
  LookUpEngine engine(Files(QUILLMERE_OUT_DIR "/Tokenizer"));
  for (const std::string text : {"我們是中國人", "我们是中国人"}) {
    const auto result = engine.LookUp(text, settings);
    ASSERT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
    const std::string zhuyin1 = Block(result.text, "Zhuyin 1 (Bopomofo)");
    // Each syllable is followed by a blank, a word boundary by one more.
    EXPECT_EQ(zhuyin1.rfind("ㄨㄛˇ ㄇㄣ˙  ㄕˋ ", 0), 0u) << zhuyin1;
    EXPECT_NE(zhuyin1.find("ㄓㄨㄥ ㄍㄨㄛˊ "), std::string::npos) << zhuyin1;
    EXPECT_EQ(zhuyin1.find("ㄓㄨㄥ  ㄍㄨㄛˊ"), std::string::npos) << zhuyin1;
    if (Py("ㄨㄛˇ").empty()) continue;  // romanization not built in
    EXPECT_EQ(zhuyin1, "ㄨㄛˇ ㄇㄣ˙  ㄕˋ  ㄓㄨㄥ ㄍㄨㄛˊ  ㄖㄣˊ ");
    EXPECT_EQ(Block(result.text, "Hanyu Pinyin"),
              Py("ㄨㄛˇ") + Py("ㄇㄣ˙") + " " + Py("ㄕˋ") + " " + Py("ㄓㄨㄥ") +
                  Py("ㄍㄨㄛˊ") + " " + Py("ㄖㄣˊ"));
  }
}

TEST_F(SegmentedLookUpTest, AWordOfTwoSyllablesAndAWordOfOne) {
  // A fake tool, so that the boundaries are known whatever the word list.
  const std::string tool = Path("tool");
  WriteScript(tool, "printf '中國 人'");
  LookUpEngine engine(Files(tool));
  const auto result = engine.LookUp("中國人", settings);
  EXPECT_EQ(Block(result.text, "Zhuyin 1 (Bopomofo)"),
            "ㄓㄨㄥ ㄍㄨㄛˊ  ㄖㄣˊ ");
  if (Py("ㄓㄨㄥ").empty()) GTEST_SKIP() << "romanization not built in";
  EXPECT_EQ(Block(result.text, "Hanyu Pinyin"),
            Py("ㄓㄨㄥ") + Py("ㄍㄨㄛˊ") + " " + Py("ㄖㄣˊ"));
  EXPECT_EQ(Block(result.text, "Wade-Giles"),
            Wd("ㄓㄨㄥ") + Wd("ㄍㄨㄛˊ") + " " + Wd("ㄖㄣˊ"));
}

TEST_F(SegmentedLookUpTest, ACrashedToolLeavesTheSyllablesRunningTogether) {
  const std::string tool = Path("tool");
  WriteScript(tool, "printf 'Bus error'");
  LookUpEngine engine(Files(tool));
  const auto result = engine.LookUp("中國人", settings);
  // No blank from the tool, so none at a word boundary either.
  EXPECT_EQ(Block(result.text, "Zhuyin 1 (Bopomofo)"), "ㄓㄨㄥ ㄍㄨㄛˊ ㄖㄣˊ ");
  if (Py("ㄓㄨㄥ").empty()) GTEST_SKIP() << "romanization not built in";
  EXPECT_EQ(Block(result.text, "Hanyu Pinyin"),
            Py("ㄓㄨㄥ") + Py("ㄍㄨㄛˊ") + Py("ㄖㄣˊ"));
}

TEST_F(SegmentedLookUpTest, OnlyConverterModeRunsTheTool) {
  const std::string tool = Path("tool");
  const std::string ran = Path("ran");
  WriteScript(tool, "touch '" + ran + "'\nprintf '中國 人'");
  LookUpEngine engine(Files(tool));
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

TEST_F(SegmentedLookUpTest, NoOutputAndNoFolderLeaveTheResultAlone) {
  const std::string tool = Path("tool");
  WriteScript(tool, "exit 0");
  LookUpEngine engine(Files(tool));
  EXPECT_EQ(engine.LookUp("中國人", settings).outcome,
            LookUpEngine::Outcome::kNothing);
}

}  // namespace
}  // namespace quill
