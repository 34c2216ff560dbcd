# When FreeType cannot start, the program prints one message and ends without a window.
# VELTRANE_FT_INIT_FAILS names a library that makes the program's FreeType start-up fail.
source "$VELTRANE_GUI_DRIVER"

LD_PRELOAD="$VELTRANE_FT_INIT_FAILS" app_start
app_wait_exit
[[ "$APP_STATUS" != 0 ]] || fail "the program reported success"
# $(...) would drop the trailing line feeds; compare the bytes.
expect_eq "standard output" \
  "$(printf '\nFreeType: %s\n\n' "cannot initialize library" | od -c)" "$(od -c <"$APP_OUT")"
