// One typed accessor per preference. Each reads the preferences file at the
// moment it is called and keeps nothing, so a value written by any window
// holds at once everywhere; each setter writes the file anew. A key's
// spelling, its default and the way its text is read live here alone.
//
//   if (!Settings::PinyinSystems()) Settings::SetPinyinSystems(SystemSet());
//   Settings::ShowMultipleReadings();  // false only for a stored "0"
//
// All throw PreferencesError on a file that can't be worked with.
#pragma once

#include <optional>

#include "settings/Systems.hpp"

namespace quill {

// Dictionary mode takes a few characters and lists them above their
// readings; converter mode takes running text.
enum class Mode { kDictionary, kConverter };

// What the Return key does in the converter's input field. The keypad's
// Enter always starts the look-up.
enum class ReturnKey { kStartsLookUp, kAddsNewLine };

// Whose standard decides a character's first reading and the readings of
// words: the mainland's or Taiwan's (the Ministry of Education's).
enum class ReadingStandard { kMainland, kTaiwan };

class Settings {
 public:
  // PinyinSystems: the systems shown. Nothing when no text is stored; start-up
  // then writes all five.
  static std::optional<SystemSet> PinyinSystems();
  static void SetPinyinSystems(const SystemSet& systems);

  // UseToneNumbers: tones as digits; on only for a stored "1".
  static bool UseToneNumbers();
  static void SetUseToneNumbers(bool on);

  // IndicateTones: off only for a stored "0".
  static bool IndicateTones();
  static void SetIndicateTones(bool on);

  // ShowMultipleReadings: off only for a stored "0".
  static bool ShowMultipleReadings();
  static void SetShowMultipleReadings(bool on);

  // ShowSegmentation: words through Tokenizer; on only for a stored "1".
  static bool ShowSegmentation();
  static void SetShowSegmentation(bool on);

  // ContextReadings: readings chosen by the words of the text; on only for a
  // stored "1".
  static bool ContextReadings();
  static void SetContextReadings(bool on);

  // ReadingStandard: Taiwan only for a stored "1".
  static quill::ReadingStandard ReadingStandard();
  static void SetReadingStandard(quill::ReadingStandard standard);

  // PressReturnTo: a stored "1" makes Return add a new line.
  static ReturnKey PressReturnTo();
  static void SetPressReturnTo(ReturnKey key);

  // DefaultMode: the mode chosen last. Kept for the record; nothing reads it.
  static void SetDefaultMode(Mode mode);

  // The main window's content geometry and the splitter's top. Numbers are
  // read as far as they go ("12px" is 12, "" and "x" are 0) and cut to
  // +-1000000, beyond any screen.
  static int MainWindowWidth();
  static void SetMainWindowWidth(int value);
  static int MainWindowHeight();
  static void SetMainWindowHeight(int value);
  static int MainWindowLeft();
  static void SetMainWindowLeft(int value);
  static int MainWindowTop();
  static void SetMainWindowTop(int value);
  static int MainWindowWidgetHeight();
  static void SetMainWindowWidgetHeight(int value);
};

}  // namespace quill
