// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebAssets.h"

#include <QFile>
#include <array>

namespace {
struct Entry {
    const char* path;
    const char* resource;
    const char* contentType;
};
constexpr std::array<Entry, 4> Assets{{
    {"/", ":/web/index.html", "text/html; charset=utf-8"},
    {"/panel.css", ":/web/panel.css", "text/css; charset=utf-8"},
    {"/panel.js", ":/web/panel.js", "text/javascript; charset=utf-8"},
    {"/icon.svg", ":/web/icon.svg", "image/svg+xml"},
}};
}  // namespace

std::optional<WebAsset> webAsset(const QByteArray& path)
{
    for (const Entry& e : Assets) {
        if (path != e.path)
            continue;
        QFile f(QString::fromLatin1(e.resource));
        if (!f.open(QIODevice::ReadOnly))
            return std::nullopt;
        return WebAsset{e.contentType, f.readAll()};
    }
    return std::nullopt;
}
