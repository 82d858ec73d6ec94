#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Regenerates the README's pictures under docs/ from the program's windows on its virtual radio
# (Qt's offscreen platform: no display needed). Takes about a minute: a band-scope sweep and a
# read-out of every memory channel run in real time.
#   bash scripts/screenshots.sh [NAME...]     names: main-large main-small scope memory navigator edsp
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh librsvg2-bin
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --target ft-docshots --parallel 2
QT_QPA_PLATFORM=offscreen ./build/tools/docshots/ft-docshots docs "$@"
