#!/usr/bin/env bash
# Installs the Debian packages a target needs, and nothing when they are all present.
# Usage: scripts/install-deps.sh build|test|clang|fuzz|bench|font|package|format|web
set -euo pipefail

build_pkgs=(cmake g++ make pkg-config libwxgtk3.2-dev libfreetype-dev libharfbuzz-dev libpng-dev libcli11-dev libutf8proc-dev
            fonts-dejavu-core help2man)
test_pkgs=(libgtest-dev xvfb xauth xdotool imagemagick x11-utils fonts-terminus-otb fonts-noto-core fonts-roboto-unhinted
           desktop-file-utils valgrind xfonts-base fonts-font-awesome fonts-firacode gcc-arm-none-eabi
           libnewlib-arm-none-eabi qemu-system-arm fonts-noto-cjk)
clang_pkgs=(clang)
fuzz_pkgs=(clang libclang-rt-14-dev)
bench_pkgs=(libbenchmark-dev python3-fonttools)
font_pkgs=(python3-fonttools)
package_pkgs=(dpkg-dev file)
format_pkgs=(clang-format)
# The web page: emscripten, g++ (its codepage tables are made from glibc's iconv), the libraries'
# -dev packages (it builds their versions from source, which apt-get source fetches with dpkg-dev)
# and a browser for its tests.
web_pkgs=(emscripten dpkg-dev g++ chromium fonts-dejavu-core libbrotli-dev libcli11-dev libfreetype-dev libharfbuzz-dev
          libpng-dev libutf8proc-dev zlib1g-dev)

wanted=("${build_pkgs[@]}")
case "${1:-build}" in
  build) ;;
  test)  wanted+=("${test_pkgs[@]}") ;;
  clang) wanted+=("${test_pkgs[@]}" "${clang_pkgs[@]}") ;;
  fuzz)  wanted+=("${test_pkgs[@]}" "${fuzz_pkgs[@]}") ;;
  bench) wanted+=("${test_pkgs[@]}" "${bench_pkgs[@]}") ;;
  font)  wanted+=("${font_pkgs[@]}") ;;
  package) wanted+=("${test_pkgs[@]}" "${package_pkgs[@]}") ;;
  format) wanted=("${format_pkgs[@]}") ;;
  web) wanted=("${web_pkgs[@]}") ;;
  *) echo "usage: $0 build|test|clang|fuzz|bench|font|package|format|web" >&2; exit 2 ;;
esac

sudo=""
[[ $(id -u) -eq 0 ]] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive

# The web page's libraries are built from Debian's source packages of the versions the native
# build uses: a deb-src entry for the same mirrors as the binary packages lets apt-get source
# fetch them.
src_list=/etc/apt/sources.list.d/veltrane-deb-src.sources
need_update=0
if [[ "${1:-build}" == web && ! -e $src_list ]]; then
  sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources | $sudo tee $src_list >/dev/null
  need_update=1
fi

missing=()
for pkg in "${wanted[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
[[ ${#missing[@]} -eq 0 && $need_update -eq 0 ]] && exit 0

$sudo apt-get -o DPkg::Lock::Timeout=120 update -q
[[ ${#missing[@]} -eq 0 ]] && exit 0
echo "Installing missing packages: ${missing[*]}"
$sudo apt-get -o DPkg::Lock::Timeout=120 install -y -q --no-install-recommends "${missing[@]}"
