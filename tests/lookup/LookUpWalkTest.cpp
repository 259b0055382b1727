// The character loop builds only the accumulators that are shown and closes
// up brackets where the pairs were made; these cases hold it to the results
// of building all five and searching them whole.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"

namespace quill {
namespace {

// 聞 reads as 文; 壞 has an empty reading between two others, which makes a
// bracket with blanks inside.
const std::string kTable =
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n"
    "文   ㄨㄣˊ\n"
    "好   ㄏㄠˇ  ㄏㄠˋ  ㄏㄠ\n"
    "聞   ㄨㄣˊ\n"
    "壞   ㄏㄨㄞˋ    ㄏㄨㄞ\n";

const char* const kHeaders[] = {"Hanyu Pinyin", "Zhuyin 1 (Bopomofo)",
                                "Zhuyin 2", "Wade-Giles", "Tongyong Pinyin"};

class LookUpWalkTest : public TableFixture {
 protected:
  LookUpWalkTest() : engine(FilesWithTable(kTable)) {
    WriteFile(engine.files().tokenizer, "#!/bin/sh\ncat \"$1\"\n");
    std::filesystem::permissions(engine.files().tokenizer,
                                 std::filesystem::perms::owner_all);
  }

  std::string Text(const std::string& input, const std::string& systems) {
    LookUpSettings s = settings;
    s.PinyinSystemsPrefValue = systems;
    return engine.LookUp(input, s).text;
  }

  // The body of the block with `header`, or "<none>".
  static std::string Body(const std::string& text, const std::string& header) {
    const std::string opening = header + "\r-------------------\r";
    const auto at = text.find(opening);
    if (at == std::string::npos) return "<none>";
    const auto from = at + opening.size();
    return text.substr(from, text.find('\r', from) - from);
  }

  LookUpEngine engine;
  LookUpSettings settings;
};

const std::vector<std::string> kInputs = {
    "文( 中 )“ 好”", "壞文",        "（ 文，文",   "聞文聞",
    "a (文) b",      "國\t國",      "中。\n好”（", "ab 文 cd（ 好 ）",
    "“ 文 ”，( 聞",  "\t國 文\v國", "）（ 」",     "好、 a ( b ) 中"};

// Hanyu Pinyin steers the blanks of all five, so it stays as it is; of the
// other four, any may be on or off.
TEST_F(LookUpWalkTest, ABlockIsTheSameWhicheverOthersAreOn) {
  for (const Mode mode : {Mode::kConverter, Mode::kDictionary}) {
    for (const bool segmentation : {false, true}) {
      settings.mode = mode;
      settings.segmentation = segmentation;
      // Each segmented look-up starts the tool: half the inputs will do.
      const std::size_t count =
          segmentation ? kInputs.size() / 2 : kInputs.size();
      for (std::size_t i = 0; i < count; ++i) {
        const std::string& input = kInputs[i];
        for (const char pinyin : {'1', '0'}) {
          const std::string all = Text(input, pinyin + std::string("1111"));
          for (std::size_t position = pinyin == '1' ? 0 : 1; position < 5;
               ++position) {
            std::string alone = pinyin + std::string("0000");
            alone[position] = '1';
            SCOPED_TRACE(input + " mode " +
                         std::to_string(static_cast<int>(mode)) + " segment " +
                         std::to_string(segmentation) + " " + alone);
            const std::string one = Text(input, alone);
            EXPECT_EQ(one.empty(), all.empty());
            if (!all.empty()) {
              EXPECT_EQ(Body(one, kHeaders[position]),
                        Body(all, kHeaders[position]));
            }
          }
        }
      }
    }
  }
}

TEST_F(LookUpWalkTest, ResultShownWhenZhuyin1HoldsTextEvenWhenItIsOff) {
  for (const char* systems : {"11111", "10111", "00001"}) {
    SCOPED_TRACE(systems);
    // Only white space reaches Zhuyin 1: nothing is shown.
    EXPECT_EQ(Text("國\t國", systems), "");
    EXPECT_EQ(Text("國\v\f國", systems), "");
    // Verbatim text, a mark or a reading is enough.
    EXPECT_NE(Text("國\tx", systems), "");
    EXPECT_NE(Text("國。", systems), "");
    EXPECT_NE(Text("國聞", systems), "");
  }
}

TEST_F(LookUpWalkTest, PairsAreClosedUpWhereverTheyWereMade) {
  struct Case {
    const char* input;
    const char* zhuyin1;
  };
  const Case cases[] = {
      // Across the seams of verbatim text, blanks, marks and readings.
      {"文( 中 )“ 好”", "ㄨㄣˊ (ㄓㄨㄥ (ㄓㄨㄥˋ)) “ㄏㄠˇ (ㄏㄠˋ  ㄏㄠ)” "},
      {"a (文) b", "a (ㄨㄣˊ) b"},
      // Inside a reading: of the two blanks behind "(" only one goes.
      {"壞文", "ㄏㄨㄞˋ ( ㄏㄨㄞ) ㄨㄣˊ "},
      // The blank in front of the opening bracket is trimmed away later.
      {"（ 文，文", "(ㄨㄣˊ， ㄨㄣˊ "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.input);
    const std::string text = Text(c.input, "11111");
    EXPECT_EQ(Body(text, "Zhuyin 1 (Bopomofo)"), c.zhuyin1);
    for (const char* header : kHeaders) {
      const std::string body = Body(text, header);
      if (std::string(c.input) != "壞文") {
        EXPECT_EQ(body.find("( "), std::string::npos) << header;
      }
      EXPECT_EQ(body.find(" )"), std::string::npos) << header;
      EXPECT_EQ(body.find("“ "), std::string::npos) << header;
    }
  }
}

TEST_F(LookUpWalkTest, CharactersThatReadAlikeKeepTheirOwnPlace) {
  EXPECT_EQ(Body(Text("聞文聞", "11111"), "Zhuyin 1 (Bopomofo)"),
            "ㄨㄣˊ ㄨㄣˊ ㄨㄣˊ ");
  settings.mode = Mode::kDictionary;
  const std::string text = Text("聞國文", "01000");
  EXPECT_EQ(text.substr(0, text.find('\r')), "聞文");
}

}  // namespace
}  // namespace quill
