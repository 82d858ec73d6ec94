// SPDX-License-Identifier: GPL-3.0-or-later
// The band scope's CSV files: a sweep's samples by frequency, an S-record's readings by time, the
// files' names beside the picture.

#include "ScopeExport.h"

#include <QTest>

namespace {
SweepSample sample(qint64 f10Hz, bool replied, int raw)
{
    SweepSample s;
    s.freq10Hz = f10Hz;
    s.replied = replied;
    s.raw = raw;
    s.level = raw * 100 / 255;
    return s;
}
}  // namespace

class TestScopeExport : public QObject {
    Q_OBJECT
private slots:
    void sweepCsv_headerThenOneLineASample()
    {
        const QList<SweepSample> samples = {sample(1420000, true, 92), sample(1420050, false, 0),
                                            sample(1420100, true, 187), sample(705001, true, 0)};
        QCOMPARE(ScopeExport::sweepCsv(samples), QByteArray("Frequency_kHz,S_level_raw,S_units\r\n"
                                                            "14200.00,92,S5\r\n"
                                                            "14200.50,,\r\n"
                                                            "14201.00,187,S9+20\r\n"
                                                            "7050.01,0,S0\r\n"));
    }

    void sweepCsv_noSamplesIsTheHeaderAlone()
    {
        QCOMPARE(ScopeExport::sweepCsv({}), QByteArray("Frequency_kHz,S_level_raw,S_units\r\n"));
    }

    void recordCsv_secondsToTheMillisecond()
    {
        QList<RecordReading> readings;
        readings.append({2.992, true, 159});
        readings.append({5.984, false, 0});
        readings.append({1795.2, true, 255});
        QCOMPARE(ScopeExport::recordCsv(readings), QByteArray("Time_s,S_level_raw,S_units\r\n"
                                                              "2.992,159,S9\r\n"
                                                              "5.984,,\r\n"
                                                              "1795.200,255,S9+60\r\n"));
    }

    void paths_besideThePicture()
    {
        QCOMPARE(ScopeExport::sweepCsvPath(QStringLiteral("/home/op/band.png")),
                 QStringLiteral("/home/op/band-sweep.csv"));
        QCOMPARE(ScopeExport::recordCsvPath(QStringLiteral("/home/op/band.PNG")),
                 QStringLiteral("/home/op/band-srecord.csv"));
        QCOMPARE(ScopeExport::sweepCsvPath(QStringLiteral("/home/op/band")), QStringLiteral("/home/op/band-sweep.csv"));
    }

    void plan_addsTheSuffixBeforeLookingForFilesToReplace()
    {
        const QStringList there = {"/op/plot.png"};
        const auto exists = [&there](const QString& p) { return there.contains(p); };
        const ScopeExport::PlotFiles f =
            ScopeExport::planPlotFiles(QStringLiteral("/op/plot"), ScopeExport::SweepKept::None, false, exists);
        QCOMPARE(f.png, QStringLiteral("/op/plot.png"));
        QCOMPARE(f.replaced, QStringList{QStringLiteral("/op/plot.png")});
        QVERIFY(f.question().contains(QStringLiteral("replaced:\n    plot.png\n")));
    }

    void plan_namesEveryFileItReplacesAndEveryCsvThatDoesNotBelong()
    {
        const QStringList there = {"/op/a.png", "/op/a-sweep.csv", "/op/a-srecord.csv"};
        const auto exists = [&there](const QString& p) { return there.contains(p); };
        const ScopeExport::PlotFiles f =
            ScopeExport::planPlotFiles(QStringLiteral("/op/a.png"), ScopeExport::SweepKept::Whole, false, exists);
        QCOMPARE(f.paths(), (QStringList{"/op/a.png", "/op/a-sweep.csv"}));
        QCOMPARE(f.replaced, (QStringList{"/op/a.png", "/op/a-sweep.csv"}));
        QCOMPARE(f.strays, QStringList{QStringLiteral("/op/a-srecord.csv")});
        const QString q = f.question();
        QVERIFY(q.contains(QStringLiteral("replaced:\n    a.png\n    a-sweep.csv\n")));
        QVERIFY(q.contains(QStringLiteral("do not belong to this one; they are left as they are:\n    a-srecord.csv")));
    }

    void plan_nothingInTheWay_asksNothing()
    {
        const ScopeExport::PlotFiles f = ScopeExport::planPlotFiles(
            QStringLiteral("/op/b.png"), ScopeExport::SweepKept::Whole, true, [](const QString&) { return false; });
        QCOMPARE(f.paths(), (QStringList{"/op/b.png", "/op/b-sweep.csv", "/op/b-srecord.csv"}));
        QVERIFY(f.question().isEmpty());
    }

    void plan_aSweepCutShort_writesNoSweepCsvAndSaysSo()
    {
        const ScopeExport::PlotFiles f = ScopeExport::planPlotFiles(
            QStringLiteral("/op/c.png"), ScopeExport::SweepKept::CutShort, false, [](const QString&) { return false; });
        QCOMPARE(f.paths(), QStringList{QStringLiteral("/op/c.png")});
        QVERIFY(f.question().contains(QStringLiteral("cancelled before a whole pass")));
    }
};

QTEST_APPLESS_MAIN(TestScopeExport)
#include "test_scope_export.moc"
