#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The web panel in a real browser: Debian's headless Chromium, driven over its DevTools protocol by
# puppeteer-core (from npm, pinned, installed here into the build tree), against the program on the
# virtual radio. Skips (77) only when the browser is missing.
# Usage: run_browser_test.sh FT1000CAT FT1000SIM OUTPUT_DIR
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
exe="$1"
sim="$2"
out="$3"
chromium="$(command -v chromium || command -v chromium-browser || true)"
if [ -z "$chromium" ]; then
    echo "SKIP: no browser: install Debian's package chromium"
    exit 77
fi
if ! command -v npm >/dev/null || ! command -v node >/dev/null; then
    echo "node and npm are needed to install puppeteer-core (Debian's packages nodejs and npm)"
    exit 1
fi
mkdir -p "$out/browser-node"
# The lock file pins every package, not only puppeteer-core.
if ! cmp -s "$here/package-lock.json" "$out/browser-node/package-lock.json" ||
    [ ! -d "$out/browser-node/node_modules/puppeteer-core" ]; then
    cp "$here/package.json" "$here/package-lock.json" "$out/browser-node/"
    (cd "$out/browser-node" && npm ci --no-audit --no-fund --loglevel=error)
fi
# Run beside its node_modules, where an ES module finds its imports.
cp "$here/panel_browser.mjs" "$out/browser-node/panel_browser.mjs"
FT1000CAT="$exe" FT1000SIM="$sim" CHROMIUM="$chromium" FT_OUT="$out" node "$out/browser-node/panel_browser.mjs"
