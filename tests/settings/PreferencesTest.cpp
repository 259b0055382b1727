#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "settings/Preferences.hpp"
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

class PreferencesTest : public TempFolderTest {
 protected:
  std::string Path() const {
    return TempFolderTest::Path(Preferences::kFileName);
  }
  Preferences Store() const { return Preferences(folder().string()); }

  void WriteFile(const std::string& text) const {
    quill::WriteFile(Path(), text);
  }
  std::string FileText() const { return ReadFile(Path()); }
};

TEST_F(PreferencesTest, NoFolderReadsEmptyAndWritesNothing) {
  Preferences none("");
  EXPECT_EQ(none.ReadPreferences("PinyinSystems"), "");
  none.WritePreferences("PinyinSystems", "11111");
  EXPECT_EQ(none.FilePath(), "");
}

// Rows of tests/data/settings/preferences.txt: the file before ("<none>"
// for no file), calls joined by "|" (KEY reads, KEY=VALUE writes), what
// each gives ("ok" for a write, "error: PROBLEM" for a PreferencesError
// naming the file), then the file after as its children, "<same>" when it
// was left as it was, or "<none>".
TEST_F(PreferencesTest, CallsOfTheTable) {
  const auto rows = ReadCaseTable("settings/preferences.txt");
  ASSERT_GT(rows.size(), 10u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 5u) << "line " << row[0];
    SCOPED_TRACE("line " + row[0]);
    fs::remove_all(Path());
    if (row[1] != "<none>") WriteFile(row[1]);
    std::string results;
    std::istringstream calls(row[2]);
    for (std::string call; std::getline(calls, call, '|'); results += "|") {
      const std::size_t equals = call.find('=');
      try {
        if (equals == std::string::npos) {
          results += Store().ReadPreferences(call);
        } else {
          Store().WritePreferences(call.substr(0, equals),
                                   call.substr(equals + 1));
          results += "ok";
        }
      } catch (const PreferencesError& error) {
        EXPECT_EQ(error.path(), Path());
        results += "error: " + error.problem();
      }
    }
    results.pop_back();
    EXPECT_EQ(results, row[3]);
    std::string after = "<none>";
    if (row[1] != "<none>" && FileText() == row[1]) {
      after = "<same>";
    } else if (fs::exists(Path())) {
      pugi::xml_document document;
      EXPECT_TRUE(document.load_file(Path().c_str()));
      after = std::string(document.document_element().name()) + ":";
      for (const auto child : document.document_element().children()) {
        after += " " + std::string(child.name()) + "=" + child.child_value();
      }
    }
    EXPECT_EQ(after, row[4]);
  }
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

TEST_F(PreferencesTest, DeeplyNestedWellFormedFileIsReadAndWritten) {
  std::string text = "<root><Key>7</Key><Deep>";
  for (int i = 0; i < 100000; ++i) text += "<a>";
  for (int i = 0; i < 100000; ++i) text += "</a>";
  text += "</Deep></root>";
  WriteFile(text);
  EXPECT_EQ(Store().ReadPreferences("Key"), "7");
  Store().WritePreferences("Key", "8");
  EXPECT_EQ(Store().ReadPreferences("Key"), "8");
  // Never closed: not well-formed, and left as it was.
  std::string open = "<root><Key>";
  for (int i = 0; i < 200000; ++i) open += "<a>";
  WriteFile(open);
  EXPECT_THROW(Store().WritePreferences("Key", "1"), PreferencesError);
  EXPECT_EQ(FileText(), open);
}

TEST_F(PreferencesTest, AHugeFileIsRefusedUnread) {
  // One byte over 16 MiB, well-formed.
  const std::string head = "<root>", tail = "<Key>1</Key></root>";
  const std::size_t size = (16 << 20) + 1;
  WriteFile(head + std::string(size - head.size() - tail.size(), ' ') + tail);
  EXPECT_THROW(Store().ReadPreferences("Key"), PreferencesError);
}

}  // namespace
}  // namespace quill
