// SPDX-License-Identifier: GPL-3.0-or-later
// The band scope frame on the offscreen platform, on an inline link with a fake port and clock:
// its controls, the plot keys' sweeps as they reach the wire and the picture, Cancel, the S-record
// timer, the centre, the receiver choice and the pointer.

#include "BandScope.h"
#include "FakeScopeHost.h"
#include "PanBox.h"
#include "Procedures.h"
#include "ScopeLists.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {
void choose(QComboBox* combo, const QString& entry)
{
    const int i = combo->findText(entry);
    QVERIFY2(i >= 0, qPrintable(entry));
    combo->setCurrentIndex(i);
}

void saveShot(QWidget& w, const QString& name)
{
    const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT");
    if (dir.isEmpty())
        return;
    QDir().mkpath(dir);
    w.grab().save(dir + QLatin1Char('/') + name);
}
}  // namespace

class TestBandScope : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeScopeHost> host;
    std::unique_ptr<BandScope> scope;

    // The scope as the main window has it after start-up: lists preset, shown, wired.
    void makeScope()
    {
        host = std::make_unique<FakeScopeHost>();
        scope = std::make_unique<BandScope>(*host);
        host->scope = scope.get();
        scope->presetLists();
        scope->resize(680, 196);
        scope->show();
        QVERIFY(QTest::qWaitForWindowExposed(scope.get()));
    }

    void click(int key) { QTest::mouseClick(scope->key(key), Qt::LeftButton); }

private slots:
    void init() { makeScope(); }
    void cleanup()
    {
        scope.reset();
        host.reset();
    }

    void controls_captionsAndEntries()
    {
        QCOMPARE(scope->panLabel(1)->text(), QStringLiteral("Band Width"));
        QCOMPARE(scope->panLabel(2)->text(), QStringLiteral("Resolution"));
        QCOMPARE(scope->panLabel(3)->text(), QStringLiteral("S - Rec time"));
        QCOMPARE(scope->panCombo(1)->count(), 13);
        QCOMPARE(scope->panCombo(1)->itemText(12), QStringLiteral("5000 KHz"));
        QCOMPARE(scope->panCombo(2)->count(), 10);
        QCOMPARE(scope->panCombo(3)->count(), 7);
        QCOMPARE(scope->scan(0)->text(), QStringLiteral("Continuous"));
        QCOMPARE(scope->scan(1)->text(), QStringLiteral("One Shot"));
        QCOMPARE(scope->scan(2)->text(), QStringLiteral("S - Record"));
        QCOMPARE(scope->mainSub(0)->text(), QStringLiteral("Main"));
        QCOMPARE(scope->mainSub(1)->text(), QStringLiteral("Sub"));
        const QStringList keys = {"Get Center", "Red Plot", "Yellow Plot", "Green Plot", "Clear", "Cancel"};
        for (int i = 48; i <= 53; ++i) {
            QCOMPARE(scope->key(i)->text(), keys[i - 48]);
            QCOMPARE(scope->key(i)->accessibleName(), QString());  // the caption speaks for it
        }
        QVERIFY(scope->key(47) == nullptr);
        QCOMPARE(scope->label(0)->text(), QStringLiteral("Band Scope"));
        QVERIFY(scope->centreEdit() != nullptr);
    }

    void presetLists_choosesSpanResolutionAndRecordTime()
    {
        QCOMPARE(scope->panCombo(1)->currentText(), QStringLiteral("100 Khz"));
        QCOMPARE(scope->panCombo(2)->currentText(), QStringLiteral("5 Khz"));
        QCOMPARE(scope->panCombo(3)->currentText(), QStringLiteral("5 mn"));
        QVERIFY(scope->scan(1)->isChecked());
        QVERIFY(scope->mainSub(0)->isChecked());
        QCOMPARE(scope->selectedReceiver(), 1);
    }

    void getCenter_fillsTheCentreFromTheSelectedReceiver()
    {
        host->vfoA = 14250.0;
        host->vfoB = 7050.5;
        click(48);
        QCOMPARE(scope->centreEdit()->text(), QStringLiteral("14250.00 "));
        // The graticule is redrawn with its frequency labels, and the poll is on again.
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.240")));
        QCOMPARE(host->pollChanges.last(), true);
        scope->MainSub_Click(1);
        QCOMPARE(scope->centreEdit()->text(), QStringLiteral("7050.50 "));
    }

    void mainSub_subWithDualHidden_pressesDual()
    {
        host->dual = false;
        QTest::mouseClick(scope->mainSub(1), Qt::LeftButton);
        QCOMPARE(scope->selectedReceiver(), 2);
        QCOMPARE(host->pressedKeys, QList<int>({20}));
        QCOMPARE(scope->centreEdit()->text(), QStringLiteral("7050.00 "));
    }

    void mainSub_subWithDualShown_leavesDual()
    {
        host->dual = true;
        scope->MainSub_Click(1);
        QVERIFY(host->pressedKeys.isEmpty());
    }

    void mainSub_mainWithDualShown_pressesDual()
    {
        host->dual = true;
        scope->MainSub_Click(0);
        QCOMPARE(scope->selectedReceiver(), 1);
        QCOMPARE(host->pressedKeys, QList<int>({20}));
    }

    void keys_goThroughTheMainWindowsKeyHandler()
    {
        // Without a main window handing the index back, a click does nothing by itself.
        host->scope = nullptr;
        click(48);
        QVERIFY(scope->centreEdit()->text().isEmpty());
        host->scope = scope.get();
        click(48);
        QCOMPARE(scope->centreEdit()->text(), QStringLiteral("14250.00 "));
    }

    void keys_silentWithThePortClosed()
    {
        host->port->close();
        click(48);
        click(49);
        QVERIFY(scope->centreEdit()->text().isEmpty());
        QVERIFY(host->port->writes.isEmpty());
    }

    void redPlot_fiveSamplesOnSub_exactWireIncludingTuneBack()
    {
        scope->MainSub_Click(1);  // Sub; the centre becomes VFO-B, 7050.00
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        host->clock->events.clear();
        host->pollChanges.clear();
        host->displays.clear();
        click(49);
        const QStringList expected = {
            "write 00 00 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 25 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 50 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 75 70 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 00 71 00 8A", "sleep 50", "write 01 00 00 00 F7", "sleep 100", "read 5",
            "write 00 50 70 00 8A",
        };
        QCOMPARE(host->clock->events, expected);
        // The poll is off for the sweep and on after it.
        QCOMPARE(host->pollChanges, QList<bool>({false, true}));
        // Label2(2) follows the sweep.
        QCOMPARE(host->displays.size(), 5);
        QCOMPARE(host->displays.first(), qMakePair(2, QStringLiteral("7,000.00 ")));
        QCOMPARE(host->displays.last(), qMakePair(2, QStringLiteral("7,100.00 ")));
        // Five bars in red and four lines joining them.
        const QList<QLineF> lines = scope->panBox()->plotLines();
        QCOMPARE(lines.size(), 9);
        for (const QColor& c : scope->panBox()->plotLineColours())
            QCOMPARE(c, QColor(255, 0, 0));
        const int level0 = host->band.levelAt(700000) * 100 / 255;
        QCOMPARE(lines[0], QLineF(0, 100 - level0, 0, 100));
        QCOMPARE(host->mainSMeter.size(), 5);
        QCOMPARE(host->mainSMeter.first(), level0);
        QVERIFY(!scope->busy());
    }

    void spanSmallerThanResolution_givesASingleSample()
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("0.1 Khz"));
        choose(scope->panCombo(2), QStringLiteral("5 Khz"));
        host->port->writes.clear();
        click(49);
        // One tune, one meter read, and the tune back to the centre.
        QCOMPARE(host->port->writtenHex(), QStringList({"00 45 42 01 0A", "00 00 00 00 F7", "00 50 42 01 0A"}));
        QCOMPARE(scope->panBox()->plotLines().size(), 1);
    }

    void emptyMeterReply_drawsNothingForThatStepButTheSweepGoesOn()
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        host->band.silentReads = {2};
        click(51);
        QCOMPARE(host->meterWrites().size(), 5);
        const QList<QLineF> lines = scope->panBox()->plotLines();
        // Samples 1, 3, 4, 5 draw a bar; 3, 4, 5 a joining line; sample 2 nothing.
        QCOMPARE(lines.size(), 7);
        for (const QLineF& l : lines)
            QVERIFY(!(l.p1().x() == 25 && l.p2().x() == 25));
        // The line after the gap starts at the silent step, at the level before it.
        const int level1 = host->band.levelAt(1420000) * 100 / 255;
        const int level3 = host->band.levelAt(1425000) * 100 / 255;
        QVERIFY(lines.contains(QLineF(25, 99 - level1, 50, 99 - level3)));
        QCOMPARE(host->mainSMeter.size(), 4);
    }

    void cancel_duringContinuousSweep_stopsAfterTheCurrentStep()
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        scope->scan(0)->setChecked(true);
        // Continuous: passes follow one another until Cancel, pressed during the 8th meter read
        // (the third step of the second pass).
        host->band.onMeterRead = [this](int n) {
            if (n == 8)
                click(53);
        };
        host->pollChanges.clear();
        click(50);
        QCOMPARE(host->meterWrites().size(), 8);
        QVERIFY(scope->scan(1)->isChecked());
        QVERIFY(!scope->busy());
        // The last thing on the wire is the tune back to the centre.
        QCOMPARE(host->port->writtenHex().last(), QStringLiteral("00 50 42 01 0A"));
        // Off for each pass; selecting One Shot redraws the graticule, which turns it on; and on at
        // the end of the sweep.
        QCOMPARE(host->pollChanges, QList<bool>({false, false, true, true}));
        // The redraw left a clean graticule: the step under way finished on the wire but is not
        // drawn on it.
        QVERIFY(!scope->label(0)->isVisible());
        QCOMPARE(scope->panBox()->plotItemCount(), 0);
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
    }

    void cancel_duringOneShotSweep_drawsTheStepUnderWayAndRedrawsNothing()
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        host->band.onMeterRead = [this](int n) {
            if (n == 3)
                click(53);
        };
        host->pollChanges.clear();
        click(49);
        QCOMPARE(host->meterWrites().size(), 3);
        QCOMPARE(host->pollChanges, QList<bool>({false, true}));
        const QList<QLineF> lines = scope->panBox()->plotLines();
        int bars = 0;
        for (const QLineF& l : lines)
            bars += l.p1().x() == l.p2().x() ? 1 : 0;
        QCOMPARE(bars, 3);
        QCOMPARE(lines.size(), 3 + 1);  // no joining line across Cancel
        QVERIFY(scope->label(0)->isVisible());
    }

    void cancel_withOneShotSelected_redrawsNothing()
    {
        click(48);
        click(49);
        const int items = scope->panBox()->plotItemCount();
        QVERIFY(items > 0);
        QVERIFY(scope->label(0)->isVisible());
        host->pollChanges.clear();
        click(53);
        QCOMPARE(scope->panBox()->plotItemCount(), items);
        QVERIFY(scope->label(0)->isVisible());
        QVERIFY(host->pollChanges.isEmpty());
    }

    void cancel_duringSRecord_endsItAndTurnsThePollOn()
    {
        click(48);
        scope->scan(2)->setChecked(true);
        click(49);
        QVERIFY(scope->recording());
        QCOMPARE(host->pollOn, false);
        scope->Timer2_Timer();
        QVERIFY(scope->panBox()->plotItemCount() > 0);
        host->port->writes.clear();
        click(53);
        // One Shot's click handler ran: caption hidden, graticule redrawn with its frequency labels
        // (which stops the 2992 ms tick), poll on.
        QVERIFY(scope->scan(1)->isChecked());
        QVERIFY(!scope->label(0)->isVisible());
        QVERIFY(!scope->recording());
        QVERIFY(!scope->timer2()->isActive());
        QCOMPARE(host->pollOn, true);
        QCOMPARE(scope->panBox()->plotItemCount(), 0);
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
        // A tick that was already due reads nothing.
        scope->Timer2_Timer();
        QVERIFY(host->port->writes.isEmpty());
    }

    void continuousSweep_everyPassTurnsThePollOff()
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        scope->scan(0)->setChecked(true);
        // During the first pass the span changes, which redraws the graticule and turns the poll on;
        // the second pass (3 samples of 50 kHz) and the third must run with the poll off again.
        QList<bool> pollAtRead;
        host->band.onMeterRead = [&](int n) {
            pollAtRead.append(host->pollOn);
            if (n == 2) {
                choose(scope->panCombo(1), QStringLiteral("50 Khz"));
                scope->PanCombo_Click(1);
            }
            if (n == 11)
                click(53);
        };
        click(49);
        QCOMPARE(host->meterWrites().size(), 11);
        QCOMPARE(pollAtRead.mid(0, 2), QList<bool>({false, false}));
        QCOMPARE(pollAtRead.mid(2, 3), QList<bool>({true, true, true}));  // the rest of the first pass
        QCOMPARE(pollAtRead.mid(5), QList<bool>(6, false));               // the passes after it
    }

    void plotKey_whileBusy_isNotTakenAgain()
    {
        click(48);
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        host->band.onMeterRead = [this](int n) {
            if (n == 1)
                click(49);  // a second press during the sweep
        };
        click(49);
        QCOMPARE(host->meterWrites().size(), 5);
    }

    void clear_redrawsTheGraticuleAndDropsThePlots()
    {
        click(48);
        click(49);
        QVERIFY(scope->panBox()->plotItemCount() > 0);
        click(52);
        QCOMPARE(scope->panBox()->plotItemCount(), 0);
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral(" S9")));
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
    }

    void clear_inSRecord_drawsNoFrequencyLabels()
    {
        click(48);
        scope->scan(2)->setChecked(true);
        click(52);
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("+40")));
        QVERIFY(!scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
    }

    void panComboClick_redrawsWithFlagOneOnlyInSRecord()
    {
        click(48);
        scope->PanCombo_Click(1);
        QVERIFY(!scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
        scope->scan(2)->setChecked(true);
        scope->PanCombo_Click(1);
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
    }

    void scanClick_hidesTheCaptionAndRedraws()
    {
        click(48);
        QVERIFY(scope->label(0)->isVisible());
        QTest::mouseClick(scope->scan(0), Qt::LeftButton);
        QVERIFY(!scope->label(0)->isVisible());
        QVERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
        QTest::mouseClick(scope->scan(2), Qt::LeftButton);
        QVERIFY(!scope->panBox()->gridTexts().contains(QStringLiteral("14.300")));
    }

    void centreLosingFocus_redrawsTheGraticule()
    {
        scope->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(scope.get()));
        scope->centreEdit()->setFocus();
        QTest::keyClicks(scope->centreEdit(), QStringLiteral("7074"));
        QVERIFY(!scope->panBox()->gridTexts().contains(QStringLiteral("7.040")));
        scope->key(48)->setFocus();
        QTRY_VERIFY(scope->panBox()->gridTexts().contains(QStringLiteral("7.040")));
    }

    void sRecord_timer2EveryTickReadsTheMeterOnce()
    {
        scope->MainSub_Click(1);
        scope->scan(2)->setChecked(true);
        host->clock->events.clear();
        host->pollChanges.clear();
        click(49);
        QVERIFY(scope->recording());
        QCOMPARE(scope->timer2()->interval(), 2992);
        QCOMPARE(host->pollChanges, QList<bool>({false}));
        QVERIFY(host->port->writes.isEmpty());             // nothing until the first tick
        QCOMPARE(scope->panBox()->plotTexts().size(), 1);  // the start time
        QVERIFY(!scope->busy());
        for (int i = 0; i < 3; ++i)
            scope->Timer2_Timer();
        QStringList expected;
        for (int i = 0; i < 3; ++i)
            expected << "write 01 00 00 00 F7"
                     << "sleep 100"
                     << "read 5";
        QCOMPARE(host->clock->events, expected);
        QCOMPARE(host->mainSMeter.size(), 3);
        // Bars at 2.992 s steps along the time axis, in red.
        const QList<QLineF> lines = scope->panBox()->plotLines();
        QVERIFY(lines.contains(QLineF(2.992 * 3, 100 - host->mainSMeter.last(), 2.992 * 3, 100)));
        QCOMPARE(scope->panBox()->plotLineColours().first(), QColor(255, 0, 0));
    }

    void sRecord_labelsEveryFewMinutesInTheirColour()
    {
        scope->scan(2)->setChecked(true);
        choose(scope->panCombo(3), QStringLiteral("3 mn"));
        click(50);
        for (int i = 0; i < 41; ++i)  // just past two minutes
            scope->Timer2_Timer();
        QCOMPARE(scope->panBox()->plotTexts().size(), 3);  // start, +1 min, +2 min
        QVERIFY(scope->recording());
        saveShot(*scope, QStringLiteral("band_scope_srecord.png"));
        for (int i = 0; i < 20; ++i)  // past the three minutes: the recording ends by itself
            scope->Timer2_Timer();
        QVERIFY(!scope->recording());
        QCOMPARE(host->pollOn, true);
    }

    void sRecord_graticuleRedrawStopsTimer2AndResumesThePoll()
    {
        scope->scan(2)->setChecked(true);
        click(51);
        QVERIFY(scope->recording());
        QCOMPARE(host->pollOn, false);
        click(52);
        QVERIFY(!scope->recording());
        QCOMPARE(host->pollOn, true);
    }

    void sRecord_emptyReplyDrawsNothing()
    {
        scope->scan(2)->setChecked(true);
        click(49);
        host->band.silentReads = {1};
        scope->Timer2_Timer();
        QCOMPARE(scope->panBox()->plotLines().size(), 0);
        scope->Timer2_Timer();
        QCOMPARE(scope->panBox()->plotLines().size(), 2);
    }

    void pointer_readoutAndDoubleClickTunesMain()
    {
        click(48);  // 14250.00, 100 kHz at 5 kHz: 14200 .. 14300
        scope->MainSub_Click(1);
        scope->centreEdit()->setText(QStringLiteral("14250.00"));
        scope->PanBox_MouseMove(50.0);
        QCOMPARE(scope->pointerKHz(), 14250.0);
        QCOMPARE(scope->readout()->text(), QStringLiteral("14.250.0   14,250.00 kHz"));
        host->port->writes.clear();
        scope->PanBox_DblClick();
        // Receiver 1 (VFO-A) even with Sub selected.
        QCOMPARE(host->port->writtenHex(), QStringList({"00 50 42 01 0A"}));
    }

    void pointer_realDoubleClickTunesWhereThePointerIs()
    {
        click(48);
        PanBox* box = scope->panBox();
        const QPoint at(box->width() / 2, box->height() / 2);
        QTest::mouseMove(box, at);
        host->port->writes.clear();
        QTest::mouseDClick(box, Qt::LeftButton, {}, at);
        QCOMPARE(host->port->writtenHex().size(), 1);
        const double f = scope->pointerKHz();
        QVERIFY2(f > 14245 && f < 14260, qPrintable(QString::number(f)));
        QCOMPARE(host->port->writtenHex().first(), setFreqCommand(setFreqArgument(f), 1).hex());
    }

    void pointer_inSRecordShowsNothing()
    {
        click(48);
        scope->scan(2)->setChecked(true);
        scope->PanBox_MouseMove(50.0);
        QVERIFY(scope->readout()->text().isEmpty());
    }

    void plots_surviveResizeAndScaleWithTheBox()
    {
        click(48);
        click(49);
        const int items = scope->panBox()->plotItemCount();
        QVERIFY(items > 0);
        scope->resize(900, 300);
        QTest::qWait(20);
        QCOMPARE(scope->panBox()->plotItemCount(), items);
        // The red trace is still in the picture after the resize.
        const QImage img = scope->panBox()->grab().toImage();
        int red = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                red += img.pixelColor(x, y) == QColor(255, 0, 0) ? 1 : 0;
        QVERIFY(red > 50);
    }

    void screenshot_redAndGreenSweepsOverASyntheticBand()
    {
        host->vfoA = 14245.0;
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("0.5 Khz"));
        click(52);
        click(49);
        // Later the stations have faded a little and one has gone.
        host->band.strength = 0.8;
        host->band.stations.removeAt(1);
        click(51);
        scope->PanBox_MouseMove(60.0);
        QCOMPARE(scope->panBox()->plotLineColours().count(QColor(0, 255, 0)),
                 scope->panBox()->plotLineColours().count(QColor(255, 0, 0)));
        saveShot(*scope, QStringLiteral("band_scope.png"));
        scope->resize(1000, 320);
        QTest::qWait(20);
        saveShot(*scope, QStringLiteral("band_scope_large.png"));
    }
};

QTEST_MAIN(TestBandScope)
#include "test_band_scope.moc"
