#include "SettingsStore.h"

double SettingsStore::number(const QString& section, const QString& key, double fallback) const
{
    return leadingNumber(value(section, key), fallback);
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
