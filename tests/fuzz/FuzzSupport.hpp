// Shared pieces of the fuzz targets: reading the fuzzer's bytes, and a check
// that stops the run with a message when a property fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "lookup/LookUp.hpp"

namespace quill::fuzz {

#define QUILL_FUZZ_CHECK(condition)                                     \
  do {                                                                  \
    if (!(condition)) {                                                 \
      std::fprintf(stderr, "property failed: %s (%s:%d)\n", #condition, \
                   __FILE__, __LINE__);                                 \
      std::abort();                                                     \
    }                                                                   \
  } while (0)

// Takes bytes off the front of the fuzzer's input.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const auto b = static_cast<std::uint8_t>(rest_[0]);
    rest_.remove_prefix(1);
    return b;
  }
  // The rest up to the next NUL-NUL pair, or all of it.
  std::string Part() {
    const auto end = rest_.find(std::string_view("\0\0", 2));
    std::string part(rest_.substr(0, end));
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 2);
    return part;
  }
  std::string Rest() {
    std::string all(rest_);
    rest_ = {};
    return all;
  }

 private:
  std::string_view rest_;
};

// The engine on the real tables, for the targets that look up.
LookUpEngine& RealEngine();

// Settings drawn from the front of the input: mode, five systems, tones.
// Segmentation runs an external program, so it is only ever set in
// dictionary mode, where it just governs the blanks behind punctuation.
LookUpSettings ReadSettings(Input& in);

// A file the target can hand to code that reads files.
std::string WriteTemporaryFile(const std::string& name,
                               const std::string& content);

}  // namespace quill::fuzz
