// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpResponse.h"

HttpResponse HttpResponse::text(int status, const QByteArray& body)
{
    return HttpResponse{status, QByteArrayLiteral("text/plain; charset=utf-8"), body, {}};
}

QByteArray httpReason(int status)
{
    switch (status) {
        case 101:
            return "Switching Protocols";
        case 200:
            return "OK";
        case 204:
            return "No Content";
        case 400:
            return "Bad Request";
        case 401:
            return "Unauthorized";
        case 403:
            return "Forbidden";
        case 404:
            return "Not Found";
        case 405:
            return "Method Not Allowed";
        case 408:
            return "Request Timeout";
        case 413:
            return "Content Too Large";
        case 415:
            return "Unsupported Media Type";
        case 429:
            return "Too Many Requests";
        case 431:
            return "Request Header Fields Too Large";
        case 501:
            return "Not Implemented";
        case 503:
            return "Service Unavailable";
        case 505:
            return "HTTP Version Not Supported";
        default:
            return "Error";
    }
}

QByteArray HttpResponse::bytes() const
{
    QByteArray out = "HTTP/1.1 " + QByteArray::number(status) + ' ' + httpReason(status) + "\r\n";
    auto add = [&out](const QByteArray& name, const QByteArray& value) { out += name + ": " + value + "\r\n"; };
    if (!contentType.isEmpty())
        add("Content-Type", contentType);
    add("Content-Length", QByteArray::number(body.size()));
    add("Cache-Control", "no-store");
    add("X-Content-Type-Options", "nosniff");
    add("X-Frame-Options", "DENY");
    add("Referrer-Policy", "no-referrer");
    add("Content-Security-Policy",
        "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
        "base-uri 'none'; form-action 'self'; frame-ancestors 'none'");
    for (const auto& [name, value] : extraHeaders)
        add(name, value);
    add("Connection", "close");
    out += "\r\n";
    out += body;
    return out;
}

QByteArray SessionCookie::set(const QByteArray& token, bool secure)
{
    return Name + '=' + token + "; Path=/; HttpOnly; SameSite=Strict" + (secure ? "; Secure" : "");
}

QByteArray SessionCookie::cleared(bool secure)
{
    return Name + "=; Path=/; Max-Age=0; HttpOnly; SameSite=Strict" + (secure ? "; Secure" : "");
}
