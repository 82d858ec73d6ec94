// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The per-user settings store: text values by section and key.

#include <QString>

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QString value(const QString& section, const QString& key, const QString& fallback = {}) const = 0;
    virtual void setValue(const QString& section, const QString& key, const QString& value) = 0;
    virtual bool contains(const QString& section, const QString& key) const = 0;
    virtual void sync() {}

    // Numbers are read the forgiving way: the leading number of the text, the fallback when there is none.
    double number(const QString& section, const QString& key, double fallback) const;
    // The same number used as a whole number (its fraction dropped); the fallback also when it does not
    // fit an int, so a mangled file ("Width=99999999999") cannot overflow the conversion.
    int wholeNumber(const QString& section, const QString& key, int fallback) const;
};

// Leading number of a text ("12.5 Khz" -> 12.5, "abc" -> fallback), the way captions and stored values are read.
double leadingNumber(const QString& text, double fallback = 0.0, bool* found = nullptr);
