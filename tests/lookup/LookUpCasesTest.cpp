// Look-ups and export pages of tests/data/lookup/lookups.txt, each on the
// small table below, or the table of a fifth field: settings, input, then
// the whole result text.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "export/Export.hpp"
#include "lookup/LookUp.hpp"
#include "tests/lookup/TableFixture.hpp"
#include "tests/text/CaseTable.hpp"

namespace quill {
namespace {

// 好 and 行 have three readings, 壞 an empty one between two; 聞 reads as
// 文; 水 has no line; 。 has one, which the look-up never reads.
const std::string kTable =
    "中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n好   ㄏㄠˇ  ㄏㄠˋ  ㄏㄠ\n"
    "行   ㄒㄧㄥˊ  ㄏㄤˊ  ㄏㄥˋ\n聞   ㄨㄣˊ\n壞   ㄏㄨㄞˋ    ㄏㄨㄞ\n"
    "我   ㄨㄛˇ\n們   ㄇㄣ˙\n是   ㄕˋ\n國   ㄍㄨㄛˊ\n人   ㄖㄣˊ\n"
    "。   ㄐㄩˋ\n";

class LookUpCases : public TableFixture {
 protected:
  // Files with `table` and the phrase file `phrases`.
  DataFiles FilesWithPhrases(const std::string& table,
                             const std::string& phrases) {
    DataFiles files = FilesWithTable(table);
    files.phrasereadings = Path("phrases");
    WriteFile(files.phrasereadings, phrases);
    return files;
  }
  // Readings in context, Zhuyin 1 alone.
  static LookUpSettings InContext() {
    LookUpSettings settings;
    settings.contextReadings = true;
    settings.PinyinSystemsPrefValue = "01000";
    return settings;
  }
};

// Settings are words: d (dictionary mode), systems=..., seg, single (first
// reading only), notones, numbers, header=... (Zhuyin 1's header), page (the
// export page after its body tag), notable, emptytable, sttable (the
// committed one; by default none), and last
// tool=real or tool=SCRIPT (the Tokenizer; by default one that prints the
// text as it is).
TEST_F(LookUpCases, GiveTheirResults) {
  const auto rows = ReadCaseTable("lookup/lookups.txt");
  ASSERT_GT(rows.size(), 50u);
  for (const auto& row : rows) {
    ASSERT_TRUE(row.size() == 4 || row.size() == 5) << "line " << row[0];
    SCOPED_TRACE("line " + row[0] + ": " + row[1] + " | " + row[2]);
    DataFiles files = FilesWithTable(row.size() == 5 ? row[4] : kTable);
    std::string tool = "cat \"$1\"";
    LookUpSettings s;
    bool page = false;
    const std::size_t toolAt = row[1].find("tool=");
    if (toolAt != std::string::npos) tool = row[1].substr(toolAt + 5);
    std::istringstream words(row[1].substr(0, toolAt));
    for (std::string w; words >> w;) {
      if (w == "d") s.mode = Mode::kDictionary;
      if (w.starts_with("systems=")) s.PinyinSystemsPrefValue = w.substr(8);
      if (w == "seg") s.segmentation = true;
      if (w == "single") s.tones.ShowMultipleReadingsPrefValue = "0";
      if (w == "notones") s.tones.indicateTonesPrefValue = "0";
      if (w == "numbers") s.tones.UseToneNumbersPrefValue = "1";
      if (w.starts_with("header=")) s.headers[System::kZhuyin1] = w.substr(7);
      if (w == "page") page = true;
      if (w == "notable") files.zhuyintable = Path("none");
      if (w == "emptytable") WriteFile(files.zhuyintable, "");
      if (w == "sttable") files.sttable = QUILLMERE_SOURCE_DIR "/data/STTABLE";
    }
    if (tool == "real") {
      files.tokenizer = QUILLMERE_OUT_DIR "/Tokenizer";
    } else {
      WriteFile(files.tokenizer, "#!/bin/sh\n" + tool + "\n");
      std::filesystem::permissions(files.tokenizer,
                                   std::filesystem::perms::owner_all);
    }
    LookUpEngine engine(files);
    std::string text;
    if (page) {
      const ExportPage p = BuildPhoneticPage(row[2], s, engine);
      const std::size_t body = p.text.find("<body>\n");
      text = p.status == ExportPage::Status::kNothing        ? "<nothing>"
             : p.status == ExportPage::Status::kTableMissing ? "<missing>"
             : body == std::string::npos                     ? p.text
                                         : p.text.substr(body + 7);
    } else {
      const auto r = engine.LookUp(row[2], s);
      text = r.outcome == LookUpEngine::Outcome::kNothing        ? "<nothing>"
             : r.outcome == LookUpEngine::Outcome::kTableMissing ? "<missing>"
                                                                 : r.text;
    }
    EXPECT_EQ(text, row[3]);
  }
}

// The phrase table is read at the first look-up in context, and kept.
TEST_F(LookUpCases, ThePhraseTableIsReadOnce) {
  const DataFiles files = FilesWithPhrases(kTable, "行\tㄏㄥˋ\t100\n");
  LookUpEngine engine(files);
  const LookUpSettings settings = InContext();
  const std::string shown = "ㄏㄥˋ (ㄒㄧㄥˊ  ㄏㄤˊ) ";
  EXPECT_EQ(Block(engine.LookUp("行", settings).text, "Zhuyin 1 (Bopomofo)"),
            shown);
  std::filesystem::remove(files.phrasereadings);
  EXPECT_EQ(Block(engine.LookUp("行", settings).text, "Zhuyin 1 (Bopomofo)"),
            shown);
}

// A reading chosen in context goes in front of the character's line, the
// table's first line too.
TEST_F(LookUpCases, ContextReadsTheTablesFirstCharacter) {
  LookUpEngine engine(FilesWithPhrases(kTable, "中\tㄓㄨㄥˋ\t100\n"));
  EXPECT_EQ(Block(engine.LookUp("中", InContext()).text, "Zhuyin 1 (Bopomofo)"),
            "ㄓㄨㄥˋ (ㄓㄨㄥ) ");
}

// Readings in context are chosen on what Tokenizer gave when it changed more
// than the blanks: there, the typed 行长 would read the walked 长 as háng.
TEST_F(LookUpCases, ContextReadsTheTextTokenizerChanged) {
  const DataFiles files = FilesWithPhrases(
      "行   ㄒㄧㄥˊ  ㄏㄤˊ\n长   ㄔㄤˊ  ㄓㄤˇ\n",
      "行\tㄒㄧㄥˊ\t600\n行长\tㄏㄤˊ ㄓㄤˇ\t900\n长\tㄔㄤˊ\t650\n");
  WriteFile(files.tokenizer, "#!/bin/sh\nprintf '长 行'\n");
  std::filesystem::permissions(files.tokenizer,
                               std::filesystem::perms::owner_all);
  LookUpEngine engine(files);
  LookUpSettings settings = InContext();
  settings.segmentation = true;
  settings.tones.ShowMultipleReadingsPrefValue = "0";
  EXPECT_EQ(Block(engine.LookUp("行长", settings).text, "Zhuyin 1 (Bopomofo)"),
            "ㄔㄤˊ  ㄒㄧㄥˊ ");
}

// Under Taiwan's standard a character's line of taiwanreadings comes first;
// a line of another form is passed over.
TEST_F(LookUpCases, TaiwanReadingsTakeOnlyWellFormedLines) {
  DataFiles files = FilesWithTable(kTable);
  files.taiwanreadings = Path("taiwan");
  WriteFile(files.taiwanreadings,
            "行\tㄏㄥˋ\n好\tㄏㄠˋ ㄏㄠ\n中\tㄓㄨㄥˋ\t\n\t文\n文\t\n");
  LookUpEngine engine(files);
  LookUpSettings settings;
  settings.standard = ReadingStandard::kTaiwan;
  settings.PinyinSystemsPrefValue = "01000";
  EXPECT_EQ(
      Block(engine.LookUp("行好中文", settings).text, "Zhuyin 1 (Bopomofo)"),
      "ㄏㄥˋ (ㄒㄧㄥˊ  ㄏㄤˊ) ㄏㄠˇ (ㄏㄠˋ  ㄏㄠ) ㄓㄨㄥ (ㄓㄨㄥˋ) ㄨㄣˊ ");
}

}  // namespace
}  // namespace quill
