#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "settings/Preferences.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

class PreferencesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() /
              ("quillmere-prefs-" + std::to_string(getpid()) + "-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::remove_all(folder_);
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string Path() const {
    return (folder_ / Preferences::kFileName).string();
  }
  Preferences Store() const { return Preferences(folder_.string()); }

  void WriteFile(const std::string& text) const {
    std::ofstream(Path(), std::ios::binary) << text;
  }
  std::string FileText() const {
    std::ifstream in(Path(), std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
  }
  // The children of the document element as name=value pairs, in order.
  std::vector<std::string> Children() const {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_file(Path().c_str()));
    std::vector<std::string> children;
    for (const auto child : document.document_element().children()) {
      children.push_back(std::string(child.name()) + "=" + child.child_value());
    }
    return children;
  }

  fs::path folder_;
};

using Pairs = std::vector<std::string>;

TEST_F(PreferencesTest, NoFileReadsEmptyAndLeavesNoFile) {
  EXPECT_EQ(Store().ReadPreferences("PinyinSystems"), "");
  EXPECT_FALSE(fs::exists(Path()));
}

TEST_F(PreferencesTest, NoFolderReadsEmptyAndWritesNothing) {
  Preferences none("");
  EXPECT_EQ(none.ReadPreferences("PinyinSystems"), "");
  none.WritePreferences("PinyinSystems", "11111");
  EXPECT_EQ(none.FilePath(), "");
}

TEST_F(PreferencesTest, FirstWriteAlsoStoresTheValueAsMainFontSize) {
  Store().WritePreferences("PinyinSystems", "11111");
  EXPECT_EQ(Children(), (Pairs{"MainFontSize=11111", "PinyinSystems=11111"}));
  pugi::xml_document document;
  document.load_file(Path().c_str());
  EXPECT_STREQ(document.document_element().name(), "root");
  EXPECT_EQ(Store().ReadPreferences("PinyinSystems"), "11111");
}

TEST_F(PreferencesTest, FirstWriteOfMainFontSizeMakesOneChild) {
  Store().WritePreferences("MainFontSize", "12");
  EXPECT_EQ(Children(), Pairs{"MainFontSize=12"});
}

TEST_F(PreferencesTest, NewKeysAreAppendedAndOldOnesReplacedInPlace) {
  Preferences store = Store();
  store.WritePreferences("PinyinSystems", "11111");
  store.WritePreferences("MainWindowWidth", "640");
  store.WritePreferences("PinyinSystems", "10000");
  EXPECT_EQ(Children(), (Pairs{"MainFontSize=11111", "PinyinSystems=10000",
                               "MainWindowWidth=640"}));
  EXPECT_EQ(store.ReadPreferences("MainWindowWidth"), "640");
  EXPECT_EQ(store.ReadPreferences("MainWindowHeight"), "");
}

TEST_F(PreferencesTest, KeysIgnoreCaseAndKeepTheStoredSpelling) {
  WriteFile("<root><PinyinSystems>10101</PinyinSystems></root>");
  EXPECT_EQ(Store().ReadPreferences("PINYINSYSTEMS"), "10101");
  Store().WritePreferences("pinyinsystems", "01010");
  EXPECT_EQ(Children(), Pairs{"PinyinSystems=01010"});
}

TEST_F(PreferencesTest, DuplicatesReadTheLastAndAllAreWritten) {
  WriteFile("<root><Key>first</Key><Other>x</Other><Key>second</Key></root>");
  EXPECT_EQ(Store().ReadPreferences("Key"), "second");
  Store().WritePreferences("Key", "both");
  EXPECT_EQ(Children(), (Pairs{"Key=both", "Other=x", "Key=both"}));
}

TEST_F(PreferencesTest, AnyDocumentElementAndDeclarationAreAccepted) {
  WriteFile(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- kept -->\n"
      "<settings>\n  <PressReturnTo>1</PressReturnTo>\n</settings>\n");
  EXPECT_EQ(Store().ReadPreferences("PressReturnTo"), "1");
  Store().WritePreferences("ShowSegmentation", "1");
  EXPECT_EQ(Children(), (Pairs{"PressReturnTo=1", "ShowSegmentation=1"}));
}

TEST_F(PreferencesTest, ValuesKeepMarkupCharactersAndChinese) {
  Store().WritePreferences("Key", "<a & \"b\"> 中文");
  EXPECT_EQ(Store().ReadPreferences("Key"), "<a & \"b\"> 中文");
}

TEST_F(PreferencesTest, AnUnwritableFileIsLeftAloneInSilence) {
  WriteFile("<root><Key>old</Key></root>");
  const std::string before = FileText();
  if (geteuid() != 0) {
    fs::permissions(Path(), fs::perms::owner_read);
    EXPECT_NO_THROW(Store().WritePreferences("Key", "new"));
    fs::permissions(Path(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(FileText(), before);
  }
  // Root opens any file for writing, so a folder in the file's place stands
  // for a file that can't be opened so: the write must leave it be.
  fs::remove(Path());
  fs::create_directory(Path());
  EXPECT_NO_THROW(Store().WritePreferences("Key", "new"));
  EXPECT_TRUE(fs::is_directory(Path()));
  EXPECT_TRUE(fs::is_empty(Path()));
}

// Files that the store can't work with end in PreferencesError, which names
// the file; the file itself stays as it was.
struct BadFile {
  const char* name;
  std::string text;
  bool failsOnRead;
  const char* problem;  // a part of the message
};

// GoogleTest prints every parameter; without this it dumps the struct's
// bytes, padding and all, which valgrind reports as uninitialised reads.
void PrintTo(const BadFile& bad, std::ostream* os) { *os << bad.name; }

class PreferencesBadFileTest : public PreferencesTest,
                               public ::testing::WithParamInterface<BadFile> {};

TEST_P(PreferencesBadFileTest, FailsWithTheFileNamedAndLeavesItAsItWas) {
  const BadFile& bad = GetParam();
  WriteFile(bad.text);
  const auto expectFailure = [&](auto call) {
    try {
      call();
      ADD_FAILURE() << "no PreferencesError";
    } catch (const PreferencesError& error) {
      EXPECT_EQ(error.path(), Path());
      EXPECT_NE(std::string(error.what()).find(bad.problem), std::string::npos)
          << error.what();
    }
  };
  if (bad.failsOnRead) {
    expectFailure([&] { Store().ReadPreferences("Key"); });
  } else {
    EXPECT_EQ(Store().ReadPreferences("Key"), "");
  }
  expectFailure([&] { Store().WritePreferences("Key", "1"); });
  EXPECT_EQ(FileText(), bad.text);
}

std::string Binary() {
  std::string text;
  for (int i = 0; i < 4096; ++i) text += static_cast<char>((i * 7919) % 256);
  return text;
}

std::string DeeplyNested() {
  std::string text = "<root><Key>";
  for (int i = 0; i < 200000; ++i) text += "<a>";
  return text;  // never closed
}

INSTANTIATE_TEST_SUITE_P(
    Files, PreferencesBadFileTest,
    ::testing::Values(
        BadFile{"Malformed", "<root><Key>1</Key>", true, "not well-formed"},
        BadFile{"Empty", "", true, "not well-formed"},
        BadFile{"Binary", Binary(), true, "not well-formed"},
        BadFile{"DeeplyNested", DeeplyNested(), true, "not well-formed"},
        BadFile{"ElementWithoutText", "<root><Other>1</Other><Key/></root>",
                true, "<Key> holds no value"},
        BadFile{"DocumentElementWithoutChildren", "<root/>", false,
                "no children"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PreferencesTest, DeeplyNestedWellFormedFileIsReadAndWritten) {
  std::string text = "<root><Key>7</Key><Deep>";
  for (int i = 0; i < 100000; ++i) text += "<a>";
  for (int i = 0; i < 100000; ++i) text += "</a>";
  text += "</Deep></root>";
  WriteFile(text);
  EXPECT_EQ(Store().ReadPreferences("Key"), "7");
  Store().WritePreferences("Key", "8");
  EXPECT_EQ(Store().ReadPreferences("Key"), "8");
}

TEST_F(PreferencesTest, ExternalEntitiesAreNotExpanded) {
  WriteFile(
      "<!DOCTYPE root [<!ENTITY secret SYSTEM \"/etc/passwd\">]>"
      "<root><Key>&secret;</Key></root>");
  EXPECT_EQ(Store().ReadPreferences("Key").find("root:"), std::string::npos);
}

TEST_F(PreferencesTest, AHugeFileIsRefusedUnread) {
  {
    std::ofstream out(Path(), std::ios::binary);
    out << "<root>";
    const std::string filler(1 << 20, ' ');
    for (int i = 0; i < 17; ++i) out << filler;
    out << "<Key>1</Key></root>";
  }
  EXPECT_THROW(Store().ReadPreferences("Key"), PreferencesError);
}

TEST_F(PreferencesTest, AKeyThatCannotBeAnElementNameIsRefused) {
  EXPECT_THROW(Store().WritePreferences("two words", "1"), PreferencesError);
  EXPECT_FALSE(fs::exists(Path()));
}

}  // namespace
}  // namespace quill
