// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A radio for the fake port that only knows where its two receivers are tuned and what the
// S-meter reads there: a few stations on a noise floor. The frames it understands are the VFO
// settings (0x0A, 0x8A, packed BCD) and the meter read (0xF7); every other frame gets no reply.

#include "CatCommand.h"

#include <QByteArray>
#include <QList>
#include <algorithm>
#include <cmath>
#include <functional>

class SyntheticBand {
public:
    struct Station {
        double kHz;
        double widthKHz;
        int peak;
    };
    QList<Station> stations{{14205.0, 3.0, 200}, {14228.0, 2.0, 120}, {14262.5, 4.0, 165}, {14286.0, 1.5, 95}};
    int noiseFloor = 20;
    double strength = 1.0;  // scales every station (a second sweep "later" can differ)
    // Meter reads to leave unanswered, by their number counted from 1.
    QList<int> silentReads;
    std::function<void(int read)> onMeterRead;  // runs when a meter request arrives

    qint64 vfoA10Hz = 0, vfoB10Hz = 0;
    int meterReads = 0;

    static qint64 decodeBcd(const QByteArray& c)
    {
        qint64 v = 0;
        for (int i = 3; i >= 0; --i) {
            const auto b = static_cast<quint8>(c.at(i));
            v = v * 100 + (b >> 4) * 10 + (b & 0x0F);
        }
        return v;
    }

    int levelAt(qint64 f10Hz) const
    {
        const double kHz = f10Hz / 100.0;
        // A floor that wanders a little with frequency, so an empty band is not a ruler line.
        double level = noiseFloor + 6.0 * std::fabs(std::sin(kHz * 0.37)) + 3.0 * std::fabs(std::sin(kHz * 1.9));
        for (const Station& s : stations) {
            const double d = (kHz - s.kHz) / s.widthKHz;
            level = std::max(level, noiseFloor + (s.peak * strength - noiseFloor) * std::exp(-d * d));
        }
        return std::clamp(static_cast<int>(level), 0, 255);
    }

    QByteArray answer(const QByteArray& c)
    {
        if (c.size() != 5)
            return {};
        const auto op = static_cast<quint8>(c.at(4));
        if (op == Op::SetVfoA)
            vfoA10Hz = decodeBcd(c);
        else if (op == Op::SetVfoB)
            vfoB10Hz = decodeBcd(c);
        if (op != Op::ReadMeter)
            return {};
        ++meterReads;
        if (onMeterRead)
            onMeterRead(meterReads);
        if (silentReads.contains(meterReads))
            return {};
        const int selector = static_cast<quint8>(c.at(0));
        QByteArray r(ReplySize::Meter, '\0');
        r[0] = static_cast<char>(levelAt(selector == 1 ? vfoB10Hz : vfoA10Hz));
        r[4] = static_cast<char>(Op::ReadMeter);
        return r;
    }
};
