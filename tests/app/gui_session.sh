#!/usr/bin/env bash
# Runs one command inside an X server of its own, so GUI tests can run side by side.
# Usage: gui_session.sh COMMAND [ARGS...]; VELTRANE_GUI_TIMEOUT (default 60) seconds before
# the command is killed (status 124). Listing a GoogleTest program's tests needs no display.
set -uo pipefail
for arg in "$@"; do
  [[ "$arg" == --gtest_list_tests ]] && exec "$@"
done

work=$(mktemp -d "${TMPDIR:-/tmp}/veltrane-gui.XXXXXX")
xvfb_pid=""
trap '[[ -n "$xvfb_pid" ]] && kill "$xvfb_pid" 2>/dev/null; rm -rf "$work"' EXIT

# -displayfd: the server picks a free display itself. -noreset: it would otherwise restart,
# refusing connections, whenever its last client leaves.
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$work/display" 2>"$work/xvfb.log" &
xvfb_pid=$!
deadline=$((SECONDS + 20))
until [[ -s "$work/display" ]] && DISPLAY=":$(head -n1 "$work/display")" xdpyinfo >/dev/null 2>&1; do
  if ! kill -0 "$xvfb_pid" 2>/dev/null || ((SECONDS >= deadline)); then
    echo "gui_session.sh: the X server did not start:" >&2
    cat "$work/xvfb.log" >&2
    exit 125
  fi
  sleep 0.05
done
export DISPLAY=":$(head -n1 "$work/display")"
unset WAYLAND_DISPLAY
# No desktop services: settings in memory, no accessibility bus, a UTF-8 locale.
export GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1 LC_ALL=C.UTF-8 XDG_RUNTIME_DIR="$work"

timeout -k 5 "${VELTRANE_GUI_TIMEOUT:-60}" "$@"
status=$?
((status == 124)) && echo "gui_session.sh: '$*' did not end in time" >&2
exit "$status"
