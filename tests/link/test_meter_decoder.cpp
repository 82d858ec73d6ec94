// SPDX-License-Identifier: GPL-3.0-or-later
#include "MeterDecoder.h"

#include <QTest>

class TestMeterDecoder : public QObject {
    Q_OBJECT
private slots:
    void byte255Is100Percent() { QCOMPARE(meterPercent(255), 100); }
    void byte0Is0Percent() { QCOMPARE(meterPercent(0), 0); }
    void byte128Is50Percent() { QCOMPARE(meterPercent(128), 50); }

    void percentIsTheIntegerPartOfTheShare_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("percent");
        QTest::newRow("1") << 1 << 0;
        QTest::newRow("2") << 2 << 0;
        QTest::newRow("3") << 3 << 1;
        QTest::newRow("127") << 127 << 49;
        QTest::newRow("254") << 254 << 99;
        QTest::newRow("51") << 51 << 20;
    }
    void percentIsTheIntegerPartOfTheShare()
    {
        QFETCH(int, raw);
        QFETCH(int, percent);
        QCOMPARE(meterPercent(raw), percent);
    }

    void pitchByte0Shows300Hz()
    {
        QCOMPARE(cwPitchHz(0), 300);
        QCOMPARE(decodeMeters(0, 0, 0, 0).pitchText, QStringLiteral("300 Hz"));
    }

    void pitchByte0xF0Shows1050Hz()
    {
        QCOMPARE(cwPitchHz(0xF0), 1050);
        QCOMPARE(decodeMeters(0, 0, 0, 0xF0).pitchText, QStringLiteral("1050 Hz"));
    }

    void pitchStepsEverySixteen_data()
    {
        QTest::addColumn<int>("raw");
        QTest::addColumn<int>("hz");
        QTest::newRow("15") << 15 << 300;  // 15/16 + 0.05 = 0.9875
        QTest::newRow("16") << 16 << 350;
        QTest::newRow("31") << 31 << 350;  // 1.9875
        QTest::newRow("32") << 32 << 400;
        QTest::newRow("128") << 128 << 700;
        QTest::newRow("255") << 255 << 1050;  // 15.9875
    }
    void pitchStepsEverySixteen()
    {
        QFETCH(int, raw);
        QFETCH(int, hz);
        QCOMPARE(cwPitchHz(raw), hz);
    }

    void meterLineListsTheThreeRawValues()
    {
        const MeterView v = decodeMeters(12, 0, 255, 64);
        QCOMPARE(v.line, QStringLiteral("S-Meters 1-2 = 12 + 0 + 255"));
        QCOMPARE(v.mainS, 12);
        QCOMPARE(v.subS, 0);
        QCOMPARE(v.transmit, 255);
        QCOMPARE(v.mainPercent, 4);
        QCOMPARE(v.subPercent, 0);
        QCOMPARE(v.transmitPercent, 100);
        QCOMPARE(v.pitchHz, 500);
        QCOMPARE(v.pitchText, QStringLiteral("500 Hz"));
    }

    void transmitMeterChoices_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("scale");
        QTest::newRow("0") << 0 << QStringLiteral("PO") << QStringLiteral("......20....50....100......200...300..400W");
        QTest::newRow("1") << 1 << QStringLiteral("ALC") << QStringLiteral("_______ALC_______");
        QTest::newRow("3") << 3 << QStringLiteral("IC")
                           << QStringLiteral("0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30A");
        QTest::newRow("4") << 4 << QStringLiteral("VCC")
                           << QStringLiteral("0 . . . . . . . 10 . . . . . . . 20 . . . . . . . 30V");
        QTest::newRow("5") << 5 << QStringLiteral("SWR")
                           << QStringLiteral("1.0 . 1.5 . 2.0 . 3.0 . . . . . . . . . . . . . .");
        QTest::newRow("6") << 6 << QStringLiteral("Mic") << QStringLiteral("                             MIC");
    }
    void transmitMeterChoices()
    {
        QFETCH(int, index);
        QFETCH(QString, caption);
        QFETCH(QString, scale);
        const TransmitMeter* m = transmitMeter(index);
        QVERIFY(m != nullptr);
        QCOMPARE(m->index, index);
        QCOMPARE(QString::fromLatin1(m->caption), caption);
        QCOMPARE(QString::fromLatin1(m->scale), scale);
    }

    void transmitMeterIndexTwoDoesNotExist()
    {
        QVERIFY(transmitMeter(2) == nullptr);
        QVERIFY(transmitMeter(-1) == nullptr);
        QVERIFY(transmitMeter(TransmitMeterCount) == nullptr);
    }
};

QTEST_GUILESS_MAIN(TestMeterDecoder)
#include "test_meter_decoder.moc"
