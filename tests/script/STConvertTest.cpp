#include <gtest/gtest.h>
#include <iconv.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "script/STConvert.hpp"
#include "tests/text/CaseTable.hpp"

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

fs::path TempFolder() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  fs::path folder = fs::temp_directory_path() /
                    ("quillmere-st-" + std::to_string(getpid()) + "-" +
                     info->test_suite_name() + "-" + info->name());
  fs::create_directories(folder);
  return folder;
}

void WriteFile(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream buffer;
  buffer << in.rdbuf();
  return buffer.str();
}

// A full-size table of question marks with a few cells set on purpose.
class SmallTable : public ::testing::Test {
 protected:
  void SetUp() override {
    folder_ = TempFolder();
    table_.clear();
    for (std::size_t i = 0; i < kTableSize / 2; ++i) table_ += kBig5Question;
    Set(185, 250, kBig5Guo);           // 国
    Set(163, 161, kBig5Jia);           // ！, a symbol row
    Set(176, 161, kBig5Yi);            // 啊, first cell of the Chinese section
    Set(177, 254, kBig5Bing);          // last cell of the row of lead byte 177
    table_.replace(564, 2, kBig5Jia);  // the spare cell
    path_ = folder_ / "STTABLE";
    WriteFile(path_, table_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  void Set(int lead, int trail, const std::string& code) {
    table_.replace(STConverter::CellPosition(lead, trail), 2, code);
  }

  fs::path folder_;
  fs::path path_;
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
    const fs::path cut = folder_ / ("cut" + row[1]);
    WriteFile(cut,
              row[1].empty() ? table_ : table_.substr(0, std::stoul(row[1])));
    EXPECT_EQ(STConverter(cut.string()).STConvert(row[2]), row[3]);
  }
  std::string huge;
  for (int i = 0; i < 100000; ++i) huge += "国a";
  const std::string converted = STConverter(path_.string()).STConvert(huge);
  EXPECT_EQ(converted.size(), huge.size());
  EXPECT_EQ(converted.substr(converted.size() - 4), "國a");
}

TEST_F(SmallTable, MissingTableGivesNothingAndIsLookedForAgain) {
  const fs::path elsewhere = folder_ / "later" / "STTABLE";
  STConverter converter(elsewhere.string());
  EXPECT_EQ(converter.STConvert("abc"), "");
  EXPECT_EQ(converter.STConvert("国"), "");
  fs::create_directories(elsewhere.parent_path());
  fs::copy_file(path_, elsewhere);
  EXPECT_EQ(converter.STConvert("国"),
            "國");  // A folder in the table's place gives nothing either.
  EXPECT_EQ(STConverter(folder_.string()).STConvert("abc"), "");
}

TEST_F(SmallTable, TableIsKeptOnceRead) {
  STConverter converter(path_.string());
  EXPECT_EQ(converter.STConvert("国"), "國");
  fs::remove(path_);
  EXPECT_EQ(converter.STConvert("国"), "國");
  EXPECT_EQ(converter.STConvert("x"), "x");
}

// The committed table.

std::string FromGb(int lead, int trail) {
  iconv_t cd = iconv_open("UTF-8", "EUC-CN");
  char in[2] = {static_cast<char>(lead), static_cast<char>(trail)};
  char out[8];
  char* inPtr = in;
  char* outPtr = out;
  std::size_t inLeft = 2, outLeft = sizeof out;
  const bool ok =
      iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) != static_cast<size_t>(-1);
  iconv_close(cd);
  return ok ? std::string(out, outPtr) : std::string();
}

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

std::vector<std::vector<std::string>> ReadRows(const std::string& path) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream in(path);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::vector<std::string> row;
    for (std::string field; fields >> field;) row.push_back(field);
    rows.push_back(row);
  }
  return rows;
}

TEST(CommittedSTTable, HasTheFullLayout) {
  const std::string table = ReadFile(kCommittedTable);
  ASSERT_EQ(table.size(), kTableSize);
  EXPECT_EQ(table.substr(2436, 2), kBig5Guo);
}

TEST(CommittedSTTable, EveryChineseCharacterBecomesABig5Character) {
  std::set<std::string> withoutForm;
  for (const auto& row :
       ReadRows(QUILLMERE_TEST_DATA "/script/no_big5_form.txt")) {
    withoutForm.insert(row[0]);
  }
  STConverter converter(kCommittedTable);
  int characters = 0;
  std::set<std::string> fellBack;
  for (int lead = 176; lead <= 247; ++lead) {
    for (int trail = 161; trail <= 254; ++trail) {
      const std::string simplified = FromGb(lead, trail);
      if (simplified.empty()) continue;
      ++characters;
      const std::string traditional = converter.STConvert(simplified);
      ASSERT_TRUE(Big5Holds(traditional))
          << simplified << " -> " << traditional;
      if (traditional == "？") fellBack.insert(simplified);
    }
  }
  EXPECT_EQ(characters, 6763);
  EXPECT_EQ(fellBack, withoutForm);
}

TEST(CommittedSTTable, AgreesWithPublishedPairs) {
  STConverter converter(kCommittedTable);
  const auto rows = ReadRows(QUILLMERE_TEST_DATA "/script/st_pairs.txt");
  ASSERT_GE(rows.size(), 20u);
  for (const auto& row : rows) {
    ASSERT_GE(row.size(), 2u);
    const std::string result = converter.STConvert(row[0]);
    const std::set<std::string> allowed(row.begin() + 1, row.end());
    EXPECT_TRUE(allowed.count(result)) << row[0] << " -> " << result;
  }
}

}  // namespace
}  // namespace quill
