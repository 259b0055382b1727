#!/usr/bin/env bash
# Compares the results of quillmere-cli at an earlier commit with those of
# the present tree, byte for byte: the result (--raw) and both exports
# (--export text, --export html), on real Chinese text, under every
# combination of mode, systems, tones, tone numbers, readings and
# segmentation. Both programs read the same data files, those of the present
# tree, so that only the code is compared.
#
#   scripts/compare-results.sh [BASE]   (default: 2c73049)
#
# The earlier commit is built once in a temporary git worktree and kept in
# build-compare/ for the next run; the present tree is built in
# ${BUILD:-build}. The text is the manual-page corpus of bench/make_corpus.sh:
# 8 KB of it (Simplified and Traditional) for the 2,304 combinations, and
# the whole of it (a few MB) for four runs.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
base=$(git rev-parse --verify "${1:-2c73049}^{commit}")
build=${BUILD:-build}
work=$root/build-compare
mkdir -p "$work"

# The earlier commit's quillmere-cli.
base_build=$work/base-$base
if [ ! -x "$base_build/out/quillmere-cli" ]; then
  source=$(mktemp -d)
  git worktree add --detach "$source" "$base" >/dev/null 2>&1
  cmake -S "$source" -B "$base_build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUILLMERE_GUI=OFF -DQUILLMERE_TESTS=OFF >/dev/null
  built=0
  cmake --build "$base_build" --target quillmere-cli -j 2 >/dev/null || built=$?
  git worktree remove --force "$source"
  [ "$built" -eq 0 ] || exit "$built"
fi

# The present tree's quillmere-cli and the Tokenizer both of them run.
if [ ! -f "$build/CMakeCache.txt" ]; then
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUILLMERE_GUI=OFF >/dev/null
fi
cmake --build "$build" --target quillmere-cli Tokenizer -j 2 >/dev/null
old=$base_build/out/quillmere-cli
new=$build/out/quillmere-cli
data=(--table "$root/data/zhuyintable" --sttable "$root/data/STTABLE"
  --tokenizer "$(cd "$build/out" && pwd)/Tokenizer")
# Each program segments in a temporary folder of its own, so that the two
# can run side by side and nothing else shares their file.
temporary=$(mktemp -d)
mkdir -m 700 "$temporary/old" "$temporary/new"
trap 'rm -rf "$temporary"' EXIT

# The text.
corpus=$work/corpus
[ -f "$corpus/traditional.txt" ] || sh bench/make_corpus.sh "$corpus" >/dev/null
sample=$work/sample.txt
{ head -c 4000 "$corpus/simplified.txt"; head -c 4000 "$corpus/traditional.txt"; } >"$sample"
whole=$work/whole.txt
cat "$corpus/simplified.txt" "$corpus/traditional.txt" >"$whole"

runs=0
# Runs both programs side by side with the same arguments and stops at the
# first difference, saying which arguments gave it.
same() {
  local a=0 b=0
  XDG_RUNTIME_DIR=$temporary/old "$old" "${data[@]}" "$@" >"$temporary/a" &
  XDG_RUNTIME_DIR=$temporary/new "$new" "${data[@]}" "$@" >"$temporary/b" || b=$?
  wait $! || a=$?
  runs=$((runs + 1))
  if [ "$a" != "$b" ] || ! cmp -s "$temporary/a" "$temporary/b"; then
    echo "DIFFERENT: quillmere-cli $*" >&2
    exit 1
  fi
}

echo "Comparing $(git rev-parse --short "$base") with the present tree"
for mode in converter dictionary; do
  for bits in $(seq 0 31); do
    systems=""
    for position in 4 3 2 1 0; do systems+=$(((bits >> position) & 1)); done
    for tones in "" --no-tones; do
      for numbers in "" --numbers; do
        for single in "" --single; do
          for segment in "" --segment; do
            options=(--mode "$mode" --systems "$systems" $tones $numbers $single $segment)
            same "${options[@]}" --raw -i "$sample"
            same "${options[@]}" --export text -i "$sample"
            # The page ignores mode and segmentation: once per other setting.
            if [ "$mode" = converter ] && [ -z "$segment" ]; then
              same "${options[@]}" --export html -i "$sample"
            fi
          done
        done
      done
    done
  done
done
echo "$runs combinations on $(wc -c <"$sample") bytes: the same"
same --raw -i "$whole"
same --export text -i "$whole"
same --export html -i "$whole"
same --raw --segment --numbers -i "$whole"
echo "All outputs on $(wc -c <"$whole") bytes: the same"
