// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharingControl.h"

#include "Form1.h"
#include "ShareFolder.h"
#include "SharingDialog.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>
#include <QStringList>
#include <QTimer>

namespace {
// The counts in the status bar follow the clients this often; a count is no measurement.
constexpr int RefreshMs = 500;
const QString DialogTitle = QStringLiteral("Sharing Ports");

// Where a port's link is, or will be once it is open: what a client is set to.
QString linkPathOf(const SharingPort& port)
{
    if (port.isOpen())
        return port.linkPath();
    const QString folder = ShareFolder::ensure();
    return folder.isEmpty() ? QString() : folder + QLatin1Char('/') + port.linkName();
}

SharingDialog::Port dialogPort(const SharingPort* port)
{
    SharingDialog::Port p;
    p.available = port != nullptr;
    if (port) {
        p.open = port->isOpen();
        p.linkPath = linkPathOf(*port);
        p.terminalPath = port->terminalPath();
    }
    return p;
}
}  // namespace

SharingControl::SharingControl(Form1& form, SettingsStore& settings, std::unique_ptr<SharingPort> native,
                               std::unique_ptr<SharingPort> text, QObject* parent)
    : QObject(parent), form_(form), settings_(settings)
{
    native_.port = std::move(native);
    native_.caption = QStringLiteral("Native port");
    text_.port = std::move(text);
    text_.caption = QStringLiteral("Text port");

    if (QMenu* setup = form.setupMenu()) {
        QAction* item = setup->addAction(QStringLiteral("Sharing Ports..."));
        item->setObjectName(QStringLiteral("mnu_Sharing"));
        connect(item, &QAction::triggered, this, &SharingControl::showDialog);
    }
    for (Slot* slot : {&native_, &text_}) {
        if (!slot->port)
            continue;
        slot->status = new QLabel(&form);
        slot->status->setObjectName(slot->port->linkName() + QStringLiteral("PortStatus"));
        slot->status->setAccessibleName(slot->caption);
        slot->status->hide();
        form.statusBar()->addPermanentWidget(slot->status);
    }
    refresh_ = new QTimer(this);
    connect(refresh_, &QTimer::timeout, this, &SharingControl::showCounts);
    // Clients lose their port with the window, before the link to the radio goes.
    connect(&form, &Form1::aboutToClose, this, &SharingControl::stop);
}

SharingControl::~SharingControl()
{
    stop();
}

bool SharingControl::start(const std::optional<SharingSettings>& forRun, QString* error)
{
    SharingSettings wanted = SharingSettings::load(settings_);
    if (forRun) {
        wanted.native = wanted.native || forRun->native;
        wanted.text = wanted.text || forRun->text;
    }
    return apply(wanted, error);
}

bool SharingControl::apply(const SharingSettings& wanted, QString* error)
{
    QStringList errors;
    bool ok = applyTo(native_, wanted.native, errors);
    ok = applyTo(text_, wanted.text, errors) && ok;
    if (error)
        *error = errors.join(u'\n');
    showCounts();
    return ok;
}

bool SharingControl::applyTo(Slot& slot, bool wanted, QStringList& errors)
{
    if (!slot.port || wanted == slot.port->isOpen())
        return true;
    if (!wanted) {
        slot.port->close();
        return true;
    }
    QString why;
    if (!slot.port->open(&why)) {
        errors << QStringLiteral("%1: %2").arg(slot.caption, why);
        return false;
    }
    emit portOpened(QStringLiteral("%1: %2").arg(slot.caption, slot.port->terminalPath()));
    return true;
}

void SharingControl::stop()
{
    for (Slot* slot : {&native_, &text_})
        if (slot->port)
            slot->port->close();
    showCounts();
}

SharingSettings SharingControl::openPorts() const
{
    return SharingSettings{.native = native_.port && native_.port->isOpen(),
                           .text = text_.port && text_.port->isOpen()};
}

void SharingControl::showDialog()
{
    SharingDialog dialog(dialogPort(native_.port.get()), dialogPort(text_.port.get()), &form_);
    if (dialog.exec() != QDialog::Accepted)
        return;
    SharingSettings chosen = dialog.result();
    // A port this build lacks keeps what is stored for it.
    const SharingSettings stored = SharingSettings::load(settings_);
    if (!native_.port)
        chosen.native = stored.native;
    if (!text_.port)
        chosen.text = stored.text;
    chosen.save(settings_);
    QString error;
    if (!apply(chosen, &error))
        QMessageBox::warning(&form_, DialogTitle, QStringLiteral("Cannot open the port\n%1").arg(error));
}

void SharingControl::showCounts()
{
    bool anyOpen = false;
    for (Slot* slot : {&native_, &text_}) {
        if (!slot->status)
            continue;
        const bool open = slot->port->isOpen();
        anyOpen = anyOpen || open;
        if (!open) {
            slot->status->hide();
            continue;
        }
        slot->status->setText(QStringLiteral("%1: %2").arg(slot->caption).arg(slot->port->commandsAnswered()));
        slot->status->setToolTip(
            QStringLiteral("%1 on %2, commands answered").arg(slot->caption, slot->port->terminalPath()));
        slot->status->show();
    }
    if (anyOpen && !refresh_->isActive())
        refresh_->start(RefreshMs);
    else if (!anyOpen)
        refresh_->stop();
}
