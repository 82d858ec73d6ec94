// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The windows the main window opens or drives. The main window knows them only through this
// interface; the application supplies the real windows.

struct StatusView;

class SecondaryWindows {
public:
    virtual ~SecondaryWindows() = default;

    virtual void showMemory() = 0;      // "M-List"
    virtual void openMemoryFile() = 0;  // File > "Open M-File": the memory window's open dialog
    virtual void showNavigator() = 0;   // "&K-Pad"
    virtual void showFilters() = 0;     // "Filters"
    virtual void showAbout() = 0;       // Help > "About"

    // The EDSP dialog: shown on tab 1-4 (0: as it is), option buttons selected as by a click (a
    // selection of an option already selected does nothing), the transmit options cleared.
    virtual void showEdsp(int tab) = 0;
    virtual void selectEdspOption(int index) = 0;
    virtual bool edspOptionSelected(int index) = 0;
    virtual void clearTxEdspOptions() = 0;

    // Every successful status decode: the navigator's display, the filter window's lamps.
    virtual void statusDecoded(const StatusView& view) = 0;
    // The navigator window's width in twips (the filter window's default position uses it).
    virtual int navigatorWidthTwips() = 0;
    // The main window is about to close: false when the operator chose to let a memory upload go on
    // (the main window then stays open).
    virtual bool confirmCloseAll() = 0;
    // The main window is closing: the other windows close with it.
    virtual void closeAll() = 0;
};
