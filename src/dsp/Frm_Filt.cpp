// SPDX-License-Identifier: GPL-3.0-or-later
#include "Frm_Filt.h"

#include "ConsoleHost.h"
#include "FilterSelection.h"
#include "RadioLink.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const QString StartupSection = QStringLiteral("Startup");
const QString TopKey = QStringLiteral("FiltTop");
const QString LeftKey = QStringLiteral("FiltLeft");
const QString ColumnsHeading = QStringLiteral("8.2 Mhz    455 Khz");
constexpr int FilterButtonWidthPx = 64;
}  // namespace

Frm_Filt::Frm_Filt(ConsoleHost& host, QWidget* parent) : QMainWindow(parent), host_(host)
{
    setObjectName(QStringLiteral("Frm_Filt"));
    setWindowTitle(QStringLiteral("Filter Selection"));
    setWindowFlag(Qt::Tool);
    setAttribute(Qt::WA_DeleteOnClose);

    filtA.fill(nullptr, 15);
    filtB.fill(nullptr, 15);

    auto* central = new QWidget;
    auto* frames = new QHBoxLayout;
    frames->addWidget(receiverFrame(QStringLiteral(" VFO-A "), filtA, false));
    frames->addWidget(receiverFrame(QStringLiteral(" VFO-B "), filtB, true));

    filt21 = new QPushButton(QStringLiteral("Escape"));
    filt21->setObjectName(QStringLiteral("filt_21"));
    Command1 = new QPushButton(QStringLiteral("Close"));
    Command1->setObjectName(QStringLiteral("Command1"));
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(filt21);
    bottom->addWidget(Command1);

    auto* layout = new QVBoxLayout(central);
    layout->addLayout(frames);
    layout->addLayout(bottom);
    setCentralWidget(central);

    QMenu* menu = menuBar()->addMenu(QStringLiteral("Optional Filters"));
    for (int i = 0; i < FilterSelection::MenuSize; ++i) {
        QAction* a =
            FilterSelection::isSeparator(i) ? menu->addSeparator() : menu->addAction(FilterSelection::menuCaption(i));
        a->setObjectName(QStringLiteral("mnu_filt_%1").arg(i));
        if (!a->isSeparator()) {
            a->setCheckable(true);
            connect(a, &QAction::triggered, this, [this, i] { mnu_filt_Click(i); });
        }
        mnu_filt.append(a);
    }

    connect(Command1, &QPushButton::clicked, this, &QWidget::close);
    Form_Load();
}

QWidget* Frm_Filt::receiverFrame(const QString& caption, QVector<QPushButton*>& buttons, bool sub)
{
    auto* box = new QGroupBox(caption);
    auto* grid = new QGridLayout(box);
    auto* heading = new QLabel(ColumnsHeading);
    heading->setAlignment(Qt::AlignCenter);
    grid->addWidget(heading, 0, 0, 1, 2);
    for (int i : FilterSelection::buttonIndices()) {
        auto* b = new QPushButton(FilterSelection::buttonCaption(i));
        b->setObjectName(QStringLiteral("%1_%2").arg(sub ? QStringLiteral("filtB") : QStringLiteral("filtA")).arg(i));
        b->setMinimumWidth(FilterButtonWidthPx);
        const bool secondIf = i >= 10;
        grid->addWidget(b, 1 + (secondIf ? i - 10 : i), secondIf ? 1 : 0);
        connect(b, &QPushButton::clicked, this, [this, i, sub] { sub ? filtB_Click(i) : filtA_Click(i); });
        buttons[i] = b;
    }
    return box;
}

void Frm_Filt::Form_Load()
{
    const QRect main = host_.geometryTwips();
    WindowPlacement::restore(this, host_.settings(), StartupSection, TopKey, LeftKey, main.y() + main.height(),
                             main.x() + host_.navigatorWidthTwips());
    for (int i : FilterSelection::menuLoadOrder()) {
        const QString stored = host_.settings().value(QString::fromLatin1(FilterSelection::SettingsSection),
                                                      FilterSelection::settingsKey(i), QStringLiteral("0"));
        mnu_filt[i]->setChecked(FilterSelection::checkedFromSetting(stored));
    }
    ApplyFilterOptions();
}

void Frm_Filt::ApplyFilterOptions()
{
    for (int i = 0; i < FilterSelection::MenuSize; ++i) {
        if (const auto gated = FilterSelection::gatedButton(i))
            (gated->subReceiver ? filtB : filtA)[gated->button]->setEnabled(mnu_filt[i]->isChecked());
    }
}

void Frm_Filt::mnu_filt_Click(int index)
{
    // The action has toggled its own mark already.
    host_.settings().setValue(QString::fromLatin1(FilterSelection::SettingsSection),
                              FilterSelection::settingsKey(index),
                              FilterSelection::settingsValue(mnu_filt[index]->isChecked()));
    ApplyFilterOptions();
}

void Frm_Filt::filtA_Click(int index)
{
    if (const auto c = FilterSelection::filtACommand(index))
        host_.link().post([c = *c](CatPort& port) { port.send(c); });
}

void Frm_Filt::filtB_Click(int index)
{
    if (const auto c = FilterSelection::filtBCommand(index))
        host_.link().post([c = *c](CatPort& port) { port.send(c); });
}

void Frm_Filt::light(const QVector<QPushButton*>& buttons, int statusByte)
{
    for (const FilterSelection::Lamp& lamp : FilterSelection::lamps(statusByte)) {
        QPushButton* b = buttons[lamp.button];
        if (lamp.lit) {
            QPalette p = b->palette();
            p.setColor(QPalette::Button, fromBgr(FilterSelection::LitColour));
            b->setPalette(p);
        } else {
            b->setPalette(QPalette());  // the button face again
        }
    }
}

void Frm_Filt::showFilterBytes(int byte9, int byte25)
{
    light(filtA, byte9);
    light(filtB, byte25);
}

void Frm_Filt::closeEvent(QCloseEvent* e)
{
    WindowPlacement::save(this, host_.settings(), StartupSection, TopKey, LeftKey);
    e->accept();
}
