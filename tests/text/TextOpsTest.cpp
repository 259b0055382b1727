#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>

#include "tests/text/CaseTable.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

using Args = std::vector<std::string>;

long Number(const std::string& s) { return std::stol(s); }

std::string Decimal(double value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%g", value);
  return buffer;
}

// Each routine with its arguments as text and its result as text.
const std::map<std::string, std::function<std::string(const Args&)>> kRoutines =
    {
        {"Len", [](const Args& a) { return Str(Len(a.at(0))); }},
        {"LenB", [](const Args& a) { return Str(LenB(a.at(0))); }},
        {"Mid",
         [](const Args& a) {
           return Mid(a.at(0), Number(a.at(1)), Number(a.at(2)));
         }},
        {"MidB",
         [](const Args& a) {
           return MidB(a.at(0), Number(a.at(1)), Number(a.at(2)));
         }},
        {"Left", [](const Args& a) { return Left(a.at(0), Number(a.at(1))); }},
        {"Right",
         [](const Args& a) { return Right(a.at(0), Number(a.at(1))); }},
        {"AscChr",
         [](const Args& a) {
           return Str(Asc(Chr(static_cast<std::uint32_t>(Number(a.at(0))))));
         }},
        {"Asc", [](const Args& a) { return Str(Asc(a.at(0))); }},
        {"AscB", [](const Args& a) { return Str(AscB(a.at(0))); }},
        {"Chr",
         [](const Args& a) {
           return Chr(static_cast<std::uint32_t>(Number(a.at(0))));
         }},
        {"IsValidUtf8",
         [](const Args& a) { return Str(IsValidUtf8(a.at(0))); }},
        {"InStrB",
         [](const Args& a) {
           return Str(InStrB(Number(a.at(0)), a.at(1), a.at(2)));
         }},
        {"InStr", [](const Args& a) { return Str(InStr(a.at(0), a.at(1))); }},
        {"Replace",
         [](const Args& a) { return Replace(a.at(0), a.at(1), a.at(2)); }},
        // The in-place form must give what the copying form gives.
        {"ReplaceAll",
         [](const Args& a) {
           std::string inPlace = a.at(0);
           ReplaceAllInPlace(inPlace, a.at(1), a.at(2));
           const std::string copy = ReplaceAll(a.at(0), a.at(1), a.at(2));
           return inPlace == copy ? copy : "in place: " + inPlace;
         }},
        {"Equals", [](const Args& a) { return Str(Equals(a.at(0), a.at(1))); }},
        // Trim, TrimView and TrimInPlace leave the same.
        {"Trim",
         [](const Args& a) {
           std::string inPlace = a.at(0);
           TrimInPlace(inPlace);
           const std::string trimmed = Trim(a.at(0));
           if (inPlace != trimmed) return "in place: " + inPlace;
           if (TrimView(a.at(0)) != trimmed) return "view: " + trimmed;
           return trimmed;
         }},
        {"CountFields",
         [](const Args& a) { return Str(CountFields(a.at(0), a.at(1))); }},
        {"NthField",
         [](const Args& a) {
           return NthField(a.at(0), a.at(1), Number(a.at(2)));
         }},
        {"Val", [](const Args& a) { return Decimal(Val(a.at(0))); }},
        {"Str", [](const Args& a) { return Str(Number(a.at(0))); }},
};

TEST(TextOps, EveryRoutineGivesItsTableResult) {
  const auto rows = ReadCaseTable("text/textops.txt");
  ASSERT_GE(rows.size(), 90u);
  for (const auto& row : rows) {
    SCOPED_TRACE("textops.txt:" + row[0] + " " + row[1]);
    ASSERT_GE(row.size(), 3u);
    const auto routine = kRoutines.find(row[1]);
    ASSERT_NE(routine, kRoutines.end());
    const Args args(row.begin() + 2, row.end() - 1);
    EXPECT_EQ(routine->second(args), row.back());
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
