// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The main window: the radio's front panel on screen. It owns no port: every exchange with the
// radio is a job on the radio link, whose results come back here to be painted.
//
// The window is split by concern over several files: Form1.cpp (the shared numbers and what the
// other windows may use), Form1Layout.cpp (the controls and the two layouts), Form1Lifecycle.cpp
// (start-up and shutdown), Form1Poll.cpp (the status poll and its painting), Form1Keys.cpp (the
// front-panel keys), Form1Meters.cpp (the meters) and Form1Menus.cpp (the menu bar).

#include "ConfigScrn.h"
#include "ConsoleHost.h"
#include "FlagsDecoder.h"
#include "FrontPanel.h"
#include "KnobFollower.h"
#include "ScopeHost.h"
#include "StatusDecoder.h"

#include <QMainWindow>
#include <QPointer>
#include <QVector>
#include <functional>
#include <memory>

class BandScope;
class ClickFrame;
class LevelGauge;
class PollCache;
class PortWatch;
class PressButton;
class Prompts;
class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QPushButton;
class QRadioButton;
class QTimer;
class SecondaryWindows;
struct FlagsReply;
struct MeterReplies;
struct VfoReading;

class Form1 : public QMainWindow, public ConsoleHost, public ScopeHost {
    Q_OBJECT
public:
    Form1(RadioLink& link, SettingsStore& settings, SecondaryWindows& windows, Prompts& prompts,
          QWidget* parent = nullptr);
    ~Form1() override;

    // Start-up (Form_Load): placement and layout, port, transmit permission, flags, poll, scope lists.
    void Form_Load();
    // A device to open for this run instead of the stored port (nothing is persisted about it).
    void setPortOverride(const QString& device) { portOverride_ = device; }
    // The folder searched for the external analyser (the program's own folder unless set).
    void setProgramFolder(const QString& folder) { programFolder_ = folder; }

    // Procedures other windows call.
    void Get_Status32(int stat);  // 0: the full poll (status, meters, flags)

    // Following the knob with the fast link: a moving VFO's record read alone, back to back, between
    // full polls (see KnobFollower). On by default; nothing changes while the fast link is off.
    void setFollowKnob(bool on);
    bool followKnob() const { return followKnob_; }
    bool followingKnob() const;
    void SetFreq(qint64 frq, int vfo);  // frq in 10 Hz units
    void GetFlags(int arg);

    // Event handlers, by control array and index.
    void Timer1_Timer();
    void Key_Click(int index);
    void Key_MouseDown(int index, Qt::MouseButton button);
    void Key_MouseUp(int index, Qt::MouseButton button);
    void Frame_Click(int index);
    void Mtr_Click(int index);
    void mnu_bar_Click(int index);
    void mnu_File_Click(int index);
    void mnu_EDSPR_Click(int index);
    void mnu_EDSPT_Click(int index);
    void mnu_Stup_Click(int index);
    void mnu_Hlp_Click(int index);

    // The port dialog, created on first use and kept until the window goes.
    void showConfigScrn(bool modal);
    ConfigScrn* configScrn() const { return configScrn_; }

    // Fields other code reads.
    int radioType() const { return radioType_; }
    int meterSelector() const { return meterSelector_; }
    int mainSMeterValue() const { return mainSMeter_; }
    // The chosen transmit meter's gauge, 0..100.
    int transmitMeterPercent() const { return transmitMeterPercent_; }
    int lastToggleParam() const { return lastToggleParam_; }
    bool txAuthorized() const;
    bool analyserPresent() const { return analyserPresent_; }
    bool transmitting() const { return transmitting_; }
    QTimer* timer1() const { return Timer1; }
    BandScope* bandScope() const { return scope_; }
    QPushButton* keyButton(int index) const;  // Key(index), the scope's keys included
    QMenu* setupMenu() const;                 // the "Setup" menu, for items the application adds

    // Controls, with their indices (missing indices hold null).
    QVector<QLabel*> Label1;         // 0..22 indicators
    QVector<QLabel*> Label2;         // 1, 2 frequency displays
    QVector<QLabel*> Label3;         // 1..8 clarifiers
    QVector<QGroupBox*> Frame;       // 1 scope, 2 main, 3 main clarifier, 4 sub clarifier, 5 meters, 6 VFO-A, 7 VFO-B
    QVector<PressButton*> Key;       // 0..32
    QVector<QRadioButton*> Mtr;      // 0..6, no 2
    QVector<QLabel*> Label;          // 11: the transmit meter's scale
    LevelGauge* axPanel1 = nullptr;  // main S-meter
    LevelGauge* axPanel3 = nullptr;  // sub S-meter
    LevelGauge* axPanel2 = nullptr;  // transmit meter
    QLabel* Label5 = nullptr;        // "S-Meters 1-2 = ..."
    QLabel* Label15 = nullptr;       // diagnostic dumps, kept out of sight
    QLabel* Label16 = nullptr;
    QLabel* Label4 = nullptr;
    QVector<QAction*> mnu_Bar, mnu_File, mnu_EDSPR, mnu_EDSPT, mnu_Stup, mnu_Hlp;

    // Every poll's replies as the radio gave them, for the sharing ports.
    std::shared_ptr<PollCache> pollCache() const { return pollCache_; }

    // ConsoleHost and ScopeHost.
    RadioLink& link() override { return link_; }
    SettingsStore& settings() override { return settings_; }
    QWidget* window() override { return this; }
    bool portOpen() const override;
    void setPollEnabled(bool on) override;
    bool pollEnabled() const override;
    bool indicatorVisible(int index) const override;
    QString indicatorCaption(int index) const override;
    double vfoKHz(int vfo) const override { return vfo == 2 ? vfoB_ : vfoA_; }
    void setVfoKHz(int vfo, double kHz) override { (vfo == 2 ? vfoB_ : vfoA_) = kHz; }
    int modeCode() const override { return modeCode_; }
    void setModeCode(int code) override { modeCode_ = code; }
    void setVfoADisplay(const QString& caption) override;
    bool edspMenuChecked(bool transmit, int index) const override;
    void setEdspMenuChecked(bool transmit, int index, bool checked) override;
    void setKeyBackColour(int keyIndex, quint32 bgr) override;
    void resetKeyBackColour(int keyIndex) override;
    QRect geometryTwips() const override;
    int navigatorWidthTwips() override;
    void setFrequencyDisplay(int receiver, const QString& caption) override;
    void setMainSMeter(int percent) override;
    bool dualShown() const override;
    void pressKey(int index) override { Key_Click(index); }
    QString askPlotFile(const QString& suggested) override;
    bool confirmPlotFiles(const QString& title, const QString& text) override;
    void showScopeError(const QString& title, const QString& text) override;

signals:
    // For what shares the radio with the window (the network server): each poll's decoded results,
    // the transmit permission, and the window starting to close (before the port is closed).
    void statusShown(const StatusView& view);
    void flagsShown(const FlagsView& view);
    void txAuthorizationChanged(bool authorized);
    void aboutToClose();
    // The serial port is about to be closed (the window closing, the port dialog opening): what
    // keyed the transmitter through the program unkeys it now, while the line is still there.
    void portClosing();
    // The band scope shown or hidden: while it sweeps, nothing may key the transmitter.
    void scopeShownChanged(bool shown);
    // A timer poll has run to its end on the link (whatever the radio answered).
    void pollFinished();
    // A reading of a VFO alone, made while following the knob, is on the display.
    void readingShown();

protected:
    void closeEvent(QCloseEvent* event) override;  // Form_QueryUnload
    void resizeEvent(QResizeEvent* event) override;

private:
    // Layout.
    void buildControls();
    void buildMenus();
    QWidget* buildVfoRow();
    QWidget* buildIndicatorStrip();
    QWidget* buildKeyPad();
    QGroupBox* buildMeters();
    void applyLayout(const FrontPanel::Layout& layout);
    void placeFrames();
    void setWindowHeightTwips(int twips);
    int waterfallHeight() const;  // what the scope's waterfall adds to the frame while it is shown
    void fitScope();              // the window's height for the scope as it is shown now
    void applyDisplayLook(int vfo);
    QLabel* makeIndicator(int index, const QString& caption, QWidget* parent);

    // Start-up and shutdown.
    void openPortAtStart();
    void askForPort();
    void restoreTxPermission();
    void lookForAnalyser();
    void setTxAuthorized(bool on);

    // Following the knob.
    struct FollowChain;
    struct FollowSteps;
    struct ReadingJob;
    struct FullPollJob;
    static std::shared_ptr<FollowChain> makeFollowChain();
    FollowSteps followSteps();
    void setFollowPollOn(bool on);
    void letGoOfChain();  // under the chain's lock: steps on their way end where they are
    bool followingOn();   // following, and its chain not held up
    // A VFO's record read alone, in place of its half of the last whole record; counted: a reading
    // (not part of a full poll, which counts as one).
    void showReading(const QByteArray& record, bool vfoB, bool counted = true);

    // Poll painting.
    void showStatus(const QByteArray& record);
    void showMeters(const MeterReplies& replies);
    void showFlags(int arg, const FlagsReply& reply);

    // Keys.
    FrontPanel::Indicators shownIndicators() const;
    bool shown(const QLabel* label) const;
    void sendKeyCommand(int index);
    void writeVfoToMemory();
    void askMemoryAndWrite(int channel);
    void recallMemoryToVfoA();
    void toggleVfoMemory();
    void toggleScope();
    void pressEdspPair(int offIndex, int onIndex);
    void startAnalyser();
    void send(const CatCommand& command);

    // Results of a job come back through here: skipped once the window is gone.
    using Delivery = std::function<void(Form1&)>;
    std::function<void(Delivery)> courier();

    RadioLink& link_;
    std::shared_ptr<PollCache> pollCache_;
    SettingsStore& settings_;
    SecondaryWindows& windows_;
    Prompts& prompts_;

    QTimer* Timer1 = nullptr;
    BandScope* scope_ = nullptr;
    QWidget* meterPanel_ = nullptr;
    QPointer<ConfigScrn> configScrn_;
    PortWatch* portWatch_ = nullptr;  // re-opens the port when its lost device comes back
    std::shared_ptr<QObject> mailbox_;

    StatusRecord record_;
    QByteArray lastRecord_;  // the last whole 32-byte record shown: a reading replaces one half
    std::shared_ptr<FollowChain> follow_ = makeFollowChain();
    bool followKnob_ = true;
    static constexpr qint64 FollowStallMs = 2 * KnobFollower::FullPollEveryMs;
    double vfoA_ = 0, vfoB_ = 0;
    int modeCode_ = 0;
    int radioType_ = 1;
    int meterSelector_ = 0x80;  // PO selected when the window opens
    int mainSMeter_ = 0;
    int transmitMeterPercent_ = 0;
    int lastToggleParam_ = 0;
    bool muted_[3] = {false, false, false};
    bool transmitting_ = false;
    bool small_ = false;
    int frameWidthTwips_ = FrontPanel::LargeFrameWidth;
    bool analyserPresent_ = false;
    QString portOverride_;
    QString programFolder_;
};
