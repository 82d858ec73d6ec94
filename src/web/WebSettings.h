// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The web panel's persisted settings and the "[ADDRESS:]PORT" text of the command line.
//
// Section "Web": "Enabled" ("1" or "0", default "0": the panel is off until the operator turns it
// on), "Address" (default "127.0.0.1", so only this computer reaches it unless the operator says
// otherwise), "Port" (default 8073), "ControlCode" and "ViewCode" (the access codes, made on first
// use), "CertFile" and "KeyFile" (PEM files; with both the panel serves HTTPS and WSS only).

#include "AccessCodes.h"
#include "Endpoint.h"

#include <QString>
#include <optional>

class SettingsStore;

struct WebSettings {
    static constexpr quint16 DefaultPort = 8073;
    static inline const QString DefaultAddress = QStringLiteral("127.0.0.1");

    bool enabled = false;
    QString address = DefaultAddress;
    quint16 port = DefaultPort;
    AccessCodes codes;
    QString certFile;
    QString keyFile;

    static WebSettings load(const SettingsStore& store);
    void save(SettingsStore& store) const;
    // Makes a code that is missing or not of a code's form; true when one was made.
    bool completeCodes();
    bool secure() const { return !certFile.isEmpty() && !keyFile.isEmpty(); }

    using Endpoint = ::Endpoint;
    // "8073", "127.0.0.1:8073", "0.0.0.0:8073", "[::1]:8073" or "localhost:8073"; a text without an
    // address keeps the loopback. Nothing for a port outside 1..65535 or a text not of this form.
    static std::optional<Endpoint> parseEndpoint(const QString& text);
};

// Whether listening there keeps the panel to this computer.
bool isLoopbackAddress(const QString& address);

namespace WebKey {
inline const QString Section = QStringLiteral("Web");
inline const QString Enabled = QStringLiteral("Enabled");
inline const QString Address = QStringLiteral("Address");
inline const QString Port = QStringLiteral("Port");
inline const QString ControlCode = QStringLiteral("ControlCode");
inline const QString ViewCode = QStringLiteral("ViewCode");
inline const QString CertFile = QStringLiteral("CertFile");
inline const QString KeyFile = QStringLiteral("KeyFile");
}  // namespace WebKey
