#!/usr/bin/env bash
# Builds FreeType, HarfBuzz, Brotli, libpng, zlib and utf8proc for WebAssembly into PREFIX, from
# Debian's source packages of the very versions the native build links (those of the
# installed -dev packages), so that the page renders as the command line does.
# Each library is built once: a stamp naming its source version skips it afterwards.
# Usage: scripts/build-web-libs.sh BUILD_WEB_DIR
set -euo pipefail

web_dir=$(realpath -m "${1:?usage: $0 BUILD_WEB_DIR}")
src_dir=$web_dir/src
prefix=$web_dir/prefix
mkdir -p "$src_dir" "$prefix/lib/pkgconfig" "$prefix/include"
# Debian's emscripten finds its JavaScript tools (acorn) where Debian's node keeps them.
export NODE_PATH=/usr/share/nodejs${NODE_PATH:+:$NODE_PATH}
cflags="-O2"

# The source package and version of the installed binary package $1.
source_of() { dpkg-query -W -f='${source:Package}=${source:Version}' "$1"; }

# Fetches and unpacks the source of binary package $1 (Debian's patches applied); prints
# its directory.
fetch() {
  local wanted pkg version dir
  wanted=$(source_of "$1")
  pkg=${wanted%%=*}
  version=${wanted#*=}
  dir=$src_dir/$pkg-${version#*:} # no epoch: a ":" in a path upsets include lists
  if [[ ! -d $dir ]]; then
    rm -rf "$src_dir/fetch" && mkdir -p "$src_dir/fetch"
    # A version the mirrors no longer serve (a security update since) gives way to another
    # Debian revision of the same upstream release.
    local candidates=("$version")
    candidates+=($(apt-cache showsrc "$pkg" | sed -n 's/^Version: //p' | grep -F "${version%-*}-" || true))
    # apt-get source PKG=VERSION may take the files of a later revision in another suite
    # (brotli=1.0.9-2 fetches 1.0.9-2+deb12u1), so a version is also asked for by the
    # suite whose Sources list it: PKG/SUITE.
    local v request
    for v in "${candidates[@]}"; do
      for request in "$pkg=$v" $(apt-cache madison "$pkg" | awk -F' [|] ' -v pkg="$pkg" -v v="$v" \
          '{ gsub(/ /, "", $2) } $2 == v && / Sources$/ { split($3, a, " "); split(a[2], s, "/"); print pkg "/" s[1] }'); do
        if (cd "$src_dir/fetch" && apt-get source -q "$request" >"$src_dir/fetch.log" 2>&1); then
          [[ $v == "$version" ]] || echo "Using the source of $pkg $v" >&2
          break 2
        fi
        rm -rf "$src_dir/fetch" && mkdir -p "$src_dir/fetch"
      done
      echo "No source of $pkg $v on the mirrors" >&2
    done
    local unpacked
    unpacked=$(find "$src_dir/fetch" -mindepth 1 -maxdepth 1 -type d | head -1)
    if [[ -z $unpacked ]]; then
      cat "$src_dir/fetch.log" >&2
      echo "Cannot fetch the source of $pkg ${version%-*}: is a deb-src entry there (scripts/install-deps.sh web)?" >&2
      exit 1
    fi
    mv "$unpacked" "$dir"
    rm -rf "$src_dir/fetch"
  fi
  echo "$dir"
}

# Whether library $1 is built from source version $2 already.
built() { [[ -f $prefix/stamps/$1 && $(cat "$prefix/stamps/$1") == "$2" ]]; }
stamp() { mkdir -p "$prefix/stamps" && echo "$2" >"$prefix/stamps/$1"; }

# Compiles the C files $3... of directory $2 into the static library $1.
archive() {
  local lib=$1 dir=$2 objs=() f
  shift 2
  mkdir -p "$web_dir/obj/$lib"
  for f in "$@"; do
    emcc $cflags $EXTRA_CFLAGS -c "$dir/$f" -o "$web_dir/obj/$lib/${f//\//_}.o"
    objs+=("$web_dir/obj/$lib/${f//\//_}.o")
  done
  rm -f "$prefix/lib/$lib.a"
  emar rcs "$prefix/lib/$lib.a" "${objs[@]}"
}

build_zlib() {
  local version dir
  version=$(source_of zlib1g-dev)
  built zlib "$version" && return
  echo "Building zlib ($version) for WebAssembly"
  dir=$(fetch zlib1g-dev)
  EXTRA_CFLAGS="-DHAVE_UNISTD_H -DHAVE_STDARG_H" archive libz "$dir" adler32.c compress.c crc32.c deflate.c gzclose.c gzlib.c gzread.c \
    gzwrite.c infback.c inffast.c inflate.c inftrees.c trees.c uncompr.c zutil.c
  cp "$dir/zlib.h" "$dir/zconf.h" "$prefix/include/"
  stamp zlib "$version"
}

build_libpng() {
  local version dir
  version=$(source_of libpng-dev)
  built libpng "$version" && return
  echo "Building libpng ($version) for WebAssembly"
  dir=$(fetch libpng-dev)
  cp "$dir/scripts/pnglibconf.h.prebuilt" "$dir/pnglibconf.h"
  EXTRA_CFLAGS="-I$prefix/include" archive libpng16 "$dir" png.c pngerror.c pngget.c pngmem.c pngpread.c \
    pngread.c pngrio.c pngrtran.c pngrutil.c pngset.c pngtrans.c pngwio.c pngwrite.c pngwtran.c pngwutil.c
  cp "$dir/png.h" "$dir/pngconf.h" "$dir/pnglibconf.h" "$prefix/include/"
  ln -sf libpng16.a "$prefix/lib/libpng.a"
  stamp libpng "$version"
}

build_utf8proc() {
  local version dir
  version=$(source_of libutf8proc-dev)
  built utf8proc "$version" && return
  echo "Building utf8proc ($version) for WebAssembly"
  dir=$(fetch libutf8proc-dev)
  EXTRA_CFLAGS="-DUTF8PROC_STATIC" archive libutf8proc "$dir" utf8proc.c
  cp "$dir/utf8proc.h" "$prefix/include/"
  cat >"$prefix/lib/pkgconfig/libutf8proc.pc" <<EOF
Name: libutf8proc
Description: UTF-8 processing (WebAssembly)
Version: ${version#*=}
Libs: -L$prefix/lib -lutf8proc
Cflags: -I$prefix/include -DUTF8PROC_STATIC
EOF
  stamp utf8proc "$version"
}

# Brotli's decoder, which FreeType needs for WOFF2 fonts. Its common part goes into the
# same archive, so that FreeType's CMake package, which names libbrotlidec alone, links.
build_brotli() {
  local version dir
  version=$(source_of libbrotli-dev)
  built brotli "$version" && return
  echo "Building Brotli ($version) for WebAssembly"
  dir=$(fetch libbrotli-dev)
  EXTRA_CFLAGS="-I$dir/c/include" archive libbrotlidec "$dir/c" common/constants.c common/context.c \
    common/dictionary.c common/platform.c common/transform.c dec/bit_reader.c dec/decode.c dec/huffman.c dec/state.c
  mkdir -p "$prefix/include/brotli"
  cp "$dir"/c/include/brotli/{decode,port,types}.h "$prefix/include/brotli/"
  cat >"$prefix/lib/pkgconfig/libbrotlidec.pc" <<EOF
Name: libbrotlidec
Description: Brotli decoder library (WebAssembly)
Version: ${version#*=}
Libs: -L$prefix/lib -lbrotlidec
Cflags: -I$prefix/include
EOF
  stamp brotli "$version"
}

# FreeType as Debian configures it for rendering: zlib, libpng and Brotli (WOFF2 fonts), no
# HarfBuzz (Debian's libfreetype6 links none); no bzip2 (.bz2 bitmap fonts only). Its stamp
# names Brotli's version too, so that a FreeType built without it is built again.
build_freetype() {
  local version dir
  version="$(source_of libfreetype-dev) $(source_of libbrotli-dev)"
  built freetype "$version" && return
  echo "Building FreeType ($version) for WebAssembly"
  dir=$(fetch libfreetype-dev)
  rm -rf "$web_dir/obj/freetype"
  emcmake cmake -S "$dir" -B "$web_dir/obj/freetype" -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_FLAGS_RELEASE="$cflags" \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_FIND_ROOT_PATH="$prefix" -DCMAKE_PREFIX_PATH="$prefix" \
    -DFT_REQUIRE_ZLIB=ON -DFT_REQUIRE_PNG=ON -DFT_DISABLE_HARFBUZZ=ON -DFT_REQUIRE_BROTLI=ON \
    -DFT_DISABLE_BZIP2=ON -DBROTLIDEC_INCLUDE_DIRS="$prefix/include" -DBROTLIDEC_LIBRARIES="$prefix/lib/libbrotlidec.a" -DZLIB_LIBRARY="$prefix/lib/libz.a" -DZLIB_INCLUDE_DIR="$prefix/include" \
    -DPNG_LIBRARY="$prefix/lib/libpng16.a" -DPNG_PNG_INCLUDE_DIR="$prefix/include" >/dev/null
  cmake --build "$web_dir/obj/freetype" -j 1 >/dev/null
  cmake --install "$web_dir/obj/freetype" >/dev/null
  stamp freetype "$version"
}

# HarfBuzz from its one-file build; the exporter shapes kerning pairs with its OpenType
# functions alone (no FreeType, GLib or Graphite glue), on one thread.
build_harfbuzz() {
  local version dir
  version=$(source_of libharfbuzz-dev)
  built harfbuzz "$version" && return
  echo "Building HarfBuzz ($version) for WebAssembly"
  dir=$(fetch libharfbuzz-dev)
  mkdir -p "$web_dir/obj/harfbuzz" "$prefix/include/harfbuzz"
  em++ $cflags -std=c++11 -fno-exceptions -fno-rtti -DHB_NO_MT -c "$dir/src/harfbuzz.cc" \
    -o "$web_dir/obj/harfbuzz/harfbuzz.o"
  rm -f "$prefix/lib/libharfbuzz.a"
  emar rcs "$prefix/lib/libharfbuzz.a" "$web_dir/obj/harfbuzz/harfbuzz.o"
  cp "$dir"/src/hb.h "$dir"/src/hb-*.h "$prefix/include/harfbuzz/"
  cat >"$prefix/lib/pkgconfig/harfbuzz.pc" <<EOF
Name: harfbuzz
Description: HarfBuzz text shaping (WebAssembly)
Version: ${version#*=}
Libs: -L$prefix/lib -lharfbuzz
Cflags: -I$prefix/include/harfbuzz
EOF
  stamp harfbuzz "$version"
}

# CLI11 is header-only: its Debian headers and CMake package, seen from inside the prefix
# (a cross build looks for packages there only).
install_cli11() {
  mkdir -p "$prefix/share/cmake"
  ln -sfn /usr/include/CLI "$prefix/include/CLI"
  rm -rf "$prefix/share/cmake/CLI11" && cp -r /usr/share/cmake/CLI11 "$prefix/share/cmake/CLI11"
}

build_zlib
build_libpng
build_utf8proc
build_brotli
build_freetype
build_harfbuzz
install_cli11
