// SPDX-License-Identifier: GPL-3.0-or-later
#include "Prompts.h"

#include "Twips.h"

#include <QDialog>
#include <QInputDialog>

QMessageBox::StandardButton QtPrompts::message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                               const QString& text, QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, title, text, buttons, parent);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

std::optional<QString> QtPrompts::input(QWidget* parent, const QString& title, const QString& label,
                                        const QString& initial, QPoint atTwips)
{
    QInputDialog dialog(parent);
    dialog.setWindowTitle(title);
    dialog.setLabelText(label);
    dialog.setTextValue(initial);
    dialog.move(Twips::toPixels(atTwips.x()), Twips::toPixels(atTwips.y()));
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

void QtPrompts::execDialog(QDialog* dialog)
{
    dialog->exec();
}
