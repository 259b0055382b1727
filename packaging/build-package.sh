#!/usr/bin/env bash
# Builds the Debian package of Quillmere with CPack and prints its path:
# BUILD_DIR/package/quillmere_VERSION_ARCH.deb (BUILD_DIR defaults to build).
# The build options are those of ./test and ./run (the window application
# included), so that after either of them only the packaging is left to do.
#
# Usage: packaging/build-package.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}

source scripts/deps.sh
# dpkg-dev: dpkg-shlibdeps works out the library dependencies; file: CPack
# finds the executables with it; librsvg2-bin: the icons are rendered from SVG.
quillmere_install_deps dpkg-dev file librsvg2-bin

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLMERE_GUI=ON >/dev/null
cmake --build "$build" -j "$(nproc)" >/dev/null
rm -f "$build"/package/quillmere_*.deb
(cd "$build" && cpack -G DEB >/dev/null)

package=$(ls "$build"/package/quillmere_*.deb)
echo "$package"
