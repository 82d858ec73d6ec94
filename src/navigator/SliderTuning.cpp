// SPDX-License-Identifier: GPL-3.0-or-later
#include "SliderTuning.h"

std::optional<double> SliderTuning::nextFrequency(double kHz, int v)
{
    const double next = kHz - v;
    if (v > 0 && next > BottomKHz)
        return next;
    if (v < 0 && next < TopKHz)
        return next;
    return std::nullopt;
}
