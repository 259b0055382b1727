#!/usr/bin/env bash
# Builds the Debian package of Quillmere with CPack and prints its path:
# BUILD_DIR/package/quillmere_VERSION_ARCH.deb (BUILD_DIR defaults to
# build-package). The package is built in a folder of its own, with the
# window application, without the tests, and with the hardening flags of
# Debian's packages, so that the build folder of ./test and ./run keeps its
# own flags and no rebuild of it is needed for the package.
#
# Usage: packaging/build-package.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-package}

source scripts/deps.sh
# dpkg-dev: dpkg-shlibdeps works out the library dependencies; file: CPack
# finds the executables with it; librsvg2-bin: the icons are rendered from SVG.
quillmere_install_deps dpkg-dev file librsvg2-bin

# The compiler and linker flags of Debian's own packages (dpkg-buildflags):
# stack protector, _FORTIFY_SOURCE, format checks, read-only relocations and
# immediate binding. -O2 -g come with them, as with RelWithDebInfo.
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
cxxflags="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
ldflags=$(dpkg-buildflags --get LDFLAGS)

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQUILLMERE_GUI=ON \
  -DQUILLMERE_TESTS=OFF -DCMAKE_CXX_FLAGS="$cxxflags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags" >/dev/null
cmake --build "$build" -j "$(nproc)" >/dev/null
rm -f "$build"/package/quillmere_*.deb
(cd "$build" && cpack -G DEB >/dev/null)

package=$(ls "$build"/package/quillmere_*.deb)
echo "$package"
