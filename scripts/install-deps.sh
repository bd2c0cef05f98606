#!/usr/bin/env bash
# Installs the Debian packages the library, its tests, benchmarks and examples need.
# Idempotent: asks apt only for what is missing, and runs 'apt-get update' only then.
set -euo pipefail

packages=(
  # build and library dependencies
  cmake ninja-build g++ clang libclang-rt-14-dev llvm pkg-config binutils
  libboost-dev libboost-system-dev libboost-thread-dev rapidjson-dev
  # what the library needs at run time: service names for the port check, locales for rendering
  netbase locales-all
  # tests, benchmarks and their independent peers (never linked into the library)
  libgtest-dev libgmock-dev libbenchmark-dev libhowardhinnant-date-dev
  nlohmann-json3-dev libfmt-dev libabsl-dev libssl-dev libicu-dev libutfcpp-dev
  liburiparser-dev libcurl4-openssl-dev
  # ABI baseline and coverage report
  abigail-tools gcovr
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "installing: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo); fi
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
