#pragma once
// The band scope frame of the main window (Frame(1)): span and resolution lists, scan modes, the
// receiver choice, the centre frequency, the plot keys and the plot itself.
//
// A sweep runs on the link thread one pass at a time; its samples come back here as they are read
// and are drawn at once, so the window stays live. The poll is off from the first pass to the end
// of the last. An S-record is driven by Timer2 on this thread, one meter read per tick.

#include "SweepJob.h"
#include "SweepPlan.h"

#include <QMap>
#include <QPointer>
#include <QTime>
#include <QVector>
#include <QWidget>
#include <atomic>
#include <functional>
#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTimer;
class PanBox;
class ScopeHost;

class BandScope : public QWidget {
    Q_OBJECT
public:
    explicit BandScope(ScopeHost& host, QWidget* parent = nullptr);
    ~BandScope() override;

    // Key(48) "Get Center" .. Key(53) "Cancel". Their clicks go to ScopeHost::pressKey(index), the
    // main window's key handler, which hands these indices back here.
    void keyClick(int index);
    QPushButton* key(int index) const;  // the buttons of indices 48..53, created by the scope

    void startRedraw();            // the scope has just been shown: redraw the graticule
    void presetLists();            // start-up: preselect the span lists
    int selectedReceiver() const;  // 1 Main, 2 Sub

    // The controls, by the indices of their arrays.
    QComboBox* panCombo(int index) const { return PanCombo.value(index); }   // 1..3
    QLabel* panLabel(int index) const { return PanLabel.value(index); }      // 1..3
    QRadioButton* scan(int index) const { return Scan.value(index); }        // 0..2
    QRadioButton* mainSub(int index) const { return MainSub.value(index); }  // 0..1
    QLineEdit* centreEdit() const { return CFreq; }
    QLabel* label(int index) const { return index == 0 ? Label0 : nullptr; }
    PanBox* panBox() const { return PanBox_; }
    QLabel* readout() const { return readout_; }
    QTimer* timer2() const { return Timer2; }

    bool busy() const { return busy_; }  // a plot key's sweep is under way
    bool sweeping() const { return passRunning_; }
    bool recording() const;  // Timer2 runs
    double pointerKHz() const { return mouseKHz_; }
    SweepPlan currentPlan() const;  // from CFreq and the two lists as they stand

    // Event handlers, public so the main window and tests can drive them as the controls do.
    void PanCombo_Click(int index);
    void Scan_Click(int index);
    void MainSub_Click(int index);
    void CFreq_LostFocus();
    void PanBox_MouseMove(double x);
    void PanBox_DblClick();
    void Timer2_Timer();

    // Procedures.
    void drawGraticule(int flag);
    void sweep(quint32 colour);
    void startSRecord(quint32 colour);

signals:
    void sweepFinished();  // the last pass has ended and the tune back to the centre is posted

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void paintGraticule(int flag);
    void plotKey(int index);
    void startPass();
    void onTuned(int receiver, const SweepSample& s);
    void onSample(const SweepPlan& plan, const SweepSample& s);
    void onPassDone(const SweepOutcome& outcome);
    void onRecordReading(double x, const QByteArray& reply);
    void drawSample(double x, int level);
    void printRecordLabels(double x);
    bool sRecordSelected() const;
    double centreKHz() const;
    double spanKHz() const;
    double resolutionKHz() const;
    double recordMinutes() const;

    ScopeHost& host_;
    QVector<QComboBox*> PanCombo;
    QVector<QLabel*> PanLabel;
    QVector<QRadioButton*> Scan;
    QVector<QRadioButton*> MainSub;
    QLineEdit* CFreq = nullptr;
    QMap<int, QPushButton*> Key;
    QLabel* Label0 = nullptr;
    PanBox* PanBox_ = nullptr;
    QLabel* readout_ = nullptr;
    QTimer* Timer2 = nullptr;

    // Scope state.
    int receiver_ = 1;
    bool busy_ = false;
    bool passRunning_ = false;
    quint32 colour_ = 0;
    SweepPlan plan_;
    double previousX_ = 0;
    int previousLevel_ = 0;
    double mouseKHz_ = 0;
    std::shared_ptr<std::atomic<bool>> cancel_;
    // S-record.
    int recordTicks_ = 0;
    double recordSeconds_ = 0;
    QTime recordStart_;
    int nextLabelMinute_ = 0;
    // Results from the link thread are delivered to this object, which outlives the window for as
    // long as a job still holds it; the window itself may be gone by then.
    std::shared_ptr<QObject> mailbox_;
};
