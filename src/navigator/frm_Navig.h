// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The frequency navigator: a small tuning window beside the main window. It tunes VFO-A by band
// keys, by a key pad, by two press-and-hold steppers, by a spring-back slider and by eight quick
// memories, and shows the frequency it believes the radio is on.
//
// Choices of this window:
// - It opens to the right of the main window, top edges level, pulled back onto the screen when
//   that would leave it; a stored position that lies on the screen wins.
// - The right button on "FM" sends FM like the left one: FM has no second variant on this key.
// - While digits of a new entry are pending, the status poll updates only the mode label, so the
//   typed frequency stays readable after the poll has been restarted by "Main"/"Sub".
// - An entry started by "Enter" stops the poll; if the operator leaves it with "&Band" or closes
//   the window instead of sending it with "Main"/"Sub", the poll is restarted all the same.
// - Closing the window while a stepper or the slider is held stops them and restarts the poll.

#include "KeypadEntry.h"
#include "Stepper.h"

#include <QList>
#include <QPointer>
#include <QVector>
#include <QWidget>
#include <functional>

class CatPort;
class ConsoleHost;
class RadioLink;
class PressButton;
class QLabel;
class QPushButton;
class QSlider;
class QTimer;

class frm_Navig : public QWidget {
    Q_OBJECT
public:
    explicit frm_Navig(ConsoleHost& host, QWidget* parent = nullptr);

    // The main window calls this on each poll while the navigator is visible.
    void showPolled(const QString& freqText, const QString& modeCaption);
    int widthTwips() const;

    // Controls, with the indices of their arrays.
    QVector<QPushButton*> Band;     // 0..14
    QVector<PressButton*> MD;       // 1, 2, 4 and 6 used
    QVector<PressButton*> Stepper;  // 0 "100 K", 1 "1 Mhz"
    QVector<PressButton*> QMB;      // 0..7
    QSlider* Slider1 = nullptr;
    QLabel* Lbl_VFO = nullptr;
    QLabel* modeLabel = nullptr;
    QTimer* Timer3 = nullptr;  // slider tuning
    QTimer* Timer6 = nullptr;  // stepper repeat

    const KeypadEntry& entry() const { return entry_; }
    const StepperState& stepper() const { return step_; }
    int qmbMode(int index) const { return QmbMode.value(index); }

public slots:
    void Band_Click(int index);
    void MD_MouseDown(int index, Qt::MouseButton button);
    void Stepper_MouseDown(int index, Qt::MouseButton button);
    void Stepper_MouseUp();
    void QMB_MouseDown(int index, Qt::MouseButton button);
    void Timer6_Timer();
    void Timer3_Timer();
    // A key the window sees before its controls in key-pad mode; true when it was used.
    bool Form_KeyPress(const QString& key);

protected:
    void closeEvent(QCloseEvent* e) override;
    void showEvent(QShowEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    void buildControls();
    void Form_Load();
    void Form_QueryUnload();
    void keyPadMode(bool on);
    void digitKey(int d);
    void sendEntry(int vfo);
    void sliderMoved(int value);
    void sliderReleased();
    // Paints a frequency in kHz into Lbl_VFO and the main window's VFO-A display, and keeps it.
    void showNavigatorFreq(double kHz);
    void setDisplayColour(quint32 bgr);
    void post(std::function<void(CatPort&)> job);
    // From a job on the link thread: runs fn with the window on its own thread, if it still exists.
    static void deliverTo(RadioLink& link, QPointer<frm_Navig> self, std::function<void(frm_Navig*)> fn);

    ConsoleHost& host_;
    KeypadEntry entry_;
    StepperState step_;
    QList<int> QmbMode;
    bool entryStoppedPoll_ = false;
    bool stepInFlight_ = false;  // a stepper job posted and not yet answered
};
