// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryCsv.h"

#include "ChannelDecoder.h"
#include "ChannelNames.h"
#include "CsvText.h"

#include <QHash>
#include <cmath>
#include <optional>

namespace {
// The columns as written, in this order.
const QString ChannelCol = QStringLiteral("Channel");
const QString NameCol = QStringLiteral("Name");
const QString FreqKHzCol = QStringLiteral("Frequency_kHz");
const QString ModeCol = QStringLiteral("Mode");
const QString ClarCol = QStringLiteral("Clarifier_kHz");
const QString AntCol = QStringLiteral("Antenna");
const QString MaskedCol = QStringLiteral("Masked");
// The channel-exchange layout's own columns (with Mode and Name).
const QString LocationCol = QStringLiteral("Location");
const QString FreqMHzCol = QStringLiteral("Frequency");
const QString DuplexCol = QStringLiteral("Duplex");
const QString OffsetCol = QStringLiteral("Offset");
const QString ToneCol = QStringLiteral("Tone");

const QString Yes = QStringLiteral("yes");
const QString No = QStringLiteral("no");

constexpr double TenHzPerKHz = 100.0;
constexpr double KHzPerMHz = 1000.0;
constexpr double ClarLimitKHz = MemoryCsv::ClarLimitKHz;

// Mode names of the exchange layout, and short forms spreadsheets use, as the table's captions.
struct ModeAlias {
    const char* name;
    const char* caption;
};
constexpr ModeAlias modeAliases[] = {
    {"NFM", "FM"},      {"NAM", "AM"},      {"CW", "CW N"},        {"NCW", "CW N"},    {"CWR", "CW R"},
    {"NCWR", "CW R"},   {"RTTY", "RTTY N"}, {"DIG", "PKT LSB"},    {"FSK", "RTTY N"},  {"RTTYR", "RTTY R"},
    {"FSKR", "RTTY R"}, {"PKT", "PKT LSB"}, {"PACKET", "PKT LSB"}, {"AMS", "AM Sync"},
};

std::optional<ChannelMode> modeOf(const QString& text)
{
    const QString t = text.trimmed();
    if (auto m = channelModeOfCaption(t))
        return m;
    for (const ModeAlias& a : modeAliases)
        if (t.compare(QLatin1String(a.name), Qt::CaseInsensitive) == 0)
            return channelModeOfCaption(QLatin1String(a.caption));
    return std::nullopt;
}

std::optional<double> numberOf(const QString& text)
{
    bool ok = false;
    const double v = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(v))
        return std::nullopt;
    return v;
}

// Where each column is, by header name (letter case and blanks aside); -1 when absent.
struct Layout {
    bool exchange = false;
    int channel = -1, name = -1, freq = -1, mode = -1, clar = -1, ant = -1, masked = -1;
    int duplex = -1, offset = -1, tone = -1;
};

std::optional<Layout> layoutOf(const QStringList& header)
{
    QHash<QString, int> at;
    for (int i = header.size() - 1; i >= 0; --i)  // the first of two equal names counts
        at.insert(header[i].trimmed().toLower(), i);
    const auto find = [&at](const QString& name) { return at.value(name.toLower(), -1); };
    Layout l;
    l.mode = find(ModeCol);
    l.name = find(NameCol);
    if (find(ChannelCol) >= 0 && find(FreqKHzCol) >= 0 && l.mode >= 0) {
        l.channel = find(ChannelCol);
        l.freq = find(FreqKHzCol);
        l.clar = find(ClarCol);
        l.ant = find(AntCol);
        l.masked = find(MaskedCol);
        return l;
    }
    if (find(LocationCol) >= 0 && find(FreqMHzCol) >= 0 && l.mode >= 0) {
        l.exchange = true;
        l.channel = find(LocationCol);
        l.freq = find(FreqMHzCol);
        l.duplex = find(DuplexCol);
        l.offset = find(OffsetCol);
        l.tone = find(ToneCol);
        return l;
    }
    return std::nullopt;
}

QString cell(const QStringList& fields, int column)
{
    return column >= 0 && column < fields.size() ? fields[column] : QString();
}

QString kHzText(float tenHz)
{
    const double kHz = double(tenHz) / TenHzPerKHz;
    return QString::number(kHz == 0.0 ? 0.0 : kHz, 'f', 2);
}

using Line = MemoryCsv::ListLine;

bool isAscii(const QString& text)
{
    for (const QChar c : text)
        if (c.unicode() > 0x7F)
            return false;
    return true;
}

// What the exchange layout's transmit columns hold that a channel cannot keep.
void transmitLosses(const Layout& l, const QStringList& fields, QStringList* losses)
{
    const QString duplex = cell(fields, l.duplex).trimmed();
    const QString offset = cell(fields, l.offset).trimmed();
    const bool shifted = duplex == u'+' || duplex == u'-';
    if (shifted && numberOf(offset).value_or(1.0) != 0.0)
        *losses << QStringLiteral(
                       "the repeater offset %1 %2 MHz is not kept: the channel would transmit on its "
                       "receive frequency")
                       .arg(duplex, offset);
    else if (duplex.compare(QLatin1String("split"), Qt::CaseInsensitive) == 0)
        *losses << QStringLiteral(
                       "the transmit frequency %1 MHz (Duplex split) is not kept: the channel would "
                       "transmit on its receive frequency")
                       .arg(offset);
    else if (duplex.compare(QLatin1String("off"), Qt::CaseInsensitive) == 0)
        *losses << QStringLiteral("\"transmit off\" (Duplex off) is not kept: the channel could transmit");
    else if (!duplex.isEmpty() && !shifted)
        *losses << QStringLiteral("Duplex \"%1\" is not kept").arg(duplex);
    if (const QString tone = cell(fields, l.tone).trimmed(); !tone.isEmpty())
        *losses << QStringLiteral("the tone setting \"%1\" is not kept: the channel would have no tone").arg(tone);
}

Line readLine(const Layout& l, const QStringList& fields)
{
    Line out;
    const auto fail = [&out](const QString& problem) {
        out.problem = problem;
        return out;
    };

    const QString channelText = cell(fields, l.channel).trimmed();
    const QString channelCol = l.exchange ? LocationCol : ChannelCol;
    if (channelText.isEmpty())
        return fail(QStringLiteral("no %1").arg(channelCol));
    bool isNumber = false;
    const int channel = channelText.toInt(&isNumber);
    if (!isNumber)
        return fail(QStringLiteral("%1 \"%2\" is not a whole number").arg(channelCol, channelText));
    if (channel < Channels::First || channel > Channels::Count)
        return fail(QStringLiteral("%1 %2 is outside 1-113").arg(channelCol).arg(channel));
    out.channel = channel;

    const QString freqText = cell(fields, l.freq).trimmed();
    out.freqText = freqText;
    out.inMHz = l.exchange;
    out.name = l.name < 0 ? QString() : cell(fields, l.name);
    const QString freqCol = l.exchange ? FreqMHzCol : FreqKHzCol;
    if (freqText.isEmpty())
        return fail(QStringLiteral("no %1").arg(freqCol));
    const std::optional<double> freq = numberOf(freqText);
    if (!freq)
        return fail(QStringLiteral("%1 \"%2\" is not a number").arg(freqCol, freqText));
    const double kHz = l.exchange ? *freq * KHzPerMHz : *freq;
    const bool empty = kHz == 0.0;  // a channel holding nothing, as a cleared record
    // A list of this program shows the frequency with the clarifier, which may take it past the ends.
    const double reach = l.exchange ? 0.0 : ClarLimitKHz;
    if (!empty && (kHz < MemoryCsv::MinKHz - reach || kHz > MemoryCsv::MaxKHz + reach))
        return fail(l.exchange ? QStringLiteral("the frequency %1 MHz is outside 0.03-30 MHz").arg(freqText)
                               : QStringLiteral("the frequency %1 kHz is outside 0.03-30 MHz (9.52-30020.48 kHz "
                                                "with the clarifier)")
                                     .arg(freqText));

    const QString modeText = cell(fields, l.mode).trimmed();
    ChannelMode mode;
    // A channel whose mode byte the table does not know shows no mode; such a list reads back as is.
    if (!modeText.isEmpty() || (!empty && l.exchange)) {
        const std::optional<ChannelMode> m = modeOf(modeText);
        if (!m)
            return fail(modeText.isEmpty() ? QStringLiteral("no Mode")
                                           : QStringLiteral("unknown mode \"%1\"").arg(modeText));
        mode = *m;
    }

    double clarKHz = 0;
    out.clarText = cell(fields, l.clar).trimmed();
    if (const QString t = out.clarText; !t.isEmpty()) {
        const std::optional<double> c = numberOf(t);
        if (!c)
            return fail(QStringLiteral("%1 \"%2\" is not a number").arg(ClarCol, t));
        if (*c < -ClarLimitKHz || *c > ClarLimitKHz)
            return fail(QStringLiteral("the clarifier %1 kHz is outside -20.48 to 20.48 kHz").arg(t));
        clarKHz = *c;
    }

    QString antenna = l.ant < 0 ? QStringLiteral("A") : QString();
    if (const QString t = cell(fields, l.ant).trimmed(); !t.isEmpty()) {
        if (t.compare(QLatin1String("A"), Qt::CaseInsensitive) == 0)
            antenna = QStringLiteral("A");
        else if (t.compare(QLatin1String("B"), Qt::CaseInsensitive) == 0)
            antenna = QStringLiteral("B");
        else if (t.compare(QLatin1String("Rx"), Qt::CaseInsensitive) == 0)
            antenna = QStringLiteral("Rx");
        else
            return fail(QStringLiteral("unknown antenna \"%1\" (A, B or Rx)").arg(t));
    }

    bool masked = false;
    if (const QString t = cell(fields, l.masked).trimmed().toLower(); !t.isEmpty()) {
        if (t == Yes || t == QLatin1String("y") || t == QLatin1String("true") || t == QLatin1String("1"))
            masked = true;
        else if (t != No && t != QLatin1String("n") && t != QLatin1String("false") && t != QLatin1String("0"))
            return fail(QStringLiteral("%1 \"%2\" is neither yes nor no").arg(MaskedCol, cell(fields, l.masked)));
    }

    if (l.exchange)
        transmitLosses(l, fields, &out.losses);

    // The name as a ".ymp" load shows it: one blank, then the name without blanks around it.
    const QString name = (l.name < 0 ? gridChannelName(channel) : cell(fields, l.name)).trimmed();
    MemRecord& r = out.record;
    r.chan = fixedText(u' ' + name, MemRecord::ChanWidth);
    const QString kept = QString::fromLatin1(r.chan).trimmed();
    if (name.size() > MemoryCsv::NameLength)
        out.losses << QStringLiteral("the name \"%1\" is cut to \"%2\" (a channel keeps %3 characters)")
                          .arg(name, kept)
                          .arg(MemoryCsv::NameLength);
    else if (!isAscii(name))
        out.losses
            << QStringLiteral("the name \"%1\" has characters outside ASCII; the channel keeps \"%2\"").arg(name, kept);
    r.freq = static_cast<float>(std::llround(kHz * TenHzPerKHz));
    r.mode = fixedText(mode.caption, MemRecord::ModeWidth);
    r.clar = static_cast<float>(std::llround(clarKHz * TenHzPerKHz));
    r.ant = fixedText(antenna, MemRecord::AntWidth);
    r.mde = static_cast<qint16>(mode.code);
    r.masked = masked ? MemRecord::MaskedValue : qint16(0);
    return out;
}
}  // namespace

const QStringList& MemoryCsv::header()
{
    static const QStringList h{ChannelCol, NameCol, FreqKHzCol, ModeCol, ClarCol, AntCol, MaskedCol};
    return h;
}

QByteArray MemoryCsv::write(const QList<MemRecord>& records)
{
    QList<std::pair<int, MemRecord>> channels;
    for (int n = Channels::First; n <= Channels::Count; ++n)
        channels.append({n, n <= records.size() ? records[n - 1] : MemRecord{}});
    return writeChannels(channels);
}

QByteArray MemoryCsv::writeChannels(const QList<std::pair<int, MemRecord>>& channels)
{
    QByteArray out = CsvText::line(header());
    for (const auto& [n, r] : channels) {
        const MemoryRow row = rowFromRecord(r);
        out += CsvText::line({QString::number(n), row.cells[MemoryColumn::Chan], kHzText(r.freq),
                              row.cells[MemoryColumn::Mode], kHzText(r.clar), row.cells[MemoryColumn::Ant],
                              r.isMasked() ? Yes : No});
    }
    return out;
}

MemoryCsv::Lines MemoryCsv::readLines(const QByteArray& bytes)
{
    Lines result;
    const auto fail = [&result](int line, const QString& problem) {
        result.line = line;
        result.problem = problem;
        return result;
    };
    const CsvText::Parsed parsed = CsvText::parse(bytes);
    if (!parsed.ok())
        return fail(parsed.errorLine, parsed.error);
    if (parsed.records.isEmpty())
        return fail(1, QStringLiteral("the file is empty"));

    const CsvText::Record& first = parsed.records.first();
    const std::optional<Layout> layout = layoutOf(first.fields);
    if (!layout)
        return fail(first.line, QStringLiteral("no header: the first line must name the columns (Channel, "
                                               "Frequency_kHz, Mode ... or Location, Frequency, Mode, Name)"));
    if (parsed.records.size() == 1)
        return fail(first.line + 1, QStringLiteral("no channel follows the header"));

    for (qsizetype i = 1; i < parsed.records.size(); ++i) {
        const CsvText::Record& rec = parsed.records[i];
        ListLine line = readLine(*layout, rec.fields);
        line.line = rec.line;
        result.lines.append(line);
    }
    return result;
}

MemoryCsv::Result MemoryCsv::read(const QByteArray& bytes)
{
    Result result;
    const auto fail = [&result](int line, const QString& problem) {
        result.line = line;
        result.problem = problem;
        result.losses.clear();
        return result;
    };
    const Lines lines = readLines(bytes);
    if (!lines.ok())
        return fail(lines.line, lines.problem);

    QList<MemRecord> records(Channels::Count);
    QList<int> lineOf(Channels::Count + 1, 0);
    for (const ListLine& line : lines.lines) {
        if (!line.problem.isEmpty())
            return fail(line.line, line.problem);
        if (lineOf[line.channel] != 0)
            return fail(line.line, QStringLiteral("channel %1 is named twice, on lines %2 and %3")
                                       .arg(line.channel)
                                       .arg(lineOf[line.channel])
                                       .arg(line.line));
        lineOf[line.channel] = line.line;
        records[line.channel - 1] = line.record;
        for (const QString& what : line.losses)
            result.losses.append({line.line, line.channel, what});
    }
    result.records = records;
    return result;
}
