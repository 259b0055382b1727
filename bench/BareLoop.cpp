// The bar for the look-up engine: the plainest converter there is. Decode
// UTF-8, look each character up in a hash map of Hanyu Pinyin, append the
// syllable and a blank (anything else is copied). Only the loop is timed,
// the best of a few runs.
//
//   quillmere-bare-loop FILE [RUNS]
//   -> seconds=0.0123 chinese=797224 result_bytes=4567890
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unordered_map>

#include "bench/Corpus.hpp"
#include "romanization/Romanization.hpp"
#include "text/TextOps.hpp"

namespace {

// Character -> Hanyu Pinyin of its first reading, from zhuyintable.
std::unordered_map<char32_t, std::string> PinyinMap(const std::string& dict) {
  std::unordered_map<char32_t, std::string> map;
  const quill::ToneSettings tones{"1", "0", "0"};
  for (std::size_t start = 0; start < dict.size();) {
    std::size_t end = dict.find('\n', start);
    if (end == std::string::npos) end = dict.size();
    const std::string_view line(dict.data() + start, end - start);
    start = end + 1;
    if (line.size() <= 6) continue;
    const std::string_view readings = line.substr(6);
    std::string pinyin = quill::ZhuyinToPinyin(readings, tones);
    if (pinyin.empty()) pinyin = readings.substr(0, readings.find("  "));
    map.emplace(quill::DecodeChar(line, 0).code, std::move(pinyin));
  }
  return map;
}

std::string Convert(const std::string& text,
                    const std::unordered_map<char32_t, std::string>& map) {
  std::string out;
  out.reserve(text.size() * 2);
  for (std::size_t pos = 0; pos < text.size();) {
    const quill::Utf8Char c = quill::DecodeChar(text, pos);
    const auto it = map.find(c.code);
    if (it != map.end()) {
      out += it->second;
      out += ' ';
    } else {
      out.append(text, pos, c.length);
    }
    pos += c.length;
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: quillmere-bare-loop FILE [RUNS]\n");
    return 2;
  }
  const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
  const auto text = quill::bench::ReadFile(argv[1]);
  const auto dict =
      quill::bench::ReadFile(quill::bench::BuildDataFiles().zhuyintable);
  if (!text || !dict) {
    std::fprintf(stderr, "cannot read the text or zhuyintable\n");
    return 2;
  }
  const auto map = PinyinMap(*dict);
  double best = 1e300;
  std::size_t resultBytes = 0;
  for (int run = 0; run < runs; ++run) {
    const double start = quill::bench::CpuSeconds();
    const std::string out = Convert(*text, map);
    best = std::min(best, quill::bench::CpuSeconds() - start);
    resultBytes = out.size();
  }
  std::printf("seconds=%.6f chinese=%zu result_bytes=%zu\n", best,
              quill::bench::CountChinese(*text), resultBytes);
  return 0;
}
