#!/usr/bin/env bash
# Configures and builds Tarvex in ./build (or $TARVEX_BUILD_DIR).
# With --sanitize: the checking build in ./build-sanitize (or $TARVEX_BUILD_DIR-sanitize),
# a Debug build with AddressSanitizer and UndefinedBehaviorSanitizer, warnings as errors
# and no benchmarks.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${TARVEX_BUILD_DIR:-build}
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [ "${1:-}" = "--sanitize" ]; then
  build_dir=$build_dir-sanitize
  options=(-DCMAKE_BUILD_TYPE=Debug -DTARVEX_SANITIZE=ON -DTARVEX_BUILD_BENCH=OFF)
fi
generator=()
if command -v ninja >/dev/null 2>&1; then generator=(-G Ninja); fi
if [ ! -f "$build_dir/CMakeCache.txt" ]; then
  cmake -S . -B "$build_dir" "${generator[@]}" "${options[@]}"
fi
cmake --build "$build_dir" --parallel "$(nproc)"
