#!/usr/bin/env bash
# The README's table of what each option costs or saves, recomputed from the exporter's
# --stats, so that its numbers stay those the exporter writes. Prints the table's rows;
# --check fails when the README's rows differ, --write puts them in the README.
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

# The README's rows: those after the table's header and its separator line.
readme_rows() {
  awk '/^\| Export \| Characters \|/ { table = 1; getline; next } table && !/^\|/ { exit } table' "$readme"
}

computed=$(rows)
case $mode in
  print) echo "$computed" ;;
  check)
    if [[ "$computed" != "$(readme_rows)" ]]; then
      echo "The README's table of costs differs from what the exporter writes; run $0 --write" >&2
      diff <(readme_rows) <(echo "$computed") >&2 || true
      exit 1
    fi ;;
  write)
    awk -v rows="$computed" '/^\| Export \| Characters \|/ { print; getline; print; print rows; table = 1; next }
                             table && /^\|/ { next } { table = 0; print }' "$readme" >"$out/README.md"
    cp "$out/README.md" "$readme" ;;
esac
