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
#include <vector>

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

  // Maps the file and indexes its lines; false, with `error` set, when it
  // cannot be read or is not a lexicon. A failed load leaves the lexicon empty.
  bool Load(const std::string& path, std::string* error);

  // The character under which a word list entry is filed: the Simplified
  // form of a Traditional character, any other character itself.
  std::uint32_t Key(std::uint32_t code) const;

  Match Find(std::string_view key) const;

  // What a character that no word covers costs as a word of its own.
  int unknownCost() const { return unknownCost_; }
  std::size_t size() const { return lines_.size(); }

 private:
  // The key of the word line at byte `from`.
  std::string_view KeyAt(std::uint32_t from) const;
  void Unmap();

  std::string_view text_;             // the mapped file
  std::vector<std::uint32_t> lines_;  // byte offset of each word line
  std::unordered_map<std::uint32_t, std::uint32_t> simplified_;
  int unknownCost_ = 0;
};

}  // namespace quill
