// quillmere-cli as a user runs it: a real process, real exit statuses.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "tests/lookup/TableFixture.hpp"

namespace quill {
namespace {

struct Outcome {
  int status;
  std::string out;
};

class CliTest : public TableFixture {
 protected:
  CliTest() {
    table = Path("zhuyintable");
    WriteFile(table, "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n");
  }

  // Runs the CLI through the shell with `args`; standard error is dropped
  // unless `withErrors`.
  Outcome Cli(const std::string& args, bool withErrors = false) {
    const std::string command = std::string("'") + QUILLMERE_OUT_DIR +
                                "/quillmere-cli' " + args +
                                (withErrors ? " 2>&1" : " 2>/dev/null");
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
      out.append(buffer, n);
    }
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
  }

  std::string table;
};

TEST_F(CliTest, TextComesFromArgumentsAFileOrStandardInput) {
  const Outcome args = Cli("--raw --systems 01000 --table " + table + " 中文");
  EXPECT_EQ(args.status, 0);
  EXPECT_EQ(args.out,
            "\r\rZhuyin 1 (Bopomofo)\r-------------------\r"
            "ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ \r");
  WriteFile(Path("input.txt"), "中文\n");
  EXPECT_EQ(
      Cli("--raw --systems 01000 --table " + table + " -i " + Path("input.txt"))
          .out,
      args.out);
  EXPECT_EQ(
      Cli("--raw --systems 01000 --table " + table + " < " + Path("input.txt"))
          .out,
      args.out);
}

TEST_F(CliTest, CarriageReturnsShowAsLineEndsUnlessRaw) {
  const Outcome shown = Cli("--systems 01000 --table " + table + " 文");
  EXPECT_EQ(shown.out,
            "\n\nZhuyin 1 (Bopomofo)\n-------------------\nㄨㄣˊ \n");
}

TEST_F(CliTest, SettingsReachTheLookUp) {
  const Outcome dictionary =
      Cli("--raw --mode dictionary --single --systems 01000 --table " + table +
          " a中");
  EXPECT_EQ(dictionary.out.substr(0, dictionary.out.find('\r')), "中");
  EXPECT_NE(dictionary.out.find("ㄓㄨㄥ \r"), std::string::npos);
}

TEST_F(CliTest, BadUsageSaysWhyAndExitsWithTwo) {
  for (const char* args : {"--bogus", "--mode poetry 中", "--systems 1111 中",
                           "--systems 11a11 中", "--mode", "-i",
                           "-i /nonexistent/file", "-i x.txt 中"}) {
    SCOPED_TRACE(args);
    const Outcome o = Cli(std::string(args) + " --table " + table, true);
    EXPECT_EQ(o.status, 2);
    EXPECT_NE(o.out.find("quillmere-cli: "), std::string::npos);
  }
  const Outcome help = Cli("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("--systems"), std::string::npos);
}

TEST_F(CliTest, AMissingTableExitsWithThreeOnlyWhenThereIsInput) {
  const Outcome missing = Cli("--table " + Path("none") + " 中", true);
  EXPECT_EQ(missing.status, 3);
  EXPECT_EQ(missing.out,
            "The data file is missing. Please reinstall the application.\n");
  const Outcome empty = Cli("--table " + Path("none") + " '  '", true);
  EXPECT_EQ(empty.status, 0);
  EXPECT_EQ(empty.out, "");
}

TEST_F(CliTest, TextExportKeepsTheInputWhenSegmentationGivesNothing) {
  WriteFile(Path("Tokenizer"), "#!/bin/sh\n");
  ASSERT_EQ(chmod(Path("Tokenizer").c_str(), 0755), 0);
  const Outcome o = Cli("--export text --segment --tokenizer " +
                        Path("Tokenizer") + " --table " + table + " ' 中文 '");
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out, "中文\n\n");
}

TEST_F(CliTest, ALargeInputWorks) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "中文。abc\n";  // 2.8 MB
  WriteFile(Path("big.txt"), text);
  const Outcome o =
      Cli("--raw --systems 01000 --table " + table + " -i " + Path("big.txt"));
  EXPECT_EQ(o.status, 0);
  std::size_t lines = 0;
  for (char c : o.out) lines += c == '\n';
  EXPECT_EQ(lines, 199999u);  // the last line end goes with the trim
}

}  // namespace
}  // namespace quill
