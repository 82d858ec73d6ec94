// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetworkSettings.h"

#include "SettingsStore.h"

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
    return ::parseEndpoint(text, DefaultAddress);
}
