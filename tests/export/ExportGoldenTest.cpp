// Whole pages compared with the files in tests/data/export.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "export/Export.hpp"
#include "tests/export/ExportTestSupport.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

using exporttest::ReadFile;
using exporttest::TempFolder;

const std::string kGoldenFolder = QUILLMERE_TEST_DATA "/export/";

// Replaces each {{N:ENTRY}} by what system N's conversion makes of ENTRY.
std::string ExpandRubyTexts(const std::string& page, const ToneSettings& s) {
  std::string out;
  std::size_t from = 0;
  for (std::size_t open; (open = page.find("{{", from)) != std::string::npos;) {
    const std::size_t close = page.find("}}", open);
    if (close == std::string::npos || page[open + 3] != ':') break;
    out.append(page, from, open - from);
    const std::string entry = page.substr(open + 4, close - open - 4);
    switch (page[open + 2]) {
      case '1':
        out += ZhuyinToPinyin(entry, s);
        break;
      case '3':
        out += ZhuyinToZhuyin2(entry + " ", s);
        break;
      case '4':
        out += ZhuyinToWade(entry, s);
        break;
      case '5':
        out += ZhuyinToTungyong(entry, s);
        break;
      default:
        ADD_FAILURE() << "no system " << page[open + 2];
    }
    from = close + 2;
  }
  out.append(page, from);
  return out;
}

TEST(ExportGoldenTest, PagesMatchTheirFiles) {
  TempFolder folder;
  exporttest::WriteFile(folder / "zhuyintable", exporttest::kTable);
  std::ifstream cases(kGoldenFolder + "cases.txt");
  ASSERT_TRUE(cases) << kGoldenFolder;
  int count = 0;
  for (std::string line; std::getline(cases, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::string name, systems, multiple;
    fields >> name >> systems >> multiple;
    SCOPED_TRACE(name);
    LookUpSettings settings;
    settings.PinyinSystemsPrefValue = systems;
    settings.tones.ShowMultipleReadingsPrefValue = multiple;
    DataFiles files;
    files.zhuyintable = folder / "zhuyintable";
    files.sttable = folder / "STTABLE";
    LookUpEngine engine(files);
    const ExportPage page = BuildPhoneticPage(
        Trim(ReadFile(kGoldenFolder + name + ".txt")), settings, engine);
    EXPECT_EQ(page.status, ExportPage::Status::kDone);
    EXPECT_EQ(page.text,
              ExpandRubyTexts(ReadFile(kGoldenFolder + name + ".html"),
                              settings.tones));
    ++count;
  }
  EXPECT_EQ(count, 4);
}

}  // namespace
}  // namespace quill
