// SPDX-License-Identifier: GPL-3.0-or-later
#include "TuneCoalescer.h"

#include "RadioRange.h"

void TuneCoalescer::tune(RigVfo vfo, qint64 hz)
{
    slot(vfo) = std::clamp(hz, RadioRange::RxLowHz, RadioRange::RxHighHz);
}

void TuneCoalescer::step(RigVfo vfo, qint64 deltaHz, qint64 currentHz)
{
    tune(vfo, slot(vfo).value_or(currentHz) + deltaHz);
}

std::optional<qint64> TuneCoalescer::pending(RigVfo vfo) const
{
    return slot(vfo);
}

std::optional<qint64> TuneCoalescer::take(RigVfo vfo)
{
    std::optional<qint64> t;
    std::swap(t, slot(vfo));
    return t;
}

void TuneCoalescer::clear()
{
    a_.reset();
    b_.reset();
}
