// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandPlan.h"
#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "NavigatorJobs.h"

#include <QTest>

class TestBandPlan : public QObject {
    Q_OBJECT
private slots:
    void bandKeyFrequency_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<qlonglong>("tenHz");
        QTest::addColumn<QString>("frame");
        QTest::newRow("29") << 0 << "29" << 2960000LL << "00 00 96 02 0A";
        QTest::newRow("1.8") << 1 << "1.8" << 184300LL << "00 43 18 00 0A";
        QTest::newRow("3.5") << 2 << "3.5" << 365000LL << "00 50 36 00 0A";
        QTest::newRow("7") << 3 << "7" << 704500LL << "00 45 70 00 0A";
        QTest::newRow("10") << 4 << "10" << 1015000LL << "00 50 01 01 0A";
        QTest::newRow("14") << 5 << "14" << 1425000LL << "00 50 42 01 0A";
        QTest::newRow("18") << 6 << "18" << 1850000LL << "00 00 85 01 0A";
        QTest::newRow("21") << 7 << "21" << 2120000LL << "00 00 12 02 0A";
        QTest::newRow("24.5") << 8 << "24.5" << 2485000LL << "00 50 48 02 0A";
        QTest::newRow("28") << 9 << "28" << 2850000LL << "00 00 85 02 0A";
    }
    void bandKeyFrequency()
    {
        QFETCH(int, index);
        QFETCH(QString, caption);
        QFETCH(qlonglong, tenHz);
        QFETCH(QString, frame);
        QCOMPARE(BandPlan::caption(index), caption);
        QCOMPARE(BandPlan::frequencyTenHz(index), tenHz);

        FakeClock clock;
        FakeSerialPort serial(&clock);
        serial.open(nullptr);
        CatPort port(serial, clock);
        sendFrequency(port, BandPlan::frequencyTenHz(index), 1);
        QCOMPARE(serial.writtenHex(), QStringList{frame});
    }

    void bandFrequencyIsMegahertzTimesHundredThousand()
    {
        const double mhz[] = {29.6, 1.843, 3.65, 7.045, 10.15, 14.25, 18.5, 21.2, 24.85, 28.5};
        for (int i = 0; i < BandPlan::Count; ++i) {
            QCOMPARE(BandPlan::frequencyMHz(i), mhz[i]);
            QCOMPARE(BandPlan::frequencyTenHz(i), std::llround(mhz[i] * 100000));
        }
    }

    void captionStringCutIntoFourCharacterFields()
    {
        QCOMPARE(BandPlan::CaptionString.size(), 40);
        QCOMPARE(BandPlan::captions(), (QStringList{"29", "1.8", "3.5", "7", "10", "14", "18", "21", "24.5", "28"}));
    }

    void twentyNineFirstAndTwentyEightLast()
    {
        QCOMPARE(BandPlan::caption(0), QStringLiteral("29"));
        QCOMPARE(BandPlan::caption(9), QStringLiteral("28"));
    }

    void indexOutsideTheTableHasNoFrequency()
    {
        QCOMPARE(BandPlan::frequencyTenHz(10), 0);
        QCOMPARE(BandPlan::frequencyTenHz(-1), 0);
        QVERIFY(BandPlan::caption(10).isEmpty());
    }

    void digitCaptionsAreZeroToNine()
    {
        for (int i = 0; i < 10; ++i)
            QCOMPARE(BandPlan::digitCaption(i), QString::number(i));
    }
};

QTEST_GUILESS_MAIN(TestBandPlan)
#include "test_band_plan.moc"
