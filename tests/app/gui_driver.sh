# Functions for GUI tests that drive the real program from outside, as a user would.
# A test script sources this file; gui_session.sh has given it an X server of its own.
#   VELTRANE_APP          the program to start
#   VELTRANE_GUI_DRIVER   this file
# Every wait polls with a deadline (seconds, default 10) instead of sleeping blindly.
# xdotool key events only reach GTK after `xdotool windowfocus --sync`; `key_to` does that.
# Capture a command's output before matching it: `cmd | grep -q` breaks cmd's pipe (pipefail).

set -euo pipefail

APP_PID=""
APP_STATUS=""
APP_OUT=$(mktemp "${TMPDIR:-/tmp}/veltrane-app-out.XXXXXX")

_driver_cleanup() {
  if [[ -n "$APP_PID" ]] && kill -0 "$APP_PID" 2>/dev/null; then
    kill "$APP_PID" 2>/dev/null || true
    wait "$APP_PID" 2>/dev/null || true
  fi
  rm -f "$APP_OUT"
}
trap _driver_cleanup EXIT

fail() {
  echo "FAIL: $*" >&2
  exit 1
}

# expect_eq WHAT EXPECTED ACTUAL
expect_eq() {
  [[ "$2" == "$3" ]] || fail "$1: expected '$2', got '$3'"
}

# app_start [ARGS...]: starts the program in the background; its standard output goes to $APP_OUT.
app_start() {
  "$VELTRANE_APP" "$@" >"$APP_OUT" &
  APP_PID=$!
}

# app_wait_exit [DEADLINE]: waits for the program to end; sets APP_STATUS.
app_wait_exit() {
  local deadline=$((SECONDS + ${1:-10}))
  while kill -0 "$APP_PID" 2>/dev/null; do
    ((SECONDS < deadline)) || fail "the program did not end within ${1:-10}s"
    sleep 0.05
  done
  APP_STATUS=0
  wait "$APP_PID" || APP_STATUS=$?
  APP_PID=""
}

# window_wait NAME_REGEX [DEADLINE]: prints the id of the first visible window whose whole
# name matches.
window_wait() {
  local deadline=$((SECONDS + ${2:-10})) wid
  while true; do
    wid=$(xdotool search --onlyvisible --name "^($1)\$" 2>/dev/null | head -n1 || true)
    [[ -n "$wid" ]] && { echo "$wid"; return 0; }
    [[ -n "$APP_PID" ]] && ! kill -0 "$APP_PID" 2>/dev/null && fail "the program ended before window '$1' appeared"
    ((SECONDS < deadline)) || fail "no window '$1' within ${2:-10}s"
    sleep 0.05
  done
}

# window_wait_gone WID [DEADLINE]
window_wait_gone() {
  local deadline=$((SECONDS + ${2:-10}))
  local shown
  while shown=$(xdotool search --onlyvisible --name '.*' 2>/dev/null || true) &&
        grep -qx "$1" <<<"$shown"; do
    ((SECONDS < deadline)) || fail "window $1 still there after ${2:-10}s"
    sleep 0.05
  done
}

# key_to WID KEY...: focuses the window, then sends the keys (xdotool names: ctrl+q, alt+h, Escape).
key_to() {
  local wid=$1
  shift
  xdotool windowfocus --sync "$wid"
  xdotool key --clearmodifiers "$@"
}

# type_to WID TEXT
type_to() {
  xdotool windowfocus --sync "$1"
  xdotool type --delay 20 "$2"
}

# window_size WID: prints "WIDTHxHEIGHT"
window_size() {
  xdotool getwindowgeometry --shell "$1" | awk -F= '/^WIDTH/{w=$2} /^HEIGHT/{h=$2} END{print w "x" h}'
}
