// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window against the virtual radio on a pseudo-terminal, through the real serial adapter
// and the threaded radio link: read all channels, save them, change the radio, upload the file, and
// the radio holds the file's channels again.

#include "ChannelDecoder.h"
#include "FakeMemoryDialogs.h"
#include "MemFile.h"
#include "Mem_Frm.h"
#include "MemoryTableModel.h"
#include "NumberFormat.h"
#include "SimConsoleHost.h"
#include "SimHost.h"

#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {
// A varied memory: every mode the table knows (no "Data USER"), clarifiers, antennas, some masks.
MemoryChannel sceneChannel(int n)
{
    static const int modes[][2] = {{0, 0}, {1, 0}, {2, 0}, {2, 1}, {3, 0}, {3, 1},
                                   {4, 0}, {5, 0}, {5, 1}, {6, 0}, {6, 1}};
    MemoryChannel c;
    c.data.freq10Hz = 180000 + qint64(n) * 24571;  // 1.8 MHz to 29.6 MHz
    c.data.clar10Hz = (n % 5 - 2) * 13;
    c.data.rxClar = n % 5 != 2;
    c.data.modeByte = modes[n % 11][0];
    c.data.secondVariant = modes[n % 11][1] != 0;
    c.data.antennaB = n % 3 == 1;
    c.data.rxAntenna = n % 4 == 3;
    c.masked = n % 9 == 0;
    return c;
}

int channelModeCode(const MemoryChannel& c)
{
    return decodeChannelMode(c.data.modeByte, c.data.secondVariant ? 0x80 : 0, {}).code;
}
}  // namespace

class TestMemorySim : public QObject {
    Q_OBJECT
private slots:
    void getMem_save_changeTheRadio_upload_restoresTheFilesChannels()
    {
        SimHost sim;
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        for (int n = 1; n <= 113; ++n)
            sim.radio().setChannel(n, sceneChannel(n));
        sim.radio().setCurrentChannel(7);

        SimConsoleHost host(sim.devicePath());
        FakeMemoryDialogs dialogs;
        Mem_Frm w(host, &dialogs);
        w.show();
        host.link().waitForIdle();
        QCOMPARE(w.StartChannel, 7);

        // Get Mem: the table shows the radio's channels.
        w.Bouton[4]->click();
        QTRY_VERIFY_WITH_TIMEOUT(!w.readingAll(), 20000);
        host.link().waitForIdle();
        for (int n = 1; n <= 113; ++n) {
            const MemoryChannel c = sim.radio().channel(n);
            const double shown = (c.data.freq10Hz + c.data.clar10Hz) / 100.0;
            QCOMPARE(w.table().cell(n, MemoryColumn::Freq), formatNumber(shown, Pattern::ChannelFrequency));
            QCOMPARE(w.table().cell(n, MemoryColumn::Mde), QString::number(channelModeCode(c)));
            QCOMPARE(w.table().colour(n), MemoryColour::of(c.masked));
        }

        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (!out.isEmpty()) {
            QDir().mkpath(out);
            w.grab().save(out + QStringLiteral("/memory_window_sim.png"));
        }

        // Save it.
        QTemporaryDir dir;
        w.setCurrentFile(dir.filePath(QStringLiteral("radio.ymp")));
        QVERIFY(w.SaveMemFile());
        QList<MemRecord> file;
        QVERIFY(MemFile::load(w.currentFile(), &file, &error));

        // Change the radio: other frequencies and modes, masks moved.
        for (int n : {1, 5, 9, 50, 100, 108}) {
            MemoryChannel c = sceneChannel(n + 1);
            c.masked = !sceneChannel(n).masked;
            sim.radio().setChannel(n, c);
        }
        QVERIFY(sim.radio().channel(5) != sceneChannel(5));

        // Upload the saved file.
        dialogs.confirmAnswer = true;
        w.Bouton[5]->click();
        QCOMPARE(dialogs.confirmations.size(), 1);
        QVERIFY(w.uploading());
        QVERIFY(!host.pollEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(!w.uploading(), 120000);
        QVERIFY(host.pollEnabled());
        QVERIFY(dialogs.errors.isEmpty());

        for (int n = 1; n <= 108; ++n) {
            const MemoryChannel c = sim.radio().channel(n);
            const MemRecord& r = file[n - 1];
            QCOMPARE(c.data.freq10Hz + c.data.clar10Hz, qint64(r.freq));
            QCOMPARE(channelModeCode(c), int(r.mde));
            QCOMPARE(c.masked, r.isMasked());
        }
        sim.stop();
    }

    void upload_aTerminalThatGoesAwayPartWay_stopsAndNamesTheLastChannelWritten()
    {
        SimHost sim;
        QString error;
        QVERIFY2(sim.start(&error), qPrintable(error));
        for (int n = 1; n <= 113; ++n)
            sim.radio().setChannel(n, sceneChannel(n));
        SimConsoleHost host(sim.devicePath());
        FakeMemoryDialogs dialogs;
        Mem_Frm w(host, &dialogs);
        w.show();
        host.link().waitForIdle();
        w.Bouton[4]->click();
        QTRY_VERIFY_WITH_TIMEOUT(!w.readingAll(), 20000);
        host.link().waitForIdle();
        QTemporaryDir dir;
        w.setCurrentFile(dir.filePath(QStringLiteral("radio.ymp")));
        QVERIFY(w.SaveMemFile());

        dialogs.confirmAnswer = true;
        w.Bouton[5]->click();
        QVERIFY(dialogs.saveQuestions.isEmpty());  // the table is the file
        QVERIFY(w.uploading());
        // The adapter is pulled once a few channels are in.
        QTRY_VERIFY_WITH_TIMEOUT(w.Progress->value() >= 10, 30000);
        sim.unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!w.uploading(), 30000);
        QCOMPARE(dialogs.errors.size(), 1);
        QCOMPARE(dialogs.errors[0].title, QStringLiteral("Upload stopped"));
        const QString text = dialogs.errors[0].text;
        QVERIFY2(text.startsWith(QStringLiteral("The radio's port failed during the upload, which stopped there.\n"
                                                "The last channel written is ")),
                 qPrintable(text));
        QVERIFY(w.Progress->value() < 100);
        QVERIFY(host.pollEnabled());
        sim.stop();
    }
};

QTEST_MAIN(TestMemorySim)
#include "test_memory_sim.moc"
