// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The page's files, built into the program: nothing is fetched from anywhere at run time.

#include <QByteArray>
#include <optional>

struct WebAsset {
    QByteArray contentType;
    QByteArray body;
};

// The asset served at a path ("/" is the page); nothing for any other path.
std::optional<WebAsset> webAsset(const QByteArray& path);
