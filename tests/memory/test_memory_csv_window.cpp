// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's "Export CSV..." and "Import CSV...", with the virtual radio's model answering
// the window's requests on a fake port.
#include "FakeConsoleHost.h"
#include "FakeMemoryDialogs.h"
#include "MemFile.h"
#include "Mem_Frm.h"
#include "MemoryCsv.h"
#include "MemoryTableModel.h"
#include "PressButton.h"
#include "VirtualRadio.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {
struct Scene {
    FakeConsoleHost host;
    FakeMemoryDialogs dialogs;
    VirtualRadio radio;
    QTemporaryDir dir;
    Scene()
    {
        host.port->responder = [this](const QByteArray& c) { return radio.handle(c); };
    }
    std::unique_ptr<Mem_Frm> open() { return std::make_unique<Mem_Frm>(host, &dialogs); }
    QString path(const char* name) const { return dir.filePath(QString::fromLatin1(name)); }
};

QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

QStringList menuTexts(const QMenu* menu)
{
    QStringList t;
    for (const QAction* a : menu->actions())
        t << (a->isSeparator() ? QStringLiteral("-") : a->text());
    return t;
}

const QByteArray header = "Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked\r\n";
}  // namespace

class TestMemoryCsvWindow : public QObject {
    Q_OBJECT
private slots:
    void fileMenu_hasExportAndImportAboveClose()
    {
        Scene s;
        auto w = s.open();
        QCOMPARE(menuTexts(w->mnu_bar),
                 (QStringList{"&Open Mem File", "-", "&Save", "Save &As ...", "-", "Export CSV...", "Import CSV...",
                              "-", "&Write Changed to Radio...", "&Restore Backup...", "-", "Close"}));
        // Export waits for a table, as "&Save" does; import is always there.
        QVERIFY(!w->mnu_csv[0]->isEnabled());
        QVERIFY(w->mnu_csv[1]->isEnabled());
        w->Bouton[4]->click();
        QVERIFY(w->mnu_csv[0]->isEnabled());
    }

    void export_asksForAFileAndWritesEveryRow()
    {
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        s.dialogs.fileAnswer = s.path("list.csv");
        w->mnu_csv[0]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 1);
        const FileDialogRequest r = s.dialogs.requests[0];
        QCOMPARE(r.kind, FileDialogRequest::Kind::Save);
        QCOMPARE(r.title, QStringLiteral("Export Memory List as CSV"));
        QCOMPARE(r.filters, (QStringList{"CSV Files (*.csv)", "All Files (*.*)"}));
        QCOMPARE(r.defaultSuffix, QStringLiteral("csv"));
        QVERIFY(r.file.endsWith(QStringLiteral("/ft1000.csv")));
        const QList<QByteArray> lines = readFile(s.path("list.csv")).split('\n');
        QCOMPARE(lines.size(), 115);  // a header, 113 channels, nothing after the last line end
        QCOMPARE(lines[0] + '\n', header);
        // The virtual radio's channel 1: 3 573.00 kHz USB; 12: 14 060.00 kHz CW reverse; an unwritten
        // channel holds 7 000.00 kHz LSB, masked.
        QCOMPARE(lines[1], QByteArray("1,\" Chan 1\",3573.00,USB,0.00,A,no\r"));
        QCOMPARE(lines[12], QByteArray("12,\" Chan 12\",14060.00,CW R,0.00,A,no\r"));
        QCOMPARE(lines[50], QByteArray("50,\" Chan 50\",7000.00,LSB,0.00,A,yes\r"));
        QCOMPARE(lines[100], QByteArray("100,\" P 1\",14000.00,CW N,0.00,A,no\r"));
        QCOMPARE(lines[113], QByteArray("113,\" QMB 5\",7000.00,LSB,0.00,A,yes\r"));
        QVERIFY(s.dialogs.errors.isEmpty());
    }

    void export_ofATableThatCannotBeWritten_namesTheFileAndRowAndWritesNothing()
    {
        Scene s;
        auto w = s.open();
        s.dialogs.fileAnswer = s.path("empty.csv");
        w->ExportCsv(s.path("empty.csv"));
        QCOMPARE(s.dialogs.errors.size(), 1);
        QCOMPARE(s.dialogs.errors[0].title, QStringLiteral("Export CSV"));
        QVERIFY(s.dialogs.errors[0].text.contains(s.path("empty.csv")));
        QVERIFY(s.dialogs.errors[0].text.contains(QStringLiteral("Row 1 ")));
        QVERIFY(!QFile::exists(s.path("empty.csv")));
    }

    void import_fillsTheTableAsALoadOfTheSameChannelsWould()
    {
        Scene s;
        auto w = s.open();
        QVERIFY(writeFile(s.path("in.csv"),
                          header + "2,Net,7074.00,USB,0.00,B,yes\r\n100,Top,28074.50,PKT FM,-0.10,Rx,no\r\n"));
        s.dialogs.fileAnswer = s.path("in.csv");
        w->mnu_csv[1]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QCOMPARE(s.dialogs.requests[0].kind, FileDialogRequest::Kind::Open);
        QCOMPARE(s.dialogs.requests[0].title, QStringLiteral("Import Memory List from CSV"));
        QVERIFY(s.dialogs.errors.isEmpty());
        MemoryTableModel& t = w->table();
        QCOMPARE(t.channelRow(2).cells,
                 (std::array<QString, MemoryColumn::Count>{" Net", "7,074.00 ", "USB", "0.00 ", "B", "1"}));
        QCOMPARE(t.colour(2), MemoryColour::Masked);
        QCOMPARE(t.channelRow(100).cells,
                 (std::array<QString, MemoryColumn::Count>{" Top", "28,074.50 ", "PKT FM", "-0.10 ", "Rx", "11"}));
        QCOMPARE(t.colour(100), MemoryColour::Unmasked);
        // Channels the list does not name are cleared, as a short memory file leaves them.
        QCOMPARE(t.channelRow(1).cells, (std::array<QString, MemoryColumn::Count>{" ", "0.00 ", "", "0.00 ", "", "0"}));
        QVERIFY(w->expanded());
        QVERIFY(w->Bouton[5]->isEnabled());
        QVERIFY(w->Btn_Diag[1]->isEnabled());
        QVERIFY(w->mnu_file[2]->isEnabled());
    }

    void import_thenSave_thenUpload_writesTheListIntoTheRadio()
    {
        Scene s;
        auto w = s.open();
        QVERIFY(
            writeFile(s.path("in.csv"), header + "2,Net,7074.00,USB,0.00,A,yes\r\n108,Last,21074.00,LSB,0,A,no\r\n"));
        QVERIFY(w->ImportCsv(s.path("in.csv")));
        w->setCurrentFile(s.path("from-list.ymp"));
        QVERIFY(w->SaveMemFile());
        s.dialogs.confirmAnswer = true;
        w->Bouton[5]->click();
        QVERIFY(!w->uploading());
        const MemoryChannel two = s.radio.channel(2);
        QCOMPARE(two.data.freq10Hz, 707400);
        QCOMPARE(two.data.modeByte, 1);
        QVERIFY(two.masked);
        QCOMPARE(s.radio.channel(108).data.freq10Hz, 2107400);
        QCOMPARE(s.radio.channel(108).data.modeByte, 0);
        QVERIFY(!s.radio.channel(108).masked);
    }

    void import_ofChannelsThatCannotBeKept_asksFirst_noLeavesTheTable()
    {
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> before = w->table().rows();
        QVERIFY(writeFile(s.path("rep.csv"),
                          "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,Mode\r\n"
                          "1,Ten,29.620000,-,0.100000,Tone,88.5,FM\r\n"
                          "2,Ft8,14.074000,,0.000000,,88.5,DIG\r\n"));
        s.dialogs.fileAnswer = s.path("rep.csv");
        w->mnu_csv[1]->trigger();  // No, the default
        QCOMPARE(s.dialogs.questions.size(), 1);
        QCOMPARE(s.dialogs.questions[0].title, QStringLiteral("Import CSV"));
        const QString q = s.dialogs.questions[0].text;
        QVERIFY2(q.contains(QStringLiteral("Line 2, channel 1: the repeater offset - 0.100000 MHz is not kept")),
                 qPrintable(q));
        QVERIFY2(q.contains(QStringLiteral("Line 2, channel 1: the tone setting \"Tone\" is not kept")), qPrintable(q));
        QVERIFY(!q.contains(QStringLiteral("channel 2:")));
        QCOMPARE(w->table().rows(), before);
        s.dialogs.yesAnswer = true;
        w->mnu_csv[1]->trigger();
        QCOMPARE(s.dialogs.questions.size(), 2);
        QCOMPARE(w->table().cell(1, MemoryColumn::Freq), QStringLiteral("29,620.00 "));
        QCOMPARE(w->table().cell(2, MemoryColumn::Mode), QStringLiteral("PKT LSB"));
    }

    void import_thenUpload_asksToSaveTheListFirst_thenWritesItIntoTheRadio()
    {
        Scene s;
        auto w = s.open();
        w->setCurrentFile(s.path("current.ymp"));
        w->Bouton[4]->click();  // the radio's channels
        QVERIFY(w->SaveMemFile());
        QVERIFY(writeFile(s.path("in.csv"), header + "2,Net,7074.00,USB,0.00,A,yes\r\n"));
        QVERIFY(w->ImportCsv(s.path("in.csv")));
        QVERIFY(w->Bouton[5]->isEnabled());
        // Cancel: neither the file nor the radio changes.
        const QByteArray before = readFile(s.path("current.ymp"));
        const MemoryChannel twoBefore = s.radio.channel(2);
        s.dialogs.saveAnswer = false;
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.saveQuestions.size(), 1);
        QVERIFY(s.dialogs.confirmations.isEmpty());
        QCOMPARE(readFile(s.path("current.ymp")), before);
        QCOMPARE(s.radio.channel(2).data.freq10Hz, twoBefore.data.freq10Hz);
        // Save and upload: the imported list, not the old file, goes into the radio.
        s.dialogs.saveAnswer = true;
        s.dialogs.confirmAnswer = true;
        w->Bouton[5]->click();
        QVERIFY(!w->uploading());
        QCOMPARE(s.dialogs.saveQuestions.size(), 2);
        QVERIFY(readFile(s.path("current.ymp")) != before);
        QCOMPARE(s.radio.channel(2).data.freq10Hz, 707400);
        QVERIFY(s.radio.channel(2).masked);
        // Now the table is the file: no question before the next upload.
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.saveQuestions.size(), 2);
    }

    void import_badInput_oneMessageNamingFileLineAndProblem_tableUntouched_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("where");
        QTest::newRow("no header") << QByteArray("1,A,7074.00,USB,0,A,no\r\n") << QStringLiteral("Line 1: no header: ");
        QTest::newRow("unknown mode") << header + "1,A,7074.00,USB,0,A,no\r\n2,B,7074.00,SSB,0,A,no\r\n"
                                      << QStringLiteral("Line 3: unknown mode \"SSB\".");
        QTest::newRow("frequency") << header + "1,A,31000.00,USB,0,A,no\r\n"
                                   << QStringLiteral(
                                          "Line 2: the frequency 31000.00 kHz is outside 0.03-30 MHz "
                                          "(9.52-30020.48 kHz with the clarifier).");
        QTest::newRow("channel") << header + "114,A,7074.00,USB,0,A,no\r\n"
                                 << QStringLiteral("Line 2: Channel 114 is outside 1-113.");
        QTest::newRow("duplicate") << header + "5,A,7074.00,USB,0,A,no\r\n5,A,7074.00,USB,0,A,no\r\n"
                                   << QStringLiteral("Line 3: channel 5 is named twice, on lines 2 and 3.");
        QTest::newRow("empty") << QByteArray() << QStringLiteral("Line 1: the file is empty.");
        QTest::newRow("binary") << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452")
                                << QStringLiteral("Line 2: this is not a text file (it holds control characters).");
    }
    void import_badInput_oneMessageNamingFileLineAndProblem_tableUntouched()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, where);
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        const QList<MemoryRow> before = w->table().rows();
        QVERIFY(writeFile(s.path("bad.csv"), bytes));
        s.dialogs.fileAnswer = s.path("bad.csv");
        w->mnu_csv[1]->trigger();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QCOMPARE(s.dialogs.errors[0].title, QStringLiteral("Import CSV"));
        const QString text = s.dialogs.errors[0].text;
        QVERIFY2(text.startsWith(QStringLiteral("Could not import \"%1\".\n").arg(s.path("bad.csv"))),
                 qPrintable(text));
        QVERIFY2(text.contains(u'\n' + where), qPrintable(text));
        QVERIFY(text.endsWith(QStringLiteral("\nThe table was left as it was.")));
        QCOMPARE(w->table().rows(), before);
    }

    void import_ofAMissingFile_namesIt()
    {
        Scene s;
        auto w = s.open();
        QVERIFY(!w->ImportCsv(s.path("none.csv")));
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(s.path("none.csv")));
        QVERIFY(!w->expanded());
    }

    void import_cancelledDialog_doesNothing()
    {
        Scene s;
        auto w = s.open();
        w->mnu_csv[1]->trigger();
        QCOMPARE(s.dialogs.requests.size(), 1);
        QVERIFY(s.dialogs.errors.isEmpty());
        QVERIFY(!w->expanded());
    }

    void getMem_exportImportSave_isByteIdenticalToSavingDirectly()
    {
        Scene s;
        // Something of every kind in the radio: each mode, clarifiers, antennas, masks.
        const int modes[][2] = {{0, 0}, {1, 0}, {2, 0}, {2, 1}, {3, 0}, {3, 1}, {4, 0}, {5, 0}, {5, 1}, {6, 0}, {6, 1}};
        for (int n = 1; n <= 113; ++n) {
            MemoryChannel c;
            c.data.freq10Hz = 3000 + qint64(n) * 26513;  // 30 kHz up to about 29.99 MHz
            c.data.clar10Hz = (n % 7 - 3) * 17;
            c.data.rxClar = n % 7 != 3;
            c.data.modeByte = modes[n % 11][0];
            c.data.secondVariant = modes[n % 11][1] != 0;
            c.data.antennaB = n % 3 == 1;
            c.data.rxAntenna = n % 4 == 3;
            c.masked = n % 5 == 0;
            s.radio.setChannel(n, c);
        }
        auto w = s.open();
        w->Bouton[4]->click();
        w->setCurrentFile(s.path("direct.ymp"));
        QVERIFY(w->SaveMemFile());

        QVERIFY(w->ExportCsv(s.path("list.csv")));
        w->table().setRows(QList<MemoryRow>(113));  // nothing left of the read-out in the table
        QVERIFY(w->ImportCsv(s.path("list.csv")));
        w->setCurrentFile(s.path("via-csv.ymp"));
        w->show();
        QTest::mousePress(w->Btn_Diag[1], Qt::LeftButton);  // "Save File"
        QCoreApplication::processEvents();
        QVERIFY(s.dialogs.errors.isEmpty());
        const QByteArray direct = readFile(s.path("direct.ymp"));
        QCOMPARE(direct.size(), 3277);
        QCOMPARE(readFile(s.path("via-csv.ymp")), direct);
        // The radio's channels are what went through: channel 10 is 268 130 x 10 Hz.
        QCOMPARE(w->table().cell(10, MemoryColumn::Freq), QStringLiteral("2,681.30 "));
    }

    void screenshot_fileMenu()
    {
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (out.isEmpty())
            QSKIP("FT_TEST_OUTPUT is not set");
        QDir().mkpath(out);
        Scene s;
        auto w = s.open();
        w->Bouton[4]->click();
        w->show();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        w->mnu_bar->popup(w->mapToGlobal(QPoint(0, w->menuBar->height())));
        QVERIFY(QTest::qWaitForWindowExposed(w->mnu_bar));
        QVERIFY(w->mnu_bar->grab().save(out + QStringLiteral("/memory_file_menu.png")));
        w->mnu_bar->hide();
    }
};

QTEST_MAIN(TestMemoryCsvWindow)
#include "test_memory_csv_window.moc"
