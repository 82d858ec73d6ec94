// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Following the tuning knob: while a VFO's frequency moves, the link reads that VFO's record alone,
// back to back (21 bytes on the line instead of a whole poll's 109), so the display keeps pace with
// the dial; when three readings in a row agree the knob rests and the full poll takes over again.
// A full poll still runs at least once a second, so the meters, the flags and the other VFO are never
// older than that.
//
// Plain decisions, fed with what the poll and the readings found and the time; the caller posts the
// jobs. Frequencies are compared as the radio reports them, in 10 Hz steps.

#include <QtGlobal>
#include <optional>

class KnobFollower {
public:
    static constexpr int RestingReadings = 3;        // agreeing readings in a row: the knob rests
    static constexpr qint64 FullPollEveryMs = 1000;  // the longest the meters and flags may wait
    // The next full poll must end (its flags read) within the second after the last one ended: a
    // reading is made only if, with it and the full poll taking as long as they did last time,
    // this much is left to spare.
    static constexpr qint64 FullPollSpareMs = 30;
    // What a reading is expected to take before one has been timed: 4800 baud and a late reply.
    static constexpr qint64 FirstReadingGuessMs = 100;
    // While following, a full poll carries this many readings of the followed VFO between its
    // reads, so the display is never held for a whole poll.
    static constexpr int ReadingsInFullPoll = 3;

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

    // A whole poll's frequencies (nothing for a poll that brought no status): it began at
    // startedMs and made its last read by endedMs.
    Next afterPoll(std::optional<qint64> aSteps, std::optional<qint64> bSteps, qint64 startedMs, qint64 endedMs);
    // The first read of a poll, VFO-A's record, at nowMs: true when VFO-A has moved since the last
    // poll, and following starts at once (the rest of that poll is not needed: the next full poll
    // comes within a second of the last one).
    bool startsAtFirstRead(std::optional<qint64> aSteps, qint64 nowMs);
    // One VFO's reading; nothing for a reading that failed (short, empty, late): following stops,
    // and the timed poll, which copes with a misbehaving radio, takes over.
    Next afterReading(Vfo vfo, std::optional<qint64> steps, qint64 nowMs);
    // A reading of VFO-A is part of following (a full poll while only VFO-B moves must read it).
    bool followingA() const { return moving_[0]; }

private:
    Next next(qint64 nowMs);
    void stop();

    bool enabled_ = true;
    std::optional<qint64> known_[2];  // the latest frequency seen of each VFO
    bool moving_[2] = {false, false};
    int agreeing_[2] = {0, 0};  // readings in a row that agree, the last of them known_
    qint64 fullPollEndedMs_ = 0;
    // How long the next full poll is expected to take: as long as the last, with the readings
    // it will carry when the last was a timed poll.
    qint64 fullPollMs_ = 0;
    bool fullPollAddsReadings_ = true;
    bool fullPollAsked_ = false;              // the next full poll is one this follower asked for
    std::optional<qint64> askedMs_;           // when the reading under way was asked for, if known
    qint64 readingMs_ = FirstReadingGuessMs;  // how long the last reading took
    int turn_ = 0;                            // the VFO read last, when both move
};
