// SPDX-License-Identifier: GPL-3.0-or-later
// The persisted "Web" settings, their defaults, the codes made on first use, and "[ADDRESS:]PORT".

#include "MemorySettingsStore.h"
#include "WebSettings.h"

#include <QTest>

class TestWebSettings : public QObject {
    Q_OBJECT
private slots:
    void offOnTheLoopbackByDefault()
    {
        MemorySettingsStore store;
        const WebSettings s = WebSettings::load(store);
        QVERIFY(!s.enabled);
        QCOMPARE(s.address, QStringLiteral("127.0.0.1"));
        QCOMPARE(s.port, quint16(8073));
        QVERIFY(!s.secure());
        QVERIFY(s.codes.control.isEmpty());
    }

    void savedAndLoadedUnderWeb()
    {
        MemorySettingsStore store;
        WebSettings s;
        s.enabled = true;
        s.address = QStringLiteral("0.0.0.0");
        s.port = 8443;
        s.completeCodes();
        s.certFile = QStringLiteral("/etc/panel/cert.pem");
        s.keyFile = QStringLiteral("/etc/panel/key.pem");
        s.save(store);
        QCOMPARE(store.values.value("Web/Enabled"), QStringLiteral("1"));
        QCOMPARE(store.values.value("Web/Port"), QStringLiteral("8443"));
        const WebSettings back = WebSettings::load(store);
        QVERIFY(back.enabled);
        QCOMPARE(back.address, s.address);
        QCOMPARE(back.port, s.port);
        QCOMPARE(back.codes.control, s.codes.control);
        QCOMPARE(back.codes.viewOnly, s.codes.viewOnly);
        QVERIFY(back.secure());
    }

    void codesAreMadeWhenMissingOrMangled()
    {
        WebSettings s;
        QVERIFY(s.completeCodes());
        QVERIFY(AccessCodes::wellFormed(s.codes.control));
        QVERIFY(AccessCodes::wellFormed(s.codes.viewOnly));
        QVERIFY(s.codes.control != s.codes.viewOnly);
        const QByteArray control = s.codes.control;
        QVERIFY(!s.completeCodes());
        QCOMPARE(s.codes.control, control);
        s.codes.viewOnly = "1234";
        QVERIFY(s.completeCodes());
        QCOMPARE(s.codes.control, control);
        QVERIFY(AccessCodes::wellFormed(s.codes.viewOnly));
        s.codes.viewOnly = s.codes.control;  // one code for both would make viewing control
        QVERIFY(s.completeCodes());
        QVERIFY(s.codes.control != s.codes.viewOnly);
    }

    void badStoredValuesFallBack()
    {
        MemorySettingsStore store;
        store.values.insert("Web/Port", "99999");
        store.values.insert("Web/Address", "  ");
        store.values.insert("Web/Enabled", "yes");
        const WebSettings s = WebSettings::load(store);
        QCOMPARE(s.port, quint16(8073));
        QCOMPARE(s.address, QStringLiteral("127.0.0.1"));
        QVERIFY(!s.enabled);
    }

    void endpoints_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("address");
        QTest::addColumn<int>("port");
        QTest::newRow("port alone keeps the loopback") << "8073" << true << "127.0.0.1" << 8073;
        QTest::newRow("every interface") << "0.0.0.0:8080" << true << "0.0.0.0" << 8080;
        QTest::newRow("IPv6 in brackets") << "[::1]:8073" << true << "::1" << 8073;
        QTest::newRow("bare IPv6") << "::1:8073" << false << "" << 0;
        QTest::newRow("port 0") << "0" << false << "" << 0;
        QTest::newRow("not a number") << "web" << false << "" << 0;
        QTest::newRow("no port") << "127.0.0.1:" << false << "" << 0;
    }
    void endpoints()
    {
        QFETCH(QString, text);
        QFETCH(bool, valid);
        QFETCH(QString, address);
        QFETCH(int, port);
        const auto e = WebSettings::parseEndpoint(text);
        QCOMPARE(e.has_value(), valid);
        if (e) {
            QCOMPARE(e->address, address);
            QCOMPARE(int(e->port), port);
        }
    }

    void loopback_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("loopback");
        QTest::newRow("127.0.0.1") << "127.0.0.1" << true;
        QTest::newRow("127.1.2.3") << "127.1.2.3" << true;
        QTest::newRow("localhost") << "localhost" << true;
        QTest::newRow("::1") << "::1" << true;
        QTest::newRow("every interface") << "0.0.0.0" << false;
        QTest::newRow("a LAN address") << "192.168.1.5" << false;
        QTest::newRow("IPv6 any") << "::" << false;
        QTest::newRow("127 as a name part") << "127.example" << false;
    }
    void loopback()
    {
        QFETCH(QString, address);
        QFETCH(bool, loopback);
        QCOMPARE(isLoopbackAddress(address), loopback);
    }
};

QTEST_GUILESS_MAIN(TestWebSettings)
#include "test_web_settings.moc"
