// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleFixture.h"
#include "PressButton.h"
#include "Twips.h"

#include <QGroupBox>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

class TestForm1Menus : public QObject {
    Q_OBJECT
private slots:
    void menuBarCaptions()
    {
        ConsoleFixture f;
        const QStringList expected = {"File", "Rx EDSP", "Tx EDSP", "Small", "Setup", "&Help"};
        QStringList shown;
        for (QAction* a : f.form->menuBar()->actions())
            shown << a->text();
        QCOMPARE(shown, expected);
        QVERIFY(!f.form->mnu_Bar[3]);
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Small"));
    }

    void itemCaptions_data()
    {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QStringList>("captions");
        QTest::newRow("mnu_File") << "File" << QStringList{"Open M-File", "-", "&Quit"};
        QTest::newRow("mnu_EDSPR") << "Rx EDSP"
                                   << QStringList{"Rx &Contour Filters",
                                                  "Contour Off",
                                                  "-",
                                                  "&Rx EDSP Demodulation",
                                                  "EDSP Demodulation Off",
                                                  "-",
                                                  "Data Mode Filters",
                                                  "EDSP Data Filter Off",
                                                  "-",
                                                  "Auto Notch",
                                                  "Noise Reduction"};
        QTest::newRow("mnu_EDSPT") << "Tx EDSP"
                                   << QStringList{"&Tx EDSP Modulation", "Tx EDSP Modulator Off", "-",
                                                  "&Microphone EDSP Equalization", "Microphone Equal. Off"};
        QTest::newRow("mnu_Stup") << "Setup" << QStringList{"Com Port", "-", "Authorize Tx"};
        QTest::newRow("mnu_Hlp") << "&Help" << QStringList{"Contents...", "-", "About"};
    }
    void itemCaptions()
    {
        QFETCH(QString, menu);
        QFETCH(QStringList, captions);
        ConsoleFixture f;
        const QVector<QAction*>* items = menu == u"File"      ? &f.form->mnu_File
                                         : menu == u"Rx EDSP" ? &f.form->mnu_EDSPR
                                         : menu == u"Tx EDSP" ? &f.form->mnu_EDSPT
                                         : menu == u"Setup"   ? &f.form->mnu_Stup
                                                              : &f.form->mnu_Hlp;
        QStringList shown;
        for (QAction* a : *items) {
            shown << a->text();
            QCOMPARE(a->isSeparator(), a->text() == u"-");
        }
        QCOMPARE(shown, captions);
    }

    void itemActions_data()
    {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("calls");
        QTest::addColumn<QStringList>("writes");
        QTest::newRow("Open M-File") << "File" << 0 << QStringList{"openMemoryFile"} << QStringList{};
        QTest::newRow("Rx Contour Filters") << "Rx" << 0 << QStringList{"showEdsp 1"} << QStringList{};
        QTest::newRow("Contour Off") << "Rx" << 1 << QStringList{"selectEdspOption 17"} << QStringList{};
        QTest::newRow("Rx EDSP Demodulation") << "Rx" << 3 << QStringList{"showEdsp 1"} << QStringList{};
        QTest::newRow("EDSP Demodulation Off") << "Rx" << 4 << QStringList{"selectEdspOption 0"} << QStringList{};
        QTest::newRow("Data Mode Filters") << "Rx" << 6 << QStringList{"showEdsp 4"} << QStringList{};
        QTest::newRow("EDSP Data Filter Off") << "Rx" << 7 << QStringList{"selectEdspOption 27"} << QStringList{};
        QTest::newRow("Auto Notch unchecked") << "Rx" << 9 << QStringList{"selectEdspOption 35"} << QStringList{};
        QTest::newRow("Noise Reduction unchecked") << "Rx" << 10 << QStringList{"selectEdspOption 33"} << QStringList{};
        QTest::newRow("Tx EDSP Modulation") << "Tx" << 0 << QStringList{"showEdsp 2"} << QStringList{};
        QTest::newRow("Tx EDSP Modulator Off")
            << "Tx" << 1 << QStringList{"clearTxEdspOptions"} << QStringList{"00 00 00 B0 75"};
        QTest::newRow("Microphone EDSP Equalization") << "Tx" << 3 << QStringList{"showEdsp 2"} << QStringList{};
        QTest::newRow("Microphone Equal. Off") << "Tx" << 4 << QStringList{"selectEdspOption 22"} << QStringList{};
        QTest::newRow("Contents") << "Help" << 0 << QStringList{} << QStringList{};
        QTest::newRow("About") << "Help" << 2 << QStringList{"showAbout"} << QStringList{};
        for (int i : {1})
            QTest::addRow("File separator %d", i) << "File" << i << QStringList{} << QStringList{};
        for (int i : {2, 5, 8})
            QTest::addRow("Rx separator %d", i) << "Rx" << i << QStringList{} << QStringList{};
        QTest::newRow("Tx separator") << "Tx" << 2 << QStringList{} << QStringList{};
        QTest::newRow("Setup separator") << "Setup" << 1 << QStringList{} << QStringList{};
        QTest::newRow("Help separator") << "Help" << 1 << QStringList{} << QStringList{};
    }
    void itemActions()
    {
        QFETCH(QString, menu);
        QFETCH(int, index);
        QFETCH(QStringList, calls);
        QFETCH(QStringList, writes);
        ConsoleFixture f;
        const QVector<QAction*>& items = menu == u"File"    ? f.form->mnu_File
                                         : menu == u"Rx"    ? f.form->mnu_EDSPR
                                         : menu == u"Tx"    ? f.form->mnu_EDSPT
                                         : menu == u"Setup" ? f.form->mnu_Stup
                                                            : f.form->mnu_Hlp;
        items[index]->trigger();
        QCOMPARE(f.windows.calls, calls);
        QCOMPARE(f.port->writtenHex(), writes);
    }

    void autoNotchAndNoiseReductionDecideFromTheirCheckMark()
    {
        ConsoleFixture f;
        f.form->setEdspMenuChecked(false, 9, true);
        f.form->setEdspMenuChecked(false, 10, true);
        f.form->mnu_EDSPR[9]->trigger();
        f.form->mnu_EDSPR[10]->trigger();
        QCOMPARE(f.windows.calls, (QStringList{"selectEdspOption 34", "selectEdspOption 32"}));
        // The mark is the EDSP dialog's to change, not the click's.
        QVERIFY(f.form->mnu_EDSPR[9]->isChecked());
        QVERIFY(f.form->mnu_EDSPR[10]->isChecked());
    }

    void txEdspModulatorOffMovesTheCheckMark()
    {
        ConsoleFixture f;
        f.form->setEdspMenuChecked(true, 0, true);
        f.form->mnu_EDSPT[1]->trigger();
        QVERIFY(f.form->mnu_EDSPT[1]->isChecked());
        QVERIFY(!f.form->mnu_EDSPT[0]->isChecked());
        QVERIFY(f.form->edspMenuChecked(true, 1));
    }

    void microphoneEqualOffChecksItself()
    {
        ConsoleFixture f;
        f.form->mnu_EDSPT[4]->trigger();
        QVERIFY(f.form->mnu_EDSPT[4]->isChecked());
    }

    void contentsDoesNothing()
    {
        ConsoleFixture f;
        f.form->mnu_Hlp[0]->trigger();
        QVERIFY(f.windows.calls.isEmpty());
        QVERIFY(f.port->writes.isEmpty());
        QVERIFY(f.prompts.messages.isEmpty());
    }

    void quitClosesTheWindow()
    {
        ConsoleFixture f;
        f.form->show();
        f.form->mnu_File[2]->trigger();
        QVERIFY(!f.form->isVisible());
        QVERIFY(f.windows.calls.contains(QStringLiteral("closeAll")));
        QVERIFY(f.store.values.contains(QStringLiteral("Startup/Width")));
    }

    void layoutItemSwitchesBetweenLargeAndSmall()
    {
        ConsoleFixture f;
        f.form->mnu_Bar[4]->trigger();
        QCOMPARE(f.form->width(), Twips::toPixels(7035));
        QCOMPARE(f.form->Frame[2]->width(), Twips::toPixels(6810));
        QVERIFY(!f.form->Key[24]->isEnabled());
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Large"));
        f.form->mnu_Bar[4]->trigger();
        QCOMPARE(f.form->width(), Twips::toPixels(10410));
        QCOMPARE(f.form->Frame[2]->width(), Twips::toPixels(10205));
        QVERIFY(f.form->Key[24]->isEnabled());
        QCOMPARE(f.form->mnu_Bar[4]->text(), QStringLiteral("Small"));
    }

    void layoutItemFromAnOddWidthGoesLarge()
    {
        ConsoleFixture f;
        f.form->resize(600, f.form->height());
        f.form->mnu_bar_Click(4);
        QCOMPARE(f.form->width(), Twips::toPixels(10410));
        f.form->mnu_bar_Click(3);  // only index 4 acts
        QCOMPARE(f.form->width(), Twips::toPixels(10410));
    }

    void authorizeTxTogglesBothKeysAndSendsNothing()
    {
        ConsoleFixture f;
        f.form->mnu_Stup[2]->trigger();
        QVERIFY(f.form->mnu_Stup[2]->isChecked());
        QVERIFY(f.form->Key[1]->isEnabled());
        QVERIFY(f.form->Key[32]->isEnabled());
        QVERIFY(!f.store.values.contains(QStringLiteral("Settings/TxInh")));
        f.form->mnu_Stup[2]->trigger();
        QVERIFY(!f.form->mnu_Stup[2]->isChecked());
        QVERIFY(!f.form->Key[1]->isEnabled());
        QVERIFY(!f.form->Key[32]->isEnabled());
        QVERIFY(f.port->writes.isEmpty());
    }

    void comPortShowsThePortDialogModeless()
    {
        ConsoleFixture f;
        f.form->mnu_Stup[0]->trigger();
        QVERIFY(f.form->configScrn());
        QVERIFY(f.form->configScrn()->isVisible());
        QVERIFY(!f.form->configScrn()->isModal());
        QCOMPARE(f.prompts.modalDialogs, 0);
        // Its load stopped the poll and closed the port.
        QVERIFY(!f.form->pollEnabled());
        QVERIFY(!f.port->isOpen());
        f.form->configScrn()->CancelButton_Click();
        QVERIFY(f.port->isOpen());
        QVERIFY(f.form->pollEnabled());
    }
};

QTEST_MAIN(TestForm1Menus)
#include "test_form1_menus.moc"
