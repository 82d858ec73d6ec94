// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A radio for the server's tests: a snapshot the test arranges and a list of every set it was given.

#include "RigBackend.h"

#include <QStringList>

class FakeRigBackend final : public RigBackend {
public:
    FakeRigBackend()
    {
        snap.haveStatus = true;
        snap.vfoAHz = 14074000;
        snap.vfoBHz = 7074000;
        snap.modeA = 1;  // USB
        snap.modeB = 0;  // LSB
        snap.mainSMeterRaw = 120;
    }

    RigSnapshot snapshot() const override { return snap; }
    bool linkUp() const override { return up; }
    bool txAuthorized() const override { return authorized; }
    void setFrequency(RigVfo vfo, qint64 hz) override
    {
        calls << QStringLiteral("freq %1 %2").arg(vfo == RigVfo::B ? "B" : "A").arg(hz);
        (vfo == RigVfo::B ? snap.vfoBHz : snap.vfoAHz) = hz / 10 * 10;
    }
    void setMode(int code) override
    {
        calls << QStringLiteral("mode %1").arg(code);
        snap.modeA = code;
    }
    void setVfoBMode(int code) override
    {
        calls << QStringLiteral("mode B %1").arg(code);
        snap.modeB = code;
    }
    void setSplit(bool on) override
    {
        calls << QStringLiteral("split %1").arg(on ? 1 : 0);
        snap.split = on;
    }
    void setPtt(bool on) override
    {
        calls << QStringLiteral("ptt %1").arg(on ? 1 : 0);
        snap.ptt = on;
    }

    RigSnapshot snap;
    bool up = true;
    bool authorized = false;
    QStringList calls;
};
