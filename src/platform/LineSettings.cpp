// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineSettings.h"

#include <QStringList>

namespace {
bool fail(QString* error, const QString& text, const QString& why)
{
    if (error)
        *error = QStringLiteral("Invalid port settings \"%1\": %2").arg(text, why);
    return false;
}
}  // namespace

std::optional<LineSettings> LineSettings::parse(const QString& text, QString* error)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 4) {
        fail(error, text, QStringLiteral("expected speed,parity,data bits,stop bits"));
        return std::nullopt;
    }
    LineSettings s;
    bool ok = false;
    s.baud = parts[0].trimmed().toInt(&ok);
    if (!ok || s.baud < 50 || s.baud > 4000000) {
        fail(error, text, QStringLiteral("the speed must be a number of bauds"));
        return std::nullopt;
    }
    const QString parity = parts[1].trimmed().toUpper();
    if (parity == u"N")
        s.parity = Parity::None;
    else if (parity == u"E")
        s.parity = Parity::Even;
    else if (parity == u"O")
        s.parity = Parity::Odd;
    else if (parity == u"M")
        s.parity = Parity::Mark;
    else if (parity == u"S")
        s.parity = Parity::Space;
    else {
        fail(error, text, QStringLiteral("the parity must be N, E, O, M or S"));
        return std::nullopt;
    }
    s.dataBits = parts[2].trimmed().toInt(&ok);
    if (!ok || s.dataBits < 5 || s.dataBits > 8) {
        fail(error, text, QStringLiteral("the data bits must be 5 to 8"));
        return std::nullopt;
    }
    const QString stop = parts[3].trimmed();
    if (stop == u"1")
        s.stopBits = StopBits::One;
    else if (stop == u"1.5")
        s.stopBits = StopBits::OneAndHalf;
    else if (stop == u"2")
        s.stopBits = StopBits::Two;
    else {
        fail(error, text, QStringLiteral("the stop bits must be 1, 1.5 or 2"));
        return std::nullopt;
    }
    return s;
}

QString LineSettings::text() const
{
    static const char* const letters[] = {"N", "E", "O", "M", "S"};
    static const char* const stops[] = {"1", "1.5", "2"};
    return QStringLiteral("%1,%2,%3,%4")
        .arg(baud)
        .arg(QLatin1String(letters[static_cast<int>(parity)]))
        .arg(dataBits)
        .arg(QLatin1String(stops[static_cast<int>(stopBits)]));
}
