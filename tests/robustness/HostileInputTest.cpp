// Input that a user can paste: NUL bytes, broken UTF-8, huge texts. The
// look-up copies what isn't a character through in converter mode, drops it
// in dictionary mode, and the page keeps it.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/robustness/Hostile.hpp"
#include "text/TextOps.hpp"

namespace quill {
namespace {

const std::string kTable = "中   ㄓㄨㄥ\n文   ㄨㄣˊ\n";
const std::string kZhuyinHead = "Zhuyin 1 (Bopomofo)\r-------------------\r";

struct InputCase {
  std::string name;
  std::string input;
  std::string converterBody;
  std::string foundCharacters;
  std::string dictionaryBody;
  std::string pageBlock;
};

std::vector<InputCase> ReadCases() {
  std::ifstream file(std::string(QUILLMERE_TEST_DATA) +
                     "/robustness/inputs.txt");
  std::vector<InputCase> cases;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields;
    std::istringstream split(line);
    for (std::string field; std::getline(split, field, '\t');) {
      fields.push_back(hostile::Unescape(field));
    }
    if (fields.size() == 5) fields.emplace_back();  // an empty last field
    EXPECT_EQ(fields.size(), 6u) << line;
    if (fields.size() != 6) continue;
    cases.push_back(
        {fields[0], fields[1], fields[2], fields[3], fields[4], fields[5]});
  }
  return cases;
}

LookUpSettings ZhuyinOnly(Mode mode) {
  LookUpSettings settings;
  settings.mode = mode;
  settings.PinyinSystemsPrefValue = "01000";
  return settings;
}

class HostileInputTest : public TableFixture {
 protected:
  HostileInputTest() : engine(FilesWithTable(kTable)) {}

  hostile::CliRun Cli(const std::string& args, const std::string& input) {
    WriteFile(Path("input.txt"), input);
    return hostile::RunCli("--raw --table '" + Path("zhuyintable") + "' -i '" +
                           Path("input.txt") + "' " + args);
  }

  LookUpEngine engine;
};

TEST_F(HostileInputTest, BytesThatAreNoCharactersPassOrDrop) {
  const std::vector<InputCase> cases = ReadCases();
  ASSERT_GE(cases.size(), 20u);
  for (const InputCase& c : cases) {
    SCOPED_TRACE(c.name);
    const auto converter = engine.LookUp(c.input, ZhuyinOnly(Mode::kConverter));
    EXPECT_EQ(converter.outcome, LookUpEngine::Outcome::kShown);
    EXPECT_EQ(converter.text, "\r\r" + kZhuyinHead + c.converterBody + "\r");

    const auto dictionary =
        engine.LookUp(c.input, ZhuyinOnly(Mode::kDictionary));
    EXPECT_EQ(dictionary.outcome, LookUpEngine::Outcome::kShown);
    // Nothing found: the field is left empty, with no header.
    const std::string expected =
        c.foundCharacters.empty() && c.dictionaryBody.empty()
            ? ""
            : c.foundCharacters + "\r\r\r\r" + kZhuyinHead + c.dictionaryBody +
                  "\r";
    EXPECT_EQ(dictionary.text, expected);

    const auto page =
        BuildPhoneticPage(c.input, ZhuyinOnly(Mode::kConverter), engine);
    EXPECT_EQ(page.status, ExportPage::Status::kDone);
    EXPECT_NE(page.text.find("<p>" + c.pageBlock + "</p>"), std::string::npos)
        << page.text;
  }
}

TEST_F(HostileInputTest, TheCliGivesTheEngineResultForHostileBytes) {
  for (const InputCase& c : ReadCases()) {
    SCOPED_TRACE(c.name);
    const hostile::CliRun run = Cli("--systems 01000", c.input);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              engine.LookUp(c.input, ZhuyinOnly(Mode::kConverter)).text);
  }
}

// Every system on, every tone setting: what comes out is the same for the
// same input, from the same engine and from a fresh one.
TEST_F(HostileInputTest, TheSameInputGivesTheSameResult) {
  std::string all;
  for (const InputCase& c : ReadCases()) all += c.input + "中 文\n";
  all += hostile::RandomBytes(4096, 7);
  for (const char* indicate : {"1", "0"}) {
    for (const char* numbers : {"0", "1"}) {
      for (const char* multiple : {"1", "0"}) {
        for (const Mode mode : {Mode::kConverter, Mode::kDictionary}) {
          LookUpSettings settings;
          settings.mode = mode;
          settings.tones = {indicate, numbers, multiple};
          SCOPED_TRACE(std::string(indicate) + numbers + multiple +
                       std::to_string(static_cast<int>(mode)));
          const auto first = engine.LookUp(all, settings);
          EXPECT_EQ(first.outcome, LookUpEngine::Outcome::kShown);
          EXPECT_EQ(engine.LookUp(all, settings).text, first.text);
          LookUpEngine fresh(FilesWithTable(kTable));
          EXPECT_EQ(fresh.LookUp(all, settings).text, first.text);
          const auto page = BuildPhoneticPage(all, settings, engine);
          EXPECT_EQ(page.status, ExportPage::Status::kDone);
          EXPECT_EQ(BuildPhoneticPage(all, settings, fresh).text, page.text);
        }
      }
    }
  }
}

// Random bytes as input never crash the look-up or the page, and every
// input byte that isn't part of a character comes through in converter mode.
TEST_F(HostileInputTest, RandomBytesAsInput) {
  for (std::uint64_t seed = 1; seed <= 8; ++seed) {
    SCOPED_TRACE(seed);
    const std::string input = hostile::RandomBytes(1 << 16, seed);
    const auto converter = engine.LookUp(input, LookUpSettings{});
    EXPECT_EQ(converter.outcome, LookUpEngine::Outcome::kShown);
    const auto dictionary = engine.LookUp(input, ZhuyinOnly(Mode::kDictionary));
    EXPECT_EQ(dictionary.outcome, LookUpEngine::Outcome::kShown);
    // Neither key is in these bytes, so the dictionary finds no character
    // (punctuation marks may still give a block).
    ASSERT_EQ(input.find("中"), std::string::npos);
    ASSERT_EQ(input.find("文"), std::string::npos);
    EXPECT_EQ(dictionary.text.substr(0, 2),
              dictionary.text.empty() ? "" : "\r\r");
    EXPECT_EQ(BuildPhoneticPage(input, LookUpSettings{}, engine).status,
              ExportPage::Status::kDone);
  }
}

// Valid input gives valid UTF-8, whatever the mix.
TEST_F(HostileInputTest, ValidInputGivesValidOutput) {
  std::string input;
  for (std::uint32_t code = 1; code < 0x11000; code += 7) {
    input += Chr(code);
    if (code % 5 == 0) input += "中";
    if (code % 11 == 0) input += "文 ";
  }
  ASSERT_TRUE(IsValidUtf8(input));
  for (const Mode mode : {Mode::kConverter, Mode::kDictionary}) {
    LookUpSettings settings;
    settings.mode = mode;
    const auto result = engine.LookUp(input, settings);
    EXPECT_EQ(result.outcome, LookUpEngine::Outcome::kShown);
    EXPECT_TRUE(IsValidUtf8(result.text));
  }
  EXPECT_TRUE(
      IsValidUtf8(BuildPhoneticPage(input, LookUpSettings{}, engine).text));
}

// A huge text through the CLI: every line end of the text survives, and each
// block holds at least the text's bytes. Under a sanitizer or valgrind a
// tenth will do.
TEST_F(HostileInputTest, AHugeInputThroughTheCli) {
  const std::size_t target = (hostile::Shrunk() ? 5 : 50) << 20;
  const std::string unit = "中文 abc，文中。\n中\xFF文\t1234 中文中文\n";
  std::string text;
  text.reserve(target + unit.size());
  while (text.size() < target) text += unit;
  std::size_t lineEnds = 0;
  for (char ch : text) lineEnds += ch == '\n';
  lineEnds -= 1;  // the last goes with the trim

  WriteFile(Path("input.txt"), text);
  const std::string output = Path("output.txt");
  const hostile::CliRun run =
      hostile::RunCli("--raw --systems 01000 --table '" + Path("zhuyintable") +
                      "' -i '" + Path("input.txt") + "' -o '" + output + "'");
  EXPECT_EQ(run.status, 0) << run.out;
  EXPECT_EQ(run.out, "");

  std::ifstream in(output, std::ios::binary);
  std::size_t size = 0;
  std::size_t outLineEnds = 0;
  std::size_t readings = 0;
  char buffer[1 << 16];
  std::string tail;
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    const std::string_view chunk(buffer, static_cast<std::size_t>(in.gcount()));
    size += chunk.size();
    for (char ch : chunk) outLineEnds += ch == '\n';
    // Count the readings of 文 across chunk seams too.
    const std::string joined = tail + std::string(chunk);
    for (std::size_t at = joined.find("ㄨㄣˊ"); at != std::string::npos;
         at = joined.find("ㄨㄣˊ", at + 1)) {
      if (at + std::string("ㄨㄣˊ").size() > tail.size()) ++readings;
    }
    tail =
        joined.substr(joined.size() - std::min<std::size_t>(16, joined.size()));
  }
  EXPECT_EQ(outLineEnds, lineEnds);
  EXPECT_GT(size, text.size());
  std::size_t units = text.size() / unit.size();
  EXPECT_EQ(readings, units * 5);  // 文 five times a unit
}

}  // namespace
}  // namespace quill
