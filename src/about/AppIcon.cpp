// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppIcon.h"

#include <QDir>

namespace {
// Where the build embeds the renderings of data/ft1000cat.svg, one PNG a size.
const QString IconFolder = QStringLiteral(":/icons");
}  // namespace

QIcon appIcon()
{
    QIcon icon;
    const QDir folder(IconFolder);
    for (const QString& file : folder.entryList({QStringLiteral("*.png")}, QDir::Files))
        icon.addFile(folder.filePath(file));
    return icon;
}
