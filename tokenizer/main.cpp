// Tokenizer: prints a UTF-8 text file with a blank at each word boundary.
//
//   Tokenizer FILE
//
// The word list "tokenizerlexicon" sits beside the executable.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/Platform.hpp"
#include "tokenizer/Lexicon.hpp"
#include "tokenizer/Segmenter.hpp"

namespace {

bool ReadAll(const char* path, std::string& out) {
  std::FILE* file = std::fopen(path, "rb");
  if (!file) return false;
  char buffer[1 << 16];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
    out.append(buffer, n);
  }
  const bool failed = std::ferror(file);
  const int err = errno;
  std::fclose(file);
  errno = err;
  return !failed;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs(
        "Usage: Tokenizer FILE\n"
        "Prints the UTF-8 text of FILE with a blank between words.\n",
        stderr);
    return 2;
  }
  std::string text;
  if (!ReadAll(argv[1], text)) {
    std::fprintf(stderr, "Tokenizer: cannot read '%s': %s\n", argv[1],
                 std::strerror(errno));
    return 1;
  }
  quill::Lexicon lexicon;
  std::string error;
  if (!lexicon.Load(quill::ApplicationFolder() + "/tokenizerlexicon", &error)) {
    std::fprintf(stderr, "Tokenizer: no word list: %s\n", error.c_str());
    return 3;
  }
  const std::string out = quill::Segment(text, lexicon);
  std::fwrite(out.data(), 1, out.size(), stdout);
  return std::fflush(stdout) == 0 ? 0 : 1;
}
