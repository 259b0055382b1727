// Tokenizer: characters segmented per second, in process and as the tool
// that the look-up starts, and agreement with a segmentation made by hand
// (tests/data/tokenizer/reference.txt: one sentence a line, words separated
// by blanks).
//
//   cmake -S . -B build -G Ninja -DQUILLMERE_BENCH=ON
//   ninja -C build tokenizer_bench && build/bench/tokenizer_bench
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "platform/Platform.hpp"
#include "text/TextOps.hpp"
#include "tokenizer/Lexicon.hpp"
#include "tokenizer/Segmenter.hpp"

namespace {

const std::string kTool = QUILLMERE_OUT_DIR "/Tokenizer";

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string Reference() {
  return ReadFile(QUILLMERE_TEST_DATA "/tokenizer/reference.txt");
}

std::string WithoutBlanks(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c != ' ') out += c;
  }
  return out;
}

// Character positions, in the text without blanks, where a word ends
// inside a line.
std::set<std::size_t> Boundaries(const std::string& segmented) {
  std::set<std::size_t> out;
  std::size_t chars = 0;
  for (std::size_t pos = 0; pos < segmented.size();) {
    const auto c = quill::DecodeChar(segmented, pos);
    pos += c.length;
    if (c.code == ' ') {
      out.insert(chars);
    } else {
      ++chars;
    }
  }
  return out;
}

struct Agreement {
  double precision = 0, recall = 0, f1 = 0;
};

Agreement Compare(const std::string& reference, const std::string& output) {
  const auto want = Boundaries(reference), got = Boundaries(output);
  std::size_t both = 0;
  for (std::size_t b : got) both += want.count(b);
  Agreement a;
  a.precision = got.empty() ? 0 : double(both) / double(got.size());
  a.recall = want.empty() ? 0 : double(both) / double(want.size());
  a.f1 = a.precision + a.recall > 0
             ? 2 * a.precision * a.recall / (a.precision + a.recall)
             : 0;
  return a;
}

// Segmentation in process, the word list loaded once.
void BM_Segment(benchmark::State& state) {
  quill::Lexicon lexicon;
  std::string error;
  if (!lexicon.Load(QUILLMERE_OUT_DIR "/tokenizerlexicon", &error)) {
    state.SkipWithError(error.c_str());
    return;
  }
  const std::string reference = Reference();
  const std::string text = WithoutBlanks(reference);
  std::string out;
  for (auto _ : state) {
    out = quill::Segment(text, lexicon);
    benchmark::DoNotOptimize(out.data());
  }
  const double chars = static_cast<double>(quill::Len(text));
  state.counters["chars/s"] =
      benchmark::Counter(chars * static_cast<double>(state.iterations()),
                         benchmark::Counter::kIsRate);
  const Agreement a = Compare(reference, out);
  state.counters["precision"] = a.precision;
  state.counters["recall"] = a.recall;
  state.counters["F1"] = a.f1;
}
BENCHMARK(BM_Segment)->Unit(benchmark::kMicrosecond);

double ChildrenCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// The tool as the look-up runs it: start, load the word list, segment a
// page of text (the reference, about 450 characters, four times over).
void BM_ToolRun(benchmark::State& state) {
  char folder[] = "/tmp/quill-bench-XXXXXX";
  if (!mkdtemp(folder)) {
    state.SkipWithError("no temporary folder");
    return;
  }
  const std::string input = std::string(folder) + "/page";
  const std::string once = WithoutBlanks(Reference());
  std::string page;
  for (int i = 0; i < 4; ++i) page += once;
  std::ofstream(input, std::ios::binary) << page;
  const std::string command =
      quill::ShellQuote(kTool) + " " + quill::ShellQuote(input) + " >/dev/null";
  const double before = ChildrenCpuSeconds();
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) {
      state.SkipWithError("the tool failed");
      break;
    }
  }
  // The tool's own processor time (with its shell's): the wall time depends
  // on what else the machine is doing.
  const double seconds = ChildrenCpuSeconds() - before;
  const double runs = static_cast<double>(state.iterations());
  std::remove(input.c_str());
  rmdir(folder);
  state.counters["tool_cpu_ms"] = seconds * 1000 / runs;
  state.counters["chars/cpu_s"] =
      static_cast<double>(quill::Len(page)) * runs / seconds;
}
BENCHMARK(BM_ToolRun)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
