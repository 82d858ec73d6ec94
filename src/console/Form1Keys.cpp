// SPDX-License-Identifier: GPL-3.0-or-later
// The front-panel keys: one handler for the whole key array.
#include "BandScope.h"
#include "CatPort.h"
#include "Form1.h"
#include "PanelLook.h"
#include "PressButton.h"
#include "Procedures.h"
#include "Prompts.h"
#include "RadioLink.h"
#include "SecondaryWindows.h"
#include "Twips.h"

#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QProcess>

namespace {
const QString WriteTitle = QStringLiteral("Write ?");
const QString SpecifyTitle = QStringLiteral("Specify memory");
const QString SpecifyPrompt = QStringLiteral("Enter the memory number (1 to 108)");
const QString SpecifyDefault = QStringLiteral("1");
const QPoint SpecifyAt{1200, 1200};  // twips
const QString ErrorTitle = QStringLiteral("Error");
const QString RangeError = QStringLiteral("The value must be between 1 and 108\nAction aborted");
QString writeQuestion(int channel)
{
    return QStringLiteral("Do you want to write to memory # %1 ?").arg(channel);
}

// EDSP option buttons the Notch and DSP-NB keys flip between.
constexpr int NotchOff = 34, NotchOn = 35, NoiseOff = 32, NoiseOn = 33;
constexpr int PttOn = 1, PttOff = 0;
}  // namespace

FrontPanel::Indicators Form1::shownIndicators() const
{
    FrontPanel::Indicators s;
    s.dual = shown(Label1[0]);
    s.split = shown(Label1[3]);
    s.tuner = shown(Label1[4]);
    s.mode = Label1[1]->text();
    s.repeaterShown = shown(Label1[6]);
    s.repeater = Label1[6]->text();
    s.clarRx = shown(Label3[5]);
    s.clarTx = shown(Label3[7]);
    s.txAuthorized = txAuthorized();
    return s;
}

void Form1::Key_Click(int index)
{
    using namespace FrontPanel::KeyIndex;
    if (!portOpen() || !FrontPanel::keyExists(index))
        return;
    if (FrontPanel::isScopeKey(index)) {
        scope_->keyClick(index);
        return;
    }
    switch (index) {
        case AtoM:
            writeVfoToMemory();
            return;
        case MtoA:
            recallMemoryToVfoA();
            return;
        case VfoMemory:
            toggleVfoMemory();
            return;
        case MemoryList:
            windows_.showMemory();
            return;
        case Scope:
            toggleScope();
            return;
        case KeyPad:
            windows_.showNavigator();
            return;
        case Filters:
            windows_.showFilters();
            return;
        case Edsp:
            windows_.showEdsp(0);
            return;
        case Notch:
            pressEdspPair(NotchOff, NotchOn);
            return;
        case DspNb:
            pressEdspPair(NoiseOff, NoiseOn);
            return;
        case Analyser:
            startAnalyser();
            return;
        case Ptt:
            return;  // pressed and held, see Key_MouseDown
        default:
            sendKeyCommand(index);
            return;
    }
}

void Form1::sendKeyCommand(int index)
{
    using namespace FrontPanel::KeyIndex;
    const FrontPanel::Indicators before = shownIndicators();
    const std::optional<CatCommand> command = FrontPanel::keyCommand(index, before, lastToggleParam_);
    if (!command)
        return;
    // The clarifier keys flip their indicator first; the command follows what it now shows.
    if (index == ClarRx)
        Label3[5]->setVisible(!before.clarRx);
    if (index == ClarTx)
        Label3[7]->setVisible(!before.clarTx);
    if (FrontPanel::isToggleKey(index))
        lastToggleParam_ = command->p4;
    send(*command);
}

void Form1::pressEdspPair(int offIndex, int onIndex)
{
    windows_.selectEdspOption(windows_.edspOptionSelected(offIndex) ? onIndex : offIndex);
}

void Form1::writeVfoToMemory()
{
    auto back = courier();
    link_.post([back](CatPort& port) {
        const QByteArray reply =
            port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel), Wait::ChannelQueryLong);
        const int channel = FrontPanel::channelFromReply(firstByte(reply));
        back([channel](Form1& f) { f.askMemoryAndWrite(channel); });
    });
}

void Form1::askMemoryAndWrite(int channel)
{
    const auto answer = prompts_.message(this, QMessageBox::Question, WriteTitle, writeQuestion(channel),
                                         QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Yes) {
        send(CatCommand::make(Op::WriteMemory, channel));
        return;
    }
    if (answer != QMessageBox::No)
        return;
    // A cancelled prompt gives an empty text, which reads as 0 and is refused like any other.
    const QString typed =
        prompts_.input(this, SpecifyTitle, SpecifyPrompt, SpecifyDefault, SpecifyAt).value_or(QString());
    const FrontPanel::MemoryNumber n = FrontPanel::parseMemoryNumber(typed);
    if (!n.valid) {
        prompts_.message(this, QMessageBox::Critical, ErrorTitle, RangeError, QMessageBox::Ok);
        return;
    }
    send(CatCommand::make(Op::WriteMemory, n.channel));
}

void Form1::recallMemoryToVfoA()
{
    link_.post([](CatPort& port) {
        const QByteArray reply =
            port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel), Wait::ChannelQueryShort);
        port.send(CatCommand::make(Op::MemoryToVfoA, FrontPanel::channelFromReply(firstByte(reply))));
    });
}

void Form1::toggleVfoMemory()
{
    if (!shown(Label1[8])) {
        send(CatCommand::make(Op::VfoSelect, 0));
        return;
    }
    link_.post([](CatPort& port) {
        const QByteArray reply =
            port.request(CatCommand::make(Op::StatusRequest, StatusKind::CurrentChannel), Wait::ChannelQueryLong);
        port.send(CatCommand::make(Op::RecallMemory, FrontPanel::channelFromReply(firstByte(reply))));
    });
}

void Form1::toggleScope()
{
    using namespace FrontPanel::KeyIndex;
    const bool nowShown = Frame[1]->isHidden();
    Frame[1]->setVisible(nowShown);
    if (!nowShown) {
        setWindowHeightTwips(FrontPanel::HeightScopeHidden);
        // The PTT key comes back only where transmitting is authorized: without "Authorize Tx" it is
        // disabled from start-up on, and hiding the scope must not hand the operator a key that
        // the Setup menu has refused.
        Key[Ptt]->setEnabled(txAuthorized());
        emit scopeShownChanged(false);
        Key_Click(ScopeCancel);
    } else {
        // Before the first retune: a client's key is released and no other is taken.
        emit scopeShownChanged(true);
        fitScope();
        Key_Click(GetCenter);
        scope_->startRedraw();
        // No transmitting while the scope sweeps.
        Key[Ptt]->setEnabled(false);
    }
}

QString Form1::askPlotFile(const QString& suggested)
{
    // The scope asks once, after the suffix is added, about every file the save would replace.
    return QFileDialog::getSaveFileName(this, QStringLiteral("Save Plot"), suggested,
                                        QStringLiteral("PNG pictures (*.png)"), nullptr,
                                        QFileDialog::DontConfirmOverwrite);
}

bool Form1::confirmPlotFiles(const QString& title, const QString& text)
{
    return prompts_.message(this, QMessageBox::Question, title, text, QMessageBox::Save | QMessageBox::Cancel) ==
           QMessageBox::Save;
}

void Form1::showScopeError(const QString& title, const QString& text)
{
    prompts_.message(this, QMessageBox::Warning, title, text, QMessageBox::Ok);
}

void Form1::startAnalyser()
{
    if (!analyserPresent_)
        return;
    QProcess::startDetached(QDir(programFolder_).filePath(PanelLook::AnalyserProgram), {}, programFolder_);
}

void Form1::Key_MouseDown(int index, Qt::MouseButton button)
{
    if (index != FrontPanel::KeyIndex::Ptt)
        return;
    if (button == Qt::RightButton) {
        Label1[22]->setProperty("armed", true);
        Label1[22]->setStyleSheet(
            QStringLiteral("color: white; background: %1;").arg(fromBgr(PanelLook::PttArmedBgr).name()));
    } else if (button == Qt::LeftButton && Label1[22]->property("armed").toBool()) {
        transmitting_ = true;
        applyDisplayLook(1);
        if (portOpen())
            send(CatCommand::make(Op::Ptt, PttOn));
    }
}

void Form1::Key_MouseUp(int index, Qt::MouseButton button)
{
    if (index != FrontPanel::KeyIndex::Ptt)
        return;
    if (button == Qt::LeftButton) {
        if (portOpen())
            send(CatCommand::make(Op::Ptt, PttOff));
        transmitting_ = false;
        applyDisplayLook(1);
    } else if (button == Qt::RightButton) {
        Label1[22]->setProperty("armed", false);
        Label1[22]->setStyleSheet(QStringLiteral("color: white; background: %1;").arg(PanelLook::PttIdle.name()));
    }
}

void Form1::Frame_Click(int index)
{
    constexpr int MainClarifier = 3;
    if (index == MainClarifier && portOpen())
        send(CatCommand::make(Op::Clarifier, ClarifierParam::ClearOffset));
}
