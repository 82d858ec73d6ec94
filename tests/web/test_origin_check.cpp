// SPDX-License-Identifier: GPL-3.0-or-later
// The WebSocket's Origin must be the panel's own: the scheme, host and port the request went to.

#include "OriginCheck.h"

#include <QTest>

class TestOriginCheck : public QObject {
    Q_OBJECT
private slots:
    void origins_data()
    {
        QTest::addColumn<QByteArray>("origin");
        QTest::addColumn<QByteArray>("host");
        QTest::addColumn<bool>("secure");
        QTest::addColumn<bool>("own");
        QTest::newRow("same host and port")
            << QByteArray("http://127.0.0.1:8073") << QByteArray("127.0.0.1:8073") << false << true;
        QTest::newRow("host name in other case")
            << QByteArray("http://Shack.local:8073") << QByteArray("shack.local:8073") << false << true;
        QTest::newRow("IPv6") << QByteArray("http://[::1]:8073") << QByteArray("[::1]:8073") << false << true;
        QTest::newRow("default port written or not")
            << QByteArray("https://radio.example") << QByteArray("radio.example:443") << true << true;
        QTest::newRow("another port") << QByteArray("http://127.0.0.1:8080") << QByteArray("127.0.0.1:8073") << false
                                      << false;
        QTest::newRow("another host") << QByteArray("http://evil.example:8073") << QByteArray("127.0.0.1:8073") << false
                                      << false;
        QTest::newRow("localhost is not 127.0.0.1")
            << QByteArray("http://localhost:8073") << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("http page to the https panel")
            << QByteArray("http://127.0.0.1:8073") << QByteArray("127.0.0.1:8073") << true << false;
        QTest::newRow("https page to the http panel")
            << QByteArray("https://127.0.0.1:8073") << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("null origin (a file, a sandbox)")
            << QByteArray("null") << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("no origin") << QByteArray() << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("no host") << QByteArray("http://127.0.0.1:8073") << QByteArray() << false << false;
        QTest::newRow("origin with a path")
            << QByteArray("http://127.0.0.1:8073/x") << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("origin with user info")
            << QByteArray("http://a@127.0.0.1:8073") << QByteArray("127.0.0.1:8073") << false << false;
        QTest::newRow("host suffix") << QByteArray("http://127.0.0.1:80730") << QByteArray("127.0.0.1:8073") << false
                                     << false;
        QTest::newRow("port not a number")
            << QByteArray("http://127.0.0.1:80x3") << QByteArray("127.0.0.1:80x3") << false << false;
        QTest::newRow("file scheme") << QByteArray("file://") << QByteArray("127.0.0.1:8073") << false << false;
    }
    void origins()
    {
        QFETCH(QByteArray, origin);
        QFETCH(QByteArray, host);
        QFETCH(bool, secure);
        QFETCH(bool, own);
        QCOMPARE(isOwnOrigin(origin, host, secure), own);
    }
};

QTEST_GUILESS_MAIN(TestOriginCheck)
#include "test_origin_check.moc"
