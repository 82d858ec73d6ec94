// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where the sharing ports put their stable links: $XDG_RUNTIME_DIR/ft1000cat, or, when that
// variable is unset, a folder of this user's own under the temporary directory. Either is created
// with mode 0700. An existing private folder is used only when it is a real folder (not a link),
// owned by this user and closed to everyone else, so another user cannot plant links for our
// clients to follow.

#include <QString>

namespace ShareFolder {
inline constexpr char AppFolder[] = "ft1000cat";

// The folder, created when missing; empty, with the reason, when it cannot be had.
QString ensure(QString* error = nullptr);
}  // namespace ShareFolder
