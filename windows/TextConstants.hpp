// Every user-visible label passes through one of these constants. Each reads
// its key in the translations the application carries, and gives its default
// text when there is none.
#pragma once

#include <map>
#include <string>

#include "lookup/SystemTable.hpp"

namespace quill {

// Installs the translations (key -> text) for the rest of the run.
void SetTranslations(std::map<std::string, std::string> translations);

// The text of a constant by key, such as "App.kAppName".
std::string LocalizedString(const std::string& key, const std::string& def);

namespace App {
std::string kAppName();
std::string kHanyuPinyinText();
std::string kZhuyin1Text();
std::string kZhuyin2Text();
std::string kWadeGilesText();
std::string kTongyongPinyinText();
std::string kQuillmerePreferencesText();
std::string kUseNumbersText();
std::string kPinyinSystemText();
std::string kOnText();
std::string kOKText();
std::string kCancelText();
std::string kAboutQuillmereText();
std::string kQuillmereHelpText();
std::string kHelpQuillmereWebsite();
std::string kHelpContent();
std::string kFileMenuText();
std::string kFileCloseWindow();
std::string kEditMenuText();
std::string kEditUndo();
std::string kEditCut();
std::string kEditCopy();
std::string kEditPaste();
std::string kEditClear();
std::string kEditSelectAll();
std::string kPreferencesMenuitemText();
std::string kWindowMenuText();
std::string kWindowMinimize();
std::string kWindowZoom();
std::string kWindowBringAllToFront();
std::string kPleaseSelectOnePinyinText();
std::string kIndicateTonesText();
std::string kShowMultipleReadingsText();
std::string kShowMultipleReadingsNoteText();
std::string kSegmentIntoWords();
std::string kLeopardIsRequired();
std::string kPressReturnToText();
std::string kStartLookingUp();
std::string kAddANewLine();
std::string kChooseReadingsFromContext();
std::string kReadingsText();
std::string kMainlandStandard();
std::string kTaiwanStandard();
std::string kPhraseFileProblems();

// The names of the five systems, in the order of the system table: the
// headers of the result blocks and the rows of the preferences list.
BlockHeaders SystemNames();
}  // namespace App

namespace MainWindowText {
std::string kInputChineseCharactersText();
}  // namespace MainWindowText

}  // namespace quill
