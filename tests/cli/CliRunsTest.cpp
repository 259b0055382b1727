// quillmere-cli as a user runs it, a real process, from the rows of
// tests/data/cli/runs.txt: arguments (through the shell; $D stands for the
// test's folder, which is also the working folder and holds zhuyintable,
// crtable, in.txt, the phrase file bad.txt, the user's phrase file under config
// and a Tokenizer that prints nothing), standard input, exit status, then
// standard output and error together, with the folder written $D again. Every
// run has $D/config as its preferences folder. And the readings in context of
// tests/data/context/readings.txt, with the shipped data files.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <tuple>

#include "tests/lookup/TableFixture.hpp"
#include "tests/text/CaseTable.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

class CliRuns : public TableFixture {
 protected:
  CliRuns() {
    WriteFile(Path("zhuyintable"),
              "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n行   ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ\n");
    WriteFile(Path("stdin"), "");
    std::filesystem::create_directories(Path("config"));
  }

  // The exit status and the output of the CLI run with `args` on `input`.
  std::pair<int, std::string> Run(const std::string& args,
                                  const std::string& input) {
    WriteFile(Path("stdin"), input);
    std::string command = "cd $D/ && XDG_CONFIG_HOME=$D/config '" +
                          std::string(QUILLMERE_OUT_DIR) + "/quillmere-cli' " +
                          args + " <" + Path("stdin") + " 2>&1";
    ReplaceAllInPlace(command, "$D/", Path(""));
    FILE* pipe = popen(command.c_str(), "r");
    std::string out;
    char buffer[4096];
    for (size_t n; pipe && (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
      out.append(buffer, n);
    }
    const int status = pipe ? pclose(pipe) : -1;
    ReplaceAllInPlace(out, Path(""), "$D/");
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
  }
};

TEST_F(CliRuns, GiveTheirOutputAndStatus) {
  WriteFile(Path("in.txt"), "中文\n");
  WriteFile(Path("crtable"), "中   ㄓㄨㄥ\r\n文   ㄨㄣˊ");
  WriteScript(Path("Tokenizer"), "");
  WriteFile(Path("bad.txt"), "# mine\n行长 hang2\n银行 yin2 xing2\n");
  WriteFile(Path("config/Quillmere Phrases"), "行长 xing2 zhang3\n");
  const auto rows = ReadCaseTable("cli/runs.txt");
  ASSERT_GT(rows.size(), 20u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 5u) << "line " << row[0];
    const auto [status, out] = Run(row[1], row[2]);
    EXPECT_EQ(Str(status), row[3]) << "line " << row[0];
    EXPECT_EQ(out, row[4]) << "line " << row[0];
  }
}

// Rows: arguments, input, the last line of the output without its final
// blank, or "contains " and a text found anywhere in the output.
TEST_F(CliRuns, ReadInContext) {
  WriteFile(Path("phrases.txt"), "银行 yin2 xing2\n");
  const auto rows = ReadCaseTable("context/readings.txt");
  ASSERT_GT(rows.size(), 100u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4u) << "line " << row[0];
    auto [status, out] = Run(row[1], row[2] + "\n");
    EXPECT_EQ(status, 0) << "line " << row[0];
    if (row[3].starts_with("contains ")) {
      EXPECT_NE(out.find(row[3].substr(9)), std::string::npos)
          << "line " << row[0] << "\n"
          << out;
      continue;
    }
    while (out.ends_with('\n')) out.pop_back();
    if (out.ends_with(' ')) out.pop_back();
    EXPECT_EQ(out.substr(out.rfind('\n') + 1), row[3]) << "line " << row[0];
  }
}

// A big text is read whole; and in context to its last line, with Chinese
// characters up to every line end and a word split on every line.
TEST_F(CliRuns, ALargeInputWorks) {
  std::string text;
  for (int i = 0; i < 200000; ++i) text += "中文。abc\n";  // 2.8 MB
  WriteFile(Path("big.txt"), text);
  auto [status, out] =
      Run("--raw --systems 01000 --table $D/zhuyintable -i $D/big.txt", "");
  EXPECT_EQ(status, 0);
  // The last line end goes with the trim.
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 199999);

  text.clear();
  for (int i = 0; i < 40000; ++i) text += "银行行长\n";  // 520 KB
  WriteFile(Path("big.txt"), text);
  std::tie(status, out) =
      Run("--context --single --numbers --systems 10000 -i $D/big.txt", "");
  EXPECT_EQ(status, 0);
  const std::string line = "yin2 hang2 hang2 zhang3 \n";
  std::size_t lines = 0;
  for (auto at = out.find(line); at != std::string::npos;
       at = out.find(line, at + 1)) {
    ++lines;
  }
  EXPECT_EQ(lines, 40000u);
}

// A named pipe given with -i is read as it comes. Opened and closed once
// to be looked at, it would lose what its writer sent and then wait for a
// writer for ever; here a second writer comes after 10 s, so that such a
// fault ends with an empty result rather than a test that never ends.
TEST_F(CliRuns, ANamedPipeIsReadWhole) {
  const std::string fifo = Path("fifo");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  std::atomic<bool> done = false;
  std::thread writer([&] {
    std::ofstream(fifo, std::ios::binary) << "中文\n";
    for (int i = 0; i < 200 && !done; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    if (!done) std::ofstream(fifo, std::ios::binary).close();
  });
  const auto result =
      Run("--raw --systems 01000 --table $D/zhuyintable -i $D/fifo", "");
  done = true;
  writer.join();
  EXPECT_EQ(result,
            std::make_pair(0, std::string("\r\rZhuyin 1 (Bopomofo)\r"
                                          "-------------------\r"
                                          "ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ \r")));
}

// -o onto a named pipe writes into it, as onto a device: renamed over, the
// pipe would be gone, and /dev/null with it. The page fits in the pipe, so
// it is read once the CLI has ended.
TEST_F(CliRuns, OutputGoesIntoANamedPipe) {
  const std::string fifo = Path("out");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const int fd = open(fifo.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Run("--systems 01000 --export text -o $D/out --table "
                "$D/zhuyintable",
                "中"),
            std::make_pair(0, std::string()));
  std::string page;
  char buffer[4096];
  for (ssize_t n; (n = read(fd, buffer, sizeof buffer)) > 0;) {
    page.append(buffer, static_cast<std::size_t>(n));
  }
  close(fd);
  EXPECT_TRUE(page.starts_with("中\n\n")) << page;
  struct stat st {};
  ASSERT_EQ(stat(fifo.c_str(), &st), 0);
  EXPECT_TRUE(S_ISFIFO(st.st_mode));
}

// -o replaces the file only with a whole page, and leaves no other file.
TEST_F(CliRuns, OutputReplacesTheFileOnlyWhenDone) {
  const std::string page = Path("page.html");
  WriteFile(page, "old");
  const auto files = [&] {
    return std::distance(std::filesystem::directory_iterator(Path("")),
                         std::filesystem::directory_iterator());
  };
  const auto before = files();
  EXPECT_EQ(Run("--export html -o $D/page.html --table $D/none", "中").first,
            3);
  EXPECT_EQ(Run("--export html -o $D/page.html --table $D/zhuyintable", " \n"),
            std::make_pair(0, std::string()));
  EXPECT_EQ(ReadFile(page), "old");
  EXPECT_EQ(Run("--systems 01000 --export html -o $D/page.html --table "
                "$D/zhuyintable",
                "中"),
            std::make_pair(0, std::string()));
  EXPECT_TRUE(ReadFile(page).starts_with("<!DOCTYPE html"));
  EXPECT_NE(ReadFile(page).find("<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"),
            std::string::npos);
  EXPECT_TRUE(ReadFile(page).ends_with("</html>"));
  EXPECT_EQ(files(), before);

  // A folder in the way: the rename can't replace it, and it stays whole.
  std::filesystem::create_directory(Path("taken"));
  WriteFile(Path("taken/keep"), "x");
  const auto [status, out] =
      Run("--export html -o $D/taken --table $D/zhuyintable", "中");
  EXPECT_EQ(status, 1);
  EXPECT_NE(out.find("cannot write"), std::string::npos);
  EXPECT_EQ(ReadFile(Path("taken/keep")), "x");
  EXPECT_EQ(files(), before + 1);
  // A name without a folder is a file of the working folder.
  EXPECT_EQ(Run("--systems 01000 --export text -o plain.txt --table "
                "$D/zhuyintable",
                "中"),
            std::make_pair(0, std::string()));
  EXPECT_TRUE(ReadFile(Path("plain.txt")).starts_with("中\n\n"));
  EXPECT_EQ(files(), before + 2);
  const auto missing =
      Run("--export text -o $D/no/such/file --table $D/zhuyintable", "中");
  EXPECT_EQ(missing.first, 1);
  EXPECT_NE(missing.second.find("$D/no/such/file"), std::string::npos);
}

}  // namespace
}  // namespace quill
