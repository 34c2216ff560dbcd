#!/usr/bin/env bash
# Runs one command inside an X server of its own, so GUI tests can run side by side.
# Usage: gui_session.sh COMMAND [ARGS...]
#   VELTRANE_GUI_TIMEOUT  seconds before the command is killed (default 60)
# The command's exit status is passed on; 124 means it was killed by the time limit.
set -uo pipefail

# Listing the tests of a GoogleTest program (CMake's test discovery) needs no display.
for arg in "$@"; do
  [[ "$arg" == --gtest_list_tests ]] && exec "$@"
done

time_limit=${VELTRANE_GUI_TIMEOUT:-60}
work=$(mktemp -d "${TMPDIR:-/tmp}/veltrane-gui.XXXXXX")
xvfb_pid=""
cleanup() {
  [[ -n "$xvfb_pid" ]] && kill "$xvfb_pid" 2>/dev/null && wait "$xvfb_pid" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT

# -displayfd lets the server pick a free display itself: no race between parallel tests.
# -noreset: the server would otherwise restart, refusing connections, whenever its
# last client leaves (e.g. the readiness check below).
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$work/display" 2>"$work/xvfb.log" &
xvfb_pid=$!
deadline=$((SECONDS + 20))
until [[ -s "$work/display" ]]; do
  if ! kill -0 "$xvfb_pid" 2>/dev/null || ((SECONDS >= deadline)); then
    echo "gui_session.sh: the X server did not start:" >&2
    cat "$work/xvfb.log" >&2
    exit 125
  fi
  sleep 0.05
done

export DISPLAY=":$(head -n1 "$work/display")"
# The server announces its number once it listens; wait until it also answers.
until xdpyinfo >/dev/null 2>&1; do
  if ((SECONDS >= deadline)); then
    echo "gui_session.sh: the X server on $DISPLAY does not answer:" >&2
    cat "$work/xvfb.log" >&2
    exit 125
  fi
  sleep 0.05
done
unset WAYLAND_DISPLAY
# No desktop services: settings stay in memory, no accessibility bus, a UTF-8 locale.
export GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1 LC_ALL=C.UTF-8
export XDG_RUNTIME_DIR="$work"

timeout -k 5 "$time_limit" "$@"
status=$?
((status == 124)) && echo "gui_session.sh: '$*' did not end within ${time_limit}s" >&2
if ((status != 0)) && [[ -s "$work/xvfb.log" ]]; then
  echo "gui_session.sh: X server messages:" >&2
  tail -n 20 "$work/xvfb.log" >&2
fi
exit "$status"
