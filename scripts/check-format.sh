#!/usr/bin/env bash
# Fails, naming the places, when a C++ file of the project is not formatted
# as .clang-format says; `clang-format -i FILE` mends it.
#   scripts/check-format.sh
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -z -co --exclude-standard '*.cpp' '*.hpp' |
  xargs -0 clang-format --style=file --dry-run -Werror
