// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Gathers the bytes of a TCP stream into command lines: a line ends with "\n", a "\r" anywhere is
// dropped, and a line may arrive in any number of pieces. A line that grows past the limit makes
// the stream unusable (the server then closes that client).

#include <QByteArray>
#include <QList>

class LineAssembler {
public:
    static constexpr int DefaultMaxLine = 1024;

    explicit LineAssembler(int maxLine = DefaultMaxLine) : maxLine_(maxLine) {}

    // Adds received bytes; returns the lines completed by them, without their ends. After an
    // overlong line, nothing more is returned.
    QList<QByteArray> feed(const QByteArray& bytes);
    bool overflowed() const { return overflowed_; }
    // The part of a line received so far.
    const QByteArray& pending() const { return partial_; }

private:
    int maxLine_;
    QByteArray partial_;
    bool overflowed_ = false;
};
