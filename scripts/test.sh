#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds everything and runs every test through CTest; then the plain-logic libraries and their tests
# again with the address and undefined-behaviour sanitizers; then the fuzz targets for a bounded time
# each; then the link thread's tests and the poll against the misbehaving radio under the thread
# sanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
# clang for the fuzz targets; hamlib's rigctl client drives the network server in its integration test;
# the desktop checks validate the menu entry, the AppStream file and the manual pages with the
# platform's own tools and build the Debian package (dpkg-shlibdeps finds its dependencies), which
# lintian checks.
# Chromium runs the web panel's page in its browser test, driven by puppeteer-core, which npm installs.
bash scripts/setup.sh clang libclang-rt-14-dev libhamlib-utils desktop-file-utils appstream man-db groff-base \
    dpkg-dev lintian chromium
# node and npm from Debian, unless the machine already has them (from another source, which Debian's
# npm would conflict with).
command -v npm >/dev/null || bash scripts/setup.sh nodejs npm
jobs=2
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel $jobs
ctest --test-dir build --output-on-failure --parallel $jobs

cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DFT_SANITIZE=ON -DFT_CORE_ONLY=ON
cmake --build build-sanitize --parallel $jobs
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir build-sanitize --output-on-failure --parallel $jobs

# Fuzzing: every reader of outside input, with clang's libFuzzer, about 20 s each.
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFT_FUZZ=ON \
    -DFT_CORE_ONLY=ON
cmake --build build-fuzz --target fuzz_targets --parallel $jobs
ctest --test-dir build-fuzz --output-on-failure --parallel $jobs

# Thread sanitizer: the link thread, the virtual radio's host thread and the port watch, polling the
# misbehaving radio, and clients of the server and the sharing ports on threads of their own; any
# data race fails the run.
tsan_tests=(test_radio_link_threaded test_transmit_gate test_radio_link_replacing test_poll_ticks test_sim_radiolink test_sim_link test_sim_fastlink test_sim_unplug test_port_watch
    test_link_faults test_link_faults_fast test_sharing_together)
cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFT_TSAN=ON -DFT_CORE_ONLY=ON
cmake --build build-tsan --target "${tsan_tests[@]}" --parallel $jobs
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 suppressions=$PWD/tests/faults/tsan.supp" \
    ctest --test-dir build-tsan --output-on-failure --parallel $jobs \
    -R "^($(IFS='|'; echo "${tsan_tests[*]}"))\$"
