// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeClock.h"
#include "FakeSerialPort.h"

#include <QTest>

namespace {
QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray b;
    for (int v : values)
        b.append(static_cast<char>(v));
    return b;
}
}  // namespace

class TestFakeSerialPort : public QObject {
    Q_OBJECT
private slots:
    void startsClosedWithDefaultSettings()
    {
        FakeSerialPort port;
        QVERIFY(!port.isOpen());
        QCOMPARE(port.settings(), QStringLiteral("4800,n,8,2"));
        QCOMPARE(port.openCount, 0);
        QVERIFY(!port.failed());
    }

    void openAndCloseChangeTheOpenState()
    {
        FakeSerialPort port;
        port.setDevice(QStringLiteral("/dev/ttyS0"));
        QCOMPARE(port.device(), QStringLiteral("/dev/ttyS0"));
        QString error;
        QVERIFY(port.open(&error));
        QVERIFY(port.isOpen());
        QCOMPARE(port.openCount, 1);
        port.close();
        QVERIFY(!port.isOpen());
        QVERIFY(port.open(nullptr));
        QCOMPARE(port.openCount, 2);
    }

    void openErrorFailsWithItsText()
    {
        FakeSerialPort port;
        port.openError = QStringLiteral("Permission denied");
        QString error;
        QVERIFY(!port.open(&error));
        QCOMPARE(error, QStringLiteral("Permission denied"));
        QVERIFY(!port.isOpen());
        QCOMPARE(port.openCount, 0);
    }

    void refusedDeviceFailsToOpenOthersOpen()
    {
        FakeSerialPort port;
        port.refusedDevices << QStringLiteral("/dev/ttyS3");
        port.setDevice(QStringLiteral("/dev/ttyS3"));
        QString error;
        QVERIFY(!port.open(&error));
        QVERIFY(!error.isEmpty());
        port.setDevice(QStringLiteral("/dev/ttyS4"));
        QVERIFY(port.open(&error));
    }

    void acceptedSettingsAreKeptAsGiven()
    {
        FakeSerialPort port;
        QString error;
        QVERIFY(port.setSettings(QStringLiteral("9600,e,7,1"), &error));
        QCOMPARE(port.settings(), QStringLiteral("9600,e,7,1"));
    }

    void refusedSettingsLeaveThePreviousOnes()
    {
        FakeSerialPort port;
        QString error;
        QVERIFY(!port.setSettings(QStringLiteral(",N,8,2"), &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(port.settings(), QStringLiteral("4800,n,8,2"));

        port.settingsError = QStringLiteral("The device refuses");
        QVERIFY(!port.setSettings(QStringLiteral("9600,N,8,1"), &error));
        QCOMPARE(error, QStringLiteral("The device refuses"));
        QCOMPARE(port.settings(), QStringLiteral("4800,n,8,2"));
    }

    void writesOnAClosedPortAreDropped()
    {
        FakeClock clock;
        FakeSerialPort port(&clock);
        port.queueReply(bytes({1, 2}));
        port.write(bytes({0, 0, 0, 2, 0x10}));
        QVERIFY(port.writes.isEmpty());
        QVERIFY(clock.events.isEmpty());
        QCOMPARE(port.bytesWaiting(), 0);
    }

    void writesAreRecordedWithTheClockTimeAndLogged()
    {
        FakeClock clock;
        FakeSerialPort port(&clock);
        port.open(nullptr);
        clock.advance(30);
        port.write(bytes({0, 0, 0, 2, 0x10}));
        clock.sleepMs(100);
        port.write(bytes({0xF1, 0, 0, 0, 0xF7}));
        QCOMPARE(port.writes.size(), 2);
        QCOMPARE(port.writes[0].atMs, 30);
        QCOMPARE(port.writes[1].atMs, 130);
        QCOMPARE(port.writes[1].bytes, bytes({0xF1, 0, 0, 0, 0xF7}));
        QCOMPARE(port.writtenHex(), (QStringList{QStringLiteral("00 00 00 02 10"), QStringLiteral("F1 00 00 00 F7")}));
        QCOMPARE(clock.events, (QStringList{QStringLiteral("write 00 00 00 02 10"), QStringLiteral("sleep 100"),
                                            QStringLiteral("write F1 00 00 00 F7")}));
    }

    void queuedRepliesAnswerTheNextWritesInOrder()
    {
        FakeClock clock;
        FakeSerialPort port(&clock);
        port.open(nullptr);
        port.queueReply(bytes({1, 2, 3}));
        port.queueReply(QByteArray());
        port.queueReply(bytes({9}));
        port.write(bytes({0, 0, 0, 0, 1}));
        QCOMPARE(port.bytesWaiting(), 3);
        QCOMPARE(port.readAll(), bytes({1, 2, 3}));
        port.write(bytes({0, 0, 0, 0, 2}));
        QCOMPARE(port.bytesWaiting(), 0);
        QCOMPARE(port.readAll(), QByteArray());
        port.write(bytes({0, 0, 0, 0, 3}));
        QCOMPARE(port.readAll(), bytes({9}));
        port.write(bytes({0, 0, 0, 0, 4}));  // script used up, no responder: silence
        QCOMPARE(port.readAll(), QByteArray());
        QCOMPARE(clock.events.filter(QStringLiteral("read")),
                 (QStringList{QStringLiteral("read 3"), QStringLiteral("read 0"), QStringLiteral("read 1"),
                              QStringLiteral("read 0")}));
    }

    void responderAnswersWritesTheScriptDoesNotCover()
    {
        FakeSerialPort port;
        port.open(nullptr);
        QByteArray seen;
        port.responder = [&seen](const QByteArray& command) {
            seen = command;
            return QByteArray(6, '\x07');
        };
        port.queueReply(bytes({1}));
        port.write(bytes({0, 0, 0, 0, 0xFA}));
        QCOMPARE(port.readAll(), bytes({1}));
        QVERIFY(seen.isEmpty());
        port.write(bytes({0, 0, 0, 1, 0xFA}));
        QCOMPARE(seen, bytes({0, 0, 0, 1, 0xFA}));
        QCOMPARE(port.readAll(), QByteArray(6, '\x07'));
    }

    void repliesPileUpUntilRead()
    {
        FakeSerialPort port;
        port.open(nullptr);
        port.inject(bytes({0xAA}));
        port.queueReply(bytes({1, 2}));
        port.write(bytes({0, 0, 0, 0, 1}));
        QCOMPARE(port.bytesWaiting(), 3);
        QCOMPARE(port.readAll(), bytes({0xAA, 1, 2}));
        QCOMPARE(port.bytesWaiting(), 0);
        QCOMPARE(port.readAll(), QByteArray());
    }

    void worksWithoutAClock()
    {
        FakeSerialPort port;
        port.open(nullptr);
        port.write(bytes({1, 2, 3, 4, 5}));
        QCOMPARE(port.writes.size(), 1);
        QCOMPARE(port.writes[0].atMs, 0);
        QCOMPARE(port.readAll(), QByteArray());
    }

    void failedFlagClearsOnReopen()
    {
        FakeSerialPort port;
        port.open(nullptr);
        port.failed_ = true;
        QVERIFY(port.failed());
        port.close();
        QVERIFY(port.open(nullptr));
        QVERIFY(!port.failed());
    }
};

QTEST_GUILESS_MAIN(TestFakeSerialPort)
#include "test_fake_serial_port.moc"
