#include "text/TextOps.hpp"

#include <sys/mman.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace quill {

namespace {

char FoldAscii(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualFoldedAt(std::string_view s, std::size_t pos, std::string_view find) {
  for (std::size_t i = 0; i < find.size(); ++i) {
    if (FoldAscii(s[pos + i]) != FoldAscii(find[i])) return false;
  }
  return true;
}

// Byte offset of the first case-folded match of `find` in `s` from `from`, or
// npos.
std::size_t FindFolded(std::string_view s, std::string_view find,
                       std::size_t from) {
  if (find.empty() || s.size() < find.size()) return std::string_view::npos;
  const bool hasLetter = std::any_of(find.begin(), find.end(), [](char c) {
    return (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
  });
  if (!hasLetter) {
    // A plain byte search, anchored on a byte other than a blank where the
    // needle has one: blanks are everywhere in the texts searched here, so
    // looking for one stops at every word.
    std::size_t anchor = 0;
    while (anchor + 1 < find.size() && find[anchor] == ' ') ++anchor;
    for (std::size_t at = s.find(find[anchor], from + anchor);
         at != std::string_view::npos; at = s.find(find[anchor], at + 1)) {
      const std::size_t i = at - anchor;
      if (i + find.size() > s.size()) break;
      std::size_t k = 0;
      while (k < find.size() && s[i + k] == find[k]) ++k;
      if (k == find.size()) return i;
    }
    return std::string_view::npos;
  }
  for (std::size_t i = from; i + find.size() <= s.size(); ++i) {
    if (EqualFoldedAt(s, i, find)) return i;
  }
  return std::string_view::npos;
}

// Byte offset of character number `index` (1-based), or s.size() past the end.
std::size_t ByteOfChar(std::string_view s, long index) {
  std::size_t pos = 0;
  for (long i = 1; i < index && pos < s.size(); ++i) {
    pos += DecodeChar(s, pos).length;
  }
  return pos;
}

}  // namespace

std::string Chr(std::uint32_t code) {
  std::string out;
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    if (code >= 0xD800 && code <= 0xDFFF) return out;
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code <= 0x10FFFF) {
    out += static_cast<char>(0xF0 | (code >> 18));
    out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
  return out;
}

std::uint32_t Asc(std::string_view s) {
  return s.empty() ? 0 : DecodeChar(s, 0).code;
}

int AscB(std::string_view s) {
  return s.empty() ? 0 : static_cast<unsigned char>(s[0]);
}

std::size_t Len(std::string_view s) {
  std::size_t count = 0;
  for (std::size_t pos = 0; pos < s.size(); pos += DecodeChar(s, pos).length) {
    ++count;
  }
  return count;
}

std::size_t LenB(std::string_view s) { return s.size(); }

std::string Mid(std::string_view s, long start, long length) {
  if (start < 1) start = 1;
  const std::size_t from = ByteOfChar(s, start);
  if (length < 0) return std::string(s.substr(from));
  std::size_t to = from;
  for (long i = 0; i < length && to < s.size(); ++i) {
    to += DecodeChar(s, to).length;
  }
  return std::string(s.substr(from, to - from));
}

std::string MidB(std::string_view s, long start, long length) {
  if (start < 1) start = 1;
  const auto from = static_cast<std::size_t>(start - 1);
  if (from >= s.size()) return {};
  if (length < 0) return std::string(s.substr(from));
  return std::string(s.substr(from, static_cast<std::size_t>(length)));
}

std::string Left(std::string_view s, long count) {
  return count <= 0 ? std::string() : Mid(s, 1, count);
}

std::string Right(std::string_view s, long count) {
  if (count <= 0) return {};
  const auto total = static_cast<long>(Len(s));
  return count >= total ? std::string(s) : Mid(s, total - count + 1);
}

long InStrB(long start, std::string_view s, std::string_view find) {
  if (find.empty()) return 0;
  const std::size_t from = start <= 1 ? 0 : static_cast<std::size_t>(start - 1);
  if (from >= s.size()) return 0;
  const std::size_t hit = s.find(find, from);
  return hit == std::string_view::npos ? 0 : static_cast<long>(hit + 1);
}

long InStr(std::string_view s, std::string_view find) {
  const std::size_t hit = FindFolded(s, find, 0);
  if (hit == std::string_view::npos) return 0;
  return static_cast<long>(Len(s.substr(0, hit)) + 1);
}

bool Equals(std::string_view a, std::string_view b) {
  return a.size() == b.size() && EqualFoldedAt(a, 0, b);
}

std::string Trim(std::string_view s) { return std::string(TrimView(s)); }

std::string_view TrimView(std::string_view s) {
  std::size_t from = 0;
  std::size_t to = s.size();
  while (from < to && IsTrimmable(s[from])) ++from;
  while (to > from && IsTrimmable(s[to - 1])) --to;
  return s.substr(from, to - from);
}

void TrimInPlace(std::string& s) {
  while (!s.empty() && IsTrimmable(s.back())) s.pop_back();
  std::size_t from = 0;
  while (from < s.size() && IsTrimmable(s[from])) ++from;
  if (from > 0) s.erase(0, from);
}

std::string Replace(std::string_view s, std::string_view find,
                    std::string_view with) {
  const std::size_t hit = FindFolded(s, find, 0);
  if (hit == std::string_view::npos) return std::string(s);
  std::string out;
  out.reserve(s.size() + with.size());
  out.append(s.substr(0, hit)).append(with).append(s.substr(hit + find.size()));
  return out;
}

std::string ReplaceAll(std::string_view s, std::string_view find,
                       std::string_view with) {
  std::string out;
  std::size_t from = 0;
  for (std::size_t hit = FindFolded(s, find, 0); hit != std::string_view::npos;
       hit = FindFolded(s, find, from)) {
    out.append(s.substr(from, hit - from)).append(with);
    from = hit + find.size();
  }
  out.append(s.substr(from));
  return out;
}

void ReserveForWriting(std::string& s, std::size_t size) {
  s.reserve(size);
  constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
  if (s.capacity() < 2 * kHugePage) return;
  const auto begin = reinterpret_cast<std::uintptr_t>(s.data());
  const std::uintptr_t from = (begin + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t to = (begin + s.capacity()) & ~(kHugePage - 1);
  if (to <= from) return;
  madvise(reinterpret_cast<void*>(from), to - from, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
  // The small pages in front of the first huge one are written first; one
  // call maps them all for less than a fault each.
  const std::uintptr_t head = begin & ~std::uintptr_t{4095};
  madvise(reinterpret_cast<void*>(head), from - head, MADV_POPULATE_WRITE);
#endif
}

void MapForWriting(void* data, std::size_t bytes) {
#ifdef MADV_POPULATE_WRITE
  if (bytes == 0) return;
  const auto begin = reinterpret_cast<std::uintptr_t>(data);
  const std::uintptr_t page = begin & ~std::uintptr_t{4095};
  // Older kernels refuse the advice: the pages are then mapped as written.
  madvise(reinterpret_cast<void*>(page), begin + bytes - page,
          MADV_POPULATE_WRITE);
#else
  (void)data;
  (void)bytes;
#endif
}

void MapAhead(std::string& s, std::size_t upTo) {
  upTo = std::min(upTo, s.capacity());
  if (upTo > s.size()) MapForWriting(s.data() + s.size(), upTo - s.size());
}

void ReplaceAllInPlace(std::string& s, std::string_view find,
                       std::string_view with) {
  std::size_t hit = FindFolded(s, find, 0);
  if (hit == std::string::npos) return;
  if (with.size() > find.size()) {
    s = ReplaceAll(s, find, with);
    return;
  }
  // The text only shrinks, so the part written (before `to`) never reaches
  // the part still to be searched (from `from` on), which stays as it was.
  char* const data = s.data();
  std::size_t to = hit;
  std::size_t from = hit;
  while (hit != std::string::npos) {
    std::memmove(data + to, data + from, hit - from);
    to += hit - from;
    std::memmove(data + to, with.data(), with.size());
    to += with.size();
    from = hit + find.size();
    hit = FindFolded(s, find, from);
  }
  std::memmove(data + to, data + from, s.size() - from);
  s.resize(to + (s.size() - from));
}

long CountFields(std::string_view s, std::string_view separator) {
  if (separator.empty()) return 1;
  long count = 1;
  for (std::size_t hit = s.find(separator); hit != std::string_view::npos;
       hit = s.find(separator, hit + separator.size())) {
    ++count;
  }
  return count;
}

std::string NthField(std::string_view s, std::string_view separator, long n) {
  if (n < 1) return {};
  if (separator.empty()) return n == 1 ? std::string(s) : std::string();
  std::size_t from = 0;
  for (long i = 1; i < n; ++i) {
    const std::size_t hit = s.find(separator, from);
    if (hit == std::string_view::npos) return {};
    from = hit + separator.size();
  }
  const std::size_t end = s.find(separator, from);
  return std::string(s.substr(from, end == std::string_view::npos
                                        ? std::string_view::npos
                                        : end - from));
}

double Val(std::string_view s) {
  std::size_t i = 0;
  while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) ++i;
  double sign = 1;
  if (i < s.size() && (s[i] == '-' || s[i] == '+')) {
    if (s[i] == '-') sign = -1;
    ++i;
  }
  double value = 0;
  bool digits = false;
  for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
    value = value * 10 + (s[i] - '0'), digits = true;
  }
  if (i < s.size() && s[i] == '.') {
    double scale = 0.1;
    for (++i; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
      value += (s[i] - '0') * scale, scale /= 10, digits = true;
    }
  }
  if (digits && i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    std::size_t j = i + 1;
    int expSign = 1;
    if (j < s.size() && (s[j] == '-' || s[j] == '+')) {
      if (s[j] == '-') expSign = -1;
      ++j;
    }
    int exponent = 0;
    bool expDigits = false;
    for (; j < s.size() && s[j] >= '0' && s[j] <= '9'; ++j) {
      if (exponent < 400) exponent = exponent * 10 + (s[j] - '0');
      expDigits = true;
    }
    if (expDigits) value *= std::pow(10.0, expSign * exponent);
  }
  return digits ? sign * value : 0;
}

std::string Str(long long n) { return std::to_string(n); }

bool IsValidUtf8(std::string_view s) {
  for (std::size_t pos = 0; pos < s.size();) {
    const Utf8Char c = DecodeChar(s, pos);
    if (c.length == 1 && static_cast<unsigned char>(s[pos]) >= 0x80) {
      return false;
    }
    pos += c.length;
  }
  return true;
}

}  // namespace quill
