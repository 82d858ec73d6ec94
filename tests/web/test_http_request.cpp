// SPDX-License-Identifier: GPL-3.0-or-later
// The panel's HTTP requests: what is read, what is refused (and with which status), and the answers.

#include "HttpRequest.h"
#include "HttpResponse.h"
#include "WebLimits.h"

#include <QTest>

using Status = HttpRequestParser::Status;

class TestHttpRequest : public QObject {
    Q_OBJECT
private slots:
    void aGetIsRead()
    {
        HttpRequestParser p;
        QCOMPARE(p.feed("GET /panel.js?v=1 HTTP/1.1\r\nHost: 127.0.0.1:8073\r\nCookie: a=1; ft1000panel=abc ; b=2"
                        "\r\n\r\n"),
                 Status::Complete);
        const HttpRequest& r = p.request();
        QCOMPARE(r.method, QByteArray("GET"));
        QCOMPARE(r.target, QByteArray("/panel.js?v=1"));
        QCOMPARE(r.path(), QByteArray("/panel.js"));
        QCOMPARE(r.header("host"), QByteArray("127.0.0.1:8073"));
        QCOMPARE(r.cookie("ft1000panel"), QByteArray("abc"));
        QCOMPARE(r.cookie("c"), QByteArray());
        QVERIFY(!r.isWebSocketUpgrade());
    }

    void aRequestMayComeInPieces()
    {
        HttpRequestParser p;
        const QByteArray all =
            "POST /login HTTP/1.1\r\nHost: h\r\nContent-Length: 37\r\n\r\ncode=0123456789abcdef0123456789abcdef";
        for (int i = 0; i < all.size() - 1; ++i)
            QCOMPARE(p.feed(all.mid(i, 1)), Status::NeedMore);
        QCOMPARE(p.feed(all.right(1)), Status::Complete);
        QCOMPARE(p.request().body, QByteArray("code=0123456789abcdef0123456789abcdef"));
    }

    void aWebSocketUpgradeIsRecognised()
    {
        HttpRequestParser p;
        p.feed(
            "GET /ws HTTP/1.1\r\nHost: h\r\nConnection: keep-alive, Upgrade\r\nUpgrade: WebSocket\r\n"
            "Origin: http://h\r\n\r\n");
        QVERIFY(p.request().isWebSocketUpgrade());
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("status");
        QTest::newRow("a TLS hello, refused before any line ends") << QByteArray("\x16\x03\x01\x02\x00\x01", 6) << 400;
        QTest::newRow("a leading blank") << QByteArray(" GET / HTTP/1.1\r\n") << 400;
        QTest::newRow("no version") << QByteArray("GET /\r\nHost: h\r\n\r\n") << 400;
        QTest::newRow("HTTP/2") << QByteArray("GET / HTTP/2.0\r\nHost: h\r\n\r\n") << 505;
        QTest::newRow("absolute target (a proxy request)")
            << QByteArray("GET http://other/ HTTP/1.1\r\nHost: h\r\n\r\n") << 400;
        QTest::newRow("no Host in 1.1") << QByteArray("GET / HTTP/1.1\r\n\r\n") << 400;
        QTest::newRow("header without colon") << QByteArray("GET / HTTP/1.1\r\nHost h\r\n\r\n") << 400;
        QTest::newRow("folded header") << QByteArray("GET / HTTP/1.1\r\nHost: h\r\n x\r\n\r\n") << 400;
        QTest::newRow("bare LF") << QByteArray("GET / HTTP/1.1\nHost: h\r\n\r\n") << 400;
        QTest::newRow("control byte in a value") << QByteArray("GET / HTTP/1.1\r\nHost: h\x01\r\n\r\n") << 400;
        QTest::newRow("chunked body") << QByteArray(
                                             "POST /login HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n")
                                      << 501;
        QTest::newRow("two lengths") << QByteArray(
                                            "POST /login HTTP/1.1\r\nHost: h\r\nContent-Length: 1\r\n"
                                            "Content-Length: 1\r\n\r\nx")
                                     << 400;
        QTest::newRow("negative length") << QByteArray("POST /login HTTP/1.1\r\nHost: h\r\nContent-Length: -1\r\n\r\n")
                                         << 400;
        QTest::newRow("body too large") << QByteArray("POST /login HTTP/1.1\r\nHost: h\r\nContent-Length: 1025\r\n\r\n")
                                        << 413;
        QTest::newRow("head too large") << (QByteArray("GET / HTTP/1.1\r\nHost: h\r\nX: ") +
                                            QByteArray(WebLimits::MaxRequestHeadBytes, 'a'))
                                        << 431;
    }
    void refusals()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, status);
        HttpRequestParser p;
        QCOMPARE(p.feed(bytes), Status::Refused);
        QCOMPARE(p.refusal(), status);
        QCOMPARE(p.feed("more"), Status::Refused);
    }

    void anEndlessHeadIsRefusedBeforeItEnds()
    {
        HttpRequestParser p;
        p.feed("GET / HTTP/1.1\r\n");
        Status s = Status::NeedMore;
        int fed = 0;
        while (s == Status::NeedMore && fed < 10 * WebLimits::MaxRequestHeadBytes) {
            s = p.feed("X-Filler: aaaaaaaaaaaaaaaa\r\n");
            fed += 28;
        }
        QCOMPARE(s, Status::Refused);
        QCOMPARE(p.refusal(), 431);
        QVERIFY(fed <= WebLimits::MaxRequestHeadBytes + 28);
    }

    void aResponseIsWholeAndClosesTheConnection()
    {
        HttpResponse r{200, "text/html; charset=utf-8", "<p>x</p>", {{"Set-Cookie", SessionCookie::set("t", false)}}};
        const QByteArray b = r.bytes();
        QVERIFY(b.startsWith("HTTP/1.1 200 OK\r\n"));
        QVERIFY(b.contains("\r\nContent-Length: 8\r\n"));
        QVERIFY(b.contains("\r\nConnection: close\r\n"));
        QVERIFY(b.contains("\r\nX-Frame-Options: DENY\r\n"));
        QVERIFY(b.contains("frame-ancestors 'none'"));
        QVERIFY(b.contains("\r\nSet-Cookie: ft1000panel=t; Path=/; HttpOnly; SameSite=Strict\r\n"));
        QVERIFY(b.endsWith("\r\n\r\n<p>x</p>"));
    }

    void theCookieIsSecureOverHttps()
    {
        QVERIFY(SessionCookie::set("t", true).endsWith("; Secure"));
        QVERIFY(SessionCookie::cleared(false).contains("Max-Age=0"));
    }
};

QTEST_GUILESS_MAIN(TestHttpRequest)
#include "test_http_request.moc"
