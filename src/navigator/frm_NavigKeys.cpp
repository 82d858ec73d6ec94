// SPDX-License-Identifier: GPL-3.0-or-later
// The navigator's keys: band keys and key-pad entry, the keyboard in key-pad mode, the mode keys
// and the quick memories.
#include "frm_Navig.h"

#include "BandPlan.h"
#include "CatPort.h"
#include "ConsoleHost.h"
#include "ModeKeys.h"
#include "NavigatorJobs.h"
#include "NavigatorKey.h"
#include "NavigatorLook.h"
#include "PressButton.h"
#include "QuickMemory.h"
#include "Twips.h"

#include <QLabel>
#include <QPushButton>
#include <optional>

namespace {
void paintButton(QPushButton* b, std::optional<quint32> bgr)
{
    if (!bgr) {
        b->setPalette(QPalette());
        b->setAutoFillBackground(false);
        return;
    }
    QPalette p = b->palette();
    p.setColor(QPalette::Button, fromBgr(*bgr));
    b->setPalette(p);
    b->setAutoFillBackground(true);
}
}  // namespace

// ---- band keys and key pad ------------------------------------------------------------------

void frm_Navig::Band_Click(int index)
{
    if (index >= 0 && index < BandPlan::Count) {
        if (entry_.bandMode()) {
            const qint64 frq = BandPlan::frequencyTenHz(index);
            post([frq](CatPort& port) { sendFrequency(port, frq, 1); });
        } else {
            digitKey(index);
        }
        return;
    }
    switch (index) {
        case NavigatorKey::Freq:
            keyPadMode(true);
            break;
        case NavigatorKey::Main:
            sendEntry(1);
            break;
        case NavigatorKey::Sub:
            sendEntry(2);
            break;
        case NavigatorKey::Enter:
            if (entry_.enter(host_.pollEnabled())) {
                host_.setPollEnabled(false);
                entryStoppedPoll_ = true;
                Lbl_VFO->setText(entry_.display());
                setDisplayColour(NavigatorLook::EntryColour);
            }
            break;
        case NavigatorKey::Band:
            keyPadMode(false);
            break;
        default:
            break;
    }
}

void frm_Navig::keyPadMode(bool on)
{
    for (int i = 0; i < BandPlan::Count; ++i) {
        Band[i]->setText(on ? BandPlan::digitCaption(i) : BandPlan::caption(i));
        paintButton(Band[i], on ? std::optional<quint32>(NavigatorLook::DigitKeyColour) : std::nullopt);
    }
    for (int i = NavigatorKey::Main; i <= NavigatorKey::Band; ++i)
        Band[i]->setEnabled(on);
    Band[NavigatorKey::Freq]->setEnabled(!on);
    if (on) {
        entry_.beginKeypad();
        Band[NavigatorKey::Enter]->setFocus();
        return;
    }
    entry_.backToBands();
    if (entryStoppedPoll_) {
        entryStoppedPoll_ = false;
        host_.setPollEnabled(true);
    }
}

void frm_Navig::digitKey(int d)
{
    if (entry_.digit(d))
        Lbl_VFO->setText(entry_.display());
}

void frm_Navig::sendEntry(int vfo)
{
    const std::optional<qint64> frq = entry_.commit();
    if (!frq)
        return;
    post([f = *frq, vfo](CatPort& port) { sendFrequency(port, f, vfo); });
    entryStoppedPoll_ = false;
    host_.setPollEnabled(true);
    setDisplayColour(NavigatorLook::SentColour);
    Band[NavigatorKey::Enter]->setFocus();
}

bool frm_Navig::Form_KeyPress(const QString& key)
{
    if (key.size() != 1)
        return false;
    const QChar c = key[0];
    if (c >= u'0' && c <= u'9') {
        Band_Click(c.digitValue());
        return true;
    }
    if (c == u'+') {
        Band_Click(NavigatorKey::Main);
        return true;
    }
    if (c == u'-') {
        Band_Click(NavigatorKey::Sub);
        return true;
    }
    return false;
}

// ---- mode keys and quick memories -------------------------------------------------------------

void frm_Navig::MD_MouseDown(int index, Qt::MouseButton button)
{
    const int mode = ModeKeys::modeCode(index, button == Qt::LeftButton);
    if (mode < 0)
        return;
    post([mode](CatPort& port) { sendMode(port, mode); });
}

void frm_Navig::QMB_MouseDown(int index, Qt::MouseButton button)
{
    if (index < 0 || index >= QMB.size())
        return;
    if (button == Qt::RightButton) {
        QMB[index]->setText(QuickMemory::captionFor(host_.vfoKHz(1)));
        QmbMode[index] = host_.modeCode();
        return;
    }
    if (button != Qt::LeftButton)
        return;
    const QString caption = QMB[index]->text();
    if (!QuickMemory::recallable(caption))
        return;
    const std::optional<qint64> frq = QuickMemory::captionTenHz(caption);
    if (!frq)
        return;
    post([mode = QmbMode.value(index), f = *frq](CatPort& port) { recallQuickMemory(port, mode, f); });
}
