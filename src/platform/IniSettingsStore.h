// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The settings store on QSettings: a per-user INI file named after the executable.

#include "SettingsStore.h"

#include <QSettings>

class IniSettingsStore final : public SettingsStore {
public:
    IniSettingsStore();                              // per-user file, application name = executable name
    explicit IniSettingsStore(const QString& path);  // an explicit file (tests, portable use)
    QString value(const QString& section, const QString& key, const QString& fallback = {}) const override;
    void setValue(const QString& section, const QString& key, const QString& value) override;
    bool contains(const QString& section, const QString& key) const override;
    void sync() override;
    QString fileName() const;

private:
    static QString path(const QString& section, const QString& key);
    mutable QSettings settings_;
};
