#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The menu entry passes desktop-file-validate and starts the installed program with its icon.
#   check_desktop_entry.sh DESKTOP-FILE
set -euo pipefail
. "$(dirname "$0")/lib.sh"
entry=$1
need desktop-file-validate desktop-file-utils
report=$(desktop-file-validate "$entry" 2>&1) || fail "desktop-file-validate: $report"
[ -z "$report" ] || fail "desktop-file-validate reports: $report"
grep -qx 'Exec=ft1000cat' "$entry" || fail "Exec is not the installed program"
grep -qx 'Icon=ft1000cat' "$entry" || fail "Icon is not the installed icon's name"
grep -qx 'GenericName=Transceiver control' "$entry" || fail "GenericName"
grep -q '^Categories=.*HamRadio;' "$entry" || fail "not in the amateur radio category"
echo "desktop entry valid: $entry"
