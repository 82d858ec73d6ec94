// SPDX-License-Identifier: GPL-3.0-or-later
// The band scope's results on the offscreen platform, on an inline link with a fake port and clock:
// the waterfall under the plot (its toggle, its rows as sweeps finish, newest on top) and
// "Save Plot..." (the PNG, the CSV files beside it, a folder that cannot be written).

#include "BandScope.h"
#include "FakeScopeHost.h"
#include "PanBox.h"
#include "SLevel.h"
#include "ScopeExport.h"
#include "WaterfallView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <cmath>

namespace {
void choose(QComboBox* combo, const QString& entry)
{
    combo->setCurrentIndex(combo->findText(entry));
    QVERIFY2(combo->currentText() == entry, qPrintable(entry));
}

QByteArray readAll(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

int countColour(const QImage& img, int line, QRgb colour)
{
    int n = 0;
    for (int x = 0; x < img.width(); ++x)
        n += img.pixel(x, line) == colour ? 1 : 0;
    return n;
}
}  // namespace

class TestScopeResults : public QObject {
    Q_OBJECT

    std::unique_ptr<FakeScopeHost> host;
    std::unique_ptr<BandScope> scope;

    void makeScope()
    {
        scope.reset();
        scope = std::make_unique<BandScope>(*host);
        host->scope = scope.get();
        scope->presetLists();
        scope->resize(680, 330);
        scope->show();
        QVERIFY(QTest::qWaitForWindowExposed(scope.get()));
    }

    void click(int key) { QTest::mouseClick(scope->key(key), Qt::LeftButton); }

    void showWaterfall()
    {
        scope->setWaterfallShown(true);
        QTRY_COMPARE(scope->waterfallView()->width(), scope->panBox()->width());
    }

    // 100 kHz at 25 kHz round 14250: five samples a pass. Continuous passes until Cancel, pressed
    // during the first meter read of pass cancelAtPass (counted from this call).
    void continuousPasses(int cancelAtPass)
    {
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        scope->scan(0)->setChecked(true);
        const int before = host->band.meterReads;
        host->band.onMeterRead = [this, cancelAtPass, before](int n) {
            if (n - before == 5 * (cancelAtPass - 1) + 1)
                click(53);
        };
        click(49);
        host->band.onMeterRead = nullptr;
    }

private slots:
    void init()
    {
        host = std::make_unique<FakeScopeHost>();
        makeScope();
    }
    void cleanup()
    {
        scope.reset();
        host.reset();
    }

    void controls_toggleAndKeyWithTheirCaptions()
    {
        QCOMPARE(scope->waterfallToggle()->text(), QStringLiteral("Waterfall"));
        QCOMPARE(scope->savePlotKey()->text(), QStringLiteral("Save Plot..."));
        QCOMPARE(scope->savePlotKey()->accessibleName(), QString());  // the caption speaks for it
        QVERIFY(!scope->waterfallShown());                            // off until the operator asks for it
        QVERIFY(scope->waterfallView()->isHidden());
    }

    void waterfallToggle_showsTheStripAndIsKept()
    {
        QTest::mouseClick(scope->waterfallToggle(), Qt::LeftButton);
        QVERIFY(scope->waterfallShown());
        QVERIFY(scope->waterfallView()->isVisible());
        QCOMPARE(host->store.value(QStringLiteral("Scope"), QStringLiteral("Waterfall")), QStringLiteral("1"));
        // The next start finds it on.
        makeScope();
        QVERIFY(scope->waterfallShown());
        QVERIFY(scope->waterfallView()->isVisible());
        QTest::mouseClick(scope->waterfallToggle(), Qt::LeftButton);
        QVERIFY(scope->waterfallView()->isHidden());
        QCOMPARE(host->store.value(QStringLiteral("Scope"), QStringLiteral("Waterfall")), QStringLiteral("0"));
    }

    void waterfall_aRowAFinishedPassNewestOnTop()
    {
        showWaterfall();
        // The first pass hears the stations; then they go quiet and only the floor is left.
        host->band.onMeterRead = nullptr;
        click(48);
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("0.5 Khz"));  // 201 samples a pass
        scope->scan(0)->setChecked(true);
        const QList<SyntheticBand::Station> stations = host->band.stations;
        host->band.onMeterRead = [this](int n) {
            if (n == 202)
                host->band.stations.clear();
            if (n == 3 * 201 + 1)
                click(53);
        };
        click(49);
        QCOMPARE(host->meterWrites().size(), 3 * 201 + 1);
        // Three whole passes, three rows; the pass Cancel cut short adds none.
        QCOMPARE(scope->waterfall().rowCount(), 3);
        const QImage img = scope->waterfallView()->image();
        QCOMPARE(img.width(), scope->waterfallView()->width());
        QCOMPARE(img.height(), 100);
        // The station at 14205 kHz (peak 200, 78 %) is in the oldest row only, at the bottom of the
        // three; the newest two, on top, show the floor there.
        // The pixel that holds x = 5 kHz (its centre is within half a pixel of it, nearer that
        // sample than either neighbour half a kHz away).
        const int x =
            static_cast<int>(std::floor(scope->panBox()->toPixels(QPointF(5.0, 0), scope->panBox()->scale()).x()));
        const QRgb strong = levelColour(200 * 100 / 255);
        QCOMPARE(QRgb(img.pixel(x, 2)), strong);
        QVERIFY(img.pixel(x, 0) != strong);
        QVERIFY(img.pixel(x, 1) != strong);
        QCOMPARE(img.pixel(x, 0), img.pixel(x, 1));
        // Below the three rows the history is empty.
        QCOMPARE(countColour(img, 3, WaterfallModel::Background), img.width());
        // What is on screen is the image.
        const QImage shown = scope->waterfallView()->grab().toImage();
        QCOMPARE(QRgb(shown.pixel(x, 2)), strong);
        host->band.stations = stations;
        const QString dir = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (!dir.isEmpty())
            scope->grab().save(dir + QStringLiteral("/band_scope_waterfall.png"));
    }

    void waterfall_newRowScrollsTheOthersDown()
    {
        showWaterfall();
        continuousPasses(3);
        QCOMPARE(scope->waterfall().rowCount(), 2);
        const QImage before = scope->waterfallView()->image();
        continuousPasses(2);
        QCOMPARE(scope->waterfall().rowCount(), 3);
        const QImage after = scope->waterfallView()->image();
        for (int line = 0; line < 99; ++line)
            for (int x = 0; x < after.width(); x += 7)
                QCOMPARE(after.pixel(x, line + 1), before.pixel(x, line));
    }

    void waterfall_keepsRowsWhileHiddenAndShowsThemWhenShown()
    {
        continuousPasses(3);
        QCOMPARE(scope->waterfall().rowCount(), 2);
        showWaterfall();
        const QImage img = scope->waterfallView()->image();
        QVERIFY(countColour(img, 0, WaterfallModel::Background) < img.width());
        QVERIFY(countColour(img, 1, WaterfallModel::Background) < img.width());
        QCOMPARE(countColour(img, 2, WaterfallModel::Background), img.width());
    }

    void savePlot_writesThePictureAndTheLastSweep()
    {
        showWaterfall();
        continuousPasses(3);
        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("plot.png"));
        QVERIFY(scope->savePlot(png));
        QVERIFY(host->errors.isEmpty());
        const QImage saved(png);
        QVERIFY(!saved.isNull());
        // The plot with the waterfall under it.
        QCOMPARE(saved.width(), scope->panBox()->width());
        QCOMPARE(saved.height(), scope->panBox()->height() + scope->waterfallView()->height());
        // The last whole pass, sample by sample, as the synthetic band answered it.
        const QList<QByteArray> lines = readAll(dir.filePath(QStringLiteral("plot-sweep.csv"))).split('\n');
        QCOMPARE(lines.size(), 1 + 5 + 1);  // header, five samples, nothing after the last CRLF
        QCOMPARE(lines[0], QByteArray("Frequency_kHz,S_level_raw,S_units\r"));
        const QStringList f = {"14200.00", "14225.00", "14250.00", "14275.00", "14300.00"};
        for (int i = 0; i < 5; ++i) {
            const int raw = host->band.levelAt(qRound(f[i].toDouble() * 100));
            QCOMPARE(lines[1 + i], (f[i] + QLatin1Char(',') + QString::number(raw) + QLatin1Char(',') + sUnitText(raw) +
                                    QLatin1Char('\r'))
                                       .toLatin1());
        }
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("plot-srecord.csv"))));  // nothing recorded
    }

    void savePlot_withoutTheWaterfall_isThePlotAlone()
    {
        click(48);
        click(49);
        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("plot.png"));
        QVERIFY(scope->savePlot(png));
        const QImage saved(png);
        QCOMPARE(saved.size(), scope->panBox()->size());
        // The red trace is in the picture.
        int red = 0;
        for (int y = 0; y < saved.height(); ++y)
            red += countColour(saved, y, qRgb(255, 0, 0));
        QVERIFY(red > 20);
    }

    void savePlot_writesTheSRecordingByTime()
    {
        scope->MainSub_Click(1);
        scope->scan(2)->setChecked(true);
        click(50);
        host->band.silentReads = {2};
        for (int i = 0; i < 3; ++i)
            scope->Timer2_Timer();
        QTemporaryDir dir;
        QVERIFY(scope->savePlot(dir.filePath(QStringLiteral("rec.png"))));
        const int raw = host->band.levelAt(host->band.vfoB10Hz);  // where Sub is
        const QByteArray expected =
            "Time_s,S_level_raw,S_units\r\n"
            "2.992," +
            QByteArray::number(raw) + ',' + sUnitText(raw).toLatin1() +
            "\r\n"
            "5.984,,\r\n"
            "8.976," +
            QByteArray::number(raw) + ',' + sUnitText(raw).toLatin1() + "\r\n";
        QCOMPARE(readAll(dir.filePath(QStringLiteral("rec-srecord.csv"))), expected);
    }

    void savePlot_unwritableFolder_namesTheFileAndTheScopeGoesOn()
    {
        scope->scan(0)->setChecked(true);
        QTemporaryDir dir;
        // A "folder" that is a plain file: nothing can be created in it, not even by root.
        const QString notAFolder = dir.filePath(QStringLiteral("file"));
        QFile blocker(notAFolder);
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        const QString png = notAFolder + QStringLiteral("/plot.png");
        QVERIFY(!scope->savePlot(png));
        QCOMPARE(host->errors.size(), 1);
        QCOMPARE(host->errors[0].first, QStringLiteral("Save Plot"));
        QVERIFY2(host->errors[0].second.contains(QDir::toNativeSeparators(png)), qPrintable(host->errors[0].second));
        // The scope keeps running: a sweep still goes out and is drawn.
        continuousPasses(2);
        QCOMPARE(scope->waterfall().rowCount(), 1);
        QVERIFY(scope->panBox()->plotItemCount() == 0);  // Cancel redrew the graticule
        QVERIFY(host->meterWrites().size() == 6);
    }

    void savePlotKey_aNameWithoutSuffix_asksBeforeReplacingThePicture()
    {
        click(48);
        click(49);
        QTemporaryDir dir;
        const QString png = dir.filePath(QStringLiteral("plot.png"));
        QVERIFY(writeBytes(png, "old picture"));
        host->plotFileAnswer = dir.filePath(QStringLiteral("plot"));
        host->plotQuestionAnswer = false;
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotQuestions.size(), 1);
        QVERIFY2(host->plotQuestions[0].second.contains(QStringLiteral("    plot.png\n")),
                 qPrintable(host->plotQuestions[0].second));
        QCOMPARE(readAll(png), QByteArray("old picture"));  // Cancel: nothing written
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("plot-sweep.csv"))));
        host->plotQuestionAnswer = true;
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotQuestions.size(), 2);
        QVERIFY(!QImage(png).isNull());
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("plot-sweep.csv"))));
    }

    void savePlotKey_namesTheCsvsItReplacesAndLeavesAnOldRecordingSaying()
    {
        click(48);
        click(49);
        QTemporaryDir dir;
        QVERIFY(writeBytes(dir.filePath(QStringLiteral("p-sweep.csv")), "old sweep"));
        QVERIFY(writeBytes(dir.filePath(QStringLiteral("p-srecord.csv")), "old recording"));
        host->plotFileAnswer = dir.filePath(QStringLiteral("p.png"));
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotQuestions.size(), 1);
        const QString q = host->plotQuestions[0].second;
        QVERIFY2(q.contains(QStringLiteral("replaced:\n    p-sweep.csv\n")), qPrintable(q));
        QVERIFY2(q.contains(QStringLiteral("left as they are:\n    p-srecord.csv\n")), qPrintable(q));
        QVERIFY(readAll(dir.filePath(QStringLiteral("p-sweep.csv"))).startsWith("Frequency_kHz"));
        QCOMPARE(readAll(dir.filePath(QStringLiteral("p-srecord.csv"))), QByteArray("old recording"));
    }

    void savePlotKey_nothingInTheWay_asksNothing()
    {
        click(48);
        click(49);
        QTemporaryDir dir;
        host->plotFileAnswer = dir.filePath(QStringLiteral("new.png"));
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QVERIFY(host->plotQuestions.isEmpty());
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("new-sweep.csv"))));
    }

    void savePlot_afterACancelBeforeAWholePass_writesNoPartialSweepAndSaysSo()
    {
        continuousPasses(1);  // Cancel in the first pass: two samples read, three never
        QTemporaryDir dir;
        host->plotFileAnswer = dir.filePath(QStringLiteral("cut.png"));
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotQuestions.size(), 1);
        QVERIFY(host->plotQuestions[0].second.contains(QStringLiteral("cancelled before a whole pass")));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("cut.png"))));
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("cut-sweep.csv"))));
    }

    void savePlot_afterACancelLaterOn_writesTheLastWholePass()
    {
        continuousPasses(2);
        QTemporaryDir dir;
        QVERIFY(scope->savePlot(dir.filePath(QStringLiteral("whole.png"))));
        QCOMPARE(readAll(dir.filePath(QStringLiteral("whole-sweep.csv"))).count('\n'), 1 + 5);
    }

    void savePlotKey_asksForTheFileAndSavesThere()
    {
        click(48);
        click(49);
        QTemporaryDir dir;
        host->plotFileAnswer = dir.filePath(QStringLiteral("asked.png"));
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotFileQuestions.size(), 1);
        QVERIFY(host->plotFileQuestions[0].endsWith(QStringLiteral(".png")));
        QVERIFY(QFile::exists(host->plotFileAnswer));
        QVERIFY(QFile::exists(dir.filePath(QStringLiteral("asked-sweep.csv"))));
        // The folder is offered again next time.
        host->plotFileAnswer.clear();  // cancelled
        QTest::mouseClick(scope->savePlotKey(), Qt::LeftButton);
        QCOMPARE(host->plotFileQuestions.size(), 2);
        QVERIFY(host->plotFileQuestions[1].startsWith(dir.path()));
        QVERIFY(host->errors.isEmpty());
    }
};

QTEST_MAIN(TestScopeResults)
#include "test_scope_results.moc"
