// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShareFolder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QtGlobal>

#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace {
constexpr mode_t PrivateFolderMode = 0700;
constexpr mode_t OthersBits = 0077;

QString fail(QString* error, const QString& text)
{
    if (error)
        *error = text;
    return {};
}

QString systemError(const QString& what)
{
    return QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(std::strerror(errno)));
}
}  // namespace

QString ShareFolder::ensure(QString* error)
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    const QString folder =
        runtime.isEmpty() ? QDir::tempPath() + QStringLiteral("/%1-%2").arg(QLatin1String(AppFolder)).arg(::getuid())
                          : QFile::decodeName(runtime) + QLatin1Char('/') + QLatin1String(AppFolder);
    const QByteArray path = QFile::encodeName(folder);
    if (::mkdir(path.constData(), PrivateFolderMode) != 0 && errno != EEXIST)
        return fail(error, systemError(folder));
    struct stat st {};
    if (::lstat(path.constData(), &st) != 0)
        return fail(error, systemError(folder));
    if (!S_ISDIR(st.st_mode) || st.st_uid != ::getuid() || (st.st_mode & OthersBits) != 0)
        return fail(error, QStringLiteral("%1 is not a private folder of this user").arg(folder));
    return folder;
}
