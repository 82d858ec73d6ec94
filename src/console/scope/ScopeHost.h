// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the band scope uses of the main window it sits in.

#include <QString>

class RadioLink;
class SettingsStore;

class ScopeHost {
public:
    virtual ~ScopeHost() = default;
    virtual RadioLink& link() = 0;
    virtual bool portOpen() const = 0;
    virtual void setPollEnabled(bool on) = 0;                                    // Timer1
    virtual double vfoKHz(int receiver) const = 0;                               // 1 Main (VFO-A), 2 Sub (VFO-B)
    virtual void setFrequencyDisplay(int receiver, const QString& caption) = 0;  // Label2(r)
    virtual void setMainSMeter(int percent) = 0;                                 // axPanel1
    virtual bool dualShown() const = 0;                                          // Label1(0) "DUAL" visible
    virtual void pressKey(int index) = 0;                                        // Key_Click(index), e.g. 20 "&Dual"
    virtual SettingsStore& settings() = 0;  // the scope's own choices (the waterfall)
    // "Save Plot...": the file dialog for the picture (empty when cancelled; it asks nothing about
    // files that exist, since the picture's name may still get its suffix and CSVs go beside it),
    // the one question before files are replaced (true to go on), and the message box that tells of
    // a file that could not be written.
    virtual QString askPlotFile(const QString& suggested) = 0;
    virtual bool confirmPlotFiles(const QString& title, const QString& text) = 0;
    virtual void showScopeError(const QString& title, const QString& text) = 0;
};
