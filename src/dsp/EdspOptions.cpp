// SPDX-License-Identifier: GPL-3.0-or-later
#include "EdspOptions.h"

#include "EdspCodes.h"

#include <array>

namespace {

// Captions as the radio operator knows them, odd spellings and spacing included.
const std::array<const char*, EdspOptionCount> Captions = {
    "Rx EDSP Off",
    "AM  -   70 Hz - 3.8 kHz",
    "USB - 100 Hz - 3.1 Khz",
    "USB - 300 Hz - 2.8 Khz",
    "LSB - 100 Hz - 3.1 Khz",
    "LSB - 300 Hz - 2.8 Khz",
    "USB - 100 Hz - 3.1 KHz",
    "USB - 150 Hz - 3.1 Khz",
    "USB - 200 Hz - 3.1 Khz",
    "USB - 300 Hz - 3.1 Khz",
    "LSB - 100 Hz - 3.1 Khz",
    "LSB - 150 Hz - 3.1 Khz",
    "LSB - 200 Hz - 3.1 Khz",
    "LSB - 300 Hz - 3.1 Khz",
    "240 Hz",
    "120 Hz",
    "  60 Hz",
    "Equalization Off",
    "LCF  - Hi Frq Emphasis",
    "MCF - Hi - Lo Emphasis",
    "HCF - Lo Frq Emphasis",
    "BPF - QRM Reduction",
    "Normal",
    "Mic 1",
    "Mic 2",
    "Mic 3",
    "Mic 4",
    "Data Filter Off",
    "FSK",
    "SSTV",
    "Packet",
    "Fax",
    "Off",
    "On",
    "Off",
    "On",
};

// Sets item `on` of a menu and clears item `off`.
QList<MenuMark> marks(bool transmit, int on, int off)
{
    return {{transmit, on, true}, {transmit, off, false}};
}

}  // namespace

QString edspOptionCaption(int index)
{
    if (index < 0 || index >= EdspOptionCount)
        return {};
    return QString::fromLatin1(Captions[static_cast<size_t>(index)]);
}

EdspGroup edspOptionGroup(int index)
{
    if (index <= 5)
        return EdspGroup::Demodulation;
    if (index <= 9)
        return EdspGroup::TxUsb;
    if (index <= 13)
        return EdspGroup::TxLsb;
    if (index <= 16)
        return EdspGroup::CwFilters;
    if (index <= 21)
        return EdspGroup::Contour;
    if (index <= 26)
        return EdspGroup::MicEqualization;
    if (index <= 31)
        return EdspGroup::DataDemodulation;
    if (index <= 33)
        return EdspGroup::Noise;
    return EdspGroup::Notch;
}

EdspOptionAction edspOptionAction(int index, const EdspContext& context)
{
    EdspOptionAction a;
    // A receive demodulation choice: mode first, then the EDSP demodulator; the menu shows it on.
    auto demodulation = [&a](int mode, int function, int value) {
        a.commands = {modeCommand(mode), edspCommand(function, value)};
        a.modeCode = mode;
        a.marks = marks(false, RxMenu::Demodulation, RxMenu::DemodulationOff);
        a.thenSelectEqualizationOff = true;
    };
    switch (index) {
        case 0:
            a.commands = {edspCommand(EdspFn::RxOff), modeCommand(context.modeCode)};
            a.marks = marks(false, RxMenu::DemodulationOff, RxMenu::Demodulation);
            a.thenSelectEqualizationOff = true;
            break;
        case 1:
            demodulation(EdspMode::AmSync, EdspFn::AmDemodulation, 0x00);
            break;
        case 2:
            demodulation(EdspMode::Usb, EdspFn::UsbDemodulation, 0x00);
            break;
        case 3:
            demodulation(EdspMode::Usb, EdspFn::UsbDemodulation, 0x10);
            break;
        case 4:
            demodulation(EdspMode::Lsb, EdspFn::LsbDemodulation, 0x00);
            break;
        case 5:
            demodulation(EdspMode::Lsb, EdspFn::LsbDemodulation, 0x10);
            break;
        case 6:
        case 7:
        case 8:
        case 9:
            a.commands = {edspCommand(EdspFn::TxUsb, (index - 5) * 16), modeCommand(EdspMode::Usb)};
            a.modeCode = EdspMode::Usb;
            a.marks = marks(true, TxMenu::Modulation, TxMenu::ModulatorOff);
            break;
        case 10:
        case 11:
        case 12:
        case 13:
            a.commands = {edspCommand(EdspFn::TxLsb, (index - 9) * 16), modeCommand(EdspMode::Lsb)};
            a.modeCode = EdspMode::Lsb;
            a.marks = marks(true, TxMenu::Modulation, TxMenu::ModulatorOff);
            break;
        case 14:
        case 15:
        case 16:
            a.cwFilterCode = index + EdspFn::CwFilterBase;
            a.commands = {edspCommand(*a.cwFilterCode, context.cwCentre)};
            break;
        case 17:
            a.commands = {edspCommand(EdspFn::Contour, 0x00)};
            a.marks = marks(false, RxMenu::ContourOff, RxMenu::ContourFilters);
            break;
        case 18:
            // LCF takes 0x01, not a multiple of 0x10 like the other contours: the radio wants it so.
            a.commands = {edspCommand(EdspFn::Contour, index - 17)};
            a.marks = marks(false, RxMenu::ContourFilters, RxMenu::ContourOff);
            break;
        case 19:
        case 20:
        case 21:
            a.commands = {edspCommand(EdspFn::Contour, (index - 18) * 16)};
            a.marks = marks(false, RxMenu::ContourFilters, RxMenu::ContourOff);
            break;
        case 22:
        case 23:
        case 24:
        case 25:
        case 26:
            a.commands = {edspCommand(EdspFn::MicEqualizer, (index - 22) * 16)};
            a.marks = index == EdspOption::MicNormal ? marks(true, TxMenu::MicEqualOff, TxMenu::MicEqualization)
                                                     : marks(true, TxMenu::MicEqualization, TxMenu::MicEqualOff);
            break;
        case 27:
            a.commands = {edspCommand(EdspFn::DataFilterOff)};
            a.marks = marks(false, RxMenu::DataFilterOff, RxMenu::DataFilters);
            break;
        case 28:
            // FSK is 0x11, one more than the 0x10 step of the other data filters.
            a.commands = {edspCommand(EdspFn::DataFilter, 0x11)};
            a.marks = marks(false, RxMenu::DataFilters, RxMenu::DataFilterOff);
            break;
        case 29:
        case 30:
        case 31:
            a.commands = {edspCommand(EdspFn::DataFilter, (index - 27) * 16)};
            a.marks = marks(false, RxMenu::DataFilters, RxMenu::DataFilterOff);
            break;
        case 32:
        case 33:
            a.commands = {edspCommand(EdspFn::Noise, (index - 32) * 16)};
            // The menu mark flips on either button: the menu item decides what to select from its own mark.
            a.toggleRxMenu = RxMenu::NoiseReduction;
            a.keyColour =
                KeyColour{EdspKey::DspNb,
                          index == EdspOption::NoiseOn ? std::optional<quint32>(EdspKey::NoiseOnColour) : std::nullopt};
            break;
        case 34:
        case 35:
            a.commands = {edspCommand(EdspFn::Notch, (index - 34) * 16)};
            a.toggleRxMenu = RxMenu::AutoNotch;
            a.keyColour =
                KeyColour{EdspKey::Notch,
                          index == EdspOption::NotchOn ? std::optional<quint32>(EdspKey::NotchOnColour) : std::nullopt};
            break;
        default:
            break;
    }
    return a;
}

EdspKeyAction edspKeyAction(int index)
{
    EdspKeyAction a;
    switch (index) {
        case 0:  // "Audio EDSP Filters Off"
        case 1:  // "AF EDSP Off"
            a.selectOptionFirst = EdspOption::DataFilterOff;
            a.commands = {edspCommand(EdspFn::DataFilterOff)};
            break;
        case 2:  // "Tx EDSP Off"
            a.commands = {edspCommand(EdspFn::TxOff)};
            a.clearTxOptions = true;
            a.marks = marks(true, TxMenu::ModulatorOff, TxMenu::Modulation);
            break;
        default:
            break;
    }
    return a;
}
