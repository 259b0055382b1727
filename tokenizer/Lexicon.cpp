#include "tokenizer/Lexicon.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "text/TextOps.hpp"

namespace quill {

namespace {

constexpr std::string_view kMagic = "quillmere-lexicon 1 ";

// The whole file, mapped: nothing is copied, and only the pages that the
// searches touch are read.
struct Mapping {
  const char* data = nullptr;
  std::size_t size = 0;
};

bool MapFile(const std::string& path, Mapping& out, std::string* error) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat st {};
  if (fd < 0 || fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    *error = path + ": " + (fd < 0 ? std::strerror(errno) : "not a file");
    if (fd >= 0) close(fd);
    return false;
  }
  out.size = static_cast<std::size_t>(st.st_size);
  void* data = out.size ? mmap(nullptr, out.size, PROT_READ, MAP_PRIVATE, fd, 0)
                        : nullptr;
  const int err = errno;
  close(fd);
  if (data == MAP_FAILED) {
    *error = path + ": " + std::strerror(err);
    return false;
  }
  out.data = static_cast<const char*>(data);
  return true;
}

// Reads a decimal number at `pos` and the one separator behind it.
bool Number(std::string_view text, std::size_t& pos, long& value) {
  if (pos >= text.size()) return false;
  const char* first = text.data() + pos;
  const auto [end, ec] =
      std::from_chars(first, text.data() + text.size(), value);
  if (ec != std::errc() || value < 0) return false;
  pos += static_cast<std::size_t>(end - first) + 1;
  return true;
}

}  // namespace

Lexicon::~Lexicon() { Unmap(); }

void Lexicon::Unmap() {
  if (!text_.empty()) munmap(const_cast<char*>(text_.data()), text_.size());
  text_ = {};
}

bool Lexicon::Load(const std::string& path, std::string* error) {
  Unmap();
  words_ = {};
  count_ = 0;
  simplified_.clear();
  ranges_.clear();
  Mapping mapping;
  errno = 0;
  if (!MapFile(path, mapping, error)) return false;
  const std::string_view text(mapping.data, mapping.size);
  auto bad = [&] {
    if (mapping.data) munmap(const_cast<char*>(mapping.data), mapping.size);
    *error = path + ": not a word list of this program";
    return false;
  };
  if (text.substr(0, kMagic.size()) != kMagic) return bad();
  std::size_t pos = kMagic.size();
  long maps = 0, words = 0, unknown = 0;
  if (!Number(text, pos, maps) || !Number(text, pos, words) ||
      !Number(text, pos, unknown)) {
    return bad();
  }
  // The character table is read now; the words are searched where they lie,
  // so that a start touches only the pages that the text needs.
  std::unordered_map<std::uint32_t, std::uint32_t> simplified;
  for (long line = 0; line < maps; ++line) {
    const std::size_t end = text.find('\n', pos);
    const std::size_t tab = text.find('\t', pos);
    if (end == std::string_view::npos || tab >= end) return bad();
    simplified[Asc(text.substr(pos, tab - pos))] =
        Asc(text.substr(tab + 1, end - tab - 1));
    pos = end + 1;
  }
  const std::string_view section = text.substr(std::min(pos, text.size()));
  if ((words > 0) != !section.empty() ||
      (!section.empty() && section.back() != '\n')) {
    return bad();
  }
  text_ = text;
  words_ = section;
  count_ = static_cast<std::size_t>(words);
  simplified_ = std::move(simplified);
  unknownCost_ = static_cast<int>(std::min(unknown, 1000000L));
  return true;
}

std::uint32_t Lexicon::Key(std::uint32_t code) const {
  const auto it = simplified_.find(code);
  return it == simplified_.end() ? code : it->second;
}

std::string_view Lexicon::KeyAt(std::size_t from) const {
  // A key ends at its tab, or at the line end of a line without one; no
  // byte of UTF-8 text is as low as either.
  std::size_t end = from;
  while (end < words_.size() &&
         static_cast<unsigned char>(words_[end]) > '\n') {
    ++end;
  }
  return words_.substr(from, end - from);
}

std::size_t Lexicon::LowerBound(std::string_view key, std::size_t lo,
                                std::size_t hi) const {
  // [lo, hi) always holds whole lines, sorted by bytes, which is what
  // string_view compares.
  while (lo < hi) {
    std::size_t start = lo + (hi - lo) / 2;
    while (start > lo && words_[start - 1] != '\n') --start;
    if (KeyAt(start) < key) {
      lo = words_.find('\n', start) + 1;
    } else {
      hi = start;
    }
  }
  return lo;
}

Lexicon::Match Lexicon::Find(std::string_view key) const {
  Match match;
  if (key.empty()) return match;
  // The lines of the key's first character, found once and kept: the
  // searches of a text keep coming back to the same few characters.
  const std::size_t leadLength = DecodeChar(key, 0).length;
  std::uint64_t lead = leadLength;
  for (std::size_t i = 0; i < leadLength; ++i) {
    lead = lead << 8 | static_cast<unsigned char>(key[i]);
  }
  auto [it, fresh] = ranges_.try_emplace(lead);
  if (fresh) {
    const std::string_view head = key.substr(0, leadLength);
    // No byte of UTF-8 is 0xFF: every key that begins with `head` sorts
    // before this.
    const std::string past = std::string(head) + '\xff';
    it->second.first = LowerBound(head, 0, words_.size());
    it->second.second = LowerBound(past, it->second.first, words_.size());
  }
  const std::size_t line = LowerBound(key, it->second.first, it->second.second);
  // Past the last line KeyAt gives "", which no key (never empty) matches.
  const std::string_view found = KeyAt(line);
  match.prefix = found.substr(0, key.size()) == key;
  if (found == key) {
    match.found = true;
    long cost = 0;
    std::size_t pos = line + found.size() + 1;
    Number(words_, pos, cost);
    match.cost = static_cast<int>(std::min(cost, 1000000L));
  }
  return match;
}

}  // namespace quill
