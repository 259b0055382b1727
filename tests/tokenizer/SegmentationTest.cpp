// The segmentation run: the text goes to the tool through a file, and what
// the tool prints comes back as the text to look up.
#include "lookup/Segmentation.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

class SegmentationTest : public TempFolderTest {
 protected:
  // Folder names with characters that would act on a shell if unquoted.
  SegmentationTest() : TempFolderTest("-a b 'c' \"d\" $HOME; e `f` \\g") {}

  std::string InputFile() const { return Path("textforsegmentationtemp"); }

  // A tool that keeps a copy of its input and its arguments beside it, and
  // prints `output`.
  std::string Tool(const std::string& output) {
    const std::string tool = Path("-tool $x");
    WriteScript(tool,
                "cp \"$1\" \"$1.seen\"\n"
                "printf '%s\\n' \"$#\" \"$1\" > \"$1.args\"\n"
                "printf '" +
                    output + "'");
    return tool;
  }
};

TEST_F(SegmentationTest, PathsReachTheToolIntact) {
  const std::string text = "我們\r\n是\n中國人";
  const std::string result =
      SegmentText(text, Tool("我們 是"), folder().string());
  EXPECT_EQ(result, "我們 是");
  // One argument, the whole path; the file held the text's exact bytes.
  EXPECT_EQ(ReadFile(InputFile() + ".args"), "1\n" + InputFile() + "\n");
  EXPECT_EQ(ReadFile(InputFile() + ".seen"), text);
  EXPECT_FALSE(std::filesystem::exists(InputFile()));
  // Nothing outside the folder was touched by a stray shell word.
  EXPECT_FALSE(std::filesystem::exists(Path("e")));
}

TEST_F(SegmentationTest, TheOutputIsTrimmedAndBracketsAreClosedUp) {
  EXPECT_EQ(SegmentText("x", Tool("\\n （ 我們 ） 是 （ 中國 ） \\n"),
                        folder().string()),
            "（我們） 是 （中國）");
  // Only the full-width brackets: the others are left to the look-up.
  EXPECT_EQ(SegmentText("x", Tool("( 我們 ) 「 是 」"), folder().string()),
            "( 我們 ) 「 是 」");
}

TEST_F(SegmentationTest, BusErrorAsTheWholeOutputGivesTheTextUnsegmented) {
  const std::string text = "我們是中國人";
  for (const std::string crash : {"Bus error", "BUS ERROR", "bus Error"}) {
    EXPECT_EQ(SegmentText(text, Tool(crash), folder().string()), text);
    EXPECT_FALSE(std::filesystem::exists(InputFile()));
  }
  // With anything more it is text like any other.
  EXPECT_EQ(SegmentText(text, Tool("Bus error\\n"), folder().string()),
            "Bus error");
  EXPECT_EQ(SegmentText(text, Tool("Bus errors"), folder().string()),
            "Bus errors");
}

TEST_F(SegmentationTest, NoOutputGivesNothing) {
  EXPECT_EQ(SegmentText("我們", Tool(""), folder().string()), "");
  EXPECT_EQ(SegmentText("我們", Tool(" \\n\\t"), folder().string()), "");
}

TEST_F(SegmentationTest, TheInputFileIsGoneAlsoWhenTheToolFails) {
  const std::string failing = Path("failing tool");
  WriteScript(failing, "echo 'it went wrong' >&2\nexit 7");
  EXPECT_EQ(SegmentText("我們", failing, folder().string()), "it went wrong");
  EXPECT_FALSE(std::filesystem::exists(InputFile()));

  // A missing tool is not detected: the shell's own message is the text.
  const std::string said =
      SegmentText("我們", Path("no such tool"), folder().string());
  EXPECT_NE(said.find("no such tool"), std::string::npos) << said;
  EXPECT_FALSE(std::filesystem::exists(InputFile()));
}

TEST_F(SegmentationTest, WithoutAFolderTheToolDoesNotRun) {
  const std::string tool = Tool("ran");
  EXPECT_EQ(SegmentText("我們", tool, ""), "");
  // A folder where the file cannot be made.
  EXPECT_EQ(SegmentText("我們", tool, Path("missing folder")), "");
  EXPECT_FALSE(std::filesystem::exists(Path("missing folder")));
}

TEST_F(SegmentationTest, TheRealToolSegments) {
  const std::string tool = QUILLMERE_OUT_DIR "/Tokenizer";
  EXPECT_EQ(SegmentText("我們是中國人", tool, folder().string()),
            "我們 是 中國 人");
  EXPECT_EQ(SegmentText("（我们是中国人）", tool, folder().string()),
            "（我们 是 中国 人）");
  EXPECT_FALSE(std::filesystem::exists(InputFile()));
}

}  // namespace
}  // namespace quill
