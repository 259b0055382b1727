#!/usr/bin/env bash
# Installs the build into a scratch prefix and checks the installation:
# the layout of lib/quillmere and the links in bin/, a conversion through the
# links from another folder, the desktop entry, the AppStream data, the icons
# and the manual pages.
#
# Usage: install_test.sh BUILD_DIR SOURCE_DIR OUT_DIR "DATA FILE NAMES"
set -uo pipefail

build=$1 source=$2 out=$3
read -r -a data_files <<<"${4:-}"

failures=0
pass() { echo "ok   $*"; }
fail() { echo "FAIL $*"; failures=$((failures + 1)); }
check() { # check DESCRIPTION COMMAND...
  local what=$1; shift
  if "$@"; then pass "$what"; else fail "$what"; fi
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/usr
lib=$prefix/lib/quillmere
export LC_ALL=C.UTF-8
unset DESTDIR  # the scratch prefix is the whole destination

if ! cmake --install "$build" --prefix "$prefix" >"$scratch/install.log" 2>&1; then
  cat "$scratch/install.log"
  fail "cmake --install into a scratch prefix"
  exit 1
fi
pass "cmake --install into a scratch prefix"

# --- Executables in lib/quillmere, commands in bin/ as relative links to them.
gui=0
[ -x "$out/quillmere" ] && gui=1
commands=(quillmere-cli)
[ $gui = 1 ] && commands+=(quillmere)
for command in "${commands[@]}"; do
  check "$command is installed in lib/quillmere" test -x "$lib/$command" -a ! -L "$lib/$command"
  check "bin/$command is a link to ../lib/quillmere/$command" \
    test "$(readlink "$prefix/bin/$command")" = "../lib/quillmere/$command"
  check "bin/$command resolves to the installed program" \
    test "$(readlink -f "$prefix/bin/$command")" = "$(readlink -f "$lib/$command")"
done
if [ $gui = 0 ]; then
  check "no quillmere link without the window application" test ! -e "$prefix/bin/quillmere" -a ! -L "$prefix/bin/quillmere"
fi
if [ -x "$out/Tokenizer" ]; then
  check "Tokenizer is installed beside the programs" test -x "$lib/Tokenizer"
fi

# --- Data files: every one that the build lays beside its executables.
check "the list of data files names zhuyintable and STTABLE" \
  bash -c '[[ " $* " == *" zhuyintable "* && " $* " == *" STTABLE "* ]]' _ "${data_files[@]}"
for file in "${data_files[@]}"; do
  if [ -e "$out/$file" ]; then
    check "data file $file is installed unchanged" cmp -s "$out/$file" "$lib/$file"
  else
    check "data file $file, absent from the build, is not installed" test ! -e "$lib/$file"
  fi
done

# --- A conversion through the link, from another folder, and from the PATH.
elsewhere=$scratch/elsewhere
mkdir -p "$elsewhere"
run_cli() { # run_cli PROGRAM ARGS... -> $rc, $stdout, $stderr
  (cd "$elsewhere" && "$@" >"$scratch/stdout" 2>"$scratch/stderr")
  rc=$?
  stdout=$(cat "$scratch/stdout") stderr=$(cat "$scratch/stderr")
}
if [ -e "$out/zhuyintable" ]; then
  run_cli "$prefix/bin/quillmere-cli" 中文
  check "bin/quillmere-cli 中文 exits 0 (got $rc: $stderr)" test "$rc" = 0
  check "bin/quillmere-cli 中文 gives Zhuyin ㄓㄨㄥ" grep -q 'ㄓㄨㄥ' <<<"$stdout"
  run_cli env PATH="$prefix/bin:/usr/bin:/bin" quillmere-cli 中文
  check "quillmere-cli 中文 from the PATH gives Zhuyin ㄓㄨㄥ" grep -q 'ㄓㄨㄥ' <<<"$stdout"
  # The same program away from the data folder has no table: so the run above
  # found its data through the link, not in the build folder.
  mkdir -p "$scratch/alone"
  cp "$lib/quillmere-cli" "$scratch/alone/"
  run_cli "$scratch/alone/quillmere-cli" 中文
  check "a copy without data files beside it reports the missing table" test "$rc" = 3
  if [ -x "$lib/Tokenizer" ]; then
    run_cli "$prefix/bin/quillmere-cli" --segment 中文
    check "bin/quillmere-cli --segment 中文 runs Tokenizer beside it (got $rc: $stderr)" \
      bash -c '[ "$1" = 0 ] && grep -q "ㄓㄨㄥ" <<<"$2"' _ "$rc" "$stdout"
  fi
else
  run_cli "$prefix/bin/quillmere-cli" 中文
  check "bin/quillmere-cli 中文 without zhuyintable exits 3 (got $rc)" test "$rc" = 3
  check "and says that the data file is missing" \
    grep -q 'The data file is missing. Please reinstall the application.' <<<"$stderr"
fi

# --- Desktop entry, AppStream data and icons: with the window application only.
desktop=$prefix/share/applications/quillmere.desktop
metainfo=$prefix/share/metainfo/io.github.quillmere.Quillmere.metainfo.xml
hicolor=$prefix/share/icons/hicolor
if command -v desktop-file-validate >/dev/null; then
  check "packaging/quillmere.desktop passes desktop-file-validate" \
    bash -c 'out=$(desktop-file-validate "$1" 2>&1) && [ -z "$out" ] || { echo "$out"; false; }' _ "$source/packaging/quillmere.desktop"
else
  echo "skip desktop-file-validate (package desktop-file-utils) is not installed"
fi
if command -v appstreamcli >/dev/null; then
  check "the metainfo passes appstreamcli validate --no-net" \
    appstreamcli validate --no-net "$source/packaging/io.github.quillmere.Quillmere.metainfo.xml"
else
  echo "skip appstreamcli (package appstream) is not installed"
fi
if [ $gui = 1 ]; then
  check "the desktop entry is installed" cmp -s "$source/packaging/quillmere.desktop" "$desktop"
  check "the metainfo is installed" test -s "$metainfo"
  exec_line=$(sed -n 's/^Exec=//p' "$desktop")
  check "the desktop entry's Exec ($exec_line) is an installed command" test -x "$prefix/bin/${exec_line%% *}"
  check "the scalable icon is installed" test -s "$hicolor/scalable/apps/quillmere.svg"
  if command -v rsvg-convert >/dev/null; then
    for size in 16 22 24 32 48 64 128 256 512; do
      png=$hicolor/${size}x${size}/apps/quillmere.png
      # Width and height are the big-endian words at bytes 16 and 20 of a PNG.
      dims=$(od -An -tu1 -j16 -N8 "$png" 2>/dev/null |
        awk '{ print $1*16777216+$2*65536+$3*256+$4 "x" $5*16777216+$6*65536+$7*256+$8 }')
      check "icon ${size}x${size} is a PNG of that size (got ${dims:-none})" test "$dims" = "${size}x${size}"
    done
  fi
else
  check "no desktop entry without the window application" test ! -e "$desktop"
fi

# --- Manual pages: compressed, rendering without warnings, naming every option.
pages=(quillmere-cli)
[ $gui = 1 ] && pages+=(quillmere)
for page in "${pages[@]}"; do
  gz=$prefix/share/man/man1/$page.1.gz
  check "man page $page.1 is installed compressed" gzip -t "$gz"
  warnings=$(MANWIDTH=80 man --warnings=w -E UTF-8 -l "$gz" 2>&1 >/dev/null)
  check "man page $page.1 renders without warnings ${warnings:+($warnings)}" test -z "$warnings"
done
manual=$(MANWIDTH=200 man -E UTF-8 -l "$prefix/share/man/man1/quillmere-cli.1.gz" 2>/dev/null)
options=$("$lib/quillmere-cli" --help | grep -oE '^ +(-[a-z], )?--?[a-z][a-z-]*' | grep -oE -- '--?[a-z][a-z-]*')
check "quillmere-cli --help lists options" test -n "$options"
for option in $options; do
  check "the man page describes $option" grep -qF -- "$option" <<<"$manual"
done

# --- Nothing outside bin/, lib/quillmere/ and share/.
stray=$(cd "$prefix" && find . \( -type f -o -type l \) | grep -vE '^\./(bin/[^/]+|lib/quillmere/[^/]+|share/.+)$')
check "nothing installed outside bin/, lib/quillmere/ and share/ ${stray:+($stray)}" test -z "$stray"

echo "$failures failure(s)"
[ $failures = 0 ]
