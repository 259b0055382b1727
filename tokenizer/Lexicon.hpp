// The word list of the Tokenizer: words with their costs, keyed by their
// Simplified spelling, and the Traditional->Simplified character table that
// turns any text into keys.
//
//   Lexicon lexicon;
//   lexicon.Load(folder + "/tokenizerlexicon");
//   lexicon.Key(U'們');             // U'们'
//   lexicon.Find("我们");           // Match{found, prefix, cost}
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace quill {

class Lexicon {
 public:
  Lexicon() = default;
  Lexicon(const Lexicon&) = delete;
  Lexicon& operator=(const Lexicon&) = delete;
  ~Lexicon();

  // What a look-up of a key yields: whether it is a word (and its cost, the
  // negative log of its probability in hundredths), and whether any word
  // begins with it, so that a caller knows when to stop extending the key.
  struct Match {
    bool found = false;
    bool prefix = false;
    int cost = 0;
  };

  // Maps the file and reads its character table; false, with `error` set, when
  // it cannot be read or is not a lexicon. A failed load leaves the lexicon
  // empty.
  bool Load(const std::string& path, std::string* error);

  // The character under which a word list entry is filed: the Simplified
  // form of a Traditional character, any other character itself.
  std::uint32_t Key(std::uint32_t code) const;

  Match Find(std::string_view key) const;

  // What a character that no word covers costs as a word of its own.
  int unknownCost() const { return unknownCost_; }
  // The number of words, as the file's first line gives it.
  std::size_t size() const { return count_; }

 private:
  // The key of the word line at byte `from` of the word section.
  std::string_view KeyAt(std::size_t from) const;
  // Byte offset of the first word line whose key is not below `key`.
  std::size_t LowerBound(std::string_view key, std::size_t lo,
                         std::size_t hi) const;
  void Unmap();

  std::string_view text_;   // the mapped file
  std::string_view words_;  // the word lines
  std::size_t count_ = 0;
  // The word lines of each first character, as they are asked for.
  mutable std::unordered_map<std::uint64_t, std::pair<std::size_t, std::size_t>>
      ranges_;
  std::unordered_map<std::uint32_t, std::uint32_t> simplified_;
  int unknownCost_ = 0;
};

}  // namespace quill
