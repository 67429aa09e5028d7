#!/usr/bin/env bash
# Installs what is missing, builds Tarvex and runs every test. Screens are tested on the
# offscreen platform, so no display is needed. Further arguments go to ctest.
#
# With --sanitize as the first argument, the same tests run in the checking build (see
# build.sh): any report of AddressSanitizer, UndefinedBehaviorSanitizer or LeakSanitizer
# ends the test program with an error, so the test fails.
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
root="$(cd "$here/.." && pwd)"
build_dir=${TARVEX_BUILD_DIR:-build}
build_args=()
if [ "${1:-}" = "--sanitize" ]; then
  shift
  build_dir=$build_dir-sanitize
  build_args=(--sanitize)
  # Full stacks for every allocation (Qt has no frame pointers), so that a leak report
  # shows the whole way to it and the suppressions can name Qt's own functions.
  export ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:fast_unwind_on_malloc=0:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1
  export LSAN_OPTIONS=suppressions="'$root/tests/lsan.supp'":print_suppressions=0
  export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
fi
bash "$here/install-deps.sh"
bash "$here/build.sh" "${build_args[@]}"
cd "$root"
cd "$build_dir"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure --timeout 600 "$@"
