// SPDX-License-Identifier: GPL-3.0-or-later
// "Write Changed" against the virtual radio in real time: only the changed channels are written,
// after a backup read of each, each read back, and the radio put back where it was; the backup
// restores them; a radio that reads back wrongly, a cancel and a close part way.
#include "ChannelDecoder.h"
#include "MemoryBackups.h"
#include "MemoryGridModel.h"
#include "NumberFormat.h"
#include "PressButton.h"
#include "Procedures.h"
#include "WriteBackScene.h"

#include <QProgressBar>

using WriteBackTest::Scene;

namespace {
QString freqCommand(qint64 tenHz)
{
    return setFreqCommand(tenHz, 1).hex();
}

// The table's row and the radio's channel agree on what a write carries: frequency, mode, mask.
bool radioHoldsRow(const VirtualRadio& radio, const Mem_Frm& w, int n)
{
    const MemoryChannel c = radio.channel(n);
    const MemoryTableModel& t = const_cast<Mem_Frm&>(w).table();
    const QString shown = formatNumber((c.data.freq10Hz + c.data.clar10Hz) / 100.0, Pattern::ChannelFrequency);
    const int code = decodeChannelMode(c.data.modeByte, c.data.secondVariant ? 0x80 : 0, {}).code;
    return shown == t.cell(n, MemoryColumn::Freq) && QString::number(code) == t.cell(n, MemoryColumn::Mde) &&
           MemoryColour::of(c.masked) == t.colour(n);
}

// Answers the second read of one channel (its read-back) with another frequency.
class WrongReadBack final : public FaultHook {
public:
    explicit WrongReadBack(int channel) : read_(QByteArray::fromHex("00000410").prepend(char(channel))) {}
    void shape(const QByteArray& command, RadioReply& reply) override
    {
        if (command == read_ && ++reads_ == 2 && reply.bytes.size() >= 5)
            reply.bytes[4] = char(reply.bytes[4] ^ 0x20);
    }

private:
    QByteArray read_;
    int reads_ = 0;
};

const QString stopQuestion = QStringLiteral("Stop the upload? The radio's memory will be partly written.");
}  // namespace

class TestMemoryWriteBackSim : public QObject {
    Q_OBJECT
private slots:
    void threeChannelsEdited_onlyTheyAreWritten_backupFirst_readBack_radioPutBack_restoreBackupPutsThemBack()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        Mem_Frm& w = *s.w;
        const QList<MemoryRow> asRead = w.table().rows();
        QVERIFY(!w.WriteChanged->isEnabled());

        // Channel 3 retuned, 7 to LSB, 12 masked.
        QVERIFY(w.editor().setCell(3, MemoryColumn::Freq, "10,140.00"));
        QVERIFY(w.editor().setCell(7, MemoryColumn::Mode, "LSB"));
        QVERIFY(w.editor().toggleMask({12}));
        QVERIFY(w.WriteChanged->isEnabled());
        QCOMPARE(w.windowTitle(), QStringLiteral("FT-1000 Memory *"));

        QVERIFY(s.writeChanged());
        QCOMPARE(s.dialogs.confirmations.size(), 1);
        QCOMPARE(s.dialogs.confirmations[0].title, QStringLiteral("Write Changed ?"));
        QVERIFY2(s.dialogs.confirmations[0].text.contains("3 changed channels into the radio: 3 (Chan 3), 7 (Chan 7), "
                                                          "12 (Chan 12)"),
                 qPrintable(s.dialogs.confirmations[0].text));
        QVERIFY2(s.dialogs.errors.isEmpty(), qPrintable(s.dialogs.errors.value(0).text));
        QVERIFY(s.host->pollEnabled());

        const QStringList expected{
            // Where the radio is: flags, its channel, VFO-A.
            "00 00 00 01 FA", "00 00 00 01 10", "00 00 00 02 10",
            // The backup reads.
            "03 00 00 04 10", "07 00 00 04 10", "0C 00 00 04 10",
            // The upload's opening from the first channel written, then each channel's commands.
            "00 00 00 03 02", "00 00 00 00 09", "00 00 00 80 09", "00 00 00 FF 09",
            // 3: USB, 10,140.00 kHz, unmasked.
            "00 00 00 01 0C", freqCommand(1014000), "00 00 00 03 03", "00 00 02 03 03",
            // 7: LSB, 21,074.00 kHz, unmasked.
            "00 00 00 00 0C", freqCommand(2107400), "00 00 00 07 03", "00 00 02 07 03",
            // 12: CW R, 14,060.00 kHz, masked.
            "00 00 00 03 0C", freqCommand(1406000), "00 00 00 0C 03", "00 00 01 0C 03",
            // The read-backs.
            "03 00 00 04 10", "07 00 00 04 10", "0C 00 00 04 10",
            // Put back: the memory pointer on channel 9, VFO operation, VFO-A's mode and frequency.
            "00 00 00 09 02", "00 00 00 00 05", "00 00 00 00 0C", freqCommand(705000)};
        QCOMPARE(s.received(), expected);
        // The waits after each mode command and each write reached the radio as gaps on the line.
        const QList<SimHost::LogEntry> log = s.sim.log();
        for (int i = 0; i + 1 < log.size(); ++i) {
            const QString c = s.received()[i];
            const bool waitsAfter = (c.endsWith(" 0C") || c.endsWith(" 03")) && i >= 10 && i < 22;
            if (waitsAfter)
                QVERIFY2(log[i + 1].atMs - log[i].atMs >= 40, qPrintable(c));
        }

        // The radio holds the table; it is back on VFO-A as it was, its pointer on channel 9.
        for (int n = 1; n <= 108; ++n)
            QVERIFY2(radioHoldsRow(s.sim.radio(), w, n), qPrintable(QString::number(n)));
        QVERIFY(!s.sim.radio().memoryMode());
        QCOMPARE(s.sim.radio().currentChannel(), 9);
        QCOMPARE(s.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(705000));
        QCOMPARE(s.sim.radio().modeCode(VirtualRadio::Vfo::A), 0);

        // Written: no longer unwritten, still unsaved; nothing left to write.
        for (int n : {3, 7, 12})
            QCOMPARE(w.editor().changeOf(n), int(MemoryEditor::Unsaved));
        QVERIFY(!w.WriteChanged->isEnabled());

        // The backup holds the three channels as they were.
        QVERIFY(!w.lastBackup().isEmpty());
        QCOMPARE(QFileInfo(w.lastBackup()).absolutePath(), QFileInfo(w.backupFolder()).absoluteFilePath());
        QMap<int, MemoryRow> backup;
        QVERIFY(MemoryBackups::load(w.lastBackup(), &backup, &s.error));
        QCOMPARE(backup.keys(), (QList<int>{3, 7, 12}));
        for (int n : {3, 7, 12})
            QCOMPARE(backup[n], asRead[n - 1]);

        // Restore Backup, then Write Changed: the radio holds what it held.
        const QString firstBackup = w.lastBackup();
        QVERIFY(w.RestoreBackup(firstBackup));
        QCOMPARE(w.editor().unwrittenChannels(1, 108), (QList<int>{3, 7, 12}));
        s.sim.clearLog();
        s.dialogs.confirmations.clear();
        QVERIFY(s.writeChanged());
        QVERIFY(s.dialogs.confirmations[0].text.contains("3 (Chan 3), 7 (Chan 7), 12 (Chan 12)"));
        QVERIFY(s.dialogs.errors.isEmpty());
        for (int n : {3, 7, 12})
            QVERIFY(radioHoldsRow(s.sim.radio(), w, n));
        QCOMPARE(w.table().rows(), asRead);
        QCOMPARE(s.sim.radio().channel(3).data.freq10Hz, qint64(1013600));
        QCOMPARE(s.sim.radio().channel(12).masked, false);
        QVERIFY(w.lastBackup() != firstBackup);
        QCOMPARE(MemoryBackups::list(w.backupFolder()).size(), 2);
    }

    void radioOnAChannel_fastLink_writtenAndCheck_backOnThatChannel()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        Mem_Frm& w = *s.w;
        s.host->link().setFastLink(true);
        s.sim.radio().handle(QByteArray::fromHex("0000000B02"));  // the radio on channel 11
        QVERIFY(s.sim.radio().memoryMode());
        QVERIFY(w.editor().setCell(2, MemoryColumn::Freq, "7,075.50"));
        QVERIFY(w.editor().setCell(11, MemoryColumn::Mode, "FM"));
        QVERIFY(s.writeChanged());
        QVERIFY2(s.dialogs.errors.isEmpty(), qPrintable(s.dialogs.errors.value(0).text));
        QVERIFY(radioHoldsRow(s.sim.radio(), w, 2));
        QVERIFY(radioHoldsRow(s.sim.radio(), w, 11));
        QVERIFY(w.editor().unwrittenChannels(1, 108).isEmpty());
        // VFO-A was read on VFO-A and is as it was; the radio is back on channel 11, which now holds FM.
        const QStringList got = s.received();
        QCOMPARE(got.mid(0, 4), (QStringList{"00 00 00 01 FA", "00 00 00 01 10", "00 00 00 00 05", "00 00 00 02 10"}));
        QCOMPARE(got.last(), QStringLiteral("00 00 00 0B 02"));
        QVERIFY(s.sim.radio().memoryMode());
        QCOMPARE(s.sim.radio().currentChannel(), 11);
        QCOMPARE(s.sim.radio().vfo(VirtualRadio::Vfo::A).freq10Hz, qint64(705000));
        QCOMPARE(s.sim.radio().vfo(VirtualRadio::Vfo::A).modeByte, 0);  // LSB
        QCOMPARE(s.sim.radio().modeCode(VirtualRadio::Vfo::A), 6);      // the main receiver: channel 11, FM
    }

    void readBackWrong_thatChannelStaysMarked_andIsNamed()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        s.sim.radio().setFaultHook(std::make_shared<WrongReadBack>(7));
        Mem_Frm& w = *s.w;
        QVERIFY(w.editor().setCell(3, MemoryColumn::Freq, "10140"));
        QVERIFY(w.editor().setCell(7, MemoryColumn::Freq, "21075"));
        QVERIFY(w.editor().setCell(12, MemoryColumn::Freq, "14061"));
        QVERIFY(s.writeChanged());
        QCOMPARE(s.dialogs.errors.size(), 1);
        QCOMPARE(s.dialogs.errors[0].title, QStringLiteral("Write Changed"));
        QVERIFY2(s.dialogs.errors[0].text.contains("reads back otherwise than written in this channel: 7 (Chan 7)"),
                 qPrintable(s.dialogs.errors[0].text));
        QVERIFY(!s.dialogs.errors[0].text.contains("3 (Chan 3)"));
        QCOMPARE(w.editor().unwrittenChannels(1, 108), QList<int>{7});
        QCOMPARE(w.table().index(6, 0).data(MemoryGridModel::ChangeRole).toInt(),
                 MemoryEditor::Unsaved | MemoryEditor::Unwritten);
        QVERIFY(w.WriteChanged->isEnabled());
    }

    void cancelPartWay_stopsBetweenChannels_writtenOnesUnmarked_radioPutBack()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        Mem_Frm& w = *s.w;
        for (int n = 20; n < 40; ++n)
            QVERIFY(w.editor().setCell(n, MemoryColumn::Freq, QString::number(10000 + n)));
        s.dialogs.confirmAnswer = true;
        w.WriteChanged->click();
        QVERIFY(w.writingBack());
        QVERIFY(w.CancelWrite->isVisible());
        QVERIFY(!s.host->pollEnabled());
        // Past the backup (a third), a few channels in.
        QTRY_VERIFY_WITH_TIMEOUT(w.Progress->value() >= 40, 30000);
        // The table stays as it is while it is written.
        w.setCurrentFile(s.dir.filePath(QStringLiteral("other.ymp")));
        w.Btn_Diag[0]->click();
        QCOMPARE(s.dialogs.notes.size(), 1);
        QVERIFY(s.dialogs.notes[0].text.startsWith("The table cannot be replaced"));
        QCOMPARE(w.table().cell(20, MemoryColumn::Freq), QStringLiteral("10,020.00 "));
        s.dialogs.notes.clear();
        w.CancelWrite->click();
        QTRY_VERIFY_WITH_TIMEOUT(!w.writingBack(), 30000);
        QVERIFY(s.host->pollEnabled());

        QList<int> written;
        for (const QString& c : s.received())
            if (c.startsWith("00 00 00 ") && c.endsWith(" 03"))
                written << c.mid(9, 2).toInt(nullptr, 16);
        QVERIFY(!written.isEmpty());
        QVERIFY(written.size() < 20);
        QCOMPARE(s.dialogs.notes.size(), 1);
        QVERIFY2(s.dialogs.notes[0].text.startsWith(
                     QStringLiteral("The write stopped after channel %1").arg(written.last())),
                 qPrintable(s.dialogs.notes[0].text));
        QList<int> unwritten;
        for (int n = 20; n < 40; ++n)
            if (!written.contains(n))
                unwritten << n;
        QCOMPARE(w.editor().unwrittenChannels(1, 108), unwritten);
        QCOMPARE(s.sim.radio().channel(unwritten.first()).data.freq10Hz == (10000 + unwritten.first()) * 100, false);
        QVERIFY(!s.sim.radio().memoryMode());
        QCOMPARE(s.sim.radio().currentChannel(), 9);
    }

    void closePartWay_no_writeGoesOn()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        Mem_Frm& w = *s.w;
        for (int n = 20; n < 26; ++n)
            QVERIFY(w.editor().setCell(n, MemoryColumn::Freq, QString::number(10000 + n)));
        s.dialogs.confirmAnswer = true;
        s.dialogs.yesAnswer = false;
        w.WriteChanged->click();
        QTRY_VERIFY_WITH_TIMEOUT(w.Progress->value() >= 40, 30000);
        QVERIFY(!w.close());
        QCOMPARE(s.dialogs.questions.size(), 1);
        QCOMPARE(s.dialogs.questions[0].text, stopQuestion);
        QVERIFY(w.isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!w.writingBack(), 30000);
        QVERIFY(w.isVisible());
        QVERIFY(w.editor().unwrittenChannels(1, 108).isEmpty());
        QVERIFY(s.dialogs.notes.isEmpty());
    }

    void closePartWay_yes_stopsAfterTheChannel_namesIt_windowGoes()
    {
        Scene s;
        QVERIFY2(s.start(), qPrintable(s.error));
        Mem_Frm& w = *s.w;
        for (int n = 20; n < 40; ++n)
            QVERIFY(w.editor().setCell(n, MemoryColumn::Freq, QString::number(10000 + n)));
        s.dialogs.confirmAnswer = true;
        s.dialogs.yesAnswer = true;
        w.WriteChanged->click();
        QTRY_VERIFY_WITH_TIMEOUT(w.Progress->value() >= 40, 30000);
        QVERIFY(!w.close());  // it goes once the link has stopped the write
        QCOMPARE(s.dialogs.questions.size(), 1);
        QCOMPARE(s.dialogs.questions[0].text, stopQuestion);
        QTRY_VERIFY_WITH_TIMEOUT(!w.writingBack(), 30000);
        QTRY_VERIFY(!w.isVisible());
        QCOMPARE(s.dialogs.notes.size(), 1);
        QVERIFY(s.dialogs.notes[0].text.startsWith("The write stopped after channel "));
        // The unsaved edits were asked about as the window went.
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(s.sim.radio().channel(39).data.freq10Hz != 1003900);
        QVERIFY(!s.sim.radio().memoryMode());
    }
};

QTEST_MAIN(TestMemoryWriteBackSim)
#include "test_memory_write_back_sim.moc"
