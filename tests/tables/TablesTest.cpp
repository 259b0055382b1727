// Checks the committed zhuyintable against the rules the look-up relies on:
// a byte search for a character must only ever hit its own key, and every
// reading must be a syllable the romanization chains know. Also the rules of
// its making: the main reading of a full syllable is never the neutral tone
// outside the particles, the two forms of a character agree, and a
// compatibility ideograph reads as the character it stands for.
//
// And the committed phrase-reading files against the rules their reader
// relies on: sorted byte-wise with every word once, one standard syllable per
// character in citation tones; and that the cheapest split over them reads
// the words and sentences of tests/data as expected.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "readings/ContextReadings.hpp"
#include "readings/PhraseTable.hpp"
#include "tests/tables/Gb2312.hpp"
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

const std::string kTablePath = QUILLMERE_SOURCE_DIR "/data/zhuyintable";
const std::string kSyllablesPath =
    QUILLMERE_SOURCE_DIR "/tools/standard_syllables.txt";
const std::string kNeutralFirstPath =
    QUILLMERE_SOURCE_DIR "/tools/neutral_first.txt";
const std::string kDataDir = QUILLMERE_SOURCE_DIR "/data/";
const std::string kCompatibilityPath =
    QUILLMERE_SOURCE_DIR "/tests/tables/compatibility_ideographs.txt";

std::vector<std::string> Split(const std::string& text,
                               const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t at; (at = text.find(separator, start)) != std::string::npos;
       start = at + separator.size()) {
    parts.push_back(text.substr(start, at - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

// The blank-separated words of a list file, without its comment lines.
std::vector<std::string> WordsOf(const std::string& path) {
  std::vector<std::string> words;
  std::istringstream in(ReadFile(path));
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    for (const std::string& word : Split(line, " ")) {
      if (!word.empty()) words.push_back(word);
    }
  }
  return words;
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

// The position of a Zhuyin letter in a syllable: 0 initial, 1 medial,
// 2 final; -1 for anything else.
int SlotOf(std::uint32_t code) {
  if (code >= 0x3105 && code <= 0x3119) return 0;  // ㄅ to ㄙ
  if (code >= 0x3127 && code <= 0x3129) return 1;  // ㄧ ㄨ ㄩ
  if (code >= 0x311A && code <= 0x3126) return 2;  // ㄚ to ㄦ
  return -1;
}

bool IsToneMark(std::uint32_t code) {
  return code == 0x02CA || code == 0x02C7 || code == 0x02CB || code == 0x02D9;
}

bool IsNeutral(const std::string& reading) {
  return reading.size() >= 2 &&
         reading.compare(reading.size() - 2, 2, "\u02D9") == 0;
}

// Letters in the order initial, medial, final, at most one of each, then at
// most one tone mark. Returns the letters without the mark, or "" when the
// reading breaks the rule.
std::string LettersOf(const std::string& reading) {
  int lastSlot = -1;
  std::size_t pos = 0;
  while (pos < reading.size()) {
    const Utf8Char c = DecodeChar(reading, pos);
    if (IsToneMark(c.code)) {
      return pos > 0 && pos + c.length == reading.size()
                 ? reading.substr(0, pos)
                 : "";
    }
    const int slot = SlotOf(c.code);
    if (slot <= lastSlot) return "";
    lastSlot = slot;
    pos += c.length;
  }
  return reading;
}

struct Line {
  std::string key;
  std::vector<std::string> readings;
};

class Zhuyintable : public ::testing::Test {
 protected:
  static const std::string& Content() {
    static const std::string content = ReadFile(kTablePath);
    return content;
  }
  static const std::vector<Line>& Lines() {
    static const std::vector<Line> lines = [] {
      std::vector<Line> read;
      for (const std::string& text : Split(Content(), "\n")) {
        if (text.size() >= 6) {
          read.push_back({text.substr(0, 3), Split(text.substr(6), "  ")});
        }
      }
      return read;
    }();
    return lines;
  }
  static const Line* Find(const std::string& key) {
    for (const Line& line : Lines()) {
      if (line.key == key) return &line;
    }
    return nullptr;
  }
};

TEST_F(Zhuyintable, IsUtf8LinesEndedByLineFeeds) {
  const std::string& content = Content();
  ASSERT_FALSE(content.empty());
  EXPECT_TRUE(IsValidUtf8(content));
  EXPECT_EQ(content.back(), '\n');
  EXPECT_EQ(content.find('\r'), std::string::npos);
  EXPECT_EQ(content.find('\0'), std::string::npos);
}

TEST_F(Zhuyintable, EveryLineIsKeyFillerReadings) {
  int lineNumber = 0;
  for (const std::string& text : Split(Content(), "\n")) {
    ++lineNumber;
    if (text.empty() && lineNumber > 1) continue;  // after the last LF
    ASSERT_GT(text.size(), 6u) << "line " << lineNumber;
    const Utf8Char key = DecodeChar(text, 0);
    EXPECT_EQ(key.length, 3u) << "line " << lineNumber;
    EXPECT_TRUE(key.code >= 0x800 && key.code <= 0xFFFF &&
                !(key.code >= 0xD800 && key.code <= 0xDFFF) &&
                !(key.code >= 0x3105 && key.code <= 0x312C))
        << "line " << lineNumber;
    EXPECT_EQ(text.substr(3, 3), "   ") << "line " << lineNumber;
    EXPECT_NE(text[6], ' ') << "line " << lineNumber;
    EXPECT_NE(text.back(), ' ') << "line " << lineNumber;
  }
  EXPECT_GE(Lines().size(), 20000u);
}

TEST_F(Zhuyintable, NoKeyTwice) {
  std::set<std::string> keys;
  for (const Line& line : Lines()) {
    EXPECT_TRUE(keys.insert(line.key).second) << line.key;
  }
}

TEST_F(Zhuyintable, ReadingsAreStandardSyllables) {
  const std::set<std::string> standard = StandardSyllables();
  ASSERT_GT(standard.size(), 400u);
  int outside = 0;
  for (const Line& line : Lines()) {
    std::set<std::string> seen;
    bool anyStandard = false;
    for (const std::string& reading : line.readings) {
      const std::string letters = LettersOf(reading);
      EXPECT_FALSE(letters.empty())
          << line.key << " has the reading \"" << reading << "\"";
      EXPECT_TRUE(seen.insert(reading).second) << line.key << " " << reading;
      anyStandard = anyStandard || standard.count(letters) > 0;
    }
    // A syllable outside standard Mandarin only stands where the character
    // has no other reading.
    if (!anyStandard) ++outside;
    EXPECT_TRUE(anyStandard || line.readings.size() == 1) << line.key;
    if (anyStandard) {
      for (const std::string& reading : line.readings) {
        EXPECT_TRUE(standard.count(LettersOf(reading)))
            << line.key << " " << reading;
      }
    }
  }
  EXPECT_LE(outside, 10);
}

TEST_F(Zhuyintable, ReadingsOfWellKnownCharacters) {
  for (const auto& row : ReadCaseTable("tables/readings.txt")) {
    const Line* line = Find(row[1]);
    ASSERT_NE(line, nullptr) << row[1];
    const auto& r = line->readings;
    if (row[2][0] == '+') {
      EXPECT_NE(std::find(r.begin(), r.end(), row[2].substr(1)), r.end())
          << row[1] << " " << row[2];
      continue;
    }
    const std::vector<std::string> first(row.begin() + 2, row.end());
    ASSERT_GE(r.size(), first.size()) << row[1];
    EXPECT_EQ(std::vector<std::string>(r.begin(), r.begin() + first.size()),
              first);
  }
}

// A neutral tone comes first only for the particles and suffixes of the
// list, or where a character has no other reading. A compatibility
// ideograph (U+F900 to U+FAFF) reads as its equivalent, tested below.
TEST_F(Zhuyintable, NeutralToneFirstOnlyForParticles) {
  const std::vector<std::string> words = WordsOf(kNeutralFirstPath);
  const std::set<std::string> particles(words.begin(), words.end());
  ASSERT_GT(particles.size(), 10u);
  for (const Line& line : Lines()) {
    const std::uint32_t code = DecodeChar(line.key, 0).code;
    if (!IsNeutral(line.readings[0]) || particles.count(line.key) ||
        (code >= 0xF900 && code <= 0xFAFF)) {
      continue;
    }
    for (const std::string& reading : line.readings) {
      EXPECT_TRUE(IsNeutral(reading)) << line.key << " " << reading;
    }
  }
}

// The line of a compatibility ideograph is that of the character it stands
// for; every such character that has a line lends it.
TEST_F(Zhuyintable, CompatibilityIdeographsReadAsTheirEquivalents) {
  const std::vector<std::string> words = WordsOf(kCompatibilityPath);
  ASSERT_EQ(words.size(), 2 * 460u);
  int lent = 0;
  for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
    const Line* compatibility = Find(words[i]);
    const Line* canonical = Find(words[i + 1]);
    if (canonical == nullptr) {
      EXPECT_EQ(compatibility, nullptr) << words[i];
      continue;
    }
    ++lent;
    ASSERT_NE(compatibility, nullptr) << words[i] << " " << words[i + 1];
    EXPECT_EQ(compatibility->readings, canonical->readings) << words[i];
  }
  EXPECT_GT(lent, 400);
}

// A Simplified character and its Traditional forms list the readings they
// share in the same order.
TEST_F(Zhuyintable, BothFormsOrderSharedReadingsAlike) {
  const std::vector<std::pair<std::string, std::string>> pairs = {
      {"长", "長"}, {"为", "為"}, {"为", "爲"}, {"着", "著"}, {"处", "處"},
      {"应", "應"}, {"识", "識"}, {"务", "務"}, {"干", "乾"}, {"干", "幹"},
      {"发", "發"}, {"发", "髮"}, {"只", "隻"}, {"系", "係"}, {"系", "繫"},
      {"钟", "鍾"}, {"乐", "樂"}, {"几", "幾"}, {"传", "傳"}, {"还", "還"},
  };
  for (const auto& [simplified, traditional] : pairs) {
    const Line* a = Find(simplified);
    const Line* b = Find(traditional);
    ASSERT_TRUE(a && b) << simplified << traditional;
    const auto shared = [](const Line* one, const Line* other) {
      std::vector<std::string> in;
      for (const std::string& r : one->readings) {
        if (std::ranges::count(other->readings, r)) in.push_back(r);
      }
      return in;
    };
    EXPECT_FALSE(shared(a, b).empty()) << simplified << traditional;
    EXPECT_EQ(shared(a, b), shared(b, a)) << simplified << traditional;
  }
}

// Every Chinese character of GB 2312 can be looked up directly.
TEST_F(Zhuyintable, CoversGb2312) {
  std::set<std::string> keys;
  for (const Line& line : Lines()) keys.insert(line.key);
  const auto characters = Gb2312Characters();
  for (const std::string& c : characters) EXPECT_TRUE(keys.count(c)) << c;
  EXPECT_EQ(characters.size(), 6763u);
}

// The phrase-reading files.

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
  std::vector<std::string> lines = Split(content, "\n");
  lines.pop_back();  // after the last LF
  for (const std::string& text : lines) {
    ++lineNumber;
    const std::string where = name + " line " + std::to_string(lineNumber);
    const std::vector<std::string> fields = Split(text, "\t");
    ASSERT_EQ(fields.size(), phrases ? 3u : 2u) << where;
    const std::string& word = fields[0];
    const std::vector<std::string> chars = CharactersOf(word);
    ASSERT_FALSE(chars.empty()) << where;
    if (!phrases) {
      EXPECT_EQ(chars.size(), 1u) << where;
    }
    EXPECT_LT(previous, word) << where << ": not sorted or twice";
    previous = word;
    const std::vector<std::string> readings = Split(fields[1], " ");
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
       Split(ReadFile(kDataDir + "taiwanreadings"), "\n")) {
    const std::vector<std::string> fields = Split(line, "\t");
    if (fields.size() == 2) taiwan[fields[0]] = fields[1];
  }
  const PhraseTable none;
  const auto rows = ReadCaseTable("tables/phrase_words.txt");
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 4u) << "line " << row[0];
    std::string got;
    if (row[1] == "taiwanreadings") {
      got = taiwan[row[2]];
    } else {
      PhraseTable table;
      ASSERT_TRUE(table.Open(kDataDir + row[1])) << "line " << row[0];
      for (const auto reading : ChooseReadings(row[2], table, none)) {
        got += (got.empty() ? "" : " ") +
               (reading.empty() ? "?" : std::string(reading));
      }
    }
    EXPECT_EQ(got, row[3]) << "line " << row[0];
  }
  EXPECT_GE(rows.size(), 50u);
}

}  // namespace
}  // namespace quill
