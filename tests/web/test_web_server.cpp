// SPDX-License-Identifier: GPL-3.0-or-later
// The web panel's server over real sockets against a fake radio: the page, the login and its
// lock-out, the WebSocket's refusals, the state pushed, the commands passed on, the transmit key's
// rules, the limits, renewed codes and HTTPS.

#include "FakeRig.h"
#include "RealClock.h"
#include "WebClient.h"
#include "WebLimits.h"
#include "WebServer.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {
const QByteArray ControlCode = "0123456789abcdef0123456789abcdef";
const QByteArray ViewCode = "fedcba9876543210fedcba9876543210";

struct Served {
    Served()
    {
        rig.authorized = true;
        server.setCodes(AccessCodes{ControlCode, ViewCode});
        QString error;
        listening = server.listen(QStringLiteral("127.0.0.1"), 0, std::nullopt, &error);
        if (!listening)
            qWarning() << error;
        base = QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort());
    }
    QString wsUrl() const { return QStringLiteral("ws://127.0.0.1:%1/ws").arg(server.serverPort()); }

    FakeRig rig;
    RealClock clock;
    WebServer server{rig, clock};
    bool listening = false;
    QString base;
};

bool tuned(const QJsonObject& state, qint64 hz)
{
    return state.value("a").toObject().value("hz").toInteger() == hz;
}
}  // namespace

class TestWebServer : public QObject {
    Q_OBJECT
private slots:
    void thePageIsServedWithoutACodeAndForbidsFraming()
    {
        Served s;
        QVERIFY(s.listening);
        WebClient browser(s.base);
        const HttpResult page = browser.request("GET", "/");
        QCOMPARE(page.status, 200);
        QVERIFY(page.header("content-type").startsWith("text/html"));
        QVERIFY(page.body.contains("panel.js"));
        QVERIFY(page.header("content-security-policy").contains("frame-ancestors 'none'"));
        QCOMPARE(browser.request("GET", "/panel.js").status, 200);
        QCOMPARE(browser.request("GET", "/panel.css").status, 200);
        QCOMPARE(browser.request("GET", "/settings.ini").status, 404);
        QCOMPARE(browser.request("DELETE", "/").status, 405);
    }

    void aValidCodeBecomesAStrictHttpOnlyCookie()
    {
        Served s;
        WebClient browser(s.base);
        const HttpResult r = browser.login(ControlCode);
        QCOMPARE(r.status, 200);
        QVERIFY(r.setCookie.contains("HttpOnly"));
        QVERIFY(r.setCookie.contains("SameSite=Strict"));
        QVERIFY(!r.setCookie.contains(ControlCode));
        QCOMPARE(s.server.sessionCount(), 1);
    }

    void aWrongCodeIsRefusedAndFiveLockTheAddressOut()
    {
        Served s;
        WebClient browser(s.base);
        for (int i = 0; i < WebLimits::LockoutFailures; ++i)
            QCOMPARE(browser.login("00000000000000000000000000000000").status, 403);
        const HttpResult locked = browser.login(ControlCode);  // even the right code, for a minute
        QCOMPARE(locked.status, 429);
        QVERIFY(locked.header("retry-after").toInt() > 0);
        QCOMPARE(s.server.sessionCount(), 0);
    }

    void aLoginFromAnotherSitesPageIsRefused()
    {
        Served s;
        WebClient browser(s.base);
        const HttpResult r =
            browser.request("POST", "/login", "code=" + ControlCode,
                            {{"Content-Type", "application/x-www-form-urlencoded"}, {"Origin", "http://evil.example"}});
        QCOMPARE(r.status, 403);
        QCOMPARE(s.server.sessionCount(), 0);
    }

    void theWebSocketNeedsASession()
    {
        Served s;
        PanelSocket ws(s.wsUrl(), s.base, QByteArray());
        QVERIFY(!ws.waitOpen());
        QCOMPARE(s.server.panelCount(), 0);
    }

    void theWebSocketFromAnotherOriginIsRefused()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), QStringLiteral("http://evil.example"), browser.cookie);
        QVERIFY(!ws.waitOpen());
        QCOMPARE(s.server.panelCount(), 0);
        QVERIFY(s.rig.open.empty());
    }

    void aPanelGetsTheStateAndEveryChange()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        QVERIFY(!ws.waitFor("hello").isEmpty());
        QVERIFY(tuned(ws.waitFor("state"), 14074000));
        s.rig.values.vfoAHz = 7010000;
        s.server.publishState();
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return tuned(o, 7010000); }).isEmpty());
        QCOMPARE(s.server.panelCount(), 1);
        QCOMPARE(s.rig.open.size(), size_t(1));
    }

    void aControlSessionsCommandsReachTheRadio()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        ws.waitFor("state");
        ws.send(R"({"t":"tune","vfo":"A","hz":14250000})");
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return tuned(o, 14250000); }).isEmpty());
        ws.send(R"({"t":"step","vfo":"A","hz":100})");
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return tuned(o, 14250100); }).isEmpty());
        ws.send(R"({"t":"mode","vfo":"A","mode":2})");
        ws.send(R"({"t":"split","on":true})");
        ws.send(R"({"t":"band","index":3})");
        ws.send(R"({"t":"recall","channel":12})");
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return tuned(o, 7045000); }).isEmpty());
        QVERIFY(s.rig.calls.contains("freq A 14250000"));
        QVERIFY(s.rig.calls.contains("freq A 14250100"));
        QVERIFY(s.rig.calls.contains("mode A 2"));
        QVERIFY(s.rig.calls.contains("split 1"));
        QVERIFY(s.rig.calls.contains("freq A 7045000"));
        QVERIFY(s.rig.calls.contains("send 00 00 00 0C 02"));
    }

    void tuningThatCameTogetherGoesOutOnce()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        ws.waitFor("state");
        s.rig.busy = true;  // the radio takes nothing for now: the wheel's steps pile up as one target
        for (int i = 0; i < 50; ++i)
            ws.send(R"({"t":"step","vfo":"A","hz":10})");
        QTest::qWait(300);
        s.rig.busy = false;
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return tuned(o, 14074500); }).isEmpty());
        QCOMPARE(s.rig.calls.filter("freq A").size(), 1);
        QCOMPARE(s.rig.calls.filter("freq A").first(), QStringLiteral("freq A 14074500"));
    }

    void aViewOnlySessionCannotSendAnything()
    {
        Served s;
        WebClient browser(s.base);
        QCOMPARE(browser.login(ViewCode).status, 200);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        QCOMPARE(ws.waitFor("state").value("access").toString(), QStringLiteral("view"));
        ws.send(R"({"t":"tune","vfo":"A","hz":14250000})");
        ws.send(R"({"t":"ptt","on":true})");
        QVERIFY(!ws.waitFor("refused").isEmpty());
        QTest::qWait(200);
        QVERIFY(s.rig.calls.isEmpty());
        QVERIFY(!s.rig.values.ptt);
    }

    void aBadMessageIsAnsweredAndATooLongOneEndsTheSession()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        ws.send("not json");
        QVERIFY(ws.waitFor("refused").value("why").toString().contains("not JSON"));
        QVERIFY(ws.ws.state() == QAbstractSocket::ConnectedState);
        QSignalSpy gone(&ws.ws, &QWebSocket::disconnected);
        const QByteArray tooLong = QByteArray("{\"t\":\"tune\",\"vfo\":\"A\",\"hz\":14250000,\"pad\":\"") +
                                   QByteArray(WebLimits::MaxMessageBytes, 'x') + "\"}";
        ws.send(tooLong);
        QTRY_VERIFY_WITH_TIMEOUT(!gone.isEmpty(), 5000);
        QTRY_COMPARE(s.server.panelCount(), 0);
        QVERIFY(s.rig.calls.isEmpty());
    }

    void theKeyIsHeldOnlyWhileRepeatedAndAuthorised()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        ws.waitFor("state");

        s.rig.authorized = false;
        ws.send(R"({"t":"ptt","on":true})");
        QVERIFY(ws.waitFor("refused").value("why").toString().contains("Authorize Tx"));
        QVERIFY(!s.rig.values.ptt);
        ws.send(R"({"t":"ptt","on":false})");

        s.rig.authorized = true;
        ws.send(R"({"t":"ptt","on":true})");
        QTRY_VERIFY(s.rig.values.ptt);
        QVERIFY(!ws.waitFor("state", [](const QJsonObject& o) { return o.value("keyed").toBool(); }).isEmpty());
        // The page stops repeating (its tab frozen, its network gone): the key is released.
        QTRY_VERIFY_WITH_TIMEOUT(!s.rig.values.ptt, 5000);
        QCOMPARE(s.rig.calls.last(), QStringLiteral("ptt 0"));
    }

    void closingThePanelReleasesItsKey()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        auto ws = std::make_unique<PanelSocket>(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws->waitOpen());
        ws->send(R"({"t":"ptt","on":true})");
        QTRY_VERIFY(s.rig.values.ptt);
        ws->ws.close();
        QTRY_VERIFY_WITH_TIMEOUT(!s.rig.values.ptt, 5000);
        QTRY_COMPARE(s.server.panelCount(), 0);
        QVERIFY(s.rig.open.empty());
    }

    void aRenewedCodeEndsItsSessions()
    {
        Served s;
        WebClient control(s.base), viewer(s.base);
        control.login(ControlCode);
        viewer.login(ViewCode);
        PanelSocket c(s.wsUrl(), s.base, control.cookie);
        PanelSocket v(s.wsUrl(), s.base, viewer.cookie);
        QVERIFY(c.waitOpen());
        QVERIFY(v.waitOpen());
        c.send(R"({"t":"ptt","on":true})");
        QTRY_VERIFY(s.rig.values.ptt);
        QSignalSpy gone(&c.ws, &QWebSocket::disconnected);
        s.server.setCodes(AccessCodes{"11111111111111111111111111111111", ViewCode});
        QTRY_VERIFY_WITH_TIMEOUT(!gone.isEmpty(), 5000);
        QVERIFY(!s.rig.values.ptt);
        QCOMPARE(s.server.sessionCount(), 1);
        QVERIFY(v.ws.state() == QAbstractSocket::ConnectedState);
        QCOMPARE(control.login(ControlCode).status, 403);  // the old code is gone
        PanelSocket again(s.wsUrl(), s.base, control.cookie);
        QVERIFY(!again.waitOpen());
    }

    void atMostEightSessions()
    {
        Served s;
        std::vector<std::unique_ptr<WebClient>> browsers;
        std::vector<std::unique_ptr<PanelSocket>> panels;
        for (int i = 0; i < WebLimits::MaxSessions; ++i) {
            browsers.push_back(std::make_unique<WebClient>(s.base));
            QCOMPARE(browsers.back()->login(ViewCode).status, 200);
            panels.push_back(std::make_unique<PanelSocket>(s.wsUrl(), s.base, browsers.back()->cookie));
            QVERIFY(panels.back()->waitOpen());
        }
        QCOMPARE(s.server.panelCount(), WebLimits::MaxSessions);
        WebClient ninth(s.base);
        QCOMPARE(ninth.login(ViewCode).status, 503);
        panels.front()->ws.close();
        QTRY_COMPARE(s.server.panelCount(), WebLimits::MaxSessions - 1);
        QCOMPARE(ninth.login(ViewCode).status, 200);  // the closed panel's session makes room
    }

    void logoutEndsTheSessionAndItsPanel()
    {
        Served s;
        WebClient browser(s.base);
        browser.login(ControlCode);
        PanelSocket ws(s.wsUrl(), s.base, browser.cookie);
        QVERIFY(ws.waitOpen());
        QSignalSpy gone(&ws.ws, &QWebSocket::disconnected);
        const HttpResult r =
            browser.request("POST", "/logout", {}, {{"Cookie", browser.cookie}, {"Origin", s.base.toLatin1()}});
        QCOMPARE(r.status, 204);
        QVERIFY(r.setCookie.contains("Max-Age=0"));
        QTRY_VERIFY_WITH_TIMEOUT(!gone.isEmpty(), 5000);
        QCOMPARE(s.server.sessionCount(), 0);
    }

    void withACertificateOnlyHttpsIsServed()
    {
        QTemporaryDir dir;
        const QString cert = dir.filePath("cert.pem");
        const QString key = dir.filePath("key.pem");
        const int rc =
            QProcess::execute(QStringLiteral("openssl"),
                              {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                               "-keyout", key, "-out", cert, "-days", "2", "-subj", "/CN=127.0.0.1"});
        if (rc != 0)
            QSKIP("openssl is not installed: no certificate to test HTTPS with");
        FakeRig rig;
        RealClock clock;
        WebServer server(rig, clock);
        server.setCodes(AccessCodes{ControlCode, ViewCode});
        QString error;
        QVERIFY2(server.listen("127.0.0.1", 0, WebServer::Tls{cert, key}, &error), qPrintable(error));
        QVERIFY(server.isSecure());
        const QString base = QStringLiteral("https://127.0.0.1:%1").arg(server.serverPort());
        WebClient browser(base);
        const HttpResult r = browser.login(ControlCode);
        QCOMPARE(r.status, 200);
        QVERIFY(r.setCookie.contains("; Secure"));
        PanelSocket ws(QStringLiteral("wss://127.0.0.1:%1/ws").arg(server.serverPort()), base, browser.cookie);
        QVERIFY(ws.waitOpen());
        QVERIFY(tuned(ws.waitFor("state"), 14074000));
        WebClient plain(QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort()));
        QCOMPARE(plain.request("GET", "/").status, 0);  // no plain HTTP on that port
    }

    void aMissingCertificateStartsNothing()
    {
        FakeRig rig;
        RealClock clock;
        WebServer server(rig, clock);
        QString error;
        QVERIFY(
            !server.listen("127.0.0.1", 0, WebServer::Tls{"/nonexistent/cert.pem", "/nonexistent/key.pem"}, &error));
        QVERIFY(error.contains("certificate"));
        QVERIFY(!server.isListening());
    }
};

QTEST_GUILESS_MAIN(TestWebServer)
#include "test_web_server.moc"
