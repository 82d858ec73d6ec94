// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemorySettingsStore.h"
#include "PortCatalog.h"

#include <QTest>

namespace {
MemorySettingsStore storeWithPort(const QString& number)
{
    MemorySettingsStore s;
    if (!number.isNull())
        s.setValue(PortKeys::Section, PortKeys::Number, number);
    return s;
}
}  // namespace

class TestPortCatalog : public QObject {
    Q_OBJECT
private slots:
    // --- start-up: open the stored port or ask for one ---

    void portNumberZeroAtStartAsks()
    {
        const StartupPortPlan p = planStartupPort(storeWithPort(QStringLiteral("0")), 1, false);
        QVERIFY(p.ask);
        QVERIFY(!p.open);
        QVERIFY(!p.closeFirst);  // answering No leaves the port closed, nothing to undo
    }

    void missingPortNumberAtStartAsks()
    {
        const StartupPortPlan p = planStartupPort(storeWithPort(QString()), 1, false);
        QVERIFY(p.ask);
        QVERIFY(!p.open);
        QCOMPARE(p.number, 0);
    }

    void letterPortNumberReadsAsZeroAndAsks()
    {
        const MemorySettingsStore s = storeWithPort(QStringLiteral("abc"));
        QCOMPARE(PortCatalog::storedPortNumber(s), 0);
        const StartupPortPlan p = planStartupPort(s, 1, false);
        QVERIFY(p.ask);
        QVERIFY(!p.open);
    }

    void radioTypeBelowOneAsks()
    {
        const StartupPortPlan p = planStartupPort(storeWithPort(QStringLiteral("2")), 0, false);
        QVERIFY(p.ask);
        QVERIFY(!p.open);
        QVERIFY(planStartupPort(storeWithPort(QStringLiteral("2")), -1, false).ask);
    }

    void portAlreadyOpenIsClosedFirstThenAsks()
    {
        const StartupPortPlan p = planStartupPort(storeWithPort(QStringLiteral("2")), 1, true);
        QVERIFY(p.closeFirst);
        QVERIFY(p.ask);
        QVERIFY(!p.open);
    }

    void usablePortNumberOpens_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("radioType");
        QTest::addColumn<int>("number");
        QTest::newRow("Com 1") << QStringLiteral("1") << 1 << 1;
        QTest::newRow("Com 8") << QStringLiteral("8") << 1 << 8;
        QTest::newRow("real number") << QStringLiteral("3.0") << 1 << 3;
        QTest::newRow("radio type 3") << QStringLiteral("3") << 3 << 3;
        QTest::newRow("blanks") << QStringLiteral(" 4 ") << 1 << 4;
    }
    void usablePortNumberOpens()
    {
        QFETCH(QString, stored);
        QFETCH(int, radioType);
        QFETCH(int, number);
        const StartupPortPlan p = planStartupPort(storeWithPort(stored), radioType, false);
        QVERIFY(p.open);
        QVERIFY(!p.ask);
        QVERIFY(!p.closeFirst);
        QCOMPARE(p.number, number);
        QCOMPARE(p.device, PortCatalog::numberedDevice(number));
    }

    void lineSettingsAreAppliedInEveryCase()
    {
        MemorySettingsStore s = storeWithPort(QStringLiteral("0"));
        QCOMPARE(planStartupPort(s, 1, false).settings, QStringLiteral("4800,n,8,2"));
        s.setValue(PortKeys::Section, PortKeys::Settings, QStringLiteral("9600,E,7,1"));
        QCOMPARE(planStartupPort(s, 1, false).settings, QStringLiteral("9600,E,7,1"));
        s.setValue(PortKeys::Section, PortKeys::Number, QStringLiteral("1"));
        QCOMPARE(planStartupPort(s, 1, false).settings, QStringLiteral("9600,E,7,1"));
    }

    void devicePathPortUsesTheStoredDevice()
    {
        MemorySettingsStore s = storeWithPort(QString::number(PortCatalog::OtherDevice));
        s.setValue(PortKeys::Section, PortKeys::Device, QStringLiteral("/dev/pts/7"));
        const StartupPortPlan p = planStartupPort(s, 1, false);
        QVERIFY(p.open);
        QCOMPARE(p.device, QStringLiteral("/dev/pts/7"));
    }

    void promptTextsAreTheOnesTheOperatorSees()
    {
        QCOMPARE(ConfigErrorTitle, QStringLiteral("Configuration Error !"));
        QCOMPARE(ConfigErrorText, QStringLiteral("You need a Serial Port to control your Radio,") + QChar(13) +
                                      QStringLiteral("Would you like to select one now ?"));
    }

    // --- port numbers and devices ---

    void storedPortNumberIsARealNumberUsedWhole_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("number");
        QTest::newRow("missing") << QString() << 0;
        QTest::newRow("empty") << QStringLiteral("") << 0;
        QTest::newRow("0") << QStringLiteral("0") << 0;
        QTest::newRow("5") << QStringLiteral("5") << 5;
        QTest::newRow("2.0") << QStringLiteral("2.0") << 2;
        QTest::newRow("2.4") << QStringLiteral("2.4") << 2;
        QTest::newRow("2.6") << QStringLiteral("2.6") << 3;
        QTest::newRow("2.5 to even") << QStringLiteral("2.5") << 2;
        QTest::newRow("3.5 to even") << QStringLiteral("3.5") << 4;
        QTest::newRow("abc") << QStringLiteral("abc") << 0;
        QTest::newRow("huge") << QStringLiteral("99999999999") << 0;
    }
    void storedPortNumberIsARealNumberUsedWhole()
    {
        QFETCH(QString, stored);
        QFETCH(int, number);
        QCOMPARE(PortCatalog::storedPortNumber(storeWithPort(stored)), number);
    }

    void numberedPortsNameThePlatformsDevices()
    {
#ifdef Q_OS_WIN
        QCOMPARE(PortCatalog::numberedDevice(1), QStringLiteral("COM1"));
        QCOMPARE(PortCatalog::numberedDevice(8), QStringLiteral("COM8"));
#else
        QCOMPARE(PortCatalog::numberedDevice(1), QStringLiteral("/dev/ttyS0"));
        QCOMPARE(PortCatalog::numberedDevice(8), QStringLiteral("/dev/ttyS7"));
#endif
    }

    void deviceForEachNumber()
    {
        const QString other = QStringLiteral("/dev/ttyUSB0");
        QCOMPARE(PortCatalog::deviceFor(PortCatalog::None, other), QString());
        for (int n = 1; n <= PortCatalog::NumberedPorts; ++n)
            QCOMPARE(PortCatalog::deviceFor(n, other), PortCatalog::numberedDevice(n));
        QCOMPARE(PortCatalog::deviceFor(PortCatalog::OtherDevice, other), other);
        QCOMPARE(PortCatalog::deviceFor(10, other), QString());
        QCOMPARE(PortCatalog::deviceFor(-1, other), QString());
    }

    void presentDevicesAreSorted()
    {
        const QStringList devices = PortCatalog::presentDevices();
        QStringList sorted = devices;
        sorted.sort();
        QCOMPARE(devices, sorted);
    }
};

QTEST_GUILESS_MAIN(TestPortCatalog)
#include "test_port_catalog.moc"
