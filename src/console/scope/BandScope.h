// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The band scope frame of the main window (Frame(1)): span and resolution lists, scan modes, the
// receiver choice, the centre frequency, the plot keys and the plot itself.
//
// The sweep (ScopeSweep) and the S-record (ScopeRecord) run apart from the widgets; their samples
// come back here as they are read and are drawn at once, so the window stays live.

#include "ScopeExport.h"
#include "SweepJob.h"
#include "SweepPlan.h"
#include "WaterfallModel.h"

#include <QMap>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QImage;
class QLayout;
class QTime;
class QTimer;
class PanBox;
class ScopeHost;
class ScopeRecord;
class ScopeSweep;
class WaterfallView;

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
    QTimer* timer2() const;

    // The waterfall under the plot and "Save Plot...".
    QCheckBox* waterfallToggle() const { return waterfallToggle_; }
    WaterfallView* waterfallView() const { return waterfallView_; }
    const WaterfallModel& waterfall() const { return waterfall_; }
    bool waterfallShown() const;
    void setWaterfallShown(bool shown);  // and keeps the choice in the settings
    QPushButton* savePlotKey() const { return savePlot_; }
    void SavePlot_Click();
    // Writes the picture (plot, and waterfall when shown) to pngPath and the samples of the last
    // sweep and S-record beside it; a file that cannot be written is named in a message box.
    // Writes the picture and its CSVs for a name chosen in the dialog, without asking; false, with
    // the message shown, when a file could not be written.
    bool savePlot(const QString& chosen);
    ScopeExport::SweepKept sweepKept() const;
    QImage plotImage() const;
    const QList<SweepSample>& lastSweep() const;
    const QList<RecordReading>& lastRecording() const;

    bool busy() const;  // a plot key's sweep is under way
    bool sweeping() const;
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
    void waterfallShownChanged(bool shown);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    QLayout* buildResultControls(QWidget* parent);
    void onPassFinished(const SweepPlan& plan, const QList<SweepSample>& samples);
    void paintGraticule(int flag);
    void plotKey(int index);
    void onPassStarted(const SweepPlan& plan, int receiver);
    void onSample(const SweepPlan& plan, const SweepSample& s);
    void tuneBackToCentre();
    void onRecordReading(double x, const QByteArray& reply);
    void printRecordLabel(double x, const QTime& at);
    void drawSample(double x, int level);
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
    ScopeSweep* sweep_ = nullptr;
    ScopeRecord* record_ = nullptr;
    WaterfallModel waterfall_;
    WaterfallView* waterfallView_ = nullptr;
    QCheckBox* waterfallToggle_ = nullptr;
    QPushButton* savePlot_ = nullptr;

    // Scope state.
    int receiver_ = 1;
    quint32 colour_ = 0;
    double previousX_ = 0;
    int previousLevel_ = 0;
    // False once "Cancel" has redrawn the graticule: the sample of the step still under way then
    // belongs to the picture that was wiped.
    bool drawingPass_ = true;
    double mouseKHz_ = 0;
};
