// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A radio for the sharing ports' tests: a state the test arranges and a list of every set it was
// given, each applied to the state as the real backend would (frequencies to the 10 Hz step).

#include "CatCommand.h"
#include "SharedRig.h"

#include <QStringList>

class FakeSharedRig final : public SharedRig {
public:
    FakeSharedRig()
    {
        state.rig.haveStatus = true;
        state.rig.vfoAHz = 14076000;
        state.rig.vfoBHz = 7074000;
        state.rig.modeA = ModeCode::Usb;
        state.rig.modeB = ModeCode::Lsb;
        state.rig.mainSMeterRaw = 0;
    }

    SharedRigState sharedState() const override { return state; }
    bool linkUp() const override { return up; }
    bool txAuthorized() const override { return authorized; }
    void setFrequency(RigVfo vfo, qint64 hz) override
    {
        calls << QStringLiteral("freq %1 %2").arg(vfo == RigVfo::B ? "B" : "A").arg(hz);
        (vfo == RigVfo::B ? state.rig.vfoBHz : state.rig.vfoAHz) = hz / 10 * 10;
    }
    void setMode(int code) override
    {
        calls << QStringLiteral("mode A %1").arg(code);
        state.rig.modeA = code;
    }
    void setModeB(int code) override
    {
        calls << QStringLiteral("mode B %1").arg(code);
        state.rig.modeB = code;
    }
    void setSplit(bool on) override
    {
        calls << QStringLiteral("split %1").arg(on ? 1 : 0);
        state.rig.split = on;
    }
    void setPtt(bool on) override
    {
        calls << QStringLiteral("ptt %1").arg(on ? 1 : 0);
        state.rig.ptt = on;
    }

    SharedRigState state;
    bool up = true;
    bool authorized = false;
    QStringList calls;
};
