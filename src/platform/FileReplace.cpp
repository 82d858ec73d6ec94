// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileReplace.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

namespace {
// Written in pieces so that a write failing part-way still tells how far it came.
constexpr qint64 Piece = 4096;

const QString LeftAsItWas = QStringLiteral("The file was left as it was.");

QString withStop(const QString& text)
{
    return text.endsWith(u'.') ? text : text + u'.';
}

// Writes from the device's position; the count of bytes that reached it.
qint64 writeFrom(QIODevice& device, const QByteArray& bytes, qint64 count)
{
    qint64 done = 0;
    while (done < count) {
        const qint64 n = device.write(bytes.constData() + done, std::min(Piece, count - done));
        if (n <= 0)
            break;
        done += n;
    }
    return done;
}
}  // namespace

namespace FileReplace {

QString Result::message() const
{
    if (ok)
        return {};
    switch (old) {
        case OldFile::Untouched:
            return withStop(reason) + u' ' + LeftAsItWas;
        case OldFile::Restored:
            return withStop(reason) + u' ' +
                   QStringLiteral("The file was being rewritten in place; its old contents were put back.");
        case OldFile::Damaged:
            break;
    }
    return withStop(reason) + u' ' + damage;
}

Result rewrite(QIODevice& device, const std::function<bool(qint64)>& resize, const QByteArray& bytes)
{
    Result r;
    if (!device.seek(0)) {
        r.reason = device.errorString();
        return r;
    }
    const QByteArray old = device.readAll();
    if (!device.seek(0)) {
        r.reason = device.errorString();
        return r;
    }
    const qint64 written = writeFrom(device, bytes, bytes.size());
    if (written == bytes.size() && resize(bytes.size())) {
        r.ok = true;
        return r;
    }
    r.reason = device.errorString();

    // Only what was overwritten goes back: the bytes beyond it were never touched, and writing them
    // again could fail for the same reason the new ones did (a size limit, a full disk).
    const qint64 overwritten = std::min<qint64>(written, old.size());
    const qint64 putBack = device.seek(0) ? writeFrom(device, old, overwritten) : 0;
    if (putBack == overwritten && resize(old.size())) {
        r.old = OldFile::Restored;
        return r;
    }
    r.old = OldFile::Damaged;
    const QString again = device.errorString();
    if (putBack < overwritten)
        r.damage = QStringLiteral(
                       "Putting the old contents back failed too (%1): bytes %2 to %3 of the file hold "
                       "the new contents, the rest is as it was; the file is %4 bytes long.")
                       .arg(again)
                       .arg(putBack + 1)
                       .arg(written)
                       .arg(device.size());
    else
        r.damage = QStringLiteral(
                       "The old contents were put back, but the old length of %1 bytes could not be "
                       "restored (%2): the file is %3 bytes long.")
                       .arg(old.size())
                       .arg(again)
                       .arg(device.size());
    return r;
}

Result write(const QString& path, const QByteArray& bytes)
{
    Result r;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        // Flushed before the commit: a write that fails while the last buffer goes out (a full disk)
        // must not let the cut-short file take the old one's place.
        if (file.write(bytes) != bytes.size() || !file.flush()) {
            r.reason = file.errorString();
            file.cancelWriting();
            return r;
        }
        if (!file.commit()) {
            r.reason = file.errorString();
            return r;
        }
        r.ok = true;
        return r;
    }
    r.reason = file.errorString();

    // No temporary file beside it: a folder the operator may not change, holding a file he may.
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile() || !info.isWritable())
        return r;
    QFile inPlace(path);
    if (!inPlace.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        r.reason = inPlace.errorString();
        return r;
    }
    return rewrite(
        inPlace, [&inPlace](qint64 size) { return inPlace.resize(size); }, bytes);
}

}  // namespace FileReplace
