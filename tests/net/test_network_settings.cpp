// SPDX-License-Identifier: GPL-3.0-or-later
// "[ADDRESS:]PORT" and the persisted "Network" settings.

#include "MemorySettingsStore.h"
#include "NetworkSettings.h"

#include <QTest>

class TestNetworkSettings : public QObject {
    Q_OBJECT
private slots:
    void endpoints_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("address");
        QTest::addColumn<int>("port");
        QTest::newRow("port alone keeps the loopback") << "4532" << true << "127.0.0.1" << 4532;
        QTest::newRow("loopback and port") << "127.0.0.1:4533" << true << "127.0.0.1" << 4533;
        QTest::newRow("every interface") << "0.0.0.0:4532" << true << "0.0.0.0" << 4532;
        QTest::newRow("localhost") << "localhost:4532" << true << "localhost" << 4532;
        QTest::newRow("IPv6 in brackets") << "[::1]:4532" << true << "::1" << 4532;
        QTest::newRow("blanks around") << " 4532 " << true << "127.0.0.1" << 4532;
        QTest::newRow("highest port") << "65535" << true << "127.0.0.1" << 65535;
        QTest::newRow("port 0") << "0" << false << "" << 0;
        QTest::newRow("port too high") << "65536" << false << "" << 0;
        QTest::newRow("not a number") << "rigctl" << false << "" << 0;
        QTest::newRow("empty") << "" << false << "" << 0;
        QTest::newRow("address without port") << "127.0.0.1:" << false << "" << 0;
        QTest::newRow("port without address") << ":4532" << false << "" << 0;
        QTest::newRow("bare IPv6") << "::1:4532" << false << "" << 0;
        QTest::newRow("negative port") << "-4532" << false << "" << 0;
    }
    void endpoints()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(QString, address);
        QFETCH(int, port);
        const auto e = NetworkSettings::parseEndpoint(text);
        QCOMPARE(e.has_value(), valid);
        if (e) {
            QCOMPARE(e->address, address);
            QCOMPARE(int(e->port), port);
        }
    }

    void defaultsWhenNothingIsStored()
    {
        MemorySettingsStore store;
        const NetworkSettings s = NetworkSettings::load(store);
        QVERIFY(!s.enabled);
        QCOMPARE(s.address, QStringLiteral("127.0.0.1"));
        QCOMPARE(s.port, quint16(4532));
        QCOMPARE(s.idleMinutes, 10);
    }

    void idleMinutesAreStoredAndZeroMeansNever()
    {
        MemorySettingsStore store;
        NetworkSettings s;
        s.idleMinutes = 0;
        s.save(store);
        QCOMPARE(store.values.value("Network/IdleMinutes"), QStringLiteral("0"));
        QCOMPARE(NetworkSettings::load(store).idleMinutes, 0);
        store.setValue("Network", "IdleMinutes", "-3");
        QCOMPARE(NetworkSettings::load(store).idleMinutes, 10);
        store.setValue("Network", "IdleMinutes", "soon");
        QCOMPARE(NetworkSettings::load(store).idleMinutes, 10);
    }

    void savedSettingsAreReadBack()
    {
        MemorySettingsStore store;
        NetworkSettings s;
        s.enabled = true;
        s.address = QStringLiteral("0.0.0.0");
        s.port = 4600;
        s.save(store);
        QCOMPARE(store.values.value("Network/Enabled"), QStringLiteral("1"));
        QCOMPARE(store.values.value("Network/Address"), QStringLiteral("0.0.0.0"));
        QCOMPARE(store.values.value("Network/Port"), QStringLiteral("4600"));
        const NetworkSettings back = NetworkSettings::load(store);
        QVERIFY(back.enabled);
        QCOMPARE(back.address, s.address);
        QCOMPARE(back.port, s.port);
    }

    void aBadStoredPortFallsBackToTheDefault()
    {
        MemorySettingsStore store;
        store.setValue("Network", "Port", "99999");
        store.setValue("Network", "Address", "  ");
        const NetworkSettings s = NetworkSettings::load(store);
        QCOMPARE(s.port, quint16(4532));
        QCOMPARE(s.address, QStringLiteral("127.0.0.1"));
    }
};

QTEST_APPLESS_MAIN(TestNetworkSettings)
#include "test_network_settings.moc"
