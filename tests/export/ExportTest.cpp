#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "export/Export.hpp"
#include "tests/export/ExportTestSupport.hpp"

namespace quill {
namespace {

using exporttest::kTable;
using exporttest::TempFolder;
using exporttest::WriteFile;

const std::string kSeam = "</ruby><br />\n";
const std::string kLastSeam = "</ruby>\n";
const std::string kEnd = "</body>\n</html>";

// A reading table in a folder of its own, and an engine on it.
class PageTest : public ::testing::Test {
 protected:
  PageTest() {
    WriteFile(folder_ / "zhuyintable", kTable);
    files_.zhuyintable = folder_ / "zhuyintable";
    files_.sttable = folder_ / "STTABLE";  // absent unless a test writes it
    files_.tokenizer = folder_ / "Tokenizer";
    files_.temporaryFolder = folder_.path().string();
  }

  static LookUpSettings Systems(const std::string& systems,
                                const std::string& multiple = "1") {
    LookUpSettings settings;
    settings.PinyinSystemsPrefValue = systems;
    settings.tones.ShowMultipleReadingsPrefValue = multiple;
    return settings;
  }

  // The page after the body tag; fails the test unless the page is done.
  std::string Body(const std::string& text, const LookUpSettings& settings) {
    LookUpEngine engine(files_);
    const ExportPage page = BuildPhoneticPage(text, settings, engine);
    EXPECT_EQ(page.status, ExportPage::Status::kDone);
    const std::size_t body = page.text.find("<body>\n");
    EXPECT_NE(body, std::string::npos);
    if (body == std::string::npos) return page.text;
    return page.text.substr(body + 7);
  }

  // The body of a page with Zhuyin 1 alone and the block `inner`.
  static std::string Zhuyin1Only(const std::string& inner) {
    return kSeam + "<p>" + inner + "</p>" + kSeam + kSeam + kSeam + kLastSeam +
           kEnd;
  }

  TempFolder folder_;
  DataFiles files_;
};

// The walk with Zhuyin 1 alone, whose ruby text is the table's entry as it
// stands, so each case spells out the whole block.
struct WalkCase {
  const char* name;
  std::string input;
  std::string block;
};

void PrintTo(const WalkCase& c, std::ostream* os) { *os << c.name; }

class ZhuyinWalkTest : public PageTest,
                       public ::testing::WithParamInterface<WalkCase> {};

TEST_P(ZhuyinWalkTest, BlockHoldsTheText) {
  const WalkCase& c = GetParam();
  EXPECT_EQ(Body(c.input, Systems("01000")), Zhuyin1Only(c.block));
}

INSTANTIATE_TEST_SUITE_P(
    Export, ZhuyinWalkTest,
    ::testing::Values(
        // A text that opens with a reading has no "</ruby>" before it.
        WalkCase{"StartsWithReading", "中文",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"
                 "<ruby>文<rt>ㄨㄣˊ</rt></ruby>"},
        // A verbatim run is one element without rt, closed by the next
        // reading's "</ruby><ruby>"; at the end it stays open in the block.
        WalkCase{"VerbatimAround", "ab文c",
                 "<ruby>ab</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby><ruby>c"},
        WalkCase{"VerbatimBetweenReadings", "中 and 文",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby> and "
                 "</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>"},
        // Blanks are copied one by one, never collapsed.
        WalkCase{"BlanksCopied", "中   文",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby>   "
                 "</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>"},
        // Line ends stay raw inside the run: no break is made of them.
        WalkCase{"TwoLinesLf", "中\n文",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby>\n"
                 "</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>"},
        WalkCase{"TwoLinesCrLf", "中\r\n文",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby>\r\n"
                 "</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>"},
        // Nothing is escaped.
        WalkCase{"BareAmpersand", "&", "<ruby>&"},
        WalkCase{"MarkupPassesThrough", "<b>中",
                 "<ruby><b></ruby><ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"},
        // Characters above U+00FF without a line stay, as verbatim text.
        WalkCase{"NoReadingKept", "水中Ǎ",
                 "<ruby>水</ruby><ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"
                 "<ruby>Ǎ"},
        WalkCase{"OutsideBmpKept", "\xF0\xA0\x80\x80中",
                 "<ruby>\xF0\xA0\x80\x80</ruby><ruby>中<rt>ㄓㄨㄥ  "
                 "ㄓㄨㄥˋ</rt></ruby>"},
        // Zhuyin letters and tone marks are never searched: the table's
        // readings column would otherwise give false hits.
        WalkCase{"ZhuyinLettersVerbatim", "ㄓㄨㄥˋ", "<ruby>ㄓㄨㄥˋ"},
        // No punctuation table: a mark with a line has a reading, one
        // without is verbatim.
        WalkCase{"PunctuationByTable", "中，文。",
                 "<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby>，"
                 "</ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>"
                 "<ruby>。<rt>ㄉㄧㄢˇ</rt></ruby>"},
        // Zhuyin 1 keeps the table's entry: all readings two blanks apart,
        // no brackets.
        WalkCase{"ThreeReadingsAsInTable", "行",
                 "<ruby>行<rt>ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ</rt></ruby>"},
        // Invalid bytes and NUL are characters of their own.
        WalkCase{"InvalidBytes", std::string("\xFF\x00中", 5),
                 std::string("<ruby>\xFF\x00", 8) +
                     "</ruby><ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PageTest, SingleReadingCutsEveryEntryToTheFirst) {
  EXPECT_EQ(Body("行中", Systems("01000", "0")),
            Zhuyin1Only("<ruby>行<rt>ㄒㄧㄥˊ</rt></ruby>"
                        "<ruby>中<rt>ㄓㄨㄥ</rt></ruby>"));
}

// The four conversions get the entry (cut down first when only one reading
// is shown) and their result stands in the rt with nothing behind it.
TEST_F(PageTest, OtherSystemsTakeTheRoutinesResult) {
  for (const std::string multiple : {"1", "0"}) {
    SCOPED_TRACE("ShowMultipleReadings " + multiple);
    const LookUpSettings s = Systems("10011", multiple);
    const std::string entry =
        multiple == "0" ? "ㄒㄧㄥˊ" : "ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ";
    auto block = [&](const std::string& name, const std::string& ruby) {
      return "<p>" + name + "<br /><br /><ruby>行<rt>" + ruby +
             "</rt></ruby></p>";
    };
    EXPECT_EQ(Body("行", s),
              block("Hanyu Pinyin", ZhuyinToPinyin(entry, s.tones)) + kSeam +
                  kSeam + kSeam +
                  block("Wade-Giles", ZhuyinToWade(entry, s.tones)) + kSeam +
                  block("Tongyong Pinyin", ZhuyinToTungyong(entry, s.tones)) +
                  kLastSeam + kEnd);
  }
}

// One system alone: no name, and the other four seams bare on their lines.
TEST_F(PageTest, OneSystemHasNoNameAndFourBareSeams) {
  const LookUpSettings probe = Systems("11111");
  const std::string entry = "ㄨㄣˊ";
  const std::vector<std::string> rubies{
      ZhuyinToPinyin(entry, probe.tones), entry,
      ZhuyinToZhuyin2(entry + " ", probe.tones),
      ZhuyinToWade(entry, probe.tones), ZhuyinToTungyong(entry, probe.tones)};
  for (int position = 1; position <= 5; ++position) {
    SCOPED_TRACE(position);
    std::string systems = "00000";
    systems[static_cast<std::size_t>(position - 1)] = '1';
    std::string expected;
    for (int seam = 1; seam <= 5; ++seam) {
      if (seam == position) {
        expected += "<p><ruby>a</ruby><ruby>文<rt>" +
                    rubies[static_cast<std::size_t>(position - 1)] +
                    "</rt></ruby></p>";
      }
      expected += seam < 5 ? kSeam : kLastSeam;
    }
    expected += kEnd;
    EXPECT_EQ(Body("a文", Systems(systems)), expected);
  }
}

TEST_F(PageTest, AllFiveInTheirOrderEachWithItsName) {
  const std::string body = Body("a", Systems("11111"));
  const std::string run = "<br /><br /><ruby>a</p>";
  EXPECT_EQ(body, "<p>Hanyu Pinyin" + run + kSeam + "<p>Zhuyin 1 (Bopomofo)" +
                      run + kSeam + "<p>Zhuyin 2" + run + kSeam +
                      "<p>Wade-Giles" + run + kSeam + "<p>Tongyong Pinyin" +
                      run + kLastSeam + kEnd);
}

TEST_F(PageTest, OnlyTongyongComesAfterFourSeams) {
  EXPECT_EQ(
      Body("a", Systems("00001")),
      kSeam + kSeam + kSeam + kSeam + "<p><ruby>a</p>" + kLastSeam + kEnd);
}

TEST_F(PageTest, NoSystemWrapsNothing) {
  EXPECT_EQ(Body("中a", Systems("00000")),
            kSeam + kSeam + kSeam + kSeam + kLastSeam + kEnd);
}

// A missing position counts as on, as everywhere else.
TEST_F(PageTest, ShortSystemsValueLeavesTheRestOn) {
  const std::string body = Body("a", Systems("1"));
  EXPECT_NE(body.find("<p>Tongyong Pinyin<br /><br />"), std::string::npos);
}

TEST_F(PageTest, NamesComeFromTheCaller) {
  LookUpSettings settings = Systems("01001");
  settings.headers[System::kZhuyin1] = "注音一式";
  const std::string body = Body("a", settings);
  EXPECT_EQ(body, kSeam + "<p>注音一式<br /><br /><ruby>a</p>" + kSeam + kSeam +
                      kSeam + "<p>Tongyong Pinyin<br /><br /><ruby>a</p>" +
                      kLastSeam + kEnd);
}

// Verbatim text is kept in dictionary mode too, and the text is never
// segmented: the Tokenizer named here doesn't exist.
TEST_F(PageTest, ModeAndSegmentationDontMatter) {
  LookUpSettings converter = Systems("01000");
  LookUpSettings dictionary = converter;
  dictionary.mode = Mode::kDictionary;
  dictionary.segmentation = true;
  EXPECT_EQ(Body("a 中", dictionary), Body("a 中", converter));
  EXPECT_EQ(
      Body("a 中", dictionary),
      Zhuyin1Only("<ruby>a </ruby><ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby>"));
}

TEST_F(PageTest, HeadIsSevenLinesEndingInTheBodyTag) {
  const std::string head = DocumentHead();
  EXPECT_EQ(std::count(head.begin(), head.end(), '\n'), 7);
  EXPECT_TRUE(head.ends_with("</style></head>\n<body>\n"));
  LookUpEngine engine(files_);
  EXPECT_TRUE(
      BuildPhoneticPage("中", Systems("01000"), engine).text.starts_with(head));
}

TEST_F(PageTest, EmptyTextGivesNothingEvenWithoutTable) {
  files_.zhuyintable = folder_ / "missing";
  LookUpEngine engine(files_);
  for (const char* text : {"", "  \r\n\t "}) {
    const ExportPage page = BuildPhoneticPage(text, Systems("11111"), engine);
    EXPECT_EQ(page.status, ExportPage::Status::kNothing);
    EXPECT_EQ(page.text, "");
  }
}

// Even a text that never searches the table needs it.
TEST_F(PageTest, MissingOrEmptyTableIsReported) {
  WriteFile(folder_ / "empty", "");
  for (const char* table : {"missing", "empty"}) {
    files_.zhuyintable = folder_ / table;
    LookUpEngine engine(files_);
    const ExportPage page = BuildPhoneticPage("abc", Systems("11111"), engine);
    EXPECT_EQ(page.status, ExportPage::Status::kTableMissing) << table;
    EXPECT_EQ(page.text, "");
  }
}

// 国 (GB 2312 B9 FA) has no line; STTABLE turns it into 國 (Big5 B0 EA),
// whose line gives the reading. The base keeps the form that was typed.
// Needs the STTABLE walk of the script conversion.
TEST_F(PageTest, SimplifiedFoundThroughSttableKeepsItsForm) {
  std::string sttable(14102, '\0');
  const std::size_t cell = 566 + (0xB9 - 176) * 188 + (0xFA - 161) * 2;
  sttable[cell] = '\xB0';
  sttable[cell + 1] = '\xEA';
  WriteFile(folder_ / "STTABLE", sttable);
  EXPECT_EQ(Body("国", Systems("01000")),
            Zhuyin1Only("<ruby>国<rt>ㄍㄨㄛˊ</rt></ruby>"));
}

// Without STTABLE the same character is verbatim.
TEST_F(PageTest, SimplifiedWithoutSttableIsVerbatim) {
  EXPECT_EQ(Body("国", Systems("01000")), Zhuyin1Only("<ruby>国"));
}

// A large text of repeated characters goes through whole.
TEST_F(PageTest, LargeInputKeepsEveryCharacter) {
  std::string text;
  for (int i = 0; i < 50000; ++i) text += "中a水\n";
  const std::string body = Body(text, Systems("01000"));
  std::size_t readings = 0;
  for (std::size_t at = 0;
       (at = body.find("<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt>", at)) != std::string::npos;
       ++at) {
    ++readings;
  }
  EXPECT_EQ(readings, 50000u);
  EXPECT_NE(body.find("<ruby>a水\n</ruby>"), std::string::npos);
}

TEST(PlainTextTest, TrimmedFieldTwoLineEndsAndResult) {
  EXPECT_EQ(BuildPlainText(" \r中文\n  ", "Hanyu Pinyin\r---\rzhōng wén \r"),
            "中文\n\nHanyu Pinyin\r---\rzhōng wén \r");
  EXPECT_EQ(BuildPlainText("a\r\nb", ""), "a\r\nb\n\n");
  EXPECT_EQ(BuildPlainText("", "x"), "\n\nx");
}

}  // namespace
}  // namespace quill
