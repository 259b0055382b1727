// The user's own phrase file: one word a line with a reading for each of its
// characters, in numbered pinyin or in Zhuyin,
//
//   银行  yin2 hang2      # numbered pinyin; lv4, lü4 and lu:4 alike
//   行长  ㄏㄤˊ ㄓㄤˇ
//
// '#' starts a comment; blank lines and CR LF line ends are fine. The
// entries are kept as a PhraseTable with a low cost, so that they take part
// in the split of a text and win over the shipped words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "readings/PhraseTable.hpp"

namespace quill {

// The cost of every user word: that of a very common word, so that it is
// chosen wherever it fits.
inline constexpr std::uint32_t kUserWordCost = 100;

struct UserPhraseEntry {
  std::string word;
  std::string readings;  // Zhuyin syllables separated by one blank
};

struct UserPhraseProblem {
  std::size_t line;  // 1-based
  std::string what;  // in plain English, e.g. "3 readings for 2 characters"
};

struct ParsedUserPhrases {
  std::vector<UserPhraseEntry> entries;
  std::vector<UserPhraseProblem> problems;
};

ParsedUserPhrases ParseUserPhrases(std::string_view text);

// The Zhuyin syllable of a numbered pinyin syllable ("hang2" -> "ㄏㄤˊ",
// "ma5" and "ma" -> "ㄇㄚ˙"), or of a Zhuyin one put in the form of the
// data ("˙ㄇㄚ" -> "ㄇㄚ˙"). Empty when it is not a standard syllable.
std::string ReadingToZhuyin(std::string_view reading);

// The phrase file at a path, read again whenever its modification time or
// size changes. A missing file is an empty one.
class UserPhrases {
 public:
  explicit UserPhrases(std::string path = {});

  const std::string& Path() const { return path_; }
  void SetPath(std::string path);

  // Reads the file when it changed since the last read (or was never read);
  // true when it did.
  bool Refresh();

  const PhraseTable& Table() const { return table_; }
  const std::vector<UserPhraseProblem>& Problems() const { return problems_; }

  // True when the version last read has problems that nobody was told of
  // yet: a front end shows them once per version of the file.
  bool HasUnreportedProblems() const {
    return !problems_.empty() && !reported_;
  }
  void MarkProblemsReported() { reported_ = true; }

 private:
  struct Version {
    bool exists = false;
    std::uint64_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    std::int64_t size = 0;
    bool operator==(const Version&) const = default;
  };

  std::string path_;
  bool read_ = false;
  Version version_;
  PhraseTable table_;
  std::vector<UserPhraseProblem> problems_;
  bool reported_ = false;
};

}  // namespace quill
