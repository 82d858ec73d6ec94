// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The entries of the scope's lists, its plot colours and its start-up choices. Every list entry is
// read by its leading number: "12.5 Khz" is 12.5 kHz, "10 mn" is ten minutes.

#include <QStringList>
#include <QtGlobal>

namespace ScopeLists {
QStringList spans();        // PanCombo(1) "Band Width"
QStringList resolutions();  // PanCombo(2) "Resolution"
QStringList recordTimes();  // PanCombo(3) "S - Rec time"

// Start-up choices: a 100 kHz span at 5 kHz steps (21 samples, about three seconds a sweep) shows a
// whole phone or CW segment at once; five minutes is long enough to watch a fading signal.
constexpr int DefaultSpanIndex = 7;        // "100 Khz"
constexpr int DefaultResolutionIndex = 3;  // "5 Khz"
constexpr int DefaultRecordIndex = 3;      // "5 mn"
}  // namespace ScopeLists

namespace ScopeCaptions {
inline constexpr const char* Frame = "Band Scope";
inline constexpr const char* SpanLabel = "Band Width";
inline constexpr const char* ResolutionLabel = "Resolution";
inline constexpr const char* RecordLabel = "S - Rec time";
inline constexpr const char* Continuous = "Continuous";
inline constexpr const char* OneShot = "One Shot";
inline constexpr const char* SRecord = "S - Record";
inline constexpr const char* Main = "Main";
inline constexpr const char* Sub = "Sub";
}  // namespace ScopeCaptions

// The scope's keys in the main window's key array.
namespace ScopeKey {
constexpr int GetCenter = 48;
constexpr int RedPlot = 49;
constexpr int YellowPlot = 50;
constexpr int GreenPlot = 51;
constexpr int Clear = 52;
constexpr int Cancel = 53;
constexpr int First = GetCenter;
constexpr int Last = Cancel;
constexpr int Dual = 20;         // the main window's "&Dual", pressed when the receiver choice needs it
const char* caption(int index);  // "Get Center" .. "Cancel"; nullptr outside 48..53
}  // namespace ScopeKey

// Colours as blue-green-red values.
namespace ScopeColour {
constexpr quint32 Red = 0x0000FF;
constexpr quint32 Yellow = 0xC0FFFF;
constexpr quint32 Green = 0x00FF00;
constexpr quint32 TimeLabel = 15261136;  // the "hh:mm" labels of an S-record
quint32 forKey(int index);               // the plot colour of Key(49..51); 0 for other keys
}  // namespace ScopeColour
