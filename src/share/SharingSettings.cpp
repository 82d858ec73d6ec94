// SPDX-License-Identifier: GPL-3.0-or-later
#include "SharingSettings.h"

#include "SettingsStore.h"

#include <QStringList>

namespace {
const QString On = QStringLiteral("1");
const QString Off = QStringLiteral("0");

bool isOn(const SettingsStore& store, const QString& key)
{
    return store.value(SharingKey::Section, key, Off).trimmed() == On;
}
}  // namespace

SharingSettings SharingSettings::load(const SettingsStore& store)
{
    SharingSettings s;
    s.native = isOn(store, SharingKey::Native);
    s.text = isOn(store, SharingKey::Text);
    return s;
}

void SharingSettings::save(SettingsStore& store) const
{
    store.setValue(SharingKey::Section, SharingKey::Native, native ? On : Off);
    store.setValue(SharingKey::Section, SharingKey::Text, text ? On : Off);
}

std::optional<SharingSettings> SharingSettings::parseList(const QString& list)
{
    SharingSettings s;
    const QStringList names = list.split(u',');
    for (const QString& raw : names) {
        const QString name = raw.trimmed().toLower();
        if (name == SharingKey::NativeName)
            s.native = true;
        else if (name == SharingKey::TextName)
            s.text = true;
        else
            return std::nullopt;
    }
    return s;
}
