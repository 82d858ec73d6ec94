// SPDX-License-Identifier: GPL-3.0-or-later
#include "IniSettingsStore.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryFile>

namespace {
QString executableName()
{
    const QString path = QCoreApplication::applicationFilePath();
    return path.isEmpty() ? QStringLiteral("ft1000cat") : QFileInfo(path).completeBaseName();
}

// The settings file is Qt's own INI text, but written through a format of our own. QSettings replaces
// the file atomically (a temporary file and a rename), yet it takes a write that failed while its last
// buffer went out (a full disk) for a success and puts the cut-short file in place of the old one. Our
// writer checks every byte of the text has gone out before the file is replaced; Qt's INI reader and
// writer do the text itself, on scratch files, so the file stays exactly what QSettings would write.

bool readIni(QIODevice& device, QSettings::SettingsMap& map)
{
    QTemporaryFile scratch;  // a new name every time: QSettings caches what it read by file name
    const QByteArray bytes = device.readAll();
    if (!scratch.open() || scratch.write(bytes) != bytes.size() || !scratch.flush())
        return false;
    scratch.close();
    const QSettings ini(scratch.fileName(), QSettings::IniFormat);
    for (const QString& key : ini.allKeys())
        map.insert(key, ini.value(key));
    return ini.status() == QSettings::NoError;
}

bool writeIni(QIODevice& device, const QSettings::SettingsMap& map)
{
    QTemporaryFile scratch;
    if (!scratch.open())
        return false;
    scratch.close();
    {
        QSettings ini(scratch.fileName(), QSettings::IniFormat);
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            ini.setValue(it.key(), it.value());
        ini.sync();
        if (ini.status() != QSettings::NoError)
            return false;
    }
    QFile text(scratch.fileName());
    if (!text.open(QIODevice::ReadOnly))
        return false;
    QByteArray bytes = text.readAll();
    // The scratch file is written the way that can fail unseen: it must read back as the whole map.
    QBuffer readBack(&bytes);
    readBack.open(QIODevice::ReadOnly);
    QSettings::SettingsMap check;
    if (!readIni(readBack, check) || check != map)
        return false;
    if (device.write(bytes) != bytes.size())
        return false;
    auto* file = qobject_cast<QFileDevice*>(&device);
    return file == nullptr || file->flush();
}

QSettings::Format checkedIniFormat()
{
    static const QSettings::Format format = QSettings::registerFormat(QStringLiteral("ini"), readIni, writeIni);
    return format;
}
}  // namespace

IniSettingsStore::IniSettingsStore()
    : settings_(checkedIniFormat(), QSettings::UserScope, executableName(), executableName())
{
}

IniSettingsStore::IniSettingsStore(const QString& path) : settings_(path, checkedIniFormat()) {}

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
