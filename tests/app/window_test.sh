# The program's window as the X server sees it: title, icon, fixed size; Ctrl+Q quits.
source "$VELTRANE_GUI_DRIVER"

app_start
wid=$(window_wait "Veltrane Bitmap Font Generator v1\\.00")
expect_eq "title" "Veltrane Bitmap Font Generator v1.00" "$(xdotool getwindowname "$wid")"

# (Captured first: `xprop | grep -q` would break xprop's pipe under pipefail.)
icon=$(xprop -id "$wid" _NET_WM_ICON)
[[ "$icon" == *"Icon (128 x 128)"* ]] || fail "no 128 x 128 window icon"

# Without a resize border the window manager is told: smallest size = largest size.
hints=$(xprop -id "$wid" WM_NORMAL_HINTS)
min=$(sed -n 's/.*minimum size: \([0-9]*\) by \([0-9]*\).*/\1x\2/p' <<<"$hints")
max=$(sed -n 's/.*maximum size: \([0-9]*\) by \([0-9]*\).*/\1x\2/p' <<<"$hints")
[[ -n "$min" && "$min" == "$max" ]] || fail "window is resizable: min '$min', max '$max'"

# Preview 800 x 600 with its border, beside the left column, below the menu bar.
size=$(window_size "$wid")
((${size%x*} > 810 + 100 && ${size#*x} >= 610)) || fail "window too small: $size"

key_to "$wid" ctrl+q
app_wait_exit
expect_eq "exit status after Ctrl+Q" 0 "$APP_STATUS"
expect_eq "standard output" "" "$(cat "$APP_OUT")"
