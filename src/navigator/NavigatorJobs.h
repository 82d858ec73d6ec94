// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the navigator does on the wire, as procedures run by the link thread. Each takes the
// navigator's frequency as the window knew it when the job was posted and returns what to show.

#include <QString>
#include <QtGlobal>
#include <optional>

class CatPort;
struct StepperState;

// The radio's current VFO frequency in kHz: 00 00 00 02 10, 75 ms, read; bytes 2-5 of the record
// as a count of 1/1600 kHz. Nothing when the port is closed or the reply is too short to hold them.
std::optional<double> ReadVfoFreq(CatPort& port);

// Band key, "Main"/"Sub" and slider: the frequency frame (frq in 10 Hz, vfo 1 = A, 2 = B).
void sendFrequency(CatPort& port, qint64 frq, int vfo);

// Mode keys: 00 00 00 mode 0C.
void sendMode(CatPort& port, int mode);

// Quick memory recall: the stored mode, then the frequency to VFO-A.
void recallQuickMemory(CatPort& port, int mode, qint64 frq);

// One tick of a held stepper: 00 00 00 StepSel StepOp, 50 ms, then the step with its wrap rules (and
// a read-back below 100 kHz). Nothing when the port is closed.
std::optional<double> stepperTick(CatPort& port, const StepperState& step, double kHz);

// The tick after the release: drop what arrived, read the frequency back, drop what is left.
// Returns the frequency read back, or kHz when nothing came.
double releaseTick(CatPort& port, double kHz);

// One slider tick of value v: read the frequency back, then move it by v (positive down) and send it
// when it stays in range. Nothing when the port is closed.
struct SliderTick {
    double kHz = 0;     // the frequency to show
    bool sent = false;  // a new frequency was sent
};
std::optional<SliderTick> sliderTick(CatPort& port, int v, double kHz);
