// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Reading a fuzz input: a few leading bytes steer the target, the rest is the data under test. The
// seed program writes its seeds in the same layout.

#include <QByteArray>
#include <cstddef>
#include <cstdint>

class FuzzInput {
public:
    FuzzInput(const uint8_t* data, size_t size) : bytes_(reinterpret_cast<const char*>(data), qsizetype(size)) {}

    bool atEnd() const { return at_ >= bytes_.size(); }
    // The next byte, 0 when none is left.
    int byte() { return atEnd() ? 0 : static_cast<quint8>(bytes_[at_++]); }
    // The next n bytes, fewer when the input ends first.
    QByteArray take(qsizetype n)
    {
        const QByteArray part = bytes_.mid(at_, n);
        at_ += part.size();
        return part;
    }
    QByteArray rest() { return take(bytes_.size()); }

private:
    QByteArray bytes_;
    qsizetype at_ = 0;
};

// A check that must hold whatever the input: a failure is a crash, which the fuzzer keeps.
#define FUZZ_CHECK(condition) \
    do {                      \
        if (!(condition))     \
            __builtin_trap(); \
    } while (false)
