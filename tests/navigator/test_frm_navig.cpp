// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeConsoleHost.h"
#include "NavigatorLook.h"
#include "PressButton.h"
#include "Twips.h"
#include "VfoReply.h"
#include "WindowPlacement.h"
#include "frm_Navig.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <memory>

namespace {
const QStringList BandCaptions{"29", "1.8", "3.5", "7", "10", "14", "18", "21", "24.5", "28"};

QColor keyColour(const QPushButton* b)
{
    return b->palette().color(QPalette::Button);
}
QColor textColour(const QLabel* l)
{
    return l->palette().color(QPalette::WindowText);
}

// The radio answers a current-VFO request with the frequency it holds.
void answerVfo(FakeConsoleHost& host, double kHz)
{
    host.port->responder = [kHz](const QByteArray& cmd) {
        return cmd.toHex() == "0000000210" ? vfoReply(kHz) : QByteArray();
    };
}
}  // namespace

class TestFrmNavig : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeConsoleHost> host;
    std::unique_ptr<frm_Navig> w;

    void clearWire()
    {
        host->port->writes.clear();
        host->clock->events.clear();
    }
    QStringList wire() const { return host->port->writtenHex(); }
    void click(int band) { QTest::mouseClick(w->Band[band], Qt::LeftButton); }
    // "&Freq" then "Enter": an entry waiting for its first digit.
    void startEntry()
    {
        click(10);
        click(13);
    }
    void typeDigits(const QString& digits)
    {
        for (QChar c : digits)
            click(c.digitValue());
    }
    void saveShot(const QString& name)
    {
        const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (dir.isEmpty())
            return;
        QDir().mkpath(dir);
        QVERIFY(w->grab().save(dir + u'/' + name));
    }

private slots:
    void init()
    {
        host = std::make_unique<FakeConsoleHost>();
        w = std::make_unique<frm_Navig>(*host);
    }
    void cleanup()
    {
        w.reset();
        host.reset();
    }

    // ---- window -------------------------------------------------------------------------------

    void captionAndHeight()
    {
        QCOMPARE(w->windowTitle(), QStringLiteral("Frequency Navigator"));
        QCOMPARE(w->height(), 323);  // 4845 twips at 15 twips a pixel
    }

    void widthIsGivenInTwips()
    {
        // What the filter window adds to the main window's left edge for its own default position.
        w->resize(700, w->height());
        QCOMPARE(w->widthTwips(), 10500);
        w->resize(701, w->height());
        QCOMPARE(w->widthTwips(), 10515);
    }

    void opensInBandMode()
    {
        QCOMPARE(w->entry().EntryPos(), 10);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(w->Band[i]->text(), BandCaptions[i]);
        QCOMPARE(w->Band[10]->text(), QStringLiteral("&Freq"));
        QCOMPARE(w->Band[11]->text(), QStringLiteral("Main"));
        QCOMPARE(w->Band[12]->text(), QStringLiteral("Sub"));
        QCOMPARE(w->Band[13]->text(), QStringLiteral("Enter"));
        QCOMPARE(w->Band[14]->text(), QStringLiteral("&Band"));
        QVERIFY(w->Band[10]->isEnabled());
        for (int i = 11; i <= 14; ++i)
            QVERIFY(!w->Band[i]->isEnabled());
        QCOMPARE(w->Stepper[0]->text(), QStringLiteral("100 K"));
        QCOMPARE(w->Stepper[1]->text(), QStringLiteral("1 Mhz"));
        QCOMPARE(w->MD[1]->text(), QStringLiteral("U/LSB"));
        QCOMPARE(w->MD[2]->text(), QStringLiteral("CW"));
        QCOMPARE(w->MD[4]->text(), QStringLiteral("AM"));
        QCOMPARE(w->MD[6]->text(), QStringLiteral("FM"));
        QVERIFY(!w->Timer3->isActive());
        QVERIFY(!w->Timer6->isActive());
        QCOMPARE(w->Timer3->interval(), 720);
        QCOMPARE(w->Timer6->interval(), 120);
    }

    void bandKeySendsItsFrequency_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("frame");
        QTest::newRow("29") << 0 << "00 00 96 02 0A";
        QTest::newRow("1.8") << 1 << "00 43 18 00 0A";
        QTest::newRow("3.5") << 2 << "00 50 36 00 0A";
        QTest::newRow("7") << 3 << "00 45 70 00 0A";
        QTest::newRow("10") << 4 << "00 50 01 01 0A";
        QTest::newRow("14") << 5 << "00 50 42 01 0A";
        QTest::newRow("18") << 6 << "00 00 85 01 0A";
        QTest::newRow("21") << 7 << "00 00 12 02 0A";
        QTest::newRow("24.5") << 8 << "00 50 48 02 0A";
        QTest::newRow("28") << 9 << "00 00 85 02 0A";
    }
    void bandKeySendsItsFrequency()
    {
        QFETCH(int, index);
        QFETCH(QString, frame);
        click(index);
        QCOMPARE(wire(), QStringList{frame});
        QVERIFY(host->pollOn);
    }

    void bandKeyWithPortClosedSendsNothing()
    {
        host->port->close();
        click(5);
        QVERIFY(host->port->writes.isEmpty());
    }

    // ---- key pad ------------------------------------------------------------------------------

    void freqTurnsBandKeysIntoDigitKeys()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->activateWindow();
        click(10);
        QCOMPARE(w->entry().EntryPos(), 0);
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(w->Band[i]->text(), QString::number(i));
            QCOMPARE(keyColour(w->Band[i]), fromBgr(0xC0E0FF));
        }
        QVERIFY(!w->Band[10]->isEnabled());
        for (int i = 11; i <= 14; ++i)
            QVERIFY(w->Band[i]->isEnabled());
        QVERIFY(w->Band[13]->hasFocus());
        QVERIFY(host->pollOn);  // only "Enter" stops the poll
        QVERIFY(wire().isEmpty());
    }

    void bandAfterFreqRestoresExactCaptions()
    {
        const QColor face = keyColour(w->Band[0]);
        click(10);
        click(14);
        QStringList captions;
        for (int i = 0; i < 10; ++i)
            captions << w->Band[i]->text();
        QCOMPARE(captions, BandCaptions);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(keyColour(w->Band[i]), face);
        QCOMPARE(w->entry().EntryPos(), 10);
        QVERIFY(w->Band[10]->isEnabled());
        for (int i = 11; i <= 14; ++i)
            QVERIFY(!w->Band[i]->isEnabled());
    }

    void digitsBeforeEnterAreIgnored()
    {
        click(10);
        click(5);
        QCOMPARE(w->entry().EntryPos(), 0);
        QVERIFY(wire().isEmpty());
    }

    void enterStopsPollAndShowsEmptyEntry()
    {
        startEntry();
        QVERIFY(!host->pollOn);
        QCOMPARE(w->entry().EntryPos(), 1);
        QCOMPARE(w->entry().EntryFreq(), 0.0);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("  .000.00 "));
        QCOMPARE(textColour(w->Lbl_VFO), fromBgr(0xFFC0C0));
        QVERIFY(wire().isEmpty());
    }

    void enterDoesNothingWhilePollStopped()
    {
        click(10);
        host->pollOn = false;
        const QString before = w->Lbl_VFO->text();
        click(13);
        QCOMPARE(w->entry().EntryPos(), 0);
        QCOMPARE(w->Lbl_VFO->text(), before);
        QVERIFY(host->pollChanges.isEmpty());
    }

    void entryShowsEveryIntermediateText()
    {
        startEntry();
        const QStringList expected{" 1.000.00 ", "14.000.00 ", "14.200.00 ", "14.250.00 ",
                                   "14.250.00 ", "14.250.00 ", "14.250.00 "};
        const QString digits = QStringLiteral("1425000");
        for (int k = 0; k < digits.size(); ++k) {
            click(digits[k].digitValue());
            QCOMPARE(w->Lbl_VFO->text(), expected[k]);
            QCOMPARE(w->entry().EntryPos(), k + 2);
        }
        QVERIFY(wire().isEmpty());
    }

    void digits1425000Give1425MHzAndEighthDigitIgnored()
    {
        startEntry();
        typeDigits(QStringLiteral("1425000"));
        QCOMPARE(w->entry().EntryFreq(), 14.25);
        click(9);
        QCOMPARE(w->entry().EntryFreq(), 14.25);
        QCOMPARE(w->entry().EntryPos(), 8);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("14.250.00 "));
    }

    void mainSendsEntryToVfoA()
    {
        startEntry();
        typeDigits(QStringLiteral("1425"));
        click(11);
        QCOMPARE(wire(), QStringList{"00 50 42 01 0A"});
        QVERIFY(host->pollOn);
        QCOMPARE(w->entry().EntryPos(), 1);
        QCOMPARE(w->entry().EntryFreq(), 0.0);
        QCOMPARE(textColour(w->Lbl_VFO), fromBgr(0x0080FF));
    }

    void subSendsEntryToVfoB()
    {
        startEntry();
        typeDigits(QStringLiteral("0704537"));
        click(12);
        QCOMPARE(wire(), QStringList{"37 45 70 00 8A"});
        QVERIFY(host->pollOn);
        QCOMPARE(w->entry().EntryPos(), 1);
    }

    void mainWithoutDigitsDoesNothing()
    {
        startEntry();
        click(11);
        click(12);
        QVERIFY(wire().isEmpty());
        QVERIFY(!host->pollOn);
    }

    void nextEntryAfterMainStartsFromZero()
    {
        startEntry();
        typeDigits(QStringLiteral("1425"));
        click(11);
        typeDigits(QStringLiteral("07045"));
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("07.045.00 "));
        click(11);
        QCOMPARE(wire(), (QStringList{"00 50 42 01 0A", "00 45 70 00 0A"}));
    }

    void pollDoesNotOverwriteDigitsBeingTyped()
    {
        startEntry();
        typeDigits(QStringLiteral("14"));
        click(11);
        w->showPolled(QStringLiteral("14,000.00 "), QStringLiteral("USB"));
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("14,000.00 "));
        click(2);
        w->showPolled(QStringLiteral("14,000.00 "), QStringLiteral("LSB"));
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral(" 2.000.00 "));
        QCOMPARE(w->modeLabel->text(), QStringLiteral("LSB"));
    }

    void bandAfterEnterRestartsPoll()
    {
        startEntry();
        typeDigits(QStringLiteral("3"));
        click(14);
        QVERIFY(host->pollOn);
        QCOMPARE(w->entry().EntryPos(), 10);
        QVERIFY(wire().isEmpty());
    }

    void keyboardDigitsPlusAndMinus()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        click(10);
        click(13);
        QTest::keyClicks(w->Band[13], QStringLiteral("2120"));
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("21.200.00 "));
        QTest::keyClick(w->Band[13], '+');
        QCOMPARE(wire(), QStringList{"00 00 12 02 0A"});
        QTest::keyClicks(w->Slider1, QStringLiteral("35"));  // the window sees keys before any control
        QTest::keyClick(w->Band[3], '-');
        QCOMPARE(wire(), (QStringList{"00 00 12 02 0A", "00 00 50 03 8A"}));
    }

    void keyboardDigitsDoNothingInBandMode()
    {
        QTest::keyClicks(w->Band[0], QStringLiteral("5+-"));
        QVERIFY(wire().isEmpty());
        QCOMPARE(w->entry().EntryPos(), 10);
    }

    void returnKeyPressesEnter()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        click(10);
        QTest::keyClick(w->Band[13], Qt::Key_Return);
        QCOMPARE(w->entry().EntryPos(), 1);
    }

    void mnemonicsOpenAndCloseTheKeyPad()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
        // A mnemonic presses its key with a short animation: the click follows a moment later.
        QTest::keyClick(w->windowHandle(), Qt::Key_F, Qt::AltModifier);
        QTRY_COMPARE(w->entry().EntryPos(), 0);
        QTest::keyClick(w->windowHandle(), Qt::Key_B, Qt::AltModifier);
        QTRY_COMPARE(w->entry().EntryPos(), 10);
    }

    // ---- mode keys ----------------------------------------------------------------------------

    void modeKeys_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("left");
        QTest::addColumn<QString>("frame");
        QTest::newRow("U/LSB left") << 1 << true << "00 00 00 01 0C";
        QTest::newRow("U/LSB right") << 1 << false << "00 00 00 00 0C";
        QTest::newRow("CW left") << 2 << true << "00 00 00 02 0C";
        QTest::newRow("CW right") << 2 << false << "00 00 00 03 0C";
        QTest::newRow("AM left") << 4 << true << "00 00 00 04 0C";
        QTest::newRow("AM right") << 4 << false << "00 00 00 05 0C";
        QTest::newRow("FM left") << 6 << true << "00 00 00 06 0C";
        QTest::newRow("FM right") << 6 << false << "00 00 00 06 0C";
    }
    void modeKeys()
    {
        QFETCH(int, index);
        QFETCH(bool, left);
        QFETCH(QString, frame);
        QTest::mousePress(w->MD[index], left ? Qt::LeftButton : Qt::RightButton);
        QTest::mouseRelease(w->MD[index], left ? Qt::LeftButton : Qt::RightButton);
        QCOMPARE(wire(), QStringList{frame});
    }

    // ---- steppers -----------------------------------------------------------------------------

    void stepperPressStopsPollAndStartsTimer()
    {
        QTest::mousePress(w->Stepper[0], Qt::LeftButton);
        QVERIFY(!host->pollOn);
        QVERIFY(w->Timer6->isActive());
        QCOMPARE(w->stepper().StepSel, 0);
        QCOMPARE(w->stepper().StepOp, 0x08);
        QCOMPARE(w->stepper().StepKHz, -100);
        QVERIFY(wire().isEmpty());  // the first step goes with the first tick
    }

    void stepperHoldSendsOneStepATick_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("right");
        QTest::addColumn<QString>("frame");
        QTest::addColumn<double>("after3");
        QTest::newRow("100 K down") << 0 << false << "00 00 00 00 08" << 13950.0;
        QTest::newRow("100 K up") << 0 << true << "00 00 00 00 07" << 14550.0;
        QTest::newRow("1 Mhz down") << 1 << false << "00 00 00 01 08" << 11250.0;
        QTest::newRow("1 Mhz up") << 1 << true << "00 00 00 01 07" << 17250.0;
    }
    void stepperHoldSendsOneStepATick()
    {
        QFETCH(int, index);
        QFETCH(bool, right);
        QFETCH(QString, frame);
        QFETCH(double, after3);
        host->vfoA = 14250;
        QTest::mousePress(w->Stepper[index], right ? Qt::RightButton : Qt::LeftButton);
        for (int i = 0; i < 3; ++i)
            w->Timer6_Timer();
        QCOMPARE(host->clock->events, (QStringList{"write " + frame, "sleep 50", "write " + frame, "sleep 50",
                                                   "write " + frame, "sleep 50"}));
        QCOMPARE(host->vfoA, after3);
        const QString shown = QLocale::c().toString(after3, 'f', 2);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("%1,%2 ").arg(shown.left(2), shown.mid(2)));
        QCOMPARE(host->vfoADisplay, w->Lbl_VFO->text());
    }

    void holdingOneMhzUpAt29500ShowsWrapTo500()
    {
        host->vfoA = 29500;
        QTest::mousePress(w->Stepper[1], Qt::RightButton);
        w->Timer6_Timer();
        QCOMPARE(wire(), QStringList{"00 00 00 01 07"});
        QCOMPARE(host->vfoA, 500.0);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("500.00 "));
        QCOMPARE(host->vfoADisplay, QStringLiteral("500.00 "));
    }

    void holdingHundredKUpAbove30000Wraps()
    {
        host->vfoA = 29950;
        QTest::mousePress(w->Stepper[0], Qt::RightButton);
        w->Timer6_Timer();
        QCOMPARE(host->vfoA, 150.0);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("150.00 "));
    }

    void steppingBelowHundredKilohertzReadsTheRadio()
    {
        host->vfoA = 150;
        answerVfo(*host, 29950);
        QTest::mousePress(w->Stepper[0], Qt::LeftButton);
        w->Timer6_Timer();
        QCOMPARE(host->clock->events,
                 (QStringList{"write 00 00 00 00 08", "sleep 50", "write 00 00 00 02 10", "sleep 75", "read 16"}));
        QCOMPARE(host->vfoA, 29950.0);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("29,950.00 "));
    }

    void releaseTickReadsBackAndRestartsPoll()
    {
        host->vfoA = 14250;
        QTest::mousePress(w->Stepper[1], Qt::RightButton);
        w->Timer6_Timer();
        QTest::mouseRelease(w->Stepper[1], Qt::RightButton);
        QCOMPARE(w->stepper().StepSel, 3);
        QCOMPARE(w->stepper().StepOp, 0);
        QVERIFY(!host->pollOn);
        answerVfo(*host, 15249.5);
        clearWire();
        w->Timer6_Timer();
        QCOMPARE(host->clock->events, (QStringList{"read 0", "write 00 00 00 02 10", "sleep 75", "read 16", "read 0"}));
        QCOMPARE(host->vfoA, 15249.5);
        QVERIFY(host->pollOn);
        QVERIFY(!w->Timer6->isActive());
        QCOMPARE(w->Timer6->interval(), 150);
    }

    void stepperWithPortClosedSendsNothingButReleases()
    {
        host->port->close();
        QTest::mousePress(w->Stepper[0], Qt::RightButton);
        w->Timer6_Timer();
        QVERIFY(host->port->writes.isEmpty());
        QCOMPARE(host->vfoA, 14250.0);
        QTest::mouseRelease(w->Stepper[0], Qt::RightButton);
        w->Timer6_Timer();
        QVERIFY(host->port->writes.isEmpty());
        QVERIFY(host->pollOn);
        QVERIFY(!w->Timer6->isActive());
    }

    // ---- slider -------------------------------------------------------------------------------

    void sliderRunsFiftyKilohertzATickEachWay()
    {
        QCOMPARE(w->Slider1->minimum(), -50);
        QCOMPARE(w->Slider1->maximum(), 50);
        answerVfo(*host, 14200);
        w->Slider1->setValue(w->Slider1->minimum());  // pulled right up: 50 kHz up
        w->Timer3_Timer();
        w->Slider1->setValue(w->Slider1->maximum());  // right down: 50 kHz down
        w->Timer3_Timer();
        QCOMPARE(wire(), (QStringList{"00 00 00 02 10", "00 50 42 01 0A", "00 00 00 02 10", "00 50 41 01 0A"}));
    }

    void sliderMoveStopsPollAndStartsTimer()
    {
        w->Slider1->setValue(10);
        QVERIFY(!host->pollOn);
        QVERIFY(w->Timer3->isActive());
    }

    void sliderTickTunesDownByValue()
    {
        answerVfo(*host, 7045);
        w->Slider1->setValue(10);
        w->Timer3_Timer();
        QCOMPARE(host->clock->events,
                 (QStringList{"write 00 00 00 02 10", "sleep 75", "read 16", "write 00 35 70 00 0A"}));
        QCOMPARE(host->vfoA, 7035.0);
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("7,035.00 "));
        QCOMPARE(host->vfoADisplay, QStringLiteral("7,035.00 "));
    }

    void sliderTickTunesUpWithNegativeValue()
    {
        answerVfo(*host, 7045);
        w->Slider1->setValue(-25);
        w->Timer3_Timer();
        QCOMPARE(wire(), (QStringList{"00 00 00 02 10", "00 70 70 00 0A"}));
        QCOMPARE(host->vfoA, 7070.0);
    }

    void sliderTickOutOfRangeSendsNoFrequency()
    {
        answerVfo(*host, 29990);
        w->Slider1->setValue(-20);
        w->Timer3_Timer();
        QCOMPARE(wire(), QStringList{"00 00 00 02 10"});
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("29,990.00 "));
    }

    void sliderReleaseSpringsBackAndRestartsPoll()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->Slider1->setValue(30);
        QTest::mouseRelease(w->Slider1, Qt::LeftButton);
        QCOMPARE(w->Slider1->value(), 0);
        QVERIFY(!w->Timer3->isActive());
        QVERIFY(host->pollOn);
    }

    void sliderTickWithPortClosedDoesNothing()
    {
        host->port->close();
        w->Slider1->setValue(10);
        w->Timer3_Timer();
        QVERIFY(host->port->writes.isEmpty());
    }

    // ---- quick memories -----------------------------------------------------------------------

    void quickMemoriesStartAsQmbThenEmpty()
    {
        QCOMPARE(w->QMB[0]->text(), QStringLiteral("QMB"));
        for (int i = 1; i < 8; ++i)
            QVERIFY(w->QMB[i]->text().isEmpty());
        for (int i = 0; i < 8; ++i)
            QCOMPARE(w->qmbMode(i), 1);
    }

    void leftPressOnQmbCaptionDoesNothing()
    {
        QTest::mousePress(w->QMB[0], Qt::LeftButton);
        QTest::mouseRelease(w->QMB[0], Qt::LeftButton);
        QVERIFY(host->port->writes.isEmpty());
        QCOMPARE(w->QMB[0]->text(), QStringLiteral("QMB"));
    }

    void leftPressOnEmptyQuickMemoryDoesNothing()
    {
        QTest::mousePress(w->QMB[3], Qt::LeftButton);
        QVERIFY(host->port->writes.isEmpty());
    }

    void rightPressStoresFrequencyAndMode()
    {
        host->vfoA = 7045.37;
        host->mode = 3;
        QTest::mousePress(w->QMB[0], Qt::RightButton);
        QCOMPARE(w->QMB[0]->text(), QStringLiteral("7,045.37"));
        QCOMPARE(w->qmbMode(0), 3);
        QVERIFY(host->port->writes.isEmpty());
    }

    void leftPressRecallsModeThenFrequency()
    {
        host->vfoA = 14250;
        host->mode = 4;
        QTest::mousePress(w->QMB[5], Qt::RightButton);
        QTest::mousePress(w->QMB[5], Qt::LeftButton);
        QCOMPARE(wire(), (QStringList{"00 00 00 04 0C", "00 50 42 01 0A"}));
    }

    void quickMemoriesPersistAcrossCloseAndReopen()
    {
        host->vfoA = 21200;
        host->mode = 2;
        QTest::mousePress(w->QMB[1], Qt::RightButton);
        host->vfoA = 1843;
        host->mode = 0;
        QTest::mousePress(w->QMB[7], Qt::RightButton);
        w->close();
        QCOMPARE(host->store.value("Startup", "QMB"),
                 QStringLiteral("QMB      21,200.00") + QString(9 * 5, u' ') + QStringLiteral("1,843.00 "));
        QCOMPARE(host->store.value("Startup", "QMBMode"), QStringLiteral(" 1 2 1 1 1 1 1 0"));

        w = std::make_unique<frm_Navig>(*host);
        QCOMPARE(w->QMB[1]->text(), QStringLiteral("21,200.00"));
        QCOMPARE(w->QMB[7]->text(), QStringLiteral("1,843.00"));
        QCOMPARE(w->qmbMode(1), 2);
        QCOMPARE(w->qmbMode(7), 0);
        QTest::mousePress(w->QMB[1], Qt::LeftButton);
        QTest::mousePress(w->QMB[7], Qt::LeftButton);
        QCOMPARE(wire(), (QStringList{"00 00 00 02 0C", "00 00 12 02 0A", "00 00 00 00 0C", "00 43 18 00 0A"}));
    }

    // ---- position -----------------------------------------------------------------------------

    void opensBesideTheMainWindow()
    {
        // A main window at left 600, top 450, 3000 twips wide: the navigator's edge meets its right edge.
        host->geometry = QRect(600, 450, 3000, 3990);
        w = std::make_unique<frm_Navig>(*host);
        QCOMPARE(WindowPlacement::leftTwips(w.get()), 3600);
        QCOMPARE(WindowPlacement::topTwips(w.get()), 450);
    }

    void opensPulledBackOntoTheScreen()
    {
        // The offscreen platform's screen is 800 pixels wide: 12000 twips.
        if (WindowPlacement::screenSizeTwips().width() != 12000)
            QSKIP("needs the offscreen platform's screen, 800 pixels wide");
        host->geometry = QRect(1500, 450, 10410, 3990);  // right edge at 11910 twips
        w = std::make_unique<frm_Navig>(*host);
        QCOMPARE(WindowPlacement::leftTwips(w.get()) + w->widthTwips(), 12000);
        QVERIFY(WindowPlacement::leftTwips(w.get()) < 11910);
        QCOMPARE(WindowPlacement::topTwips(w.get()), 450);
    }

    void storedPositionIsRestoredAndSaved()
    {
        host->store.setValue("Startup", "NavigTop", "1500");
        host->store.setValue("Startup", "NavigLeft", "3000");
        w = std::make_unique<frm_Navig>(*host);
        QCOMPARE(WindowPlacement::topTwips(w.get()), 1500);
        QCOMPARE(WindowPlacement::leftTwips(w.get()), 3000);
        w->move(Twips::toPixels(600), Twips::toPixels(900));
        w->close();
        QCOMPARE(host->store.value("Startup", "NavigTop"), QStringLiteral("900"));
        QCOMPARE(host->store.value("Startup", "NavigLeft"), QStringLiteral("600"));
    }

    void offScreenPositionIsNotSaved()
    {
        host->store.setValue("Startup", "NavigTop", "1500");
        host->store.setValue("Startup", "NavigLeft", "3000");
        const QSize screen = WindowPlacement::screenSizeTwips();
        w->move(Twips::toPixels(screen.width() + 3000), Twips::toPixels(screen.height() + 3000));
        w->close();
        QCOMPARE(host->store.value("Startup", "NavigTop"), QStringLiteral("1500"));
        QCOMPARE(host->store.value("Startup", "NavigLeft"), QStringLiteral("3000"));
    }

    void closingWhileSteppingRestartsPoll()
    {
        QTest::mousePress(w->Stepper[0], Qt::RightButton);
        w->close();
        QVERIFY(!w->Timer6->isActive());
        QVERIFY(host->pollOn);
    }

    // ---- poll display and pictures ------------------------------------------------------------

    void pollShowsFrequencyAndMode()
    {
        w->showPolled(QStringLiteral("14,250.25 "), QStringLiteral("CW N"));
        QCOMPARE(w->Lbl_VFO->text(), QStringLiteral("14,250.25 "));
        QCOMPARE(w->modeLabel->text(), QStringLiteral("CW N"));
    }

    void screenshotsOfBothModes()
    {
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        host->vfoA = 14250.25;
        QTest::mousePress(w->QMB[0], Qt::RightButton);
        host->vfoA = 7045;
        QTest::mousePress(w->QMB[1], Qt::RightButton);
        w->showPolled(QStringLiteral("14,250.25 "), QStringLiteral("USB"));
        saveShot(QStringLiteral("navigator-band-mode.png"));
        startEntry();
        typeDigits(QStringLiteral("21074"));
        saveShot(QStringLiteral("navigator-keypad-mode.png"));
    }
};

QTEST_MAIN(TestFrmNavig)
#include "test_frm_navig.moc"
