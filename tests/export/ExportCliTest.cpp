// quillmere-cli --export and -o, run as a separate process.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/Platform.hpp"
#include "tests/export/ExportTestSupport.hpp"

namespace quill {
namespace {

using exporttest::ReadFile;
using exporttest::TempFolder;
using exporttest::WriteFile;

struct CliRun {
  int status = -1;
  std::string out;
  std::string err;
};

class ExportCliTest : public ::testing::Test {
 protected:
  ExportCliTest() { WriteFile(folder_ / "zhuyintable", exporttest::kTable); }

  // Runs the CLI on the test's table with `stdinText` as its input.
  CliRun Cli(const std::string& args, const std::string& stdinText) {
    WriteFile(folder_ / "in", stdinText);
    const std::string command =
        ShellQuote(QUILLMERE_OUT_DIR "/quillmere-cli") + " --table " +
        ShellQuote(folder_ / "zhuyintable") + " --sttable " +
        ShellQuote(folder_ / "STTABLE") + " " + args + " <" +
        ShellQuote(folder_ / "in") + " >" + ShellQuote(folder_ / "out") +
        " 2>" + ShellQuote(folder_ / "err");
    const int raw = std::system(command.c_str());
    CliRun run;
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.out = ReadFile(folder_ / "out");
    run.err = ReadFile(folder_ / "err");
    return run;
  }

  // Names in the folder besides the test's own files.
  std::vector<std::string> OtherFiles(const std::string& keep) {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(folder_.path())) {
      const std::string name = entry.path().filename().string();
      if (name != "zhuyintable" && name != "in" && name != "out" &&
          name != "err" && name != keep) {
        names.push_back(name);
      }
    }
    return names;
  }

  TempFolder folder_;
};

TEST_F(ExportCliTest, OutputReplacesTheFileOnlyWhenDone) {
  const std::string target = folder_ / "page.html";
  WriteFile(target, "old");

  // No table: nothing is written and the old file stays.
  std::filesystem::rename(folder_ / "zhuyintable", folder_ / "elsewhere");
  CliRun run = Cli("--export html -o " + ShellQuote(target), "中");
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(ReadFile(target), "old");
  std::filesystem::rename(folder_ / "elsewhere", folder_ / "zhuyintable");

  // Empty input exports nothing.
  run = Cli("--export html -o " + ShellQuote(target), " \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(ReadFile(target), "old");

  run = Cli("--systems 01000 --export html -o " + ShellQuote(target), "中");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "");
  const std::string page = ReadFile(target);
  EXPECT_TRUE(page.starts_with("<!DOCTYPE html"));
  EXPECT_NE(page.find("<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"),
            std::string::npos);
  EXPECT_TRUE(page.ends_with("</html>"));
  EXPECT_EQ(OtherFiles("page.html"), std::vector<std::string>{});
}

TEST_F(ExportCliTest, UnwritableOutputFailsWithStatusOne) {
  // A folder in the way: the rename can't replace it, and the folder and
  // its content survive.
  std::filesystem::create_directory(folder_ / "taken");
  WriteFile(folder_ / "taken/keep", "x");
  CliRun run = Cli("--export html -o " + ShellQuote(folder_ / "taken"), "中");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("cannot write"), std::string::npos);
  EXPECT_EQ(ReadFile(folder_ / "taken/keep"), "x");
  EXPECT_EQ(OtherFiles("taken"), std::vector<std::string>{});

  run = Cli("--export text -o " + ShellQuote(folder_ / "no/such/file"), "中");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("no/such/file"), std::string::npos);
}

}  // namespace
}  // namespace quill
