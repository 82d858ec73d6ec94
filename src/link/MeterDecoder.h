// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Meter readings: gauge percentages, the raw-value line and the CW pitch.

#include <QString>

struct MeterView {
    int mainS = 0, subS = 0, transmit = 0;  // raw bytes
    int mainPercent = 0, subPercent = 0, transmitPercent = 0;
    QString line;  // "S-Meters 1-2 = a + b + c"
    int pitchHz = 0;
    QString pitchText;  // "750 Hz"
};

int meterPercent(int raw);  // integer part of raw / 255 x 100
int cwPitchHz(int raw);     // 300 + 50 x integer part of (raw / 16 + 0.05)
MeterView decodeMeters(int mainS, int subS, int transmit, int pitch);

struct TransmitMeter {
    int index;
    const char* caption;
    const char* scale;
};
// The transmit meter choices by option index (index 2 does not exist).
const TransmitMeter* transmitMeter(int index);
inline constexpr int TransmitMeterCount = 7;
