#!/usr/bin/env bash
# Builds the web page into BUILD_WEB_DIR/site: the libraries for WebAssembly (once), the
# exporter compiled with emscripten as the page's engine, and the page's own files beside
# DejaVu Sans and the program's icon.
# Usage: scripts/build-web.sh BUILD_WEB_DIR JOBS
set -euo pipefail
cd "$(dirname "$0")/.."

web_dir=$(realpath -m "${1:-build-web}")
jobs=${2:-1}
prefix=$web_dir/prefix
export NODE_PATH=/usr/share/nodejs${NODE_PATH:+:$NODE_PATH}

scripts/build-web-libs.sh "$web_dir"

# Codepages as glibc's iconv reads them: the page's C library has an iconv of its own, which
# lacks some and reads others otherwise, so the engine reads tables made here instead.
mkdir -p "$web_dir/codepages"
g++ -std=c++20 -O1 -I. charset/make_codepage_tables.cpp charset/codepage_iconv.cpp charset/codepage_name.cpp \
  -o "$web_dir/codepages/make_codepage_tables"
iconv --list | "$web_dir/codepages/make_codepage_tables" >"$web_dir/codepages/tables.cpp.new"
cmp -s "$web_dir/codepages/tables.cpp.new" "$web_dir/codepages/tables.cpp" ||
  mv "$web_dir/codepages/tables.cpp.new" "$web_dir/codepages/tables.cpp"

# Only the prefix's packages: a cross build must not take the machine's own libraries.
export PKG_CONFIG_LIBDIR=$prefix/lib/pkgconfig
export PKG_CONFIG_PATH=
emcmake cmake -S . -B "$web_dir/engine" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="-fwasm-exceptions -include $PWD/web/compat/libcxx14_gaps.h" \
  -DCMAKE_FIND_ROOT_PATH="$prefix" -DCMAKE_PREFIX_PATH="$prefix" -DCLI11_DIR="$prefix/share/cmake/CLI11" \
  -DVELTRANE_BUILD_GUI=OFF -DVELTRANE_BUILD_TESTS=OFF -DVELTRANE_INSTALL=OFF \
  -DVELTRANE_CODEPAGE_TABLES="$web_dir/codepages/tables.cpp" >/dev/null
cmake --build "$web_dir/engine" -j "$jobs" --target veltrane-fontgen-export

site=$web_dir/site
rm -rf "$site" && mkdir -p "$site"
cp web/site/* "$site/"
cp "$web_dir/engine/veltrane-fontgen-export.js" "$site/engine.js"
cp "$web_dir/engine/veltrane-fontgen-export.wasm" "$site/veltrane-fontgen-export.wasm"
cp resources/icon.png "$site/icon.png"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$site/DejaVuSans.ttf"
echo "Web page built in $site"
