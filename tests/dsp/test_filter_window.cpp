// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeConsoleHost.h"
#include "Frm_Filt.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace {

struct Rig {
    FakeConsoleHost host;
    QPointer<Frm_Filt> win;
    Rig() = default;
    ~Rig() { delete win.data(); }
    Frm_Filt* load()
    {
        win = new Frm_Filt(host);
        return win;
    }
    QStringList written() const { return host.port->writtenHex(); }
    QString stored(const QString& key) const { return host.store.values.value(key); }
};

QColor face()
{
    return QApplication::palette().color(QPalette::Button);
}
QColor lit()
{
    return fromBgr(0xC0FFFF);
}

QString outputDir()
{
    const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT", QDir::tempPath());
    QDir().mkpath(dir);
    return dir;
}

}  // namespace

class TestFilterWindow : public QObject {
    Q_OBJECT
private slots:
    void window_captionFramesAndButtons()
    {
        Rig r;
        Frm_Filt* w = r.load();
        QCOMPARE(w->windowTitle(), QStringLiteral("Filter Selection"));
        QStringList frames;
        for (QGroupBox* g : w->findChildren<QGroupBox*>())
            frames << g->title();
        QCOMPARE(frames, (QStringList{" VFO-A ", " VFO-B "}));
        int headings = 0;
        for (QLabel* l : w->findChildren<QLabel*>())
            headings += l->text() == QStringLiteral("8.2 Mhz    455 Khz");
        QCOMPARE(headings, 2);
        const QStringList captions{"2.4 K", "2.0 K", "500 Hz", "250 Hz", "Thru"};
        const QStringList second{"2.4 K", "2.0 K", "500 Hz", "250 Hz", "6.0 K"};
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(w->filtA[i]->text(), captions[i]);
            QCOMPARE(w->filtB[i]->text(), captions[i]);
            QCOMPARE(w->filtA[i + 10]->text(), second[i]);
            QCOMPARE(w->filtB[i + 10]->text(), second[i]);
        }
        QCOMPARE(w->Command1->text(), QStringLiteral("Close"));
        QCOMPARE(w->filt21->text(), QStringLiteral("Escape"));
        QCOMPARE(w->menuBar()->actions().first()->text(), QStringLiteral("Optional Filters"));
    }

    void menu_itemsAndSeparators()
    {
        Rig r;
        Frm_Filt* w = r.load();
        QCOMPARE(w->mnu_filt.size(), 8);
        QVERIFY(w->mnu_filt[2]->isSeparator());
        QVERIFY(w->mnu_filt[6]->isSeparator());
        QCOMPARE(w->mnu_filt[4]->text(), QStringLiteral("3rd IF - 455 kHz - 500 kHz"));
        QCOMPARE(w->mnu_filt[7]->text(), QStringLiteral("Sub Filter 455 kHz - 500 Hz"));
        for (int i : {0, 1, 3, 4, 5, 7})
            QVERIFY(w->mnu_filt[i]->isCheckable());
    }

    void noSettings_sixOptionalButtonsDisabledAndMenuUnchecked()
    {
        Rig r;
        Frm_Filt* w = r.load();
        for (int i : {0, 1, 3, 4, 5, 7})
            QVERIFY(!w->mnu_filt[i]->isChecked());
        for (int i : {1, 3, 11, 12, 13})
            QVERIFY(!w->filtA[i]->isEnabled());
        QVERIFY(!w->filtB[12]->isEnabled());
        // Every other button is always enabled.
        for (int i : {0, 2, 4, 10, 14})
            QVERIFY(w->filtA[i]->isEnabled());
        for (int i : {0, 1, 2, 3, 4, 10, 11, 13, 14})
            QVERIFY(w->filtB[i]->isEnabled());
    }

    void clickingItem4Twice_leavesItUncheckedWrites0AndDisablesFiltA12()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->mnu_filt[4]->trigger();
        QVERIFY(w->mnu_filt[4]->isChecked());
        QCOMPARE(r.stored("Settings/Filter4"), QStringLiteral("1"));
        QVERIFY(w->filtA[12]->isEnabled());
        w->mnu_filt[4]->trigger();
        QVERIFY(!w->mnu_filt[4]->isChecked());
        QCOMPARE(r.stored("Settings/Filter4"), QStringLiteral("0"));
        QVERIFY(!w->filtA[12]->isEnabled());
    }

    void optionalFilters_persistAndGateOnTheNextLoad()
    {
        Rig r;
        {
            Frm_Filt* w = r.load();
            w->mnu_filt[0]->trigger();
            w->mnu_filt[7]->trigger();
            delete w;
        }
        QCOMPARE(r.stored("Settings/Filter0"), QStringLiteral("1"));
        QCOMPARE(r.stored("Settings/Filter7"), QStringLiteral("1"));
        Frm_Filt* again = r.load();
        QVERIFY(again->mnu_filt[0]->isChecked());
        QVERIFY(again->mnu_filt[7]->isChecked());
        QVERIFY(!again->mnu_filt[1]->isChecked());
        QVERIFY(again->filtA[1]->isEnabled());
        QVERIFY(again->filtB[12]->isEnabled());
        QVERIFY(!again->filtA[3]->isEnabled());
    }

    void storedSettings_readForTheSixItemsOnly()
    {
        Rig r;
        for (int i = 0; i <= 7; ++i)
            r.host.store.setValue("Settings", QStringLiteral("Filter%1").arg(i), "1");
        r.host.store.setValue("Settings", "Filter5", "0");
        Frm_Filt* w = r.load();
        for (int i : {0, 1, 3, 4, 7})
            QVERIFY(w->mnu_filt[i]->isChecked());
        QVERIFY(!w->mnu_filt[5]->isChecked());
        QVERIFY(!w->mnu_filt[2]->isChecked());  // separators carry no mark
        QVERIFY(!w->mnu_filt[6]->isChecked());
        QVERIFY(!w->filtA[13]->isEnabled());
        QVERIFY(w->filtA[11]->isEnabled());
    }

    void everyButton_data()
    {
        QTest::addColumn<bool>("sub");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("bytes");
        for (int r = 0; r < 5; ++r) {
            QTest::addRow("filtA(%d)", r) << false << r << QStringLiteral("01 00 00 %1 8C").arg(r, 2, 10, QChar(u'0'));
            QTest::addRow("filtA(%d)", r + 10)
                << false << r + 10 << QStringLiteral("02 00 00 %1 8C").arg(r, 2, 10, QChar(u'0'));
            QTest::addRow("filtB(%d)", r) << true << r << QStringLiteral("00 00 00 8%1 8C").arg(r);
            QTest::addRow("filtB(%d)", r + 10) << true << r + 10 << QStringLiteral("00 00 00 8%1 8C").arg(r);
        }
    }
    void everyButton()
    {
        QFETCH(bool, sub);
        QFETCH(int, index);
        QFETCH(QString, bytes);
        Rig r;
        for (int i : {0, 1, 3, 4, 5, 7})
            r.host.store.setValue("Settings", QStringLiteral("Filter%1").arg(i), "1");
        Frm_Filt* w = r.load();
        w->show();
        QTest::mouseClick((sub ? w->filtB : w->filtA)[index], Qt::LeftButton);
        QCOMPARE(r.written(), QStringList{bytes});
        for (const QString& e : r.host.clock->events)
            QVERIFY2(e.startsWith(QStringLiteral("write ")), qPrintable(e));
    }

    void subThruAndSub6k_bothSend84()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->show();
        QTest::mouseClick(w->filtB[4], Qt::LeftButton);
        QTest::mouseClick(w->filtB[14], Qt::LeftButton);
        QCOMPARE(r.written(), (QStringList{"00 00 00 84 8C", "00 00 00 84 8C"}));
    }

    void main6k_sends02_mainThru_sends01()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->show();
        QTest::mouseClick(w->filtA[14], Qt::LeftButton);
        QTest::mouseClick(w->filtA[4], Qt::LeftButton);
        QCOMPARE(r.written(), (QStringList{"02 00 00 04 8C", "01 00 00 04 8C"}));
    }

    void disabledOptionalButton_sendsNothing()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->show();
        QTest::mouseClick(w->filtA[12], Qt::LeftButton);
        QVERIFY(r.written().isEmpty());
    }

    void escapeButton_doesNothing()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->show();
        QTest::mouseClick(w->filt21, Qt::LeftButton);
        QVERIFY(r.written().isEmpty());
        QVERIFY(w->isVisible());
    }

    void lamps_data()
    {
        QTest::addColumn<int>("byte9");
        QTest::addColumn<int>("byte25");
        QTest::addColumn<QList<int>>("litA");
        QTest::addColumn<QList<int>>("litB");
        QTest::newRow("zero and 0x11") << 0x00 << 0x11 << QList<int>{4, 14} << QList<int>{0, 10};
        QTest::newRow("overlap 0x05 / 0x50") << 0x05 << 0x50 << QList<int>{4, 10, 13} << QList<int>{0, 3, 14};
        QTest::newRow("0x33 / 0x26") << 0x33 << 0x26 << QList<int>{2, 12} << QList<int>{1, 11, 13};
        QTest::newRow("bits 3 and 7 only") << 0x88 << 0xFF << QList<int>{4, 14} << QList<int>{2, 3, 12, 13};
    }
    void lamps()
    {
        QFETCH(int, byte9);
        QFETCH(int, byte25);
        QFETCH(QList<int>, litA);
        QFETCH(QList<int>, litB);
        Rig r;
        Frm_Filt* w = r.load();
        w->showFilterBytes(0xFF, 0xFF);  // something lit before, so a lamp going dark is seen
        w->showFilterBytes(byte9, byte25);
        for (int i : {0, 1, 2, 3, 4, 10, 11, 12, 13, 14}) {
            QCOMPARE(w->filtA[i]->palette().color(QPalette::Button), litA.contains(i) ? lit() : face());
            QCOMPARE(w->filtB[i]->palette().color(QPalette::Button), litB.contains(i) ? lit() : face());
        }
    }

    void lamps_workWhileTheWindowIsHidden()
    {
        Rig r;
        Frm_Filt* w = r.load();
        QVERIFY(!w->isVisible());
        w->showFilterBytes(0x20, 0x03);
        QCOMPARE(w->filtA[1]->palette().color(QPalette::Button), lit());
        QCOMPARE(w->filtB[12]->palette().color(QPalette::Button), lit());
    }

    void position_defaultsBelowTheMainWindowRightOfTheNavigator()
    {
        Rig r;
        r.host.geometry = QRect(1500, 400, 10410, 3990);
        r.host.navigatorWidth = 2400;
        Frm_Filt* w = r.load();
        QCOMPARE(w->geometry().topLeft(), QPoint(Twips::toPixels(1500 + 2400), Twips::toPixels(400 + 3990)));
    }

    void position_restoredFromSettings()
    {
        Rig r;
        r.host.store.setValue("Startup", "FiltTop", "1500");
        r.host.store.setValue("Startup", "FiltLeft", "3000");
        Frm_Filt* w = r.load();
        QCOMPARE(w->geometry().topLeft(), QPoint(200, 100));
    }

    void closeButton_savesPositionAndUnloads()
    {
        Rig r;
        Frm_Filt* w = r.load();
        w->show();
        w->move(40, 60);
        QTest::mouseClick(w->Command1, Qt::LeftButton);
        QCOMPARE(r.stored("Startup/FiltTop"), QString::number(WindowPlacement::topTwips(w)));
        QCOMPARE(r.stored("Startup/FiltLeft"), QString::number(WindowPlacement::leftTwips(w)));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(r.win.isNull());
    }

    void closingBelowTheScreen_keepsThePreviousFiltTop()
    {
        Rig r;
        r.host.store.setValue("Startup", "FiltTop", "1234");
        Frm_Filt* w = r.load();
        w->show();
        const int belowPx = Twips::toPixels(WindowPlacement::screenSizeTwips().height()) + 50;
        w->move(30, belowPx);
        QVERIFY(!WindowPlacement::onScreen(WindowPlacement::leftTwips(w), WindowPlacement::topTwips(w)));
        w->close();
        QCOMPARE(r.stored("Startup/FiltTop"), QStringLiteral("1234"));
        QCOMPARE(r.stored("Startup/FiltLeft"), QString::number(WindowPlacement::leftTwips(w)));
    }

    void screenshot()
    {
        Rig r;
        for (int i : {0, 3, 4, 7})
            r.host.store.setValue("Settings", QStringLiteral("Filter%1").arg(i), "1");
        Frm_Filt* w = r.load();
        w->showFilterBytes(0x12, 0x03);
        w->show();
        QVERIFY(w->grab().save(QDir(outputDir()).filePath(QStringLiteral("filter_window.png"))));
    }
};

QTEST_MAIN(TestFilterWindow)
#include "test_filter_window.moc"
