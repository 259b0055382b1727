#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "settings/Preferences.hpp"
#include "settings/Settings.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

// The accessors read the store in $XDG_CONFIG_HOME, pointed at a folder of
// the test's own.
class SettingsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (const char* old = getenv("XDG_CONFIG_HOME")) saved_ = old;
    folder_ = fs::temp_directory_path() /
              ("quillmere-settings-" + std::to_string(getpid()));
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
  }
  void TearDown() override {
    if (saved_.empty()) {
      unsetenv("XDG_CONFIG_HOME");
    } else {
      setenv("XDG_CONFIG_HOME", saved_.c_str(), 1);
    }
    fs::remove_all(folder_);
  }
  void Store(const char* key, const char* value) {
    Preferences(folder_.string()).WritePreferences(key, value);
  }
  std::string Stored(const char* key) {
    return Preferences(folder_.string()).ReadPreferences(key);
  }

  fs::path folder_;
  std::string saved_;
};

// Stored text, or null for a missing key, and what the accessors make of it.
struct Case {
  const char* text;
  bool context;
  ReadingStandard standard;
};

TEST_F(SettingsTest, ContextAndStandardReadOnlyAStoredOne) {
  const Case cases[] = {
      {nullptr, false, ReadingStandard::kMainland},
      {"0", false, ReadingStandard::kMainland},
      {"1", true, ReadingStandard::kTaiwan},
      {"true", false, ReadingStandard::kMainland},
      {"2", false, ReadingStandard::kMainland},
  };
  for (const Case& c : cases) {
    fs::remove_all(folder_ / Preferences::kFileName);
    if (c.text) {
      Store("ContextReadings", c.text);
      Store("ReadingStandard", c.text);
    }
    SCOPED_TRACE(c.text ? c.text : "(missing)");
    EXPECT_EQ(Settings::ContextReadings(), c.context);
    EXPECT_EQ(Settings::ReadingStandard(), c.standard);
  }
}

TEST_F(SettingsTest, ContextAndStandardRoundTrip) {
  Settings::SetContextReadings(true);
  Settings::SetReadingStandard(ReadingStandard::kTaiwan);
  EXPECT_EQ(Stored("ContextReadings"), "1");
  EXPECT_EQ(Stored("ReadingStandard"), "1");
  EXPECT_TRUE(Settings::ContextReadings());
  EXPECT_EQ(Settings::ReadingStandard(), ReadingStandard::kTaiwan);
  Settings::SetContextReadings(false);
  Settings::SetReadingStandard(ReadingStandard::kMainland);
  EXPECT_EQ(Stored("ContextReadings"), "0");
  EXPECT_EQ(Stored("ReadingStandard"), "0");
  EXPECT_FALSE(Settings::ContextReadings());
  EXPECT_EQ(Settings::ReadingStandard(), ReadingStandard::kMainland);
}

}  // namespace
}  // namespace quill
