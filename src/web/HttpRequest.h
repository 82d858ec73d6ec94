// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The panel's HTTP/1.1 requests, read from whatever bytes a browser (or anyone) sends. The panel
// needs little of HTTP: a few GETs, the login's small form, the WebSocket's upgrade. So the head is
// limited to WebLimits::MaxRequestHeadBytes, a body to WebLimits::MaxRequestBodyBytes and must be
// announced by Content-Length (chunked bodies are refused), and anything malformed is refused with
// the status to answer, before the rest of it is read.

#include <QByteArray>
#include <QList>
#include <QPair>

struct HttpRequest {
    QByteArray method;
    QByteArray target;  // as sent: "/", "/login", "/ws?x"
    QByteArray version;
    QList<QPair<QByteArray, QByteArray>> headers;  // names in lower case, values trimmed
    QByteArray body;

    // The first header of that (lower-case) name; empty when there is none.
    QByteArray header(const QByteArray& name) const;
    bool hasHeader(const QByteArray& name) const;
    // The target without its query.
    QByteArray path() const;
    // Whether the request asks to become a WebSocket.
    bool isWebSocketUpgrade() const;
    // A cookie of the Cookie header; empty when there is none.
    QByteArray cookie(const QByteArray& name) const;
};

class HttpRequestParser {
public:
    enum class Status { NeedMore, Complete, Refused };

    // Adds bytes that arrived. Once Complete or Refused, further bytes are not looked at.
    Status feed(const QByteArray& bytes);
    Status status() const { return status_; }
    const HttpRequest& request() const { return request_; }
    // When Refused: the status code to answer (400, 413, 431, 501, 505).
    int refusal() const { return refusal_; }

private:
    Status refuse(int code);
    Status parseHead(const QByteArray& head);

    QByteArray buffer_;
    Status status_ = Status::NeedMore;
    int refusal_ = 0;
    bool haveHead_ = false;
    qsizetype bodyStart_ = 0;
    qsizetype bodyLength_ = 0;
    HttpRequest request_;
};
