// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// "Sharing Ports": switches the native and the text port on or off, and shows where a client finds
// each, with a button that copies the path for pasting into the client's settings.

#include "SharingSettings.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

class SharingDialog : public QDialog {
    Q_OBJECT
public:
    // What the dialog shows of one port.
    struct Port {
        bool available = true;  // false: this build has no such port, and its rows are hidden
        bool open = false;
        QString linkPath;      // the stable link a client is set to
        QString terminalPath;  // the terminal behind it while the port is open
    };

    SharingDialog(const Port& native, const Port& text, QWidget* parent = nullptr);
    SharingSettings result() const;

    QCheckBox* native = nullptr;
    QCheckBox* text = nullptr;
    QLineEdit* nativePath = nullptr;
    QLineEdit* textPath = nullptr;
    QPushButton* copyNative = nullptr;
    QPushButton* copyText = nullptr;
    QLabel* nativeState = nullptr;
    QLabel* textState = nullptr;

private:
    bool nativeAvailable_ = true;
    bool textAvailable_ = true;
};
