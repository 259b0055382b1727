// The look-up engine on the corpus: all five systems, tones as marks, all
// readings, converter mode. Rates are Chinese characters per second.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <string>

#include "bench/Corpus.hpp"

namespace quill::bench {
namespace {

const char* const kScripts[] = {"traditional", "simplified"};
const char* const kSizes[] = {"1k", "100k", "1m", "10m"};

// Corpus files are read once for all benchmarks.
const std::string* Corpus(const std::string& name) {
  static std::map<std::string, std::optional<std::string>> cache;
  auto it = cache.find(name);
  if (it == cache.end())
    it = cache.emplace(name, ReadFile(CorpusPath(name))).first;
  return it->second ? &*it->second : nullptr;
}

// One engine with its table loaded, as after the first look-up of a session.
LookUpEngine& WarmEngine() {
  static LookUpEngine engine(BuildDataFiles());
  return engine;
}

void SetRate(benchmark::State& state, const std::string& text) {
  const auto chinese = static_cast<double>(CountChinese(text));
  state.counters["chars/s"] =
      benchmark::Counter(chinese * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(text.size()));
}

void BM_LookUp(benchmark::State& state, const std::string& corpus,
               const std::string& systems, bool segmented) {
  const std::string* text = Corpus(corpus);
  if (text == nullptr) {
    state.SkipWithError("no corpus: run bench/make_corpus.sh");
    return;
  }
  if (segmented && !std::filesystem::exists(BuildDataFiles().tokenizer)) {
    state.SkipWithError("no Tokenizer in the build's out folder");
    return;
  }
  LookUpEngine& engine = WarmEngine();
  if (!engine.LoadTable()) {
    state.SkipWithError("no zhuyintable in the build's out folder");
    return;
  }
  const LookUpSettings settings = BenchSettings(systems, segmented);
  for (auto _ : state) {
    auto result = engine.LookUp(*text, settings);
    benchmark::DoNotOptimize(result.text.data());
  }
  SetRate(state, *text);
}

// The first look-up of a session: reading zhuyintable and indexing it.
void BM_FirstLookUp(benchmark::State& state) {
  const LookUpSettings settings = BenchSettings("11111", false);
  for (auto _ : state) {
    LookUpEngine engine(BuildDataFiles());
    auto result = engine.LookUp("中", settings);
    if (result.outcome != LookUpEngine::Outcome::kShown) {
      state.SkipWithError("no zhuyintable in the build's out folder");
      return;
    }
    benchmark::DoNotOptimize(result.text.data());
  }
}
BENCHMARK(BM_FirstLookUp)->Unit(benchmark::kMillisecond);

// Registers every size and script, with and without segmentation, for all
// five systems; Hanyu Pinyin alone for comparison with one-system tools.
const bool kRegistered = [] {
  for (const char* segment : {"", "/segmented"}) {
    for (const char* script : kScripts) {
      for (const char* size : kSizes) {
        const std::string corpus = std::string(script) + "-" + size + ".txt";
        const bool segmented = *segment != '\0';
        benchmark::RegisterBenchmark(
            ("LookUp/all5/" + std::string(script) + "/" + size + segment)
                .c_str(),
            BM_LookUp, corpus, "11111", segmented)
            ->Unit(benchmark::kMillisecond);
      }
    }
  }
  for (const char* script : kScripts) {
    for (const char* size : kSizes) {
      const std::string corpus = std::string(script) + "-" + size + ".txt";
      benchmark::RegisterBenchmark(
          ("LookUp/pinyin/" + std::string(script) + "/" + size).c_str(),
          BM_LookUp, corpus, "10000", false)
          ->Unit(benchmark::kMillisecond);
    }
  }
  return true;
}();

}  // namespace
}  // namespace quill::bench
