// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkDialog.h"

#include "NetworkSettings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

NetworkDialog::NetworkDialog(const NetworkSettings& current, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Network Control"));
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(QStringLiteral("Logging and digital-mode programs set to \"Hamlib NET rigctl\" can "
                                            "share the radio through this program."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    enabled = new QCheckBox(QStringLiteral("&Enable the network server"), this);
    enabled->setChecked(current.enabled);
    layout->addWidget(enabled);
    auto* form = new QFormLayout;
    address = new QLineEdit(current.address, this);
    address->setToolTip(QStringLiteral("127.0.0.1 keeps the radio to programs on this computer"));
    port = new QSpinBox(this);
    port->setRange(1, 65535);
    port->setValue(current.port);
    idleMinutes = new QSpinBox(this);
    idleMinutes->setRange(0, NetworkSettings::MaxIdleMinutes);
    idleMinutes->setSuffix(QStringLiteral(" min"));
    idleMinutes->setSpecialValueText(QStringLiteral("Never"));
    idleMinutes->setValue(current.idleMinutes);
    idleMinutes->setToolTip(QStringLiteral("A program that sends nothing for this long is disconnected"));
    form->addRow(QStringLiteral("&Address:"), address);
    form->addRow(QStringLiteral("&Port:"), port);
    form->addRow(QStringLiteral("&Idle clients closed after:"), idleMinutes);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

NetworkSettings NetworkDialog::result() const
{
    NetworkSettings s;
    s.enabled = enabled->isChecked();
    s.address = address->text().trimmed().isEmpty() ? NetworkSettings::DefaultAddress : address->text().trimmed();
    s.port = static_cast<quint16>(port->value());
    s.idleMinutes = idleMinutes->value();
    return s;
}
