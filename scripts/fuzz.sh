#!/usr/bin/env bash
# Runs every fuzz target for a while, starting from its committed seeds
# (tests/fuzz/corpus/NAME/) plus a scratch corpus kept in the build dir.
# A crash leaves its input under BUILD_DIR/fuzz-artifacts/NAME/ and fails the run.
# Usage: scripts/fuzz.sh BUILD_DIR SECONDS_PER_TARGET
set -euo pipefail

build_dir=${1:-build-fuzz}
seconds=${2:-60}
root=$(cd "$(dirname "$0")/.." && pwd)

# One line per target: NAME, built as BUILD_DIR/tests/fuzz/NAME_fuzz.
targets=(
  char_range_parser
)

for name in "${targets[@]}"; do
  scratch="$build_dir/fuzz-corpus/$name"
  artifacts="$build_dir/fuzz-artifacts/$name"
  mkdir -p "$scratch" "$artifacts"
  options=(-max_total_time="$seconds" -timeout=10 -artifact_prefix="$artifacts/" -print_final_stats=1)
  dict="$root/tests/fuzz/$name.dict"
  [[ -f "$dict" ]] && options+=(-dict="$dict")
  echo "== fuzzing $name for ${seconds}s"
  "$build_dir/tests/fuzz/${name}_fuzz" "${options[@]}" "$scratch" "$root/tests/fuzz/corpus/$name"
done
