// Word segmentation of running text: the text comes back whole, with an
// ASCII blank at each word boundary that is not marked already.
//
//   Segment("我們是中國人。OK", lexicon)  // "我們 是 中國 人 。 OK"
//
// Runs of Chinese characters are cut into the most probable sequence of
// words (the sum of the words' costs is least); a character no word covers
// is a word of its own at a high cost. Runs of letters and digits stay
// whole, and every other mark is a token of its own. A blank goes between
// two tokens when one of them is Chinese (a word, or a mark from U+2000 on),
// so that text in Latin script keeps its own spacing; never next to white
// space, at either end, or next to a byte that is not UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tokenizer/Lexicon.hpp"

namespace quill {

std::string Segment(std::string_view text, const Lexicon& lexicon);

// The words of one run of Chinese characters (all of `run`), in order.
std::vector<std::string_view> SegmentChinese(std::string_view run,
                                             const Lexicon& lexicon);

}  // namespace quill
