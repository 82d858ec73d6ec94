// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the CSV list tests share: records built field by field, this program's header, a reader of
// lists that must be refused, and the table as "Get Mem" fills it.

#include "ChannelDecoder.h"
#include "MemoryCsv.h"
#include "MemoryReadout.h"

#include <QFile>
#include <QTest>

namespace MemoryCsvChecks {
inline MemRecord record(const QByteArray& chan, float freq, const QByteArray& mode, float clar, const QByteArray& ant,
                        qint16 mde, bool masked)
{
    MemRecord r;
    r.chan = chan;
    r.freq = freq;
    r.mode = mode;
    r.clar = clar;
    r.ant = ant;
    r.mde = mde;
    r.masked = masked ? MemRecord::MaskedValue : qint16(0);
    return r;
}

inline const QByteArray header = "Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked";

// Reads a list that should fail, and gives line and problem; a list accepted fails the test.
#define bad(bytes) badAt((bytes), __FILE__, __LINE__)
inline MemoryCsv::Result badAt(const QByteArray& bytes, const char* file, int line)
{
    const MemoryCsv::Result r = MemoryCsv::read(bytes);
    if (r.ok())
        QTest::qFail("the list was read without a problem", file, line);
    else if (!r.records.isEmpty())
        QTest::qFail("records given with a problem", file, line);
    return r;
}

// The table as "Get Mem" fills it from a full read-out.
inline QList<MemoryRow> rowsFromReadout(const QByteArray& reply)
{
    QList<MemoryRow> rows(113);
    ChannelMode mode;
    for (const DecodedChannel& c : decodeAllChannels(reply, &mode))
        rows[c.channel - 1] = channelRow(c.channel, c.decode);
    return rows;
}

inline QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
}  // namespace MemoryCsvChecks

using namespace MemoryCsvChecks;
