// SPDX-License-Identifier: GPL-3.0-or-later
#include "OriginCheck.h"

#include <optional>

namespace {
constexpr int HttpPort = 80;
constexpr int HttpsPort = 443;

struct HostPort {
    QByteArray host;
    int port;
};

// "name", "name:8073", "[::1]:8073", "127.0.0.1"; the host in lower case.
std::optional<HostPort> splitHostPort(const QByteArray& text, int defaultPort)
{
    if (text.isEmpty())
        return std::nullopt;
    QByteArray host;
    QByteArray rest;
    if (text.startsWith('[')) {
        const qsizetype close = text.indexOf(']');
        if (close < 0)
            return std::nullopt;
        host = text.left(close + 1);
        rest = text.mid(close + 1);
    } else {
        const qsizetype colon = text.indexOf(':');
        host = colon < 0 ? text : text.left(colon);
        rest = colon < 0 ? QByteArray() : text.mid(colon);
    }
    if (host.isEmpty() || host == "[]")
        return std::nullopt;
    int port = defaultPort;
    if (!rest.isEmpty()) {
        if (!rest.startsWith(':') || rest.size() < 2 || rest.size() > 6)
            return std::nullopt;
        bool ok = false;
        port = rest.mid(1).toInt(&ok);
        if (!ok || port < 1 || port > 65535 || rest.mid(1).startsWith('+') || rest.mid(1).startsWith('-'))
            return std::nullopt;
    }
    for (const char c : host) {
        if (static_cast<unsigned char>(c) <= ' ' || c == '/' || c == '@' || c == '?' || c == '#')
            return std::nullopt;
    }
    return HostPort{host.toLower(), port};
}
}  // namespace

bool isOwnOrigin(const QByteArray& origin, const QByteArray& host, bool secure)
{
    const QByteArray scheme = secure ? QByteArrayLiteral("https://") : QByteArrayLiteral("http://");
    if (!origin.toLower().startsWith(scheme))
        return false;  // "null", another scheme, or none at all
    const int defaultPort = secure ? HttpsPort : HttpPort;
    const auto fromOrigin = splitHostPort(origin.mid(scheme.size()), defaultPort);
    const auto requested = splitHostPort(host.trimmed(), defaultPort);
    return fromOrigin && requested && fromOrigin->host == requested->host && fromOrigin->port == requested->port;
}
