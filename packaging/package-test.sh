#!/usr/bin/env bash
# Package test, for CI. It changes the system: run it on a disposable machine.
#   1. builds the Debian package with packaging/build-package.sh;
#   2. checks its control fields: library dependencies found by
#      dpkg-shlibdeps, the CJK font recommended;
#   3. installs it with apt-get, which must satisfy every dependency;
#   4. runs quillmere-cli 中文 from the PATH in /tmp and checks the result;
#   5. removes the package and checks that none of its files is left, nor
#      /usr/lib/quillmere.
set -euo pipefail
cd "$(dirname "$0")/.."
step() { echo "== $*"; }
die() { echo "package-test: FAIL: $*" >&2; exit 1; }
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)

step "Build the Debian package"
package=$(packaging/build-package.sh "${1:-build}" | tail -n 1)
package=$(realpath "$package")
echo "$package"
[[ $(basename "$package") =~ ^quillmere_[0-9][^_]*_[a-z0-9]+\.deb$ ]] ||
  die "unexpected file name $(basename "$package")"

step "Check the control fields"
dpkg-deb -f "$package" Package Version Architecture Section Maintainer Depends Recommends
depends=$(dpkg-deb -f "$package" Depends)
[[ $depends == *libc6* && $depends == *libstdc++6* ]] ||
  die "Depends lacks the libraries that dpkg-shlibdeps finds: '$depends'"
files=$(dpkg-deb -c "$package" | awk '{ print $6 }' | sed 's|^\./|/|')
if grep -qx /usr/lib/quillmere/quillmere <<<"$files"; then
  [[ $depends == *libqt6widgets6* && $depends == *qt6-qpa-plugins* ]] ||
    die "the window application needs Qt 6 Widgets and its display plug-ins: '$depends'"
fi
[[ $(dpkg-deb -f "$package" Recommends) == *fonts-noto-cjk* ]] ||
  die "no CJK font recommended"
for data in zhuyintable STTABLE; do
  if [ -e "data/$data" ]; then
    grep -qx "/usr/lib/quillmere/$data" <<<"$files" || die "$data is not in the package"
  fi
done

step "Install it with apt-get"
# Without recommends, so that the test stays quick and needs no download
# beyond what the dependencies need.
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq \
  -o Dpkg::Use-Pty=0 --no-install-recommends "$package"

step "Run quillmere-cli 中文 from the PATH in /tmp"
[ "$(command -v quillmere-cli)" = /usr/bin/quillmere-cli ] ||
  die "quillmere-cli is not on the PATH as /usr/bin/quillmere-cli"
set +e
result=$(cd /tmp && quillmere-cli 中文)
status=$?
set -e
echo "$result"
if [ -e /usr/lib/quillmere/zhuyintable ]; then
  [ $status = 0 ] || die "quillmere-cli exited with $status"
  grep -q 'ㄓㄨㄥ' <<<"$result" || die "no Zhuyin ㄓㄨㄥ for 中 in the result"
else
  [ $status = 3 ] || die "without zhuyintable quillmere-cli must exit 3, not $status"
fi
man -w quillmere-cli >/dev/null || die "man quillmere-cli finds no page"

step "Remove it"
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get remove -y -qq -o Dpkg::Use-Pty=0 quillmere
left=$(while read -r f; do
  [ -e "$f" ] || [ -L "$f" ] || continue
  [ -d "$f" ] && [ ! -L "$f" ] && continue  # shared folders such as /usr/bin
  echo "$f"
done <<<"$files")
[ -z "$left" ] || die "files left behind: $left"
[ ! -e /usr/lib/quillmere ] || die "/usr/lib/quillmere is left behind"

echo "package-test: ok ($(basename "$package") installs, runs and removes cleanly)"
