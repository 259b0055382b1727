// The Tokenizer executable, run as the look-up runs it.
#include <sys/wait.h>

#include <cstdlib>
#include <vector>

#include "platform/Platform.hpp"
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

const std::string kTool = QUILLMERE_OUT_DIR "/Tokenizer";

bool IsBlankOrLineEnd(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Empty when `out` is `in` with single blanks added between characters,
// none at either end and none beside white space; else what is wrong.
std::string AddedBlanksOnly(const std::string& in, const std::string& out) {
  std::size_t i = 0;
  for (std::size_t j = 0; j < out.size(); ++j) {
    if (i < in.size() && out[j] == in[i]) {
      ++i;
      continue;
    }
    if (out[j] != ' ') return "differs at output byte " + std::to_string(j);
    if (i == 0 || i == in.size() || IsBlankOrLineEnd(in[i - 1]) ||
        IsBlankOrLineEnd(in[i])) {
      return "a blank beside white space or at an end, output byte " +
             std::to_string(j);
    }
    // A blank inside a UTF-8 sequence would break the character.
    if ((static_cast<unsigned char>(in[i]) & 0xC0) == 0x80) {
      return "a blank inside a character, output byte " + std::to_string(j);
    }
  }
  return i == in.size() ? "" : "input left over from byte " + std::to_string(i);
}

class TokenizerToolTest : public TempFolderTest {
 protected:
  struct Run {
    int status = -1;
    std::string out;
    std::string err;
  };

  Run RunTool(const std::string& arguments, const std::string& tool = kTool) {
    const std::string out = Path("stdout"), err = Path("stderr");
    const int raw = std::system((ShellQuote(tool) + " " + arguments + " >" +
                                 ShellQuote(out) + " 2>" + ShellQuote(err))
                                    .c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(out),
            ReadFile(err)};
  }

  Run Segment(const std::string& text) {
    WriteFile(Path("input"), text);
    return RunTool(ShellQuote(Path("input")));
  }

  std::string Segmented(const std::string& text) {
    const Run run = Segment(text);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(AddedBlanksOnly(text, run.out), "") << run.out;
    return run.out;
  }
};

// Rows of tests/data/tokenizer/tool.txt: a text and what the tool makes of
// it with the shipped word list.
TEST_F(TokenizerToolTest, TextsOfTheTable) {
  const auto rows = ReadCaseTable("tokenizer/tool.txt");
  ASSERT_GT(rows.size(), 10u);
  for (const auto& row : rows) {
    EXPECT_EQ(Segmented(row[1]), row[2]) << "line " << row[0];
  }
}

// Runs that fail: the exit status and the whole message.
TEST_F(TokenizerToolTest, ErrorsSayWhatWentWrong) {
  std::filesystem::create_directory(Path("a folder"));
  std::filesystem::create_directory(Path("alone"));
  std::filesystem::copy_file(kTool, Path("alone/Tokenizer"));
  WriteFile(Path("input"), "我們");
  const std::string input = ShellQuote(Path("input"));
  const std::string usage =
      "Usage: Tokenizer FILE\nPrints the UTF-8 text of FILE with a blank "
      "between words.\n";
  const struct {
    std::string arguments;
    int status;
    std::string err;
  } cases[] = {
      {"", 2, usage},
      {input + " " + input, 2, usage},
      {ShellQuote(Path("missing")), 1,
       "Tokenizer: cannot read '" + Path("missing") +
           "': No such file or directory\n"},
      {ShellQuote(Path("a folder")), 1,
       "Tokenizer: cannot read '" + Path("a folder") + "': Is a directory\n"},
  };
  for (const auto& c : cases) {
    const Run run = RunTool(c.arguments);
    EXPECT_EQ(run.status, c.status) << c.arguments;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, c.err);
  }
  // Without the word list beside it.
  const Run alone = RunTool(input, Path("alone/Tokenizer"));
  EXPECT_EQ(alone.status, 3);
  EXPECT_EQ(alone.err,
            "Tokenizer: no word list: " + Path("alone/tokenizerlexicon") +
                ": No such file or directory\n");
}

TEST_F(TokenizerToolTest, ALargeTextComesBackWhole) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "我們是中國人，";
  text += std::string(100000, 'a');  // one long Latin run
  const std::string out = Segmented(text);
  // Four blanks inside each sentence, one behind each comma.
  EXPECT_EQ(out.size(), text.size() + 20000 * 5);
}

}  // namespace
}  // namespace quill
