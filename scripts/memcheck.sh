#!/usr/bin/env bash
# Runs the command-line exporter under Valgrind's memcheck on DejaVu Sans at a small and
# at the largest height. Fails on any memory error and on memory definitely lost; prints
# memcheck's error and leak summaries.
# Usage: scripts/memcheck.sh BUILD_DIR
set -euo pipefail

build_dir=${1:-build}
font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
work=$(mktemp -d "${TMPDIR:-/tmp}/veltrane-memcheck.XXXXXX")
trap 'rm -rf "$work"' EXIT

status=0
for height in 16 256; do
  echo "== memcheck: veltrane-fontgen-export --height $height (characters 32-126) DejaVu Sans"
  log="$work/memcheck-$height.log"
  if ! valgrind --tool=memcheck --leak-check=full --show-leak-kinds=definite,indirect,possible \
      --errors-for-leak-kinds=definite --error-exitcode=99 --track-origins=yes --log-file="$log" \
      "$build_dir/veltrane-fontgen-export" --height "$height" "$font" "$work/DejaVuSans$height.cpp"; then
    cat "$log"
    status=1
  fi
  grep -E "ERROR SUMMARY|definitely lost|indirectly lost|possibly lost|still reachable|in use at exit|total heap usage|All heap blocks" "$log" |
    sed 's/^==[0-9]*== */   /'
done
exit "$status"
