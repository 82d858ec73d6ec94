// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeypadEntry.h"

#include "NumberFormat.h"

namespace {
// 10 Hz counts of one digit at EntryPos 3 (100 kHz) to 7 (10 Hz).
constexpr qint64 placeValue(int pos)
{
    qint64 v = 1;
    for (int i = pos; i < 7; ++i)
        v *= 10;
    return v;
}
constexpr qint64 OneMHz = 100000;
}  // namespace

void KeypadEntry::beginKeypad()
{
    pos_ = 0;
}

void KeypadEntry::backToBands()
{
    pos_ = BandMode;
}

bool KeypadEntry::enter(bool pollRunning)
{
    if (pos_ != 0 || !pollRunning)
        return false;
    tenHz_ = 0;
    display_ = formatNumber(EntryFreq(), Pattern::EntryNone);
    pos_ = FirstDigit;
    return true;
}

bool KeypadEntry::digit(int d)
{
    if (d < 0 || d > 9 || pos_ < FirstDigit || pos_ >= Full)
        return false;
    if (pos_ <= 2)
        tenHz_ = tenHz_ * 10 + d * OneMHz;
    else
        tenHz_ += d * placeValue(pos_);
    display_ = formatNumber(EntryFreq(), pos_ == FirstDigit ? Pattern::EntryOneDigit : Pattern::EntryTwoDigits);
    ++pos_;
    return true;
}

std::optional<qint64> KeypadEntry::commit()
{
    if (pos_ <= FirstDigit || pos_ > Full)
        return std::nullopt;
    const qint64 frq = tenHz_;
    pos_ = FirstDigit;
    tenHz_ = 0;
    return frq;
}
