// The look-up: input text in, the text of the result field out.
//
// Every character is sorted into one of four classes (line end, blank,
// Chinese character, verbatim) and five result texts grow side by side, one
// per phonetic system; at the end each selected system becomes a block with
// a header and a rule of nineteen hyphens. Lines of the layout end in CR.
//
//   LookUpEngine engine(DataFiles::BesideExecutable());
//   LookUpSettings settings;               // converter mode, all five systems
//   auto result = engine.LookUp("中文", settings);
//   // result.text == "Hanyu Pinyin\r-------------------\rzhōng wén \r\r\r..."
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lookup/ReadingTable.hpp"
#include "lookup/SystemTable.hpp"
#include "readings/ContextReadings.hpp"
#include "readings/PhraseTable.hpp"
#include "readings/UserPhrases.hpp"
#include "romanization/Romanization.hpp"
#include "script/STConvert.hpp"
#include "settings/Settings.hpp"
#include "settings/Systems.hpp"

namespace quill {

// The settings a look-up runs with, as the window holds them.
struct LookUpSettings {
  Mode mode = Mode::kConverter;
  SystemSet PinyinSystemsPrefValue;  // all five
  ToneSettings tones;
  // ShowSegmentation: in converter mode the text goes through Tokenizer
  // first, and the blanks between words are those it puts.
  bool segmentation = false;
  // The headers of the result blocks and of the page's blocks; the window
  // brings its translated ones.
  BlockHeaders headers = DefaultHeaders();
  // ContextReadings: each character of a word of the text reads as in that
  // word (the user's phrases first, then the shipped ones).
  bool contextReadings = false;
  // ReadingStandard: with Taiwan's, a character's Taiwan reading comes first
  // and the words read by Taiwan's phrase table.
  ReadingStandard standard = ReadingStandard::kMainland;
};

// What the window and the CLI say when zhuyintable can't be read.
inline constexpr const char* kTableMissingMessage =
    "The data file is missing. Please reinstall the application.";

// Where the files the look-up needs are. An empty temporaryFolder means the
// user's own, asked of the platform at each segmentation.
struct DataFiles {
  std::string zhuyintable;
  std::string sttable;
  std::string tokenizer;
  std::string temporaryFolder;
  std::string phrasereadings;    // words by the mainland standard
  std::string phrasereadingsTw;  // words by Taiwan's standard
  std::string taiwanreadings;    // each character's Taiwan reading
  std::string userPhrases;       // the user's own words; may be missing

  // zhuyintable, STTABLE, Tokenizer and the reading files beside the running
  // executable; the user's phrase file beside the preferences file.
  static DataFiles BesideExecutable();
};

// The name of the user's phrase file in the preferences folder.
inline constexpr const char* kUserPhrasesFileName = "Quillmere Phrases";

// The five result texts: pinyinResult, zhuyin1Result, zhuyin2Result,
// wadeResult and tongyongResult, by system.
using Accumulators = PerSystem<std::string>;

class LookUpEngine;

// The readings chosen in context for the characters above U+00FF of a text,
// asked for in order as a walk meets them.
class ChosenReadings {
 public:
  ChosenReadings() = default;
  // False when there are none, or when the character `code` reads by
  // Fixed() wherever it stands.
  bool Varies(std::uint32_t code) const {
    return chooser_ != nullptr && !fixed_.Has(code);
  }
  // The reading of a character that does not vary; empty when there are no
  // chosen readings.
  std::string_view Fixed(std::uint32_t code) const {
    return chooser_ ? chooser_->Fixed(code) : std::string_view();
  }
  // The reading of the character `code`, one that Varies, that starts at
  // byte `pos` of the text walked; empty where none was chosen. Asked for
  // each such character in turn.
  std::string_view At(std::size_t pos, std::uint32_t code) {
    return sameText_ ? chooser_->At(pos, code) : Next();
  }
  // The reading of any character, as the two above give it.
  std::string_view Of(std::size_t pos, std::uint32_t code) {
    return Varies(code) ? At(pos, code) : Fixed(code);
  }

 private:
  friend class LookUpEngine;

  // `text`, on which the readings are chosen, holds the same characters
  // above U+00FF as `walked`, the text walked, and both outlive this.
  ChosenReadings(const PhraseTable& table, const PhraseTable& user,
                 std::string_view text, std::string_view walked)
      : chooser_(std::make_unique<ReadingChooser>(text, table, user)),
        fixed_(chooser_->FixedSet()),
        text_(text),
        sameText_(text.data() == walked.data() &&
                  text.size() == walked.size()) {}

  // The reading of the next character of `text_` that Varies, when the
  // walked text is another.
  std::string_view Next();

  std::unique_ptr<ReadingChooser> chooser_;
  // What Varies asks, at hand: it is asked for every character.
  PhraseTable::FixedSet fixed_;
  std::string_view text_;
  bool sameText_ = true;
  std::size_t pos_ = 0;  // in text_, for Next()
};

class LookUpEngine {
 public:
  explicit LookUpEngine(DataFiles files);

  enum class Outcome {
    kNothing,       // no input: the result field is left as it is
    kTableMissing,  // the data file is missing: the caller shows the message
    kShown,         // `text` is the new text of the result field (maybe empty)
  };
  struct Result {
    Outcome outcome = Outcome::kNothing;
    std::string text;
  };

  // Looks up `fieldText` (the input field's text as it stands).
  Result LookUp(std::string_view fieldText, const LookUpSettings& settings);

  // Loads zhuyintable unless it is loaded; true when DictContent holds text.
  bool LoadTable();

  // 1-based position of the character's line in DictContent, searching
  // again with its Traditional form after a miss; 0 for no reading.
  long Search(std::string_view character);

  const ReadingTable& table() const { return table_; }
  const DataFiles& files() const { return files_; }

  // With context readings on, the syllables chosen on `text` for the
  // characters above U+00FF of `walked`, the same ones, which both texts
  // must outlive; nothing when they are off. Reads the user's phrase file
  // again first if it changed.
  ChosenReadings ReadingsInContext(std::string_view text,
                                   std::string_view walked,
                                   const LookUpSettings& settings);

  // The reading string of a character: its line of the table (empty for
  // none), with its Taiwan reading first under Taiwan's standard, and then
  // `chosen` first when not empty.
  std::string ReadingEntryOf(std::string_view character,
                             std::string_view chosen,
                             const LookUpSettings& settings);

  // True when the character's reading string is not simply its line of the
  // table under these settings (its Taiwan reading differs).
  bool HasOwnReading(std::string_view character,
                     const LookUpSettings& settings);

  // The user's phrase file as last read, with its problems.
  UserPhrases& userPhrases() { return userPhrases_; }

 private:
  friend class ChosenReadings;

  // Reads the user's phrase file again if it changed.
  void RefreshUserPhrases();
  // What Tokenizer makes of the trimmed input.
  std::string TextToLookUp(const std::string& trimmed);

  DataFiles files_;
  ReadingTable table_;
  STConverter converter_;
  // Scratch of the character loop, kept so that a short look-up doesn't pay
  // for setting up a table of every code point.
  std::vector<int> slotOfBmp_;
  // The phrase tables of the two standards, opened at first need.
  const PhraseTable& Phrases(ReadingStandard standard);
  PhraseTable mainlandPhrases_;
  PhraseTable taiwanPhrases_;
  bool mainlandOpened_ = false;
  bool taiwanOpened_ = false;
  // Each character's Taiwan reading, read at first need.
  const std::string* TaiwanReading(std::string_view character);
  std::unordered_map<std::string, std::string> taiwanReadings_;
  bool taiwanReadingsLoaded_ = false;
  UserPhrases userPhrases_;
};

// True for a character that takes the character path: code above 255 and
// neither a Zhuyin letter (U+3105 to U+312C) nor one of the four tone marks.
bool TakesCharacterPath(std::uint32_t code);

}  // namespace quill
