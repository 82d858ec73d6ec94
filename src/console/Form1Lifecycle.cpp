// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up and shutdown of the main window.
#include "BandScope.h"
#include "CatPort.h"
#include "ConfigScrn.h"
#include "Form1.h"
#include "LineSettings.h"
#include "PanelLook.h"
#include "PortCatalog.h"
#include "PortWatch.h"
#include "PressButton.h"
#include "Prompts.h"
#include "RadioLink.h"
#include "SecondaryWindows.h"
#include "SerialPort.h"
#include "SettingsStore.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLoggingCategory>
#include <QTimer>

Q_LOGGING_CATEGORY(lcConsole, "console", QtWarningMsg)

namespace {
const QString StartupSection = QStringLiteral("Startup");
const QString TopKey = QStringLiteral("Top");
const QString LeftKey = QStringLiteral("Left");
const QString WidthKey = QStringLiteral("Width");
const QString SettingsSection = QStringLiteral("Settings");
const QString TxInhKey = QStringLiteral("TxInh");
constexpr int DefaultTop = 400;
constexpr int DefaultLeft = 0;
constexpr int DefaultRadioType = 1;
}  // namespace

void Form1::Form_Load()
{
    // 1. Placement, layout, radio type, port, transmit permission.
    WindowPlacement::restore(this, settings_, StartupSection, TopKey, LeftKey, DefaultTop, DefaultLeft);
    const int width = settings_.wholeNumber(StartupSection, WidthKey, FrontPanel::LargeWidth);
    applyLayout(FrontPanel::layoutAtStart(width));
    radioType_ = settings_.wholeNumber(PortKeys::RadioSection, PortKeys::RadioType, DefaultRadioType);
    openPortAtStart();
    // A device lost while the program runs is closed, shown as "No Link  " and opened again when it is back.
    if (!portWatch_) {
        portWatch_ = new PortWatch(link_, this);
        connect(portWatch_, &PortWatch::deviceLost, this, [this] { setVfoADisplay(NoLinkText); });
        portWatch_->start();
    }
    restoreTxPermission();
    // 2. The flags once: this call identifies a Mark-V.
    GetFlags(0);
    // 3. The status poll.
    setPollEnabled(true);
    // 4. The band scope's lists.
    scope_->presetLists();
    // 5. The external analyser beside the program.
    lookForAnalyser();
}

void Form1::openPortAtStart()
{
    if (!portOverride_.isEmpty()) {
        // A device named for this run: opened with the stored line settings, nothing persisted.
        const QString lineSettings =
            settings_.value(PortKeys::Section, PortKeys::Settings, QLatin1String(DefaultLineSettings));
        const QString device = portOverride_;
        QString error;
        bool opened = false;
        link_.runBlocking([&](CatPort& port) {
            port.serial().setSettings(lineSettings, &error);
            port.serial().setDevice(device);
            opened = port.serial().open(&error);
        });
        if (!opened)
            qCWarning(lcConsole) << "cannot open" << device << error;
        return;
    }
    const StartupPortPlan plan = planStartupPort(settings_, radioType_, link_.portOpen());
    bool opened = false;
    QString error;
    link_.runBlocking([&](CatPort& port) {
        SerialPort& serial = port.serial();
        serial.setSettings(plan.settings, &error);
        if (plan.open) {
            serial.setDevice(plan.device);
            opened = serial.open(&error);
        } else if (plan.closeFirst) {
            serial.close();
        }
    });
    if (plan.open && !opened)
        qCWarning(lcConsole) << "cannot open" << plan.device << error;
    // A port that will not open is as good as none: the operator is offered the dialog.
    if (plan.ask || !opened)
        askForPort();
}

void Form1::askForPort()
{
    const auto answer = prompts_.message(this, QMessageBox::Warning, ConfigErrorTitle, ConfigErrorText,
                                         QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        showConfigScrn(true);
}

void Form1::restoreTxPermission()
{
    const double stored = settings_.number(SettingsSection, TxInhKey, 0.0);
    setTxAuthorized(stored == 1.0);
}

bool Form1::txAuthorized() const
{
    return mnu_Stup[2]->isChecked();
}

void Form1::setTxAuthorized(bool on)
{
    mnu_Stup[2]->setChecked(on);
    Key[FrontPanel::KeyIndex::Start]->setEnabled(on);
    // The transmitter cannot be keyed while the scope sweeps, whatever the permission.
    Key[FrontPanel::KeyIndex::Ptt]->setEnabled(on && Frame[1]->isHidden());
    emit txAuthorizationChanged(on);
}

void Form1::lookForAnalyser()
{
    analyserPresent_ = QFileInfo::exists(QDir(programFolder_).filePath(PanelLook::AnalyserProgram));
    if (analyserPresent_) {
        Key[FrontPanel::KeyIndex::Analyser]->setEnabled(true);
        Key[FrontPanel::KeyIndex::Analyser]->setText(PanelLook::AnalyserCaption);
    }
}

void Form1::showConfigScrn(bool modal)
{
    if (!configScrn_)
        configScrn_ = new ConfigScrn(*this, prompts_, this);
    configScrn_->setRerunOkOnRelease(portOverride_.isEmpty());
    if (!configScrn_->isVisible()) {
        emit portClosing();  // the dialog closes the port as it opens
        configScrn_->Form_Load();
    }
    if (modal) {
        prompts_.execDialog(configScrn_);
    } else {
        configScrn_->show();
        configScrn_->raise();
        configScrn_->activateWindow();
    }
}

void Form1::closeEvent(QCloseEvent* event)
{
    // An upload into the radio's memory is not cut short without the operator's word.
    if (!windows_.confirmCloseAll()) {
        event->ignore();
        return;
    }
    // Form_QueryUnload: close the port, save the placement and the transmit permission, end.
    emit aboutToClose();
    emit portClosing();
    setPollEnabled(false);
    if (portWatch_)
        portWatch_->stop();
    link_.runBlocking([](CatPort& port) {
        if (port.serial().isOpen())
            port.serial().close();
    });
    // The outer position, the one move() restores, so the window does not creep by its frame each run.
    const int left = Twips::fromPixels(pos().x());
    const int top = Twips::fromPixels(pos().y());
    if (WindowPlacement::onScreen(left, top)) {
        settings_.setValue(StartupSection, TopKey, QString::number(top));
        settings_.setValue(StartupSection, LeftKey, QString::number(left));
    }
    settings_.setValue(StartupSection, WidthKey, QString::number(Twips::fromPixels(width())));
    settings_.setValue(SettingsSection, TxInhKey, txAuthorized() ? QStringLiteral("1") : QStringLiteral("0"));
    settings_.sync();
    windows_.closeAll();
    event->accept();
}
