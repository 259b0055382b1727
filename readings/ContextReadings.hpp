// Readings in context: the words of a text, found as the most probable split
// over the phrase table, give the reading of each of their characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "readings/PhraseTable.hpp"
#include "text/TextOps.hpp"

namespace quill {

// The cost of a character that no word of either table covers: that of a
// word rarer than any the tables hold.
inline constexpr std::uint32_t kUncoveredCost = 2500;

// A stretch of characters that words join, longer than this, is split into
// pieces of at most this length, which bounds the work space on texts without
// any punctuation.
inline constexpr std::size_t kLongestRun = 4096;

// The readings of the characters of a text, chosen by the split of lowest
// total cost into words of `table` and `user`. Words of `user` win over words
// of `table` of the same length at the same place.
//
// The split is worked out only where it can change a reading. A character
// that every word reads alike reads so wherever it stands; one that some
// words read otherwise reads as its own word does where none of those words
// takes in a neighbour of it. Elsewhere its stretch is split when it is
// asked for: no word goes over a place where no word has its two
// neighbours, so the best split of a text is the best splits of the
// stretches between such places.
class ReadingChooser {
 public:
  // `text` and the two tables must outlive the chooser.
  ReadingChooser(std::string_view text, const PhraseTable& table,
                 const PhraseTable& user)
      : text_(text),
        table_(table),
        user_(user),
        fixed_(user.empty() ? table.Fixed() : PhraseTable::FixedSet()) {}

  // False when the character `code` reads by Fixed() wherever it stands.
  bool Varies(std::uint32_t code) const { return !fixed_.Has(code); }
  // The characters that do not vary: a copy that a caller keeps at hand.
  PhraseTable::FixedSet FixedSet() const { return fixed_; }
  // The syllable of a character that does not vary.
  std::string_view Fixed(std::uint32_t code) const {
    return fixed_.Has(code) ? *table_.OwnReading(code) : std::string_view();
  }
  // The Zhuyin syllable chosen for the character `code` that starts at byte
  // `pos` of the text, one that Varies: that of the word which covers it in
  // the best split, or empty where no word covers it. Characters are asked
  // for in the order of the text; any may be left out. The view points into
  // a table.
  std::string_view At(std::size_t pos, std::uint32_t code) {
    return IsHanzi(code) ? InWords(pos, code) : std::string_view();
  }

 private:
  // How the best split of a stretch reaches a character boundary: from which
  // boundary, by which word.
  struct Step {
    std::uint32_t from;
    std::uint32_t size;     // of the syllables
    const char* syllables;  // of the word; none: one uncovered character
  };

  std::string_view InWords(std::size_t pos, std::uint32_t code);
  // The character that ends at `pos`, after the stretch split last; code 0
  // when there is none.
  Utf8Char Before(std::size_t pos) const;
  // Splits the stretch of characters that words may join around the one at
  // `pos`, `code`.
  void SplitAround(std::size_t pos, std::uint32_t code);
  bool MayJoin(std::uint32_t first, std::uint32_t second) const {
    return table_.MayJoin(first, second) || user_.MayJoin(first, second);
  }
  // Splits the stretch codes_ into views_, one syllable (or none) each.
  void Split();
  // A word from character i of a stretch of n; true when it is one
  // character long.
  bool Relax(std::size_t i, const PhraseTable::Match& m, std::size_t n);

  std::string_view text_;
  const PhraseTable& table_;
  const PhraseTable& user_;
  const PhraseTable::FixedSet fixed_;  // none when there are words of the user
  // The stretch last split: its characters, where they start, their
  // syllables, and where it ends; the next character asked for in it.
  std::vector<std::uint32_t> codes_;
  std::vector<std::size_t> offsets_;
  std::vector<std::string_view> views_;
  std::size_t end_ = 0;
  std::size_t next_ = 0;
  // The splits of short stretches met before, by a hash of their
  // characters, one to a place: a text has the same few words again and
  // again.
  static constexpr std::size_t kRemembered = 4;
  static constexpr std::size_t kRememberedSplits = 2048;
  struct Remembered {
    std::uint32_t size = 0;
    std::uint32_t codes[kRemembered] = {};
    std::string_view views[kRemembered];
  };
  std::vector<Remembered> remembered_;
  std::vector<std::uint32_t> best_;
  std::vector<Step> steps_;
  std::vector<PhraseTable::Match> words_, userWords_;
};

// For each character of `text` above U+00FF, in order, the syllable chosen
// for it by a ReadingChooser.
std::vector<std::string_view> ChooseReadings(std::string_view text,
                                             const PhraseTable& table,
                                             const PhraseTable& user);

// The first reading of a character's reading string ("ㄏㄤˊ  ㄒㄧㄥˊ":
// readings separated by two blanks).
inline std::string_view FirstReading(std::string_view readingEntry) {
  return readingEntry.substr(0, readingEntry.find("  "));
}

// A character's reading string ("ㄏㄤˊ  ㄒㄧㄥˊ": readings separated by two
// blanks) with `reading` moved to the front, or put in front when missing;
// unchanged when it is in front already.
std::string PutFirst(std::string_view readingEntry, std::string_view reading);

}  // namespace quill
