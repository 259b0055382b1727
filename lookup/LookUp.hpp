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

#include <string>
#include <string_view>
#include <vector>

#include "lookup/ReadingTable.hpp"
#include "lookup/SystemTable.hpp"
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

  // zhuyintable, STTABLE and Tokenizer beside the running executable.
  static DataFiles BesideExecutable();
};

// The five result texts: pinyinResult, zhuyin1Result, zhuyin2Result,
// wadeResult and tongyongResult, by system.
using Accumulators = PerSystem<std::string>;

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

 private:
  // What Tokenizer makes of the trimmed input.
  std::string TextToLookUp(const std::string& trimmed);

  DataFiles files_;
  ReadingTable table_;
  STConverter converter_;
  // Scratch of the character loop, kept so that a short look-up doesn't pay
  // for setting up a table of every code point.
  std::vector<int> slotOfBmp_;
};

// True for a character that takes the character path: code above 255 and
// neither a Zhuyin letter (U+3105 to U+312C) nor one of the four tone marks.
bool TakesCharacterPath(std::uint32_t code);

}  // namespace quill
