# SPDX-License-Identifier: GPL-3.0-or-later
# Shared by the desktop checks: skipping when a validating tool is missing, failing with a reason.
# CTest counts exit status 77 as skipped; scripts/setup.sh installs every tool named here.

need() {  # need TOOL DEBIAN-PACKAGE
    if ! command -v "$1" >/dev/null 2>&1; then
        echo "SKIPPED: $1 is not installed (Debian package $2; scripts/test.sh installs it)"
        exit 77
    fi
}

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# The files an installation holds, relative to its prefix, from the list beside the checks.
expected_files() {
    grep -v -e '^#' -e '^$' "$1"
}
