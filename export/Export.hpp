// What an export writes: a plain-text copy of the window, or an XHTML page in
// which every Chinese character carries its reading in a ruby element.
//
// The page does not reuse the look-up's result. It walks the input again and
// asks the reading table and the conversions itself, once per system that is
// on, so that each block of the page has the whole text with one system's
// readings above it:
//
//   LookUpEngine engine(DataFiles::BesideExecutable());
//   LookUpSettings settings;
//   settings.PinyinSystemsPrefValue = "01000";  // Zhuyin 1 alone
//   ExportPage page = BuildPhoneticPage("a中", settings, engine);
//   // page.text holds
//   //   "<p><ruby>a</ruby><ruby>中<rt>ㄓㄨㄥ</rt></ruby></p></ruby><br />\n"
//   // after the head, then the four other seams.
#pragma once

#include <string>
#include <string_view>

#include "lookup/LookUp.hpp"

namespace quill {

// The plain-text export: the input field's text trimmed, two line ends, and
// the result field's text as it stands (its lines still ended by CR).
std::string BuildPlainText(std::string_view textFieldText,
                           std::string_view resultFieldText);

// The page up to and including the body tag, seven lines.
std::string DocumentHead();

struct ExportPage {
  enum class Status {
    kNothing,       // no text to export: nothing is written
    kTableMissing,  // the data file is missing: the caller shows the message
    kDone,          // `text` is the whole page
  };
  Status status = Status::kNothing;
  std::string text;
};

// The phonetic-guide page for `exportText`, the trimmed input of the last
// look-up. Reads the systems and the three tone settings from `settings`
// (its mode and segmentation don't matter here) and loads the table through
// `engine` if it isn't loaded yet. Nothing of the input is escaped.
ExportPage BuildPhoneticPage(std::string_view exportText,
                             const LookUpSettings& settings,
                             LookUpEngine& engine);

}  // namespace quill
