// SPDX-License-Identifier: GPL-3.0-or-later
#include "CatPort.h"
#include "ChannelBytes.h"
#include "FakeClock.h"
#include "FakeSerialPort.h"
#include "MemFile.h"
#include "MemoryJobs.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Wire {
    FakeClock clock;
    FakeSerialPort serial{&clock};
    CatPort port{serial, clock};
    Wire()
    {
        QString e;
        serial.open(&e);
    }
};

// The records of the upload file, channel i taking line i % 7, with the frames the radio must get for
// them: the mode code as P4 of instruction 0C, the frequency in 10 Hz as packed BCD, least
// significant pair first, to VFO-A (instruction 0A).
struct UploadLine {
    qint64 tenHz;
    int mde;
    const char* modeFrame;
    const char* freqFrame;
};
const UploadLine uploadLines[] = {
    {1013825, 9, "00 00 00 09 0C", "25 38 01 01 0A"},   // 10 138.25 kHz RTTY R
    {1415770, 1, "00 00 00 01 0C", "70 57 41 01 0A"},   // 14 157.70 kHz USB
    {705000, 0, "00 00 00 00 0C", "00 50 70 00 0A"},    //  7 050.00 kHz LSB
    {2800000, 6, "00 00 00 06 0C", "00 00 80 02 0A"},   // 28 000.00 kHz FM
    {180050, 2, "00 00 00 02 0C", "50 00 18 00 0A"},    //  1 800.50 kHz CW
    {3000, 4, "00 00 00 04 0C", "00 30 00 00 0A"},      //     30.00 kHz AM
    {2999999, 11, "00 00 00 0B 0C", "99 99 99 02 0A"},  // 29 999.99 kHz PKT FM
};

// Only record 5 is masked; clarifier and antenna are never sent.
MemRecord uploadRecord(int i)
{
    const UploadLine& line = uploadLines[i % 7];
    MemRecord r;
    r.chan = fixedText(QStringLiteral(" Chan %1").arg(i), 8);
    r.freq = float(line.tenHz);
    r.mode = fixedText(QStringLiteral("X"), 7);
    r.clar = 123.0f;
    r.ant = "B ";
    r.mde = qint16(line.mde);
    r.masked = i == 5 ? -1 : 0;
    return r;
}

QString writeUploadFile(const QTemporaryDir& dir, int records = 113)
{
    QByteArray bytes;
    for (int i = 1; i <= records; ++i)
        bytes += uploadRecord(i).encode();
    const QString path = dir.filePath(QStringLiteral("upload.ymp"));
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return {};
    f.write(bytes);
    return path;
}

QString hex2(int v)
{
    return QStringLiteral("%1").arg(v & 0xFF, 2, 16, QLatin1Char('0')).toUpper();
}
}  // namespace

class TestMemoryJobs : public QObject {
    Q_OBJECT
private slots:
    void readOneChannel_sendsChannelInP1WithP4Is4_waits250_reads()
    {
        Wire w;
        w.serial.queueReply(ChannelBytes::record(ChannelBytes::sample(7)));
        const auto reply = readOneChannel(w.port, 7);
        QVERIFY(reply);
        QCOMPARE(*reply, ChannelBytes::record(ChannelBytes::sample(7)));
        QCOMPARE(w.clock.events, (QStringList{"write 07 00 00 04 10", "sleep 250", "read 16"}));
    }

    void readOneChannel_113()
    {
        Wire w;
        readOneChannel(w.port, 113);
        QCOMPARE(w.clock.events.first(), QStringLiteral("write 71 00 00 04 10"));
    }

    void readAllChannels_sendsP4Is0_waits5000_reads()
    {
        Wire w;
        w.serial.queueReply(ChannelBytes::fullReadout());
        const auto reply = readAllChannels(w.port);
        QVERIFY(reply);
        QCOMPARE(reply->size(), 1863);
        QCOMPARE(w.clock.events, (QStringList{"write 00 00 00 00 10", "sleep 5000", "read 1863"}));
    }

    void queryStartChannel_isFirstBytePlusOne()
    {
        Wire w;
        w.serial.queueReply(QByteArray(1, char(41)));
        QCOMPARE(queryStartChannel(w.port), std::optional<int>(42));
        QCOMPARE(w.clock.events, (QStringList{"write 00 00 00 01 10", "sleep 150", "read 1"}));
    }

    void queryStartChannel_emptyReplyReadsAsChannel1()
    {
        Wire w;
        QCOMPARE(queryStartChannel(w.port), std::optional<int>(1));
    }

    void closedPort_readsNothingAndSendsNothing()
    {
        Wire w;
        w.serial.close();
        QVERIFY(!readOneChannel(w.port, 3));
        QVERIFY(!readAllChannels(w.port));
        QVERIFY(!queryStartChannel(w.port));
        QVERIFY(w.serial.writes.isEmpty());
        QVERIFY(w.clock.events.isEmpty());
    }

    void channelCommands()
    {
        Wire w;
        recallChannel(w.port, 12);
        backToVfo(w.port);
        memoryToVfoA(w.port, 100);
        setChannelMask(w.port, 5, true);
        setChannelMask(w.port, 5, false);
        QCOMPARE(w.serial.writtenHex(), (QStringList{"00 00 00 0C 02", "00 00 00 00 05", "00 00 00 64 06",
                                                     "00 00 01 05 03", "00 00 02 05 03"}));
    }

    void uploadPercent_isRoundedShareOf108()
    {
        QCOMPARE(uploadPercent(1), 1);
        QCOMPARE(uploadPercent(54), 50);
        QCOMPARE(uploadPercent(108), 100);
        QCOMPARE(uploadPercent(27), 25);
    }

    void upload_sendsTheWholeSequenceWithItsWaits_record5Masked()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        QList<int> progress;
        const UploadResult r = UploadMemory(w.port, path, [&](int percent, int) { progress.append(percent); });
        QVERIFY(r.ran);
        QVERIFY(!r.cancelled);
        QCOMPARE(r.channelsWritten, 108);

        QStringList expected{"write 00 00 00 01 02", "write 00 00 00 00 09", "write 00 00 00 80 09",
                             "write 00 00 00 FF 09"};
        for (int i = 1; i <= 108; ++i) {
            const UploadLine& line = uploadLines[i % 7];
            expected << QStringLiteral("write ") + QLatin1String(line.modeFrame) << QStringLiteral("sleep 50")
                     << QStringLiteral("write ") + QLatin1String(line.freqFrame)
                     << QStringLiteral("write 00 00 00 %1 03").arg(hex2(i)) << QStringLiteral("sleep 50");
            if (i == 5)
                expected << QStringLiteral("write 00 00 01 05 03") << QStringLiteral("sleep 50");
        }
        expected << "write 00 00 00 00 05"
                 << "sleep 50";
        QCOMPARE(w.clock.events, expected);

        QCOMPARE(progress.size(), 108);
        QCOMPARE(progress[53], 50);
        QCOMPARE(progress[107], 100);
        for (int i = 1; i < progress.size(); ++i)
            QVERIFY(progress[i] >= progress[i - 1]);
    }

    void upload_channel5_sendsModeFrequencyWriteAndMask()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        UploadMemory(w.port, path, {});
        const QStringList writes = w.serial.writtenHex();
        // 4 opening commands, then 3 per channel for channels 1-4.
        const int at = 4 + 4 * 3;
        // Record 5: AM (mode code 4), 30.00 kHz.
        QCOMPARE(writes.mid(at, 4),
                 (QStringList{"00 00 00 04 0C", "00 30 00 00 0A", "00 00 00 05 03", "00 00 01 05 03"}));
        // Channel 6 follows, unmasked: PKT FM, 29 999.99 kHz.
        QCOMPARE(writes.mid(at + 4, 3), (QStringList{"00 00 00 0B 0C", "99 99 99 02 0A", "00 00 00 06 03"}));
    }

    void upload_neverWritesTheQuickMemoryRecords()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        UploadMemory(w.port, path, {});
        for (const QString& c : w.serial.writtenHex()) {
            if (c.endsWith(QStringLiteral(" 03")))
                QVERIFY2(c.mid(9, 2).toInt(nullptr, 16) <= 108, qPrintable(c));
        }
        QVERIFY(w.serial.writtenHex().contains(QStringLiteral("00 00 00 6C 03")));
        QVERIFY(!w.serial.writtenHex().contains(QStringLiteral("00 00 00 6D 03")));
    }

    void upload_progressAfterChannel54Is50AndAfter108Is100()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        QMap<int, int> byChannel;
        UploadMemory(w.port, path, [&](int percent, int channel) { byChannel[channel] = percent; });
        QCOMPARE(byChannel.value(54), 50);
        QCOMPARE(byChannel.value(108), 100);
        QCOMPARE(byChannel.size(), 108);
    }

    void upload_ofAMissingFile_writesClearedRecords()
    {
        QTemporaryDir dir;
        Wire w;
        UploadMemory(w.port, dir.filePath(QStringLiteral("none.ymp")), {});
        const QStringList writes = w.serial.writtenHex();
        QCOMPARE(writes.size(), 4 + 108 * 3 + 1);
        QCOMPARE(writes.mid(4, 3), (QStringList{"00 00 00 00 0C", "00 00 00 00 0A", "00 00 00 01 03"}));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
    }

    void upload_ofAShortFile_writesClearedRecordsForTheMissingChannels()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir, 10);
        Wire w;
        UploadMemory(w.port, path, {});
        const QStringList writes = w.serial.writtenHex();
        const int ch11 = 4 + 3 * 10 + 1;  // channel 5 has the extra mask command
        QCOMPARE(writes.mid(ch11, 3), (QStringList{"00 00 00 00 0C", "00 00 00 00 0A", "00 00 00 0B 03"}));
    }

    void upload_ofAnUnreadableFile_writesNoChannelButReturnsToVfo()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Wire w;
        const UploadResult r = UploadMemory(w.port, dir.filePath(QStringLiteral("folder.ymp")), {});
        QVERIFY(!r.fileError.isEmpty());
        QCOMPARE(r.channelsWritten, 0);
        QCOMPARE(w.serial.writtenHex(), (QStringList{"00 00 00 01 02", "00 00 00 00 09", "00 00 00 80 09",
                                                     "00 00 00 FF 09", "00 00 00 00 05"}));
    }

    void upload_cancelledStopsBetweenChannelsAndReturnsToVfo()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        std::atomic<bool> cancel{false};
        const UploadResult r = UploadMemory(
            w.port, path,
            [&](int, int channel) {
                if (channel == 10)
                    cancel = true;
            },
            &cancel);
        QVERIFY(r.cancelled);
        QCOMPARE(r.channelsWritten, 10);
        const QStringList writes = w.serial.writtenHex();
        QVERIFY(writes.contains(QStringLiteral("00 00 00 0A 03")));
        QVERIFY(!writes.contains(QStringLiteral("00 00 00 0B 03")));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
        QCOMPARE(w.clock.events.last(), QStringLiteral("sleep 50"));
    }

    void upload_onAClosedPort_sendsNothing()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        w.serial.close();
        const UploadResult r = UploadMemory(w.port, path, {});
        QVERIFY(!r.ran);
        QVERIFY(w.clock.events.isEmpty());
    }

    void upload_sendsNeitherClarifierNorAntennaOfTheRecords()
    {
        QTemporaryDir dir;
        const QString path = writeUploadFile(dir);
        Wire w;
        UploadMemory(w.port, path, {});
        int clarifierCommands = 0;
        for (const QString& c : w.serial.writtenHex())
            if (c.endsWith(QStringLiteral(" 09")))
                ++clarifierCommands;
        QCOMPARE(clarifierCommands, 3);  // only the three that clear it before the channels
    }
};

QTEST_GUILESS_MAIN(TestMemoryJobs)
#include "test_memory_jobs.moc"
