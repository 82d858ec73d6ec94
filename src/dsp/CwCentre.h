// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The CW filter centre slider HScroll2 (steps of 10 Hz) and the two numbers that go with it.
// The slider sends nothing until the "AF Filters" tab has been visited once, which also keeps its
// positioning from the CW pitch at load quiet.

#include "CatCommand.h"
#include "EdspCodes.h"

#include <QString>
#include <optional>

class CwCentre {
public:
    static constexpr int Max = 127;
    static constexpr int Initial = 75;
    static constexpr int GuardAtLoad = 15;
    static constexpr int HzPerStep = 10;

    int position() const { return position_; }
    int guard() const { return guard_; }            // CentreGuard
    int filterCode() const { return filterCode_; }  // CwFilterCode
    void setFilterCode(int code) { filterCode_ = code; }
    void afFiltersVisited() { guard_ = 0; }

    // Label1(2): the design text until the first change.
    QString caption() const { return caption_; }

    // The slider moved (clamped to 0..127): the caption follows, and the command unless guarded.
    // Nothing at all when the position is unchanged.
    std::optional<CatCommand> move(int value);

    // At load: the position from the main window's CW pitch caption ("750 Hz" -> 75).
    std::optional<CatCommand> loadPitch(const QString& pitchCaption);

    // The caption's leading number / 10, rounded to the nearest whole number, halves to even.
    static int positionFromPitch(const QString& pitchCaption);

private:
    int position_ = Initial;
    int guard_ = GuardAtLoad;
    int filterCode_ = EdspFn::CwCentreDefault;
    QString caption_ = QStringLiteral(" Cent = 750 Hz");
};
