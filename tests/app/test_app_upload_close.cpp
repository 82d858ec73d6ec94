// SPDX-License-Identifier: GPL-3.0-or-later
// Closing while the memory window writes a file into the virtual radio, in real time, the radio link
// on its own thread: the operator is asked first; No lets the upload go on, Yes stops it after the
// channel being written and the memory window names that channel before it goes.
#include "AppWindows.h"
#include "ConsoleFixture.h"
#include "FakeMemoryDialogs.h"
#include "Form1.h"
#include "MemRecord.h"
#include "Mem_Frm.h"
#include "MemorySettingsStore.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "SimHost.h"

#include <QApplication>
#include <QFile>
#include <QProgressBar>
#include <QPushButton>
#include <QRegularExpression>
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

    // Opens the memory window and starts the upload of the file.
    Mem_Frm* startUpload()
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
        if (!m->LoadMemFile())  // a load enables "Upld Mem"
            return nullptr;
        dialogs.confirmAnswer = true;
        m->Bouton[5]->click();
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

// "The upload stopped after channel 12 (Chan 12): ..." gives 12.
int channelNamed(const QString& note)
{
    const QRegularExpressionMatch m = QRegularExpression(QStringLiteral("after channel (\\d+) ")).match(note);
    return m.hasMatch() ? m.captured(1).toInt() : -1;
}

const QString question = QStringLiteral("Stop the upload? The radio's memory will be partly written.");
}  // namespace

class TestAppUploadClose : public QObject {
    Q_OBJECT
private slots:
    void closingTheMainWindow_no_thenYes()
    {
        ProgramOnRadio p;
        QVERIFY2(p.started, qPrintable(p.error));
        const qint64 before = p.sim.radio().channel(60).data.freq10Hz;
        Mem_Frm* m = p.startUpload();
        QVERIFY(m);
        QVERIFY(m->uploading());
        QTRY_VERIFY_WITH_TIMEOUT(m->Progress->value() >= 3, 20000);

        // No: both windows stay and the upload goes on.
        p.dialogs.yesAnswer = false;
        QVERIFY(!p.form->close());
        QCOMPARE(p.dialogs.questions.size(), 1);
        QCOMPARE(p.dialogs.questions[0].text, question);
        QVERIFY(p.form->isVisible());
        QVERIFY(m->isVisible());
        QVERIFY(m->uploading());
        const int atNo = m->Progress->value();
        QTRY_VERIFY_WITH_TIMEOUT(m->Progress->value() >= atNo + 3, 20000);

        // Yes: the upload stops after the channel being written, the operator is told which, and
        // the program ends.
        p.dialogs.yesAnswer = true;
        QVERIFY(p.form->close());
        QCOMPARE(p.dialogs.questions.size(), 2);
        QVERIFY(!p.form->isVisible());
        QCOMPARE(p.dialogs.notes.size(), 1);
        const int last = channelNamed(p.dialogs.notes[0].text);
        QVERIFY2(last >= 4 && last < 60, qPrintable(p.dialogs.notes[0].text));
        QVERIFY(p.dialogs.notes[0].text.contains(QStringLiteral("(Chan %1)").arg(last)));
        QList<int> expected;
        for (int n = 1; n <= last; ++n)
            expected << n;
        QCOMPARE(p.channelsWritten(), expected);
        QCOMPARE(p.sim.radio().channel(last).data.freq10Hz, fileTenHz(last));
        QCOMPARE(p.sim.radio().channel(60).data.freq10Hz, before);
    }

    void closingTheMemoryWindow_yes_waitsForTheChannelThenCloses()
    {
        ProgramOnRadio p;
        QVERIFY2(p.started, qPrintable(p.error));
        QPointer<Mem_Frm> m = p.startUpload();
        QVERIFY(m);
        QTRY_VERIFY_WITH_TIMEOUT(m->Progress->value() >= 3, 20000);
        p.dialogs.yesAnswer = true;
        m->close();
        QCOMPARE(p.dialogs.questions.size(), 1);
        // The window goes once the link has ended the upload; the main window stays.
        QTRY_VERIFY_WITH_TIMEOUT(!m || !m->isVisible(), 20000);
        QVERIFY(p.form->isVisible());
        QCOMPARE(p.dialogs.notes.size(), 1);
        const int last = channelNamed(p.dialogs.notes[0].text);
        QVERIFY2(last >= 4 && last < 108, qPrintable(p.dialogs.notes[0].text));
        p.link->waitForIdle();
        QCOMPARE(p.channelsWritten().size(), last);
        QCOMPARE(p.channelsWritten().last(), last);
        QVERIFY(p.form->pollEnabled());
    }

    void closingTheMemoryWindow_no_letsTheUploadFinish()
    {
        ProgramOnRadio p;
        QVERIFY2(p.started, qPrintable(p.error));
        QPointer<Mem_Frm> m = p.startUpload();
        QVERIFY(m);
        QTRY_VERIFY_WITH_TIMEOUT(m->Progress->value() >= 3, 20000);
        p.dialogs.yesAnswer = false;
        m->close();
        QCOMPARE(p.dialogs.questions.size(), 1);
        QVERIFY(m->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!m->uploading(), 60000);
        QVERIFY(m->isVisible());
        QVERIFY(p.dialogs.notes.isEmpty());
        QCOMPARE(p.channelsWritten().size(), 108);
    }
};

QTEST_MAIN(TestAppUploadClose)
#include "test_app_upload_close.moc"
