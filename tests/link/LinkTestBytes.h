// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Small helpers for the link tests: byte strings from numbers, and a fake line to run procedures on.

#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"

#include <QByteArray>
#include <initializer_list>

inline QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray b;
    for (int v : values)
        b.append(static_cast<char>(v));
    return b;
}

// n bytes counting up from first (wrapping at 256).
inline QByteArray counting(int n, int first = 1)
{
    QByteArray b;
    for (int i = 0; i < n; ++i)
        b.append(static_cast<char>((first + i) & 0xFF));
    return b;
}

// An open fake port on a fake clock, with the CatPort that procedures take.
struct FakeLine {
    FakeClock clock;
    FakeSerialPort serial{&clock};
    CatPort port{serial, clock};
    explicit FakeLine(bool open = true)
    {
        if (open)
            serial.open(nullptr);
    }
};
