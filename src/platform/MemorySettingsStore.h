// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A settings store held in memory, for tests.

#include "SettingsStore.h"

#include <QMap>

class MemorySettingsStore final : public SettingsStore {
public:
    QString value(const QString& section, const QString& key, const QString& fallback = {}) const override
    {
        return values.value(section + u'/' + key, fallback);
    }
    void setValue(const QString& section, const QString& key, const QString& value) override
    {
        values.insert(section + u'/' + key, value);
    }
    bool contains(const QString& section, const QString& key) const override
    {
        return values.contains(section + u'/' + key);
    }
    QMap<QString, QString> values;  // "Section/Key" -> text
};
