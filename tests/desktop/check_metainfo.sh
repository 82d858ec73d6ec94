#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The AppStream description passes appstreamcli's validation (offline) and names this version.
#   check_metainfo.sh METAINFO-FILE VERSION
set -euo pipefail
. "$(dirname "$0")/lib.sh"
metainfo=$1
version=$2
need appstreamcli appstream
report=$(appstreamcli validate --no-net --pedantic "$metainfo" 2>&1) || fail "appstreamcli: $report"
echo "$report"
grep -q "<release version=\"$version\"" "$metainfo" || fail "no release entry for version $version"
grep -q '<screenshot type="default">' "$metainfo" || fail "no default screenshot"
grep -q '<project_license>GPL-3.0-or-later</project_license>' "$metainfo" || fail "no project licence"
grep -q '<developer id="[^"]*">' "$metainfo" || fail "no developer"
