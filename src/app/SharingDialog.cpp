// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharingDialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
QString stateText(const SharingDialog::Port& port)
{
    return port.open ? QStringLiteral("Open on %1").arg(port.terminalPath) : QStringLiteral("Closed");
}

// One port's rows: its check box, its path with the copy button, its state.
void addPort(QGridLayout* grid, int row, bool available, QCheckBox* box, QLineEdit* path, QPushButton* copy,
             QLabel* state)
{
    if (!available)
        for (QWidget* w : {static_cast<QWidget*>(box), static_cast<QWidget*>(path), static_cast<QWidget*>(copy),
                           static_cast<QWidget*>(state)})
            w->hide();
    grid->addWidget(box, row, 0, 1, 2);
    grid->addWidget(path, row + 1, 0);
    grid->addWidget(copy, row + 1, 1);
    grid->addWidget(state, row + 2, 0, 1, 2);
    QObject::connect(copy, &QPushButton::clicked, path,
                     [path] { QGuiApplication::clipboard()->setText(path->text()); });
}

QLineEdit* pathField(const SharingDialog::Port& port, const QString& name, QWidget* parent)
{
    auto* path = new QLineEdit(port.linkPath, parent);
    path->setReadOnly(true);
    path->setAccessibleName(name);
    path->setToolTip(
        QStringLiteral("Set the other program's serial port to this path: it stays the same "
                       "from one run to the next"));
    return path;
}
}  // namespace

SharingDialog::SharingDialog(const Port& nativePort, const Port& textPort, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Sharing Ports"));
    nativeAvailable_ = nativePort.available;
    textAvailable_ = textPort.available;
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(QStringLiteral("Programs that reach a radio only through a serial port can share this "
                                            "one: set them to a port below as if it were the radio."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    native = new QCheckBox(QStringLiteral("&Native port (this radio's own commands)"), this);
    native->setChecked(nativePort.open);
    nativePath = pathField(nativePort, QStringLiteral("Native port path"), this);
    copyNative = new QPushButton(QStringLiteral("&Copy native path"), this);
    nativeState = new QLabel(stateText(nativePort), this);

    text = new QCheckBox(QStringLiteral("&Text port (Kenwood TS-2000 commands)"), this);
    text->setChecked(textPort.open);
    textPath = pathField(textPort, QStringLiteral("Text port path"), this);
    copyText = new QPushButton(QStringLiteral("Cop&y text path"), this);
    textState = new QLabel(stateText(textPort), this);

    auto* grid = new QGridLayout;
    grid->setColumnStretch(0, 1);
    addPort(grid, 0, nativePort.available, native, nativePath, copyNative, nativeState);
    grid->setRowMinimumHeight(3, fontMetrics().height() / 2);
    addPort(grid, 4, textPort.available, text, textPath, copyText, textState);
    layout->addLayout(grid);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumWidth(fontMetrics().horizontalAdvance(nativePort.linkPath) * 3 / 2 + copyNative->sizeHint().width());
}

SharingSettings SharingDialog::result() const
{
    return SharingSettings{.native = nativeAvailable_ && native->isChecked(),
                           .text = textAvailable_ && text->isChecked()};
}
