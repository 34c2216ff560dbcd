#!/usr/bin/env bash
# Starts the desktop program; it needs a display.
set -euo pipefail
build_dir=${1:-build}
if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
  echo "The desktop program needs a display (DISPLAY is not set)." >&2
  exit 1
fi
exec "$build_dir/veltrane-fontgen"
