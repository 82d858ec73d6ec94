#pragma once
// A complete memory file written out byte by byte, and the table it must load into.

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Golden {

// Single-precision little-endian bytes of the few numbers used.
inline QByteArray f(double value)
{
    if (value == 1415770.0)
        return QByteArray::fromHex("d0d2ac49");
    if (value == 702500.0)
        return QByteArray::fromHex("40822b49");
    if (value == 2800000.0)
        return QByteArray::fromHex("00e62a4a");
    if (value == -74.0)
        return QByteArray::fromHex("000094c2");
    if (value == 54.0)
        return QByteArray::fromHex("00005842");
    if (value == -2048.0)
        return QByteArray::fromHex("000000c5");
    return QByteArray::fromHex("00000000");
}

inline QByteArray pad(const QByteArray& text, int width)
{
    return text.leftJustified(width, ' ', true);
}

inline QByteArray record(const QByteArray& chan, double freq, const QByteArray& mode, double clar,
                         const QByteArray& ant, char mde, bool maskedMinusOne, bool maskedOne = false)
{
    QByteArray r = pad(chan, 8) + f(freq) + pad(mode, 7) + f(clar) + pad(ant, 2);
    r += mde;
    r += char(0);
    r += maskedMinusOne ? QByteArray::fromHex("ffff") : maskedOne ? QByteArray::fromHex("0100") : QByteArray(2, '\0');
    return r;
}

inline QByteArray file()
{
    QByteArray b;
    b += record(" Chan 1", 1415770.0, "USB", 0, "A", 1, false);
    b += record(" Chan 2", 702500.0, "CW R", -74.0, "B", 3, true);
    b += record(" Chan 3", 2800000.0, "AM Sync", 54.0, "Rx", 5, false, /*maskedOne=*/true);
    for (int n = 4; n <= 99; ++n)
        b += record(" Chan " + QByteArray::number(n), 702500.0, "LSB", 0, "A", 0, false);
    b += record(" P 1", 1415770.0, "DataUSR", -2048.0, "A", 1, true);
    for (int n = 2; n <= 9; ++n)
        b += record(" P " + QByteArray::number(n), 2800000.0, "FM", 0, "B", 6, false);
    for (int n = 1; n <= 5; ++n)
        b += record(" QMB " + QByteArray::number(n), 0, "", 0, "", 0, false);
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
