#include "bench/Corpus.hpp"

#include <ctime>
#include <fstream>
#include <iterator>

#include "text/TextOps.hpp"

namespace quill::bench {

std::optional<std::string> ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string((std::istreambuf_iterator<char>(in)),
                     std::istreambuf_iterator<char>());
}

std::string CorpusPath(const std::string& name) {
  return std::string(QUILLMERE_CORPUS_DIR) + "/" + name;
}

DataFiles BuildDataFiles() {
  const std::string out = QUILLMERE_OUT_DIR;
  DataFiles files;
  files.zhuyintable = out + "/zhuyintable";
  files.sttable = out + "/STTABLE";
  files.tokenizer = out + "/Tokenizer";
  files.phrasereadings = out + "/phrasereadings";
  files.phrasereadingsTw = out + "/phrasereadings-tw";
  files.taiwanreadings = out + "/taiwanreadings";
  return files;
}

std::size_t CountChinese(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t pos = 0; pos < text.size();) {
    const Utf8Char c = DecodeChar(text, pos);
    pos += c.length;
    if ((c.code >= 0x3400 && c.code <= 0x9FFF) ||
        (c.code >= 0xF900 && c.code <= 0xFAFF) ||
        (c.code >= 0x20000 && c.code <= 0x3FFFF)) {
      ++count;
    }
  }
  return count;
}

double CpuSeconds() {
  timespec t{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

LookUpSettings BenchSettings(const std::string& systems, bool segmented) {
  LookUpSettings settings;
  settings.mode = Mode::kConverter;
  settings.PinyinSystemsPrefValue = systems;
  settings.tones.indicateTonesPrefValue = "1";
  settings.tones.UseToneNumbersPrefValue = "0";
  settings.tones.ShowMultipleReadingsPrefValue = "1";
  settings.segmentation = segmented;
  return settings;
}

}  // namespace quill::bench
