#include <gtest/gtest.h>

#include "text/TextOps.hpp"

namespace quill {
namespace {

TEST(TextOps, CharacterFormsCountCharactersAndByteFormsCountBytes) {
  const std::string s = "a中b文";
  EXPECT_EQ(Len(s), 4u);
  EXPECT_EQ(LenB(s), 8u);
  EXPECT_EQ(Mid(s, 2, 1), "中");
  EXPECT_EQ(Mid(s, 3), "b文");
  EXPECT_EQ(Mid(s, 0, 1), "a");
  EXPECT_EQ(Mid(s, 9, 1), "");
  EXPECT_EQ(MidB(s, 2, 3), "中");
  EXPECT_EQ(MidB(s, 8, 5), "\x87");
  EXPECT_EQ(MidB(s, 9, 1), "");
  EXPECT_EQ(Left(s, 2), "a中");
  EXPECT_EQ(Right(s, 2), "b文");
  EXPECT_EQ(Right(s, 10), s);
  EXPECT_EQ(Left(s, 0), "");
}

TEST(TextOps, AscAndChrRoundTripCodePoints) {
  for (std::uint32_t code :
       {0x41u, 0xFFu, 0x100u, 0x3105u, 0x4E2Du, 0x1F600u}) {
    EXPECT_EQ(Asc(Chr(code)), code);
  }
  EXPECT_EQ(Asc(""), 0u);
  EXPECT_EQ(AscB("中"), 0xE4);
  EXPECT_EQ(Chr(0xD800), "");  // a surrogate has no UTF-8
  EXPECT_EQ(Chr(0x110000), "");
}

TEST(TextOps, InvalidBytesAreCharactersOfTheirOwn) {
  // A lone continuation byte, a truncated sequence, an overlong form and an
  // encoded surrogate: each byte counts once and keeps its value.
  const std::string s =
      "\x80"
      "\xE4\xB8"
      "\xC0\xAF"
      "\xED\xA0\x80"
      "x";
  EXPECT_EQ(Len(s), 9u);
  EXPECT_EQ(Asc(Mid(s, 1, 1)), 0x80u);
  EXPECT_EQ(Asc(Mid(s, 2, 1)), 0xE4u);
  EXPECT_EQ(Mid(s, 9, 1), "x");
  EXPECT_FALSE(IsValidUtf8(s));
  EXPECT_TRUE(IsValidUtf8("中文 abc"));
  // A NUL is an ordinary character.
  EXPECT_EQ(Len(std::string("a\0b", 3)), 3u);
}

TEST(TextOps, InStrBSearchesBytesFromAOneBasedStart) {
  const std::string s = "中\n文\n";
  EXPECT_EQ(InStrB(0, s, "中"), 1);
  EXPECT_EQ(InStrB(1, s, "\n"), 4);
  EXPECT_EQ(InStrB(5, s, "\n"), 8);
  EXPECT_EQ(InStrB(9, s, "\n"), 0);
  EXPECT_EQ(InStrB(0, s, "x"), 0);
  EXPECT_EQ(InStrB(0, s, ""), 0);
  EXPECT_EQ(InStrB(0, "ABC", "b"), 0);  // the byte form keeps letter case
  EXPECT_EQ(InStr("a中Bc", "bC"), 3);   // the character form does not
  EXPECT_EQ(InStr("abc", ""), 0);
}

TEST(TextOps, ReplaceTakesTheFirstOccurrenceIgnoringLetterCase) {
  EXPECT_EQ(Replace("ㄇㄚㄇㄚ", "ㄇ", "m"), "mㄚㄇㄚ");
  EXPECT_EQ(Replace("UNG ung", "ung", "ong"), "ong ung");
  EXPECT_EQ(Replace("abc", "x", "y"), "abc");
  EXPECT_EQ(Replace("abc", "", "y"), "abc");
  EXPECT_EQ(ReplaceAll("( a ( b", "( ", "("), "(a (b");
  EXPECT_EQ(ReplaceAll("AaA", "a", "b"), "bbb");
  // Accents count: ü is not u.
  EXPECT_EQ(Replace("lüe", "u", "x"), "lüe");
}

TEST(TextOps, EqualsIgnoresLetterCaseButNotAccents) {
  EXPECT_TRUE(Equals("Bus error", "BUS ERROR"));
  EXPECT_FALSE(Equals("Bus error", "Bus error\n"));
  EXPECT_FALSE(Equals("ü", "u"));
  EXPECT_FALSE(Equals("Ü", "ü"));  // only ASCII letters fold
}

TEST(TextOps, TrimTakesWhiteSpaceAndLineEndsOffBothEnds) {
  EXPECT_EQ(Trim(" \t\r\n中 文\n\r "), "中 文");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
  std::string s = "\n a \r";
  TrimInPlace(s);
  EXPECT_EQ(s, "a");
}

TEST(TextOps, FieldsSplitOnASeparatorString) {
  EXPECT_EQ(CountFields("ㄓㄨㄥ  ㄓㄨㄥˋ", "  "), 2);
  EXPECT_EQ(CountFields("ㄓㄨㄥ", "  "), 1);
  EXPECT_EQ(CountFields("", "  "), 1);
  EXPECT_EQ(CountFields("a   b", "  "), 2);  // three blanks: one separator
  EXPECT_EQ(NthField("a  b  c", "  ", 2), "b");
  EXPECT_EQ(NthField("a  b  c", "  ", 3), "c");
  EXPECT_EQ(NthField("a  b  c", "  ", 4), "");
  EXPECT_EQ(NthField("a  b", " ", 1), "a");
  EXPECT_EQ(NthField("a  b", "  ", 0), "");
}

TEST(TextOps, ValReadsTheNumberAtTheHead) {
  EXPECT_EQ(Val("301"), 301);
  EXPECT_EQ(Val(" -12x"), -12);
  EXPECT_EQ(Val("1.5"), 1.5);
  EXPECT_EQ(Val("2e3"), 2000);
  EXPECT_EQ(Val("ma"), 0);
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("3"), 3);
  EXPECT_EQ(Str(-42), "-42");
}

// The in-place form gives what ReplaceAll gives, on needles whose first byte
// is a blank or is common, overlapping ones, letters in either case, and a
// replacement longer than what it replaces.
TEST(TextOps, ReplaceAllInPlaceAgreesWithReplaceAll) {
  struct Case {
    const char* text;
    const char* find;
    const char* with;
  };
  const Case cases[] = {
      {"a ) b ) )", " )", ")"},
      {"(( ( ", "( ", "("},
      {"“ “  x“ ", "“ ", "“"},
      {"aaaa", "aa", "a"},
      {"   ", "  ", "_"},
      {"AbAB ab", "ab", ""},
      {"no match here", "( ", "("},
      {"x", "xyz", ""},
      {"tail )", " )", ")"},
      {"ab", "b", "bbb"},
      {"", " )", ")"},
      {"( )", "", "!"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " / " + c.find);
    std::string s = c.text;
    ReplaceAllInPlace(s, c.find, c.with);
    EXPECT_EQ(s, ReplaceAll(c.text, c.find, c.with));
  }
  // The search for a needle that opens with a blank finds the first match.
  EXPECT_EQ(InStr("a  ) )", " )"), 3);
  EXPECT_EQ(InStrB(0, "ab  )", "  )"), 3);
}

TEST(TextOps, TrimViewLeavesWhatTrimLeaves) {
  for (const char* s : {"", " \t", " a b \r\n", "x", "\v\fx y\f"}) {
    EXPECT_EQ(TrimView(s), Trim(s));
  }
}

TEST(TextOps, ReserveForWritingKeepsTheTextAndMakesRoom) {
  for (const std::size_t size : {std::size_t{10}, std::size_t{9} << 20}) {
    std::string s = "abc";
    ReserveForWriting(s, size);
    EXPECT_EQ(s, "abc");
    EXPECT_GE(s.capacity(), size);
    s.append(size - 3, 'x');
    EXPECT_EQ(s.size(), size);
    EXPECT_EQ(s.substr(0, 4), "abcx");
    EXPECT_EQ(s.back(), 'x');
  }
}

}  // namespace
}  // namespace quill
