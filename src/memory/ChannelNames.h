// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Names of the radio's 113 memory channels: 1-99 regular, 100-108 the nine "P" channels, 109-113 the
// five quick memory bank channels.

#include <QString>

namespace Channels {
constexpr int First = 1;
constexpr int Count = 113;
constexpr int LastRegular = 99;
constexpr int LastP = 108;  // also the last channel an upload writes
constexpr int Uploaded = LastP;
}  // namespace Channels

// The table's form: " Chan 7", " P 3", " QMB 2".
QString gridChannelName(int channel);
// The single-channel display's form, which writes the "P" channels without the blank: " P3".
QString labelChannelName(int channel);
