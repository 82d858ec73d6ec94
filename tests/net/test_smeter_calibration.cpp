// SPDX-License-Identifier: GPL-3.0-or-later
// The S-meter byte as dB relative to S9.

#include "SMeterCalibration.h"

#include <QTest>

class TestSMeterCalibration : public QObject {
    Q_OBJECT
private slots:
    void calibrationPoints_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("db");
        QTest::newRow("bottom is S0") << 0 << -54;
        QTest::newRow("S9") << 120 << 0;
        QTest::newRow("top is S9+60") << 255 << 60;
        QTest::newRow("half way to S9") << 60 << -27;
        QTest::newRow("one above S9") << 121 << 0;
        QTest::newRow("S9+20") << 165 << 20;
        QTest::newRow("S9+40") << 210 << 40;
        QTest::newRow("below the range") << -5 << -54;
        QTest::newRow("above the range") << 300 << 60;
    }
    void calibrationPoints()
    {
        QFETCH(int, raw);
        QFETCH(int, db);
        QCOMPARE(sMeterDbOverS9(raw), db);
    }

    void neverFallsAsTheByteRises()
    {
        for (int raw = 1; raw <= 255; ++raw)
            QVERIFY2(sMeterDbOverS9(raw) >= sMeterDbOverS9(raw - 1), qPrintable(QString::number(raw)));
    }
};

QTEST_APPLESS_MAIN(TestSMeterCalibration)
#include "test_smeter_calibration.moc"
