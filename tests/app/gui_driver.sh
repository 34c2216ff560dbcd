# Functions for GUI tests that drive the real program from outside, as a user would.
# A test script sources this file; gui_session.sh has given it an X server of its own and
# VELTRANE_APP names the program. Waits poll with a 10-second deadline.
# Capture a command's output before matching it: `cmd | grep -q` breaks cmd's pipe (pipefail).
set -euo pipefail

APP_PID=""
APP_STATUS=""
APP_OUT=$(mktemp "${TMPDIR:-/tmp}/veltrane-app-out.XXXXXX")
_driver_cleanup() {
  [[ -z "$APP_PID" ]] || { kill "$APP_PID"; wait "$APP_PID"; } 2>/dev/null || true
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

# app_start [ARGS...]: starts the program in the background, standard output to $APP_OUT.
app_start() {
  "$VELTRANE_APP" "$@" >"$APP_OUT" &
  APP_PID=$!
}

# app_wait_exit: waits for the program to end; sets APP_STATUS.
app_wait_exit() {
  local deadline=$((SECONDS + 10))
  while kill -0 "$APP_PID" 2>/dev/null; do
    ((SECONDS < deadline)) || fail "the program did not end within 10s"
    sleep 0.05
  done
  APP_STATUS=0
  wait "$APP_PID" || APP_STATUS=$?
  APP_PID=""
}

# window_wait NAME_REGEX: prints the id of the first shown window whose whole name matches.
window_wait() {
  local deadline=$((SECONDS + 10)) wid
  until wid=$(xdotool search --onlyvisible --name "^($1)\$" 2>/dev/null | head -n1) && [[ -n "$wid" ]]; do
    kill -0 "$APP_PID" 2>/dev/null || fail "the program ended before window '$1' appeared"
    ((SECONDS < deadline)) || fail "no window '$1' within 10s"
    sleep 0.05
  done
  echo "$wid"
}
