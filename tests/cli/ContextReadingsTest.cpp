// Readings in context and by Taiwan's standard, as quillmere-cli gives them
// with the shipped data files: the table in context/readings.txt.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/lookup/TableFixture.hpp"

namespace quill {
namespace {

class ContextReadingsTest : public TableFixture {
 protected:
  // Runs the CLI on `input` with `args` and a preferences folder of the
  // test's own; standard error joins the output when `withErrors`.
  std::string Cli(const std::string& args, const std::string& input,
                  bool withErrors = false) {
    WriteFile(Path("input.txt"), input);
    const std::string command = "XDG_CONFIG_HOME='" + Path("config") + "' '" +
                                QUILLMERE_OUT_DIR + "/quillmere-cli' " + args +
                                " < '" + Path("input.txt") + "'" +
                                (withErrors ? " 2>&1" : " 2>/dev/null");
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
      out.append(buffer, n);
    }
    const int status = pclose(pipe);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << command;
    return out;
  }
};

// The last line of the output, its final blank taken off.
std::string LastLine(std::string out) {
  while (!out.empty() && out.back() == '\n') out.pop_back();
  std::string line = out.substr(out.rfind('\n') + 1);
  if (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

TEST_F(ContextReadingsTest, TableOfWordsAndSentences) {
  const std::string phrases = Path("phrases.txt");
  WriteFile(phrases, "银行 yin2 xing2\n");
  std::ifstream table(std::string(QUILLMERE_TEST_DATA) +
                      "/context/readings.txt");
  ASSERT_TRUE(table);
  int rows = 0;
  std::string line;
  for (int number = 1; std::getline(table, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    const std::size_t tab1 = line.find('\t');
    const std::size_t tab2 = line.find('\t', tab1 + 1);
    ASSERT_NE(tab2, std::string::npos) << "line " << number;
    std::string args = line.substr(0, tab1);
    const std::string input = line.substr(tab1 + 1, tab2 - tab1 - 1);
    const std::string expected = line.substr(tab2 + 1);
    if (const auto at = args.find("PHRASES"); at != std::string::npos) {
      args.replace(at, 7, "'" + phrases + "'");
    }
    const std::string out = Cli(args, input + "\n");
    const std::string contains = "contains ";
    if (expected.starts_with(contains)) {
      EXPECT_NE(out.find(expected.substr(contains.size())), std::string::npos)
          << "line " << number << ": " << args << " " << input << "\n"
          << out;
    } else {
      EXPECT_EQ(LastLine(out), expected)
          << "line " << number << ": " << args << " " << input;
    }
    ++rows;
  }
  EXPECT_GT(rows, 100);
}

TEST_F(ContextReadingsTest, BadPhraseLinesAreReportedAndTheGoodOnesUsed) {
  const std::string phrases = Path("phrases.txt");
  WriteFile(phrases, "# mine\n行长 hang2\n银行 yin2 xing2\n");
  const std::string out =
      Cli("--context --single --numbers --systems 10000 --phrases '" + phrases +
              "'",
          "银行\n", true);
  EXPECT_NE(out.find("quillmere-cli: " + phrases + ":2: "), std::string::npos)
      << out;
  EXPECT_EQ(out.find(":1: "), std::string::npos) << out;
  EXPECT_EQ(out.find(":3: "), std::string::npos) << out;
  EXPECT_EQ(LastLine(out), "yin2 xing2");
}

TEST_F(ContextReadingsTest, TheUsersFileBesideThePreferencesIsRead) {
  std::filesystem::create_directories(Path("config"));
  WriteFile(Path("config") + "/Quillmere Phrases", "行长 xing2 zhang3\n");
  EXPECT_EQ(
      LastLine(Cli("--context --single --numbers --systems 10000", "行长\n")),
      "xing2 zhang3");
}

}  // namespace
}  // namespace quill
