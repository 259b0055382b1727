// Input that a user can paste: NUL bytes and broken UTF-8. The
// look-up copies what isn't a character through in converter mode, drops it
// in dictionary mode, and the page keeps it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/robustness/Hostile.hpp"
#include "tests/text/CaseTable.hpp"
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
  std::vector<InputCase> cases;
  for (auto row : ReadCaseTable("robustness/inputs.txt")) {
    if (row.size() == 6) row.emplace_back();  // an empty last field
    EXPECT_EQ(row.size(), 7u) << "inputs.txt:" << row[0];
    if (row.size() != 7) continue;
    cases.push_back({row[1], row[2], row[3], row[4], row[5], row[6]});
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

}  // namespace
}  // namespace quill
