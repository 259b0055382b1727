// Readings in context on a corpus: the time to map and index the phrase
// table, and the time of ChooseReadings on the whole text (the best of a
// few runs), in processor seconds.
//
//   quillmere-readings-bench [CORPUS [PHRASES]]
//   -> phrases=PATH entries=348974 skipped=0 load_seconds=0.1294
//      seconds=0.1148 chinese=797313 covered=797308
//      chars_per_second=6947134 peak_rss_mib=44.0
//
// `covered` counts the characters that got a reading. CORPUS defaults to
// simplified.txt of the bench corpus, PHRASES to the phrasereadings beside
// the executables. Without that file, a stand-in is made from the corpus:
// its characters, and its words of two to four characters that occur at
// least twice, read by the first readings of zhuyintable and costed by
// their counts. The stand-in is harder than a real table: every prefix of
// the text is in it, so every look-up goes to the longest word.
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <unordered_map>

#include "bench/Corpus.hpp"
#include "readings/ContextReadings.hpp"
#include "text/TextOps.hpp"

namespace {

using namespace quill;

std::string MakeStandIn(const std::string& text, const std::string& path) {
  std::unordered_map<std::string, std::string> first;  // char -> reading
  std::istringstream table(
      bench::ReadFile(std::string(QUILLMERE_OUT_DIR) + "/zhuyintable")
          .value_or(""));
  for (std::string ch, reading; table >> ch >> reading;) {
    first.emplace(ch, reading);
    table.ignore(1 << 20, '\n');
  }
  std::unordered_map<std::string, long> counts;
  std::vector<std::size_t> run;  // starts of the last characters read
  long total = 0;
  for (std::size_t pos = 0; pos < text.size();) {
    const Utf8Char c = DecodeChar(text, pos);
    if (!IsHanzi(c.code) || !first.contains(text.substr(pos, c.length))) {
      run.clear();
    } else {
      run.push_back(pos);
      if (run.size() > 4) run.erase(run.begin());
      for (const std::size_t start : run) {
        ++counts[text.substr(start, pos + c.length - start)];
      }
      ++total;
    }
    pos += c.length;
  }
  std::map<std::string, std::string> lines;  // sorted by the bytes of WORD
  for (const auto& [word, count] : counts) {
    if (count < 2 && word.size() > 3) continue;
    std::string readings;
    for (std::size_t pos = 0; pos < word.size(); pos += 3) {
      readings += (pos ? " " : "") + first[word.substr(pos, 3)];
    }
    const long cost = std::lround(-100 * std::log(static_cast<double>(count) /
                                                  static_cast<double>(total)));
    lines[word] = readings + "\t" + std::to_string(cost);
  }
  std::ofstream out(path, std::ios::binary);
  for (const auto& [word, rest] : lines) out << word << '\t' << rest << '\n';
  return path;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string corpus =
      argc > 1 ? argv[1] : bench::CorpusPath("simplified.txt");
  std::string phrases =
      argc > 2 ? std::string(argv[2])
               : std::string(QUILLMERE_OUT_DIR) + "/phrasereadings";
  const auto text = bench::ReadFile(corpus);
  if (!text) {
    std::fprintf(stderr, "cannot read %s (bench/make_corpus.sh makes it)\n",
                 corpus.c_str());
    return 2;
  }
  if (!std::filesystem::exists(phrases)) {
    phrases =
        MakeStandIn(*text, (std::filesystem::temp_directory_path() /
                            ("quillmere-phrasereadings-from-" +
                             std::filesystem::path(corpus).filename().string()))
                               .string());
  }
  double start = bench::CpuSeconds();
  PhraseTable table;
  if (!table.Open(phrases)) {
    std::fprintf(stderr, "cannot open %s\n", phrases.c_str());
    return 2;
  }
  const double load = bench::CpuSeconds() - start;
  const PhraseTable none;
  double best = 1e300;
  std::size_t covered = 0;
  for (int run = 0; run < 3; ++run) {
    start = bench::CpuSeconds();
    const auto readings = ChooseReadings(*text, table, none);
    best = std::min(best, bench::CpuSeconds() - start);
    covered = static_cast<std::size_t>(std::count_if(
        readings.begin(), readings.end(), [](auto r) { return !r.empty(); }));
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const std::size_t chinese = bench::CountChinese(*text);
  std::printf(
      "phrases=%s entries=%zu skipped=%zu load_seconds=%.4f\n"
      "seconds=%.4f chinese=%zu covered=%zu chars_per_second=%.0f "
      "peak_rss_mib=%.1f\n",
      phrases.c_str(), table.size(), table.skippedLines(), load, best, chinese,
      covered, static_cast<double>(chinese) / best,
      static_cast<double>(usage.ru_maxrss) / 1024.0);
  return 0;
}
