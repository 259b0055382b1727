// zhuyintable in memory: one text, searched by bytes.
//
// A line is a 3-byte key, 3 filler bytes, the readings two blanks apart, LF.
// A search gives what a byte search from the start of the text gives (the
// first occurrence anywhere, line start or not); an index built at load time
// answers it for any single character in constant time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quill {

class ReadingTable {
 public:
  // Reads the file into DictContent if DictContent is empty. A missing or
  // unreadable file leaves it empty. Returns true when it holds text.
  bool Load(const std::string& path);

  // Takes `content` as the table, replacing what was there.
  void Assign(std::string content);

  bool empty() const { return DictContent_.empty(); }
  const std::string& DictContent() const { return DictContent_; }

  // 1-based byte position of the first occurrence of `needle`, 0 for none
  // and for the empty needle.
  long Find(std::string_view needle) const;

  // The readings of the line hit at `hitPosition`: the bytes from the
  // seventh byte of the line up to the next LF. A line too short or without
  // a LF gives whatever that byte arithmetic gives.
  std::string_view ReadingEntry(long hitPosition) const;

 private:
  void BuildIndex();

  std::string DictContent_;
  std::vector<std::uint32_t> firstOfBmp_;  // by code point below U+10000
  std::unordered_map<std::uint32_t, std::uint32_t> firstOfOther_;
};

}  // namespace quill
