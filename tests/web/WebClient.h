// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A browser as the server's tests play it: HTTP requests with the headers a browser would send (or
// would not), and a WebSocket that collects what the panel pushes.

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QSslError>
#include <QTest>
#include <QWebSocket>
#include <memory>

struct HttpResult {
    int status = 0;
    QByteArray body;
    QByteArray setCookie;
    QByteArray header(const QByteArray& name) const { return headers.value(name.toLower()); }
    QMap<QByteArray, QByteArray> headers;
};

class WebClient {
public:
    explicit WebClient(QString base) : base_(std::move(base)) {}

    QString origin() const { return base_; }

    HttpResult request(const QByteArray& method, const QString& path, const QByteArray& body = {},
                       const QMap<QByteArray, QByteArray>& headers = {})
    {
        QNetworkRequest r(QUrl(base_ + path));
        for (auto it = headers.begin(); it != headers.end(); ++it)
            r.setRawHeader(it.key(), it.value());
        if (base_.startsWith(QLatin1String("https"))) {
            QSslConfiguration c = QSslConfiguration::defaultConfiguration();
            c.setPeerVerifyMode(QSslSocket::VerifyNone);  // the test's own certificate
            r.setSslConfiguration(c);
        }
        std::unique_ptr<QNetworkReply> reply(nam_.sendCustomRequest(r, method, body));
        QSignalSpy done(reply.get(), &QNetworkReply::finished);
        if (!done.wait(10000))
            return {};
        HttpResult out;
        out.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        out.body = reply->readAll();
        for (const auto& [n, v] : reply->rawHeaderPairs())
            out.headers.insert(n.toLower(), v);
        out.setCookie = out.headers.value("set-cookie");
        return out;
    }

    // Logs in as the page does: a form with the code, from the panel's own origin.
    HttpResult login(const QByteArray& code)
    {
        HttpResult r = request("POST", QStringLiteral("/login"), "code=" + code,
                               {{"Content-Type", "application/x-www-form-urlencoded"}, {"Origin", base_.toLatin1()}});
        if (r.status == 200)
            cookie = r.setCookie.left(r.setCookie.indexOf(';'));
        return r;
    }

    QByteArray cookie;

private:
    QString base_;
    QNetworkAccessManager nam_;
};

// A panel's WebSocket, opened with a cookie and an Origin of the test's choosing.
class PanelSocket {
public:
    PanelSocket(const QString& url, const QString& origin, const QByteArray& cookie) : ws(origin)
    {
        QObject::connect(&ws, &QWebSocket::textMessageReceived,
                         [this](const QString& m) { messages << QJsonDocument::fromJson(m.toUtf8()).object(); });
        QObject::connect(&ws, &QWebSocket::sslErrors, [this](const QList<QSslError>&) { ws.ignoreSslErrors(); });
        QNetworkRequest r{QUrl(url)};
        if (!cookie.isEmpty())
            r.setRawHeader("Cookie", cookie);
        ws.open(r);
    }

    bool waitOpen()
    {
        if (ws.state() == QAbstractSocket::ConnectedState)
            return true;
        QSignalSpy connected(&ws, &QWebSocket::connected);
        QSignalSpy gone(&ws, &QWebSocket::disconnected);
        for (int i = 0; i < 100 && connected.isEmpty() && gone.isEmpty(); ++i)
            QTest::qWait(50);
        return ws.state() == QAbstractSocket::ConnectedState;
    }

    // The newest message of a type, after waiting for one that satisfies the condition.
    template <typename Pred>
    QJsonObject waitFor(const QString& type, Pred pred, int ms = 5000)
    {
        for (int waited = 0; waited <= ms; waited += 20) {
            for (auto it = messages.crbegin(); it != messages.crend(); ++it)
                if (it->value("t").toString() == type && pred(*it))
                    return *it;
            QTest::qWait(20);
        }
        return {};
    }
    QJsonObject waitFor(const QString& type)
    {
        return waitFor(type, [](const QJsonObject&) { return true; });
    }
    void send(const QByteArray& json) { ws.sendTextMessage(QString::fromUtf8(json)); }

    QWebSocket ws;
    QList<QJsonObject> messages;
};
