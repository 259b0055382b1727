#include "windows/TextConstants.hpp"

#include <utility>

namespace quill {

namespace {

std::map<std::string, std::string>& Translations() {
  static std::map<std::string, std::string> translations;
  return translations;
}

}  // namespace

void SetTranslations(std::map<std::string, std::string> translations) {
  Translations() = std::move(translations);
}

std::string LocalizedString(const std::string& key, const std::string& def) {
  const auto& translations = Translations();
  const auto it = translations.find(key);
  return it == translations.end() ? def : it->second;
}

namespace App {

std::string kAppName() { return LocalizedString("App.kAppName", "Quillmere"); }
std::string kHanyuPinyinText() {
  return LocalizedString("App.kHanyuPinyinText", "Hanyu Pinyin");
}
std::string kZhuyin1Text() {
  return LocalizedString("App.kZhuyin1Text", "Zhuyin 1 (Bopomofo)");
}
std::string kZhuyin2Text() {
  return LocalizedString("App.kZhuyin2Text", "Zhuyin 2");
}
std::string kWadeGilesText() {
  return LocalizedString("App.kWadeGilesText", "Wade-Giles");
}
std::string kTongyongPinyinText() {
  return LocalizedString("App.kTongyongPinyinText", "Tongyong Pinyin");
}
std::string kQuillmerePreferencesText() {
  return LocalizedString("App.kQuillmerePreferencesText",
                         "Quillmere Preferences");
}
std::string kUseNumbersText() {
  return LocalizedString("App.kUseNumbersText",
                         "Use numbers to represent tones");
}
std::string kPinyinSystemText() {
  return LocalizedString("App.kPinyinSystemText", "Pinyin System");
}
std::string kOnText() { return LocalizedString("App.kOnText", "On"); }
std::string kOKText() { return LocalizedString("App.kOKText", "OK"); }
std::string kCancelText() {
  return LocalizedString("App.kCancelText", "Cancel");
}
std::string kAboutQuillmereText() {
  return LocalizedString("App.kAboutQuillmereText", "About Quillmere");
}
std::string kQuillmereHelpText() {
  return LocalizedString("App.kQuillmereHelpText", "Quillmere Help");
}
std::string kHelpQuillmereWebsite() {
  return LocalizedString("App.kHelpQuillmereWebsite", "Quillmere Website");
}
std::string kHelpContent() {
  return LocalizedString(
      "App.kHelpContent",
      "Quillmere transliterates Chinese characters to romanized and bopomofo "
      "forms. Five pinyin systems are currently supported:\r"
      "1. Hanyu Pinyin\r"
      "2. Zhuyin 1 (MPS I, Bopomofo)\r"
      "3. Zhuyin 2 (MPS II)\r"
      "4. Wade-Giles\r"
      "5. Tongyong Pinyin\r"
      "\r"
      "Just input one or more Chinese characters and press Return to get their "
      "pinyin forms. Quillmere accepts Traditional and Simplified characters. "
      "To enter a new line, press Shift + Return.\r"
      "\r"
      "In the Preferences window you can choose which pinyin systems you'd "
      "like to use. If you prefer tones to be indicated by numbers rather than "
      "by diacritical marks, select the \"Use numbers to represent tones\" "
      "checkbox. You can also change the settings for multiple readings and "
      "word segmentaion. If you choose the \"Press Return to add a new line\" "
      "radio button, you can still use the Enter key to start looking up.");
}
std::string kFileMenuText() {
  return LocalizedString("App.kFileMenuText", "&File");
}
std::string kFileCloseWindow() {
  return LocalizedString("App.kFileCloseWindow", "Close &Window");
}
std::string kEditMenuText() {
  return LocalizedString("App.kEditMenuText", "&Edit");
}
std::string kEditUndo() { return LocalizedString("App.kEditUndo", "&Undo"); }
std::string kEditCut() { return LocalizedString("App.kEditCut", "Cu&t"); }
std::string kEditCopy() { return LocalizedString("App.kEditCopy", "&Copy"); }
std::string kEditPaste() { return LocalizedString("App.kEditPaste", "&Paste"); }
std::string kEditClear() {
  return LocalizedString("App.kEditClear", "&Delete");
}
std::string kEditSelectAll() {
  return LocalizedString("App.kEditSelectAll", "Select &All");
}
std::string kPreferencesMenuitemText() {
  return LocalizedString("App.kPreferencesMenuitemText", "Preferences...");
}
std::string kWindowMenuText() {
  return LocalizedString("App.kWindowMenuText", "&Window");
}
std::string kWindowMinimize() {
  return LocalizedString("App.kWindowMinimize", "&Minimize");
}
std::string kWindowZoom() { return LocalizedString("App.kWindowZoom", "Zoom"); }
std::string kWindowBringAllToFront() {
  return LocalizedString("App.kWindowBringAllToFront", "Bring All to Front");
}
std::string kPleaseSelectOnePinyinText() {
  return LocalizedString("App.kPleaseSelectOnePinyinText",
                         "Please select at least one pinyin system.");
}
std::string kIndicateTonesText() {
  return LocalizedString("App.kIndicateTonesText", "Indicate tones.");
}
std::string kShowMultipleReadingsText() {
  return LocalizedString("App.kShowMultipleReadingsText",
                         "Show multiple readings");
}
std::string kShowMultipleReadingsNoteText() {
  return LocalizedString(
      "App.kShowMultipleReadingsNoteText",
      "Uncheck this to show only one pronunciation for each character, but "
      "note that the results may be inaccurate.");
}
std::string kSegmentIntoWords() {
  return LocalizedString("App.kSegmentIntoWords",
                         "Segment converted texts into words");
}
std::string kLeopardIsRequired() {
  return LocalizedString("App.kLeopardIsRequired",
                         "Mac OS X 10.5 or later is required.");
}
std::string kPressReturnToText() {
  return LocalizedString("App.kPressReturnToText", "Press Return to:");
}
std::string kStartLookingUp() {
  return LocalizedString("App.kStartLookingUp", "start looking up");
}
std::string kAddANewLine() {
  return LocalizedString("App.kAddANewLine", "add a new line");
}
std::string kChooseReadingsFromContext() {
  return LocalizedString("App.kChooseReadingsFromContext",
                         "Choose readings from context");
}
std::string kReadingsText() {
  return LocalizedString("App.kReadingsText", "Readings:");
}
std::string kMainlandStandard() {
  return LocalizedString("App.kMainlandStandard", "Mainland standard");
}
std::string kTaiwanStandard() {
  return LocalizedString("App.kTaiwanStandard", "Taiwan standard");
}
std::string kPhraseFileProblems() {
  return LocalizedString("App.kPhraseFileProblems",
                         "These lines of your phrase file were passed over:");
}
BlockHeaders SystemNames() {
  return {kHanyuPinyinText(), kZhuyin1Text(), kZhuyin2Text(), kWadeGilesText(),
          kTongyongPinyinText()};
}
}  // namespace App

namespace MainWindowText {
std::string kInputChineseCharactersText() {
  return LocalizedString("MainWindow.kInputChineseCharactersText",
                         "Input one or more Chinese characters:");
}
}  // namespace MainWindowText

}  // namespace quill
