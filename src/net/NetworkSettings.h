// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The network server's persisted settings and the "[ADDRESS:]PORT" text of the command line.
//
// Section "Network": "Enabled" ("1" or "0", default "0"), "Address" (default "127.0.0.1", the
// loopback, so only programs on this computer can reach the radio unless the operator says
// otherwise), "Port" (default 4532, rigctld's own), "IdleMinutes" (a client that sends nothing for
// this long is closed, so idle clients cannot hold every place; default 10, 0 never).

#include <QString>
#include <optional>
#include "Endpoint.h"

class SettingsStore;

struct NetworkSettings {
    static constexpr quint16 DefaultPort = 4532;
    static constexpr int DefaultIdleMinutes = 10;
    static constexpr int MaxIdleMinutes = 24 * 60;
    static inline const QString DefaultAddress = QStringLiteral("127.0.0.1");

    bool enabled = false;
    QString address = DefaultAddress;
    quint16 port = DefaultPort;
    int idleMinutes = DefaultIdleMinutes;

    static NetworkSettings load(const SettingsStore& store);
    void save(SettingsStore& store) const;

    // "4532", "127.0.0.1:4532", "0.0.0.0:4532", "[::1]:4532" or "localhost:4532". A text without an
    // address keeps the loopback. Nothing for a port outside 1..65535 or a text that is not of this
    // form.
    using Endpoint = ::Endpoint;
    static std::optional<Endpoint> parseEndpoint(const QString& text);
};

namespace NetworkKey {
inline const QString Section = QStringLiteral("Network");
inline const QString Enabled = QStringLiteral("Enabled");
inline const QString Address = QStringLiteral("Address");
inline const QString Port = QStringLiteral("Port");
inline const QString IdleMinutes = QStringLiteral("IdleMinutes");
}  // namespace NetworkKey
