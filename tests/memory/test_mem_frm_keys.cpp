// SPDX-License-Identifier: GPL-3.0-or-later
// The memory window's keys that act on the radio, the upload, and closing while an upload runs.
#include "GoldenFile.h"
#include "MemFile.h"
#include "MemFrmScene.h"
#include "PressButton.h"
#include "Twips.h"
#include "WindowPlacement.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace MemFrmTest;

namespace {
// While channel `channel` is written into the radio, closes the window: with the title bar's close box
// ("box"), the "&Close" key ("key") or the menu's "Close" ("menu").
void closeWhileWriting(Scene& s, Mem_Frm& w, int channel, const QString& how)
{
    const QByteArray write = QByteArray::fromHex("000000") + char(channel) + char(0x03);
    auto done = std::make_shared<bool>(false);
    const auto answer = s.host.port->responder;
    s.host.port->responder = [&w, write, how, done, answer](const QByteArray& c) {
        if (!*done && c == write) {
            *done = true;
            if (how == QStringLiteral("box"))
                w.close();
            else if (how == QStringLiteral("key"))
                w.Bouton[0]->click();
            else
                w.mnu_file[5]->trigger();
        }
        return answer(c);
    };
}

}  // namespace

class TestMemFrmKeys : public QObject {
    Q_OBJECT
private slots:
    // --- Keys ---

    void close_rightAfterOpeningOnVfo_recallsStartChannelThenBackToVfo()
    {
        Scene s;
        s.radioChannel = 17;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        s.clear();
        w->Bouton[0]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 11 02", "00 00 00 00 05"}));
        QVERIFY(!w->isVisible());
        QCOMPARE(s.host.store.value("Startup", "MemPath"), w->currentFile());
    }

    void close_onMemory_staysOnTheChannelLastBrowsed()
    {
        Scene s;
        s.radioChannel = 17;
        auto w = s.open();
        QCOMPARE(w->MemState, 1);
        w->HScroll1->setValue(30);
        s.clear();
        w->Bouton[0]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 1E 02"});
    }

    void close_onMemory_onTheStartChannel_sendsNothing()
    {
        Scene s;
        s.radioChannel = 17;
        auto w = s.open();
        s.clear();
        w->Bouton[0]->click();
        QVERIFY(s.writes().isEmpty());
    }

    void close_inFollowMode_sendsNothing()
    {
        Scene s;
        auto w = s.open();
        emit w->MSFlexGrid1->doubleClicked(w->MSFlexGrid1->model()->index(30, 0));
        s.clear();
        w->Bouton[0]->click();
        QVERIFY(s.writes().isEmpty());
    }

    void menuClose_isTheCloseKey()
    {
        Scene s;
        s.radioChannel = 2;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        s.clear();
        w->mnu_file[5]->trigger();
        QCOMPARE(s.writes(), (QStringList{"00 00 00 02 02", "00 00 00 00 05"}));
        QVERIFY(!w->isVisible());
    }

    void closeMnemonic_altC()
    {
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->show();
        QApplication::setActiveWindow(w.get());
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
        s.clear();
        QTest::keyClick(w.get(), Qt::Key_C, Qt::AltModifier);
        // A mnemonic clicks the key after a short animation.
        QTRY_COMPARE(s.writes(), (QStringList{"00 00 00 01 02", "00 00 00 00 05"}));
    }

    void memoryToA_copiesTheChannelAndGoesToVfoState()
    {
        Scene s;
        s.radioChannel = 8;
        auto w = s.open();
        QCOMPARE(w->MemState, 1);
        s.clear();
        w->Bouton[1]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 08 06"});
        QCOMPARE(w->MemState, 0);
    }

    void mask_onAnUnmaskedChannel_masksAndRereads()
    {
        Scene s;
        s.radioChannel = 8;
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        s.clear();
        w->Bouton[2]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 01 08 03", "08 00 00 04 10"}));
        QCOMPARE(w->gridRow(), 8);
    }

    void mask_onAMaskedChannel_readsUnmaskAndSendsP3Is2()
    {
        Scene s;
        s.radioChannel = 14;  // masked in the sample
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));
        s.clear();
        s.channel = [](int n) {
            Channel c = ChannelBytes::sample(n);
            c.masked = false;
            return c;
        };
        w->Bouton[2]->click();
        QCOMPARE(s.writes(), (QStringList{"00 00 02 0E 03", "0E 00 00 04 10"}));
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        QCOMPARE(labelColour(w->Label1[1]), unmasked);
        QCOMPARE(cellColour(*w, 14, 1), unmasked);
    }

    void mask_waitsForTheNewChannelsRead_neverActsOnThePreviousCaption()
    {
        Scene s;
        s.radioChannel = 14;  // masked in the sample: the key reads "Un-Mask"
        auto w = s.open();
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));
        QVERIFY(w->Bouton[2]->isEnabled());
        s.silent = true;  // the read of the next channel brings nothing back (yet)
        w->HScroll1->setValue(15);
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Un-Mask"));  // still channel 14's caption
        QVERIFY(!w->Bouton[2]->isEnabled());
        s.clear();
        w->Bouton[2]->click();
        QVERIFY(s.writes().isEmpty());  // no "un-mask channel 15" from channel 14's caption
        s.silent = false;
        w->ReadMemory(0);  // the read returns
        QCOMPARE(w->Bouton[2]->text(), QStringLiteral("Mask"));
        QVERIFY(w->Bouton[2]->isEnabled());
        s.clear();
        w->Bouton[2]->click();
        QCOMPARE(s.writes().value(0), QStringLiteral("00 00 01 0F 03"));
    }

    void vfoMem_fromVfo_recallsTheChannel()
    {
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->HScroll1->setValue(21);
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 15 02"});
        QCOMPARE(w->MemState, 1);
        QCOMPARE(w->StartChannel, 21);
    }

    void vfoMem_fromMemoryTune_recallsTheChannel()
    {
        Scene s;
        s.host.visible[10] = true;
        auto w = s.open();
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 01 02"});
        QCOMPARE(w->MemState, 1);
    }

    void vfoMem_fromMemory_goesBackToVfo()
    {
        Scene s;
        s.host.visible[9] = true;
        auto w = s.open();
        s.clear();
        w->Bouton[3]->click();
        QCOMPARE(s.writes(), QStringList{"00 00 00 00 05"});
        QCOMPARE(w->MemState, 0);
    }

    // --- Upload ---

    void upload_asksFirst_cancelChangesNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        QVERIFY(w->LoadMemFile());  // the table is the file: nothing to save first
        s.clear();
        s.dialogs.confirmAnswer = false;
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.confirmations.size(), 1);
        QCOMPARE(s.dialogs.confirmations[0].title, QStringLiteral("Upload ?"));
        QCOMPARE(s.dialogs.confirmations[0].text,
                 QStringLiteral("You are about to upload this list to the tranceiver memory... "));
        QVERIFY(s.dialogs.saveQuestions.isEmpty());
        QVERIFY(s.writes().isEmpty());
        QVERIFY(s.host.pollChanges.isEmpty());
    }

    void upload_ofATableThatDiffersFromTheFile_asksToSaveItFirst_cancelChangesNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->Bouton[4]->click();  // the table now holds the radio's channels, not the file's
        s.clear();
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.saveQuestions.size(), 1);
        QCOMPARE(s.dialogs.saveQuestions[0].title, QStringLiteral("Upload ?"));
        QVERIFY(s.dialogs.saveQuestions[0].text.contains(path));
        QVERIFY(s.dialogs.confirmations.isEmpty());
        QVERIFY(s.writes().isEmpty());
        QCOMPARE(readFile(path), Golden::file());
    }

    void upload_ofATableThatDiffersFromTheFile_saveAndUpload_writesTheTableIntoTheRadio()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->Bouton[4]->click();
        const QList<MemoryRow> table = w->table().rows();
        s.clear();
        s.dialogs.saveAnswer = true;
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.saveQuestions.size(), 1);
        QCOMPARE(s.dialogs.confirmations.size(), 1);  // the upload's own question follows
        QVERIFY(readFile(path) != Golden::file());
        QString error;
        QCOMPARE(MemFile::recordsFromRows(table, &error)->at(0).encode(), readFile(path).left(29));
        // The radio's channel 1 goes back: the file now holds the table.
        const MemoryRow one = table[0];
        const QStringList writes = s.writes();
        QCOMPARE(writes[4], QStringLiteral("00 00 00 %1 0C")
                                .arg(one.cells[MemoryColumn::Mde].toInt(), 2, 16, QLatin1Char('0'))
                                .toUpper());
    }

    void upload_writesTheFileNotTheTable_withThePollOffMeanwhile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->Bouton[4]->click();  // the table now holds the radio's channels, not the file's
        s.clear();
        s.host.clock->onSleep = [&](int) { QVERIFY(!s.host.pollOn); };
        w->UploadMemory();  // the job itself, without the key's questions
        s.host.clock->onSleep = nullptr;
        const QStringList writes = s.writes();
        QCOMPARE(writes.mid(0, 4),
                 (QStringList{"00 00 00 01 02", "00 00 00 00 09", "00 00 00 80 09", "00 00 00 FF 09"}));
        // Golden channel 1: USB, 14 157.70 kHz; channel 2: CW R, 7 025.00 kHz, masked.
        QCOMPARE(writes.mid(4, 3), (QStringList{"00 00 00 01 0C", "70 57 41 01 0A", "00 00 00 01 03"}));
        QCOMPARE(writes.mid(7, 4),
                 (QStringList{"00 00 00 03 0C", "00 25 70 00 0A", "00 00 00 02 03", "00 00 01 02 03"}));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
        QVERIFY(!w->Progress->isVisibleTo(w.get()));
        QCOMPARE(w->Progress->value(), 100);
        QVERIFY(!w->uploading());
        QVERIFY(w->Bouton[5]->isEnabled());
    }

    void upload_ofAnUnreadableFileTellsTheOperator()
    {
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.ymp")));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(dir.filePath(QStringLiteral("folder.ymp")));
        w->Bouton[4]->click();
        w->UploadMemory();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY(s.dialogs.errors[0].text.contains(QStringLiteral("folder.ymp")));
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    void upload_withThePortClosed_saysSoAndShowsNoProgress()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        QVERIFY(w->LoadMemFile());
        s.host.port->close();
        s.clear();
        QSignalSpy shown(w->Progress, &QProgressBar::valueChanged);
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.errors.size(), 1);
        QVERIFY2(s.dialogs.errors[0].text.contains(QStringLiteral("port is closed: nothing was uploaded")),
                 qPrintable(s.dialogs.errors[0].text));
        QVERIFY(s.dialogs.confirmations.isEmpty());
        QVERIFY(!w->Progress->isVisibleTo(w.get()));
        QCOMPARE(shown.count(), 0);
        QVERIFY(s.host.pollChanges.isEmpty());
    }

    void upload_aPortThatFailsPartWay_stopsThereAndNamesTheLastChannelWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        QVERIFY(w->LoadMemFile());
        s.clear();
        // The adapter is pulled while channel 20 goes out.
        const auto answer = s.host.port->responder;
        s.host.port->responder = [&s, answer](const QByteArray& c) {
            if (c == QByteArray::fromHex("0000001403"))
                s.host.port->failed_ = true;
            return answer(c);
        };
        w->Bouton[5]->click();
        QVERIFY(!w->uploading());
        const QStringList writes = s.writes();
        QVERIFY(writes.contains(QStringLiteral("00 00 00 14 03")));
        QVERIFY(!writes.contains(QStringLiteral("00 00 00 15 03")));  // nothing after channel 20
        QCOMPARE(s.dialogs.errors.size(), 1);
        QCOMPARE(s.dialogs.errors[0].title, QStringLiteral("Upload stopped"));
        QCOMPARE(s.dialogs.errors[0].text,
                 QStringLiteral("The radio's port failed during the upload, which stopped there.\nThe last channel "
                                "written is 19 (Chan 19). Channel 20 (Chan 20) may be partly written. The channels "
                                "after it keep what the radio held; upload again once the radio is back."));
        QVERIFY(w->Progress->value() < 100);
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    // --- Closing during an upload ---

    void closingDuringUpload_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("close box") << QStringLiteral("box");
        QTest::newRow("Close key") << QStringLiteral("key");
        QTest::newRow("Close menu") << QStringLiteral("menu");
    }

    void closingDuringUpload_no_letsTheUploadGoOn_data() { closingDuringUpload_data(); }
    void closingDuringUpload_no_letsTheUploadGoOn()
    {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.host.visible[8] = true;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        QVERIFY(w->LoadMemFile());
        s.clear();
        s.dialogs.yesAnswer = false;
        closeWhileWriting(s, *w, 20, how);
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.questions.size(), 1);
        QCOMPARE(s.dialogs.questions[0].title, QStringLiteral("FT-1000 Memory"));
        QCOMPARE(s.dialogs.questions[0].text,
                 QStringLiteral("Stop the upload? The radio's memory will be partly written."));
        // Every channel is written, then back to the VFO; the close sent nothing of its own.
        const QStringList writes = s.writes();
        QVERIFY(writes.contains(QStringLiteral("00 00 00 6C 03")));
        QCOMPARE(writes.last(), QStringLiteral("00 00 00 00 05"));
        QCOMPARE(writes.count(QStringLiteral("00 00 00 00 05")), 1);
        QVERIFY(w->isVisible());
        QVERIFY(!w->uploading());
        QVERIFY(s.dialogs.notes.isEmpty());
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    void closingDuringUpload_yes_stopsAfterTheChannelAndNamesIt_data() { closingDuringUpload_data(); }
    void closingDuringUpload_yes_stopsAfterTheChannelAndNamesIt()
    {
        QFETCH(QString, how);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        s.radioChannel = 17;
        s.host.visible[8] = true;  // the radio is on a VFO: the Close key puts channel 17 back
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        QVERIFY(w->LoadMemFile());
        s.clear();
        s.dialogs.yesAnswer = true;
        closeWhileWriting(s, *w, 10, how);
        w->Bouton[5]->click();
        QCOMPARE(s.dialogs.questions.size(), 1);
        QStringList writes = s.writes();
        // Channel 10 is written whole (golden channel 10: LSB, 7 025.00 kHz), channel 11 not at all.
        const qsizetype at = writes.indexOf(QStringLiteral("00 00 00 0A 03"));
        QVERIFY(at > 0);
        QCOMPARE(writes.mid(at - 2, 3), (QStringList{"00 00 00 00 0C", "00 25 70 00 0A", "00 00 00 0A 03"}));
        QVERIFY(!writes.contains(QStringLiteral("00 00 00 0B 03")));
        QCOMPARE(writes[at + 1], QStringLiteral("00 00 00 00 05"));  // the upload's way back to the VFO
        // The Close key (and its menu item) still does its own work once the upload has stopped.
        const QStringList closing = writes.mid(at + 2);
        if (how == QStringLiteral("box"))
            QVERIFY(closing.isEmpty());
        else
            QCOMPARE(closing, (QStringList{"00 00 00 11 02", "00 00 00 00 05"}));
        QCOMPARE(s.dialogs.notes.size(), 1);
        QCOMPARE(s.dialogs.notes[0].title, QStringLiteral("Upload stopped"));
        QCOMPARE(s.dialogs.notes[0].text,
                 QStringLiteral("The upload stopped after channel 10 (Chan 10): channels 1 to 10 were written, the "
                                "others keep what the radio held."));
        QVERIFY(!w->isVisible());
        QVERIFY(!w->uploading());
        QCOMPARE(s.host.store.value("Startup", "MemPath"), path);
        QCOMPARE(s.host.pollChanges, (QList<bool>{false, true}));
    }

    void closingDuringUpload_yesBeforeTheFirstChannel_saysNothingWasWritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("golden.ymp"));
        QVERIFY(writeFile(path, Golden::file()));
        Scene s;
        auto w = s.open();
        w->setCurrentFile(path);
        w->show();
        QVERIFY(w->LoadMemFile());
        s.dialogs.yesAnswer = true;
        // The close comes while the clarifier is cleared, before channel 1.
        bool asked = false;
        s.host.port->responder = [&, w = w.get()](const QByteArray& c) {
            if (!asked && c == QByteArray::fromHex("00000000 09")) {
                asked = true;
                w->close();
            }
            return QByteArray();
        };
        w->Bouton[5]->click();
        QVERIFY(asked);
        QCOMPARE(s.dialogs.notes.size(), 1);
        // The upload looks for a stop before every channel, the first too: nothing was written.
        QCOMPARE(s.dialogs.notes[0].text,
                 QStringLiteral("The upload stopped before channel 1 was written; the radio's memory is as it was."));
        for (const QString& sent : s.writes())
            QVERIFY2(!sent.endsWith(QStringLiteral(" 03")) && !sent.endsWith(QStringLiteral(" 0C")), qPrintable(sent));
        QVERIFY(!w->isVisible());
    }

    void closingWithoutUpload_asksNothing()
    {
        Scene s;
        auto w = s.open();
        w->show();
        w->close();
        QVERIFY(s.dialogs.questions.isEmpty());
        QVERIFY(!w->isVisible());
    }
};

QTEST_MAIN(TestMemFrmKeys)
#include "test_mem_frm_keys.moc"
