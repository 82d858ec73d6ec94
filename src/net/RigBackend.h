// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the network server needs of the radio: a snapshot of its state, read without touching the
// wire, and setters that queue the radio's own commands. The server answers every get from the
// snapshot, so a client never waits for the serial line.

#include <QtGlobal>

// The two VFOs as the server names them.
enum class RigVfo { A = 1, B = 2 };

struct RigSnapshot {
    bool haveStatus = false;  // false until the first status record came in: gets are refused
    qint64 vfoAHz = 0;
    qint64 vfoBHz = 0;
    int modeA = -1;  // the radio's mode codes (0 LSB, 1 USB, ... 11 PKT FM); -1 not known yet
    int modeB = -1;
    bool split = false;
    bool ptt = false;
    int mainSMeterRaw = 0;  // 0..255, the main receiver's S-meter byte
};

class RigBackend {
public:
    virtual ~RigBackend() = default;

    virtual RigSnapshot snapshot() const = 0;
    // False while the serial port is closed: sets are refused rather than silently dropped.
    virtual bool linkUp() const = 0;
    virtual bool txAuthorized() const = 0;

    // Each posts the radio's command and updates the snapshot to what the radio will then hold.
    virtual void setFrequency(RigVfo vfo, qint64 hz) = 0;
    virtual void setMode(int modeCode) = 0;  // the main receiver (VFO-A)
    // VFO-B's mode: the radio's mode command acts on the VFO in use, so VFO-B is made the VFO in use
    // for it and VFO-A again after it, all as one job.
    virtual void setVfoBMode(int modeCode) = 0;
    virtual void setSplit(bool on) = 0;
    virtual void setPtt(bool on) = 0;
};
