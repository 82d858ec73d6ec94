// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryCellInput.h"

#include "ChannelDecoder.h"
#include "NumberFormat.h"

#include <QRegularExpression>

namespace {
constexpr int KHzDecimals = 2;  // 10 Hz in kHz
constexpr int MHzDecimals = 5;  // 10 Hz in MHz
constexpr int MaxWholeDigits = 9;
constexpr double TenHzPerKHz = 100.0;

const QStringList antennas{QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("Rx")};

template <typename T>
CellValue<T> refuse(const QString& reason)
{
    return CellValue<T>{std::nullopt, reason};
}

// A decimal number as typed, read exactly: sign, whole digits (thousands separators allowed where
// they belong), fraction digits.
struct Decimal {
    bool negative = false;
    QString whole;
    QString fraction;
};

std::optional<Decimal> decimalOf(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^([+-]?)(\\d{1,3}(?:,\\d{3})+|\\d*)(?:\\.(\\d*))?$"));
    const QRegularExpressionMatch m = pattern.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    Decimal d;
    d.negative = m.captured(1) == u'-';
    d.whole = m.captured(2).remove(u',');
    d.fraction = m.captured(3);
    if (d.whole.isEmpty() && d.fraction.isEmpty())
        return std::nullopt;
    return d;
}

// The number in units of 10^-decimals; nothing when it has finer digits than that that are not zero.
std::optional<qint64> scaled(const Decimal& d, int decimals)
{
    QString fraction = d.fraction;
    while (fraction.size() > decimals && fraction.endsWith(u'0'))
        fraction.chop(1);
    if (fraction.size() > decimals)
        return std::nullopt;
    fraction = fraction.leftJustified(decimals, u'0');
    QString whole = d.whole;
    while (whole.size() > 1 && whole.startsWith(u'0'))
        whole.remove(0, 1);
    qint64 value = 0;
    for (const QChar c : whole + fraction)
        value = value * 10 + c.digitValue();
    return d.negative ? -value : value;
}

enum class Unit { KHz, MHz };

// Splits "14.1955 MHz" into its number and unit; kHz when none is given.
QString withoutUnit(const QString& text, Unit* unit)
{
    QString t = text.trimmed();
    *unit = Unit::KHz;
    if (t.endsWith(QLatin1String("mhz"), Qt::CaseInsensitive)) {
        *unit = Unit::MHz;
        t.chop(3);
    } else if (t.endsWith(QLatin1String("khz"), Qt::CaseInsensitive)) {
        t.chop(3);
    }
    return t.trimmed();
}

// A number of kHz (or MHz) to 10 Hz, with the name of what it is for the reasons.
CellValue<qint64> tenHzOf(const QString& text, const QString& what, bool allowUnitMHz)
{
    Unit unit = Unit::KHz;
    const QString number = withoutUnit(text, &unit);
    if (text.trimmed().isEmpty())
        return refuse<qint64>(QStringLiteral("the %1 is empty").arg(what));
    const std::optional<Decimal> d = decimalOf(number);
    if (!d || (unit == Unit::MHz && !allowUnitMHz))
        return refuse<qint64>(QStringLiteral("\"%1\" is not a %2 in kHz").arg(text.trimmed(), what));
    if (d->whole.size() > MaxWholeDigits)
        return refuse<qint64>(QStringLiteral("\"%1\" is far outside the radio's range").arg(text.trimmed()));
    const int decimals = unit == Unit::MHz ? MHzDecimals : KHzDecimals;
    const std::optional<qint64> value = scaled(*d, decimals);
    if (!value)
        return refuse<qint64>(QStringLiteral("\"%1\" is finer than 10 Hz: the radio keeps %2 to 10 Hz "
                                             "(two decimals in kHz, five in MHz)")
                                  .arg(text.trimmed(), what));
    return CellValue<qint64>{*value, {}};
}

bool printableAscii(const QString& text)
{
    for (const QChar c : text)
        if (c.unicode() < 0x20 || c.unicode() > 0x7E)
            return false;
    return true;
}
}  // namespace

namespace CellInput {

CellValue<QString> label(const QString& text)
{
    if (!printableAscii(text))
        return refuse<QString>(
            QStringLiteral("the label \"%1\" holds a character the file cannot keep (printable ASCII only)").arg(text));
    QString shown = text;
    while (shown.endsWith(u' '))
        shown.chop(1);
    if (!shown.startsWith(u' '))
        shown.prepend(u' ');
    if (shown.size() > CellLimits::LabelLength)
        return refuse<QString>(QStringLiteral("the label \"%1\" is too long: a channel keeps %2 characters, the "
                                              "leading blank included (%3 of your own)")
                                   .arg(text.trimmed())
                                   .arg(CellLimits::LabelLength)
                                   .arg(CellLimits::LabelLength - 1));
    return CellValue<QString>{shown, {}};
}

CellValue<qint64> frequency(const QString& text)
{
    CellValue<qint64> v = tenHzOf(text, QStringLiteral("frequency"), true);
    if (!v.ok())
        return v;
    if (*v.value < CellLimits::MinFreq10Hz || *v.value > CellLimits::MaxFreq10Hz)
        return refuse<qint64>(QStringLiteral("%1 kHz is outside the radio's range, 100.00 to 29,999.99 kHz")
                                  .arg(frequencyText(*v.value).trimmed()));
    return v;
}

CellValue<qint64> clarifier(const QString& text)
{
    CellValue<qint64> v = tenHzOf(text, QStringLiteral("clarifier"), false);
    if (!v.ok())
        return v;
    if (*v.value < -CellLimits::MaxClar10Hz || *v.value > CellLimits::MaxClar10Hz)
        return refuse<qint64>(QStringLiteral("the clarifier %1 kHz is outside -9.99 to +9.99 kHz").arg(text.trimmed()));
    return v;
}

CellValue<ChannelMode> mode(const QString& text)
{
    if (const std::optional<ChannelMode> m = channelModeOfCaption(text.trimmed()))
        return CellValue<ChannelMode>{*m, {}};
    return refuse<ChannelMode>(QStringLiteral("\"%1\" is not a mode: one of %2")
                                   .arg(text.trimmed(), channelModeCaptions().join(QStringLiteral(", "))));
}

CellValue<QString> antenna(const QString& text)
{
    for (const QString& a : antennas)
        if (text.trimmed().compare(a, Qt::CaseInsensitive) == 0)
            return CellValue<QString>{a, {}};
    return refuse<QString>(QStringLiteral("\"%1\" is not an antenna: A, B or Rx").arg(text.trimmed()));
}

CellValue<bool> masked(const QString& text)
{
    const QString t = text.trimmed().toLower();
    static const QStringList yes{QStringLiteral("yes"), QStringLiteral("y"), QStringLiteral("masked"),
                                 QStringLiteral("true"), QStringLiteral("1")};
    static const QStringList no{QStringLiteral("no"), QStringLiteral("n"), QStringLiteral("unmasked"),
                                QStringLiteral("false"), QStringLiteral("0")};
    if (yes.contains(t))
        return CellValue<bool>{true, {}};
    if (no.contains(t))
        return CellValue<bool>{false, {}};
    return refuse<bool>(QStringLiteral("\"%1\" is neither yes nor no").arg(text.trimmed()));
}

QString frequencyText(qint64 tenHz)
{
    return formatNumber(double(tenHz) / TenHzPerKHz, Pattern::ChannelFrequency);
}

QString clarifierText(qint64 tenHz)
{
    return formatNumber(double(tenHz) / TenHzPerKHz, Pattern::Offset);
}

QStringList choices(int column)
{
    if (column == MemoryColumn::Mode)
        return channelModeCaptions();
    if (column == MemoryColumn::Ant)
        return antennas;
    return {};
}

bool editable(int column)
{
    return column >= MemoryColumn::Chan && column <= MemoryColumn::Ant;
}

CellValue<MemoryRow> applyToRow(const MemoryRow& row, int column, const QString& text)
{
    MemoryRow out = row;
    const auto take = [&out](int c, const auto& v, const QString& shown) -> CellValue<MemoryRow> {
        if (!v.ok())
            return refuse<MemoryRow>(v.reason);
        out.cells[c] = shown;
        return CellValue<MemoryRow>{out, {}};
    };
    switch (column) {
        case MemoryColumn::Chan: {
            const CellValue<QString> v = label(text);
            return take(column, v, v.value.value_or(QString()));
        }
        case MemoryColumn::Freq: {
            const CellValue<qint64> v = frequency(text);
            return take(column, v, v.ok() ? frequencyText(*v.value) : QString());
        }
        case MemoryColumn::Clar: {
            const CellValue<qint64> v = clarifier(text);
            return take(column, v, v.ok() ? clarifierText(*v.value) : QString());
        }
        case MemoryColumn::Mode: {
            const CellValue<ChannelMode> v = mode(text);
            if (v.ok())
                out.cells[MemoryColumn::Mde] = QString::number(v.value->code);
            return take(column, v, v.ok() ? v.value->caption : QString());
        }
        case MemoryColumn::Ant: {
            const CellValue<QString> v = antenna(text);
            return take(column, v, v.value.value_or(QString()));
        }
        default:
            return refuse<MemoryRow>(QStringLiteral("this column is not edited"));
    }
}

}  // namespace CellInput
