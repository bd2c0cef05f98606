#!/usr/bin/env bash
# Builds the libFuzzer targets with clang++ under AddressSanitizer and UndefinedBehaviorSanitizer
# into build/fuzz and runs each of them for the given number of seconds (default 60), one after
# the other. Each starts from its seeds in fuzz/corpus/<target>/ and keeps what it learns in
# build/fuzz/corpus/<target>/, so the checked-in seeds stay as they were written. A crash stops
# the script and leaves the input in build/fuzz/artifacts/. With 0 seconds every target only
# replays its seeds once.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh

seconds=${1:-60}
build=build/fuzz
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQUORVANE_BUILD_FUZZ=ON -DQUORVANE_WERROR=ON -DQUORVANE_BUILD_TESTS=OFF \
  -DQUORVANE_BUILD_BENCH=OFF
cmake --build "$build" -j "$(nproc)"

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
mkdir -p "$build/artifacts"
for program in "$build"/fuzz/*_fuzz; do
  name=$(basename "$program")
  seeds=fuzz/corpus/$name
  if [ "$seconds" -eq 0 ]; then
    "$program" -runs=0 "$seeds"
    continue
  fi
  mkdir -p "$build/corpus/$name"
  echo "== $name: $seconds s"
  "$program" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="$build/artifacts/$name-" "$build/corpus/$name" "$seeds"
done
