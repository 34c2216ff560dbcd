#!/usr/bin/env bash
# Flash of packed fonts (`make bench`): DejaVu Sans 16 px, codes 32-126 with its kerning,
# compiled for a Cortex-M4 (arm-none-eabi-gcc -Os, every data section of the object) at
# 1, 2, 4 and 8 bits a pixel, compressed and not, beside lv_font_conv's --format bin file
# of the same glyphs; and the runtime's code on a Cortex-M0+ and a Cortex-M4.
# Usage: scripts/bench-packed-flash.sh EXPORTER LV_FONT_CONV
set -euo pipefail
exporter=$1 lv_font_conv=$2
font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
runtime=$(cd "$(dirname "$0")/../runtime" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

data_bytes() { arm-none-eabi-size -A "$1" | awk '/^\.(rodata|data)/ { sum += $2 } END { print sum + 0 }'; }

printf '%-4s %-10s %12s %12s  %s\n' bpp pixels packed lv_font_conv "at or below"
for bpp in 1 2 4 8; do
  for compress in auto none; do
    "$exporter" --format packed --bpp $bpp --compress $compress --height 16 --chars 32-126 "$font" "$work/F.c"
    arm-none-eabi-gcc -std=c99 -Os -mcpu=cortex-m4 -mthumb -I"$work" -I"$runtime" -c "$work/F.c" -o "$work/F.o"
    ours=$(data_bytes "$work/F.o")
    peer_flag=(); [[ $compress == none ]] && peer_flag=(--no-compress)
    "$lv_font_conv" --font "$font" -r 32-126 --size 16 --bpp $bpp --format bin "${peer_flag[@]}" -o "$work/peer.bin" >/dev/null
    peer=$(stat -c %s "$work/peer.bin")
    verdict=yes; (( ours <= peer )) || verdict=NO
    printf '%-4s %-10s %12s %12s  %s\n' $bpp "$([[ $compress == auto ]] && echo compressed || echo plain)" "$ours" "$peer" $verdict
  done
done
for cpu in cortex-m0plus cortex-m4; do
  arm-none-eabi-gcc -std=c99 -Os -mcpu=$cpu -mthumb -fstack-usage -c "$runtime/veltrane_font.c" -o "$work/rt.o"
  # Every frame of the runtime added, as if each called the next: more than any call chain takes.
  stack=$(awk '{ sum += $2 } END { print sum }' "$work/rt.su")
  echo "runtime on $cpu: code $(arm-none-eabi-size -A "$work/rt.o" | awk '/^\.text/ { print $2 }') bytes" \
       "(goal <= 1536 on cortex-m0plus), stack at most $stack bytes (goal <= 512)"
done
