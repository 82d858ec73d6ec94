// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemRecord.h"

#include "ChannelDecoder.h"
#include "NumberFormat.h"
#include "SettingsStore.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <cmath>

namespace {
constexpr int ChanAt = 0;
constexpr int FreqAt = 8;
constexpr int ModeAt = 12;
constexpr int ClarAt = 19;
constexpr int AntAt = 23;
constexpr int MdeAt = 25;
constexpr int MaskedAt = 27;

void putFloat(char* at, float v)
{
    qToLittleEndian(std::bit_cast<quint32>(v), at);
}
float getFloat(const char* at)
{
    return std::bit_cast<float>(qFromLittleEndian<quint32>(at));
}

// What the file holds is shown as it is; only values no display pattern can hold fall back to plain
// digits, so that random bytes never reach the pattern formatter as infinities or huge numbers.
QString formatStored(double value, const QString& pattern)
{
    if (std::isfinite(value) && std::fabs(value) < 1e12)
        return formatNumber(value, pattern);
    return QString::number(value, 'g', 9) + u' ';
}

// Trimming as the file's readers always did: blanks only.
QString trimBlanks(const QByteArray& text)
{
    qsizetype from = 0;
    qsizetype to = text.size();
    while (from < to && text[from] == ' ')
        ++from;
    while (to > from && text[to - 1] == ' ')
        --to;
    return QString::fromLatin1(text.mid(from, to - from));
}
}  // namespace

QByteArray fixedText(const QString& text, int width)
{
    QByteArray b = text.toLatin1().left(width);
    if (b.size() < width)
        b.append(QByteArray(width - b.size(), ' '));
    return b;
}

QByteArray MemRecord::encode() const
{
    QByteArray out(Size, '\0');
    char* d = out.data();
    const auto put = [d](int at, const QByteArray& text, int width) {
        const QByteArray t = text.left(width).leftJustified(width, ' ');
        std::copy(t.cbegin(), t.cend(), d + at);
    };
    put(ChanAt, chan, ChanWidth);
    putFloat(d + FreqAt, freq);
    put(ModeAt, mode, ModeWidth);
    putFloat(d + ClarAt, clar);
    put(AntAt, ant, AntWidth);
    qToLittleEndian(mde, d + MdeAt);
    qToLittleEndian(masked, d + MaskedAt);
    return out;
}

MemRecord MemRecord::decode(const QByteArray& bytes)
{
    // Overlay what there is on a cleared record.
    QByteArray full = MemRecord{}.encode();
    const qsizetype n = std::min<qsizetype>(bytes.size(), Size);
    std::copy(bytes.cbegin(), bytes.cbegin() + n, full.begin());
    const char* d = full.constData();
    MemRecord r;
    r.chan = full.mid(ChanAt, ChanWidth);
    r.freq = getFloat(d + FreqAt);
    r.mode = full.mid(ModeAt, ModeWidth);
    r.clar = getFloat(d + ClarAt);
    r.ant = full.mid(AntAt, AntWidth);
    r.mde = qFromLittleEndian<qint16>(d + MdeAt);
    r.masked = qFromLittleEndian<qint16>(d + MaskedAt);
    return r;
}

std::optional<double> cellNumber(const QString& text)
{
    QString t = text.trimmed();
    t.remove(u',');
    if (t.isEmpty())
        return std::nullopt;
    bool ok = false;
    const double v = t.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return v;
}

std::optional<MemRecord> recordFromRow(const MemoryRow& row, QString* reason)
{
    using namespace MemoryColumn;
    const std::optional<double> freq = cellNumber(row.cells[Freq]);
    if (!freq) {
        if (reason)
            *reason = QStringLiteral("the frequency \"%1\" is not a number").arg(row.cells[Freq]);
        return std::nullopt;
    }
    const std::optional<double> clar = cellNumber(row.cells[Clar]);
    if (!clar) {
        if (reason)
            *reason = QStringLiteral("the clarifier \"%1\" is not a number").arg(row.cells[Clar]);
        return std::nullopt;
    }
    MemRecord r;
    r.chan = fixedText(row.cells[Chan], MemRecord::ChanWidth);
    r.freq = static_cast<float>(*freq * 100.0);
    r.mode = fixedText(row.cells[Mode], MemRecord::ModeWidth);
    r.clar = static_cast<float>(*clar * 100.0);
    r.ant = fixedText(row.cells[Ant], MemRecord::AntWidth);
    r.mde = static_cast<qint16>(std::lround(std::clamp(leadingNumber(row.cells[Mde], 0.0), -32768.0, 32767.0)));
    r.masked = row.colour == MemoryColour::Masked ? MemRecord::MaskedValue : qint16(0);
    return r;
}

MemoryRow rowFromRecord(const MemRecord& record)
{
    using namespace MemoryColumn;
    MemoryRow row;
    row.cells[Chan] = u' ' + trimBlanks(record.chan);
    row.cells[Freq] = formatStored(double(record.freq) / 100.0, Pattern::ChannelFrequency);
    row.cells[Mode] = trimBlanks(record.mode);
    row.cells[Clar] = formatStored(double(record.clar) / 100.0, Pattern::Offset);
    row.cells[Ant] = trimBlanks(record.ant);
    row.cells[Mde] = QString::number(record.mde);
    row.colour = MemoryColour::of(record.isMasked());
    return row;
}
