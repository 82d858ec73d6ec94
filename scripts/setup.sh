#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what the build and the tests need from Debian's packages, when it is missing.
set -euo pipefail
# librsvg2-bin renders the icon to PNG at build time.
# qt6-websockets-dev for the web panel; openssl makes the certificate its HTTPS test serves.
packages=(cmake ninja-build g++ qt6-base-dev qt6-base-dev-tools libqt6serialport6-dev librsvg2-bin qt6-websockets-dev openssl)
packages+=("$@")
missing=()
for p in "${packages[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    SUDO=""
    [ "$(id -u)" -eq 0 ] || SUDO="sudo"
    $SUDO apt-get update
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
