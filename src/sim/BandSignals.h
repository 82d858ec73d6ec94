// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Stations on the bands, so that the S-meter moves as a receiver is tuned across them.

#include <QList>
#include <QtGlobal>

struct BandSignal {
    double centreKHz;
    double halfWidthKHz;  // the level falls to the noise floor this far from the centre
    int peak;             // S-meter byte at the centre (0..255)
};

class BandSignals {
public:
    // A few busy spots on 80, 40, 30, 20, 17, 15 and 10 metres and two broadcasters.
    BandSignals();

    // The main or sub S-meter byte for a receiver tuned to freq10Hz (units of 10 Hz): the strongest
    // signal heard there, or the noise floor with a small ripple that depends on the frequency only.
    int sMeterAt(qint64 freq10Hz) const;

    void add(const BandSignal& s) { signals_.append(s); }
    void clear() { signals_.clear(); }
    const QList<BandSignal>& all() const { return signals_; }

    static constexpr int NoiseFloor = 18;
    static constexpr int NoiseRipple = 4;  // the floor wanders between NoiseFloor and NoiseFloor + 3

private:
    QList<BandSignal> signals_;
};
