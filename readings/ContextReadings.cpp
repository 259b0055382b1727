#include "readings/ContextReadings.hpp"

#include <algorithm>
#include <limits>
#include <span>

#include "text/TextOps.hpp"

namespace quill {

namespace {

// How the best split of a run reaches a character boundary: from which
// boundary, by which word.
struct Step {
  std::uint32_t from;
  std::uint32_t size;     // of the syllables
  const char* syllables;  // of the word; none: one uncovered character
};

// Where the syllable that starts at `from` ends. The tables hold only
// well-formed syllables, Zhuyin letters of three bytes, each starting with
// E3, then perhaps a tone mark of two, starting with CB: stepped over whole.
std::size_t SyllableEnd(std::string_view syllables, std::size_t from) {
  while (from < syllables.size() && syllables[from] == '\xE3') from += 3;
  if (from < syllables.size() && syllables[from] == '\xCB') from += 2;
  return std::min(from, syllables.size());
}

class Splitter {
 public:
  Splitter(const PhraseTable& table, const PhraseTable& user)
      : table_(table), user_(user) {}

  // Appends one syllable (or nothing) per character of the run `codes_`.
  void Run(std::vector<std::string_view>& out) {
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
        table_.ForEachWordAt(from, [&](const PhraseTable::Match& m) {
          single |= Relax(i, m, n);
        });
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
    const std::size_t first = out.size();
    out.resize(first + n);
    for (std::size_t end = n; end > 0;) {
      const Step step = steps_[end];
      const std::string_view syllables(step.syllables, step.size);
      if (step.from + 1 == end) {
        out[first + step.from] = syllables;  // one character: one syllable
      } else {
        std::size_t from = 0;
        for (std::size_t k = step.from; k < end; ++k) {
          const std::size_t blank = SyllableEnd(syllables, from);
          // Given as the character's own word reads it where the two agree:
          // then the same syllable of a character comes at the same place.
          out[first + k] = table_.AsOwnReading(
              codes_[k], syllables.substr(from, blank - from));
          from = std::min(blank + 1, syllables.size());
        }
      }
      end = step.from;
    }
  }

  std::vector<std::uint32_t> codes_;  // the characters of the run

 private:
  // A word from character i; true when it is one character long.
  bool Relax(std::size_t i, const PhraseTable::Match& m, std::size_t n) {
    const std::size_t end = i + m.chars;
    if (end > n) return false;  // beyond a cut of a long run
    const std::uint32_t cost = best_[i] + m.cost;
    if (cost < best_[end]) {
      best_[end] = cost;
      steps_[end] = {static_cast<std::uint32_t>(i),
                     static_cast<std::uint32_t>(m.readings.size()),
                     m.readings.data()};
    }
    return m.chars == 1;
  }

  const PhraseTable& table_;
  const PhraseTable& user_;
  std::vector<std::uint32_t> best_;
  std::vector<Step> steps_;
  std::vector<PhraseTable::Match> words_, userWords_;
};

}  // namespace

std::vector<std::string_view> ChooseReadings(std::string_view text,
                                             const PhraseTable& table,
                                             const PhraseTable& user) {
  std::vector<std::string_view> out;
  ChooseReadings(text, table, user, out);
  return out;
}

void ChooseReadings(std::string_view text, const PhraseTable& table,
                    const PhraseTable& user,
                    std::vector<std::string_view>& out) {
  out.clear();
  // Each character takes two bytes or more.
  if (out.capacity() < text.size() / 2) {
    out.reserve(text.size() / 2);
    MapForWriting(out.data(), out.capacity() * sizeof(std::string_view));
  }
  Splitter splitter(table, user);
  auto& run = splitter.codes_;
  for (std::size_t pos = 0; pos < text.size();) {
    Utf8Char c = DecodeChar(text, pos);
    if (!IsHanzi(c.code)) {
      if (c.code > 0xFF) out.emplace_back();
      pos += c.length;
      continue;
    }
    run.clear();
    while (IsHanzi(c.code) && run.size() < kLongestRun) {
      run.push_back(c.code);
      pos += c.length;
      if (pos == text.size()) break;
      c = DecodeChar(text, pos);
    }
    splitter.Run(out);
  }
}

std::string PutFirst(std::string_view readingEntry, std::string_view reading) {
  if (readingEntry.substr(0, readingEntry.find("  ")) == reading) {
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
