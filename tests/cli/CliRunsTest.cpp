// quillmere-cli as a user runs it, a real process, from the rows of
// tests/data/cli/runs.txt: arguments (through the shell; $D stands for the
// test's folder, which holds zhuyintable, crtable, in.txt and a Tokenizer
// that prints nothing), standard input, exit status, then standard output and
// error together, with the folder written $D again.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "tests/lookup/TableFixture.hpp"
#include "tests/text/CaseTable.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

class CliRuns : public TableFixture {};

TEST_F(CliRuns, GiveTheirOutputAndStatus) {
  WriteFile(Path("zhuyintable"),
            "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n行   ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ\n");
  WriteFile(Path("in.txt"), "中文\n");
  WriteFile(Path("crtable"), "中   ㄓㄨㄥ\r\n文   ㄨㄣˊ");
  WriteFile(Path("Tokenizer"), "#!/bin/sh\n");
  ASSERT_EQ(chmod(Path("Tokenizer").c_str(), 0755), 0);
  const std::string folder = Path("");
  const auto rows = ReadCaseTable("cli/runs.txt");
  ASSERT_GT(rows.size(), 20u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 5u) << "line " << row[0];
    SCOPED_TRACE("line " + row[0] + ": " + row[1]);
    WriteFile(Path("stdin"), row[2]);
    std::string command = std::string("'") + QUILLMERE_OUT_DIR +
                          "/quillmere-cli' " + row[1] + " <" + Path("stdin") +
                          " 2>&1";
    ReplaceAllInPlace(command, "$D/", folder);
    FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string out;
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
      out.append(buffer, n);
    }
    const int status = pclose(pipe);
    ReplaceAllInPlace(out, folder, "$D/");
    EXPECT_EQ(Str(WIFEXITED(status) ? WEXITSTATUS(status) : -1), row[3]);
    EXPECT_EQ(out, row[4]);
  }
}

TEST_F(CliRuns, ALargeInputWorks) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "中文。abc\n";  // 2.8 MB
  WriteFile(Path("big.txt"), text);
  WriteFile(Path("zhuyintable"), "中   ㄓㄨㄥ\n");
  const std::string command = std::string("'") + QUILLMERE_OUT_DIR +
                              "/quillmere-cli' --raw --systems 01000 --table " +
                              Path("zhuyintable") + " -i " + Path("big.txt");
  FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::size_t lines = 0;
  for (int c; (c = std::fgetc(pipe)) != EOF;) lines += c == '\n';
  EXPECT_EQ(pclose(pipe), 0);
  EXPECT_EQ(lines, 199999u);  // the last line end goes with the trim
}

}  // namespace
}  // namespace quill
