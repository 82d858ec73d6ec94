#include "ChannelBytes.h"
#include "FakeConsoleHost.h"
#include "FakeMemoryDialogs.h"
#include "GoldenFile.h"
#include "Mem_Frm.h"
#include "MemoryTableModel.h"
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

namespace {
using ChannelBytes::Channel;

// The fake radio's answers to the memory window's requests.
struct Scene {
    FakeConsoleHost host;
    FakeMemoryDialogs dialogs;
    int radioChannel = 1;  // the channel the radio is on, counted from 1
    QByteArray fullReply = ChannelBytes::fullReadout();
    std::function<Channel(int)> channel = ChannelBytes::sample;
    bool silent = false;

    Scene()
    {
        host.port->responder = [this](const QByteArray& c) -> QByteArray {
            if (silent || c.size() != 5 || quint8(c[4]) != 0x10)
                return {};
            switch (quint8(c[3])) {
                case 0:
                    return fullReply;
                case 1:
                    return QByteArray(1, char(radioChannel - 1));
                case 4:
                    return ChannelBytes::record(channel(quint8(c[0])));
                default:
                    return {};
            }
        };
    }
    std::unique_ptr<Mem_Frm> open() { return std::make_unique<Mem_Frm>(host, &dialogs); }
    QStringList& events() { return host.clock->events; }
    QStringList writes() const { return host.port->writtenHex(); }
    void clear()
    {
        host.clock->events.clear();
        host.port->writes.clear();
    }
};

QColor labelColour(const QLabel* l)
{
    return l->palette().color(QPalette::WindowText);
}

QColor cellColour(const Mem_Frm& w, int channel, int column)
{
    return w.MSFlexGrid1->model()->index(channel - 1, column).data(Qt::ForegroundRole).value<QColor>();
}

// The row's text as the table keeps it (and the file gets it).
QString cellText(Mem_Frm& w, int channel, int column)
{
    return w.table().cell(channel, column);
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

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

// While channel `channel` is written into the radio, closes the window: with the title bar's close box
// ("box"), the "&Close" key ("key") or the menu's "Close" ("menu").
void closeWhileWriting(Scene& s, Mem_Frm& w, int channel, const QString& how)
{
    const QByteArray write = QByteArray::fromHex("000000") + char(channel) + char(0x03);
    auto done = std::make_shared<bool>(false);
    const auto answer = s.host.port->responder;
    s.host.port->responder = [&w, write, how, done, answer](const QByteArray& c) {
        if (!*done && c == write) {
            *done = true;
            if (how == QStringLiteral("box"))
                w.close();
            else if (how == QStringLiteral("key"))
                w.Bouton[0]->click();
            else
                w.mnu_file[5]->trigger();
        }
        return answer(c);
    };
}

const QColor masked = fromBgr(0x0040C0);
const QColor unmasked = fromBgr(0x80C0FF);
}  // namespace

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

    void opening_fileNameDefaultsToTheProgramFolder()
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

    // --- Keys ---

    void close_rightAfterOpeningOnVfo_recallsStartChannelThenBackToVfo()
    {
        Scene s;
        s.radioChannel = 17;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        s.clear();
        w->Bouton[0]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 11 02", "00 00 00 00 05"}));
        QVERIFY(!w->isVisible());
        QCOMPARE(s.host.store.value("Startup", "MemPath"), w->currentFile());
    }

    void close_onMemory_staysOnTheChannelLastBrowsed()
    {
        Scene s;
        s.radioChannel = 17;
        auto w = s.open();
        QCOMPARE(w->MemState, 1);
        w->HScroll1->setValue(30);
        s.clear();
        w->Bouton[0]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 1E 02"});
    }

    void close_onMemory_onTheStartChannel_sendsNothing()
    {
        Scene s;
        s.radioChannel = 17;
        auto w = s.open();
        s.clear();
        w->Bouton[0]->click();
        QVERIFY(s.writes().isEmpty());
    }

    void close_inFollowMode_sendsNothing()
    {
        Scene s;
        auto w = s.open();
        emit w->MSFlexGrid1->doubleClicked(w->MSFlexGrid1->model()->index(30, 0));
        s.clear();
        w->Bouton[0]->click();
        QVERIFY(s.writes().isEmpty());
    }

    void menuClose_isTheCloseKey()
    {
        Scene s;
        s.radioChannel = 2;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        s.clear();
        w->mnu_file[5]->trigger();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 02 02", "00 00 00 00 05"}));
        QVERIFY(!w->isVisible());
    }

    void closeMnemonic_altC()
    {
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        QApplication::setActiveWindow(w.get());
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
        s.clear();
        QTest::keyClick(w.get(), Qt::Key_C, Qt::AltModifier);
        // A mnemonic clicks the key after a short animation.
        QTRY_COMPARE(s.writes(), (QStringList{"00 00 00 01 02", "00 00 00 00 05"}));
    }

    void memoryToA_copiesTheChannelAndGoesToVfoState()
    {
        Scene s;
        s.radioChannel = 8;
        auto w = s.open();
        QCOMPARE(w->MemState, 1);
        s.clear();
        w->Bouton[1]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 08 06"});
        QCOMPARE(w->MemState, 0);
    }

    void mask_onAnUnmaskedChannel_masksAndRereads()
    {
        Scene s;
        s.radioChannel = 8;
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        s.clear();
        w->Bouton[2]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 01 08 03", "08 00 00 04 10"}));
        QCOMPARE(w->gridRow(), 8);
    }

    void mask_onAMaskedChannel_readsUnmaskAndSendsP3Is2()
    {
        Scene s;
        s.radioChannel = 14;  // masked in the sample
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));
        s.clear();
        s.channel = [](int n) {
            Channel c = ChannelBytes::sample(n);
            c.masked = false;
            return c;
        };
        w->Bouton[2]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 02 0E 03", "0E 00 00 04 10"}));
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        QCOMPARE(labelColour(w->Label1[1]), unmasked);
        QCOMPARE(cellColour(*w, 14, 1), unmasked);
    }

    void vfoMem_fromVfo_recallsTheChannel()
    {
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->HScroll1->setValue(21);
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 15 02"});
        QCOMPARE(w->MemState, 1);
        QCOMPARE(w->StartChannel, 21);
    }

    void vfoMem_fromMemoryTune_recallsTheChannel()
    {
        Scene s;
        s.host.visible[10] = true;
        auto w = s.open();
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 01 02"});
        QCOMPARE(w->MemState, 1);
    }

    void vfoMem_fromMemory_goesBackToVfo()
    {
        Scene s;
        s.host.visible[9] = true;
        auto w = s.open();
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 00 05"});
        QCOMPARE(w->MemState, 0);
    }

    // --- Upload ---

    void upload_asksFirst_cancelChangesNothing()
    {
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        s.clear();
        s.dialogs.confirmAnswer = false;
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.confirmations.size(), 1);
        QCOMPARE(s.dialogs.confirmations[0].title, QStringLiteral("Upload ?"));
        QCOMPARE(s.dialogs.confirmations[0].text,
                 QStringLiteral("You are about to upload this list to the tranceiver memory... "));
        QVERIFY(s.writes().isEmpty());
        QVERIFY(s.host.pollChanges.isEmpty());
    }

    void upload_writesTheFileNotTheTable_withThePollOffMeanwhile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->Bouton[4]->click();  // the table now holds the radio's channels, not the file's
        s.clear();
        s.host.clock->onSleep = [&](int) { QVERIFY(!s.host.pollOn); };
        w->Bouton[5]->click();
        s.host.clock->onSleep = nullptr;
        const QStringList writes = s.writes();
        QCOMPARE(writes.mid(0, 4),
                 (QStringList{"00 00 00 01 02", "00 00 00 00 09", "00 00 00 80 09", "00 00 00 FF 09"}));
        // Golden channel 1: USB, 14 157.70 kHz; channel 2: CW R, 7 025.00 kHz, masked.
        QCOMPARE(writes.mid(4, 3), (QStringList{"00 00 00 01 0C", "70 57 41 01 0A", "00 00 00 01 03"}));
        QCOMPARE(writes.mid(7, 4),
                 (QStringList{"00 00 00 03 0C", "00 25 70 00 0A", "00 00 00 02 03", "00 00 01 02 03"}));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
        QVERIFY(!w->Progress->isVisibleTo(w.get()));
        QCOMPARE(w->Progress->value(), 100);
        QVERIFY(!w->uploading());
        QVERIFY(w->Bouton[5]->isEnabled());
    }

    void upload_ofAnUnreadableFileTellsTheOperator()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(dir.filePath(QStringLiteral("folder.ymp")));
        w->Bouton[4]->click();
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(QStringLiteral("folder.ymp")));
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    // --- Closing during an upload ---

    void closingDuringUpload_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("close box") << QStringLiteral("box");
        QTest::newRow("Close key") << QStringLiteral("key");
        QTest::newRow("Close menu") << QStringLiteral("menu");
    }

    void closingDuringUpload_no_letsTheUploadGoOn_data() { closingDuringUpload_data(); }
    void closingDuringUpload_no_letsTheUploadGoOn()
    {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        w->Bouton[4]->click();
        s.clear();
        s.dialogs.yesAnswer = false;
        closeWhileWriting(s, *w, 20, how);
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.questions.size(), 1);
        QCOMPARE(s.dialogs.questions[0].title, QStringLiteral("FT-1000 Memory"));
        QCOMPARE(s.dialogs.questions[0].text,
                 QStringLiteral("Stop the upload? The radio's memory will be partly written."));
        // Every channel is written, then back to the VFO; the close sent nothing of its own.
        const QStringList writes = s.writes();
        QVERIFY(writes.contains(QStringLiteral("00 00 00 6C 03")));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
        QCOMPARE(writes.count(QStringLiteral("00 00 00 00 05")), 1);
        QVERIFY(w->isVisible());
        QVERIFY(!w->uploading());
        QVERIFY(s.dialogs.notes.isEmpty());
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    void closingDuringUpload_yes_stopsAfterTheChannelAndNamesIt_data() { closingDuringUpload_data(); }
    void closingDuringUpload_yes_stopsAfterTheChannelAndNamesIt()
    {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.radioChannel = 17;
        s.host.visible[8] = true;  // the radio is on a VFO: the Close key puts channel 17 back
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        w->Bouton[4]->click();
        s.clear();
        s.dialogs.yesAnswer = true;
        closeWhileWriting(s, *w, 10, how);
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.questions.size(), 1);
        QStringList writes = s.writes();
        // Channel 10 is written whole (golden channel 10: LSB, 7 025.00 kHz), channel 11 not at all.
        const qsizetype at = writes.indexOf(QStringLiteral("00 00 00 0A 03"));
        QVERIFY(at > 0);
        QCOMPARE(writes.mid(at - 2, 3), (QStringList{"00 00 00 00 0C", "00 25 70 00 0A", "00 00 00 0A 03"}));
        QVERIFY(!writes.contains(QStringLiteral("00 00 00 0B 03")));
        QCOMPARE(writes[at + 1], QStringLiteral("00 00 00 00 05"));  // the upload's way back to the VFO
        // The Close key (and its menu item) still does its own work once the upload has stopped.
        const QStringList closing = writes.mid(at + 2);
        if (how == QStringLiteral("box"))
            QVERIFY(closing.isEmpty());
        else
            QCOMPARE(closing, (QStringList{"00 00 00 11 02", "00 00 00 00 05"}));
        QCOMPARE(s.dialogs.notes.size(), 1);
        QCOMPARE(s.dialogs.notes[0].title, QStringLiteral("Upload stopped"));
        QCOMPARE(s.dialogs.notes[0].text,
                 QStringLiteral("The upload stopped after channel 10 (Chan 10): channels 1 to 10 were written, the "
                                "others keep what the radio held."));
        QVERIFY(!w->isVisible());
        QVERIFY(!w->uploading());
        QCOMPARE(s.host.store.value("Startup", "MemPath"), path);
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    void closingDuringUpload_yesBeforeTheFirstChannel_saysNothingWasWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        w->Bouton[4]->click();
        s.dialogs.yesAnswer = true;
        // The close comes while the clarifier is cleared, before channel 1.
        bool asked = false;
        s.host.port->responder = [&, w = w.get()](const QByteArray& c) {
            if (!asked && c == QByteArray::fromHex("00000000 09")) {
                asked = true;
                w->close();
            }
            return QByteArray();
        };
        w->Bouton[5]->click();
        QVERIFY(asked);
        QCOMPARE(s.dialogs.notes.size(), 1);
        // The upload looks for a stop between channels, so channel 1 is written whole.
        QVERIFY(s.dialogs.notes[0].text.startsWith(QStringLiteral("The upload stopped after channel 1 ")));
        QVERIFY(!w->isVisible());
    }

    void closingWithoutUpload_asksNothing()
    {
        Scene s;
        auto w = s.open();
        w->show();
        w->close();
        QVERIFY(s.dialogs.questions.isEmpty());
        QVERIFY(!w->isVisible());
    }

    // --- Files ---

    void loadFile_leftButton_loadsTheCurrentFileIntoTheTable()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        const QString label = w->Label1[1]->text();
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::LeftButton);
        QCoreApplication::processEvents();
        QTest::mouseRelease(w->Btn_Diag[0], Qt::LeftButton);
        QVERIFY(s.dialogs.requests.isEmpty());
        QVERIFY(w->expanded());
        QVERIFY(w->Bouton[5]->isEnabled());
        QVERIFY(w->Btn_Diag[1]->isEnabled());
        QVERIFY(w->mnu_file[2]->isEnabled());
        QVERIFY(w->mnu_file[3]->isEnabled());
        for (int n = 1; n <= 113; ++n) {
            const Golden::Row e = Golden::expected(n);
            for (int c = 0; c < 6; ++c)
                QCOMPARE(cellText(*w, n, c), e.cells[c]);
            for (int c = 1; c <= 4; ++c)
                QCOMPARE(cellColour(*w, n, c), e.masked ? masked : unmasked);
        }
        QCOMPARE(w->Label1[1]->text(), label);  // loading leaves the labels alone
    }

    void loadFile_otherButton_opensTheDialog()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("chosen.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = path;
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::RightButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        const FileDialogRequest r = s.dialogs.requests[0];
        QCOMPARE(r.kind, FileDialogRequest::Kind::Open);
        QCOMPARE(r.title, QStringLiteral("Retrieve Memory Data from File"));
        QCOMPARE(r.filters, (QStringList{"All Files (*.*)", "Yaesu Mem Files (*.ymp)"}));
        QCOMPARE(r.selectedFilter, QStringLiteral("Yaesu Mem Files (*.ymp)"));
        QCOMPARE(r.defaultSuffix, QStringLiteral("ymp"));
        QCOMPARE(w->currentFile(), path);
        QCOMPARE(cellText(*w, 2, 1), QStringLiteral("7,025.00 "));
        QVERIFY(w->expanded());
    }

    void loadFile_dialogCancelled_stillExpandsButChangesNoFile()
    {
        Scene s;
        auto w = s.open();
        const QString file = w->currentFile();
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::MiddleButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(w->currentFile(), file);
        QVERIFY(s.dialogs.errors.isEmpty());
        QVERIFY(w->expanded());
        QVERIFY(w->Bouton[5]->isEnabled());
        QCOMPARE(cellText(*w, 1, 0), QString());
    }

    void loadFile_spaceBarActsAsTheLeftButton()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        w->Btn_Diag[0]->setFocus();
        QTest::keyClick(w->Btn_Diag[0], Qt::Key_Space);
        QCOMPARE(cellText(*w, 1, 1), QStringLiteral("14,157.70 "));
        QVERIFY(s.dialogs.requests.isEmpty());
    }

    void loadFile_missingFileLoadsBlankRows()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->setCurrentFile(dir.filePath(QStringLiteral("none.ymp")));
        QVERIFY(w->LoadMemFile());
        QCOMPARE(cellText(*w, 1, 1), QStringLiteral("0.00 "));
        QCOMPARE(cellText(*w, 1, 0), QStringLiteral(" "));
        QVERIFY(s.dialogs.errors.isEmpty());
    }

    void loadFile_failureNotFromTheDialog_namesTheFileAndKeepsTheTable()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> before = w->table().rows();
        const QString path = dir.filePath(QStringLiteral("folder.ymp"));
        w->setCurrentFile(path);
        w->show();
        QTest::mousePress(w->Btn_Diag[0], Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(path));
        QCOMPARE(w->table().rows(), before);
    }

    void diag0_failureEndsQuietly()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("folder.ymp"));
        w->Diag(0);
        QVERIFY(s.dialogs.errors.isEmpty());
        QCOMPARE(w->currentFile(), *s.dialogs.fileAnswer);
    }

    void diag0_onAWindowLoadedButNotShown_loadsAndStaysHidden()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = path;
        w->Diag(0);
        QVERIFY(!w->isVisible());
        QCOMPARE(cellText(*w, 100, 2), QStringLiteral("DataUSR"));
        QVERIFY(w->Bouton[5]->isEnabled());
    }

    void menuOpen_isDiag0_andSaveAs_isDiag1()
    {
        Scene s;
        auto w = s.open();
        w->mnu_file[0]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(s.dialogs.requests[0].title, QStringLiteral("Retrieve Memory Data from File"));
        w->Bouton[4]->click();
        w->mnu_file[3]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 2);
        const FileDialogRequest r = s.dialogs.requests[1];
        QCOMPARE(r.kind, FileDialogRequest::Kind::Save);
        QCOMPARE(r.title, QStringLiteral("Save Memory Data to File"));
        QCOMPARE(r.selectedFilter, QStringLiteral("Yaesu Mem Files (*.ymp)"));
        QCOMPARE(r.defaultSuffix, QStringLiteral("ymp"));
    }

    void saveFile_leftButtonAndMenuSave_writeTheCurrentFile()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        w->setCurrentFile(dir.filePath(QStringLiteral("a.ymp")));
        w->show();
        QTest::mousePress(w->Btn_Diag[1], Qt::LeftButton);
        QCoreApplication::processEvents();
        QCOMPARE(readFile(dir.filePath(QStringLiteral("a.ymp"))).size(), 3277);
        w->setCurrentFile(dir.filePath(QStringLiteral("b.ymp")));
        w->mnu_file[2]->trigger();
        QCOMPARE(readFile(dir.filePath(QStringLiteral("b.ymp"))), readFile(dir.filePath(QStringLiteral("a.ymp"))));
        QVERIFY(s.dialogs.requests.isEmpty());
    }

    void saveFile_otherButton_savesToTheChosenFile()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("chosen.ymp"));
        w->show();
        QTest::mousePress(w->Btn_Diag[1], Qt::RightButton);
        QCoreApplication::processEvents();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(s.dialogs.requests[0].title, QStringLiteral("Save Memory Data to File"));
        QCOMPARE(readFile(*s.dialogs.fileAnswer).size(), 3277);
        QCOMPARE(w->currentFile(), *s.dialogs.fileAnswer);
    }

    void saveFile_failureNotFromTheDialog_namesTheFileAndKeepsTheOldFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("old.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.fullReply = ChannelBytes::fullReadout().left(55 + 16 * 50);  // rows 51.. stay empty: not numbers
        auto w = s.open();
        w->Bouton[4]->click();
        w->setCurrentFile(path);
        w->SaveMemFile();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(path));
        QVERIFY(s.dialogs.errors[0].text.contains(QStringLiteral("Row 51")));
        QCOMPARE(readFile(path), Golden::file());
        QCOMPARE(cellText(*w, 50, 0), QStringLiteral(" Chan 50"));
    }

    void diag1_failureEndsQuietly()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();  // an empty table cannot be saved
        s.dialogs.fileAnswer = dir.filePath(QStringLiteral("x.ymp"));
        w->Diag(1);
        QVERIFY(s.dialogs.errors.isEmpty());
        QVERIFY(!QFile::exists(*s.dialogs.fileAnswer));
    }

    void diag_cancelEndsQuietly()
    {
        Scene s;
        auto w = s.open();
        const QString file = w->currentFile();
        w->Diag(0);
        w->Diag(1);
        QCOMPARE(s.dialogs.requests.size(), 2);
        QVERIFY(s.dialogs.errors.isEmpty());
        QCOMPARE(w->currentFile(), file);
    }

    void getMem_save_load_reproducesEveryCellAndColour()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> fromRadio = w->table().rows();
        w->setCurrentFile(dir.filePath(QStringLiteral("round.ymp")));
        QVERIFY(w->SaveMemFile());
        w->table().setRows(QList<MemoryRow>(113));
        QVERIFY(w->LoadMemFile());
        for (int n = 1; n <= 113; ++n) {
            for (int c = 0; c < 6; ++c)
                QCOMPARE(cellText(*w, n, c), fromRadio[n - 1].cells[c]);
            for (int c = 1; c <= 4; ++c)
                QCOMPARE(cellColour(*w, n, c), fromBgr(fromRadio[n - 1].colour));
        }
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
