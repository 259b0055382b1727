#!/bin/sh
# Renders the page that `quillmere-cli --export html` writes for 中文 in
# headless Chromium and checks that the browser sees a ruby element with an
# rt for each character in each of the five blocks.
#
#   render_page.sh CLI [SCREENSHOT.png]
#
# Skips (exit 0) when Chromium isn't installed.
set -eu

cli=${1:?usage: render_page.sh CLI [SCREENSHOT.png]}
screenshot=${2:-}

browser=$(command -v chromium || command -v chromium-browser || true)
if [ -z "$browser" ]; then
  echo "render_page: skipped, chromium is not installed"
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A table of its own, so the check doesn't depend on the shipped data.
printf '中   ㄓㄨㄥ  ㄓㄨㄥˋ\n文   ㄨㄣˊ\n' >"$work/zhuyintable"
echo 中文 | "$cli" --table "$work/zhuyintable" --sttable "$work/STTABLE" \
  --export html -o "$work/page.html"

run_browser() {
  # Output of the browser's own diagnostics goes to a log, not the test's.
  timeout 120 "$browser" --headless --no-sandbox --disable-gpu \
    --disable-background-networking --disable-component-update \
    --disable-sync --no-first-run --user-data-dir="$work/profile" \
    "$@" "file://$work/page.html" 2>>"$work/browser.log"
}

run_browser --dump-dom >"$work/dom.html"

fail=0
count() { grep -o "$1" "$work/dom.html" | wc -l; }
for character in 中 文; do
  n=$(count "<ruby>$character<rt>")
  if [ "$n" -ne 5 ]; then
    echo "render_page: $character has an rt in $n blocks, not 5"
    fail=1
  fi
done
for block in "Hanyu Pinyin" "Zhuyin 1 (Bopomofo)" "Zhuyin 2" "Wade-Giles" \
  "Tongyong Pinyin"; do
  if [ "$(count "<p>$block<br><br><ruby>")" -ne 1 ]; then
    echo "render_page: no block '$block'"
    fail=1
  fi
done
if ! grep -q '<ruby>中<rt>ㄓㄨㄥ  ㄓㄨㄥˋ</rt></ruby><ruby>文<rt>ㄨㄣˊ</rt></ruby>' \
  "$work/dom.html"; then
  echo "render_page: the Zhuyin 1 block lost its readings"
  fail=1
fi
if [ "$fail" -ne 0 ]; then
  echo "--- DOM as the browser sees it:"
  cat "$work/dom.html"
  exit 1
fi

if [ -n "$screenshot" ]; then
  run_browser --screenshot="$work/shot.png" --window-size=800,600 >/dev/null
  cp "$work/shot.png" "$screenshot"
  echo "render_page: screenshot in $screenshot"
fi
echo "render_page: every character has its rt in all five blocks"
