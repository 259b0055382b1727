#!/usr/bin/env bash
# Checks that every include of the program's own headers points down the
# layers, and that Qt is included in windows/ alone:
#
#   text, platform                     lowest
#   settings, romanization, script, tokenizer
#   readings
#   lookup
#   export
#   cli, windows                       on top
#
#   scripts/check-layers.sh [SOURCE_DIR]
set -euo pipefail
cd "${1:-$(dirname "$0")/..}"

low="text platform"
middle="$low settings romanization script"
declare -A allowed=(
  [text]="text"
  [platform]="platform"
  [settings]="$low settings"
  [romanization]="$low romanization"
  [script]="$low script"
  [tokenizer]="$low tokenizer"
  [readings]="$middle readings"
  [lookup]="$middle readings lookup"
  [export]="$middle readings lookup export"
  [cli]="$middle readings lookup export cli"
  [windows]="$middle readings lookup export windows"
)

status=0
for folder in "${!allowed[@]}"; do
  [ -d "$folder" ] || continue
  while IFS= read -r line; do
    file=${line%%:*}
    target=$(sed -E 's/.*#include "([^/"]+)\/.*/\1/' <<<"$line")
    case " ${allowed[$folder]} " in
      *" $target "*) ;;
      *)
        echo "$file includes $target/, above its layer" >&2
        status=1
        ;;
    esac
  done < <(grep -rHE '^#include "[^/"]+/' "$folder" --include='*.cpp' --include='*.hpp' || true)
  if [ "$folder" != windows ]; then
    if grep -rHE '^#include <Q' "$folder" --include='*.cpp' --include='*.hpp' >&2; then
      echo "Qt is included outside windows/" >&2
      status=1
    fi
  fi
done
[ -d app ] && { echo "app/ is back" >&2; status=1; }
exit $status
