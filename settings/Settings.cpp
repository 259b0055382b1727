#include "settings/Settings.hpp"

#include <algorithm>
#include <string>

#include "platform/Platform.hpp"
#include "settings/Preferences.hpp"
#include "text/TextOps.hpp"

namespace quill {

namespace {

// The store in the user's preferences folder, found anew at each call.
std::string Read(const char* key) {
  return Preferences(PreferencesFolder()).ReadPreferences(key);
}

void Write(const char* key, const std::string& value) {
  Preferences(PreferencesFolder()).WritePreferences(key, value);
}

const char* Switch(bool on) { return on ? "1" : "0"; }

int ReadNumber(const char* key) {
  return static_cast<int>(std::clamp(Val(Read(key)), -1e6, 1e6));
}

void WriteNumber(const char* key, int value) { Write(key, Str(value)); }

}  // namespace

std::optional<SystemSet> Settings::PinyinSystems() {
  const std::string text = Read("PinyinSystems");
  if (text.empty()) return std::nullopt;
  return SystemSet(text);
}
void Settings::SetPinyinSystems(const SystemSet& systems) {
  Write("PinyinSystems", systems.PrefValue());
}

bool Settings::UseToneNumbers() { return Read("UseToneNumbers") == "1"; }
void Settings::SetUseToneNumbers(bool on) {
  Write("UseToneNumbers", Switch(on));
}

bool Settings::IndicateTones() { return Read("IndicateTones") != "0"; }
void Settings::SetIndicateTones(bool on) { Write("IndicateTones", Switch(on)); }

bool Settings::ShowMultipleReadings() {
  return Read("ShowMultipleReadings") != "0";
}
void Settings::SetShowMultipleReadings(bool on) {
  Write("ShowMultipleReadings", Switch(on));
}

bool Settings::ShowSegmentation() { return Read("ShowSegmentation") == "1"; }
void Settings::SetShowSegmentation(bool on) {
  Write("ShowSegmentation", Switch(on));
}

bool Settings::ContextReadings() { return Read("ContextReadings") == "1"; }
void Settings::SetContextReadings(bool on) {
  Write("ContextReadings", Switch(on));
}

ReadingStandard Settings::ReadingStandard() {
  return Read("ReadingStandard") == "1" ? ReadingStandard::kTaiwan
                                        : ReadingStandard::kMainland;
}
void Settings::SetReadingStandard(quill::ReadingStandard standard) {
  Write("ReadingStandard", Switch(standard == ReadingStandard::kTaiwan));
}

ReturnKey Settings::PressReturnTo() {
  return Read("PressReturnTo") == "1" ? ReturnKey::kAddsNewLine
                                      : ReturnKey::kStartsLookUp;
}
void Settings::SetPressReturnTo(ReturnKey key) {
  Write("PressReturnTo", Switch(key == ReturnKey::kAddsNewLine));
}

void Settings::SetDefaultMode(Mode mode) {
  Write("DefaultMode", Switch(mode == Mode::kConverter));
}

int Settings::MainWindowWidth() { return ReadNumber("MainWindowWidth"); }
void Settings::SetMainWindowWidth(int value) {
  WriteNumber("MainWindowWidth", value);
}
int Settings::MainWindowHeight() { return ReadNumber("MainWindowHeight"); }
void Settings::SetMainWindowHeight(int value) {
  WriteNumber("MainWindowHeight", value);
}
int Settings::MainWindowLeft() { return ReadNumber("MainWindowLeft"); }
void Settings::SetMainWindowLeft(int value) {
  WriteNumber("MainWindowLeft", value);
}
int Settings::MainWindowTop() { return ReadNumber("MainWindowTop"); }
void Settings::SetMainWindowTop(int value) {
  WriteNumber("MainWindowTop", value);
}
int Settings::MainWindowWidgetHeight() {
  return ReadNumber("MainWindowWidgetHeight");
}
void Settings::SetMainWindowWidgetHeight(int value) {
  WriteNumber("MainWindowWidgetHeight", value);
}

}  // namespace quill
