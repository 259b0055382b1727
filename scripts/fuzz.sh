#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for a while on its corpus.
#   scripts/fuzz.sh [SECONDS] [TARGET...]    (default: 20 seconds, all)
# The working corpus grows in build-fuzz/corpus/TARGET, seeded from
# tests/fuzz/corpus/TARGET; a crash leaves its input in build-fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(lookup readingtable romanization stconvert exportpage tokenizer preferences readings)

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLMERE_FUZZ=ON \
  -DQUILLMERE_GUI=OFF -DQUILLMERE_TESTS=OFF -DQUILLMERE_WERROR=ON >/dev/null
cmake --build build-fuzz -j "$(nproc)" --target "${targets[@]/#/fuzz_}"

mkdir -p build-fuzz/findings
status=0
for t in "${targets[@]}"; do
  corpus=build-fuzz/corpus/$t
  mkdir -p "$corpus"
  [ -d "tests/fuzz/corpus/$t" ] && cp -n tests/fuzz/corpus/$t/* "$corpus"/ 2>/dev/null || true
  echo "== fuzz_$t for ${seconds}s"
  if ! build-fuzz/fuzz/fuzz_$t "$corpus" -max_total_time="$seconds" \
      -max_len=4096 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix=build-fuzz/findings/$t- 2>build-fuzz/fuzz-$t.log; then
    status=1
    tail -40 build-fuzz/fuzz-$t.log
  fi
  grep -E '^stat::(number_of_executed_units|peak_rss_mb)|cov:' build-fuzz/fuzz-$t.log |
    tail -3 || true
done
exit $status
