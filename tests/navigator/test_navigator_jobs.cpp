// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatPort.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "ModeKeys.h"
#include "NavigatorJobs.h"
#include "VfoReply.h"

#include <QTest>

class TestNavigatorJobs : public QObject {
    Q_OBJECT

    struct Wire {
        FakeClock clock;
        FakeSerialPort serial{&clock};
        CatPort port{serial, clock};
        Wire() { serial.open(nullptr); }
    };

private slots:
    void readVfoFreqRequestsCurrentVfoAndDecodes()
    {
        Wire w;
        w.serial.queueReply(vfoReply(14250.25));
        QCOMPARE(ReadVfoFreq(w.port), std::optional<double>(14250.25));
        QCOMPARE(w.clock.events, (QStringList{"write 00 00 00 02 10", "sleep 75", "read 16"}));
    }

    void readVfoFreqDecodesCountOverSixteenHundred()
    {
        Wire w;
        QByteArray r(16, '\0');
        r[1] = 0x00;
        r[2] = 0x16;
        r[3] = char(0xE3);
        r[4] = 0x60;  // 1 500 000 / 1600
        w.serial.queueReply(r);
        QCOMPARE(ReadVfoFreq(w.port), std::optional<double>(937.5));
    }

    void readVfoFreqEmptyReplyGivesNothing()
    {
        Wire w;
        QVERIFY(!ReadVfoFreq(w.port));
    }

    void readVfoFreqTooShortGivesNothing()
    {
        Wire w;
        w.serial.queueReply(QByteArray(4, '\x10'));
        QVERIFY(!ReadVfoFreq(w.port));
    }

    void readVfoFreqClosedPortSendsNothing()
    {
        Wire w;
        w.serial.close();
        QVERIFY(!ReadVfoFreq(w.port));
        QVERIFY(w.clock.events.isEmpty());
    }

    void recallSendsModeThenFrequency()
    {
        Wire w;
        recallQuickMemory(w.port, 2, 704537);
        QCOMPARE(w.serial.writtenHex(), (QStringList{"00 00 00 02 0C", "37 45 70 00 0A"}));
    }

    void sendFrequencyToSub()
    {
        Wire w;
        sendFrequency(w.port, 1425000, 2);
        QCOMPARE(w.serial.writtenHex(), QStringList{"00 50 42 01 8A"});
    }

    void modeKeyCodes_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("left");
        QTest::addColumn<int>("code");
        QTest::newRow("U/LSB left USB") << 1 << true << 1;
        QTest::newRow("U/LSB other LSB") << 1 << false << 0;
        QTest::newRow("CW left CW") << 2 << true << 2;
        QTest::newRow("CW other reverse") << 2 << false << 3;
        QTest::newRow("AM left AM") << 4 << true << 4;
        QTest::newRow("AM other synchronous") << 4 << false << 5;
        QTest::newRow("FM left FM") << 6 << true << 6;
        QTest::newRow("FM other FM too") << 6 << false << 6;
        QTest::newRow("no key at 3") << 3 << true << -1;
    }
    void modeKeyCodes()
    {
        QFETCH(int, index);
        QFETCH(bool, left);
        QFETCH(int, code);
        QCOMPARE(ModeKeys::modeCode(index, left), code);
    }

    void modeFrame()
    {
        Wire w;
        sendMode(w.port, 5);
        QCOMPARE(w.serial.writtenHex(), QStringList{"00 00 00 05 0C"});
    }
};

QTEST_GUILESS_MAIN(TestNavigatorJobs)
#include "test_navigator_jobs.moc"
