// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The scope's work on the link thread: one pass of a sweep, the tune back to the centre, and the
// single meter read of an S-record tick. Results go out through callbacks as they come; the window
// wraps them so they run on its own thread.

#include "SweepPlan.h"

#include <QByteArray>
#include <atomic>
#include <functional>

class CatPort;

struct SweepSample {
    int index = 0;         // 0 for the first sample of the pass
    qint64 freq10Hz = 0;   // where the receiver was tuned
    bool replied = false;  // false: the meter request got no reply, nothing is drawn for it
    int raw = 0;           // the reply's first byte
    int level = 0;         // integer part of raw / 255 x 100

    double kHz() const { return SweepPlan::toKHz(freq10Hz); }
};

struct SweepCallbacks {
    std::function<void(const SweepSample&)> tuned;   // the receiver has been tuned and has settled
    std::function<void(const SweepSample&)> sample;  // the meter has been read
};

struct SweepOutcome {
    int samplesRun = 0;
    bool cancelled = false;  // stopped by the flag (or the port going away) before the end
};

// One pass over the plan for receiver 1 (Main) or 2 (Sub), per sample: SetFreq, 50 ms, the label,
// (r - 1) 00 00 00 F7, 100 ms, read, the sample. The flag is looked at after every sample, so a
// cancel takes effect after the step under way.
SweepOutcome runSweepPass(CatPort& port, const SweepPlan& plan, int receiver, const std::atomic<bool>& cancel,
                          const SweepCallbacks& callbacks);

// After the last pass: tune the receiver back to the centre.
void tuneToCentre(CatPort& port, double centreKHz, int receiver);

// One S-meter read of the receiver: (r - 1) 00 00 00 F7, 100 ms, read.
QByteArray readScopeMeter(CatPort& port, int receiver);
