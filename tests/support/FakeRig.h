// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A radio for the doors' tests: a state the test arranges and a list of every set it was given, each
// applied to the state as the real one would (frequencies to the 10 Hz step).

#include "CatCommand.h"
#include "Rig.h"

#include <QStringList>

// What differs between the scene the network server's tests arrange and the sharing ports' tests'.
struct FakeRigScene {
    qint64 vfoAHz;
    int mainSMeterRaw;
};

class FakeRig final : public Rig {
public:
    static constexpr FakeRigScene ServerScene{14074000, 120};
    static constexpr FakeRigScene SharingScene{14076000, 0};

    explicit FakeRig(FakeRigScene scene = ServerScene)
    {
        values.haveStatus = true;
        values.vfoAHz = scene.vfoAHz;
        values.vfoBHz = 7074000;
        values.modeA = ModeCode::Usb;
        values.modeB = ModeCode::Lsb;
        values.mainSMeterRaw = scene.mainSMeterRaw;
    }

    RigState state() const override { return values; }
    bool linkUp() const override { return up; }
    bool txAuthorized() const override { return authorized; }
    void setFrequency(RigVfo vfo, qint64 hz) override
    {
        calls << QStringLiteral("freq %1 %2").arg(vfo == RigVfo::B ? "B" : "A").arg(hz);
        (vfo == RigVfo::B ? values.vfoBHz : values.vfoAHz) = hz / 10 * 10;
    }
    void setMode(int code) override
    {
        calls << QStringLiteral("mode A %1").arg(code);
        values.modeA = code;
    }
    void setModeB(int code) override
    {
        calls << QStringLiteral("mode B %1").arg(code);
        values.modeB = code;
    }
    void setSplit(bool on) override
    {
        calls << QStringLiteral("split %1").arg(on ? 1 : 0);
        values.split = on;
    }
    void setPtt(bool on) override
    {
        calls << QStringLiteral("ptt %1").arg(on ? 1 : 0);
        values.ptt = on;
    }

    RigState values;
    bool up = true;
    bool authorized = false;
    QStringList calls;
};
