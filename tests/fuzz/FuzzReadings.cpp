// The user phrase file parser and the phrase table on arbitrary bytes. The
// parser gives the same twice, and each entry it gives is a line the table
// takes: one syllable per character, each syllable as it reads itself back.
// Every word the table finds is the text it was found at, with a syllable per
// character, and the choice gives one reading per character above U+00FF.
#include <algorithm>

#include "readings/ContextReadings.hpp"
#include "readings/PhraseTable.hpp"
#include "readings/UserPhrases.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "text/TextOps.hpp"

using namespace quill;

namespace {

std::size_t CountChars(std::string_view s) {
  std::size_t count = 0;
  for (std::size_t pos = 0; pos < s.size(); ++count) {
    pos += DecodeChar(s, pos).length;
  }
  return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  fuzz::Input in(data, size);
  const std::string text = in.Part();
  const std::string tableContent = in.Part();
  const std::string userContent = in.Rest();

  const ParsedUserPhrases parsed = ParseUserPhrases(userContent);
  const ParsedUserPhrases again = ParseUserPhrases(userContent);
  QUILL_FUZZ_CHECK(parsed.entries.size() == again.entries.size());
  QUILL_FUZZ_CHECK(parsed.problems.size() == again.problems.size());
  const auto lines = static_cast<std::size_t>(
      std::count(userContent.begin(), userContent.end(), '\n') + 1);
  for (const auto& p : parsed.problems) {
    QUILL_FUZZ_CHECK(p.line >= 1 && p.line <= lines && !p.what.empty());
  }
  std::string userLines;
  for (std::size_t i = 0; i < parsed.entries.size(); ++i) {
    const auto& e = parsed.entries[i];
    QUILL_FUZZ_CHECK(e.word == again.entries[i].word &&
                     e.readings == again.entries[i].readings);
    QUILL_FUZZ_CHECK(static_cast<std::size_t>(CountFields(e.readings, " ")) ==
                     CountChars(e.word));
    for (long k = 1; k <= CountFields(e.readings, " "); ++k) {
      const std::string syllable = NthField(e.readings, " ", k);
      QUILL_FUZZ_CHECK(ReadingToZhuyin(syllable) == syllable);
    }
    userLines += e.word + "\t" + e.readings + "\t100\n";
  }
  PhraseTable user;
  user.Assign(userLines);
  QUILL_FUZZ_CHECK(user.size() + user.skippedLines() == parsed.entries.size());

  PhraseTable table;
  table.Assign(tableContent);
  std::vector<PhraseTable::Match> words;
  std::size_t above = 0;
  for (std::size_t pos = 0; pos < text.size();) {
    table.WordsAt(text, pos, words);
    for (const auto& m : words) {
      QUILL_FUZZ_CHECK(table.Word(m.entry) == text.substr(pos, m.bytes));
      QUILL_FUZZ_CHECK(static_cast<std::size_t>(CountFields(
                           std::string(table.Readings(m.entry)), " ")) ==
                       m.chars);
      QUILL_FUZZ_CHECK(table.Cost(m.entry) == m.cost);
      QUILL_FUZZ_CHECK(table.Readings(m.entry) == m.readings);
    }
    const Utf8Char c = DecodeChar(text, pos);
    above += c.code > 0xFF;
    pos += c.length;
  }
  const auto readings = ChooseReadings(text, table, user);
  QUILL_FUZZ_CHECK(readings.size() == above);
  for (const auto r : readings) {
    QUILL_FUZZ_CHECK(r.find_first_of(" \t\n") == std::string_view::npos);
  }
  return 0;
}
