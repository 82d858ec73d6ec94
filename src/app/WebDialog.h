// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// "Web Panel": switches the browser panel on or off, sets where it listens and its certificate, and
// shows the two access codes as links to copy (the code in the link's fragment, which the browser
// keeps to itself but for the login). Either code can be made anew, which ends the sessions that
// used it once the dialog is accepted. Beyond the loopback without a certificate it says plainly
// that the code crosses the network in clear text.

#include "WebSettings.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

class WebDialog : public QDialog {
    Q_OBJECT
public:
    explicit WebDialog(const WebSettings& current, QWidget* parent = nullptr);
    WebSettings result() const;
    // The link that opens the panel with a code, as the settings in the dialog would serve it.
    static QString link(const WebSettings& s, const QByteArray& code);

    QCheckBox* enabled = nullptr;
    QLineEdit* address = nullptr;
    QSpinBox* port = nullptr;
    QLineEdit* certFile = nullptr;
    QLineEdit* keyFile = nullptr;
    QLineEdit* controlLink = nullptr;
    QLineEdit* viewLink = nullptr;
    QPushButton* copyControl = nullptr;
    QPushButton* copyView = nullptr;
    QPushButton* newControl = nullptr;
    QPushButton* newView = nullptr;
    QLabel* clearTextWarning = nullptr;

private:
    void showLinks();
    WebSettings settings_;
};
