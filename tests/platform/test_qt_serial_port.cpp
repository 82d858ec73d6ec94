// SPDX-License-Identifier: GPL-3.0-or-later
#include "QtSerialPort.h"

#include <QTest>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <pty.h>
#include <unistd.h>
#endif

// The real adapter on a pseudo-terminal: the test holds the other end of the line.
class TestQtSerialPort : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
#ifdef Q_OS_UNIX
        char name[256] = {};
        int slave = -1;
        if (openpty(&master_, &slave, name, nullptr, nullptr) != 0)
            QSKIP("no pseudo-terminal on this machine");
        ::close(slave);  // the adapter opens the device by its path
        device_ = QString::fromLocal8Bit(name);
        fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
#else
        QSKIP("pseudo-terminals are a Unix thing");
#endif
    }
    void cleanup()
    {
#ifdef Q_OS_UNIX
        if (master_ >= 0)
            ::close(master_);
        master_ = -1;
#endif
    }

    void startsClosedWithTheDefaultSettings()
    {
        QtSerialPort port;
        QVERIFY(!port.isOpen());
        QCOMPARE(port.settings(), QStringLiteral("4800,n,8,2"));
        QCOMPARE(port.readAll(), QByteArray());
        QCOMPARE(port.bytesWaiting(), 0);
    }

    void opensTheDeviceAndCloses()
    {
        QtSerialPort port;
        port.setDevice(device_);
        QCOMPARE(port.device(), device_);
        QString error;
        QVERIFY2(port.open(&error), qPrintable(error));
        QVERIFY(port.isOpen());
        QVERIFY(!port.failed());
        port.close();
        QVERIFY(!port.isOpen());
    }

    void missingDeviceFailsWithADescription()
    {
        QtSerialPort port;
        port.setDevice(QStringLiteral("/dev/no-such-serial-device"));
        QString error;
        QVERIFY(!port.open(&error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!port.isOpen());
        QVERIFY(!port.failed());  // a refused open is not a lost device
    }

    void writeReachesTheOtherEnd()
    {
#ifdef Q_OS_UNIX
        QtSerialPort port;
        port.setDevice(device_);
        QVERIFY(port.open(nullptr));
        port.write(QByteArray::fromHex("0000000210"));
        QByteArray got;
        QTRY_VERIFY((got += readMaster()).size() >= 5);
        QCOMPARE(got, QByteArray::fromHex("0000000210"));
#endif
    }

    void readAllTakesEverythingThatArrivedAndEmpties()
    {
#ifdef Q_OS_UNIX
        QtSerialPort port;
        port.setDevice(device_);
        QVERIFY(port.open(nullptr));
        const QByteArray reply = QByteArray::fromHex("0001020304050607");
        QCOMPARE(::write(master_, reply.constData(), reply.size()), ssize_t(reply.size()));
        QTRY_COMPARE(port.bytesWaiting(), 8);
        QCOMPARE(port.readAll(), reply);
        QCOMPARE(port.readAll(), QByteArray());
        QCOMPARE(port.bytesWaiting(), 0);
#endif
    }

    void writeOnAClosedPortIsIgnored()
    {
        QtSerialPort port;
        port.setDevice(device_);
        port.write(QByteArray::fromHex("0000000010"));
        QCOMPARE(readMaster(), QByteArray());
    }

    void refusedSettingsKeepThePreviousOnes()
    {
        QtSerialPort port;
        QString error;
        QVERIFY(!port.setSettings(QStringLiteral(",N,8,2"), &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(port.settings(), QStringLiteral("4800,n,8,2"));
        QVERIFY(port.setSettings(QStringLiteral("9600,E,7,1"), &error));
        QCOMPARE(port.settings(), QStringLiteral("9600,E,7,1"));
    }

    void settingsChangeOnAnOpenPort()
    {
        QtSerialPort port;
        port.setDevice(device_);
        QVERIFY(port.open(nullptr));
        QString error;
        QVERIFY2(port.setSettings(QStringLiteral("9600,N,8,1"), &error), qPrintable(error));
        QCOMPARE(port.settings(), QStringLiteral("9600,N,8,1"));
        QVERIFY(port.isOpen());
    }

    void lostDeviceUnderAnOpenPortIsReported()
    {
#ifdef Q_OS_UNIX
        QtSerialPort port;
        port.setDevice(device_);
        QVERIFY(port.open(nullptr));
        ::close(master_);  // the other end goes away, like a pulled adapter
        master_ = -1;
        QTRY_VERIFY((port.readAll(), port.failed()));
        port.close();
        QVERIFY(!port.isOpen());
#endif
    }

private:
    QByteArray readMaster()
    {
        QByteArray out;
#ifdef Q_OS_UNIX
        char buf[256];
        for (;;) {
            const ssize_t n = ::read(master_, buf, sizeof buf);
            if (n <= 0)
                break;
            out.append(buf, n);
        }
#endif
        return out;
    }

    int master_ = -1;
    QString device_;
};

QTEST_GUILESS_MAIN(TestQtSerialPort)
#include "test_qt_serial_port.moc"
