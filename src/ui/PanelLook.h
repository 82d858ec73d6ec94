// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Colours and texts of the front panel, named once.

#include <QColor>
#include <QString>

namespace PanelLook {
// The frequency displays: bright digits on a dark glass; dim when muted, red while transmitting.
inline const QColor DisplayGlass{0x0b, 0x14, 0x10};
inline const QColor Digits{0x9c, 0xff, 0x6a};
inline const QColor DigitsMuted{0x3e, 0x62, 0x36};
inline const QColor DigitsTransmit{0xff, 0x4a, 0x3a};
inline const QColor ModeText{0xff, 0xc8, 0x4a};

// Lamps of the indicator strip.
inline const QColor LampOn{0xff, 0xc8, 0x4a};
inline const QColor LampFace{0x22, 0x26, 0x2a};

// The PTT lamp: grey, red (blue-green-red 255) while armed with the right button.
constexpr unsigned PttArmedBgr = 0x0000FF;
inline const QColor PttIdle{0x55, 0x5b, 0x60};

inline const QString Title = QStringLiteral("Tovra's FT-1000 CAT");
inline const QString AnalyserProgram = QStringLiteral("Spectrum Analyzer.exe");
inline const QString AnalyserCaption = QStringLiteral("Spectr");
inline const QString SMeterScale = QStringLiteral("S   1  2  3  4  5  6  7  8  9   +20  +40  +60");
inline const QString SMeterTicks = QStringLiteral("| | | | | | | | | | | | | | | | | | | | | | | | | | |");
}  // namespace PanelLook
