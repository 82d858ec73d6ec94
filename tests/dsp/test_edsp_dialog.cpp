// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeConsoleHost.h"
#include "PassbandPicture.h"
#include "Twips.h"
#include "frmOptions.h"

#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <memory>

namespace {

// A dialog on a fake main window whose CW pitch reads "750 Hz" and whose mode is FM.
struct Rig {
    FakeConsoleHost host;
    QPointer<frmOptions> dlg;
    Rig(const QString& pitch = QStringLiteral("750 Hz"))
    {
        host.captions[12] = pitch;
        host.mode = 6;
        dlg = new frmOptions(host);
    }
    ~Rig() { delete dlg.data(); }
    const EdspControls& c() const { return dlg->controls(); }
    QStringList written() const { return host.port->writtenHex(); }
    void clearWire()
    {
        host.port->writes.clear();
        host.clock->events.clear();
    }
    // A click on the option's round indicator (a radio button takes clicks on its indicator and text
    // only, not on the blank rest of its row); the page just brought to front is laid out first.
    void click(int option)
    {
        QCoreApplication::processEvents();
        QRadioButton* o = c().Option1[option];
        QTest::mouseClick(o, Qt::LeftButton, {}, QPoint(8, o->height() / 2));
    }
    // "R0=0 R1=1 T4=1": every menu mark that was set, sorted by menu and index.
    QString marks() const
    {
        QStringList l;
        for (auto it = host.rxChecked.cbegin(); it != host.rxChecked.cend(); ++it)
            l << QStringLiteral("R%1=%2").arg(it.key()).arg(it.value() ? 1 : 0);
        for (auto it = host.txChecked.cbegin(); it != host.txChecked.cend(); ++it)
            l << QStringLiteral("T%1=%2").arg(it.key()).arg(it.value() ? 1 : 0);
        return l.join(u' ');
    }
};

QString outputDir()
{
    const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT", QDir::tempPath());
    QDir().mkpath(dir);
    return dir;
}

}  // namespace

class TestEdspDialog : public QObject {
    Q_OBJECT
private slots:
    void dialog_captionTabsAndToolTips()
    {
        Rig r;
        QCOMPARE(r.dlg->windowTitle(), QStringLiteral("EDSP Settings"));
        QTabWidget* t = r.c().tbsOptions;
        QCOMPARE(t->count(), 4);
        const QStringList captions{"RX EDSP", "TX EDSP", "AF Filters", "Special Filters"};
        const QStringList tips{"Set RX EDSP Functions", "Set TX EDSP Functions", "Set Audio EDSP functions",
                               "Set CW Filters"};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(t->tabText(i), captions[i]);
            QCOMPARE(t->tabToolTip(i), tips[i]);
            QCOMPARE(t->tabBar()->tabData(i).toString(), QStringLiteral("Group%1").arg(i + 1));
        }
        QCOMPARE(r.dlg->cancelButton()->text(), QStringLiteral("Cancel"));
    }

    void pages_holdTheirFramesAndControls()
    {
        Rig r;
        auto frames = [&r](int page) {
            QStringList l;
            for (QGroupBox* g : r.c().picOptions[page]->findChildren<QGroupBox*>())
                l << g->title();
            l.sort();
            return l;
        };
        QCOMPARE(frames(0), (QStringList{" EDSP - Contour ", " EDSP - Demodulation ", " Tip "}));
        QCOMPARE(frames(1), (QStringList{" EDSP - LSB ", " EDSP - USB ", " Microphone Equalization "}));
        QVERIFY(frames(2).contains(" HPF ") && frames(2).contains(" LPF ") && frames(2).contains(" CW Filters "));
        QCOMPARE(frames(3), (QStringList{" EDSP - Demodulation ", " EDSP - Noise ", " EDSP - Notch", " Tip "}));
        for (int tip : {11, 12}) {
            QCOMPARE(r.c().fra1[tip]->title(), QStringLiteral(" Tip "));
            QCOMPARE(r.c().fra1[tip]->findChild<QLabel*>()->text(),
                     QStringLiteral("Param 0-9 and 7-7 must be set to ON before using the EDSP"));
        }
        QVERIFY(r.c().picOptions[0]->isAncestorOf(r.c().Key[0]));
        QVERIFY(r.c().picOptions[1]->isAncestorOf(r.c().Key[2]));
        QVERIFY(r.c().picOptions[2]->isAncestorOf(r.c().Key[1]));
        QVERIFY(r.c().picOptions[2]->isAncestorOf(r.c().HScroll2));
        QVERIFY(r.c().picOptions[3]->isAncestorOf(r.c().Option1[35]));
        QCOMPARE(r.c().Key[0]->text(), QStringLiteral("Audio EDSP Filters Off"));
        QCOMPARE(r.c().Key[1]->text(), QStringLiteral("AF EDSP Off"));
        QCOMPARE(r.c().Key[2]->text(), QStringLiteral("Tx EDSP Off"));
        for (int i = 0; i < 36; ++i)
            QCOMPARE(r.c().Option1[i]->text(), edspOptionCaption(i));
    }

    void atLoad_slidersAndDesignTexts()
    {
        Rig r;
        QCOMPARE(r.c().HScroll1[0]->value(), 150);
        QCOMPARE(r.c().HScroll1[0]->maximum(), 155);
        QCOMPARE(r.c().HScroll1[1]->value(), 15);
        QCOMPARE(r.c().HScroll1[3]->value(), 20);
        QCOMPARE(r.c().HScroll1[3]->maximum(), 20);
        QCOMPARE(r.c().HScroll2->value(), 75);
        QCOMPARE(r.c().HScroll2->maximum(), 127);
        QCOMPARE(r.c().Label1[0]->text(), QStringLiteral(" LP Cut = 3000 Hz"));
        QCOMPARE(r.c().Label1[1]->text(), QStringLiteral(" HP Cut = 300 Hz"));
        QCOMPARE(r.c().Label1[2]->text(), QStringLiteral(" Cent = 750 Hz"));
        QCOMPARE(r.c().Label3->text(), QStringLiteral(" Band Limits = 300 to 3000 Hz"));
        QCOMPARE(r.c().Label4->text(), QStringLiteral(" Bandwidth = 2700 Hz"));
        QCOMPARE(r.dlg->centreGuard(), 15);
        QCOMPARE(r.dlg->cwFilterCode(), 0x45);
        for (int i = 0; i < 36; ++i)
            QVERIFY(!r.dlg->isOptionSelected(i));
        QVERIFY(r.written().isEmpty());
    }

    void atLoad_cwCentreFromPitchHalvesToEven_sendsNothing()
    {
        Rig r(QStringLiteral("745 Hz"));
        QCOMPARE(r.c().HScroll2->value(), 74);
        QCOMPARE(r.c().Label1[2]->text(), QStringLiteral(" Cent = 740Hz"));
        QVERIFY(r.written().isEmpty());
        Rig odd(QStringLiteral("755 Hz"));
        QCOMPARE(odd.c().HScroll2->value(), 76);
        Rig none(QStringLiteral("CW Pitch"));
        QCOMPARE(none.c().HScroll2->value(), 0);
        QVERIFY(none.written().isEmpty());
    }

    // Every option clicked on a fresh dialog: the exact bytes in order, and the menu marks after.
    void everyOption_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("bytes");
        QTest::addColumn<QString>("marks");
        QTest::addColumn<int>("modeAfter");
        const QString contourOff = QStringLiteral("00 00 00 4E 75");
        QTest::newRow("0") << 0 << QStringList{"00 00 00 30 75", "00 00 00 06 0C", contourOff} << "R0=0 R1=1 R3=0 R4=1"
                           << 6;
        QTest::newRow("1") << 1 << QStringList{"00 00 00 05 0C", "00 00 00 31 75", contourOff} << "R0=0 R1=1 R3=1 R4=0"
                           << 5;
        QTest::newRow("2") << 2 << QStringList{"00 00 00 01 0C", "00 00 00 32 75", contourOff} << "R0=0 R1=1 R3=1 R4=0"
                           << 1;
        QTest::newRow("3") << 3 << QStringList{"00 00 00 01 0C", "00 00 10 32 75", contourOff} << "R0=0 R1=1 R3=1 R4=0"
                           << 1;
        QTest::newRow("4") << 4 << QStringList{"00 00 00 00 0C", "00 00 00 33 75", contourOff} << "R0=0 R1=1 R3=1 R4=0"
                           << 0;
        QTest::newRow("5") << 5 << QStringList{"00 00 00 00 0C", "00 00 10 33 75", contourOff} << "R0=0 R1=1 R3=1 R4=0"
                           << 0;
        const char* steps[] = {"10", "20", "30", "40"};
        for (int i = 6; i <= 9; ++i)
            QTest::addRow("%d", i) << i
                                   << QStringList{QStringLiteral("00 00 %1 B2 75").arg(steps[i - 6]), "00 00 00 01 0C"}
                                   << "T0=1 T1=0" << 1;
        for (int i = 10; i <= 13; ++i)
            QTest::addRow("%d", i) << i
                                   << QStringList{QStringLiteral("00 00 %1 B3 75").arg(steps[i - 10]), "00 00 00 00 0C"}
                                   << "T0=1 T1=0" << 0;
        QTest::newRow("14") << 14 << QStringList{"00 00 4B 45 75"} << "" << 6;
        QTest::newRow("15") << 15 << QStringList{"00 00 4B 46 75"} << "" << 6;
        QTest::newRow("16") << 16 << QStringList{"00 00 4B 47 75"} << "" << 6;
        QTest::newRow("17") << 17 << QStringList{contourOff} << "R0=0 R1=1" << 6;
        QTest::newRow("18") << 18 << QStringList{"00 00 01 4E 75"} << "R0=1 R1=0" << 6;
        QTest::newRow("19") << 19 << QStringList{"00 00 10 4E 75"} << "R0=1 R1=0" << 6;
        QTest::newRow("20") << 20 << QStringList{"00 00 20 4E 75"} << "R0=1 R1=0" << 6;
        QTest::newRow("21") << 21 << QStringList{"00 00 30 4E 75"} << "R0=1 R1=0" << 6;
        QTest::newRow("22") << 22 << QStringList{"00 00 00 C1 75"} << "T3=0 T4=1" << 6;
        QTest::newRow("23") << 23 << QStringList{"00 00 10 C1 75"} << "T3=1 T4=0" << 6;
        QTest::newRow("24") << 24 << QStringList{"00 00 20 C1 75"} << "T3=1 T4=0" << 6;
        QTest::newRow("25") << 25 << QStringList{"00 00 30 C1 75"} << "T3=1 T4=0" << 6;
        QTest::newRow("26") << 26 << QStringList{"00 00 40 C1 75"} << "T3=1 T4=0" << 6;
        QTest::newRow("27") << 27 << QStringList{"00 00 00 40 75"} << "R6=0 R7=1" << 6;
        QTest::newRow("28") << 28 << QStringList{"00 00 11 48 75"} << "R6=1 R7=0" << 6;
        QTest::newRow("29") << 29 << QStringList{"00 00 20 48 75"} << "R6=1 R7=0" << 6;
        QTest::newRow("30") << 30 << QStringList{"00 00 30 48 75"} << "R6=1 R7=0" << 6;
        QTest::newRow("31") << 31 << QStringList{"00 00 40 48 75"} << "R6=1 R7=0" << 6;
        QTest::newRow("32") << 32 << QStringList{"00 00 00 4A 75"} << "R10=1" << 6;
        QTest::newRow("33") << 33 << QStringList{"00 00 10 4A 75"} << "R10=1" << 6;
        QTest::newRow("34") << 34 << QStringList{"00 00 00 4B 75"} << "R9=1" << 6;
        QTest::newRow("35") << 35 << QStringList{"00 00 10 4B 75"} << "R9=1" << 6;
    }
    void everyOption()
    {
        QFETCH(int, index);
        QFETCH(QStringList, bytes);
        QFETCH(QString, marks);
        QFETCH(int, modeAfter);
        Rig r;
        r.dlg->show();
        r.dlg->selectTab(r.c().tbsOptions->indexOf(r.c().Option1[index]->parentWidget()->parentWidget()) + 1);
        r.click(index);
        QVERIFY(r.dlg->isOptionSelected(index));
        QCOMPARE(r.written(), bytes);
        QCOMPARE(r.marks(), marks);
        QCOMPARE(r.host.mode, modeAfter);
        // The dialog neither waits nor reads.
        for (const QString& e : r.host.clock->events)
            QVERIFY2(e.startsWith(QStringLiteral("write ")), qPrintable(e));
    }

    void clickingTheSelectedOptionAgain_sendsNothing()
    {
        Rig r;
        r.dlg->show();
        r.dlg->selectTab(4);
        r.click(28);
        r.clearWire();
        r.click(28);
        QVERIFY(r.written().isEmpty());
    }

    void lcfSendsThirdByte01()
    {
        Rig r;
        r.dlg->selectOption(18);
        QCOMPARE(r.written(), QStringList{"00 00 01 4E 75"});
    }

    void fskSendsThirdByte11()
    {
        Rig r;
        r.dlg->selectOption(28);
        QCOMPARE(r.written(), QStringList{"00 00 11 48 75"});
    }

    void amOptionSetsModeCode5()
    {
        Rig r;
        r.dlg->selectOption(1);
        QCOMPARE(r.host.mode, 5);
    }

    void rxEdspOff_resendsTheCurrentModeCode()
    {
        Rig r;
        r.host.mode = 9;
        r.dlg->selectOption(0);
        QCOMPARE(r.written().mid(0, 2), (QStringList{"00 00 00 30 75", "00 00 00 09 0C"}));
    }

    void noiseOffWithMenuUnchecked_checksIt()
    {
        Rig r;
        r.host.rxChecked[10] = false;
        r.dlg->selectOption(32);
        QVERIFY(r.host.rxChecked.value(10));
        QVERIFY(!r.host.keyColours.contains(30));
    }

    void noiseOnThenOff_togglesTheMarkTwiceAndColoursKey30()
    {
        Rig r;
        r.dlg->selectOption(33);
        QVERIFY(r.host.rxChecked.value(10));
        QCOMPARE(r.host.keyColours.value(30), 0xC0FFC0u);
        r.dlg->selectOption(32);
        QVERIFY(!r.host.rxChecked.value(10));
        QVERIFY(!r.host.keyColours.contains(30));
    }

    void notchOnThenOff_togglesTheMarkAndColoursKey28()
    {
        Rig r;
        r.host.rxChecked[9] = true;
        r.dlg->selectOption(35);  // whichever was clicked, the mark flips
        QVERIFY(!r.host.rxChecked.value(9));
        QCOMPARE(r.host.keyColours.value(28), 0xFFC0FFu);
        r.dlg->selectOption(34);
        QVERIFY(r.host.rxChecked.value(9));
        QVERIFY(!r.host.keyColours.contains(28));
    }

    void receiveDemodulation_resetsContourToEqualizationOff()
    {
        Rig r;
        r.dlg->selectOption(19);
        QVERIFY(r.dlg->isOptionSelected(19));
        r.clearWire();
        r.dlg->selectOption(2);
        QVERIFY(r.dlg->isOptionSelected(17));
        QVERIFY(!r.dlg->isOptionSelected(19));
        QCOMPARE(r.written(), (QStringList{"00 00 00 01 0C", "00 00 00 32 75", "00 00 00 4E 75"}));
        QVERIFY(r.host.rxChecked.value(1));
        QVERIFY(!r.host.rxChecked.value(0));
    }

    void contourReset_sendsOnlyWhenEqualizationOffWasNotSelected()
    {
        Rig r;
        r.dlg->selectOption(17);
        r.clearWire();
        r.dlg->selectOption(4);
        QCOMPARE(r.written(), (QStringList{"00 00 00 00 0C", "00 00 00 33 75"}));
        r.clearWire();
        r.dlg->selectOption(5);
        QCOMPARE(r.written(), (QStringList{"00 00 00 00 0C", "00 00 10 33 75"}));
    }

    void selectOption_alreadySelected_sendsNothing()
    {
        Rig r;
        r.dlg->selectOption(17);
        r.clearWire();
        r.dlg->selectOption(17);
        QVERIFY(r.written().isEmpty());
    }

    void framesAreSeparateGroups()
    {
        Rig r;
        r.dlg->selectOption(7);
        r.dlg->selectOption(11);
        r.dlg->selectOption(2);
        r.dlg->selectOption(29);
        for (int k : {7, 11, 2, 29, 17})
            QVERIFY(r.dlg->isOptionSelected(k));
        r.dlg->selectOption(8);
        QVERIFY(!r.dlg->isOptionSelected(7));
        QVERIFY(r.dlg->isOptionSelected(11));
    }

    void clearTxOptions_unselectsSixToThirteenSilently()
    {
        Rig r;
        r.dlg->selectOption(9);
        r.dlg->selectOption(12);
        r.dlg->selectOption(23);
        r.clearWire();
        r.dlg->clearTxOptions();
        for (int k = 6; k <= 13; ++k)
            QVERIFY(!r.dlg->isOptionSelected(k));
        QVERIFY(r.dlg->isOptionSelected(23));
        QVERIFY(r.written().isEmpty());
        // Selectable again afterwards, and then it sends.
        r.dlg->selectOption(9);
        QCOMPARE(r.written(), (QStringList{"00 00 40 B2 75", "00 00 00 01 0C"}));
    }

    void audioFiltersOffKeys_selectDataFilterOffThenSend()
    {
        for (int key : {0, 1}) {
            Rig r;
            r.dlg->show();
            r.dlg->selectTab(key == 0 ? 1 : 3);
            QCoreApplication::processEvents();
            QTest::mouseClick(r.c().Key[key], Qt::LeftButton);
            // Option 27 was not selected: its own click sends the command first, then the key's.
            QCOMPARE(r.written(), (QStringList{"00 00 00 40 75", "00 00 00 40 75"}));
            QVERIFY(r.dlg->isOptionSelected(27));
            QCOMPARE(r.marks(), QStringLiteral("R6=0 R7=1"));
            r.clearWire();
            QTest::mouseClick(r.c().Key[key], Qt::LeftButton);
            QCOMPARE(r.written(), QStringList{"00 00 00 40 75"});
        }
    }

    void txEdspOffKey_sendsB0UnselectsAndMarks()
    {
        Rig r;
        r.dlg->show();
        r.dlg->selectTab(2);
        r.dlg->selectOption(7);
        r.dlg->selectOption(13);
        r.clearWire();
        QCoreApplication::processEvents();
        QTest::mouseClick(r.c().Key[2], Qt::LeftButton);
        QCOMPARE(r.written(), QStringList{"00 00 00 B0 75"});
        for (int k = 6; k <= 13; ++k)
            QVERIFY(!r.dlg->isOptionSelected(k));
        QVERIFY(r.host.txChecked.value(1));
        QVERIFY(!r.host.txChecked.value(0));
    }

    void lowPassTo150WithHighPassAt15_captionsAndCommand()
    {
        Rig r;
        r.c().HScroll1[0]->setValue(100);
        r.clearWire();
        r.c().HScroll1[0]->setValue(150);
        QCOMPARE(r.c().Label1[0]->text(), QStringLiteral(" Low Pass Cut = 3000 Hz"));
        QCOMPARE(r.c().Label3->text(), QStringLiteral(" Band Limits = 300 to 3000 Hz"));
        QCOMPARE(r.c().Label4->text(), QStringLiteral(" Bandwidth = 2700 Hz"));
        QCOMPARE(r.written(), QStringList{"00 00 96 41 75"});
    }

    void cutMoves_placeTheCutAwayBars()
    {
        Rig r;
        r.c().HScroll1[0]->setValue(100);
        QCOMPARE(r.c().Picture1->Label2[1]->x(), Twips::toPixels(100 * 14));
        r.c().HScroll1[1]->setValue(40);
        QCOMPARE(r.c().Picture1->Label2[0]->width(), Twips::toPixels(40 * 14));
        QCOMPARE(r.c().Label1[1]->text(), QStringLiteral(" High Pass Cut = 800 Hz"));
    }

    void crossedSliders_bandwidthPositiveLargerNumberFirst()
    {
        Rig r;
        r.c().HScroll1[0]->setValue(30);
        r.c().HScroll1[1]->setValue(100);
        QCOMPARE(r.c().Label4->text(), QStringLiteral(" Bandwidth = 1400 Hz"));
        QCOMPARE(r.c().Label3->text(), QStringLiteral(" Band Limits = 2000 to 600 Hz"));
    }

    void fullBandwidth_passbandMaximumIsOne()
    {
        Rig r;
        r.c().HScroll1[0]->setValue(155);
        r.c().HScroll1[1]->setValue(0);
        QCOMPARE(r.c().HScroll1[3]->maximum(), 1);
    }

    void passbandSlider_movesBothCuts()
    {
        Rig r;
        r.c().HScroll1[3]->setValue(10);
        QCOMPARE(r.written(), (QStringList{"00 00 91 41 75", "00 00 0A 42 75"}));
        QCOMPARE(r.c().HScroll1[0]->value(), 145);
        QCOMPARE(r.c().HScroll1[1]->value(), 10);
        QCOMPARE(r.c().HScroll1[3]->value(), 10);
    }

    void draggingASlider_streamsCommands()
    {
        Rig r;
        QScrollBar* lp = r.c().HScroll1[0];
        lp->setSliderDown(true);
        lp->setSliderPosition(149);
        lp->setSliderPosition(148);
        lp->setSliderPosition(147);
        lp->setSliderDown(false);
        QCOMPARE(r.written(), (QStringList{"00 00 95 41 75", "00 00 94 41 75", "00 00 93 41 75"}));
    }

    void cwCentre_beforeAfFiltersVisit_sendsNothing()
    {
        Rig r;
        r.dlg->show();
        r.c().HScroll2->setValue(80);
        r.c().HScroll2->setValue(81);
        QCOMPARE(r.c().Label1[2]->text(), QStringLiteral(" Cent = 810Hz"));
        QVERIFY(r.written().isEmpty());
        QCOMPARE(r.dlg->centreGuard(), 15);
    }

    void cwCentre_afterOneAfFiltersVisit_eachMoveSends()
    {
        Rig r;
        r.dlg->show();
        r.dlg->selectTab(3);
        QCOMPARE(r.dlg->centreGuard(), 0);
        r.dlg->selectTab(1);
        r.c().HScroll2->setValue(90);
        r.c().HScroll2->setValue(91);
        QCOMPARE(r.written(), (QStringList{"00 00 5A 45 75", "00 00 5B 45 75"}));
    }

    void cwFilterOption_changesTheCodeTheCentreSends()
    {
        Rig r;
        r.dlg->show();
        r.dlg->selectTab(3);
        r.click(16);
        QCOMPARE(r.dlg->cwFilterCode(), 0x47);
        r.clearWire();
        r.c().HScroll2->setValue(60);
        QCOMPARE(r.written(), QStringList{"00 00 3C 47 75"});
    }

    void afFiltersTab_pausesThePollOtherTabsResumeIt()
    {
        Rig r;
        r.dlg->show();
        r.host.pollChanges.clear();
        r.dlg->selectTab(3);
        QVERIFY(!r.host.pollOn);
        QVERIFY(r.c().picOptions[2]->isEnabled());
        QVERIFY(!r.c().picOptions[0]->isEnabled());
        r.dlg->selectTab(4);
        QVERIFY(r.host.pollOn);
        QVERIFY(!r.c().picOptions[2]->isEnabled());
        r.dlg->selectTab(4);  // the handler runs again for the tab in front
        QCOMPARE(r.host.pollChanges, (QList<bool>{false, true, true}));
    }

    void ctrlTab_cyclesTabsAndWraps()
    {
        Rig r;
        r.dlg->show();
        QCOMPARE(r.c().tbsOptions->currentIndex(), 0);
        QTest::keyClick(r.dlg, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(r.c().tbsOptions->currentIndex(), 1);
        QTest::keyClick(r.c().Option1[6], Qt::Key_Tab, Qt::ControlModifier);  // from a control on the page
        QCOMPARE(r.c().tbsOptions->currentIndex(), 2);
        QVERIFY(!r.host.pollOn);
        QTest::keyClick(r.dlg, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(r.c().tbsOptions->currentIndex(), 3);
        QVERIFY(r.host.pollOn);
        QTest::keyClick(r.dlg, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(r.c().tbsOptions->currentIndex(), 0);
    }

    void plainTab_doesNotChangeTheTab()
    {
        Rig r;
        r.dlg->show();
        QTest::keyClick(r.dlg, Qt::Key_Tab);
        QCOMPARE(r.c().tbsOptions->currentIndex(), 0);
    }

    void showOnTab_selectsThenShows()
    {
        Rig r;
        r.dlg->showOnTab(2);
        QVERIFY(r.dlg->isVisible());
        QCOMPARE(r.c().tbsOptions->currentIndex(), 1);
        QVERIFY(!r.dlg->isModal());
    }

    void ok_resumesThePollAndHides()
    {
        Rig r;
        r.dlg->showOnTab(3);
        QVERIFY(!r.host.pollOn);
        QTest::mouseClick(r.dlg->okButton(), Qt::LeftButton);
        QVERIFY(r.host.pollOn);
        QVERIFY(!r.dlg->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!r.dlg.isNull());  // hidden, not unloaded
    }

    void cancel_resumesThePollAndUnloads()
    {
        Rig r;
        r.dlg->showOnTab(3);
        QCOMPARE(r.dlg->cancelButton()->text(), QStringLiteral("Cancel"));
        QTest::mouseClick(r.dlg->cancelButton(), Qt::LeftButton);
        QVERIFY(r.host.pollOn);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(r.dlg.isNull());
    }

    void escape_actsAsCancel()
    {
        Rig r;
        r.dlg->showOnTab(3);
        QTest::keyClick(r.dlg, Qt::Key_Escape);
        QVERIFY(r.host.pollOn);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(r.dlg.isNull());
    }

    void screenshots_everyTab()
    {
        Rig r;
        r.dlg->show();
        r.dlg->selectOption(2);
        r.dlg->selectOption(7);
        r.dlg->selectOption(23);
        r.dlg->selectOption(14);
        r.dlg->selectOption(28);
        r.dlg->selectOption(35);
        r.dlg->selectOption(32);
        r.c().HScroll1[1]->setValue(30);
        r.c().HScroll1[0]->setValue(120);
        for (int t = 1; t <= 4; ++t) {
            r.dlg->selectTab(t);
            QVERIFY(r.dlg->grab().save(QDir(outputDir()).filePath(QStringLiteral("edsp_tab%1.png").arg(t))));
        }
    }
};

QTEST_MAIN(TestEdspDialog)
#include "test_edsp_dialog.moc"
