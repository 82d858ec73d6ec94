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
};

QTEST_APPLESS_MAIN(TestScopeExport)
#include "test_scope_export.moc"
