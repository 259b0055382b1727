// The look-up engine alone: loads the table, reads the text, then times only
// LookUp, the best of a few runs. For bench/compare.
//
//   quillmere-engine-loop FILE [SYSTEMS [RUNS]]
//   -> seconds=0.0123 chinese=797224 result_bytes=4567890
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/Corpus.hpp"

int main(int argc, char** argv) {
  using namespace quill;
  if (argc < 2) {
    std::fprintf(stderr,
                 "usage: quillmere-engine-loop FILE [SYSTEMS [RUNS]]\n");
    return 2;
  }
  const std::string systems = argc > 2 ? argv[2] : "11111";
  const int runs = argc > 3 ? std::max(1, std::atoi(argv[3])) : 3;
  const auto text = bench::ReadFile(argv[1]);
  if (!text) {
    std::fprintf(stderr, "cannot read %s\n", argv[1]);
    return 2;
  }
  LookUpEngine engine(bench::BuildDataFiles());
  if (!engine.LoadTable()) {
    std::fprintf(stderr, "no zhuyintable in %s\n", QUILLMERE_OUT_DIR);
    return 3;
  }
  const LookUpSettings settings = bench::BenchSettings(systems, false);
  double best = 1e300;
  std::size_t resultBytes = 0;
  for (int run = 0; run < runs; ++run) {
    const double start = quill::bench::CpuSeconds();
    const auto result = engine.LookUp(*text, settings);
    best = std::min(best, quill::bench::CpuSeconds() - start);
    resultBytes = result.text.size();
  }
  std::printf("seconds=%.6f chinese=%zu result_bytes=%zu\n", best,
              bench::CountChinese(*text), resultBytes);
  return 0;
}
