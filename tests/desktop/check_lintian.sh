#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Lintian, Debian's package checker, on CPack's package from the existing build: no error, no
# warning, and of the informational tags only those the README names and explains.
#   check_lintian.sh CPACK BUILD-DIR
set -euo pipefail
. "$(dirname "$0")/lib.sh"
cpack=$1
build=$2
need lintian lintian
need dpkg-shlibdeps dpkg-dev
# Informational tags the README explains (the build's compiler flags and its strip are the
# developer build's, not a distribution's).
allowed='hardening-no-bindnow|hardening-no-fortify-functions|binary-has-unneeded-section'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$work/out" >"$work/cpack.log" 2>&1 \
    || fail "cpack failed: $(cat "$work/cpack.log")"
deb=$(find "$work/out" -maxdepth 1 -name '*.deb' | head -n1)
[ -n "$deb" ] || fail "cpack made no .deb: $(cat "$work/cpack.log")"
# Every tag, informational ones included; lintian's own notes (running as root) are not tags.
lintian --display-info --no-tag-display-limit "$deb" >"$work/tags" 2>"$work/lintian.err" || true
grep -E '^[EWIPXO]: ' "$work/tags" >"$work/found" || true
unexpected=$(grep -vE "^I: [^ ]+ ($allowed) " "$work/found" || true)
[ -z "$unexpected" ] || fail "lintian: $unexpected"
echo "$(basename "$deb"): lintian clean; informational: $(cut -d' ' -f3 "$work/found" | sort -u | xargs)"
