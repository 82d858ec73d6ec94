#!/usr/bin/env bash
# Builds everything and runs every test through CTest; then the plain-logic libraries and their tests
# again with the address and undefined-behaviour sanitizers.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=2
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel $jobs
ctest --test-dir build --output-on-failure --parallel $jobs

cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DFT_SANITIZE=ON -DFT_CORE_ONLY=ON
cmake --build build-sanitize --parallel $jobs
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir build-sanitize --output-on-failure --parallel $jobs
