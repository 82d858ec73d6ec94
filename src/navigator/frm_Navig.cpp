// SPDX-License-Identifier: GPL-3.0-or-later
// The navigator window's life (opening, closing, placement), its event routing and its display.
// Its controls are built in frm_NavigLayout.cpp, its keys handled in frm_NavigKeys.cpp, and the
// steppers and the slider in frm_NavigTuning.cpp.
#include "frm_Navig.h"

#include "ConsoleHost.h"
#include "NavigatorLook.h"
#include "NumberFormat.h"
#include "PressButton.h"
#include "QuickMemory.h"
#include "RadioLink.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QSlider>
#include <QTimer>

namespace {
const QString Caption = QStringLiteral("Frequency Navigator");
const QString Section = QStringLiteral("Startup");
const QString TopKey = QStringLiteral("NavigTop");
const QString LeftKey = QStringLiteral("NavigLeft");
}  // namespace

frm_Navig::frm_Navig(ConsoleHost& host, QWidget* parent) : QWidget(parent, Qt::Window), host_(host)
{
    setWindowTitle(Caption);
    buildControls();
    Form_Load();
}

// ---- opening and closing ----------------------------------------------------------------------

void frm_Navig::Form_Load()
{
    SettingsStore& s = host_.settings();
    const QStringList captions = QuickMemory::decodeCaptions(
        s.value(QuickMemory::Section, QuickMemory::CaptionsKey, QuickMemory::DefaultCaptions));
    for (int i = 0; i < QuickMemory::Count; ++i)
        QMB[i]->setText(captions.value(i));
    QmbMode = QuickMemory::decodeModes(s.value(QuickMemory::Section, QuickMemory::ModesKey, QuickMemory::DefaultModes));

    adjustSize();
    resize(width(), Twips::toPixels(NavigatorLook::HeightTwips));

    // By default beside the main window, on its right, kept on the screen.
    const QRect main = host_.geometryTwips();
    int left = main.x() + main.width();
    const int screenWidth = WindowPlacement::screenSizeTwips().width();
    if (left + widthTwips() > screenWidth)
        left = std::max(0, screenWidth - widthTwips());
    WindowPlacement::restore(this, s, Section, TopKey, LeftKey, main.y(), left);
}

void frm_Navig::Form_QueryUnload()
{
    if (Timer6->isActive() || Timer3->isActive() || entryStoppedPoll_) {
        Timer6->stop();
        Timer3->stop();
        step_.release();
        entryStoppedPoll_ = false;
        host_.setPollEnabled(true);
    }
    SettingsStore& s = host_.settings();
    WindowPlacement::save(this, s, Section, TopKey, LeftKey);
    QStringList captions;
    for (auto* b : QMB)
        captions << b->text();
    s.setValue(QuickMemory::Section, QuickMemory::CaptionsKey, QuickMemory::encodeCaptions(captions));
    s.setValue(QuickMemory::Section, QuickMemory::ModesKey, QuickMemory::encodeModes(QmbMode));
    s.sync();
}

void frm_Navig::closeEvent(QCloseEvent* e)
{
    Form_QueryUnload();
    QWidget::closeEvent(e);
}

void frm_Navig::showEvent(QShowEvent* e)
{
    if (entry_.bandMode() && host_.vfoKHz(1) > 0)
        Lbl_VFO->setText(formatNumber(host_.vfoKHz(1), Pattern::Frequency));
    QWidget::showEvent(e);
}

int frm_Navig::widthTwips() const
{
    return Twips::fromPixels(width());
}

// ---- events -------------------------------------------------------------------------------------

bool frm_Navig::eventFilter(QObject* watched, QEvent* e)
{
    if (watched == Slider1) {
        if (e->type() == QEvent::Wheel)
            return true;  // a wheel would move it with no release to spring it back
        const bool keyUp = e->type() == QEvent::KeyRelease && !static_cast<QKeyEvent*>(e)->isAutoRepeat();
        if (e->type() == QEvent::MouseButtonRelease || keyUp)
            sliderReleased();
    }
    if (e->type() == QEvent::KeyPress && !entry_.bandMode()) {
        const auto* k = static_cast<QKeyEvent*>(e);
        if (!(k->modifiers() & (Qt::AltModifier | Qt::ControlModifier)) && Form_KeyPress(k->text()))
            return true;
    }
    return QWidget::eventFilter(watched, e);
}

// ---- display and link -------------------------------------------------------------------------

void frm_Navig::showPolled(const QString& freqText, const QString& modeCaption)
{
    modeLabel->setText(modeCaption);
    if (!entry_.digitsPending())
        Lbl_VFO->setText(freqText);
}

void frm_Navig::showNavigatorFreq(double kHz)
{
    host_.setVfoKHz(1, kHz);
    const QString text = formatNumber(kHz, Pattern::Frequency);
    Lbl_VFO->setText(text);
    host_.setVfoADisplay(text);
}

void frm_Navig::setDisplayColour(quint32 bgr)
{
    QPalette p = Lbl_VFO->palette();
    p.setColor(QPalette::WindowText, fromBgr(bgr));
    Lbl_VFO->setPalette(p);
}

void frm_Navig::post(std::function<void(CatPort&)> job)
{
    host_.link().post(std::move(job));
}

void frm_Navig::deliverTo(RadioLink& link, QPointer<frm_Navig> self, std::function<void(frm_Navig*)> fn)
{
    // Runs on the window's thread, and not at all once the window is gone.
    link.deliver(&link, [self, fn = std::move(fn)] {
        if (self)
            fn(self.data());
    });
}
