// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the other windows may use of the main window. The main window implements it; the memory
// window, the navigator, the EDSP dialog and the filter window are handed a reference to it, so
// none of them includes the main window.

#include <QRect>
#include <QString>

class QWidget;
class RadioLink;
class SettingsStore;

class ConsoleHost {
public:
    virtual ~ConsoleHost() = default;

    virtual RadioLink& link() = 0;
    virtual SettingsStore& settings() = 0;
    virtual QWidget* window() = 0;
    virtual bool portOpen() const = 0;

    // The status poll timer (Timer1).
    virtual void setPollEnabled(bool on) = 0;
    virtual bool pollEnabled() const = 0;

    // Indicator labels Label1(n) of the main window: 0 DUAL, 1 mode, 3 SPLIT, 4 TUNER, 6 repeater,
    // 8 VFO, 9 MEM, 10 M-TUN, 12 CW pitch...
    virtual bool indicatorVisible(int index) const = 0;
    virtual QString indicatorCaption(int index) const = 0;

    // Shared numbers: VFO-A (1) and VFO-B (2) frequency in kHz, the current mode code.
    virtual double vfoKHz(int vfo) const = 0;
    virtual void setVfoKHz(int vfo, double kHz) = 0;
    virtual int modeCode() const = 0;
    virtual void setModeCode(int code) = 0;

    // The VFO-A frequency display Label2(1).
    virtual void setVfoADisplay(const QString& caption) = 0;

    // EDSP menu check marks: mnu_EDSPR (transmit = false) and mnu_EDSPT (transmit = true).
    virtual bool edspMenuChecked(bool transmit, int index) const = 0;
    virtual void setEdspMenuChecked(bool transmit, int index, bool checked) = 0;

    // Back colour of a front-panel key, as a blue-green-red value; reset gives the button face again.
    virtual void setKeyBackColour(int keyIndex, quint32 bgr) = 0;
    virtual void resetKeyBackColour(int keyIndex) = 0;

    // Main window position and size in twips (Left, Top, Width, Height).
    virtual QRect geometryTwips() const = 0;
    // Width of the navigator window in twips (for the filter window's default position).
    virtual int navigatorWidthTwips() = 0;
};
