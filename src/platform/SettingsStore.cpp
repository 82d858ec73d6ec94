// SPDX-License-Identifier: GPL-3.0-or-later
#include "SettingsStore.h"

#include <cmath>
#include <limits>

double SettingsStore::number(const QString& section, const QString& key, double fallback) const
{
    return leadingNumber(value(section, key), fallback);
}

int SettingsStore::wholeNumber(const QString& section, const QString& key, int fallback) const
{
    const double v = number(section, key, fallback);
    if (!std::isfinite(v) || v <= double(std::numeric_limits<int>::min()) - 1 ||
        v >= double(std::numeric_limits<int>::max()) + 1)
        return fallback;
    return static_cast<int>(v);
}

double leadingNumber(const QString& text, double fallback, bool* found)
{
    const QString t = text.trimmed();
    int i = 0;
    const int n = static_cast<int>(t.size());
    if (i < n && (t[i] == u'-' || t[i] == u'+'))
        ++i;
    const int digitsStart = i;
    bool seenDigit = false;
    while (i < n && t[i].isDigit()) {
        ++i;
        seenDigit = true;
    }
    if (i < n && t[i] == u'.') {
        ++i;
        while (i < n && t[i].isDigit()) {
            ++i;
            seenDigit = true;
        }
    }
    if (!seenDigit || i == digitsStart) {
        if (found)
            *found = false;
        return fallback;
    }
    bool ok = false;
    const double v = t.left(i).toDouble(&ok);
    if (found)
        *found = ok;
    return ok ? v : fallback;
}
