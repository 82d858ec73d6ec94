// SPDX-License-Identifier: GPL-3.0-or-later
// Closing the program while the memory table has unsaved edits, and while "Write Changed" writes
// them into the virtual radio in real time: the operator is asked, and the answer is kept.
#include "AppWindows.h"
#include "ConsoleFixture.h"
#include "FakeMemoryDialogs.h"
#include "Form1.h"
#include "MemRecord.h"
#include "Mem_Frm.h"
#include "MemoryEditor.h"
#include "MemorySettingsStore.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"

#include <QApplication>
#include <QFile>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {
// Every channel n of the file on (1 000 000 + 1 000 n) x 10 Hz, USB.
constexpr qint64 fileTenHz(int n)
{
    return 1000000 + 1000 * qint64(n);
}

QByteArray uploadFile()
{
    QByteArray bytes;
    for (int n = 1; n <= 113; ++n) {
        MemRecord r;
        r.chan = fixedText(QStringLiteral(" Chan %1").arg(n), MemRecord::ChanWidth);
        r.freq = float(fileTenHz(n));
        r.mode = fixedText(QStringLiteral("USB"), MemRecord::ModeWidth);
        r.ant = "A ";
        r.mde = 1;
        bytes += r.encode();
    }
    return bytes;
}

struct ProgramOnRadio {
    ProgramOnRadio()
    {
        started = sim.start(&error);
        link = std::make_unique<RadioLink>([] { return std::make_unique<QtSerialPort>(); }, clock);
        form = std::make_unique<Form1>(*link, store, windows, prompts);
        windows.setHost(form.get());
        windows.setMemoryDialogs(&dialogs);
        form->setPortOverride(sim.devicePath());
        form->Form_Load();
        form->show();
    }
    ~ProgramOnRadio()
    {
        if (form && form->isVisible()) {
            dialogs.yesAnswer = true;
            form->close();
        }
        windows.closeAll();
        form.reset();
        link->shutdown();
        link.reset();
        sim.stop();
    }

    Mem_Frm* memoryWindow() const
    {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* m = qobject_cast<Mem_Frm*>(w))
                return m;
        return nullptr;
    }

    // Opens the memory window with the file loaded into its table.
    Mem_Frm* openWithFile()
    {
        QFile f(dir.filePath(QStringLiteral("upload.ymp")));
        if (!f.open(QIODevice::WriteOnly) || f.write(uploadFile()) != 3277)
            return nullptr;
        f.close();
        windows.showMemory();
        Mem_Frm* m = memoryWindow();
        if (!m)
            return nullptr;
        link->waitForIdle();
        m->setCurrentFile(f.fileName());
        if (!m->LoadMemFile())
            return nullptr;
        m->setBackupFolder(dir.filePath(QStringLiteral("backups")));
        return m;
    }

    // The channels the radio was told to write from VFO-A (00 00 00 n 03).
    QList<int> channelsWritten() const
    {
        QList<int> channels;
        for (const SimHost::LogEntry& e : sim.log()) {
            const QByteArray& c = e.command;
            if (c.size() == 5 && c[0] == 0 && c[1] == 0 && c[2] == 0 && quint8(c[4]) == 0x03)
                channels << quint8(c[3]);
        }
        return channels;
    }

    SimHost sim;
    QString error;
    bool started = false;
    std::shared_ptr<RealClock> clock = std::make_shared<RealClock>();
    std::unique_ptr<RadioLink> link;
    MemorySettingsStore store;
    AppWindows windows;
    FakePrompts prompts;
    FakeMemoryDialogs dialogs;
    std::unique_ptr<Form1> form;
    QTemporaryDir dir;
};

const QString question = QStringLiteral("Stop the upload? The radio's memory will be partly written.");
}  // namespace

class TestAppWriteChangedClose : public QObject {
    Q_OBJECT
private slots:
    void closingTheProgram_withUnsavedEdits_cancelKeepsIt_discardEndsIt()
    {
        ProgramOnRadio p;
        QVERIFY2(p.started, qPrintable(p.error));
        Mem_Frm* m = p.openWithFile();
        QVERIFY(m);
        QVERIFY(m->editor().setCell(3, 2, QStringLiteral("LSB")));
        p.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Cancel;
        QVERIFY(!p.form->close());
        QCOMPARE(p.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(p.form->isVisible());
        QVERIFY(m->isVisible());
        p.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
        QVERIFY(p.form->close());
        QCOMPARE(p.dialogs.saveChangesQuestions.size(), 2);  // asked once for this close
        QVERIFY(!p.form->isVisible());
    }

    void closingTheProgram_duringWriteChanged_no_thenYes()
    {
        ProgramOnRadio p;
        QVERIFY2(p.started, qPrintable(p.error));
        Mem_Frm* m = p.openWithFile();
        QVERIFY(m);
        for (int n = 20; n < 40; ++n)
            QVERIFY(m->editor().setCell(n, 1, QString::number(12000 + n)));
        p.dialogs.confirmAnswer = true;
        m->WriteChanged->click();
        QVERIFY(m->writingBack());
        QTRY_VERIFY_WITH_TIMEOUT(m->Progress->value() >= 40, 30000);

        p.dialogs.yesAnswer = false;
        QVERIFY(!p.form->close());
        QCOMPARE(p.dialogs.questions.size(), 1);
        QCOMPARE(p.dialogs.questions[0].text, question);
        QVERIFY(m->writingBack());

        p.dialogs.yesAnswer = true;
        QVERIFY(p.form->close());
        QCOMPARE(p.dialogs.questions.size(), 2);
        QVERIFY(!p.form->isVisible());
        QCOMPARE(p.dialogs.notes.size(), 1);
        QVERIFY2(p.dialogs.notes[0].text.startsWith(QStringLiteral("The write stopped after channel ")),
                 qPrintable(p.dialogs.notes[0].text));
        const QList<int> written = p.channelsWritten();
        QVERIFY(!written.isEmpty());
        QVERIFY(written.size() < 20);
        QCOMPARE(written.first(), 20);
        QCOMPARE(p.sim.radio().channel(written.last()).data.freq10Hz, qint64(12000 + written.last()) * 100);
        QVERIFY(p.sim.radio().channel(39).data.freq10Hz != qint64(1203900));
    }
};

QTEST_MAIN(TestAppWriteChangedClose)
#include "test_app_write_changed_close.moc"
