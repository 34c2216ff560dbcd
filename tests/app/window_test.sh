# The program's window as the X server sees it: exact title, 128 x 128 icon; Ctrl+Q quits
# with status 0. (xdotool's keys reach GTK only once `windowfocus --sync` has returned.)
source "$VELTRANE_GUI_DRIVER"

app_start
wid=$(window_wait "Veltrane Bitmap Font Generator v1\\.00")
expect_eq "title" "Veltrane Bitmap Font Generator v1.00" "$(xdotool getwindowname "$wid")"
icon=$(xprop -id "$wid" _NET_WM_ICON)
[[ "$icon" == *"Icon (128 x 128)"* ]] || fail "no 128 x 128 window icon"

xdotool windowfocus --sync "$wid"
xdotool key --clearmodifiers ctrl+q
app_wait_exit
expect_eq "exit status after Ctrl+Q" 0 "$APP_STATUS"
expect_eq "standard output" "" "$(cat "$APP_OUT")"
