// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The IF filter window: one button per IF filter of the main receiver (" VFO-A ") and the sub
// receiver (" VFO-B "), a menu of the optional filters fitted in the radio, and lamps that show
// which filters the status poll reports in use.
//
// Closing it unloads it (it deletes itself) after saving its position; hold it in a QPointer. The
// status poll may create it hidden to light its lamps: showFilterBytes works whether shown or not.

#include <QMainWindow>
#include <QVector>

class ConsoleHost;
class QAction;
class QPushButton;

class Frm_Filt : public QMainWindow {
    Q_OBJECT
public:
    explicit Frm_Filt(ConsoleHost& host, QWidget* parent = nullptr);

    // Byte 9 (VFO-A) of the status record lights filtA, byte 25 (VFO-B) filtB.
    void showFilterBytes(int byte9, int byte25);

    QVector<QPushButton*> filtA;  // 0..4 and 10..14 (5..9 do not exist)
    QVector<QPushButton*> filtB;
    QVector<QAction*> mnu_filt;       // 0..7; 2 and 6 are separators
    QPushButton* Command1 = nullptr;  // "Close"
    QPushButton* filt21 = nullptr;    // "Escape": no action

protected:
    void closeEvent(QCloseEvent* e) override;

private:
    void filtA_Click(int index);
    void filtB_Click(int index);
    void mnu_filt_Click(int index);
    void ApplyFilterOptions();
    void Form_Load();
    QWidget* receiverFrame(const QString& caption, QVector<QPushButton*>& buttons, bool sub);
    void light(const QVector<QPushButton*>& buttons, int statusByte);

    ConsoleHost& host_;
};
