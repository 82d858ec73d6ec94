// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioFilterSliders.h"

#include "EdspCodes.h"
#include "EdspOptions.h"

#include <algorithm>
#include <cstdlib>

namespace {
// Change handlers nest through assignments; the cascade settles within a few levels. The bound
// only guards against a loop that the arithmetic never produces.
constexpr int MaxDepth = 32;
}  // namespace

int AudioFilterSliders::position(int index) const
{
    switch (index) {
        case LowPass:
            return lp_;
        case HighPass:
            return hp_;
        case Passband:
            return pos_;
        default:
            return 0;
    }
}

int AudioFilterSliders::maximum(int index) const
{
    return index == Passband ? posMax_ : CutMax;
}

int AudioFilterSliders::bandwidthSteps() const
{
    return std::abs(hp_ - lp_);
}

QList<CatCommand> AudioFilterSliders::move(int index, int value)
{
    sent_.clear();
    if (index == LowPass || index == HighPass || index == Passband)
        assign(index, std::clamp(value, 0, maximum(index)));
    return sent_;
}

bool AudioFilterSliders::assign(int index, int value)
{
    if (value < 0 || value > maximum(index))
        return false;
    int& slot = index == LowPass ? lp_ : index == HighPass ? hp_ : pos_;
    if (slot == value)
        return true;
    slot = value;
    change(index);
    return true;
}

void AudioFilterSliders::updateLimits(int bw)
{
    bandLimitsCaption_ = QStringLiteral(" Band Limits = %1 to %2 Hz").arg(hp_ * HzPerStep).arg(lp_ * HzPerStep);
    bandwidthCaption_ = QStringLiteral(" Bandwidth = %1 Hz").arg(bw * HzPerStep);
}

void AudioFilterSliders::change(int index)
{
    if (depth_ >= MaxDepth)
        return;
    ++depth_;
    const int bw = bandwidthSteps();
    switch (index) {
        case LowPass:
            lowPassCaption_ = QStringLiteral(" Low Pass Cut = %1 Hz").arg(lp_ * HzPerStep);
            lowPassBarLeft_ = lp_ * TwipsPerStep;
            updateLimits(bw);
            sent_.append(edspCommand(EdspFn::LowPassCut, lp_));
            break;
        case HighPass:
            highPassCaption_ = QStringLiteral(" High Pass Cut = %1 Hz").arg(hp_ * HzPerStep);
            highPassBarWidth_ = hp_ * TwipsPerStep;
            updateLimits(bw);
            sent_.append(edspCommand(EdspFn::HighPassCut, hp_));
            break;
        case Passband:
            // The passband can move only as far as its width leaves room; never a range of nothing.
            posMax_ = CutMax - bw;
            if (posMax_ == 0)
                posMax_ = 1;
            pos_ = std::min(pos_, posMax_);
            // A full-width passband at position 1 would put the low-pass cut past its end: it stops there.
            assign(LowPass, std::min(pos_ + bw, CutMax));
            assign(HighPass, std::max(lp_ - bw, 0));
            break;
        default:
            break;
    }
    // The passband position follows the lower edge; a value outside its range is dropped.
    assign(Passband, lp_ - bw);
    --depth_;
}
