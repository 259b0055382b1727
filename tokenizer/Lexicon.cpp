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
    *error =
        path + ": " + (fd < 0 || errno ? std::strerror(errno) : "not a file");
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
  lines_.clear();
  simplified_.clear();
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
      !Number(text, pos, unknown) || text.size() > UINT32_MAX) {
    return bad();
  }
  std::vector<std::uint32_t> lines;
  std::unordered_map<std::uint32_t, std::uint32_t> simplified;
  for (long line = 0; line < maps + words; ++line) {
    const std::size_t end = text.find('\n', pos);
    const std::size_t tab = text.find('\t', pos);
    if (end == std::string_view::npos || tab >= end) return bad();
    if (line < maps) {
      const std::string_view from(text.data() + pos, tab - pos);
      const std::string_view to(text.data() + tab + 1, end - tab - 1);
      simplified[Asc(from)] = Asc(to);
    } else {
      lines.push_back(static_cast<std::uint32_t>(pos));
    }
    pos = end + 1;
  }
  text_ = text;
  lines_ = std::move(lines);
  simplified_ = std::move(simplified);
  unknownCost_ = static_cast<int>(std::min(unknown, 1000000L));
  return true;
}

std::uint32_t Lexicon::Key(std::uint32_t code) const {
  const auto it = simplified_.find(code);
  return it == simplified_.end() ? code : it->second;
}

std::string_view Lexicon::KeyAt(std::uint32_t from) const {
  return std::string_view(text_.data() + from, text_.find('\t', from) - from);
}

Lexicon::Match Lexicon::Find(std::string_view key) const {
  // Lines are sorted by bytes, which is what string_view compares.
  const auto it =
      std::lower_bound(lines_.begin(), lines_.end(), key,
                       [this](std::uint32_t line, std::string_view k) {
                         return KeyAt(line) < k;
                       });
  Match match;
  if (it == lines_.end()) return match;
  const std::string_view found = KeyAt(*it);
  match.prefix = found.substr(0, key.size()) == key;
  if (found == key) {
    match.found = true;
    long cost = 0;
    std::size_t pos = *it + found.size() + 1;
    Number(text_, pos, cost);
    match.cost = static_cast<int>(std::min(cost, 1000000L));
  }
  return match;
}

}  // namespace quill
