// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The About box: the program's icon, title, version, description. OK closes (and unloads) it.

#include <QDialog>

class QLabel;
class QPushButton;

class frmAbout : public QDialog {
    Q_OBJECT
public:
    // `title` is the application's title ("Tovra's FT-1000 CAT").
    explicit frmAbout(const QString& title, QWidget* parent = nullptr);

    QLabel* lblIcon = nullptr;  // the program's icon, as on its windows
    QLabel* lblTitle = nullptr;
    QLabel* lblVersion = nullptr;
    QLabel* lblDescription = nullptr;
    QLabel* lblNotice = nullptr;
    QPushButton* cmdOK = nullptr;
};
