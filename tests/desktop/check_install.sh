#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# cmake --install into a fresh prefix, twice over: the prefix holds every listed file and nothing
# else, the programs run from there, and the desktop files hang together (appstreamcli validate-tree).
#   check_install.sh CMAKE BUILD-DIR FILE-LIST
set -euo pipefail
. "$(dirname "$0")/lib.sh"
cmake=$1
build=$2
list=$3
need appstreamcli appstream
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
for pass in first second; do
    "$cmake" --install "$build" --prefix "$prefix" >"$prefix.log" 2>&1 \
        || fail "$pass install failed: $(cat "$prefix.log")"
done
rm -f "$prefix.log"
while read -r f; do
    [ -f "$prefix/$f" ] || fail "not installed: $f"
done < <(expected_files "$list")
extra=$(cd "$prefix" && find . -type f -printf '%P\n' | sort | comm -23 - <(expected_files "$list" | sort))
[ -z "$extra" ] || fail "installed but not listed: $extra"
[ -x "$prefix/bin/ft1000cat" ] && [ -x "$prefix/bin/ft1000-sim" ] || fail "programs not executable"
"$prefix/bin/ft1000-sim" --version | grep -q '^ft1000-sim [0-9]' || fail "installed ft1000-sim does not run"
QT_QPA_PLATFORM=offscreen "$prefix/bin/ft1000cat" --version | grep -q '^ft1000cat [0-9]' \
    || fail "installed ft1000cat does not run"
# Each icon rendering is the size its folder says: PNG width and height, big-endian, at byte 16.
for size in 48 128 256; do
    png="$prefix/share/icons/hicolor/${size}x${size}/apps/ft1000cat.png"
    dims=$(od --endian=big -An -tu4 -j16 -N8 "$png" | xargs)
    [ "$dims" = "$size $size" ] || fail "$png is not $size x $size: $dims"
done
report=$(appstreamcli validate-tree --no-net "$prefix" 2>&1) || fail "appstreamcli validate-tree: $report"
echo "$report"
echo "installed twice into $prefix: $(expected_files "$list" | wc -l) files"
