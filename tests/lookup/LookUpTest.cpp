#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"

namespace quill {
namespace {

// 中 has two readings, 好 three, 文 one; 國 is not in the table.
const std::string kTable =
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n"
    "文   ㄨㄣˊ\n"
    "好   ㄏㄠˇ  ㄏㄠˋ  ㄏㄠ\n"
    "。   ㄐㄩˋ\n";

class LookUpTest : public TableFixture {
 protected:
  LookUpTest() : engine(FilesWithTable(kTable)) {
    // A stand-in Tokenizer that prints the text as it is.
    WriteFile(engine.files().tokenizer, "#!/bin/sh\ncat \"$1\"\n");
    std::filesystem::permissions(engine.files().tokenizer,
                                 std::filesystem::perms::owner_all);
  }

  // The accumulators of a look-up, taken back out of its result.
  Accumulators Run(const std::string& input) {
    result = engine.LookUp(input, settings);
    const std::string& t = result.text;
    return {Block(t, "Hanyu Pinyin"), Block(t, "Zhuyin 1 (Bopomofo)"),
            Block(t, "Zhuyin 2"), Block(t, "Wade-Giles"),
            Block(t, "Tongyong Pinyin")};
  }

  std::string Py(const std::string& entry) const {
    return ZhuyinToPinyin(entry, settings.tones);
  }
  std::string Ty(const std::string& entry) const {
    return ZhuyinToTungyong(entry, settings.tones);
  }

  LookUpEngine engine;
  LookUpSettings settings;
  LookUpEngine::Result result;
};

TEST_F(LookUpTest, DictionaryModeListsTheCharactersAboveTheirReadings) {
  settings.mode = Mode::kDictionary;
  settings.PinyinSystemsPrefValue = "11000";
  Run("中");
  EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
  EXPECT_EQ(result.text, "中\r\rHanyu Pinyin\r" + kRule + "\r" +
                             Py("ㄓㄨㄥ  ㄓㄨㄥˋ") +
                             " \r\r\rZhuyin 1 (Bopomofo)\r" + kRule +
                             "\rㄓㄨㄥ (ㄓㄨㄥˋ) \r");
}

TEST_F(LookUpTest, EveryBlockButTheFirstOpensWithTwoEmptyLines) {
  Run("文");
  EXPECT_EQ(result.text.rfind("Hanyu Pinyin\r", 0), 0u);
  EXPECT_EQ(result.text.back(), '\r');
  EXPECT_NE(result.text.find(" \r\r\rTongyong Pinyin\r"), std::string::npos);

  settings.PinyinSystemsPrefValue = "00100";
  Run("文");
  EXPECT_EQ(result.text, "\r\rZhuyin 2\r" + kRule + "\r" +
                             ZhuyinToZhuyin2("ㄨㄣˊ ", settings.tones) + " \r");

  settings.mode = Mode::kDictionary;
  settings.PinyinSystemsPrefValue = "01000";
  Run("文");
  EXPECT_EQ(result.text.rfind("文\r\r\r\rZhuyin 1", 0), 0u);
}

TEST_F(LookUpTest, SystemsSwitchBlocksOnAndOff) {
  settings.PinyinSystemsPrefValue = "10111";
  Run("文");
  EXPECT_EQ(result.text.find("Zhuyin 1"), std::string::npos);
  EXPECT_NE(result.text.find("Wade-Giles"), std::string::npos);
  // A position missing from a short value is on.
  settings.PinyinSystemsPrefValue = "0";
  Run("文");
  EXPECT_EQ(result.text.find("Hanyu Pinyin"), std::string::npos);
  EXPECT_NE(result.text.find("Tongyong Pinyin"), std::string::npos);
  // All off: converter mode shows nothing, dictionary mode the characters.
  settings.PinyinSystemsPrefValue = "00000";
  Run("文");
  EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
  EXPECT_EQ(result.text, "");
  settings.mode = Mode::kDictionary;
  Run("文");
  EXPECT_EQ(result.text, "文\r\r");
}

TEST_F(LookUpTest, NothingToLookUpAndAMissingTable) {
  EXPECT_EQ(engine.LookUp(" \r\n\t ", settings).outcome,
            LookUpEngine::Outcome::kNothing);
  DataFiles none = FilesWithTable(std::nullopt);
  none.zhuyintable = Path("zhuyintable-not-yet");
  LookUpEngine missing(none);
  EXPECT_EQ(missing.LookUp("  ", settings).outcome,
            LookUpEngine::Outcome::kNothing);
  EXPECT_EQ(missing.LookUp("文", settings).outcome,
            LookUpEngine::Outcome::kTableMissing);
  // The next look-up goes back to the file.
  WriteFile(missing.files().zhuyintable, kTable);
  EXPECT_EQ(missing.LookUp("文", settings).outcome,
            LookUpEngine::Outcome::kShown);
}

TEST_F(LookUpTest, CharactersWithoutAReadingLeaveNoTrace) {
  const Accumulators r = Run("文國文");
  EXPECT_EQ(r[System::kZhuyin1], "ㄨㄣˊ ㄨㄣˊ ");
  // Nothing found at all: the field is emptied, with no header.
  Run("國");
  EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
  EXPECT_EQ(result.text, "");
  settings.mode = Mode::kDictionary;
  Run("中國文");
  EXPECT_EQ(result.text.substr(0, result.text.find('\r')), "中文");
}

TEST_F(LookUpTest, ReadingsAfterTheFirstStandInBrackets) {
  EXPECT_EQ(Run("中")[System::kZhuyin1], "ㄓㄨㄥ (ㄓㄨㄥˋ) ");
  EXPECT_EQ(Run("好")[System::kZhuyin1], "ㄏㄠˇ (ㄏㄠˋ  ㄏㄠ) ");
  settings.tones.ShowMultipleReadingsPrefValue = "0";
  EXPECT_EQ(Run("好")[System::kZhuyin1], "ㄏㄠˇ ");
  // Tone settings never touch Zhuyin 1.
  settings.tones.indicateTonesPrefValue = "0";
  EXPECT_EQ(Run("文")[System::kZhuyin1], "ㄨㄣˊ ");
}

TEST_F(LookUpTest, LineEndsAndBlanks) {
  const Accumulators r = Run("文\r\n文 文");
  // CR and LF each give a line end; the blank after a syllable is not doubled.
  EXPECT_EQ(r[System::kZhuyin1], "ㄨㄣˊ \n\nㄨㄣˊ ㄨㄣˊ ");
  EXPECT_EQ(r[System::kHanyuPinyin],
            Py("ㄨㄣˊ") + " \n\n" + Py("ㄨㄣˊ") + " " + Py("ㄨㄣˊ") + " ");
  // With segmentation the syllable has no blank, so the input's blank counts,
  // and Zhuyin 1 ends in two. (The stand-in tool returns the text itself.)
  settings.segmentation = true;
  const Accumulators s = Run("文 文");
  EXPECT_EQ(s[System::kZhuyin1], "ㄨㄣˊ  ㄨㄣˊ ");
  EXPECT_EQ(s[System::kHanyuPinyin], Py("ㄨㄣˊ") + " " + Py("ㄨㄣˊ"));
}

TEST_F(LookUpTest, HanyuPinyinDecidesTheBlanksEvenWhenItIsOff) {
  // With segmentation the syllables add no blank. Pinyin on: every input
  // blank follows a syllable and is copied. Pinyin off: its text holds only
  // blanks, so the second input blank finds one there and is dropped.
  settings.segmentation = true;
  EXPECT_EQ(Run("文 文 文")[System::kZhuyin1], "ㄨㄣˊ  ㄨㄣˊ  ㄨㄣˊ ");
  settings.PinyinSystemsPrefValue = "01111";
  EXPECT_EQ(Run("文 文 文")[System::kZhuyin1], "ㄨㄣˊ  ㄨㄣˊ ㄨㄣˊ ");
  // The blank after a closing bracket depends on Hanyu Pinyin's text, also
  // when that system is off.
  settings.segmentation = false;
  EXPECT_EQ(Run("文）")[System::kWadeGiles],
            ZhuyinToWade("ㄨㄣˊ", settings.tones) + ") ");
}

TEST_F(LookUpTest, VerbatimTextInConverterMode) {
  Accumulators r = Run("ab文");
  // Zhuyin 1 runs straight into the syllable; the others get a blank.
  EXPECT_EQ(r[System::kZhuyin1], "abㄨㄣˊ ");
  EXPECT_EQ(r[System::kHanyuPinyin], "ab " + Py("ㄨㄣˊ") + " ");
  EXPECT_EQ(r[System::kTongyongPinyin], "ab " + Ty("ㄨㄣˊ") + " ");
  // After a line end no blank is put in front of the syllable.
  r = Run("ab\n文");
  EXPECT_EQ(r[System::kHanyuPinyin], "ab\n" + Py("ㄨㄣˊ") + " ");
  // Verbatim text alone is shown, in every block.
  r = Run("abc");
  EXPECT_EQ(r[System::kZhuyin1], "abc");
  EXPECT_EQ(r[System::kWadeGiles], "abc");
}

TEST_F(LookUpTest, TheBoundaryBetweenVerbatimAndCharacterPath) {
  // U+00FF is verbatim, U+0100 takes the character path and, unknown, goes.
  EXPECT_EQ(Run("ÿĀ文")[System::kZhuyin1], "ÿㄨㄣˊ ");
  // Zhuyin letters and tone marks are verbatim; U+3104 and U+312D are not.
  EXPECT_EQ(Run("ㄅˊ\u3104\u312Dㄩ")[System::kZhuyin1], "ㄅˊㄩ");
  settings.mode = Mode::kDictionary;
  Run("abㄅ文");
  EXPECT_EQ(result.text.substr(0, result.text.find('\r')), "文");
  EXPECT_EQ(Block(result.text, "Zhuyin 1 (Bopomofo)"), "ㄨㄣˊ ");
}

TEST_F(LookUpTest, InvalidUtf8IsVerbatimAndNeverStopsTheWalk) {
  const std::string input =
      std::string("\xE4\xB8", 2) + "文" + std::string("\0\xFF", 2) + "文";
  const Accumulators r = Run(input);
  EXPECT_EQ(r[System::kZhuyin1], std::string("\xE4\xB8", 2) + "ㄨㄣˊ " +
                                     std::string("\0\xFF", 2) + "ㄨㄣˊ ");
}

struct MarkCase {
  const char* mark;
  const char* zhuyin1;  // what follows ㄨㄣˊ in Zhuyin 1
  const char* latin;    // ... in Hanyu Pinyin
  const char* tongyong;
};

TEST_F(LookUpTest, EachPunctuationMarkHasItsTextInEachSystem) {
  const MarkCase cases[] = {
      {"，", "， ", ", ", ", "}, {"、", "， ", ", ", ", "},
      {"。", "。 ", ". ", ". "}, {"；", "；", "; ", "; "},
      {"（", " (", " (", " ("},  {"）", ") ", ") ", ")  "},
      {"？", "？", "? ", "? "},  {"！", "! ", "! ", "! "},
      {"“", " “", " “", " \""},  {"「", " “", " “", " \""},
      {"”", "” ", "” ", "” "},   {"」", "” ", "” ", "” "},
      {"：", ": ", ": ", ": "},
  };
  for (const MarkCase& c : cases) {
    SCOPED_TRACE(c.mark);
    const Accumulators r = Run(std::string("文") + c.mark);
    EXPECT_EQ(r[System::kZhuyin1], std::string("ㄨㄣˊ") + c.zhuyin1);
    EXPECT_EQ(r[System::kHanyuPinyin], Py("ㄨㄣˊ") + c.latin);
    EXPECT_EQ(r[System::kTongyongPinyin], Ty("ㄨㄣˊ") + c.tongyong);
  }
}

TEST_F(LookUpTest, MarksTrimWhatStandsBeforeThem) {
  // The full stop's blank goes again before the closing quotation mark.
  EXPECT_EQ(Run("文。”")[System::kZhuyin1], "ㄨㄣˊ。” ");
  // Two marks in a row, and a line end right before a mark.
  EXPECT_EQ(Run("文？！")[System::kZhuyin1], "ㄨㄣˊ？! ");
  EXPECT_EQ(Run("文？！")[System::kHanyuPinyin], Py("ㄨㄣˊ") + "?! ");
  EXPECT_EQ(Run("文\n。")[System::kZhuyin1], "ㄨㄣˊ。 ");
  // A mark at the start: the opening blank stays.
  EXPECT_EQ(Run("（文")[System::kZhuyin1], " (ㄨㄣˊ ");
  // A mark is never looked up, even with a line of its own in the table.
  EXPECT_EQ(Run("。")[System::kZhuyin1], "。 ");
}

TEST_F(LookUpTest, SegmentationDropsTheBlanksOfRulesAAndB) {
  settings.segmentation = true;
  Accumulators r = Run("文，文）");
  EXPECT_EQ(r[System::kZhuyin1], "ㄨㄣˊ，ㄨㄣˊ)");
  EXPECT_EQ(r[System::kTongyongPinyin], Ty("ㄨㄣˊ") + "," + Ty("ㄨㄣˊ") + ") ");
  // Dictionary mode never segments, yet the setting still governs the marks.
  settings.mode = Mode::kDictionary;
  r = Run("文，文");
  EXPECT_EQ(r[System::kZhuyin1], "ㄨㄣˊ，ㄨㄣˊ ");
  EXPECT_EQ(r[System::kHanyuPinyin], Py("ㄨㄣˊ") + "," + Py("ㄨㄣˊ") + " ");
}

TEST_F(LookUpTest, DictionaryModeWithOnlyACommaShowsAnEmptyFirstLine) {
  settings.mode = Mode::kDictionary;
  settings.PinyinSystemsPrefValue = "01000";
  Run("，");
  EXPECT_EQ(result.text, "\r\r\r\rZhuyin 1 (Bopomofo)\r" + kRule + "\r， \r");
}

TEST_F(LookUpTest, CleanUpClosesUpBracketsAndQuotes) {
  // Latin brackets are verbatim; the blanks the input put inside them go,
  // and so does the one behind the opening quotation mark.
  const Accumulators r = Run("文( a )“ 文");
  EXPECT_EQ(r[System::kZhuyin1], "ㄨㄣˊ (a) “ㄨㄣˊ ");
  EXPECT_EQ(r[System::kWadeGiles].find("( "), std::string::npos);
}

TEST_F(LookUpTest, ALongTextGivesTheSameAsItsPartsInOrder) {
  std::string input;
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    input += "中文好";
    expected += "ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ ㄏㄠˇ (ㄏㄠˋ  ㄏㄠ) ";
  }
  EXPECT_EQ(Run(input)[System::kZhuyin1], expected);
}

}  // namespace
}  // namespace quill
