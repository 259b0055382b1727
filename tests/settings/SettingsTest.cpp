#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "settings/Preferences.hpp"
#include "settings/Settings.hpp"
#include "tests/tokenizer/TempFolder.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

// The accessors read the store in $XDG_CONFIG_HOME, pointed at a folder of
// the test's own.
class SettingsTest : public TempFolderTest {
 protected:
  SettingsTest() {
    if (const char* old = getenv("XDG_CONFIG_HOME")) saved_ = old;
    setenv("XDG_CONFIG_HOME", folder().c_str(), 1);
  }
  ~SettingsTest() override {
    if (saved_.empty()) {
      unsetenv("XDG_CONFIG_HOME");
    } else {
      setenv("XDG_CONFIG_HOME", saved_.c_str(), 1);
    }
  }
  void Store(const char* key, const char* value) {
    Preferences(folder().string()).WritePreferences(key, value);
  }
  std::string Stored(const char* key) {
    return Preferences(folder().string()).ReadPreferences(key);
  }

  std::string saved_;
};

// What the getters make of each key stored with the same text.
std::string Getters() {
  const auto systems = Settings::PinyinSystems();
  return (systems ? systems->PrefValue() : "none") + " " +
         Str(Settings::UseToneNumbers()) + Str(Settings::IndicateTones()) +
         Str(Settings::ShowMultipleReadings()) +
         Str(Settings::ShowSegmentation()) + Str(Settings::ContextReadings()) +
         Str(Settings::ReadingStandard() == ReadingStandard::kTaiwan) +
         Str(Settings::PressReturnTo() == ReturnKey::kAddsNewLine) + " " +
         Str(Settings::MainWindowWidth()) + " " +
         Str(Settings::MainWindowHeight()) + " " +
         Str(Settings::MainWindowLeft()) + " " +
         Str(Settings::MainWindowTop()) + " " +
         Str(Settings::MainWindowWidgetHeight());
}

TEST_F(SettingsTest, GettersReadTheStoredText) {
  const char* const keys[] = {
      "PinyinSystems",         "UseToneNumbers",   "IndicateTones",
      "ShowMultipleReadings",  "ShowSegmentation", "ContextReadings",
      "ReadingStandard",       "PressReturnTo",    "MainWindowWidth",
      "MainWindowHeight",      "MainWindowLeft",   "MainWindowTop",
      "MainWindowWidgetHeight"};
  const std::pair<const char*, const char*> cases[] = {
      {nullptr, "none 0110000 0 0 0 0 0"},
      {"0", "01111 0000000 0 0 0 0 0"},
      {"1", "11111 1111111 1 1 1 1 1"},
      {"true", "11111 0110000 0 0 0 0 0"},
      {"2", "11111 0110000 2 2 2 2 2"},
      {"-12.7", "11111 0110000 -12 -12 -12 -12 -12"},
      {"1e9", "11111 0110000 1000000 1000000 1000000 1000000 1000000"},
      {"-2e7", "11111 0110000 -1000000 -1000000 -1000000 -1000000 -1000000"},
  };
  for (const auto& [text, expected] : cases) {
    fs::remove_all(folder() / Preferences::kFileName);
    for (const char* key : keys) {
      if (text) Store(key, text);
    }
    EXPECT_EQ(Getters(), expected) << (text ? text : "(missing)");
  }
}

TEST_F(SettingsTest, SettersStoreTheirKeys) {
  for (const bool on : {true, false}) {
    Settings::SetPinyinSystems(SystemSet(on ? "10101" : "01010"));
    Settings::SetUseToneNumbers(on);
    Settings::SetIndicateTones(on);
    Settings::SetShowMultipleReadings(on);
    Settings::SetShowSegmentation(on);
    Settings::SetContextReadings(on);
    Settings::SetReadingStandard(on ? ReadingStandard::kTaiwan
                                    : ReadingStandard::kMainland);
    Settings::SetPressReturnTo(on ? ReturnKey::kAddsNewLine
                                  : ReturnKey::kStartsLookUp);
    Settings::SetDefaultMode(on ? Mode::kConverter : Mode::kDictionary);
    Settings::SetMainWindowWidth(on ? 640 : -3);
    Settings::SetMainWindowHeight(on ? 480 : 0);
    Settings::SetMainWindowLeft(on ? 12 : 1);
    Settings::SetMainWindowTop(on ? 34 : 2);
    Settings::SetMainWindowWidgetHeight(on ? 56 : 3);
    EXPECT_EQ(Stored("DefaultMode"), on ? "1" : "0");
    EXPECT_EQ(Getters(), on ? "10101 1111111 640 480 12 34 56"
                            : "01010 0000000 -3 0 1 2 3");
  }
}

}  // namespace
}  // namespace quill
