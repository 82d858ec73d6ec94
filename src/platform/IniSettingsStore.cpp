#include "IniSettingsStore.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

namespace {
QString executableName()
{
    const QString path = QCoreApplication::applicationFilePath();
    return path.isEmpty() ? QStringLiteral("ft1000cat") : QFileInfo(path).completeBaseName();
}
}  // namespace

IniSettingsStore::IniSettingsStore()
    : settings_(QSettings::IniFormat, QSettings::UserScope, executableName(), executableName())
{
}

IniSettingsStore::IniSettingsStore(const QString& path) : settings_(path, QSettings::IniFormat) {}

QString IniSettingsStore::path(const QString& section, const QString& key)
{
    // Keys such as "Com:" are kept as they are; QSettings escapes them in the file.
    return section + u'/' + key;
}

QString IniSettingsStore::value(const QString& section, const QString& key, const QString& fallback) const
{
    const QVariant v = settings_.value(path(section, key));
    if (!v.isValid())
        return fallback;
    // An unquoted text with commas, as a person types it into the file ("Set=4800,n,8,2"), comes back
    // from the INI reader as a list; it is still one text to us.
    if (v.typeId() == QMetaType::QStringList)
        return v.toStringList().join(u',');
    return v.toString();
}

void IniSettingsStore::setValue(const QString& section, const QString& key, const QString& value)
{
    settings_.setValue(path(section, key), value);
}

bool IniSettingsStore::contains(const QString& section, const QString& key) const
{
    return settings_.contains(path(section, key));
}

void IniSettingsStore::sync()
{
    settings_.sync();
}

QString IniSettingsStore::fileName() const
{
    return settings_.fileName();
}
