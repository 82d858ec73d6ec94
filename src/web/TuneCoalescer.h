// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A page turning the wheel or dragging the digits sends tuning faster than the radio takes it. What
// a session asked for is kept here, one target a VFO, the latest winning, and handed to the radio
// when it can take it; steps add to the target not yet handed on, so no step is lost in between.

#include "RigState.h"

#include <QtGlobal>
#include <optional>

class TuneCoalescer {
public:
    // A frequency to go to (latest wins).
    void tune(RigVfo vfo, qint64 hz);
    // A step from the target still waiting, or from the frequency the radio is on; kept in the
    // radio's receive range.
    void step(RigVfo vfo, qint64 deltaHz, qint64 currentHz);
    std::optional<qint64> pending(RigVfo vfo) const;
    // The target to hand on now; it is no longer pending.
    std::optional<qint64> take(RigVfo vfo);
    bool empty() const { return !a_ && !b_; }
    void clear();

private:
    std::optional<qint64>& slot(RigVfo vfo) { return vfo == RigVfo::B ? b_ : a_; }
    const std::optional<qint64>& slot(RigVfo vfo) const { return vfo == RigVfo::B ? b_ : a_; }

    std::optional<qint64> a_;
    std::optional<qint64> b_;
};
