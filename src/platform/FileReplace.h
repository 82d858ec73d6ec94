// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Replacing a file's contents so that a failed write never loses the old contents and is never
// reported as a success.
//
// Where a temporary file can be made beside the target, the new bytes go to it, are flushed, and it
// takes the target's place only then. Where the folder cannot be written but the file can (an
// operator's file in a folder he may not change), the file is rewritten in place: its old bytes are
// read first, and when the write fails part-way the part already overwritten is written back. The
// result says what became of the old file, in words an operator can act on.

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <functional>

namespace FileReplace {

enum class OldFile {
    Untouched,  // the old file (or its absence) is as it was
    Restored,   // rewritten in place, the write failed, and the old bytes were put back
    Damaged,    // rewritten in place, and the old bytes could not all be put back
};

struct Result {
    bool ok = false;
    QString reason;  // why the write failed, as the system says it
    OldFile old = OldFile::Untouched;
    QString damage;  // when Damaged: what the file holds now

    // The reason and what became of the old file, as sentences for a message box.
    QString message() const;
};

Result write(const QString& path, const QByteArray& bytes);

// The in-place rewrite on an open device (read and write, positioned anywhere): the old contents are
// read, the new ones written from the start and the device cut to their length; on a failure the
// overwritten part is written back and the old length restored. resize changes the device's length.
Result rewrite(QIODevice& device, const std::function<bool(qint64)>& resize, const QByteArray& bytes);

}  // namespace FileReplace
