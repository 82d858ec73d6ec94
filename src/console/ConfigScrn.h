// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The serial port dialog ("Configuration"): which port talks to the radio and its line settings.
// It works on the radio link's port: it closes the port while it is up, applies the choice, reopens
// the port and persists the choice. The poll is stopped while it is up.

#include <QDialog>
#include <QVector>

class ConsoleHost;
class Prompts;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

class ConfigScrn : public QDialog {
    Q_OBJECT
public:
    ConfigScrn(ConsoleHost& host, Prompts& prompts, QWidget* parent = nullptr);
    // Form_Terminate: the OK steps run once more when the dialog object goes.
    ~ConfigScrn() override;
    // Off in a run on a port given for that run only (--simulate, --port): the last release must not
    // store that run's device as the operator's port. An OK the operator presses still stores it.
    void setRerunOkOnRelease(bool on) { rerunOkOnRelease_ = on; }

    void Form_Load();
    void OKButton_Click();
    void CancelButton_Click();
    void HelpButton_Click() {}
    void NoParity_Click() { parityLetter_ = QStringLiteral("N"); }
    void EvenParity_Click() { parityLetter_ = QStringLiteral("E"); }
    void OddParity_Click() { parityLetter_ = QStringLiteral("O"); }
    void Data7_Click() { dataBits_ = QStringLiteral("7"); }
    void Data8_Click() { dataBits_ = QStringLiteral("8"); }
    void Stop1_Click() { stopBits_ = QStringLiteral("1"); }
    void Stop2_Click() { stopBits_ = QStringLiteral("2"); }

    // Controls.
    QListWidget* ComP = nullptr;      // 0 "None", 1..8 "Com 1".."Com 8", then the devices present
    QLineEdit* DevicePath = nullptr;  // the device of the chosen entry, or a typed path
    QListWidget* BaudR = nullptr;
    QRadioButton* NoParity = nullptr;
    QRadioButton* EvenParity = nullptr;
    QRadioButton* OddParity = nullptr;
    QRadioButton* Data7 = nullptr;
    QRadioButton* Data8 = nullptr;
    QRadioButton* Stop1 = nullptr;
    QRadioButton* Stop2 = nullptr;
    QPushButton* OKButton = nullptr;
    QPushButton* CancelButton = nullptr;
    QPushButton* HelpButton = nullptr;

    // Dialog state.
    int portNumber() const { return portNumber_; }
    bool portWasOpen() const { return portWasOpen_; }
    QString parityLetter() const { return parityLetter_; }
    QString dataBits() const { return dataBits_; }
    QString stopBits() const { return stopBits_; }
    QString speedText() const { return speedText_; }

    // The port number and device the current choice stands for (-1: nothing chosen).
    int chosenPortNumber() const;
    QString chosenDevice() const;

public slots:
    void reject() override;  // Esc and the window's close box act as Cancel

private:
    void buildControls();
    void fillPortList(const QString& current);
    void selectPort(int number, const QString& device);
    bool runOkSteps();  // false when it stopped at an error box
    void showError(const QString& title, const QString& description);
    void unload();

    ConsoleHost& host_;
    Prompts& prompts_;
    qint16 portNumber_ = 0;
    QString speedText_;
    QString parityLetter_;
    QString dataBits_;
    QString stopBits_;
    bool portWasOpen_ = false;
    bool loaded_ = false;
    bool rerunOkOnRelease_ = true;
};
