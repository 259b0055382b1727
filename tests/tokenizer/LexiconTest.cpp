// The word list and the choice of the most probable path, on a small list
// written here, so that the costs are known.
#include "tests/text/CaseTable.hpp"
#include "tests/tokenizer/TempFolder.hpp"
#include "tokenizer/Lexicon.hpp"
#include "tokenizer/Segmenter.hpp"

namespace quill {
namespace {

// 們->们 and 國->国 as the Traditional to Simplified table; words sorted by
// their bytes. Costs in hundredths of a nat; an unknown character costs 2000.
const std::string kList =
    "quillmere-lexicon 1 2 12 2000\n"
    "們\t们\n"
    "國\t国\n"
    "中\t900\n"
    "中国\t500\n"
    "人\t600\n"
    "我\t400\n"
    "我们\t450\n"
    "我们中\t2000\n"
    "生\t800\n"
    "生命\t700\n"
    "研究\t600\n"
    "研究生\t900\n"
    "\uF900中\t100\n"       // a compatibility ideograph
    "\U00020000中\t100\n";  // and one of Extension B

class LexiconTest : public TempFolderTest {
 protected:
  LexiconTest() {
    WriteFile(Path("list"), kList);
    std::string error;
    EXPECT_TRUE(lexicon.Load(Path("list"), &error)) << error;
  }

  Lexicon lexicon;
};

TEST_F(LexiconTest, FindTellsWordsAndPrefixes) {
  EXPECT_EQ(lexicon.size(), 12u);
  EXPECT_EQ(lexicon.unknownCost(), 2000);
  const auto word = lexicon.Find("中国");
  EXPECT_TRUE(word.found);
  EXPECT_EQ(word.cost, 500);
  const auto prefix = lexicon.Find("研");
  EXPECT_FALSE(prefix.found);
  EXPECT_TRUE(prefix.prefix);
  const auto none = lexicon.Find("国");
  EXPECT_FALSE(none.found);
  EXPECT_FALSE(none.prefix);
  EXPECT_TRUE(lexicon.Find("研究生").found);
  EXPECT_FALSE(lexicon.Find("研究生命").prefix);
  // A key that sorts after every word.
  EXPECT_FALSE(lexicon.Find("龥").found);
  EXPECT_FALSE(lexicon.Find("龥").prefix);
  EXPECT_EQ(lexicon.Key(U'們'), U'们');
  EXPECT_EQ(lexicon.Key(U'们'), U'们');
  EXPECT_EQ(lexicon.Key(U'人'), U'人');
}

TEST_F(LexiconTest, SegmentPutsBlanksOnlyWhereChineseMeetsSomething) {
  const auto rows = ReadCaseTable("tokenizer/segments.txt");
  ASSERT_GE(rows.size(), 30u);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 3u) << "segments.txt:" << row[0];
    EXPECT_EQ(Segment(row[1], lexicon), row[2]) << "segments.txt:" << row[0];
  }
}

TEST_F(LexiconTest, AFileThatIsNoWordListIsRefused) {
  const std::vector<std::string> bad = {
      "",
      "quillmere-lexicon 2 0 0 0\n",
      "quillmere-lexicon 1 0 1 100\n中\t1",   // no line end
      "quillmere-lexicon 1 1 0 100\n們们\n",  // no tab
      "quillmere-lexicon 1 ",
      "quillmere-lexicon 1 5",
      "something else\n",
  };
  for (const std::string& content : bad) {
    WriteFile(Path("bad"), content);
    Lexicon other;
    std::string error;
    EXPECT_FALSE(other.Load(Path("bad"), &error)) << content;
    EXPECT_EQ(error, Path("bad") + ": not a word list of this program");
    EXPECT_EQ(other.size(), 0u);
    // An empty list still segments: every character is a word.
    EXPECT_EQ(Segment("中国", other), "中 国");
  }
  std::string error;
  // With its line end the same list is good: no character table, no cost.
  WriteFile(Path("good"), "quillmere-lexicon 1 0 1 0\n中\t0\n");
  Lexicon good;
  EXPECT_TRUE(good.Load(Path("good"), &error)) << error;
  EXPECT_EQ(good.Find("中").cost, 0);
  Lexicon missing;
  EXPECT_FALSE(missing.Load(Path("nothing here"), &error));
  EXPECT_EQ(error, Path("nothing here") + ": No such file or directory");
  std::filesystem::create_directory(Path("a folder"));
  EXPECT_FALSE(missing.Load(Path("a folder"), &error));
  EXPECT_EQ(error, Path("a folder") + ": not a file");
}

TEST_F(LexiconTest, TheShippedListLoadsAndKnowsCommonWords) {
  Lexicon shipped;
  std::string error;
  ASSERT_TRUE(
      shipped.Load(QUILLMERE_SOURCE_DIR "/data/tokenizerlexicon", &error))
      << error;
  EXPECT_GT(shipped.size(), 100000u);
  for (const char* word : {"我们", "中国", "今天", "学生", "电脑", "图书馆"}) {
    EXPECT_TRUE(shipped.Find(word).found) << word;
  }
  // Pairs of words that an input method lists are not words here.
  for (const char* pair : {"我的", "是在", "中国人"}) {
    EXPECT_FALSE(shipped.Find(pair).found) << pair;
  }
  EXPECT_EQ(shipped.Key(U'學'), U'学');
}

}  // namespace
}  // namespace quill
