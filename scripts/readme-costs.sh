#!/usr/bin/env bash
# The README's table of what each option costs or saves, recomputed from the exporter's
# --stats, and its tables of packed fonts' flash (DejaVu Sans, and Noto Sans CJK SC with
# GB2312's level 1), recomputed with arm-none-eabi-gcc, so that their numbers stay those
# the exporter writes. Prints the tables' rows; --check
# fails when the README's rows differ, --write puts them in the README.
# Usage: scripts/readme-costs.sh [--check|--write] EXPORTER
set -euo pipefail

mode=print
if [[ ${1:-} == --check || ${1:-} == --write ]]; then
  mode=${1#--}
  shift
fi
exporter=${1:?usage: $0 [--check|--write] EXPORTER}
readme="$(cd "$(dirname "$0")/.." && pwd)/README.md"
dejavu=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
awesome=/usr/share/fonts/truetype/font-awesome/fontawesome-webfont.ttf
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

# One row: the label as the README shows it, then the options, all of DejaVu Sans written
# as DejaVuSans.cpp (the name is part of every identifier, so of the bytes).
row() {
  local label=$1 stats
  shift
  stats=$("$exporter" --stats "$@" "$dejavu" "$out/DejaVuSans.cpp" 2>/dev/null)
  value() { awk -v label="$1" 'index($0, label) == 1 { print $NF }' <<<"$stats"; }
  printf '| %s | %s | %s | %s | %s |\n' "$label" "$(value characters)" "$(value 'pixel bytes in all')" \
    "$(value 'kerning table bytes')" "$(value 'DejaVuSans.cpp bytes')"
}

rows() {
  row 'default (four rotations)'
  row '`--rotations 0`' --rotations 0
  row '`--mono` (still 8 bits a pixel; narrower 1-bit bitmaps)' --mono
  row '`--kerning none`' --kerning none
  row "\`--text 'Menu Settings 12:45'\` (its 15 characters only)" --text 'Menu Settings 12:45'
  row 'the same with `--rotations 0`' --text 'Menu Settings 12:45' --rotations 0
  row '`--glyphs ...fontawesome-webfont.ttf:0xF240-0xF244=>0x80`' --glyphs "$awesome:0xF240-0xF244=>0x80"
  row 'the OLED example above (12 px, `--mono --hinting auto --rotations 0`)' \
    --height 12 --mono --hinting auto --rotations 0
}

# The flash of a packed font, as a Cortex-M4 build takes it: every data section of the object.
flash() {
  "$exporter" --format packed "$@" "$out/F.c"
  arm-none-eabi-gcc -std=c99 -Os -mcpu=cortex-m4 -mthumb -I"$out" -I"$(dirname "$readme")/runtime" \
    -c "$out/F.c" -o "$out/F.o"
  arm-none-eabi-size -A "$out/F.o" | awk '/^\.(rodata|data)/ { sum += $2 } END { print sum + 0 }'
}

# The fonts of the flash tables, as scripts/bench-packed-flash.sh exports them.
dejavu_flash=(--height 16 --chars 32-126 "$dejavu")
cjk_flash=(--height 16 --face 2 --chars 32-126 --text-file "$(dirname "$readme")/bench/gb2312_level1.txt"
           --kerning auto /usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc)

# lv_font_conv 1.5.3's --format bin files of the same glyphs, compressed and plain, as
# `make bench` measures them (it installs lv_font_conv from npm, which the tests do not).
declare -A dejavu_peer=([1]="1632 1632" [2]="2388 2824" [4]="3956 4992" [8]="7156 9328")
declare -A cjk_peer=([1]="140188 140188" [2]="240360 268156" [4]="410072 493596" [8]="766152 944064")

# A flash table's rows: each --compress choice of the font of the exporter's arguments at
# each bits a pixel, beside lv_font_conv's files named by `peer_name`, and auto's share of
# the compressed one.
flash_rows() {
  local -n peer=$1
  shift
  local bpp auto peer_compressed peer_plain
  for bpp in 1 2 4 8; do
    read -r peer_compressed peer_plain <<<"${peer[$bpp]}"
    auto=$(flash --bpp $bpp "$@")
    printf '| %s | %s | %s | %s | %s | %s | %s |\n' $bpp "$auto" "$(flash --bpp $bpp --compress runs "$@")" \
      "$(flash --bpp $bpp --compress none "$@")" "$peer_compressed" "$peer_plain" \
      "$(awk -v a="$auto" -v p="$peer_compressed" 'BEGIN { printf "%.2f", a / p }')"
  done
}

# The README's rows of the table whose header starts with `header`: those after the
# header and its separator line.
readme_rows() {
  awk -v header="$1" 'index($0, header) == 1 { table = 1; getline; next } table && !/^\|/ { exit } table' "$readme"
}

# Puts `rows` in the README's table whose header starts with `header`.
write_rows() {
  awk -v header="$1" -v rows="$2" 'index($0, header) == 1 { print; getline; print; print rows; table = 1; next }
                                   table && /^\|/ { next } { table = 0; print }' "$readme" >"$out/README.md"
  cp "$out/README.md" "$readme"
}

status=0
for table in costs dejavu cjk; do
  case $table in
    costs) header='| Export | Characters |' computed=$(rows) ;;
    dejavu) header='| DejaVu Sans, bits a pixel |' computed=$(flash_rows dejavu_peer "${dejavu_flash[@]}") ;;
    cjk) header='| Noto Sans CJK SC, bits a pixel |' computed=$(flash_rows cjk_peer "${cjk_flash[@]}") ;;
  esac
  case $mode in
    print) echo "$computed" ;;
    check)
      if [[ "$computed" != "$(readme_rows "$header")" ]]; then
        echo "The README's $table table differs from what the exporter writes; run $0 --write" >&2
        diff <(readme_rows "$header") <(echo "$computed") >&2 || true
        status=1
      fi ;;
    write) write_rows "$header" "$computed" ;;
  esac
done
exit $status
