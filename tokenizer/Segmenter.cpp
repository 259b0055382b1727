#include "tokenizer/Segmenter.hpp"

#include <cstdint>
#include <limits>

#include "text/TextOps.hpp"

namespace quill {

namespace {

enum class Kind {
  kChinese,  // Chinese characters
  kLetters,  // wide letters and digits
  kSpace,    // white space and line ends: a boundary already
  kInvalid,  // bytes that are not UTF-8: left alone, no blank beside them
  kMark,     // any other character
};

bool IsChinese(std::uint32_t c) {
  return (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0x3400 && c <= 0x4DBF) ||
         (c >= 0xF900 && c <= 0xFAFF) || (c >= 0x20000 && c <= 0x323AF) ||
         c == 0x3007;
}

// Letters and digits from U+2000 on, which would otherwise be wide marks with
// a blank around each: a run of them stays whole. Letters below U+2000 need
// no class of their own, since there a mark takes no blank either.
bool IsWideLetter(std::uint32_t c) {
  return (c >= 0xFF10 && c <= 0xFF19) || (c >= 0xFF21 && c <= 0xFF3A) ||
         (c >= 0xFF41 && c <= 0xFF5A) ||  // full-width
         (c >= 0x3041 && c <= 0x30FF) || (c >= 0xAC00 && c <= 0xD7AF) ||
         // Zhuyin letters: a typed syllable stays whole.
         (c >= 0x3105 && c <= 0x312F) || (c >= 0x31A0 && c <= 0x31BF);
}

bool IsSpace(std::uint32_t c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' ||
         c == '\f' || c == 0xA0 || (c >= 0x2000 && c <= 0x200B) ||
         c == 0x2028 || c == 0x2029 || c == 0x3000 || c == 0xFEFF;
}

Kind KindOf(std::string_view text, std::size_t pos, Utf8Char c) {
  if (c.length == 1 && static_cast<unsigned char>(text[pos]) >= 0x80) {
    return Kind::kInvalid;
  }
  if (IsChinese(c.code)) return Kind::kChinese;
  if (IsWideLetter(c.code)) return Kind::kLetters;
  if (IsSpace(c.code)) return Kind::kSpace;
  return Kind::kMark;
}

// Whether a token of this kind asks for blanks around it.
bool IsWide(Kind kind, std::uint32_t firstCode) {
  return kind == Kind::kChinese || (kind == Kind::kMark && firstCode >= 0x2000);
}

}  // namespace

std::vector<std::string_view> SegmentChinese(std::string_view run,
                                             const Lexicon& lexicon) {
  // Character starts, then the best cut of every suffix, from the end.
  std::vector<std::size_t> starts;
  for (std::size_t pos = 0; pos < run.size();
       pos += DecodeChar(run, pos).length) {
    starts.push_back(pos);
  }
  const std::size_t n = starts.size();
  starts.push_back(run.size());
  struct Best {
    long cost = std::numeric_limits<long>::max();
    std::size_t words = 0;
    std::size_t next = 0;  // character index where the next word starts
  };
  std::vector<Best> best(n + 1);
  best[n] = {0, 0, n};
  std::string key;
  for (std::size_t i = n; i-- > 0;) {
    key.clear();
    auto consider = [&](std::size_t end, long cost) {
      const Best& rest = best[end];
      const long total = cost + rest.cost;
      Best& b = best[i];
      // Ties go to fewer words.
      if (total < b.cost || (total == b.cost && rest.words + 1 < b.words)) {
        b = {total, rest.words + 1, end};
      }
    };
    consider(i + 1, lexicon.unknownCost());
    for (std::size_t j = i; j < n; ++j) {
      key += Chr(lexicon.Key(DecodeChar(run, starts[j]).code));
      const Lexicon::Match match = lexicon.Find(key);
      if (match.found) consider(j + 1, match.cost);
      if (!match.prefix) break;
    }
  }
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < n; i = best[i].next) {
    const std::size_t end = best[i].next;
    words.push_back(run.substr(starts[i], starts[end] - starts[i]));
  }
  return words;
}

std::string Segment(std::string_view text, const Lexicon& lexicon) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  bool lastWide = false;
  bool lastJoins = false;  // whether the last token may take a blank behind it
  auto emit = [&](std::string_view token, bool wide, bool joins) {
    if (joins && lastJoins && (wide || lastWide)) out += ' ';
    out.append(token);
    lastWide = wide;
    lastJoins = joins;
  };
  for (std::size_t pos = 0; pos < text.size();) {
    const Utf8Char first = DecodeChar(text, pos);
    const Kind kind = KindOf(text, pos, first);
    std::size_t end = pos + first.length;
    if (kind == Kind::kChinese || kind == Kind::kLetters ||
        kind == Kind::kInvalid) {
      while (end < text.size()) {
        const Utf8Char c = DecodeChar(text, end);
        if (KindOf(text, end, c) != kind) break;
        end += c.length;
      }
    }
    const std::string_view token = text.substr(pos, end - pos);
    if (kind == Kind::kChinese) {
      for (std::string_view word : SegmentChinese(token, lexicon)) {
        emit(word, true, true);
      }
    } else {
      const bool joins = kind != Kind::kSpace && kind != Kind::kInvalid;
      emit(token, IsWide(kind, first.code), joins);
    }
    pos = end;
  }
  return out;
}

}  // namespace quill
