// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// "Network Control": switches the rigctld server on or off and sets where it listens.

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QSpinBox;
struct NetworkSettings;

class NetworkDialog : public QDialog {
    Q_OBJECT
public:
    explicit NetworkDialog(const NetworkSettings& current, QWidget* parent = nullptr);
    NetworkSettings result() const;

    QCheckBox* enabled = nullptr;
    QLineEdit* address = nullptr;
    QSpinBox* port = nullptr;
    QSpinBox* idleMinutes = nullptr;
};
