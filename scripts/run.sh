#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the program and starts it on its built-in virtual radio.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel 2
exec ./build/src/app/ft1000cat --simulate "$@"
