#!/usr/bin/env bash
# Installs what is missing, builds and installs the library into build/prefix, builds the
# example host and extension against that installed package, and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh

prefix="$PWD/build/prefix"
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DQUORVANE_BUILD_TESTS=OFF -DQUORVANE_BUILD_BENCH=OFF -DCMAKE_INSTALL_PREFIX="$prefix"
cmake --build build/release
cmake --install build/release > /dev/null

cmake -S examples -B build/examples -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$prefix"
cmake --build build/examples

# The same package must also be usable through pkg-config.
PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --exists QuorvaneExt

build/examples/example_host build/examples/libexample_extension.so
