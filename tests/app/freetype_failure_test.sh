# When FreeType cannot start, the program prints one message and ends without a window.
# VELTRANE_FT_INIT_FAILS names a library that makes the program's FreeType start-up fail.
out=$(mktemp)
trap 'rm -f "$out"' EXIT
if LD_PRELOAD="$VELTRANE_FT_INIT_FAILS" timeout 20 "$VELTRANE_APP" >"$out"; then
  echo "FAIL: the program reported success" >&2
  exit 1
fi
printf '\nFreeType: %s\n\n' "cannot initialize library" | cmp - "$out"
