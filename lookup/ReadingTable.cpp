#include "lookup/ReadingTable.hpp"

#include <filesystem>
#include <fstream>
#include <limits>

#include "text/TextOps.hpp"

namespace quill {

bool ReadingTable::Load(const std::string& path) {
  if (!DictContent_.empty()) return true;
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  // istream::read, unlike a streambuf iterator, reports a failed read (of a
  // folder, say) in the stream's state instead of throwing; a file that
  // can't be read is as good as none.
  std::string content;
  // Room for the whole of a plain file, its pages mapped at once.
  std::error_code ec;
  const std::uintmax_t size = std::filesystem::is_regular_file(path, ec)
                                  ? std::filesystem::file_size(path, ec)
                                  : 0;
  if (!ec && size > 0 && size < (std::uintmax_t{1} << 30)) {
    content.reserve(static_cast<std::size_t>(size));
    MapAhead(content, static_cast<std::size_t>(size));
  }
  char buffer[1 << 16];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    content.append(buffer, static_cast<std::size_t>(in.gcount()));
  }
  if (in.bad()) return false;
  Assign(std::move(content));
  return !DictContent_.empty();
}

void ReadingTable::Assign(std::string content) {
  DictContent_ = std::move(content);
  BuildIndex();
}

void ReadingTable::BuildIndex() {
  firstOfBmp_.clear();
  firstOfOther_.clear();
  // Positions are kept 1-based in 32 bits; a table past 4 GiB answers by a
  // plain search instead.
  if (DictContent_.size() >= std::numeric_limits<std::uint32_t>::max()) return;
  firstOfBmp_.reserve(0x10000);
  MapForWriting(firstOfBmp_.data(), 0x10000 * sizeof(std::uint32_t));
  firstOfBmp_.assign(0x10000, 0);
  const std::string_view text = DictContent_;
  for (std::size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    const auto position = static_cast<std::uint32_t>(i + 1);
    // Every offset that can start a character is tried, not only character
    // boundaries, so that the index agrees with a byte search on any
    // content. The bytes inside a character are continuation bytes, which
    // start none: they are stepped over.
    const Utf8Char c = b < 0xC2 ? Utf8Char{b, 1} : DecodeChar(text, i);
    i += c.length;
    if (c.length == 1) continue;
    if (c.code < 0x10000) {
      if (firstOfBmp_[c.code] == 0) firstOfBmp_[c.code] = position;
    } else {
      firstOfOther_.emplace(c.code, position);
    }
  }
}

long ReadingTable::Find(std::string_view needle) const {
  if (needle.empty() || DictContent_.empty()) return 0;
  if (firstOfBmp_.empty()) return InStrB(0, DictContent_, needle);
  // A single byte is never a character of the look-up: searched for.
  if (needle.size() == 1) return InStrB(0, DictContent_, needle);
  const Utf8Char c = DecodeChar(needle, 0);
  if (c.length != needle.size()) return InStrB(0, DictContent_, needle);
  if (c.code < 0x10000) return firstOfBmp_[c.code];
  const auto it = firstOfOther_.find(c.code);
  return it == firstOfOther_.end() ? 0 : it->second;
}

std::string_view ReadingTable::ReadingEntry(long hitPosition) const {
  const long lineEnd = InStrB(hitPosition, DictContent_, "\n");
  const long length = lineEnd - hitPosition - 6;
  const auto start = static_cast<std::size_t>(hitPosition - 1 + 6);
  // MidB: nothing before the text's end, and no negative length.
  if (length <= 0 || start >= DictContent_.size()) return {};
  return std::string_view(DictContent_)
      .substr(start, static_cast<std::size_t>(length));
}

}  // namespace quill
