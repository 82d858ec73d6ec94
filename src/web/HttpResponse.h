// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The panel's answers: a whole HTTP/1.1 response as bytes, the connection closed after it. Every
// answer forbids caching and framing and sends no referrer; the page and its scripts come only from
// the panel itself.

#include <QByteArray>
#include <QList>
#include <QPair>

struct HttpResponse {
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> extraHeaders;

    static HttpResponse text(int status, const QByteArray& body);
    QByteArray bytes() const;
};

// The reason phrase of a status code the panel answers with.
QByteArray httpReason(int status);

namespace SessionCookie {
inline const QByteArray Name = QByteArrayLiteral("ft1000panel");
// Set-Cookie for a new session (Secure over HTTPS).
QByteArray set(const QByteArray& token, bool secure);
// Set-Cookie that removes it.
QByteArray cleared(bool secure);
}  // namespace SessionCookie
