#!/usr/bin/env bash
# Installs the Debian packages a target needs, and nothing when they are all present.
# Usage: scripts/install-deps.sh build|test|clang|fuzz|bench|font|package|format
set -euo pipefail

build_pkgs=(cmake g++ make pkg-config libwxgtk3.2-dev libfreetype-dev libharfbuzz-dev libpng-dev libcli11-dev libutf8proc-dev
            fonts-dejavu-core help2man)
test_pkgs=(libgtest-dev xvfb xauth xdotool imagemagick x11-utils fonts-terminus-otb fonts-noto-core fonts-roboto-unhinted
           desktop-file-utils valgrind xfonts-base fonts-font-awesome gcc-arm-none-eabi libnewlib-arm-none-eabi
           qemu-system-arm)
clang_pkgs=(clang)
fuzz_pkgs=(clang libclang-rt-14-dev)
bench_pkgs=(libbenchmark-dev)
font_pkgs=(python3-fonttools)
package_pkgs=(dpkg-dev file)
format_pkgs=(clang-format)

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
  *) echo "usage: $0 build|test|clang|fuzz|bench|font|package|format" >&2; exit 2 ;;
esac

missing=()
for pkg in "${wanted[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$pkg")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=""
[[ $(id -u) -eq 0 ]] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get -o DPkg::Lock::Timeout=120 update -q
$sudo apt-get -o DPkg::Lock::Timeout=120 install -y -q --no-install-recommends "${missing[@]}"
