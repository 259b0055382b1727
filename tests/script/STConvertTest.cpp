#include <gtest/gtest.h>
#include <iconv.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "script/STConvert.hpp"
#include "tests/tables/Gb2312.hpp"
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"

namespace quill {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kTableSize = 14102;
const std::string kCommittedTable = QUILLMERE_SOURCE_DIR "/data/STTABLE";

// Big5 codes used as cell contents below.
const std::string kBig5Question = "\xA1\x48";  // ？, the filler cell
const std::string kBig5Guo = "\xB0\xEA";       // 國
const std::string kBig5Jia = "\xA5\xD2";       // 甲
const std::string kBig5Yi = "\xA4\x41";        // 乙
const std::string kBig5Bing = "\xA4\xFE";      // 丙

// A full-size table of question marks with a few cells set on purpose.
class SmallTable : public TempFolderTest {
 protected:
  SmallTable() {
    for (std::size_t i = 0; i < kTableSize / 2; ++i) table_ += kBig5Question;
    Set(185, 250, kBig5Guo);           // 国
    Set(163, 161, kBig5Jia);           // ！, a symbol row
    Set(176, 161, kBig5Yi);            // 啊, first cell of the Chinese section
    Set(177, 254, kBig5Bing);          // last cell of the row of lead byte 177
    table_.replace(564, 2, kBig5Jia);  // the spare cell
    WriteFile(path_.string(), table_);
  }

  void Set(int lead, int trail, const std::string& code) {
    table_.replace(STConverter::CellPosition(lead, trail), 2, code);
  }

  const fs::path path_ = Path("STTABLE");
  std::string table_;
};

TEST(STConverterCells, FollowTheTwoSections) {
  struct Case {
    int lead, trail;
    long position;
  };
  const std::vector<Case>
      cases =
          {
              {161, 161, 0},   {161, 254, 186},  {163, 254, 562},
              {176, 161, 566}, {185, 250, 2436}, {247, 254, 14100},
              {164, 161, 564},  // the spare cell between the sections
          };
  for (const auto& c : cases) {
    EXPECT_EQ(STConverter::CellPosition(c.lead, c.trail), c.position)
        << c.lead << "," << c.trail;
  }
  // Lead bytes 164 to 175 have no rows and read the Chinese section: one
  // cell to the left in the row of the lead byte plus 12.
  for (int lead = 165; lead <= 175; ++lead) {
    for (int trail : {161, 200, 254}) {
      EXPECT_EQ(STConverter::CellPosition(lead, trail),
                STConverter::CellPosition(lead + 12, trail) - 2)
          << lead << "," << trail;
    }
  }
}

// Rows: the table cut to a size ("" for whole), input, result. A cell cut
// in half leaves one Big5 lead byte, which the final conversion drops.
TEST_F(SmallTable, ConvertsTheCasesOfItsTable) {
  for (const auto& row : ReadCaseTable("script/small-table.txt")) {
    SCOPED_TRACE("line " + row[0]);
    const std::string cut = Path("cut" + row[1]);
    WriteFile(cut,
              row[1].empty() ? table_ : table_.substr(0, std::stoul(row[1])));
    EXPECT_EQ(STConverter(cut).STConvert(row[2]), row[3]);
  }
  std::string huge;
  for (int i = 0; i < 100000; ++i) huge += "国a";
  const std::string converted = STConverter(path_.string()).STConvert(huge);
  EXPECT_EQ(converted.size(), huge.size());
  EXPECT_EQ(converted.substr(converted.size() - 4), "國a");
}

TEST_F(SmallTable, MissingTableGivesNothingAndIsLookedForAgain) {
  const fs::path elsewhere = folder() / "later" / "STTABLE";
  STConverter converter(elsewhere.string());
  EXPECT_EQ(converter.STConvert("abc"), "");
  EXPECT_EQ(converter.STConvert("国"), "");
  fs::create_directories(elsewhere.parent_path());
  fs::copy_file(path_, elsewhere);
  EXPECT_EQ(converter.STConvert("国"),
            "國");  // A folder in the table's place gives nothing either.
  EXPECT_EQ(STConverter(folder().string()).STConvert("abc"), "");
}

TEST_F(SmallTable, TableIsKeptOnceRead) {
  STConverter converter(path_.string());
  EXPECT_EQ(converter.STConvert("国"), "國");
  fs::remove(path_);
  EXPECT_EQ(converter.STConvert("国"), "國");
  EXPECT_EQ(converter.STConvert("x"), "x");
}

// The committed table.

bool Big5Holds(const std::string& utf8) {
  iconv_t cd = iconv_open("BIG5", "UTF-8");
  std::string copy = utf8;
  char out[16];
  char* inPtr = copy.data();
  char* outPtr = out;
  std::size_t inLeft = copy.size(), outLeft = sizeof out;
  const bool ok = iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) !=
                      static_cast<size_t>(-1) &&
                  outPtr - out == 2;
  iconv_close(cd);
  return ok;
}

TEST(CommittedSTTable, HasTheFullLayout) {
  const std::string table = ReadFile(kCommittedTable);
  ASSERT_EQ(table.size(), kTableSize);
  EXPECT_EQ(table.substr(2436, 2), kBig5Guo);
}

TEST(CommittedSTTable, EveryChineseCharacterBecomesABig5Character) {
  std::set<std::string> withoutForm;
  for (const auto& row : ReadCaseTable("script/no_big5_form.txt")) {
    withoutForm.insert(row[1]);
  }
  STConverter converter(kCommittedTable);
  std::set<std::string> fellBack;
  const auto characters = Gb2312Characters();
  for (const std::string& simplified : characters) {
    const std::string traditional = converter.STConvert(simplified);
    ASSERT_TRUE(Big5Holds(traditional)) << simplified << " -> " << traditional;
    if (traditional == "？") fellBack.insert(simplified);
  }
  EXPECT_EQ(characters.size(), 6763u);
  EXPECT_EQ(fellBack, withoutForm);
}

TEST(CommittedSTTable, AgreesWithPublishedPairs) {
  STConverter converter(kCommittedTable);
  const auto rows = ReadCaseTable("script/st_pairs.txt");
  ASSERT_GE(rows.size(), 20u);
  for (const auto& row : rows) {
    ASSERT_GE(row.size(), 3u);
    const std::string result = converter.STConvert(row[1]);
    const std::set<std::string> allowed(row.begin() + 2, row.end());
    EXPECT_TRUE(allowed.count(result)) << row[1] << " -> " << result;
  }
}

}  // namespace
}  // namespace quill
