// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebDialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHostInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {
const QString ClearTextWarning = QStringLiteral(
    "Without a certificate and key the access code and everything the panel shows cross the network in "
    "clear text. Give the panel a certificate and key, or keep it on 127.0.0.1 and reach it through an SSH "
    "tunnel (ssh -L 8073:127.0.0.1:8073 this-computer).");

QWidget* fileRow(QLineEdit* edit, QWidget* parent, const QString& caption)
{
    auto* row = new QWidget(parent);
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    h->addWidget(edit, 1);
    auto* browse = new QPushButton(QStringLiteral("Browse..."), row);
    browse->setAccessibleName(caption);
    QObject::connect(browse, &QPushButton::clicked, edit, [edit, parent, caption] {
        const QString f = QFileDialog::getOpenFileName(parent, caption, edit->text(),
                                                       QStringLiteral("PEM files (*.pem *.crt *.key);;All files (*)"));
        if (!f.isEmpty())
            edit->setText(f);
    });
    h->addWidget(browse);
    return row;
}
}  // namespace

QString WebDialog::link(const WebSettings& s, const QByteArray& code)
{
    QString host = s.address;
    if (host == u"0.0.0.0" || host == u"::")
        host = QHostInfo::localHostName();  // every interface: the name others know this computer by
    else if (host.contains(u':'))
        host = u'[' + host + u']';
    return QStringLiteral("%1://%2:%3/#%4")
        .arg(s.secure() ? QStringLiteral("https") : QStringLiteral("http"), host)
        .arg(s.port)
        .arg(QString::fromLatin1(code));
}

WebDialog::WebDialog(const WebSettings& current, QWidget* parent) : QDialog(parent), settings_(current)
{
    settings_.completeCodes();
    setWindowTitle(QStringLiteral("Web Panel"));
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(QStringLiteral("Operate the radio from a browser on this computer, a laptop or a phone. "
                                            "Each link below carries its access code; give it only to whom "
                                            "may use the radio."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    enabled = new QCheckBox(QStringLiteral("&Enable the web panel"), this);
    enabled->setChecked(current.enabled);
    layout->addWidget(enabled);

    auto* form = new QFormLayout;
    address = new QLineEdit(current.address, this);
    address->setToolTip(QStringLiteral("127.0.0.1 keeps the panel to browsers on this computer"));
    port = new QSpinBox(this);
    port->setRange(1, 65535);
    port->setValue(current.port);
    certFile = new QLineEdit(current.certFile, this);
    keyFile = new QLineEdit(current.keyFile, this);
    certFile->setAccessibleName(QStringLiteral("Certificate file"));
    keyFile->setAccessibleName(QStringLiteral("Key file"));
    form->addRow(QStringLiteral("&Address:"), address);
    form->addRow(QStringLiteral("&Port:"), port);
    form->addRow(QStringLiteral("C&ertificate (PEM):"), fileRow(certFile, this, QStringLiteral("Certificate file")));
    form->addRow(QStringLiteral("&Key (PEM):"), fileRow(keyFile, this, QStringLiteral("Key file")));
    layout->addLayout(form);

    clearTextWarning = new QLabel(ClearTextWarning, this);
    clearTextWarning->setWordWrap(true);
    clearTextWarning->setObjectName(QStringLiteral("clearTextWarning"));
    layout->addWidget(clearTextWarning);

    auto* codes = new QGridLayout;
    controlLink = new QLineEdit(this);
    viewLink = new QLineEdit(this);
    for (QLineEdit* e : {controlLink, viewLink})
        e->setReadOnly(true);
    controlLink->setAccessibleName(QStringLiteral("Control link"));
    viewLink->setAccessibleName(QStringLiteral("View only link"));
    copyControl = new QPushButton(QStringLiteral("&Copy"), this);
    copyView = new QPushButton(QStringLiteral("Co&py"), this);
    newControl = new QPushButton(QStringLiteral("&New code"), this);
    newView = new QPushButton(QStringLiteral("Ne&w code"), this);
    copyControl->setAccessibleName(QStringLiteral("Copy the Control link"));
    copyView->setAccessibleName(QStringLiteral("Copy the View only link"));
    newControl->setAccessibleName(QStringLiteral("New Control code"));
    newView->setAccessibleName(QStringLiteral("New View only code"));
    codes->addWidget(new QLabel(QStringLiteral("Control"), this), 0, 0);
    codes->addWidget(controlLink, 0, 1);
    codes->addWidget(copyControl, 0, 2);
    codes->addWidget(newControl, 0, 3);
    codes->addWidget(new QLabel(QStringLiteral("View only"), this), 1, 0);
    codes->addWidget(viewLink, 1, 1);
    codes->addWidget(copyView, 1, 2);
    codes->addWidget(newView, 1, 3);
    layout->addLayout(codes);
    auto* renewNote = new QLabel(QStringLiteral("A new code ends the sessions that used the old one."), this);
    layout->addWidget(renewNote);

    connect(copyControl, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(controlLink->text()); });
    connect(copyView, &QPushButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(viewLink->text()); });
    connect(newControl, &QPushButton::clicked, this, [this] {
        settings_.codes.control = AccessCodes::newCode();
        showLinks();
    });
    connect(newView, &QPushButton::clicked, this, [this] {
        settings_.codes.viewOnly = AccessCodes::newCode();
        showLinks();
    });
    for (QLineEdit* e : {address, certFile, keyFile})
        connect(e, &QLineEdit::textChanged, this, &WebDialog::showLinks);
    connect(port, &QSpinBox::valueChanged, this, &WebDialog::showLinks);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    showLinks();
}

WebSettings WebDialog::result() const
{
    WebSettings s = settings_;
    s.enabled = enabled->isChecked();
    const QString a = address->text().trimmed();
    s.address = a.isEmpty() ? WebSettings::DefaultAddress : a;
    s.port = static_cast<quint16>(port->value());
    s.certFile = certFile->text().trimmed();
    s.keyFile = keyFile->text().trimmed();
    return s;
}

void WebDialog::showLinks()
{
    const WebSettings s = result();
    controlLink->setText(link(s, s.codes.control));
    viewLink->setText(link(s, s.codes.viewOnly));
    clearTextWarning->setVisible(!s.secure() && !isLoopbackAddress(s.address));
}
