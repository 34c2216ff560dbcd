#!/usr/bin/env bash
# Flash of packed fonts (`make bench`), compiled for a Cortex-M4 (arm-none-eabi-gcc -Os,
# every data section of the object), with each --compress choice at 1, 2, 4 and 8 bits a
# pixel, beside lv_font_conv's --format bin file of the same glyphs, kerning included,
# compressed and plain:
#   dejavu  DejaVu Sans 16 px, codes 32-126
#   cjk     Noto Sans CJK SC 16 px (face 2 of the collection, which lv_font_conv reads saved
#           alone with fontTools), codes 32-126 and GB2312's level 1, --kerning auto
# Prints each font's sizes, --compress auto's share of lv_font_conv's compressed file against
# its goal, then the runtime's code and stack on a Cortex-M0+ and a Cortex-M4.
# Usage: scripts/bench-packed-flash.sh EXPORTER LV_FONT_CONV [dejavu|cjk [BPP...]]
#   (a font named: its sizes alone, at the bits a pixel named or all four)
set -euo pipefail
exporter=$1 lv_font_conv=$2
shift 2
fonts=(dejavu cjk) depths=(1 2 4 8)
if (($# > 0)); then
  fonts=("$1")
  shift
  (($# > 0)) && depths=("$@")
fi
source_dir=$(cd "$(dirname "$0")/.." && pwd)
runtime=$source_dir/runtime
level1=$source_dir/bench/gb2312_level1.txt
collection=/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

data_bytes() { arm-none-eabi-size -A "$1" | awk '/^\.(rodata|data)/ { sum += $2 } END { print sum + 0 }'; }

# The bytes the packed font of the exporter's arguments takes in a Cortex-M4 build.
ours() {
  "$exporter" --format packed "$@" "$work/F.c"
  arm-none-eabi-gcc -std=c99 -Os -mcpu=cortex-m4 -mthumb -I"$work" -I"$runtime" -c "$work/F.c" -o "$work/F.o"
  data_bytes "$work/F.o"
}

# The bytes of lv_font_conv's --format bin file of lv_font_conv's arguments.
peer() {
  "$lv_font_conv" "$@" --format bin -o "$work/peer.bin" >/dev/null
  stat -c %s "$work/peer.bin"
}

for case in "${fonts[@]}"; do
  case $case in
    dejavu)
      font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
      title="DejaVu Sans 16 px, codes 32-126, kerned"
      our_args=(--height 16 --chars 32-126 "$font")
      peer_args=(--font "$font" -r 32-126 --size 16)
      declare -A goal=([1]=0.90 [2]=0.90 [4]=0.90 [8]=0.90) ;;
    cjk)
      face=$work/NotoSansCJKsc-Regular.otf
      /usr/bin/python3 -c "from fontTools.ttLib import TTCollection; TTCollection('$collection').fonts[2].save('$face')"
      title="Noto Sans CJK SC 16 px, codes 32-126 and GB2312's level 1, --kerning auto"
      our_args=(--height 16 --face 2 --chars 32-126 --text-file "$level1" --kerning auto "$collection")
      peer_args=(--font "$face" -r 32-126 --symbols "$(tr -d '\n' <"$level1")" --size 16)
      declare -A goal=([1]=0.62 [2]=0.70 [4]=0.75 [8]=) ;;
    *)
      echo "$0: no font \"$case\": dejavu or cjk" >&2
      exit 2 ;;
  esac
  echo "$title: flash bytes"
  echo "  (lv: lv_font_conv --format bin; x/lv: the coding's bytes over lv_font_conv's compressed file)"
  printf '  %-4s %9s %9s %9s %14s %9s %8s %8s %8s  %s\n' bpp auto runs none "lv compressed" "lv plain" \
    auto/lv runs/lv none/lv "auto/lv: goal"
  for bpp in "${depths[@]}"; do
    declare -A size=()
    for compress in auto runs none; do
      size[$compress]=$(ours --bpp "$bpp" --compress $compress "${our_args[@]}")
    done
    peer_compressed=$(peer "${peer_args[@]}" --bpp "$bpp")
    peer_plain=$(peer "${peer_args[@]}" --bpp "$bpp" --no-compress)
    ratios=$(awk -v a="${size[auto]}" -v r="${size[runs]}" -v n="${size[none]}" -v p="$peer_compressed" \
      'BEGIN { printf "%8.2f %8.2f %8.2f", a / p, r / p, n / p }')
    verdict="(no goal)"
    if [[ -n ${goal[$bpp]} ]]; then
      verdict=$(awk -v a="${size[auto]}" -v p="$peer_compressed" -v g="${goal[$bpp]}" \
        'BEGIN { printf "<= %.2f: %s", g, (a / p <= g ? "yes" : "NO") }')
    fi
    printf '  %-4s %9s %9s %9s %14s %9s %s  %s\n' "$bpp" "${size[auto]}" "${size[runs]}" "${size[none]}" \
      "$peer_compressed" "$peer_plain" "$ratios" "$verdict"
  done
done
[[ ${#fonts[@]} -eq 1 ]] && exit 0
for cpu in cortex-m0plus cortex-m4; do
  arm-none-eabi-gcc -std=c99 -Os -mcpu=$cpu -mthumb -fstack-usage -c "$runtime/veltrane_font.c" -o "$work/rt.o"
  # Every frame of the runtime added, as if each called the next: more than any call chain takes.
  stack=$(awk '{ sum += $2 } END { print sum }' "$work/rt.su")
  echo "runtime on $cpu: code $(arm-none-eabi-size -A "$work/rt.o" | awk '/^\.text/ { print $2 }') bytes" \
       "(goal <= 1536 on cortex-m0plus), stack at most $stack bytes (goal <= 512)"
done
