// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The windows the main window opens: the memory window, the navigator, the EDSP dialog, the filter
// window and the About box. Each is created when first needed and again after it was closed, so
// its opening steps run as they would on a window loaded anew.

#include "SecondaryWindows.h"

#include <QPointer>

class ConsoleHost;
class Frm_Filt;
class Mem_Frm;
class MemoryDialogs;
class frmAbout;
class frmOptions;
class frm_Navig;
class QWidget;

class AppWindows final : public SecondaryWindows {
public:
    AppWindows() = default;
    ~AppWindows() override;
    // The main window, known once it exists (it is built with a reference to this object).
    void setHost(ConsoleHost* host) { host_ = host; }

    void showMemory() override;
    void openMemoryFile() override;
    void showNavigator() override;
    void showFilters() override;
    void showAbout() override;
    void showEdsp(int tab) override;
    void selectEdspOption(int index) override;
    bool edspOptionSelected(int index) override;
    void clearTxEdspOptions() override;
    void statusDecoded(const StatusView& view) override;
    int navigatorWidthTwips() override;
    bool confirmCloseAll() override;
    void closeAll() override;
    // The memory window's questions to the operator; message boxes when not set (tests answer them).
    void setMemoryDialogs(MemoryDialogs* dialogs) { memoryDialogs_ = dialogs; }

private:
    Mem_Frm& memory();
    frm_Navig& navigator();
    frmOptions& edsp();
    Frm_Filt& filters();
    static void bringUp(QWidget* w);

    ConsoleHost* host_ = nullptr;
    MemoryDialogs* memoryDialogs_ = nullptr;
    QPointer<Mem_Frm> memory_;
    QPointer<frm_Navig> navigator_;
    QPointer<frmOptions> edsp_;
    QPointer<Frm_Filt> filters_;
    QPointer<frmAbout> about_;
};
