#include "lookup/Segmentation.hpp"

#include <cstdio>
#include <filesystem>

#include "platform/Platform.hpp"
#include "text/TextOps.hpp"

namespace quill {

namespace {

// One file for the user: a new run overwrites it.
constexpr const char* kInputFileName = "textforsegmentationtemp";

bool WriteFile(const std::string& path, const std::string& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return false;
  const bool written =
      std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written;
}

// A relative path is made to start with "./", so that the shell neither
// searches PATH for it nor could take a leading "-" for anything else.
std::string Anchored(const std::string& path) {
  return path.empty() || path[0] == '/' ? path : "./" + path;
}

}  // namespace

std::string SegmentText(const std::string& text,
                        const std::string& tokenizerPath,
                        const std::string& temporaryFolder) {
  if (temporaryFolder.empty()) return {};
  const std::string inputFile = temporaryFolder + "/" + kInputFileName;
  std::error_code ec;
  if (!WriteFile(inputFile, text)) {
    std::filesystem::remove(inputFile, ec);
    return {};
  }
  // Both paths quoted: no character of either may act on the shell.
  const std::string result =
      ShellExecute(ShellQuote(Anchored(tokenizerPath)) + " " +
                   ShellQuote(Anchored(inputFile)));
  std::string lookUpText;
  if (Equals(result, "Bus error")) {
    // The tool crashed: look the text up as it is.
    lookUpText = text;
  } else {
    // The loop would take a blank inside a bracket for a word boundary.
    lookUpText = ReplaceAll(ReplaceAll(Trim(result), "（ ", "（"), " ）", "）");
  }
  std::filesystem::remove(inputFile, ec);
  return lookUpText;
}

}  // namespace quill
