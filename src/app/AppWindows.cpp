// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppWindows.h"

#include "ConsoleHost.h"
#include "Frm_Filt.h"
#include "Mem_Frm.h"
#include "PanelLook.h"
#include "StatusDecoder.h"
#include "frmAbout.h"
#include "frmOptions.h"
#include "frm_Navig.h"

namespace {
constexpr int ModeIndicator = 1;  // Label1(1), the VFO-A mode caption
}

AppWindows::~AppWindows()
{
    closeAll();
}

void AppWindows::bringUp(QWidget* w)
{
    w->show();
    w->raise();
    w->activateWindow();
}

Mem_Frm& AppWindows::memory()
{
    if (!memory_) {
        memory_ = new Mem_Frm(*host_, memoryDialogs_);
        // Closing unloads it: the next "M-List" reads the radio's channel again, as on a first opening.
        memory_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *memory_;
}

frm_Navig& AppWindows::navigator()
{
    if (!navigator_) {
        navigator_ = new frm_Navig(*host_);
        navigator_->setAttribute(Qt::WA_DeleteOnClose);
    }
    return *navigator_;
}

frmOptions& AppWindows::edsp()
{
    if (!edsp_)
        edsp_ = new frmOptions(*host_);
    return *edsp_;
}

Frm_Filt& AppWindows::filters()
{
    if (!filters_)
        filters_ = new Frm_Filt(*host_);
    return *filters_;
}

void AppWindows::showMemory()
{
    bringUp(&memory());
}

void AppWindows::openMemoryFile()
{
    // The memory window is loaded for its file dialog but not shown.
    memory().Diag(0);
}

void AppWindows::showNavigator()
{
    bringUp(&navigator());
}

void AppWindows::showFilters()
{
    bringUp(&filters());
}

void AppWindows::showAbout()
{
    if (!about_)
        about_ = new frmAbout(PanelLook::Title);
    bringUp(about_);
}

void AppWindows::showEdsp(int tab)
{
    edsp().showOnTab(tab);
}

void AppWindows::selectEdspOption(int index)
{
    edsp().selectOption(index);
}

bool AppWindows::edspOptionSelected(int index)
{
    return edsp().isOptionSelected(index);
}

void AppWindows::clearTxEdspOptions()
{
    edsp().clearTxOptions();
}

void AppWindows::statusDecoded(const StatusView& view)
{
    if (navigator_ && navigator_->isVisible())
        navigator_->showPolled(view.a.freqText, host_->indicatorCaption(ModeIndicator));
    // The filter lamps follow every poll, shown or not.
    filters().showFilterBytes(view.a.filterByte, view.b.filterByte);
}

int AppWindows::navigatorWidthTwips()
{
    return navigator().widthTwips();
}

bool AppWindows::confirmCloseAll()
{
    return !memory_ || memory_->confirmClose();
}

void AppWindows::closeAll()
{
    // Each window saves its own placement and data as it closes.
    const QList<QWidget*> windows{memory_, navigator_, edsp_, filters_, about_};
    for (QWidget* w : windows)
        if (w)
            w->close();
    delete memory_;
    delete navigator_;
    delete edsp_;
    delete filters_;
    delete about_;
}
