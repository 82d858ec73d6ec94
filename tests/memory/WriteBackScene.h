// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The memory window on the virtual radio through the real serial adapter and the threaded link, with
// the table read from the radio: the scene of the write-back tests.

#include "FakeMemoryDialogs.h"
#include "Mem_Frm.h"
#include "MemoryEditor.h"
#include "SimConsoleHost.h"
#include "SimHost.h"

#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace WriteBackTest {

struct Scene {
    SimHost sim;
    std::unique_ptr<SimConsoleHost> host;
    FakeMemoryDialogs dialogs;
    std::unique_ptr<Mem_Frm> w;
    QTemporaryDir dir;
    QString error;

    // Starts the radio (on channel 9, VFO-A on 7,050.00 kHz LSB), opens the window and reads all.
    bool start()
    {
        if (!sim.start(&error))
            return false;
        sim.radio().setCurrentChannel(9);
        VfoState a = sim.radio().vfo(VirtualRadio::Vfo::A);
        a.freq10Hz = 705000;
        a.modeByte = 0;
        a.secondVariant = false;
        sim.radio().setVfo(VirtualRadio::Vfo::A, a);
        host = std::make_unique<SimConsoleHost>(sim.devicePath());
        w = std::make_unique<Mem_Frm>(*host, &dialogs);
        w->setBackupFolder(dir.filePath(QStringLiteral("backups")));
        w->setCurrentFile(dir.filePath(QStringLiteral("table.ymp")));
        w->show();
        host->link().waitForIdle();
        w->Bouton[4]->click();
        if (!QTest::qWaitFor([this] { return !w->readingAll(); }, 20000))
            return false;
        host->link().waitForIdle();
        sim.clearLog();
        return true;
    }

    // The commands the radio received, as "P1 P2 P3 P4 I".
    QStringList received() const
    {
        QStringList out;
        for (const SimHost::LogEntry& e : sim.log())
            out << QString::fromLatin1(e.command.toHex(' ').toUpper());
        return out;
    }

    bool writeChanged(int timeoutMs = 60000)
    {
        dialogs.confirmAnswer = true;
        w->WriteChanged->click();
        return QTest::qWaitFor([this] { return !w->writingBack(); }, timeoutMs);
    }

    ~Scene()
    {
        if (w) {
            w->cancelWriteBack();
            const bool stopped = QTest::qWaitFor([this] { return !w->writingBack(); }, 60000);
            Q_UNUSED(stopped);
            dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
            w->close();
            w.reset();
        }
        host.reset();
        sim.stop();
    }
};

}  // namespace WriteBackTest
