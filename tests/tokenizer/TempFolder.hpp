// A fresh folder per test, removed afterwards, and small file helpers.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quill {

inline void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}
inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class TempFolderTest : public ::testing::Test {
 protected:
  // `name` may hold characters that mean something to a shell.
  explicit TempFolderTest(const std::string& name = "tok") {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    folder_ = std::filesystem::temp_directory_path() /
              ("quill-" + std::string(info->name()) + "-" +
               std::to_string(::getpid()) + "-" + name);
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
  }
  ~TempFolderTest() override { std::filesystem::remove_all(folder_); }

  std::string Path(const std::string& name) const {
    return (folder_ / name).string();
  }
  const std::filesystem::path& folder() const { return folder_; }

  // A shell script that can be run as a tool.
  static void WriteScript(const std::string& path, const std::string& body) {
    WriteFile(path, "#!/bin/sh\n" + body + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace quill
