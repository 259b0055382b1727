// Checks the committed phrase-reading files against the rules their reader
// relies on: sorted byte-wise with every word once, one standard syllable per
// character in citation tones; and that the cheapest split over them reads
// the words and sentences of tests/data as expected.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "readings/ContextReadings.hpp"
#include "readings/PhraseTable.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

const std::string kDataDir = QUILLMERE_SOURCE_DIR "/data/";
const std::string kSyllablesPath =
    QUILLMERE_SOURCE_DIR "/tools/standard_syllables.txt";
const std::string kExpectedPath =
    QUILLMERE_TEST_DATA "/tables/phrase_words.txt";

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream buffer;
  buffer << in.rdbuf();
  return buffer.str();
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t at; (at = text.find(separator, start)) != std::string::npos;
       start = at + 1) {
    parts.push_back(text.substr(start, at - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

std::set<std::string> StandardSyllables() {
  std::set<std::string> syllables;
  std::istringstream in(ReadFile(kSyllablesPath));
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line[0] != '#') {
      syllables.insert(line.substr(0, line.find(' ')));
    }
  }
  return syllables;
}

// Letters in the order initial, medial, final, then at most one tone mark
// last. Returns the letters without the mark, or "" when the reading breaks
// the rule.
std::string LettersOf(const std::string& reading) {
  int lastSlot = -1;
  std::size_t pos = 0;
  while (pos < reading.size()) {
    const Utf8Char c = DecodeChar(reading, pos);
    if (c.code == 0x02CA || c.code == 0x02C7 || c.code == 0x02CB ||
        c.code == 0x02D9) {
      return pos > 0 && pos + c.length == reading.size()
                 ? reading.substr(0, pos)
                 : "";
    }
    int slot = -1;
    if (c.code >= 0x3105 && c.code <= 0x3119) slot = 0;  // ㄅ to ㄙ
    if (c.code >= 0x3127 && c.code <= 0x3129) slot = 1;  // ㄧ ㄨ ㄩ
    if (c.code >= 0x311A && c.code <= 0x3126) slot = 2;  // ㄚ to ㄦ
    if (slot <= lastSlot) return "";
    lastSlot = slot;
    pos += c.length;
  }
  return reading;
}

bool IsHanzi(std::uint32_t code) {
  return code == 0x3007 || (code >= 0x3400 && code <= 0x4DBF) ||
         (code >= 0x4E00 && code <= 0x9FFF) ||
         (code >= 0xF900 && code <= 0xFAFF);
}

// The characters of a word, or nothing when it holds anything but Chinese
// characters of three bytes.
std::vector<std::string> CharactersOf(const std::string& word) {
  std::vector<std::string> chars;
  std::size_t pos = 0;
  while (pos < word.size()) {
    const Utf8Char c = DecodeChar(word, pos);
    if (c.length != 3 || !IsHanzi(c.code)) return {};
    chars.push_back(word.substr(pos, 3));
    pos += 3;
  }
  return chars;
}

class Phrasereadings : public ::testing::TestWithParam<std::string> {};

// Every check of the format, line by line.
void CheckFile(const std::string& name) {
  const std::string content = ReadFile(kDataDir + name);
  ASSERT_FALSE(content.empty()) << name;
  ASSERT_TRUE(IsValidUtf8(content)) << name;
  ASSERT_EQ(content.back(), '\n') << name;
  EXPECT_EQ(content.find('\r'), std::string::npos) << name;
  EXPECT_EQ(content.find('\0'), std::string::npos) << name;
  const bool phrases = name != "taiwanreadings";
  const std::set<std::string> standard = StandardSyllables();
  ASSERT_GT(standard.size(), 400u);
  std::string previous;
  int lineNumber = 0;
  std::vector<std::string> lines = Split(content, '\n');
  lines.pop_back();  // after the last LF
  for (const std::string& text : lines) {
    ++lineNumber;
    const std::string where = name + " line " + std::to_string(lineNumber);
    const std::vector<std::string> fields = Split(text, '\t');
    ASSERT_EQ(fields.size(), phrases ? 3u : 2u) << where;
    const std::string& word = fields[0];
    const std::vector<std::string> chars = CharactersOf(word);
    ASSERT_FALSE(chars.empty()) << where;
    if (!phrases) {
      EXPECT_EQ(chars.size(), 1u) << where;
    }
    EXPECT_LT(previous, word) << where << ": not sorted or twice";
    previous = word;
    const std::vector<std::string> readings = Split(fields[1], ' ');
    ASSERT_EQ(readings.size(), chars.size()) << where;
    for (std::size_t i = 0; i < readings.size(); ++i) {
      const std::string letters = LettersOf(readings[i]);
      EXPECT_TRUE(!letters.empty() && standard.count(letters))
          << where << ": " << readings[i];
      // Citation tones: never the changed tones of 一 and 不.
      if (chars[i] == "一") {
        EXPECT_TRUE(readings[i] != "ㄧˊ" && readings[i] != "ㄧˋ") << where;
      }
      if (chars[i] == "不") {
        EXPECT_NE(readings[i], "ㄅㄨˊ") << where;
      }
    }
    if (phrases) {
      const std::string& cost = fields[2];
      EXPECT_TRUE(!cost.empty() && cost.size() <= 6 &&
                  cost.find_first_not_of("0123456789") == std::string::npos)
          << where << ": cost " << cost;
    }
  }
  EXPECT_GE(lines.size(), phrases ? 10000u : 100u) << name;
}

TEST_P(Phrasereadings, LinesFollowTheFormat) { CheckFile(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Files, Phrasereadings,
                         ::testing::Values("phrasereadings",
                                           "phrasereadings-tw",
                                           "taiwanreadings"));

// Each case names a file and a text: a run of characters read in context
// over a phrase file ("?" where no word covers a character), or one
// character's line of taiwanreadings.
TEST(PhrasereadingsCases, ReadAsExpected) {
  std::map<std::string, std::string> taiwan;
  for (const std::string& line :
       Split(ReadFile(kDataDir + "taiwanreadings"), '\n')) {
    const std::vector<std::string> fields = Split(line, '\t');
    if (fields.size() == 2) taiwan[fields[0]] = fields[1];
  }
  const PhraseTable none;
  int cases = 0;
  for (const std::string& line : Split(ReadFile(kExpectedPath), '\n')) {
    if (line.empty() || line[0] == '#') continue;
    const std::vector<std::string> fields = Split(line, '\t');
    ASSERT_EQ(fields.size(), 3u) << line;
    std::string got;
    if (fields[0] == "taiwanreadings") {
      got = taiwan[fields[1]];
    } else {
      PhraseTable table;
      ASSERT_TRUE(table.Open(kDataDir + fields[0])) << line;
      for (const auto reading : ChooseReadings(fields[1], table, none)) {
        got += (got.empty() ? "" : " ") +
               (reading.empty() ? "?" : std::string(reading));
      }
    }
    EXPECT_EQ(got, fields[2]) << fields[0] << " " << fields[1];
    ++cases;
  }
  EXPECT_GE(cases, 50);
}

}  // namespace
}  // namespace quill
