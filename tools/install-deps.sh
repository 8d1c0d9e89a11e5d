#!/usr/bin/env bash
# Installs the Debian packages the build needs when they are missing:
# compiler and CMake, GoogleTest and Google Benchmark, CLI11 and nlohmann-json
# for the kvcart program, python3 for its end-to-end test, pkgconf for the
# install test's pkg-config consumer, clang and its sanitizer and fuzzer
# runtimes for the fuzz targets.  Does nothing when all are there.
set -euo pipefail
packages=(g++ cmake libgtest-dev libbenchmark-dev libcli11-dev nlohmann-json3-dev python3 pkgconf clang libclang-rt-14-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" > /dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "installing: ${missing[*]}" >&2
run=()
[ "$(id -u)" -ne 0 ] && run=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${run[@]}" apt-get install -y -q "${missing[@]}" > /dev/null 2>&1 ||
  { "${run[@]}" apt-get update -q > /dev/null && "${run[@]}" apt-get install -y -q "${missing[@]}" > /dev/null; }
