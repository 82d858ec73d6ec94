// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConfigScrn.h"

#include "CatPort.h"
#include "ConsoleHost.h"
#include "PortCatalog.h"
#include "PortDialogChoices.h"
#include "Procedures.h"
#include "Prompts.h"
#include "RadioLink.h"
#include "SerialPort.h"
#include "SettingsStore.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {
const QString ErrorTitle1 = QStringLiteral("Comm Port Error 1");
const QString ErrorTitle2 = QStringLiteral("Comm Port Error 2");
const QString ErrorTitle3 = QStringLiteral("Comm Port Error 3");
constexpr int DevicePathRole = Qt::UserRole + 1;

QRadioButton* option(const QString& caption, const QString& name, QWidget* parent)
{
    auto* b = new QRadioButton(caption, parent);
    b->setObjectName(name);
    return b;
}
}  // namespace

ConfigScrn::ConfigScrn(ConsoleHost& host, Prompts& prompts, QWidget* parent)
    : QDialog(parent), host_(host), prompts_(prompts)
{
    setWindowTitle(QStringLiteral("Configuration"));
    setObjectName(QStringLiteral("ConfigScrn"));
    buildControls();
}

ConfigScrn::~ConfigScrn()
{
    // Kept on purpose: the last release of the dialog applies and saves its choice once more.
    if (loaded_ && rerunOkOnRelease_)
        runOkSteps();
}

void ConfigScrn::buildControls()
{
    auto* top = new QVBoxLayout(this);
    auto* columns = new QHBoxLayout;
    top->addLayout(columns);

    auto* frame6 = new QGroupBox(QStringLiteral("Radio Port"), this);
    frame6->setObjectName(QStringLiteral("Frame6"));
    auto* portColumn = new QVBoxLayout(frame6);
    ComP = new QListWidget(frame6);
    ComP->setObjectName(QStringLiteral("ComP"));
    ComP->setMinimumWidth(150);
    portColumn->addWidget(ComP, 1);
    auto* deviceLabel = new QLabel(tr("&Device:"), frame6);
    DevicePath = new QLineEdit(frame6);
    DevicePath->setObjectName(QStringLiteral("DevicePath"));
    DevicePath->setPlaceholderText(tr("/dev/ttyUSB0 or another path"));
    deviceLabel->setBuddy(DevicePath);
    portColumn->addWidget(deviceLabel);
    portColumn->addWidget(DevicePath);
    columns->addWidget(frame6, 1);
    // Choosing an entry shows its device; typing a path means a device outside the list.
    connect(ComP, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            return;
        const QString path = ComP->item(row)->data(DevicePathRole).toString();
        DevicePath->setText(path);
    });
    connect(DevicePath, &QLineEdit::textEdited, this, [this] { ComP->setCurrentRow(-1); });

    auto* frame1 = new QGroupBox(QStringLiteral("&Speed"), this);
    frame1->setObjectName(QStringLiteral("Frame1"));
    auto* speedColumn = new QVBoxLayout(frame1);
    BaudR = new QListWidget(frame1);
    BaudR->setObjectName(QStringLiteral("BaudR"));
    BaudR->addItems(PortDialog::speeds());
    BaudR->setFixedWidth(90);
    speedColumn->addWidget(BaudR);
    columns->addWidget(frame1);

    auto* lineColumn = new QVBoxLayout;
    auto* frame4 = new QGroupBox(QStringLiteral("&Parity"), this);
    frame4->setObjectName(QStringLiteral("Frame4"));
    auto* parityBox = new QVBoxLayout(frame4);
    NoParity = option(QStringLiteral("None"), QStringLiteral("NoParity"), frame4);
    EvenParity = option(QStringLiteral("Even"), QStringLiteral("EvenParity"), frame4);
    OddParity = option(QStringLiteral("Odd"), QStringLiteral("OddParity"), frame4);
    parityBox->addWidget(NoParity);
    parityBox->addWidget(EvenParity);
    parityBox->addWidget(OddParity);
    auto* frame2 = new QGroupBox(QStringLiteral("&Bits"), this);
    frame2->setObjectName(QStringLiteral("Frame2"));
    auto* dataBox = new QHBoxLayout(frame2);
    Data7 = option(QStringLiteral("7"), QStringLiteral("Data7"), frame2);
    Data8 = option(QStringLiteral("8"), QStringLiteral("Data8"), frame2);
    dataBox->addWidget(Data7);
    dataBox->addWidget(Data8);
    auto* frame3 = new QGroupBox(QStringLiteral("Bits &Stop"), this);
    frame3->setObjectName(QStringLiteral("Frame3"));
    auto* stopBox = new QHBoxLayout(frame3);
    Stop1 = option(QStringLiteral("1"), QStringLiteral("Stop1"), frame3);
    Stop2 = option(QStringLiteral("2"), QStringLiteral("Stop2"), frame3);
    stopBox->addWidget(Stop1);
    stopBox->addWidget(Stop2);
    lineColumn->addWidget(frame4);
    lineColumn->addWidget(frame2);
    lineColumn->addWidget(frame3);
    lineColumn->addStretch(1);
    columns->addLayout(lineColumn);

    // The buttons of each frame exclude each other; none is selected until the load selects one.
    connect(NoParity, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            NoParity_Click();
    });
    connect(EvenParity, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            EvenParity_Click();
    });
    connect(OddParity, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            OddParity_Click();
    });
    connect(Data7, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Data7_Click();
    });
    connect(Data8, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Data8_Click();
    });
    connect(Stop1, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Stop1_Click();
    });
    connect(Stop2, &QRadioButton::toggled, this, [this](bool on) {
        if (on)
            Stop2_Click();
    });

    auto* buttons = new QHBoxLayout;
    HelpButton = new QPushButton(QStringLiteral("Help"), this);
    HelpButton->setObjectName(QStringLiteral("HelpButton"));
    HelpButton->setAutoDefault(false);
    OKButton = new QPushButton(QStringLiteral("&Ok"), this);
    OKButton->setObjectName(QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton = new QPushButton(QStringLiteral("Cancel"), this);
    CancelButton->setObjectName(QStringLiteral("CancelButton"));
    CancelButton->setAutoDefault(false);
    buttons->addWidget(HelpButton);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    top->addLayout(buttons);
    connect(OKButton, &QPushButton::clicked, this, &ConfigScrn::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &ConfigScrn::CancelButton_Click);
    connect(HelpButton, &QPushButton::clicked, this, &ConfigScrn::HelpButton_Click);
    resize(470, 300);
}

void ConfigScrn::fillPortList(const QString& current)
{
    ComP->clear();
    ComP->addItem(QStringLiteral("None"));
    for (int n = 1; n <= PortCatalog::NumberedPorts; ++n) {
        ComP->addItem(QStringLiteral("Com %1").arg(n));
        ComP->item(n)->setData(DevicePathRole, PortCatalog::numberedDevice(n));
    }
    QStringList others;
    for (const QString& d : PortCatalog::presentDevices())
        if (PortDialog::portNumberForDevice(d) == PortCatalog::OtherDevice)
            others << d;
    if (PortDialog::portNumberForDevice(current) == PortCatalog::OtherDevice && !others.contains(current))
        others << current;
    for (const QString& d : others) {
        auto* item = new QListWidgetItem(d, ComP);
        item->setData(DevicePathRole, d);
    }
}

void ConfigScrn::selectPort(int number, const QString& device)
{
    if (number >= 0 && number <= PortCatalog::NumberedPorts) {
        ComP->setCurrentRow(number);
        return;
    }
    for (int row = PortCatalog::NumberedPorts + 1; row < ComP->count(); ++row) {
        if (ComP->item(row)->data(DevicePathRole).toString() == device) {
            ComP->setCurrentRow(row);
            return;
        }
    }
    ComP->setCurrentRow(-1);
    DevicePath->setText(device);
}

int ConfigScrn::chosenPortNumber() const
{
    const int row = ComP->currentRow();
    if (row >= 0 && row <= PortCatalog::NumberedPorts)
        return row;
    if (row > PortCatalog::NumberedPorts)
        return PortCatalog::OtherDevice;
    const QString typed = DevicePath->text().trimmed();
    return typed.isEmpty() ? -1 : PortDialog::portNumberForDevice(typed);
}

QString ConfigScrn::chosenDevice() const
{
    const int row = ComP->currentRow();
    if (row >= 0)
        return ComP->item(row)->data(DevicePathRole).toString();
    return DevicePath->text().trimmed();
}

void ConfigScrn::Form_Load()
{
    loaded_ = true;
    // 1-2. No poll while the dialog has the port; nothing known about the port yet.
    host_.setPollEnabled(false);
    portWasOpen_ = false;
    // 3. Centred on the screen.
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect s = screen->geometry();
        move(s.x() + (s.width() - width()) / 2, s.y() + (s.height() - height()) / 2);
    }
    // 4. Close the port when it is open, and take its number.
    QString device;
    QString settings;
    bool wasOpen = false;
    host_.link().runBlocking([&](CatPort& port) {
        SerialPort& serial = port.serial();
        wasOpen = serial.isOpen();
        if (wasOpen)
            serial.close();
        device = serial.device();
        settings = serial.settings();
    });
    portWasOpen_ = wasOpen;
    const int n = wasOpen ? PortDialog::portNumberForDevice(device) : 0;
    // 5. The port entry.
    fillPortList(wasOpen ? device : QString());
    selectPort(n, device);
    // 6-10. The line settings, read the way the dialog always has.
    const PortDialog::Selection sel = PortDialog::readSettings(settings);
    BaudR->setCurrentRow(sel.speedIndex);
    if (sel.speedIndex < 0)
        BaudR->clearSelection();
    const auto select = [](QRadioButton* b) {
        if (b->isChecked())
            emit b->toggled(true);  // selecting an option from code fires its click
        else
            b->setChecked(true);
    };
    const auto clear = [](std::initializer_list<QRadioButton*> group) {
        for (QRadioButton* b : group) {
            b->setAutoExclusive(false);
            b->setChecked(false);
            b->setAutoExclusive(true);
        }
    };
    clear({NoParity, EvenParity, OddParity});
    clear({Data7, Data8});
    clear({Stop1, Stop2});
    if (sel.parity == u'N')
        select(NoParity);
    else if (sel.parity == u'E')
        select(EvenParity);
    else if (sel.parity == u'O')
        select(OddParity);
    if (sel.dataBits == 7)
        select(Data7);
    else if (sel.dataBits == 8)
        select(Data8);
    if (sel.stopBits == 1)
        select(Stop1);
    else if (sel.stopBits == 2)
        select(Stop2);
}

void ConfigScrn::showError(const QString& title, const QString& description)
{
    prompts_.message(this, QMessageBox::Warning, title, description, QMessageBox::Ok);
}

bool ConfigScrn::runOkSteps()
{
    RadioLink& link = host_.link();
    // 1. The port number of the entry chosen.
    portNumber_ = static_cast<qint16>(chosenPortNumber());
    const QString device = chosenDevice();
    // 2. Another port than "None": close it when open, take the new number, reopen when it was open.
    if (portNumber_ != PortCatalog::None) {
        QString error;
        const int number = portNumber_;
        link.runBlocking([&](CatPort& port) {
            SerialPort& serial = port.serial();
            const bool wasOpen = serial.isOpen();
            if (wasOpen)
                serial.close();
            const QString target = PortCatalog::deviceFor(number, device);
            if (target.isEmpty()) {
                error = PortDialog::InvalidPortNumber;
                return;
            }
            serial.setDevice(target);
            if (wasOpen)
                serial.open(&error);
        });
        if (!error.isEmpty()) {
            showError(ErrorTitle1, error);
            link.runBlocking([](CatPort& port) { port.serial().setDevice(QString()); });
            return false;
        }
    }
    // 3-4. The line settings text from the choices (a missing speed keeps the previous text).
    const int speedRow = BaudR->currentRow();
    if (speedRow >= 0 && BaudR->item(speedRow)->isSelected())
        speedText_ = PortDialog::speeds().value(speedRow);
    const QString lineSettings = PortDialog::buildSettings(speedText_, parityLetter_, dataBits_, stopBits_);
    // 5. Apply it.
    QString error;
    bool applied = false;
    link.runBlocking([&](CatPort& port) { applied = port.serial().setSettings(lineSettings, &error); });
    if (!applied) {
        showError(ErrorTitle2, error);
        return false;
    }
    // 6-7. Open the chosen port.
    const bool wantOpen = portNumber_ != PortCatalog::None;
    bool opened = true;
    link.runBlocking([&](CatPort& port) {
        if (wantOpen && !port.serial().isOpen())
            opened = port.serial().open(&error);
    });
    if (!opened) {
        showError(ErrorTitle3, error);
        link.runBlocking([](CatPort& port) { port.serial().setDevice(QString()); });
        return false;
    }
    // 8. Let the port settle, then persist the choice and start polling again.
    link.runBlocking([](CatPort& port) { port.sleep(Wait::PortSettle); });
    SettingsStore& s = host_.settings();
    const QString number = QString::number(portNumber_);
    s.setValue(PortKeys::Section, PortKeys::Number, number);
    s.setValue(PortKeys::Section, PortKeys::Settings, lineSettings);
    s.setValue(PortKeys::RadioSection, PortKeys::RadioType, number);
    if (portNumber_ == PortCatalog::OtherDevice)
        s.setValue(PortKeys::Section, PortKeys::Device, PortCatalog::deviceFor(portNumber_, device));
    s.sync();
    host_.setPollEnabled(true);
    return true;
}

void ConfigScrn::OKButton_Click()
{
    if (runOkSteps())
        unload();
}

void ConfigScrn::CancelButton_Click()
{
    if (portWasOpen_) {
        host_.link().runBlocking([](CatPort& port) {
            QString ignored;
            port.serial().open(&ignored);
        });
    }
    host_.setPollEnabled(true);
    unload();
}

void ConfigScrn::reject()
{
    CancelButton_Click();
}

void ConfigScrn::unload()
{
    // The dialog object stays; the next show loads it again.
    QDialog::done(QDialog::Accepted);
    hide();
}
