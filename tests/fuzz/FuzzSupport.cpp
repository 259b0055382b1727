#include "tests/fuzz/FuzzSupport.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace quill::fuzz {

std::string WriteTemporaryFile(const std::string& name,
                               const std::string& content) {
  const auto folder = std::filesystem::temp_directory_path() /
                      ("quill-fuzz-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const std::string path = (folder / name).string();
  std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
  return path;
}

}  // namespace quill::fuzz
