// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkSettings.h"

#include "SettingsStore.h"

namespace {
std::optional<quint16> parsePort(const QString& text)
{
    bool ok = false;
    const int port = text.trimmed().toInt(&ok);
    if (!ok || port < 1 || port > 65535)
        return std::nullopt;
    return static_cast<quint16>(port);
}
}  // namespace

NetworkSettings NetworkSettings::load(const SettingsStore& store)
{
    using namespace NetworkKey;
    NetworkSettings s;
    s.enabled = store.value(Section, Enabled, QStringLiteral("0")).trimmed() == QLatin1String("1");
    const QString address = store.value(Section, Address, DefaultAddress).trimmed();
    s.address = address.isEmpty() ? DefaultAddress : address;
    s.port = parsePort(store.value(Section, Port)).value_or(DefaultPort);
    bool ok = false;
    const int idle = store.value(Section, IdleMinutes).trimmed().toInt(&ok);
    s.idleMinutes = ok && idle >= 0 && idle <= MaxIdleMinutes ? idle : DefaultIdleMinutes;
    return s;
}

void NetworkSettings::save(SettingsStore& store) const
{
    using namespace NetworkKey;
    store.setValue(Section, Enabled, enabled ? QStringLiteral("1") : QStringLiteral("0"));
    store.setValue(Section, Address, address);
    store.setValue(Section, Port, QString::number(port));
    store.setValue(Section, IdleMinutes, QString::number(idleMinutes));
}

std::optional<NetworkSettings::Endpoint> NetworkSettings::parseEndpoint(const QString& text)
{
    const QString t = text.trimmed();
    const int colon = t.lastIndexOf(u':');
    if (colon < 0) {
        const auto port = parsePort(t);
        if (!port)
            return std::nullopt;
        return Endpoint{DefaultAddress, *port};
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
