// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Following the tuning knob: while a VFO's frequency moves, the link reads that VFO's record alone,
// back to back (21 bytes on the line instead of a whole poll's 109), so the display keeps pace with
// the dial; when three readings in a row agree the knob rests and the full poll takes over again.
// A full poll still runs at least once a second, so the meters, the flags and the other VFO are never
// older than that.
//
// Plain decisions, fed with what the poll and the readings found and the time; the window posts the
// jobs. Frequencies are compared as the radio reports them, in 10 Hz steps.

#include <QtGlobal>
#include <optional>

class KnobFollower {
public:
    static constexpr int RestingReadings = 3;        // agreeing readings in a row: the knob rests
    static constexpr qint64 FullPollEveryMs = 1000;  // the longest the meters and flags may wait
    // Counted from when the last full poll began, the next is asked for this long before the second
    // is up: the reading still on the line (about 50 ms at 4800 baud) and the way to the window and
    // back must fit in it.
    static constexpr qint64 FullPollLeadMs = 150;

    enum class Vfo { A = 0, B = 1 };
    enum class Next {
        TimedPoll,  // not following: the poll timer goes on as it does
        ReadA,      // read VFO-A's record now
        ReadB,      // read VFO-B's record now
        FullPoll,   // run a whole poll now, then ask again
    };

    // Following is allowed (the fast link is on and Follow Knob checked); off forgets everything.
    void setEnabled(bool on);
    bool enabled() const { return enabled_; }
    bool following() const { return moving_[0] || moving_[1]; }
    // Stop following now (the poll stopped, the port closed); the VFOs' places are kept.
    void rest() { stop(); }

    // A whole poll's frequencies (nothing for a poll that brought no status), nowMs when it began.
    Next afterPoll(std::optional<qint64> aSteps, std::optional<qint64> bSteps, qint64 nowMs);
    // One VFO's reading; nothing for a reading that failed (short, empty, late): following stops,
    // and the timed poll, which copes with a misbehaving radio, takes over.
    Next afterReading(Vfo vfo, std::optional<qint64> steps, qint64 nowMs);

private:
    Next next(qint64 nowMs);
    void stop();

    bool enabled_ = true;
    std::optional<qint64> known_[2];  // the latest frequency seen of each VFO
    bool moving_[2] = {false, false};
    int agreeing_[2] = {0, 0};  // readings in a row that agree, the last of them known_
    qint64 lastFullPollMs_ = 0;
    int turn_ = 0;  // the VFO read last, when both move
};
