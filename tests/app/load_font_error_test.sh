# File > Load Font with a text file named .ttf, all by keyboard: the "Error" box belongs
# to the main window, Return closes it, and the program goes on.
source "$VELTRANE_GUI_DRIVER"

dir=$(mktemp -d "${TMPDIR:-/tmp}/veltrane-load-font.XXXXXX")
trap '_driver_cleanup; rm -rf "$dir"' EXIT
echo "This is a text file, not a font." >"$dir/bad.ttf"

app_start
wid=$(window_wait "Veltrane Bitmap Font Generator v1\\.00")
key_to "$wid" ctrl+l
chooser=$(window_wait "Choose File to Load Font From")
key_to "$chooser" ctrl+l
type_to "$chooser" "$dir/bad.ttf"
# The location field's completion popup may take the first Return: press it until the
# dialog gives way to the error box. (Bounded: focusing a dialog that has just been
# hidden could wait forever.)
deadline=$((SECONDS + 10))
while true; do
  box=$(xdotool search --onlyvisible --name '^Error$' 2>/dev/null | head -n1 || true)
  [[ -n "$box" ]] && break
  ((SECONDS < deadline)) || fail "no 'Error' box after choosing $dir/bad.ttf"
  if timeout 2 xdotool windowfocus --sync "$chooser" 2>/dev/null; then
    xdotool key --clearmodifiers Return
  fi
  sleep 0.3
done

owner=$(xprop -id "$box" WM_TRANSIENT_FOR)
[[ "$owner" == *"$(printf '0x%x' "$wid")"* ]] || fail "the error box does not belong to the main window: $owner"
key_to "$box" Return
window_wait_gone "$box"
window_wait_gone "$chooser"
kill -0 "$APP_PID" || fail "the program ended after the error"

key_to "$wid" ctrl+q
app_wait_exit
expect_eq "exit status" 0 "$APP_STATUS"
expect_eq "standard output" "" "$(cat "$APP_OUT")"
