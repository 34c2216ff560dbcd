# Help > About through the keyboard opens a box captioned "About"; Escape closes only it.
source "$VELTRANE_GUI_DRIVER"

app_start
wid=$(window_wait "Veltrane Bitmap Font Generator v1\\.00")
key_to "$wid" alt+h
key_to "$wid" Return
about=$(window_wait "About")
owner=$(xprop -id "$about" WM_TRANSIENT_FOR)
[[ "$owner" == *"$(printf '0x%x' "$wid")"* ]] || fail "the About box does not belong to the main window: $owner"

key_to "$about" Escape
window_wait_gone "$about"
kill -0 "$APP_PID" || fail "the program ended with the About box"

key_to "$wid" ctrl+q
app_wait_exit
expect_eq "exit status" 0 "$APP_STATUS"
