// SPDX-License-Identifier: GPL-3.0-or-later
// Editing the memory window's table: the cell editors, the refusal shown beside the table, the Edit
// menu and its keys, the clipboard, the marks of changed rows, the "*" in the title and the question
// before unsaved changes are lost.
#include "MemFrmScene.h"
#include "MemoryEditor.h"
#include "MemoryGridModel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using namespace MemFrmTest;

namespace {
// The window with all channels read from the fake radio, shown.
std::unique_ptr<Mem_Frm> readAll(Scene& s)
{
    auto w = s.open();
    w->Bouton[4]->click();
    w->show();
    return w;
}

QModelIndex at(Mem_Frm& w, int channel, int column)
{
    return w.MSFlexGrid1->model()->index(channel - 1, column);
}

// Opens the cell's editor as F2 does.
QWidget* openEditor(Mem_Frm& w, int channel, int column)
{
    w.MSFlexGrid1->setCurrentIndex(at(w, channel, column));
    QTest::keyClick(w.MSFlexGrid1, Qt::Key_F2);
    return w.MSFlexGrid1->indexWidget(at(w, channel, column));
}

void selectChannels(Mem_Frm& w, const QList<int>& channels)
{
    w.MSFlexGrid1->clearSelection();
    w.MSFlexGrid1->setCurrentIndex(at(w, channels.first(), 0));
    for (int c : channels)
        w.MSFlexGrid1->selectionModel()->select(at(w, c, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

int change(Mem_Frm& w, int channel)
{
    return at(w, channel, 0).data(MemoryGridModel::ChangeRole).toInt();
}

QStringList menuTexts(const QMenu* menu)
{
    QStringList t;
    for (const QAction* a : menu->actions())
        t << (a->isSeparator() ? QStringLiteral("-") : a->text());
    return t;
}

const int both = MemoryEditor::Unsaved | MemoryEditor::Unwritten;
}  // namespace

class TestMemFrmEdit : public QObject {
    Q_OBJECT
private slots:
    // --- Cell editors ---

    void beforeATableIsRead_cellsAreNotEditable()
    {
        Scene s;
        auto w = s.open();
        QVERIFY(!(at(*w, 3, MemoryColumn::Freq).flags() & Qt::ItemIsEditable));
        QVERIFY(!w->editAction("Paste")->isEnabled());
    }

    void f2_typeAFrequency_enter_takesIt_marksTheRow_titleStar()
    {
        Scene s;
        auto w = readAll(s);
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        auto* line = qobject_cast<QLineEdit*>(openEditor(*w, 3, MemoryColumn::Freq));
        QVERIFY(line);
        QCOMPARE(line->accessibleName(), QStringLiteral("Freq"));
        line->selectAll();
        QTest::keyClicks(line, "14.1955 MHz");
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_COMPARE(cellText(*w, 3, MemoryColumn::Freq), QStringLiteral("14,195.50 "));
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory *"));
        QCOMPARE(change(*w, 3), both);
        QCOMPARE(change(*w, 4), 0);
        QCOMPARE(at(*w, 3, 1).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("Changed: not yet written to the radio, not yet saved"));
        QVERIFY(at(*w, 3, 1).data(Qt::BackgroundRole).isValid());
        QVERIFY(!at(*w, 4, 1).data(Qt::BackgroundRole).isValid());
        QVERIFY(w->editReason().isEmpty());
        QVERIFY(w->WriteChanged->isEnabled());
    }

    void esc_abandonsTheEdit()
    {
        Scene s;
        auto w = readAll(s);
        const QString before = cellText(*w, 3, MemoryColumn::Freq);
        auto* line = qobject_cast<QLineEdit*>(openEditor(*w, 3, MemoryColumn::Freq));
        QVERIFY(line);
        line->selectAll();
        QTest::keyClicks(line, "7074");
        QTest::keyClick(line, Qt::Key_Escape);
        QCoreApplication::processEvents();
        QVERIFY(!w->MSFlexGrid1->indexWidget(at(*w, 3, MemoryColumn::Freq)));
        QCOMPARE(cellText(*w, 3, MemoryColumn::Freq), before);
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
    }

    void refusedValue_reasonBesideTheTable_cellAsItWas()
    {
        Scene s;
        auto w = readAll(s);
        const QString before = cellText(*w, 3, MemoryColumn::Freq);
        auto* line = qobject_cast<QLineEdit*>(openEditor(*w, 3, MemoryColumn::Freq));
        QVERIFY(line);
        line->selectAll();
        QTest::keyClicks(line, "14195.505");
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_VERIFY(!w->editReason().isEmpty());
        QCOMPARE(cellText(*w, 3, MemoryColumn::Freq), before);
        QVERIFY2(w->editReason().startsWith("Channel 3, Freq: \"14195.505\" is finer than 10 Hz"),
                 qPrintable(w->editReason()));
        QVERIFY(w->EditReason->isVisible());
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QVERIFY(!w->editor().canUndo());
    }

    void modeFromTheList_modeCodeFollows()
    {
        Scene s;
        auto w = readAll(s);
        auto* box = qobject_cast<QComboBox*>(openEditor(*w, 4, MemoryColumn::Mode));
        QVERIFY(box);
        QCOMPARE(box->count(), 12);
        QCOMPARE(box->itemText(0), QStringLiteral("LSB"));
        box->setCurrentText(QStringLiteral("PKT FM"));
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(cellText(*w, 4, MemoryColumn::Mode), QStringLiteral("PKT FM"));
        QCOMPARE(cellText(*w, 4, MemoryColumn::Mde), QStringLiteral("11"));
    }

    void typingOnACell_startsItsEditor()
    {
        Scene s;
        auto w = readAll(s);
        w->MSFlexGrid1->setCurrentIndex(at(*w, 5, MemoryColumn::Ant));
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_B);
        QVERIFY(w->MSFlexGrid1->indexWidget(at(*w, 5, MemoryColumn::Ant)));
    }

    void doubleClick_stillActivatesTheChannel_opensNoEditor()
    {
        Scene s;
        auto w = readAll(s);
        s.clear();
        emit w->MSFlexGrid1->doubleClicked(at(*w, 20, MemoryColumn::Freq));
        QVERIFY(s.writes().contains(QStringLiteral("00 00 00 14 02")));
        QVERIFY(!w->MSFlexGrid1->indexWidget(at(*w, 20, MemoryColumn::Freq)));
    }

    void writeChangedKey_showsWithTheTable_insideTheWindow()
    {
        Scene s;
        auto w = s.open();
        w->show();
        QVERIFY(!w->WriteChanged->isVisible());
        w->Bouton[4]->click();
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        QCoreApplication::processEvents();
        QVERIFY(w->WriteChanged->isVisible());
        QCOMPARE(w->WriteChanged->text(), QStringLiteral("Write Changed"));
        QCOMPARE(w->WriteChanged->accessibleName(), QStringLiteral("Write Changed"));
        QVERIFY(!w->WriteChanged->isEnabled());  // nothing changed yet
        QVERIFY(w->rect().contains(QRect(w->WriteChanged->mapTo(w.get(), QPoint(0, 0)), w->WriteChanged->size())));
    }

    void screenshot_editing()
    {
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (out.isEmpty())
            QSKIP("FT_TEST_OUTPUT is not set");
        Scene s;
        auto w = readAll(s);
        QVERIFY(QTest::qWaitForWindowExposed(w.get()));
        QVERIFY(w->editor().setCell(3, MemoryColumn::Freq, "14195.5"));
        QVERIFY(w->editor().setCell(4, MemoryColumn::Mode, "CW R"));
        auto* line = qobject_cast<QLineEdit*>(openEditor(*w, 5, MemoryColumn::Freq));
        QVERIFY(line);
        line->selectAll();
        QTest::keyClicks(line, "14195.505");
        QTest::keyClick(line, Qt::Key_Return);
        QTRY_VERIFY(!w->editReason().isEmpty());
        selectChannels(*w, {3});
        QCoreApplication::processEvents();
        QVERIFY(w->rect().contains(QRect(w->EditReason->mapTo(w.get(), QPoint(0, 0)), w->EditReason->size())));
        QVERIFY(w->grab().save(out + QStringLiteral("/memory_editing.png")));
    }

    // --- Edit menu ---

    void editMenu_itemsAndThePlatformsKeys()
    {
        Scene s;
        auto w = readAll(s);
        QCOMPARE(w->mnu_edit->title(), QStringLiteral("&Edit"));
        QCOMPARE(menuTexts(w->mnu_edit),
                 (QStringList{"&Undo", "&Redo", "-", "Cu&t", "&Copy", "&Paste", "Cl&ear", "-", "Mo&ve Up", "Move &Down",
                              "&Sort by Frequency", "&Mask / Unmask"}));
        QVERIFY(w->editAction("Copy")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_C)));
        QVERIFY(w->editAction("Cut")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_X)));
        QVERIFY(w->editAction("Paste")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_V)));
        QVERIFY(w->editAction("Clear")->shortcuts().contains(QKeySequence(Qt::Key_Delete)));
        QVERIFY(w->editAction("Undo")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Z)));
        QVERIFY(w->editAction("Redo")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)));
        QVERIFY(w->editAction("Redo")->shortcuts().contains(QKeySequence(Qt::CTRL | Qt::Key_Y)));
        // The File menu is as it was; writing and backups have a menu of their own.
        QCOMPARE(menuTexts(w->mnu_bar),
                 (QStringList{"&Open Mem File", "-", "&Save", "Save &As ...", "-", "Export CSV...", "Import CSV...",
                              "-", "&Write Changed to Radio...", "&Restore Backup...", "-", "Close"}));
    }

    void keys_onTheTable_copyDeleteUndo()
    {
        Scene s;
        auto w = readAll(s);
        w->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(w.get()));
        w->MSFlexGrid1->setFocus();
        selectChannels(*w, {8, 9});
        const MemoryRow eight = w->table().channelRow(8);
        QApplication::clipboard()->clear();
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().startsWith("Channel,Name,"));
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_Delete);
        QCOMPARE(w->table().channelRow(8), MemoryEditor::clearedRow(8));
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(w->table().channelRow(8), eight);
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(w->table().channelRow(8), MemoryEditor::clearedRow(8));
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(w->MSFlexGrid1, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(w->table().channelRow(8), MemoryEditor::clearedRow(8));
        QCOMPARE(w->MSFlexGrid1->contextMenuPolicy(), Qt::ActionsContextMenu);
    }

    void undoRedo_throughTheMenu_namesTheStep()
    {
        Scene s;
        auto w = readAll(s);
        const QList<MemoryRow> asRead = w->table().rows();
        selectChannels(*w, {6, 7});
        w->editAction("Mask")->trigger();
        QCOMPARE(w->editAction("Undo")->text(), QStringLiteral("&Undo Mask"));
        w->editAction("Undo")->trigger();
        QCOMPARE(w->table().rows(), asRead);
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QCOMPARE(w->editAction("Redo")->text(), QStringLiteral("&Redo Mask"));
        w->editAction("Redo")->trigger();
        QCOMPARE(w->table().colour(6), MemoryColour::Masked);
    }

    void copyThenPaste_throughTheClipboard_equalsTheRows()
    {
        Scene s;
        auto w = readAll(s);
        selectChannels(*w, {10, 11, 12});
        QList<MemoryRow> rows;
        for (int n : {10, 11, 12})
            rows << w->table().channelRow(n);
        w->editAction("Cut")->trigger();
        QVERIFY(QApplication::clipboard()->text().startsWith(
            "Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked\r\n10,\" Chan 10\","));
        QCOMPARE(w->table().channelRow(11), MemoryEditor::clearedRow(11));
        w->MSFlexGrid1->setCurrentIndex(at(*w, 10, 0));
        w->editAction("Paste")->trigger();
        QVERIFY2(w->editReason().isEmpty(), qPrintable(w->editReason()));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(w->table().channelRow(10 + i), rows[i]);
        QCOMPARE(change(*w, 11), 0);
    }

    void paste_oneBadLine_changesNothing_namesTheLine()
    {
        Scene s;
        auto w = readAll(s);
        const QList<MemoryRow> asRead = w->table().rows();
        QApplication::clipboard()->setText(
            "Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked\r\n"
            "1,a,7074.00,USB,0,A,no\r\n"
            "2,b,99999.00,USB,0,A,no\r\n");
        w->MSFlexGrid1->setCurrentIndex(at(*w, 30, 0));
        w->editAction("Paste")->trigger();
        QCOMPARE(w->table().rows(), asRead);
        QVERIFY2(w->editReason().startsWith("Nothing was pasted. Line 3: "), qPrintable(w->editReason()));
    }

    void paste_pastChannel113_refused()
    {
        Scene s;
        auto w = readAll(s);
        const QList<MemoryRow> asRead = w->table().rows();
        selectChannels(*w, {1, 2, 3});
        w->editAction("Copy")->trigger();
        w->MSFlexGrid1->setCurrentIndex(at(*w, 112, 0));
        w->editAction("Paste")->trigger();
        QCOMPARE(w->table().rows(), asRead);
        QVERIFY(w->editReason().contains("past channel 113"));
    }

    void moveDown_selectionFollows_unchangedRowsUnmarked()
    {
        Scene s;
        auto w = readAll(s);
        selectChannels(*w, {40, 41});
        w->editAction("Move Down")->trigger();
        QCOMPARE(w->selectedChannels(), (QList<int>{41, 42}));
        QCOMPARE(change(*w, 40), both);
        QCOMPARE(change(*w, 39), 0);
        QCOMPARE(change(*w, 43), 0);
        w->editAction("Move Up")->trigger();
        for (int n = 38; n <= 44; ++n)
            QCOMPARE(change(*w, n), 0);
    }

    void sortByFrequency_ofTheSelection()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(50, MemoryColumn::Freq, "29000"));
        selectChannels(*w, {50, 51, 52});
        w->editAction("Sort by Frequency")->trigger();
        QCOMPARE(cellText(*w, 52, MemoryColumn::Freq), QStringLiteral("29,000.00 "));
        QCOMPARE(w->editAction("Undo")->text(), QStringLiteral("&Undo Sort by Frequency"));
    }

    // --- Saving, closing ---

    void save_clearsTheStar_rowStaysMarkedUnwritten()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = readAll(s);
        w->setCurrentFile(dir.filePath("t.ymp"));
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        QVERIFY(w->SaveMemFile());
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QCOMPARE(change(*w, 3), int(MemoryEditor::Unwritten));
        QCOMPARE(at(*w, 3, 1).data(Qt::ToolTipRole).toString(),
                 QStringLiteral("Changed: saved, not yet written to the radio"));
    }

    void close_withUnsavedChanges_cancel_staysAndSendsNothing()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Cancel;
        s.clear();
        w->Bouton[0]->click();
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(w->isVisible());
        QVERIFY(s.writes().isEmpty());
        QVERIFY(!w->close());
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 2);
        QVERIFY(w->isVisible());
    }

    void close_withUnsavedChanges_discard_goes()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
        w->Bouton[0]->click();
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(!w->isVisible());
    }

    void close_withUnsavedChanges_save_savesAndGoes()
    {
        QTemporaryDir dir;
        Scene s;
        auto w = readAll(s);
        w->setCurrentFile(dir.filePath("t.ymp"));
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Save;
        QVERIFY(w->close());
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(s.dialogs.saveChangesQuestions[0].text.contains("t.ymp"));
        QCOMPARE(MemRecord::decode(readFile(dir.filePath("t.ymp")).mid(2 * MemRecord::Size, MemRecord::Size)).ant,
                 QByteArray("Rx"));
    }

    void close_withoutChanges_asksNothing()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->close());
        QVERIFY(s.dialogs.saveChangesQuestions.isEmpty());
    }

    void programClosing_asksOnce()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Cancel;
        QVERIFY(!w->confirmClose());
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
        QVERIFY(w->confirmClose());
        QVERIFY(w->close());
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 2);
    }

    void getMem_withUnsavedChanges_cancel_keepsThem_readsNothing()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Cancel;
        s.clear();
        w->Bouton[4]->click();
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(s.dialogs.saveChangesQuestions[0].text.contains("before the table is replaced"));
        QVERIFY(s.writes().isEmpty());
        QCOMPARE(cellText(*w, 3, MemoryColumn::Ant), QStringLiteral("Rx"));
    }

    void getMem_withUnsavedChanges_discard_readsAndStartsAgain()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Discard;
        w->Bouton[4]->click();
        QVERIFY(cellText(*w, 3, MemoryColumn::Ant) != QStringLiteral("Rx"));
        QCOMPARE(w->windowTitle(), QStringLiteral("FT-1000 Memory"));
        QVERIFY(!w->editor().canUndo());
    }

    void openFile_withUnsavedChanges_cancel_asksBeforeTheDialog()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.dialogs.saveChangesAnswer = MemoryDialogs::SaveChoice::Cancel;
        w->mnu_file[0]->trigger();
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 1);
        QVERIFY(s.dialogs.requests.isEmpty());
        w->mnu_csv[1]->trigger();
        QCOMPARE(s.dialogs.saveChangesQuestions.size(), 2);
        QVERIFY(s.dialogs.requests.isEmpty());
        QCOMPARE(cellText(*w, 3, MemoryColumn::Ant), QStringLiteral("Rx"));
    }

    void writeChanged_withNothingChanged_saysSo_sendsNothing()
    {
        Scene s;
        auto w = readAll(s);
        s.clear();
        w->WriteChangedClick();
        QCOMPARE(s.dialogs.notes.size(), 1);
        QVERIFY(s.writes().isEmpty());
    }

    void writeChanged_cancelInTheQuestion_sendsNothing()
    {
        Scene s;
        auto w = readAll(s);
        QVERIFY(w->editor().setCell(3, MemoryColumn::Ant, "Rx"));
        s.clear();
        s.dialogs.confirmAnswer = false;
        w->WriteChanged->click();
        QCOMPARE(s.dialogs.confirmations.size(), 1);
        QVERIFY(s.writes().isEmpty());
        QCOMPARE(change(*w, 3), both);
    }
};

QTEST_MAIN(TestMemFrmEdit)
#include "test_mem_frm_edit.moc"
