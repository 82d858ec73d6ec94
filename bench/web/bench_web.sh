#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Prints the web panel's figures (see bench_web.mjs); needs Debian's chromium, node and npm.
# Usage: bench/web/bench_web.sh [BUILD_DIR]
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
build="$(cd "${1:-$here/../../build}" && pwd)"
chromium="$(command -v chromium || command -v chromium-browser || true)"
[ -n "$chromium" ] || { echo "no browser: install Debian's package chromium"; exit 1; }
work="$build/bench-web-node"
mkdir -p "$work"
lock="$here/../../tests/web/browser/package-lock.json"
if ! cmp -s "$lock" "$work/package-lock.json" || [ ! -d "$work/node_modules/puppeteer-core" ]; then
    cp "$here/../../tests/web/browser/package.json" "$lock" "$work/"
    (cd "$work" && npm ci --no-audit --no-fund --loglevel=error)
fi
cp "$here/bench_web.mjs" "$work/"
FT1000CAT="$build/src/app/ft1000cat" FT1000SIM="$build/src/sim/ft1000-sim" CHROMIUM="$chromium" \
    node "$work/bench_web.mjs"
