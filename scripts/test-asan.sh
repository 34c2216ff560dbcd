#!/usr/bin/env bash
# Builds the whole project and its tests with AddressSanitizer and UndefinedBehaviorSanitizer
# in a build directory of its own and runs every test, the desktop program's under Xvfb too.
# Every process of the run (tests, the programs they start, the consumer programs they
# compile) writes its sanitizer reports into BUILD_DIR/sanitizer-reports/; the run fails
# when a test fails or when any report was written, even by a process whose exit status
# no test looked at.
# Usage: scripts/test-asan.sh BUILD_DIR JOBS
set -euo pipefail

build_dir=${1:-build-asan}
jobs=${2:-2}
root=$(cd "$(dirname "$0")/.." && pwd)
reports="$(cd "$root" && mkdir -p "$build_dir" && cd "$build_dir" && pwd)/sanitizer-reports"
rm -rf "$reports"
mkdir -p "$reports"

# Stop at the first error, with its stack; leaks are errors as well. The suppressions
# cover leaks inside the desktop libraries only (see the file).
export ASAN_OPTIONS="halt_on_error=1:detect_leaks=1:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1:log_path=$reports/asan"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1:log_path=$reports/ubsan"
export LSAN_OPTIONS="suppressions=$root/tests/sanitizers/lsan.supp:print_suppressions=0"
# The desktop program starts several times slower under the sanitizers.
export VELTRANE_GUI_TIMEOUT=${VELTRANE_GUI_TIMEOUT:-80}

cmake -S "$root" -B "$build_dir" -DVELTRANE_SANITIZE=ON
cmake --build "$build_dir" -j "$jobs"
status=0
(cd "$build_dir" && ctest --output-on-failure -j "$jobs") || status=$?

if compgen -G "$reports/*" >/dev/null; then
  echo "test-asan: sanitizer reports were written:" >&2
  for report in "$reports"/*; do
    echo "==== $report" >&2
    cat "$report" >&2
  done
  status=1
fi
exit "$status"
