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

namespace quill {

// The settings a look-up runs with, as the window holds them.
struct LookUpSettings {
  int mode = 1;  // 1 converter mode, 0 dictionary mode
  std::string PinyinSystemsPrefValue = "11111";
  ToneSettings tones;
  std::string segmentationSetting;  // "1": through Tokenizer
  // The headers of the result blocks and of the page's blocks; the window
  // brings its translated ones.
  BlockHeaders headers = DefaultHeaders();
};

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

// The five result texts, in the order of PinyinSystems.
struct Accumulators {
  std::string pinyinResult;
  std::string zhuyin1Result;
  std::string zhuyin2Result;
  std::string wadeResult;
  std::string tongyongResult;
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

// The result field's text for five finished accumulators: the blocks of the
// selected systems, each with its header and rule, lines ended by CR. In
// dictionary mode `foundCharacters` and two CR come first.
std::string AssembleResult(const Accumulators& results, int mode,
                           const std::string& foundCharacters,
                           const std::string& PinyinSystemsPrefValue,
                           const BlockHeaders& headers = DefaultHeaders());

// True when the system at `position` (1 to 5) is on: its character in
// PinyinSystems is anything but "0", a missing one too.
bool SystemIsOn(const std::string& PinyinSystemsPrefValue, int position);

// True for a character that takes the character path: code above 255 and
// neither a Zhuyin letter (U+3105 to U+312C) nor one of the four tone marks.
bool TakesCharacterPath(std::uint32_t code);

}  // namespace quill
