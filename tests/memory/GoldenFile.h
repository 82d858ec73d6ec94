// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A complete memory file written out byte by byte, and the table it must load into.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Golden {

// Single-precision little-endian bytes of the numbers used, in units of 10 Hz.
inline const QByteArray F14157_70 = QByteArray::fromHex("d0d2ac49");   // 1415770.0
inline const QByteArray F7025_00 = QByteArray::fromHex("40822b49");    // 702500.0
inline const QByteArray F28000_00 = QByteArray::fromHex("00e62a4a");   // 2800000.0
inline const QByteArray Minus0_74 = QByteArray::fromHex("000094c2");   // -74.0
inline const QByteArray Plus0_54 = QByteArray::fromHex("00005842");    // 54.0
inline const QByteArray Minus20_48 = QByteArray::fromHex("000000c5");  // -2048.0
inline const QByteArray Zero = QByteArray::fromHex("00000000");

inline QByteArray pad(const QByteArray& text, int width)
{
    return text.leftJustified(width, ' ', true);
}

inline QByteArray record(const QByteArray& chan, const QByteArray& freq, const QByteArray& mode, const QByteArray& clar,
                         const QByteArray& ant, char mde, bool maskedMinusOne, bool maskedOne = false)
{
    QByteArray r = pad(chan, 8) + freq + pad(mode, 7) + clar + pad(ant, 2);
    r += mde;
    r += char(0);
    r += maskedMinusOne ? QByteArray::fromHex("ffff") : maskedOne ? QByteArray::fromHex("0100") : QByteArray(2, '\0');
    return r;
}

inline QByteArray file()
{
    QByteArray b;
    b += record(" Chan 1", F14157_70, "USB", Zero, "A", 1, false);
    b += record(" Chan 2", F7025_00, "CW R", Minus0_74, "B", 3, true);
    b += record(" Chan 3", F28000_00, "AM Sync", Plus0_54, "Rx", 5, false, /*maskedOne=*/true);
    for (int n = 4; n <= 99; ++n)
        b += record(" Chan " + QByteArray::number(n), F7025_00, "LSB", Zero, "A", 0, false);
    b += record(" P 1", F14157_70, "DataUSR", Minus20_48, "A", 1, true);
    for (int n = 2; n <= 9; ++n)
        b += record(" P " + QByteArray::number(n), F28000_00, "FM", Zero, "B", 6, false);
    for (int n = 1; n <= 5; ++n)
        b += record(" QMB " + QByteArray::number(n), Zero, "", Zero, "", 0, false);
    return b;
}

// What the table shows for channel n: six cells and whether the row is masked.
struct Row {
    QStringList cells;
    bool masked;
};
inline Row expected(int n)
{
    if (n == 1)
        return {{" Chan 1", "14,157.70 ", "USB", "0.00 ", "A", "1"}, false};
    if (n == 2)
        return {{" Chan 2", "7,025.00 ", "CW R", "-0.74 ", "B", "3"}, true};
    if (n == 3)
        return {{" Chan 3", "28,000.00 ", "AM Sync", "0.54 ", "Rx", "5"}, false};
    if (n <= 99)
        return {{" Chan " + QString::number(n), "7,025.00 ", "LSB", "0.00 ", "A", "0"}, false};
    if (n == 100)
        return {{" P 1", "14,157.70 ", "DataUSR", "-20.48 ", "A", "1"}, true};
    if (n <= 108)
        return {{" P " + QString::number(n - 99), "28,000.00 ", "FM", "0.00 ", "B", "6"}, false};
    return {{" QMB " + QString::number(n - 108), "0.00 ", "", "0.00 ", "", "0"}, false};
}

}  // namespace Golden
