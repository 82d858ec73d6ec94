// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where a server of the program listens, as an operator writes it: "4532", "127.0.0.1:4532",
// "0.0.0.0:4532", "[::1]:4532" or "localhost:4532".

#include <QString>
#include <optional>

struct Endpoint {
    QString address;
    quint16 port;
};

// A port number from 1 to 65535; nothing for any other text.
std::optional<quint16> parsePort(const QString& text);
// "[ADDRESS:]PORT", the address defaultAddress when none is written; nothing for a text that is not
// one (a bare IPv6 address needs its brackets).
std::optional<Endpoint> parseEndpoint(const QString& text, const QString& defaultAddress);
