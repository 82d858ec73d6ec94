// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The EDSP function codes (fourth byte of instruction 0x75), the main window's EDSP menu items and
// keys the dialog keeps in step, and their colours.

#include <QtGlobal>

namespace EdspFn {
constexpr int RxOff = 0x30;
constexpr int AmDemodulation = 0x31;
constexpr int UsbDemodulation = 0x32;
constexpr int LsbDemodulation = 0x33;
constexpr int DataFilterOff = 0x40;
constexpr int LowPassCut = 0x41;
constexpr int HighPassCut = 0x42;
constexpr int CwCentreDefault = 0x45;  // the CW filter code until a CW filter is chosen
constexpr int CwFilterBase = 55;       // option index + 55: 0x45, 0x46, 0x47
constexpr int DataFilter = 0x48;
constexpr int Noise = 0x4A;
constexpr int Notch = 0x4B;
constexpr int Contour = 0x4E;
constexpr int TxOff = 0xB0;
constexpr int TxUsb = 0xB2;
constexpr int TxLsb = 0xB3;
constexpr int MicEqualizer = 0xC1;
}  // namespace EdspFn

// mnu_EDSPR items.
namespace RxMenu {
constexpr int ContourFilters = 0;
constexpr int ContourOff = 1;
constexpr int Demodulation = 3;
constexpr int DemodulationOff = 4;
constexpr int DataFilters = 6;
constexpr int DataFilterOff = 7;
constexpr int AutoNotch = 9;
constexpr int NoiseReduction = 10;
}  // namespace RxMenu

// mnu_EDSPT items.
namespace TxMenu {
constexpr int Modulation = 0;
constexpr int ModulatorOff = 1;
constexpr int MicEqualization = 3;
constexpr int MicEqualOff = 4;
}  // namespace TxMenu

// Front-panel keys of the main window that show the noise blanker and notch state.
namespace EdspKey {
constexpr int Notch = 28;
constexpr int DspNb = 30;
constexpr quint32 NoiseOnColour = 0xC0FFC0;  // light green, blue-green-red
constexpr quint32 NotchOnColour = 0xFFC0FF;  // light magenta
}  // namespace EdspKey

// Mode codes the dialog writes with instruction 0x0C.
namespace EdspMode {
constexpr int Lsb = 0;
constexpr int Usb = 1;
constexpr int AmSync = 5;  // the AM demodulation option sets 5, not 4
}  // namespace EdspMode
