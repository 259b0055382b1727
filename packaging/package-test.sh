#!/usr/bin/env bash
# Package test, for CI. It changes the system: run it on a disposable machine.
#   1. builds the Debian package with packaging/build-package.sh;
#   2. checks its control fields: library dependencies found by
#      dpkg-shlibdeps, the CJK font recommended;
#   3. checks that its copyright file parses and names every data file, that
#      its changelog's latest entry is the package's version, and checks the
#      package with lintian, which must report no error and no warning;
#   4. installs it with apt-get, which must satisfy every dependency;
#   5. runs quillmere-cli 中文 from the PATH in /tmp and checks the result;
#   6. removes the package and checks that none of its files is left, nor
#      /usr/lib/quillmere.
set -euo pipefail
cd "$(dirname "$0")/.."
step() { echo "== $*"; }
die() { echo "package-test: FAIL: $*" >&2; exit 1; }
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)

step "Build the Debian package"
package=$(packaging/build-package.sh "${1:-build-package}" | tail -n 1)
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

source scripts/deps.sh
quillmere_install_deps lintian python3-debian

step "Check the copyright file"
# lintian reads the machine-readable format of copyright files only in source
# packages, so the package's own file is parsed here: strictly, every licence
# named has its text, and every data file beside the programs has a paragraph
# of its own that says where it comes from.
data=$(dpkg-deb -c "$package" | awk '$1 !~ /x/ && $6 ~ "^./usr/lib/quillmere/." { print $6 }' |
  sed 's|^\./usr/lib/quillmere/|data/|')
[ -n "$data" ] || die "no data files in /usr/lib/quillmere"
copyright=$(mktemp)
trap 'rm -f "$copyright"' EXIT
dpkg-deb --fsys-tarfile "$package" | tar -xO ./usr/share/doc/quillmere/copyright >"$copyright" ||
  die "no /usr/share/doc/quillmere/copyright in the package"
# The system's Python, which python3-debian belongs to.
/usr/bin/python3 - "$copyright" $data <<'PY' || die "the copyright file is incomplete"
import sys
from debian import copyright

with open(sys.argv[1], encoding="utf-8") as f:
    doc = copyright.Copyright(f, strict=True)
texts = {p.license.synopsis for p in doc.all_license_paragraphs()}
ok = True
for paragraph in doc.all_files_paragraphs():
    license = paragraph.license
    for name in license.synopsis.replace(" or ", " and ").split(" and "):
        if not license.text and name.strip() not in texts:
            print(f"no text for licence {name!r} of {' '.join(paragraph.files)}")
            ok = False
for file in sys.argv[2:]:
    paragraph = doc.find_files_paragraph(file)
    if paragraph is None or paragraph.files == ("*",):
        print(f"no paragraph for {file}")
        ok = False
    else:
        print(f"{file}: {paragraph.license.synopsis}")
sys.exit(0 if ok else 1)
PY

step "Check the changelog"
# packaging/changelog is written by hand: its latest entry must be the
# version that CMakeLists.txt gives the package.
version=$(dpkg-deb -f "$package" Version)
latest=$(dpkg-deb --fsys-tarfile "$package" | tar -xO ./usr/share/doc/quillmere/changelog.gz |
  gzip -dc | dpkg-parsechangelog -l - -S Version) || die "changelog.gz can't be read"
[ "$latest" = "$version" ] ||
  die "the latest entry of packaging/changelog is $latest, the package is $version"

step "Check it with lintian"
# Errors and warnings fail, and the package overrides none. Notes (I:) are
# shown but pass.
lintian --display-info --fail-on error,warning "$package" || die "lintian reports errors or warnings"

step "Install it with apt-get"
# Without recommends, so that the test stays quick and needs no download
# beyond what the dependencies need. Another apt-get that is running is
# waited for.
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq \
  -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=600 --no-install-recommends "$package"

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
DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get remove -y -qq \
  -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=600 quillmere
left=$(while read -r f; do
  [ -e "$f" ] || [ -L "$f" ] || continue
  [ -d "$f" ] && [ ! -L "$f" ] && continue  # shared folders such as /usr/bin
  echo "$f"
done <<<"$files")
[ -z "$left" ] || die "files left behind: $left"
[ ! -e /usr/lib/quillmere ] || die "/usr/lib/quillmere is left behind"

echo "package-test: ok ($(basename "$package") installs, runs and removes cleanly)"
