// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The frequencies the radio tunes and transmits on, as every door checks them.

#include <QtGlobal>

namespace RadioRange {
constexpr qint64 RxLowHz = 100000;     // 100 kHz
constexpr qint64 RxHighHz = 30000000;  // 30 MHz
constexpr qint64 TxLowHz = 1800000;    // 160 m to 10 m
constexpr qint64 TxHighHz = 29999990;
}  // namespace RadioRange
