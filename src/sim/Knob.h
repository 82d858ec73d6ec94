// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The virtual radio's tuning knob, turned by a hand that keeps a steady rate: VFO-A moves in the
// radio's 10 Hz steps at so many hertz a second, for so many seconds (or for ever), then rests.
// Plain arithmetic on the time, so a bench can tell when the radio reached any frequency it shows.

#include <QString>
#include <QtGlobal>
#include <optional>

class Knob {
public:
    static constexpr int StepHz = 10;

    struct Turn {
        double hzPerS = 0;   // negative turns down
        double seconds = 0;  // 0: for ever
    };
    // "HZ_PER_S[,SECONDS]", as the command line takes it; nothing, with the reason, when malformed.
    static std::optional<Turn> parse(const QString& text, QString* error = nullptr);

    // Starts turning at nowMs.
    void turn(const Turn& t, qint64 nowMs);
    void stop() { turn_.reset(); }
    bool turning(qint64 nowMs) const;
    // The 10 Hz steps turned since the turn began, at nowMs.
    qint64 stepsAt(qint64 nowMs) const;
    // When the knob reached the given step (milliseconds on the same clock); nothing before it starts.
    std::optional<qint64> reachedStepAtMs(qint64 step) const;

private:
    std::optional<Turn> turn_;
    qint64 startMs_ = 0;
};
