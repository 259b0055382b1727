// Readings in context: the words of a text, found as the most probable split
// over the phrase table, give the reading of each of their characters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "readings/PhraseTable.hpp"

namespace quill {

// The cost of a character that no word of either table covers: that of a
// word rarer than any the tables hold.
inline constexpr std::uint32_t kUncoveredCost = 2500;

// A run of Chinese characters longer than this is split into pieces of this
// length, which bounds the work space on texts without any punctuation.
inline constexpr std::size_t kLongestRun = 4096;

// For each character of `text` above U+00FF, in order, the Zhuyin syllable
// chosen for it: that of the word which covers it in the split of lowest
// total cost, or empty where no word covers it. Words of `user` win over
// words of `table` of the same length at the same place. The views point
// into the two tables.
std::vector<std::string_view> ChooseReadings(std::string_view text,
                                             const PhraseTable& table,
                                             const PhraseTable& user);
// The same into `out`, whose room is used again: a text taken a piece at a
// time then allocates (and faults in) that room once.
void ChooseReadings(std::string_view text, const PhraseTable& table,
                    const PhraseTable& user,
                    std::vector<std::string_view>& out);

// A character's reading string ("ㄏㄤˊ  ㄒㄧㄥˊ": readings separated by two
// blanks) with `reading` moved to the front, or put in front when missing;
// unchanged when it is in front already.
std::string PutFirst(std::string_view readingEntry, std::string_view reading);

}  // namespace quill
