// A folder of its own for each test, with a small reading table in it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quill::exporttest {

// Readings two blanks apart behind a 3-byte key and three blanks of filler.
// 行 has three readings; 。 has a line of its own while ， has none; 國 is
// the Traditional form of 国, which has no line.
inline constexpr const char* kTable =
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n"
    "文   ㄨㄣˊ\n"
    "行   ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ\n"
    "國   ㄍㄨㄛˊ\n"
    "。   ㄉㄧㄢˇ\n";

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteFile(const std::filesystem::path& path,
                      const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
}

class TempFolder {
 public:
  TempFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "quillmere-export-XXXXXX")
            .string();
    if (::mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "mkdtemp";
    path_ = pattern;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string operator/(const std::string& name) const {
    return (path_ / name).string();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace quill::exporttest
