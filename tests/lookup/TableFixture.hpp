// A temporary folder per test, with a zhuyintable written into it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "lookup/LookUp.hpp"

namespace quill {

inline const std::string kRule = "-------------------";

// The body of the block with `header` in a result text.
inline std::string Block(const std::string& text, const std::string& header) {
  const std::string opening = header + "\r" + kRule + "\r";
  const auto at = text.find(opening);
  if (at == std::string::npos) return "<no block " + header + ">";
  const auto from = at + opening.size();
  return text.substr(from, text.find('\r', from) - from);
}

class TableFixture : public ::testing::Test {
 protected:
  TableFixture() {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::temp_directory_path() /
              ("quill-" + std::string(info->test_suite_name()) + "-" +
               info->name() + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~TableFixture() override { std::filesystem::remove_all(folder_); }

  static void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
  }

  // Files in the test's folder; the table only if `table` is given.
  DataFiles FilesWithTable(const std::optional<std::string>& table) {
    DataFiles files;
    files.zhuyintable = Path("zhuyintable");
    files.sttable = Path("STTABLE");
    files.tokenizer = Path("Tokenizer");
    files.temporaryFolder = folder_.string();
    if (table) WriteFile(files.zhuyintable, *table);
    return files;
  }

  std::string Path(const std::string& name) const {
    return (folder_ / name).string();
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace quill
