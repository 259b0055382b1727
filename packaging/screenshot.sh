#!/usr/bin/env bash
# Takes the pictures of the README: docs/screenshot.png, the Quillmere window
# with a real result, and docs/preferences.png, the preferences window. Under
# a virtual X display (xvfb-run) it starts BUILD_DIR/out/quillmere with fresh
# settings, types TEXT with xdotool, presses Return, captures the window with
# ImageMagick's import, then opens Edit > Preferences... and captures that.
#
# Usage: packaging/screenshot.sh [BUILD_DIR] [TEXT]   (defaults: build, 中文)
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1:-}" = --inside-xvfb ]; then
  app=$2 text=$3 output=$4 preferences=$5
  # Fresh settings, so that the picture shows the defaults (all five systems)
  # and leaves the user's own alone.
  XDG_CONFIG_HOME=$(mktemp -d) XDG_RUNTIME_DIR=$(mktemp -d)
  export XDG_CONFIG_HOME XDG_RUNTIME_DIR
  # A window tall enough to show all five blocks of the result.
  printf '%s\n' '<?xml version="1.0" encoding="UTF-8"?>' \
    '<root><MainWindowWidth>420</MainWindowWidth><MainWindowHeight>820</MainWindowHeight></root>' \
    >"$XDG_CONFIG_HOME/Quillmere Preferences"
  "$app" &
  pid=$!
  trap 'kill $pid 2>/dev/null; rm -rf "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"' EXIT
  window=$(timeout 30 xdotool search --sync --onlyvisible --name '^Quillmere$' | head -n 1)
  [ -n "$window" ] || { echo "screenshot: no Quillmere window appeared" >&2; exit 1; }
  # No window manager runs here: give the window the keyboard ourselves, and
  # let it paint before typing.
  xdotool windowfocus --sync "$window"
  sleep 1
  # The input field has the focus at start; a click into it makes sure.
  xdotool mousemove --window "$window" 130 70 click 1
  xdotool type --delay 200 "$text"
  xdotool key Return
  sleep 2
  import -window "$window" "$output"
  xdotool key ctrl+comma
  prefs=$(timeout 30 xdotool search --sync --onlyvisible --name '^Quillmere Preferences$' | head -n 1)
  [ -n "$prefs" ] || { echo "screenshot: no Preferences window appeared" >&2; exit 1; }
  sleep 1
  import -window "$prefs" "$preferences"
  exit 0
fi

build=${1:-build}
text=${2:-中文}
app=$(realpath "$build/out/quillmere" 2>/dev/null || true)
if [ ! -x "$app" ]; then
  echo "screenshot: no $build/out/quillmere; build with -DQUILLMERE_GUI=ON first" >&2
  exit 1
fi
source scripts/deps.sh
quillmere_install_deps xvfb xauth xdotool imagemagick fonts-noto-cjk
mkdir -p docs
xvfb-run -a -s "-screen 0 1280x1024x24" \
  "$0" --inside-xvfb "$app" "$text" "$PWD/docs/screenshot.png" \
  "$PWD/docs/preferences.png"
echo "docs/screenshot.png docs/preferences.png"
