# Installs the Debian packages Quillmere needs to build, test and run, when
# any is missing. Sourced by ./run and ./test.
quillmere_packages=(
  cmake ninja-build g++ clang clang-format libclang-rt-14-dev pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libpugixml-dev
  fonts-noto-cjk
  desktop-file-utils appstream
)

quillmere_install_deps() {
  local missing=()
  for p in "${quillmere_packages[@]}" "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "ok installed" ||
      missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  local sudo=()
  [ "$(id -u)" -eq 0 ] || sudo=(sudo)
  "${sudo[@]}" apt-get update -qq &&
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq \
      --no-install-recommends "${missing[@]}"
}
