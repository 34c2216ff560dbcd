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
  font_export
  export_arguments
  runtime_text
)
# Options of one target beyond the common ones. A font input is written to a file and
# exported four times, so it gets a size cap well above its seeds and a time limit per input.
# An argument list's usage errors and help would flood the log: the target's own output is
# closed (libFuzzer keeps its reports).
declare -A target_options=(
  [font_export]="-max_len=16384 -timeout=20"
  [export_arguments]="-max_len=1024 -close_fd_mask=3"
  [runtime_text]="-max_len=256"
)

for name in "${targets[@]}"; do
  scratch="$build_dir/fuzz-corpus/$name"
  artifacts="$build_dir/fuzz-artifacts/$name"
  mkdir -p "$scratch" "$artifacts"
  options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$artifacts/"
           -print_final_stats=1)
  read -r -a extra <<<"${target_options[$name]:-}"
  options+=("${extra[@]}")
  dict="$root/tests/fuzz/$name.dict"
  [[ -f "$dict" ]] && options+=(-dict="$dict")
  echo "== fuzzing $name for ${seconds}s"
  "$build_dir/tests/fuzz/${name}_fuzz" "${options[@]}" "$scratch" "$root/tests/fuzz/corpus/$name"
done
