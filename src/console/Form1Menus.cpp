// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar: File, Rx EDSP, Tx EDSP, the layout switch, Setup and Help.
#include "CatPort.h"
#include "Form1.h"
#include "RadioLink.h"
#include "SecondaryWindows.h"
#include "Twips.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace {
const QString Separator = QStringLiteral("-");

// EDSP dialog tabs (1-based) and option buttons the menu items reach.
constexpr int RxTab = 1, TxTab = 2, SpecialFiltersTab = 4;
constexpr int ContourOff = 17, DemodulationOff = 0, DataFilterOff = 27;
constexpr int NotchOff = 34, NotchOn = 35, NoiseOff = 32, NoiseOn = 33;
constexpr int MicEqualizerNormal = 22;
constexpr int TxEdspOffFunction = 0xB0;
}  // namespace

void Form1::buildMenus()
{
    QMenuBar* bar = menuBar();
    mnu_Bar.fill(nullptr, 7);
    // One menu of a control array: every item calls the array's handler with its index. Checkable
    // items keep the mark their handler sets, not the one a click would flip.
    auto addMenu = [this, bar](int barIndex, const QString& title, const QStringList& captions,
                               QVector<QAction*>& items, bool checkable, void (Form1::*handler)(int)) {
        QMenu* menu = bar->addMenu(title);
        menu->setObjectName(QStringLiteral("mnu_Bar(%1)").arg(barIndex));
        mnu_Bar[barIndex] = menu->menuAction();
        for (int i = 0; i < captions.size(); ++i) {
            QAction* a = menu->addAction(captions[i]);
            if (captions[i] == Separator) {
                a->setSeparator(true);
            } else if (checkable) {
                a->setCheckable(true);
            }
            connect(a, &QAction::triggered, this, [this, a, i, handler] {
                if (a->isCheckable())
                    a->setChecked(!a->isChecked());  // undo Qt's own flip: the handler decides
                (this->*handler)(i);
            });
            items.append(a);
        }
    };
    addMenu(0, QStringLiteral("File"), {QStringLiteral("Open M-File"), Separator, QStringLiteral("&Quit")}, mnu_File,
            false, &Form1::mnu_File_Click);
    addMenu(1, QStringLiteral("Rx EDSP"),
            {QStringLiteral("Rx &Contour Filters"), QStringLiteral("Contour Off"), Separator,
             QStringLiteral("&Rx EDSP Demodulation"), QStringLiteral("EDSP Demodulation Off"), Separator,
             QStringLiteral("Data Mode Filters"), QStringLiteral("EDSP Data Filter Off"), Separator,
             QStringLiteral("Auto Notch"), QStringLiteral("Noise Reduction")},
            mnu_EDSPR, true, &Form1::mnu_EDSPR_Click);
    addMenu(2, QStringLiteral("Tx EDSP"),
            {QStringLiteral("&Tx EDSP Modulation"), QStringLiteral("Tx EDSP Modulator Off"), Separator,
             QStringLiteral("&Microphone EDSP Equalization"), QStringLiteral("Microphone Equal. Off")},
            mnu_EDSPT, true, &Form1::mnu_EDSPT_Click);
    QAction* layoutItem = bar->addAction(FrontPanel::SmallCaption);
    layoutItem->setObjectName(QStringLiteral("mnu_Bar(4)"));
    mnu_Bar[4] = layoutItem;
    connect(layoutItem, &QAction::triggered, this, [this] { mnu_bar_Click(4); });
    addMenu(5, QStringLiteral("Setup"), {QStringLiteral("Com Port"), Separator, QStringLiteral("Authorize Tx")},
            mnu_Stup, false, &Form1::mnu_Stup_Click);
    mnu_Stup[2]->setCheckable(true);
    addMenu(6, QStringLiteral("&Help"), {QStringLiteral("Contents..."), Separator, QStringLiteral("About")}, mnu_Hlp,
            false, &Form1::mnu_Hlp_Click);
}

QMenu* Form1::setupMenu() const
{
    return mnu_Bar[5] ? mnu_Bar[5]->menu() : nullptr;
}

void Form1::mnu_bar_Click(int index)
{
    if (index != 4)
        return;
    applyLayout(FrontPanel::switchLayout(Twips::fromPixels(width())));
}

void Form1::mnu_File_Click(int index)
{
    if (index == 0)
        windows_.openMemoryFile();
    else if (index == 2)
        close();
}

void Form1::mnu_EDSPR_Click(int index)
{
    switch (index) {
        case 0:
        case 3:
            windows_.showEdsp(RxTab);
            break;
        case 1:
            windows_.selectEdspOption(ContourOff);
            break;
        case 4:
            windows_.selectEdspOption(DemodulationOff);
            break;
        case 6:
            windows_.showEdsp(SpecialFiltersTab);
            break;
        case 7:
            windows_.selectEdspOption(DataFilterOff);
            break;
        case 9:
            windows_.selectEdspOption(mnu_EDSPR[9]->isChecked() ? NotchOff : NotchOn);
            break;
        case 10:
            windows_.selectEdspOption(mnu_EDSPR[10]->isChecked() ? NoiseOff : NoiseOn);
            break;
        default:
            break;
    }
}

void Form1::mnu_EDSPT_Click(int index)
{
    switch (index) {
        case 0:
        case 3:
            windows_.showEdsp(TxTab);
            break;
        case 1:
            send(CatCommand::make(Op::Edsp, TxEdspOffFunction));
            windows_.clearTxEdspOptions();
            mnu_EDSPT[1]->setChecked(true);
            mnu_EDSPT[0]->setChecked(false);
            break;
        case 4:
            windows_.selectEdspOption(MicEqualizerNormal);
            mnu_EDSPT[4]->setChecked(true);
            break;
        default:
            break;
    }
}

void Form1::mnu_Stup_Click(int index)
{
    if (index == 0)
        showConfigScrn(false);
    else if (index == 2)
        setTxAuthorized(!txAuthorized());
}

void Form1::mnu_Hlp_Click(int index)
{
    // "Contents..." has no help to show.
    if (index == 2)
        windows_.showAbout();
}
