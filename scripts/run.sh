#!/usr/bin/env bash
# Starts the desktop program. Without a display, shows what the tool does with the
# command-line exporter instead: DejaVu Sans at the default height and characters into out/.
set -euo pipefail
build_dir=${1:-build}
if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
  exec "$build_dir/veltrane-fontgen"
fi

echo "The desktop program needs a display (DISPLAY is not set);" \
     "running the command-line exporter instead."
font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
mkdir -p out
"$build_dir/veltrane-fontgen-export" "$font" out/DejaVuSans.cpp
echo "Wrote out/DejaVuSans.cpp"
echo "Wrote out/DejaVuSans.h"
