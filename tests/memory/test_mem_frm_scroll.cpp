// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's channel scroll bar and the double click on the table.
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

namespace {
// Where a part of the scroll bar (its thumb, an arrow) is drawn, as the style lays it out.
QRect scrollBarPart(const QScrollBar* bar, QStyle::SubControl part)
{
    QStyleOptionSlider opt;
    opt.initFrom(bar);
    opt.orientation = bar->orientation();
    opt.state |= QStyle::State_Horizontal;
    opt.minimum = bar->minimum();
    opt.maximum = bar->maximum();
    opt.sliderPosition = bar->sliderPosition();
    opt.sliderValue = bar->value();
    opt.singleStep = bar->singleStep();
    opt.pageStep = bar->pageStep();
    return bar->style()->subControlRect(QStyle::CC_ScrollBar, &opt, part, bar);
}

// Drags the thumb with the mouse, one pixel at a time, until it shows `to`; gives the values passed.
QList<int> dragThumb(QScrollBar* bar, int to)
{
    QSignalSpy moved(bar, &QScrollBar::sliderMoved);
    QPoint at = scrollBarPart(bar, QStyle::SC_ScrollBarSlider).center();
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, at);
    const int step = to > bar->sliderPosition() ? 1 : -1;
    for (int i = 0; i < 2000 && bar->sliderPosition() != to; ++i) {
        at.rx() += step;
        QTest::mouseMove(bar, at);
    }
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, at);
    QList<int> passed;
    for (const QList<QVariant>& m : moved)
        if (passed.isEmpty() || passed.last() != m[0].toInt())
            passed << m[0].toInt();
    return passed;
}

}  // namespace

class TestMemFrmScroll : public QObject {
    Q_OBJECT
private slots:
    // --- Scroll bar and double click ---

    void scrollBar_readsTheChannel_withoutRecallOnVfo()
    {
        Scene s;
        auto w = s.open();
        s.clear();
        w->HScroll1->setValue(42);
        QCOMPARE(s.writes(), QStringList{"2A 00 00 04 10"});
        QCOMPARE(w->gridRow(), 42);
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" Chan 42"));
    }

    void scrollBar_recallsTheChannelWhenMemIsShown()
    {
        Scene s;
        auto w = s.open();
        s.host.visible[9] = true;
        s.clear();
        w->HScroll1->setValue(109);
        QCOMPARE(s.writes(), (QStringList{"6D 00 00 04 10", "00 00 00 6D 02"}));
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" QMB 1"));
    }

    void scrollBar_dragAcross50Channels_readsOnceWhereItEnds()
    {
        Scene s;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        s.clear();
        const QList<int> passed = dragThumb(w->HScroll1, 51);
        QVERIFY2(passed.size() >= 50, qPrintable(QStringLiteral("%1 values passed").arg(passed.size())));
        QCOMPARE(w->HScroll1->value(), 51);
        QCOMPARE(s.writes(), QStringList{"33 00 00 04 10"});
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" Chan 51"));
        QCOMPARE(w->gridRow(), 51);
    }

    void scrollBar_dragWithMemShown_readsAndRecallsOnce()
    {
        Scene s;
        s.host.visible[9] = true;
        s.radioChannel = 60;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        s.clear();
        const QList<int> passed = dragThumb(w->HScroll1, 10);
        QVERIFY2(passed.size() >= 50, qPrintable(QStringLiteral("%1 values passed").arg(passed.size())));
        QCOMPARE(s.writes(), (QStringList{"0A 00 00 04 10", "00 00 00 0A 02"}));
    }

    void scrollBar_inFollowMode_aDragRecallsOnlyTheLastChannel()
    {
        Scene s;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        emit w->MSFlexGrid1->doubleClicked(w->MSFlexGrid1->model()->index(0, 0));
        QCOMPARE(w->MemState, 2);
        s.clear();
        dragThumb(w->HScroll1, 70);
        QCOMPARE(s.writes(), (QStringList{"46 00 00 04 10", "00 00 00 46 02"}));
    }

    void scrollBar_whileDragging_theChannelNameFollowsTheThumbWithoutTheWire()
    {
        Scene s;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        s.clear();
        QPoint at = scrollBarPart(w->HScroll1, QStyle::SC_ScrollBarSlider).center();
        QTest::mousePress(w->HScroll1, Qt::LeftButton, Qt::NoModifier, at);
        while (w->HScroll1->sliderPosition() < 20) {
            at.rx() += 1;
            QTest::mouseMove(w->HScroll1, at);
        }
        QCOMPARE(w->Label1[0]->text(), QStringLiteral(" Chan %1").arg(w->HScroll1->sliderPosition()));
        QVERIFY(s.writes().isEmpty());
        QTest::mouseRelease(w->HScroll1, Qt::LeftButton, Qt::NoModifier, at);
        QCOMPARE(s.writes().size(), 1);
    }

    void scrollBar_eachArrowClickReadsOnce()
    {
        Scene s;
        s.host.visible[9] = true;
        s.radioChannel = 5;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        s.clear();
        const QPoint right = scrollBarPart(w->HScroll1, QStyle::SC_ScrollBarAddLine).center();
        const QPoint left = scrollBarPart(w->HScroll1, QStyle::SC_ScrollBarSubLine).center();
        QTest::mouseClick(w->HScroll1, Qt::LeftButton, Qt::NoModifier, right);
        QTest::mouseClick(w->HScroll1, Qt::LeftButton, Qt::NoModifier, right);
        QTest::mouseClick(w->HScroll1, Qt::LeftButton, Qt::NoModifier, left);
        QCOMPARE(s.writes(), (QStringList{"06 00 00 04 10", "00 00 00 06 02", "07 00 00 04 10", "00 00 00 07 02",
                                          "06 00 00 04 10", "00 00 00 06 02"}));
    }

    void scrollBar_aClickOnTheTrackReadsOnce()
    {
        Scene s;
        auto w = s.open();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        s.clear();
        const QPoint track = scrollBarPart(w->HScroll1, QStyle::SC_ScrollBarAddPage).center();
        QTest::mouseClick(w->HScroll1, Qt::LeftButton, Qt::NoModifier, track);
        QCOMPARE(s.writes(), QStringList{"0B 00 00 04 10"});  // one page of 10 from channel 1
    }

    void doubleClick_onTheSelectedRow_recallsAtOnceAndFollows()
    {
        Scene s;
        s.radioChannel = 3;
        auto w = s.open();
        s.clear();
        emit w->MSFlexGrid1->doubleClicked(w->MSFlexGrid1->model()->index(2, 1));
        QCOMPARE(w->MemState, 2);
        QCOMPARE(s.writes(), QStringList{"00 00 00 03 02"});
        s.clear();
        w->HScroll1->setValue(4);  // follow mode: every change is recalled
        QCOMPARE(s.writes(), (QStringList{"04 00 00 04 10", "00 00 00 04 02"}));
    }

    void doubleClick_onAnotherRow_movesTheScrollBarWhichReadsAndRecalls()
    {
        Scene s;
        auto w = s.open();
        s.clear();
        emit w->MSFlexGrid1->doubleClicked(w->MSFlexGrid1->model()->index(19, 0));
        QCOMPARE(w->MemState, 2);
        QCOMPARE(w->HScroll1->value(), 20);
        QCOMPARE(s.writes(), (QStringList{"14 00 00 04 10", "00 00 00 14 02"}));
    }
};

QTEST_MAIN(TestMemFrmScroll)
#include "test_mem_frm_scroll.moc"
