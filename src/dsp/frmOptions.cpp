// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmOptions.h"

#include "ConsoleHost.h"
#include "PassbandPicture.h"
#include "RadioLink.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {
constexpr int CwPitchIndicator = 12;  // Label1(12) of the main window
}  // namespace

frmOptions::frmOptions(ConsoleHost& host, QWidget* parent) : QDialog(parent), host_(host)
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QString::fromLatin1(EdspText::Title));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);

    buildEdspPages(c_, this);
    cmdOK = new QPushButton(tr("OK"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(c_.tbsOptions);
    layout->addLayout(buttons);

    for (QButtonGroup* g : std::as_const(c_.groups)) {
        connect(g, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
            if (checked)
                Option1_Click(id);
        });
    }
    for (int i = 0; i < c_.Key.size(); ++i)
        connect(c_.Key[i], &QPushButton::clicked, this, [this, i] { Key_Click(i); });
    // valueChanged serves both the change and the drag: commands stream while the thumb moves.
    for (int i = 0; i < c_.HScroll1.size(); ++i) {
        if (c_.HScroll1[i])
            connect(c_.HScroll1[i], &QScrollBar::valueChanged, this, [this, i](int v) { HScroll1_Change(i, v); });
    }
    connect(c_.HScroll2, &QScrollBar::valueChanged, this, &frmOptions::HScroll2_Change);
    connect(c_.tbsOptions, &QTabWidget::currentChanged, this, &frmOptions::tbsOptions_Click);
    connect(cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);

    // Ctrl+Tab is the dialog's own, wherever the focus is.
    installEventFilter(this);
    for (QWidget* w : findChildren<QWidget*>())
        w->installEventFilter(this);

    // Load: the CW centre from the radio's CW pitch; the guard keeps this quiet on the wire.
    if (const auto command = cw_.loadPitch(host_.indicatorCaption(CwPitchIndicator)))
        send({*command});
    showSliders();
    centreOnScreen();
}

void frmOptions::centreOnScreen()
{
    adjustSize();
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect s = screen->geometry();
    move(s.x() + (s.width() - width()) / 2, s.y() + (s.height() - height()) / 2);
}

void frmOptions::selectTab(int tab1Based)
{
    if (tab1Based < 1 || tab1Based > TabCount)
        return;
    if (c_.tbsOptions->currentIndex() == tab1Based - 1)
        tbsOptions_Click();
    else
        c_.tbsOptions->setCurrentIndex(tab1Based - 1);  // the tab handler runs from the change
}

void frmOptions::showOnTab(int tab1Based)
{
    if (tab1Based != 0)
        selectTab(tab1Based);
    show();
    raise();
    activateWindow();
}

void frmOptions::selectOption(int k)
{
    if (k < 0 || k >= EdspOptionCount || c_.Option1[k]->isChecked())
        return;
    c_.Option1[k]->setChecked(true);  // the group reports it: Option1_Click runs
}

bool frmOptions::isOptionSelected(int k) const
{
    return k >= 0 && k < EdspOptionCount && c_.Option1[k]->isChecked();
}

void frmOptions::setOptionUnselected(int k)
{
    QButtonGroup* g = c_.groups.value(edspOptionGroup(k));
    g->setExclusive(false);
    c_.Option1[k]->setChecked(false);
    g->setExclusive(true);
}

void frmOptions::clearTxOptions()
{
    for (int k = EdspOption::FirstTx; k <= EdspOption::LastTx; ++k)
        setOptionUnselected(k);
}

void frmOptions::send(const QList<CatCommand>& commands)
{
    if (commands.isEmpty())
        return;
    host_.link().post([commands](CatPort& port) {
        for (const CatCommand& c : commands)
            port.send(c);
    });
}

void frmOptions::Option1_Click(int index)
{
    const EdspOptionAction a = edspOptionAction(index, EdspContext{host_.modeCode(), cw_.position()});
    if (a.cwFilterCode)
        cw_.setFilterCode(*a.cwFilterCode);
    send(a.commands);
    if (a.modeCode)
        host_.setModeCode(*a.modeCode);
    for (const MenuMark& m : a.marks)
        host_.setEdspMenuChecked(m.transmit, m.index, m.checked);
    if (a.toggleRxMenu >= 0)
        host_.setEdspMenuChecked(false, a.toggleRxMenu, !host_.edspMenuChecked(false, a.toggleRxMenu));
    if (a.keyColour) {
        if (a.keyColour->bgr)
            host_.setKeyBackColour(a.keyColour->key, *a.keyColour->bgr);
        else
            host_.resetKeyBackColour(a.keyColour->key);
    }
    if (a.thenSelectEqualizationOff)
        selectOption(EdspOption::EqualizationOff);
}

void frmOptions::Key_Click(int index)
{
    const EdspKeyAction a = edspKeyAction(index);
    if (a.selectOptionFirst)
        selectOption(*a.selectOptionFirst);
    send(a.commands);
    if (a.clearTxOptions)
        clearTxOptions();
    for (const MenuMark& m : a.marks)
        host_.setEdspMenuChecked(m.transmit, m.index, m.checked);
}

void frmOptions::HScroll1_Change(int index, int value)
{
    send(sliders_.move(index, value));
    showSliders();
}

void frmOptions::HScroll2_Change(int value)
{
    if (const auto command = cw_.move(value))
        send({*command});
    showSliders();
}

void frmOptions::showSliders()
{
    for (int i : {AudioFilterSliders::LowPass, AudioFilterSliders::HighPass, AudioFilterSliders::Passband}) {
        QScrollBar* s = c_.HScroll1[i];
        const QSignalBlocker block(s);
        s->setMaximum(sliders_.maximum(i));
        s->setValue(sliders_.position(i));
    }
    {
        const QSignalBlocker block(c_.HScroll2);
        c_.HScroll2->setValue(cw_.position());
    }
    c_.Label1[0]->setText(sliders_.lowPassCaption());
    c_.Label1[1]->setText(sliders_.highPassCaption());
    c_.Label1[2]->setText(cw_.caption());
    c_.Label3->setText(sliders_.bandLimitsCaption());
    c_.Label4->setText(sliders_.bandwidthCaption());
    c_.Picture1->setHighPassBarWidthTwips(sliders_.highPassBarWidthTwips());
    c_.Picture1->setLowPassBarLeftTwips(sliders_.lowPassBarLeftTwips());
}

void frmOptions::tbsOptions_Click()
{
    const int selected = c_.tbsOptions->currentIndex() + 1;
    if (selected == AfFiltersTab) {
        // Only the slider commands on the line while the audio filters are in front.
        host_.setPollEnabled(false);
        cw_.afFiltersVisited();
    } else {
        host_.setPollEnabled(true);
    }
    for (int i = 0; i < c_.picOptions.size(); ++i)
        c_.picOptions[i]->setEnabled(i == selected - 1);
}

void frmOptions::nextTab()
{
    c_.tbsOptions->setCurrentIndex((c_.tbsOptions->currentIndex() + 1) % c_.tbsOptions->count());
}

bool frmOptions::eventFilter(QObject* watched, QEvent* e)
{
    if (e->type() == QEvent::KeyPress) {
        const auto* k = static_cast<QKeyEvent*>(e);
        if (k->key() == Qt::Key_Tab && k->modifiers() == Qt::ControlModifier) {
            nextTab();
            return true;
        }
    }
    return QDialog::eventFilter(watched, e);
}

void frmOptions::cmdOK_Click()
{
    host_.setPollEnabled(true);
    hide();
}

void frmOptions::cmdCancel_Click()
{
    close();
}

void frmOptions::reject()
{
    cmdCancel_Click();
}

void frmOptions::closeEvent(QCloseEvent* e)
{
    // Whatever closes the dialog, the poll runs again.
    host_.setPollEnabled(true);
    e->accept();
}
