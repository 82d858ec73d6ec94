// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The page's transmit key: the transmitter is keyed while the key is held, and the page says so again
// every WebLimits::PttRepeatMs. A key that is not repeated for WebLimits::PttSilenceMs (the tab
// closed, the network gone, the browser asleep) is released as if let go. A press the radio refused
// (Authorize Tx unchecked, the scope sweeping) or a key the radio took back stays unkeyed until the
// key is let go: repeats never key the transmitter on their own.

#include <QtGlobal>

class PttHold {
public:
    enum class Action { None, Key, Unkey };

    // The key is down: a press or one of its repeats.
    Action press(qint64 nowMs);
    // The key was let go.
    Action release();
    // Time passes: Unkey when the repeats stopped.
    Action tick(qint64 nowMs);
    // The session ends.
    Action end() { return release(); }
    // The radio did not key (the key's command was refused) or unkeyed on its own.
    void notKeyed();

    bool keyed() const { return state_ == State::Keyed; }
    bool held() const { return state_ != State::Up; }

private:
    enum class State { Up, Keyed, HeldNotKeyed };
    State state_ = State::Up;
    qint64 lastPressMs_ = 0;
};
