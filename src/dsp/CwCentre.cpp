// SPDX-License-Identifier: GPL-3.0-or-later
#include "CwCentre.h"

#include "EdspOptions.h"
#include "SettingsStore.h"

#include <algorithm>
#include <cmath>

std::optional<CatCommand> CwCentre::move(int value)
{
    value = std::clamp(value, 0, Max);
    if (value == position_)
        return std::nullopt;
    position_ = value;
    // No blank before "Hz" here, unlike the design text.
    caption_ = QStringLiteral(" Cent = %1Hz").arg(position_ * HzPerStep);
    if (guard_ == GuardAtLoad)
        return std::nullopt;
    return edspCommand(filterCode_, position_);
}

std::optional<CatCommand> CwCentre::loadPitch(const QString& pitchCaption)
{
    return move(positionFromPitch(pitchCaption));
}

int CwCentre::positionFromPitch(const QString& pitchCaption)
{
    const double steps = leadingNumber(pitchCaption, 0.0) / HzPerStep;
    const double whole = std::floor(steps);
    const double rest = steps - whole;
    double r = whole;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0.0))
        r = whole + 1;
    return static_cast<int>(r);
}
