#!/usr/bin/env bash
# Installs what is missing, builds the library with its tests and benchmarks, and runs the tests:
# first a g++ build with warnings as errors, then a clang++ build under AddressSanitizer and
# UndefinedBehaviorSanitizer (also warnings as errors). Pass --quick to skip the sanitizer build.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh

quick=0
[ "${1:-}" = "--quick" ] && quick=1

jobs=$(nproc)
build_and_test() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja -DQUORVANE_WERROR=ON "$@"
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" --output-on-failure -j "$jobs"
}

build_and_test build/test -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=RelWithDebInfo

if [ "$quick" -eq 0 ]; then
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
  build_and_test build/sanitize -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
    -DQUORVANE_SANITIZE=ON -DQUORVANE_BUILD_BENCH=OFF
fi
