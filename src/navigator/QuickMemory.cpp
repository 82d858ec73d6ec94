// SPDX-License-Identifier: GPL-3.0-or-later
#include "QuickMemory.h"

#include "NumberFormat.h"
#include "SettingsStore.h"

#include <cmath>

QStringList QuickMemory::decodeCaptions(const QString& stored)
{
    QStringList l;
    for (int i = 0; i < Count; ++i)
        l << stored.mid(CaptionField * i, CaptionField).trimmed();
    return l;
}

QList<int> QuickMemory::decodeModes(const QString& stored)
{
    QList<int> l;
    for (int i = 0; i < Count; ++i)
        l << static_cast<int>(leadingNumber(stored.mid(ModeField * i, ModeField), 0));
    return l;
}

QString QuickMemory::encodeCaptions(const QStringList& captions)
{
    QString s;
    for (int i = 0; i < Count; ++i)
        s += captions.value(i).leftJustified(CaptionField, u' ', true);
    return s;
}

QString QuickMemory::encodeModes(const QList<int>& modes)
{
    QString s;
    for (int i = 0; i < Count; ++i)
        s += QString::number(modes.value(i)).rightJustified(ModeField, u' ', true);
    return s;
}

QString QuickMemory::captionFor(double kHz)
{
    return formatNumber(kHz, Pattern::QuickMemory);
}

bool QuickMemory::recallable(const QString& caption)
{
    return !caption.isEmpty() && caption != Unused;
}

std::optional<qint64> QuickMemory::captionTenHz(const QString& caption)
{
    QString digits = caption.trimmed();
    digits.remove(u',');
    bool ok = false;
    const double kHz = digits.toDouble(&ok);
    if (!ok || kHz < 0)
        return std::nullopt;
    return std::llround(kHz * 100);
}
