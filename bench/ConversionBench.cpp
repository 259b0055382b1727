// Each conversion routine alone, over reading strings as zhuyintable holds
// them: a fixed spread through every row group, and every entry of the table.
// Rates count one reading string (one character) as one char.
#include <benchmark/benchmark.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/Corpus.hpp"
#include "romanization/Romanization.hpp"
#include "script/STConvert.hpp"

namespace quill::bench {
namespace {

// Initials, medials, every final, all five tones, one to three readings.
const std::vector<std::string> kSpread = {
    "ㄓㄨㄥ  ㄓㄨㄥˋ",
    "ㄨㄣˊ",
    "ㄧ",
    "ㄩㄝˋ",
    "ㄌㄩˇ",
    "ㄦˊ",
    "ㄇㄚ˙",
    "ㄒㄧㄢ",
    "ㄉㄜ˙  ㄉㄧˊ  ㄉㄧˋ",
    "ㄓ",
    "ㄔˇ",
    "ㄕˋ",
    "ㄖˋ",
    "ㄗ˙",
    "ㄘˊ",
    "ㄙ",
    "ㄅㄠˇ",
    "ㄆㄞˊ",
    "ㄈㄟ",
    "ㄊㄡˊ",
    "ㄋㄧㄤˊ",
    "ㄍㄨㄛˊ",
    "ㄎㄨㄞˋ",
    "ㄏㄨㄤˊ",
    "ㄐㄩㄥˇ",
    "ㄑㄩㄢˊ",
    "ㄏㄥˊ",
    "ㄨㄛˇ",
    "ㄧㄣ",
    "ㄩㄣˊ",
    "ㄋㄩˇ",
    "ㄝˊ",
    "ㄛ  ㄛˊ",
    "ㄜˋ  ㄜˇ",
    "ㄞ  ㄞˊ",
    "ㄢˋ",
};

// Every distinct reading string of zhuyintable, or the spread without it.
const std::vector<std::string>& TableReadings() {
  static const std::vector<std::string> readings = [] {
    std::set<std::string> distinct;
    LookUpEngine engine(BuildDataFiles());
    if (engine.LoadTable()) {
      const std::string& dict = engine.table().DictContent();
      for (std::size_t start = 0; start < dict.size();) {
        std::size_t end = dict.find('\n', start);
        if (end == std::string::npos) end = dict.size();
        if (end - start > 6) distinct.emplace(dict, start + 6, end - start - 6);
        start = end + 1;
      }
    }
    return distinct.empty()
               ? kSpread
               : std::vector<std::string>(distinct.begin(), distinct.end());
  }();
  return readings;
}

ToneSettings Marks() { return {"1", "0", "1"}; }

using Conversion = std::string (*)(std::string_view, const ToneSettings&);

void BM_Convert(benchmark::State& state, Conversion convert, bool wholeTable) {
  const std::vector<std::string>& readings =
      wholeTable ? TableReadings() : kSpread;
  const ToneSettings tones = Marks();
  for (auto _ : state) {
    for (const std::string& reading : readings) {
      auto out = convert(reading, tones);
      benchmark::DoNotOptimize(out.data());
    }
  }
  state.counters["chars/s"] =
      benchmark::Counter(static_cast<double>(readings.size()) *
                             static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}

const bool kConversionsRegistered = [] {
  const std::pair<const char*, Conversion> conversions[] = {
      {"ZhuyinToPinyin", ZhuyinToPinyin},
      {"ZhuyinToZhuyin2", ZhuyinToZhuyin2},
      {"ZhuyinToWade", ZhuyinToWade},
      {"ZhuyinToTungyong", ZhuyinToTungyong},
  };
  for (const auto& [name, convert] : conversions) {
    benchmark::RegisterBenchmark((std::string(name) + "/spread").c_str(),
                                 BM_Convert, convert, false);
    benchmark::RegisterBenchmark((std::string(name) + "/table").c_str(),
                                 BM_Convert, convert, true);
  }
  return true;
}();

// The marking routines on syllables with their tone digit last.
const std::vector<std::string> kSyllables = {
    "zhong1", "wen2",   "lü3", "nüe4", "er2", "ma",   "xian1", "guo2",
    "kuai4",  "jiong3", "yu2", "shi4", "zi",  "liu2", "gui4",  "a1"};

template <std::string (*Mark)(std::string_view)>
void BM_Mark(benchmark::State& state) {
  for (auto _ : state) {
    for (const std::string& syllable : kSyllables) {
      auto out = Mark(syllable);
      benchmark::DoNotOptimize(out.data());
    }
  }
  state.counters["chars/s"] =
      benchmark::Counter(static_cast<double>(kSyllables.size()) *
                             static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Mark<AddPinyinToneSymbol>)->Name("AddPinyinToneSymbol");
BENCHMARK(BM_Mark<AddTongYongPinyinToneSymbol>)
    ->Name("AddTongYongPinyinToneSymbol");
BENCHMARK(BM_Mark<AddZhuyin2ToneSymbol>)->Name("AddZhuyin2ToneSymbol");

// One Simplified character to its Traditional search key: the price of a
// miss in the reading table.
void BM_STConvert(benchmark::State& state) {
  STConverter converter(BuildDataFiles().sttable);
  const std::vector<std::string> characters = {"这", "个", "们", "说", "时",
                                               "会", "为", "国", "对", "发"};
  for (auto _ : state) {
    for (const std::string& c : characters) {
      auto out = converter.STConvert(c);
      benchmark::DoNotOptimize(out.data());
    }
  }
  state.counters["chars/s"] =
      benchmark::Counter(static_cast<double>(characters.size()) *
                             static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
}
BENCHMARK(BM_STConvert);

}  // namespace
}  // namespace quill::bench
