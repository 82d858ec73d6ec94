// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window: its controls, opening and closing, the single-channel read and "Get Mem".
#include "GoldenFile.h"
#include "MemFrmScene.h"
#include "PressButton.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace MemFrmTest;

class TestMemFrm : public QObject {
    Q_OBJECT
private slots:
    // --- The window as designed ---

    void captionsOfTheWindowAndItsControls()
    {
        Scene s;
        auto w = s.open();
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QCOMPARE(w->Bouton.size(), 6);
        const QStringList bouton{"&Close", "M > A", "Mask", "VFO/MEM", "Get Mem", "Upld Mem"};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(w->Bouton[i]->text(), bouton[i]);
        QCOMPARE(w->Btn_Diag[0]->text(), QStringLiteral("Load File"));
        QCOMPARE(w->Btn_Diag[1]->text(), QStringLiteral("Save File"));
        const QStringList headings{"Frequency", "Mode", "Clar", "Ant"};
        for (int i = 0; i < 4; ++i)
            QCOMPARE(w->Label5[i]->text(), headings[i]);
        QCOMPARE(w->Label1.size(), 5);
        QCOMPARE(w->Frame1->title(), QStringLiteral(" Memory "));
        QCOMPARE(w->mnu_bar->title(), QStringLiteral("&File"));
        const QStringList menu{"&Open Mem File", "-", "&Save", "Save &As ...", "-", "Close"};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(w->mnu_file[i]->isSeparator() ? QStringLiteral("-") : w->mnu_file[i]->text(), menu[i]);
        QVERIFY(w->mnu_file[1]->isSeparator());
        QVERIFY(w->mnu_file[4]->isSeparator());
        QCOMPARE(w->HScroll1->minimum(), 1);
        QCOMPARE(w->HScroll1->maximum(), 113);
    }

    void saveAndUploadStartDisabled_progressHidden()
    {
        Scene s;
        auto w = s.open();
        QVERIFY(!w->Bouton[5]->isEnabled());
        QVERIFY(!w->Btn_Diag[1]->isEnabled());
        QVERIFY(!w->mnu_file[2]->isEnabled());
        QVERIFY(!w->mnu_file[3]->isEnabled());
        QVERIFY(w->mnu_file[0]->isEnabled());
        QVERIFY(!w->Progress->isVisibleTo(w.get()));
    }

    void grid_hasSixColumnsWithTheirHeadersAndWidths()
    {
        Scene s;
        auto w = s.open();
        QAbstractItemModel* m = w->MSFlexGrid1->model();
        QCOMPARE(m->rowCount(), 113);
        QCOMPARE(m->columnCount(), 6);
        const QStringList headers{"Chan #", "Freq", "Mode", "Clar", "Ant", "Mde"};
        const int twips[] = {820, 850, 850, 580, 480};
        for (int c = 0; c < 6; ++c)
            QCOMPARE(m->headerData(c, Qt::Horizontal).toString(), headers[c]);
        for (int c = 0; c < 5; ++c) {
            QCOMPARE(w->MSFlexGrid1->columnWidth(c), Twips::toPixels(twips[c]));
            QVERIFY(m->headerData(c, Qt::Horizontal, Qt::FontRole).value<QFont>().bold());
            QCOMPARE(m->headerData(c, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(),
                     Qt::Alignment(Qt::AlignCenter));
        }
        QVERIFY(w->MSFlexGrid1->isColumnHidden(5));
        QCOMPARE(w->MSFlexGrid1->toolTip(), QStringLiteral("Double Click on a channel to activate on the Radio"));
        QCOMPARE(m->index(0, 2).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::Alignment(Qt::AlignCenter));
        QCOMPARE(m->index(0, 4).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::Alignment(Qt::AlignCenter));
    }

    // --- Opening ---

    void opening_queriesTheChannel_setsTheScrollBar_andReadsIt()
    {
        Scene s;
        s.radioChannel = 5;
        auto w = s.open();
        QCOMPARE(w->StartChannel, 5);
        QCOMPARE(w->HScroll1->value(), 5);
        QCOMPARE(s.events(), (QStringList{"write 00 00 00 01 10", "sleep 150", "read 1",      // the channel
                                          "write 05 00 00 04 10", "sleep 250", "read 16",     // the scroll bar's change
                                          "write 05 00 00 04 10", "sleep 250", "read 16"}));  // the last step
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" Chan 5"));
    }

    void opening_onChannel1_doesNotChangeTheScrollBar()
    {
        Scene s;
        s.radioChannel = 1;
        auto w = s.open();
        QCOMPARE(w->StartChannel, 1);
        QCOMPARE(s.writes(), (QStringList{"00 00 00 01 10", "01 00 00 04 10"}));
    }

    void opening_withMemIndicator_recallsTheChannelOnTheChange()
    {
        Scene s;
        s.radioChannel = 12;
        s.host.visible[9] = true;
        auto w = s.open();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 01 10", "0C 00 00 04 10", "00 00 00 0C 02", "0C 00 00 04 10"}));
        QCOMPARE(w->MemState, 1);
    }

    void opening_memStateFromTheIndicators_data()
    {
        QTest::addColumn<bool>("vfo");
        QTest::addColumn<bool>("mem");
        QTest::addColumn<bool>("mtun");
        QTest::addColumn<int>("state");
        QTest::newRow("VFO") << true << false << false << 0;
        QTest::newRow("M-TUN") << false << true << true << 0;
        QTest::newRow("MEM") << false << true << false << 1;
        QTest::newRow("none") << false << false << false << 1;
    }
    void opening_memStateFromTheIndicators()
    {
        QFETCH(bool, vfo);
        QFETCH(bool, mem);
        QFETCH(bool, mtun);
        QFETCH(int, state);
        Scene s;
        s.host.visible[8] = vfo;
        s.host.visible[9] = mem;
        s.host.visible[10] = mtun;
        auto w = s.open();
        QCOMPARE(w->MemState, state);
    }

    void opening_withThePortClosed_sendsNothingAndLeavesStartChannelZero()
    {
        Scene s;
        s.host.port->close();
        auto w = s.open();
        QCOMPARE(w->StartChannel, 0);
        QVERIFY(s.events().isEmpty());
        QCOMPARE(w->Label1[1]->text(), QStringLiteral("Frq"));
    }

    void opening_isCollapsedBelowTheMainWindow()
    {
        Scene s;
        s.host.geometry = QRect(1500, 400, 10410, 3990);
        auto w = s.open();
        QCOMPARE(w->height(), Twips::toPixels(2670));
        QVERIFY(!w->expanded());
        QCOMPARE(w->pos(), QPoint(Twips::toPixels(1500), Twips::toPixels(400 + 3990)));
    }

    void opening_restoresTheStoredPosition()
    {
        Scene s;
        s.host.store.setValue("Startup", "MemTop", "3000");
        s.host.store.setValue("Startup", "MemLeft", "1200");
        auto w = s.open();
        QCOMPARE(w->pos(), QPoint(Twips::toPixels(1200), Twips::toPixels(3000)));
    }

    void opening_fileNameDefaultsToTheProgramFolder_whichABuildMayWrite()
    {
        Scene s;
        auto w = s.open();
        QCOMPARE(w->currentFile(), QCoreApplication::applicationDirPath() + QStringLiteral("/ft1000.ymp"));
        Scene t;
        t.host.store.setValue("Startup", "MemPath", "/some/where/mine.ymp");
        QCOMPARE(t.open()->currentFile(), QStringLiteral("/some/where/mine.ymp"));
    }

    // --- Closing ---

    void closing_savesPositionAndPath()
    {
        Scene s;
        auto w = s.open();
        w->show();
        w->move(Twips::toPixels(900), Twips::toPixels(1800));
        w->setCurrentFile(QStringLiteral("/tmp/x.ymp"));
        w->close();
        // In twips, as the settings keep them (15 twips a pixel on the test screen's 96 dots an inch).
        QCOMPARE(s.host.store.value("Startup", "MemTop"), QStringLiteral("1800"));
        QCOMPARE(s.host.store.value("Startup", "MemLeft"), QStringLiteral("900"));
        QCOMPARE(s.host.store.value("Startup", "MemPath"), QStringLiteral("/tmp/x.ymp"));
    }

    void closing_offScreen_keepsTheOldPositionButSavesThePath()
    {
        Scene s;
        s.host.store.setValue("Startup", "MemTop", "111");
        s.host.store.setValue("Startup", "MemLeft", "222");
        auto w = s.open();
        w->show();
        const QSize screen = WindowPlacement::screenSizeTwips();
        w->move(Twips::toPixels(screen.width() + 3000), Twips::toPixels(screen.height() + 3000));
        w->close();
        QCOMPARE(s.host.store.value("Startup", "MemTop"), QStringLiteral("111"));
        QCOMPARE(s.host.store.value("Startup", "MemLeft"), QStringLiteral("222"));
        QCOMPARE(s.host.store.value("Startup", "MemPath"), w->currentFile());
    }

    // --- One channel ---

    void singleRead_showsTheChannelInTheLabels()
    {
        Scene s;
        s.channel = [](int) {
            Channel c;
            c.count = 0x0159A5A0;
            c.clar = static_cast<qint16>(0x8000);
            c.mode = 3;
            c.second = true;
            c.antenna = 0x10;
            return c;
        };
        s.radioChannel = 100;
        auto w = s.open();
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" P1"));
        QCOMPARE(w->Label1[1]->text(), QStringLiteral("14,137.22 "));  // 14 157.70 - 20.48
        QCOMPARE(w->Label1[2]->text(), QStringLiteral("AM Sync"));
        QCOMPARE(w->Label1[3]->text(), QStringLiteral("-20.48 "));
        QCOMPARE(w->Label1[4]->text(), QStringLiteral("B"));
        QCOMPARE(w->ChannelModeCode, 5);
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        for (int i = 1; i <= 4; ++i)
            QCOMPARE(labelColour(w->Label1[i]), unmasked);
    }

    void singleRead_maskedChannelColoursTheLabelsAndTheRow()
    {
        Scene s;
        s.radioChannel = 7;  // the sample masks every seventh channel
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));
        for (int i = 1; i <= 4; ++i)
            QCOMPARE(labelColour(w->Label1[i]), masked);
        QCOMPARE(w->gridRow(), 7);
        for (int c = 1; c <= 4; ++c)
            QCOMPARE(cellColour(*w, 7, c), masked);
        QVERIFY(!cellColour(*w, 7, 0).isValid());
    }

    void singleRead_emptyReplyShowsNoLink()
    {
        Scene s;
        s.silent = true;
        auto w = s.open();
        QCOMPARE(w->Label1[1]->text(), QStringLiteral("No Link  "));
    }

    void singleRead_shortReplyChangesNothing()
    {
        Scene s;
        auto w = s.open();
        const QString before = w->Label1[1]->text();
        s.host.port->queueReply(ChannelBytes::record(ChannelBytes::sample(1)).left(9));
        w->ReadMemory(0);
        QCOMPARE(w->Label1[1]->text(), before);
    }

    void singleRead_modeByteOutsideTheTableKeepsTheShownMode()
    {
        Scene s;
        s.radioChannel = 3;  // sample(3): CW R
        auto w = s.open();
        QCOMPARE(w->Label1[2]->text(), QStringLiteral("CW R"));
        Channel odd = ChannelBytes::sample(3);
        odd.mode = 7;
        s.host.port->queueReply(ChannelBytes::record(odd));
        w->ReadMemory(0);
        QCOMPARE(w->Label1[2]->text(), QStringLiteral("CW R"));
        QCOMPARE(w->ChannelModeCode, 3);
    }

    // --- Get Mem ---

    void getMem_readsAllChannelsIntoTheTableAndExpands()
    {
        Scene s;
        s.radioChannel = 14;  // a masked channel
        auto w = s.open();
        s.clear();
        w->Bouton[4]->click();
        QCOMPARE(s.events(), (QStringList{"write 00 00 00 00 10", "sleep 5000", "read 1863", "write 0E 00 00 04 10",
                                          "sleep 250", "read 16"}));
        QVERIFY(w->expanded());
        QCOMPARE(w->height(), Twips::toPixels(6720));
        QVERIFY(w->Bouton[5]->isEnabled());
        QVERIFY(w->Btn_Diag[1]->isEnabled());
        QVERIFY(w->mnu_file[2]->isEnabled());
        QVERIFY(w->mnu_file[3]->isEnabled());
        QVERIFY(!w->Progress->isVisibleTo(w.get()));
        QVERIFY(w->Bouton[4]->isEnabled());
        QCOMPARE(cellText(*w, 1, 0), QStringLiteral(" Chan 1"));
        QCOMPARE(cellText(*w, 100, 0), QStringLiteral(" P 1"));
        QCOMPARE(cellText(*w, 113, 0), QStringLiteral(" QMB 5"));
        // sample(12): 1 800.00 + 12 x 123.45 kHz, clarifier 0, LSB.
        QCOMPARE(cellText(*w, 12, 1), QStringLiteral("3,281.40 "));
        QCOMPARE(cellText(*w, 12, 2), QStringLiteral("LSB"));
        QCOMPARE(cellText(*w, 12, 5), QStringLiteral("0"));
        // sample(11): 3 157.95 kHz with -0.37 kHz of clarifier, the DataUSR mode byte.
        QCOMPARE(cellText(*w, 11, 1), QStringLiteral("3,157.58 "));
        QCOMPARE(cellText(*w, 11, 2), QStringLiteral("DataUSR"));
        QCOMPARE(cellText(*w, 11, 5), QStringLiteral("1"));
        QCOMPARE(cellText(*w, 11, 3), QStringLiteral("-0.37 "));
        QCOMPARE(cellText(*w, 13, 3), QStringLiteral("0.37 "));
        QCOMPARE(cellText(*w, 14, 3), QStringLiteral("0.74 "));
        QCOMPARE(cellText(*w, 15, 3), QStringLiteral("-0.74 "));
        QCOMPARE(cellText(*w, 14, 4), QStringLiteral("Rx"));
        for (int c = 1; c <= 4; ++c) {
            QCOMPARE(cellColour(*w, 14, c), masked);
            QCOMPARE(cellColour(*w, 15, c), unmasked);
        }
        // The single read that follows colours the selected channel's row, not the last one read.
        QCOMPARE(w->gridRow(), 14);
        QCOMPARE(cellColour(*w, 113, 1), unmasked);
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" Chan 14"));
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));
    }

    void table_showsNumbersWithoutTheirTrailingBlank_recordsKeepIt()
    {
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        QCOMPARE(cellText(*w, 12, 1), QStringLiteral("3,281.40 "));
        QCOMPARE(w->MSFlexGrid1->model()->index(11, 1).data().toString(), QStringLiteral("3,281.40"));
        QCOMPARE(w->MSFlexGrid1->model()->index(11, 0).data().toString(), QStringLiteral(" Chan 12"));
    }

    void getMem_emptyReplyLeavesTheTableUntouchedAndShowsNoLink()
    {
        Scene s;
        s.radioChannel = 12;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> before = w->table().rows();
        // A radio that answers the single read but not the full read-out: what the read-out itself
        // shows is seen when the single read that follows it goes out.
        s.fullReply.clear();
        QString shownByTheReadout;
        const auto answer = s.host.port->responder;
        s.host.port->responder = [&](const QByteArray& c) {
            if (c == QByteArray::fromHex("0C00000410"))
                shownByTheReadout = w->Label1[1]->text();
            return answer(c);
        };
        s.clear();
        w->Bouton[4]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 00 10", "0C 00 00 04 10"}));
        QCOMPARE(shownByTheReadout, QStringLiteral("No Link  "));
        QCOMPARE(w->table().rows(), before);
        // The single read answered: sample(12), 3 281.40 kHz.
        QCOMPARE(w->Label1[1]->text(), QStringLiteral("3,281.40 "));
    }

    void getMem_replyEndingInsideARecordFillsTheCompleteOnes()
    {
        Scene s;
        s.fullReply = ChannelBytes::fullReadout().left(55 + 16 * 40 + 7);
        auto w = s.open();
        w->Bouton[4]->click();
        QCOMPARE(cellText(*w, 40, 0), QStringLiteral(" Chan 40"));
        QCOMPARE(cellText(*w, 41, 0), QString());
    }

    void screenshot_collapsedAndWithTheFullTable()
    {
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (out.isEmpty())
            QSKIP("FT_TEST_OUTPUT is not set");
        QDir().mkpath(out);
        Scene s;
        s.radioChannel = 14;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        QVERIFY(w->grab().save(out + QStringLiteral("/memory_window_collapsed.png")));
        w->Bouton[4]->click();
        QCoreApplication::processEvents();
        QVERIFY(w->grab().save(out + QStringLiteral("/memory_window.png")));
    }
};

QTEST_MAIN(TestMemFrm)
#include "test_mem_frm.moc"
