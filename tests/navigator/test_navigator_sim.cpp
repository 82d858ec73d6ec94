// SPDX-License-Identifier: GPL-3.0-or-later
// The navigator against the virtual radio, through the real serial adapter on its pseudo-terminal
// and the link on its own thread: what the keys send really moves the radio's VFO-A.

#include "ConsoleHost.h"
#include "MemorySettingsStore.h"
#include "PressButton.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"
#include "StatusDecoder.h"
#include "frm_Navig.h"

#include <QPushButton>
#include <QTest>
#include <QWidget>

namespace {
class SimConsoleHost : public ConsoleHost {
public:
    explicit SimConsoleHost(const QString& path)
        : link_(
              [path] {
                  auto port = std::make_unique<QtSerialPort>();
                  port->setDevice(path);
                  port->setSettings(QStringLiteral("4800,n,8,2"), nullptr);
                  port->open(nullptr);
                  return std::unique_ptr<SerialPort>(std::move(port));
              },
              std::make_shared<RealClock>(), RadioLink::Mode::Threaded)
    {
    }
    RadioLink& link() override { return link_; }
    SettingsStore& settings() override { return store; }
    QWidget* window() override { return &window_; }
    bool portOpen() const override { return link_.portOpen(); }
    void setPollEnabled(bool on) override { pollOn = on; }
    bool pollEnabled() const override { return pollOn; }
    bool indicatorVisible(int) const override { return false; }
    QString indicatorCaption(int) const override { return {}; }
    double vfoKHz(int vfo) const override { return vfo == 2 ? vfoB : vfoA; }
    void setVfoKHz(int vfo, double kHz) override { (vfo == 2 ? vfoB : vfoA) = kHz; }
    int modeCode() const override { return mode; }
    void setModeCode(int code) override { mode = code; }
    void setVfoADisplay(const QString& caption) override { display = caption; }
    bool edspMenuChecked(bool, int) const override { return false; }
    void setEdspMenuChecked(bool, int, bool) override {}
    void setKeyBackColour(int, quint32) override {}
    void resetKeyBackColour(int) override {}
    QRect geometryTwips() const override { return {1500, 400, 10410, 3990}; }
    int navigatorWidthTwips() override { return 0; }

    // The program's own status read, on the link thread; the decoded VFO-A frequency text.
    QString readVfoA()
    {
        QString text;
        link_.runBlocking([&text](CatPort& port) {
            StatusRecord record;
            const StatusView v = decodeStatus(record, Get_Status32(port).record);
            text = v.noLink ? NoLinkText : v.a.freqText;
        });
        return text;
    }

    MemorySettingsStore store;
    bool pollOn = true;
    double vfoA = 14200, vfoB = 7050;
    int mode = 1;
    QString display;

private:
    QWidget window_;
    RadioLink link_;
};
}  // namespace

class TestNavigatorSim : public QObject {
    Q_OBJECT

    SimHost sim;
    std::unique_ptr<SimConsoleHost> host;
    std::unique_ptr<frm_Navig> w;

    void click(int band) { QTest::mouseClick(w->Band[band], Qt::LeftButton); }

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        host = std::make_unique<SimConsoleHost>(sim.devicePath());
        QVERIFY(host->link().portOpen());
        w = std::make_unique<frm_Navig>(*host);
    }
    void cleanupTestCase()
    {
        w.reset();
        host.reset();
        sim.stop();
    }

    void bandKeyTunesTheRadio()
    {
        click(3);  // "7"
        host->link().waitForIdle();
        // The frequency frame waits for no answer: the status read behind it finds it done.
        QCOMPARE(host->readVfoA(), QStringLiteral("7,045.00 "));
        QCOMPARE(sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, 704500);
    }

    void keyPadEntryTunesTheRadio()
    {
        click(10);
        click(13);
        for (int d : {1, 4, 2, 5, 0, 0, 0})
            click(d);
        click(11);
        host->link().waitForIdle();
        QCOMPARE(host->readVfoA(), QStringLiteral("14,250.00 "));
        QCOMPARE(sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, 1425000);
        click(14);
    }

    void stepperStepsTheRadioAndReadsItBack()
    {
        VfoState a = sim.radio().vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 1425000;
        sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        host->vfoA = 14250;
        QTest::mousePress(w->Stepper[1], Qt::RightButton);
        w->Timer6_Timer();
        host->link().waitForIdle();
        QCOMPARE(host->vfoA, 15250.0);
        QTest::mouseRelease(w->Stepper[1], Qt::RightButton);
        w->Timer6_Timer();
        host->link().waitForIdle();
        QVERIFY(host->pollOn);
        // The release read the frequency back from the radio, which took the 1 MHz step up.
        QCOMPARE(host->vfoA, 15250.0);
        QCOMPARE(host->readVfoA(), QStringLiteral("15,250.00 "));
        QCOMPARE(sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, 1525000);
    }
};

QTEST_MAIN(TestNavigatorSim)
#include "test_navigator_sim.moc"
