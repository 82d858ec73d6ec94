// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeterDecoder.h"

#include <cmath>

int meterPercent(int raw)
{
    return static_cast<int>(std::floor(raw / 255.0 * 100.0));
}

int cwPitchHz(int raw)
{
    return 300 + 50 * static_cast<int>(std::floor(raw / 16.0 + 0.05));
}

MeterView decodeMeters(int mainS, int subS, int transmit, int pitch)
{
    MeterView v;
    v.mainS = mainS;
    v.subS = subS;
    v.transmit = transmit;
    v.mainPercent = meterPercent(mainS);
    v.subPercent = meterPercent(subS);
    v.transmitPercent = meterPercent(transmit);
    v.line = QStringLiteral("S-Meters 1-2 = %1 + %2 + %3").arg(mainS).arg(subS).arg(transmit);
    v.pitchHz = cwPitchHz(pitch);
    v.pitchText = QString::number(v.pitchHz) + QStringLiteral(" Hz");
    return v;
}

const TransmitMeter* transmitMeter(int index)
{
    static const TransmitMeter meters[] = {
        {0, "PO", "......20....50....100......200...300..400W"},
        {1, "ALC", "_______ALC_______"},
        {3, "IC", "0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30A"},
        {4, "VCC", "0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30V"},
        {5, "SWR", "1.0 . 1.5 . 2.0 . 3.0 . . . . . . . . . . . . . ."},
        {6, "Mic", "                             MIC"},
    };
    for (const auto& m : meters)
        if (m.index == index)
            return &m;
    return nullptr;
}
