// SPDX-License-Identifier: GPL-3.0-or-later
#include "Endpoint.h"

std::optional<quint16> parsePort(const QString& text)
{
    bool ok = false;
    const int port = text.trimmed().toInt(&ok);
    if (!ok || port < 1 || port > 65535)
        return std::nullopt;
    return static_cast<quint16>(port);
}

std::optional<Endpoint> parseEndpoint(const QString& text, const QString& defaultAddress)
{
    const QString t = text.trimmed();
    const int colon = t.lastIndexOf(u':');
    if (colon < 0) {
        const auto port = parsePort(t);
        if (!port)
            return std::nullopt;
        return Endpoint{defaultAddress, *port};
    }
    QString address = t.left(colon).trimmed();
    if (address.startsWith(u'[') && address.endsWith(u']'))
        address = address.mid(1, address.size() - 2);  // "[::1]:4532"
    else if (address.contains(u':'))
        return std::nullopt;  // a bare IPv6 address needs its brackets
    const auto port = parsePort(t.mid(colon + 1));
    if (address.isEmpty() || !port)
        return std::nullopt;
    return Endpoint{address, *port};
}
