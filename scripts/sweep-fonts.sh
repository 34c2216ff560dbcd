#!/usr/bin/env bash
# Runs the exporter over every font file under the given directories (default
# /usr/share/fonts) at a few heights and with several option sets, and reports what no user
# should ever see: a crash, a hang, a failure without a message, or a failure whose first
# line is not one of the exporter's messages. Not part of `make test`: it takes minutes.
# Usage: scripts/sweep-fonts.sh EXPORTER [DIR...]
#   EXTRA_ARGS="--mono" adds options to every run; HEIGHTS="16" and ONE_SET=1 (only the
#   plain option set) make a quicker sweep; UNICODE=1 sweeps Unicode packed fonts instead:
#   CJK ranges, a strings file of five scripts with a CJK fallback, 1-bit kana with a proof.
set -uo pipefail

exporter=$(realpath "$1")
shift
dirs=("${@:-/usr/share/fonts}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

option_sets=(
  ""
  "--kerning auto --chars 32-255"
  "--codepage CP1251 --kerning gpos --text Привет,_мир!_Ёж"
  "--codepage KOI8-R --chars 32-255 --proof $work/proof.png"
)
heights=(${HEIGHTS:-8 16 33})
[[ -n "${ONE_SET:-}" ]] && option_sets=("")
if [[ -n "${UNICODE:-}" ]]; then
  printf 'Grüße, Привет, Γειά σου, 你好世界, こんにちは, 안녕하세요\n\tالسلام 🙂\n' >"$work/strings.txt"
  cjk=/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc
  option_sets=(
    "--format packed --kerning auto --chars 32-126,0x370-0x3FF,0x400-0x4FF,0x4E00-0x4FFF,0x1F600-0x1F64F"
    "--format packed --bpp 2 --text-file $work/strings.txt --fallback $cjk#2 --kerning gpos"
    "--format packed --mono --chars 0x3000-0x30FF,0xFF00-0xFFEF,0x10FFFF --proof $work/proof.png"
  )
fi

run_one() {
  local font=$1 height=$2 options=$3 out
  out=$(mktemp -d -p "$work")
  # Underscores in an option set stand for spaces inside one argument.
  local args=()
  for word in $options; do args+=("${word//_/ }"); done
  timeout 60 "$exporter" --height "$height" "${args[@]}" ${EXTRA_ARGS:-} "$font" "$out/Font.cpp" \
    >/dev/null 2>"$out/err"
  local status=$?
  local first
  first=$(head -n 1 "$out/err")
  printf '%s\t%s\t%s\t%s\t%s\n' "$status" "$height" "$options" "$font" "$first"
  rm -rf "$out"
}
export -f run_one
export exporter work EXTRA_ARGS

mapfile -t fonts < <(find "${dirs[@]}" -type f \( -iname '*.ttf' -o -iname '*.otf' -o -iname '*.ttc' \
  -o -iname '*.otc' -o -iname '*.otb' -o -iname '*.pcf.gz' -o -iname '*.pcf' -o -iname '*.bdf' \
  -o -iname '*.pfb' -o -iname '*.t1' -o -iname '*.woff' -o -iname '*.woff2' \) | sort)
echo "${#fonts[@]} font files, ${#heights[@]} heights, ${#option_sets[@]} option sets" >&2

for font in "${fonts[@]}"; do
  for height in "${heights[@]}"; do
    for options in "${option_sets[@]}"; do
      printf '%s\0%s\0%s\0' "$font" "$height" "$options"
    done
  done
done | xargs -0 -n 3 -P "$(nproc)" bash -c 'run_one "$0" "$1" "$2"' >"$work/results"

echo "exit statuses:" >&2
cut -f1 "$work/results" | sort | uniq -c >&2
echo "first lines of failures:" >&2
awk -F'\t' '$1 != 0 {print $5}' "$work/results" | sort | uniq -c | sort -rn >&2
# Crashes (128 + signal), timeouts (124) and failures without a message.
awk -F'\t' '$1 >= 124 || ($1 != 0 && $5 == "")' "$work/results"
