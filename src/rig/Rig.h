// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What every door to the radio (the network server, the sharing ports) needs of it: the polled state,
// read without touching the wire, and setters that queue the radio's own commands. A door answers
// every get from the state, so its client never waits for the serial line.

#include "RigState.h"

class Rig {
public:
    virtual ~Rig() = default;

    virtual RigState state() const = 0;
    // False while the serial port is closed: sets are refused rather than silently dropped.
    virtual bool linkUp() const = 0;
    // Setup > Authorize Tx.
    virtual bool txAuthorized() const = 0;

    // Each posts the radio's command and updates the state to what the radio will then hold.
    virtual void setFrequency(RigVfo vfo, qint64 hz) = 0;
    virtual void setMode(int modeCode) = 0;  // the main receiver: VFO-A
    // VFO-B's mode: the radio's mode command acts on the VFO in use, so VFO-B is made the VFO in use
    // for it and VFO-A again after it, all as one job.
    virtual void setModeB(int modeCode) = 0;
    virtual void setSplit(bool on) = 0;
    virtual void setPtt(bool on) = 0;
};
