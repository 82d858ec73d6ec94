// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The audio filter sliders of the EDSP dialog: low-pass cut HScroll1(0), high-pass cut HScroll1(1)
// and the passband position HScroll1(3), which moves both cuts together. Positions count 20 Hz steps.
//
// A slider's change handler runs whenever its position changes, by the user or by an assignment in
// another handler, so moving the passband sets both cuts, whose handlers send their commands and
// pull the passband position back to the lower edge. This class runs that cascade without widgets
// and collects the commands in the order they go out.

#include "CatCommand.h"

#include <QList>
#include <QString>

class AudioFilterSliders {
public:
    enum Index { LowPass = 0, HighPass = 1, Passband = 3 };
    static constexpr int CutMax = 155;
    static constexpr int LowPassInitial = 150;
    static constexpr int HighPassInitial = 15;
    static constexpr int PassbandMaxInitial = 20;
    static constexpr int PassbandInitial = 20;
    static constexpr int HzPerStep = 20;
    static constexpr int TwipsPerStep = 14;  // the cut-away bars in Picture1

    int position(int index) const;
    int maximum(int index) const;
    int bandwidthSteps() const;  // |HP - LP|

    // The user moved slider `index` to `value` (clamped to its range). Nothing happens when the
    // position is unchanged. Returns the commands sent, in order.
    QList<CatCommand> move(int index, int value);

    // Label1(0), Label1(1), Label3, Label4: the design texts until the first move replaces them.
    QString lowPassCaption() const { return lowPassCaption_; }
    QString highPassCaption() const { return highPassCaption_; }
    QString bandLimitsCaption() const { return bandLimitsCaption_; }
    QString bandwidthCaption() const { return bandwidthCaption_; }
    // Label2(1).Left and Label2(0).Width in twips.
    int lowPassBarLeftTwips() const { return lowPassBarLeft_; }
    int highPassBarWidthTwips() const { return highPassBarWidth_; }

private:
    void change(int index);             // HScroll1_Change
    bool assign(int index, int value);  // false when out of range; fires change when it differs
    void updateLimits(int bw);

    int lp_ = LowPassInitial;
    int hp_ = HighPassInitial;
    int pos_ = PassbandInitial;
    int posMax_ = PassbandMaxInitial;
    int depth_ = 0;
    QList<CatCommand> sent_;

    QString lowPassCaption_ = QStringLiteral(" LP Cut = 3000 Hz");
    QString highPassCaption_ = QStringLiteral(" HP Cut = 300 Hz");
    QString bandLimitsCaption_ = QStringLiteral(" Band Limits = 300 to 3000 Hz");
    QString bandwidthCaption_ = QStringLiteral(" Bandwidth = 2700 Hz");
    int lowPassBarLeft_ = LowPassInitial * TwipsPerStep;
    int highPassBarWidth_ = HighPassInitial * TwipsPerStep;
};
