#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# CPack's Debian package from the existing build: its control fields, its file list (dpkg-deb -c)
# holding every listed file, and dpkg installing it into a private root and removing it again
# without leaving a file behind.
#   check_deb.sh CPACK BUILD-DIR FILE-LIST
set -euo pipefail
. "$(dirname "$0")/lib.sh"
cpack=$1
build=$2
list=$3
need dpkg-deb dpkg
need dpkg-shlibdeps dpkg-dev
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$work/out" >"$work/cpack.log" 2>&1 \
    || fail "cpack failed: $(cat "$work/cpack.log")"
deb=$(find "$work/out" -maxdepth 1 -name '*.deb' | head -n1)
[ -n "$deb" ] || fail "cpack made no .deb: $(cat "$work/cpack.log")"

field() { dpkg-deb -f "$deb" "$1"; }
[ "$(field Package)" = ft1000cat ] || fail "Package: $(field Package)"
[ "$(field Section)" = hamradio ] || fail "Section: $(field Section)"
field Maintainer | grep -qE '^[^<]+ <[^>]+@[^>]+>$' || fail "Maintainer: $(field Maintainer)"
[ -n "$(field Description)" ] || fail "no Description"
depends=$(field Depends)
for lib in libqt6core6 libqt6gui6 libqt6widgets6 libqt6serialport6 libqt6network6 libc6; do
    [[ "$depends" == *"$lib"* ]] || fail "Depends lacks $lib: $depends"
done

dpkg-deb -c "$deb" | awk '{print $6}' >"$work/contents"
while read -r f; do
    grep -qxF "./usr/$f" "$work/contents" || fail "the package lacks /usr/$f"
done < <(expected_files "$list")

# Install and remove with dpkg itself, in a root of its own (its dependencies are not there).
root="$work/root"
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
touch "$root/var/lib/dpkg/status"
dpkg --root="$root" --force-depends --force-not-root --force-bad-path -i "$deb" >"$work/dpkg.log" 2>&1 \
    || fail "dpkg -i: $(cat "$work/dpkg.log")"
while read -r f; do
    [ -f "$root/usr/$f" ] || fail "dpkg did not install /usr/$f"
done < <(expected_files "$list")
dpkg --root="$root" --force-depends --force-not-root --force-bad-path -r ft1000cat >"$work/dpkg.log" 2>&1 \
    || fail "dpkg -r: $(cat "$work/dpkg.log")"
left=$(find "$root" -path "$root/var/lib/dpkg" -prune -o -type f -print)
[ -z "$left" ] || fail "left behind after removal: $left"
echo "$(basename "$deb"): Section $(field Section), Depends $depends; $(wc -l <"$work/contents") entries"
