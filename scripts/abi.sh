#!/usr/bin/env bash
# The exported surface of libQuorvaneExt, kept as a baseline in abi/:
#   QuorvaneExt.symbols  every exported symbol, demangled and sorted, for people to read;
#   QuorvaneExt.abi      the ABI description (abidw), which abidiff compares type by type.
#
#   bash scripts/abi.sh check  <library>   fails and prints the difference when <library> differs
#   bash scripts/abi.sh update <library>   writes a new baseline after an intended change
#
# The baseline describes a g++ RelWithDebInfo build (the first build of scripts/test.sh); other
# compilers and sanitizer builds emit other debug information and are not compared.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=${1:-}
library=${2:-}
if [[ "$mode" != check && "$mode" != update ]] || [ ! -f "$library" ]; then
  echo "usage: bash scripts/abi.sh check|update <path to libQuorvaneExt.so>" >&2
  exit 2
fi

symbols() {
  nm -D --defined-only "$1" | awk '{ print $2, $3 }' | c++filt | LC_ALL=C sort
}
describe() {
  abidw --no-show-locs --no-corpus-path --no-comp-dir-path --no-architecture \
    --type-id-style hash --drop-private-types \
    --headers-dir QuorvaneExt/include --headers-dir Libraries/Helper/helper "$1"
}

if [ "$mode" = update ]; then
  symbols "$library" > abi/QuorvaneExt.symbols
  describe "$library" > abi/QuorvaneExt.abi
  echo "abi/ baseline updated from $library"
  exit 0
fi

status=0
if ! diff -u abi/QuorvaneExt.symbols <(symbols "$library"); then
  echo "exported symbols differ from abi/QuorvaneExt.symbols (- baseline, + built)"
  status=1
fi
current=$(mktemp)
trap 'rm -f "$current"' EXIT
describe "$library" > "$current"
if ! abidiff --no-show-locs abi/QuorvaneExt.abi "$current"; then
  echo "the ABI differs from abi/QuorvaneExt.abi (abidiff above)"
  status=1
fi
if [ "$status" -ne 0 ]; then
  echo "If the change is intended: bash scripts/abi.sh update <library>, and read the README's"
  echo "rule on the SONAME before committing the new baseline."
fi
exit "$status"
