// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Message boxes, the one-line input prompt and modal dialogs, behind an interface so that tests can
// answer them. The program uses QtPrompts; tests hand the windows a scripted stand-in.

#include <QMessageBox>
#include <QPoint>
#include <QString>
#include <optional>

class QDialog;
class QWidget;

class Prompts {
public:
    virtual ~Prompts() = default;

    // A message box: icon, title, text and buttons; returns the button pressed.
    virtual QMessageBox::StandardButton message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                                const QString& text, QMessageBox::StandardButtons buttons) = 0;
    // A one-line prompt at a screen position in twips; nothing when cancelled.
    virtual std::optional<QString> input(QWidget* parent, const QString& title, const QString& label,
                                         const QString& initial, QPoint atTwips) = 0;
    // Runs a dialog modally.
    virtual void execDialog(QDialog* dialog) = 0;
};

class QtPrompts final : public Prompts {
public:
    QMessageBox::StandardButton message(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                        const QString& text, QMessageBox::StandardButtons buttons) override;
    std::optional<QString> input(QWidget* parent, const QString& title, const QString& label, const QString& initial,
                                 QPoint atTwips) override;
    void execDialog(QDialog* dialog) override;
};
