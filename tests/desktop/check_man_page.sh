#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# A manual page renders with man -l without a warning and lists every option of the program's --help.
#   check_man_page.sh PAGE PROGRAM
set -euo pipefail
. "$(dirname "$0")/lib.sh"
page=$1
program=$2
need man man-db
need groff groff-base
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Rendered as a person's terminal would (UTF-8) and as plain ASCII; groff's warnings go to stderr.
for locale in C.UTF-8 C; do
    LC_ALL=$locale MANWIDTH=80 man --warnings -l "$page" >"$work/page.$locale" 2>"$work/warnings" \
        || fail "man -l $page failed: $(cat "$work/warnings")"
    [ ! -s "$work/warnings" ] || fail "man -l $page warns ($locale): $(cat "$work/warnings")"
done
QT_QPA_PLATFORM=offscreen "$program" --help >"$work/help"
options=$(grep -oE -- '--[a-z][a-z-]*' "$work/help" | sort -u)
[ -n "$options" ] || fail "$program --help lists no option"
for option in $options; do
    grep -qF -- "$option" "$work/page.C" || fail "$page does not list $option"
done
echo "$page renders cleanly and lists: $(echo $options)"
