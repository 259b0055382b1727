#include "readings/ContextReadings.hpp"

#include <algorithm>
#include <limits>
#include <span>

#include "text/TextOps.hpp"

namespace quill {

namespace {

// Where the syllable that starts at `from` ends. The tables hold only
// well-formed syllables, Zhuyin letters of three bytes, each starting with
// E3, then perhaps a tone mark of two, starting with CB: stepped over whole.
std::size_t SyllableEnd(std::string_view syllables, std::size_t from) {
  while (from < syllables.size() && syllables[from] == '\xE3') from += 3;
  if (from < syllables.size() && syllables[from] == '\xCB') from += 2;
  return std::min(from, syllables.size());
}

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

Utf8Char ReadingChooser::Before(std::size_t pos) const {
  if (pos <= end_) return {0, 0};
  std::size_t before = pos - 1;
  while (before > end_ && pos - before < 4 && IsContinuation(text_[before])) {
    --before;
  }
  const Utf8Char c = DecodeChar(text_, before);
  return before + c.length == pos ? c : Utf8Char{0, 0};
}

std::string_view ReadingChooser::InWords(std::size_t pos, std::uint32_t code) {
  if (pos >= end_) {
    const auto own = table_.OwnReading(code);
    if (user_.empty() && own && !own->empty()) {
      // Mostly no word that reads the character otherwise takes in a
      // neighbour: then whatever word covers it reads it as its own does.
      const Utf8Char before = Before(pos);
      // Chinese characters take three or four bytes.
      const std::size_t after = pos + (code < 0x10000 ? 3 : 4);
      const Utf8Char next =
          after < text_.size() ? DecodeChar(text_, after) : Utf8Char{0, 0};
      if (!(IsHanzi(before.code) &&
            table_.ReadsSecondOtherwise(before.code, code)) &&
          !(IsHanzi(next.code) &&
            table_.ReadsFirstOtherwise(code, next.code))) {
        return *own;
      }
    }
    SplitAround(pos, code);
  }
  while (next_ < offsets_.size() && offsets_[next_] < pos) ++next_;
  return next_ < offsets_.size() && offsets_[next_] == pos ? views_[next_]
                                                           : std::string_view();
}

void ReadingChooser::SplitAround(std::size_t pos, std::uint32_t code) {
  // Back over the characters that a word may join to this one, as far as the
  // stretch split last; then on to where no word goes further.
  std::size_t start = pos;
  for (std::size_t back = 0; back < kLongestRun / 2; ++back) {
    const Utf8Char c = Before(start);
    if (!IsHanzi(c.code) || !MayJoin(c.code, code)) break;
    start -= c.length;
    code = c.code;
  }
  codes_.clear();
  offsets_.clear();
  for (end_ = start; end_ < text_.size() && codes_.size() < kLongestRun;) {
    const Utf8Char c = DecodeChar(text_, end_);
    if (!IsHanzi(c.code) ||
        (!codes_.empty() && !MayJoin(codes_.back(), c.code))) {
      break;
    }
    codes_.push_back(c.code);
    offsets_.push_back(end_);
    end_ += c.length;
  }
  next_ = 0;
  const std::size_t n = codes_.size();
  if (n > kRemembered) {
    Split();
    return;
  }
  if (remembered_.empty()) remembered_.resize(kRememberedSplits);
  std::uint64_t h = 0;
  for (const std::uint32_t c : codes_) h = (h ^ c) * 0x9E3779B97F4A7C15ull;
  Remembered& r = remembered_[h % kRememberedSplits];
  if (r.size == n && std::equal(codes_.begin(), codes_.end(), r.codes)) {
    views_.assign(r.views, r.views + n);
    return;
  }
  Split();
  r.size = static_cast<std::uint32_t>(n);
  std::copy(codes_.begin(), codes_.end(), r.codes);
  std::copy(views_.begin(), views_.end(), r.views);
}

void ReadingChooser::Split() {
  const std::size_t n = codes_.size();
  constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();
  // Every boundary gets its step before the trace-back reads it: only the
  // costs start out unknown.
  if (best_.size() < n + 1) {
    best_.resize(n + 1);
    steps_.resize(n + 1);
  }
  std::fill_n(best_.begin() + 1, n, kNone);
  best_[0] = 0;
  for (std::size_t i = 0; i < n; ++i) {
    const auto from = std::span(codes_).subspan(i);
    bool single = false;
    if (user_.empty()) {
      table_.ForEachWordAt(
          from, [&](const PhraseTable::Match& m) { single |= Relax(i, m, n); });
    } else {
      user_.WordsAt(from, userWords_);
      for (const auto& m : userWords_) single |= Relax(i, m, n);
      table_.WordsAt(from, words_);
      for (const auto& m : words_) {
        bool mine = false;
        for (const auto& u : userWords_) mine |= u.chars == m.chars;
        if (!mine) single |= Relax(i, m, n);
      }
    }
    if (!single && best_[i] + kUncoveredCost < best_[i + 1]) {
      best_[i + 1] = best_[i] + kUncoveredCost;
      steps_[i + 1] = {static_cast<std::uint32_t>(i), 0, nullptr};
    }
  }
  views_.resize(n);
  for (std::size_t end = n; end > 0;) {
    const Step step = steps_[end];
    const std::string_view syllables(step.syllables, step.size);
    if (step.from + 1 == end) {
      views_[step.from] = syllables;  // one character: one syllable
    } else {
      std::size_t from = 0;
      for (std::size_t k = step.from; k < end; ++k) {
        const std::size_t blank = SyllableEnd(syllables, from);
        // Given as the character's own word reads it where the two agree:
        // then the same syllable of a character comes at the same place.
        views_[k] = table_.AsOwnReading(codes_[k],
                                        syllables.substr(from, blank - from));
        from = std::min(blank + 1, syllables.size());
      }
    }
    end = step.from;
  }
}

bool ReadingChooser::Relax(std::size_t i, const PhraseTable::Match& m,
                           std::size_t n) {
  const std::size_t end = i + m.chars;
  if (end > n) return false;  // beyond a cut of a long stretch
  const std::uint32_t cost = best_[i] + m.cost;
  if (cost < best_[end]) {
    best_[end] = cost;
    steps_[end] = {static_cast<std::uint32_t>(i),
                   static_cast<std::uint32_t>(m.readings.size()),
                   m.readings.data()};
  }
  return m.chars == 1;
}

std::vector<std::string_view> ChooseReadings(std::string_view text,
                                             const PhraseTable& table,
                                             const PhraseTable& user) {
  std::vector<std::string_view> out;
  ReadingChooser chooser(text, table, user);
  for (std::size_t pos = 0; pos < text.size();) {
    const Utf8Char c = DecodeChar(text, pos);
    if (c.code > 0xFF) {
      out.push_back(chooser.Varies(c.code) ? chooser.At(pos, c.code)
                                           : chooser.Fixed(c.code));
    }
    pos += c.length;
  }
  return out;
}

std::string PutFirst(std::string_view readingEntry, std::string_view reading) {
  if (FirstReading(readingEntry) == reading) {
    return std::string(readingEntry);
  }
  std::string out(reading);
  while (!readingEntry.empty()) {
    const std::size_t gap = readingEntry.find("  ");
    const std::string_view item = readingEntry.substr(0, gap);
    if (item != reading) {
      if (!out.empty()) out += "  ";
      out += item;
    }
    readingEntry.remove_prefix(
        gap == std::string_view::npos ? readingEntry.size() : gap + 2);
  }
  return out;
}

}  // namespace quill
