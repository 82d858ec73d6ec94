// SPDX-License-Identifier: GPL-3.0-or-later
// Editing the channel table without a window: cell edits, masks, clearing, copying and pasting,
// moving and sorting, each undone and redone as one step, and the marks of the changed rows.
#include "ChannelDecoder.h"
#include "ChannelNames.h"
#include "MemoryEditor.h"
#include "MemoryTableModel.h"

#include <QTest>

namespace {
// Channel n on (1000 + 100 n) kHz, USB, antenna A, channel 5 masked.
MemoryRow sampleRow(int n)
{
    MemoryRow row;
    const double kHz = 1000.0 + 100.0 * n;
    row.cells = {gridChannelName(n),    QStringLiteral("%1 ").arg(QLocale(QLocale::English).toString(kHz, 'f', 2)),
                 QStringLiteral("USB"), QStringLiteral("0.00 "),
                 QStringLiteral("A"),   QStringLiteral("1")};
    row.colour = n == 5 ? MemoryColour::Masked : MemoryColour::Unmasked;
    return row;
}

struct Table {
    MemoryTableModel model;
    MemoryEditor editor{model};
    QList<MemoryRow> original;
    Table()
    {
        QList<MemoryRow> rows;
        for (int n = 1; n <= Channels::Count; ++n)
            rows.append(sampleRow(n));
        model.setRows(rows);
        editor.takeAsBaseline();
        original = model.rows();
    }
    QString cell(int channel, int column) const { return model.cell(channel, column); }
    QList<int> changed() const
    {
        QList<int> out;
        for (int c = 1; c <= Channels::Count; ++c)
            if (editor.changeOf(c) != MemoryEditor::Unchanged)
                out << c;
        return out;
    }
};

const int both = MemoryEditor::Unsaved | MemoryEditor::Unwritten;
}  // namespace

class TestMemoryEditor : public QObject {
    Q_OBJECT
private slots:
    void baseline_nothingChanged_nothingToUndo()
    {
        Table t;
        QVERIFY(t.changed().isEmpty());
        QVERIFY(!t.editor.hasUnsavedChanges());
        QVERIFY(!t.editor.canUndo());
        QVERIFY(!t.editor.canRedo());
    }

    // --- One cell ---

    void setCell_frequency_changesTheRowAndMarksIt()
    {
        Table t;
        QString reason;
        QVERIFY(t.editor.setCell(7, MemoryColumn::Freq, "14.1955 MHz", &reason));
        QCOMPARE(t.cell(7, MemoryColumn::Freq), QStringLiteral("14,195.50 "));
        QCOMPARE(t.changed(), QList<int>{7});
        QCOMPARE(t.editor.changeOf(7), both);
        QVERIFY(t.editor.hasUnsavedChanges());
        QCOMPARE(t.editor.unwrittenChannels(1, 108), QList<int>{7});
    }

    void setCell_refused_changesNothing_andNamesTheReason()
    {
        Table t;
        QString reason;
        QVERIFY(!t.editor.setCell(7, MemoryColumn::Freq, "14195.505", &reason));
        QVERIFY(reason.contains("finer than 10 Hz"));
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(!t.editor.canUndo());
    }

    void setCell_sameValue_isNoStep()
    {
        Table t;
        QVERIFY(t.editor.setCell(7, MemoryColumn::Mode, "usb"));
        QVERIFY(!t.editor.canUndo());
        QVERIFY(t.changed().isEmpty());
    }

    void setCell_undoRedo()
    {
        Table t;
        QVERIFY(t.editor.setCell(3, MemoryColumn::Mode, "CW R"));
        QCOMPARE(t.cell(3, MemoryColumn::Mde), QStringLiteral("3"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(t.changed().isEmpty());
        QVERIFY(t.editor.canRedo());
        t.editor.redo();
        QCOMPARE(t.cell(3, MemoryColumn::Mode), QStringLiteral("CW R"));
        QCOMPARE(t.changed(), QList<int>{3});
    }

    void undo_backToTheTableAsRead_throughManySteps()
    {
        Table t;
        QVERIFY(t.editor.setCell(1, MemoryColumn::Chan, "DX"));
        QVERIFY(t.editor.setCell(2, MemoryColumn::Clar, "-1.5"));
        QVERIFY(t.editor.setCell(3, MemoryColumn::Ant, "Rx"));
        QVERIFY(t.editor.toggleMask({4}));
        while (t.editor.canUndo())
            t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(!t.editor.hasUnsavedChanges());
    }

    void newEdit_afterUndo_dropsTheRedo()
    {
        Table t;
        QVERIFY(t.editor.setCell(1, MemoryColumn::Ant, "B"));
        t.editor.undo();
        QVERIFY(t.editor.setCell(2, MemoryColumn::Ant, "B"));
        QVERIFY(!t.editor.canRedo());
    }

    // --- Masks, clearing ---

    void toggleMask_masksWhenAnyIsUnmasked_undoRedo()
    {
        Table t;
        QVERIFY(t.editor.toggleMask({4, 5}));
        QCOMPARE(t.model.colour(4), MemoryColour::Masked);
        QCOMPARE(t.model.colour(5), MemoryColour::Masked);
        QCOMPARE(t.changed(), QList<int>{4});  // 5 was masked already
        QCOMPARE(t.editor.undoText(), QStringLiteral("Mask"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        t.editor.redo();
        QCOMPARE(t.model.colour(4), MemoryColour::Masked);
    }

    void toggleMask_unmasksWhenAllAreMasked()
    {
        Table t;
        QVERIFY(t.editor.toggleMask({5}));
        QCOMPARE(t.model.colour(5), MemoryColour::Unmasked);
    }

    void clear_givesClearedRowsWithTheirOwnNames_undoRedo()
    {
        Table t;
        QVERIFY(t.editor.clear({8, 9}));
        QCOMPARE(t.model.channelRow(8), MemoryEditor::clearedRow(8));
        QCOMPARE(t.cell(9, MemoryColumn::Chan), QStringLiteral(" Chan 9"));
        QCOMPARE(t.cell(9, MemoryColumn::Freq), QStringLiteral("0.00 "));
        QCOMPARE(t.changed(), (QList<int>{8, 9}));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        t.editor.redo();
        QCOMPARE(t.model.channelRow(9), MemoryEditor::clearedRow(9));
    }

    // --- Copy and paste ---

    void copy_ownLayoutWithHeader()
    {
        Table t;
        const std::optional<QByteArray> text = t.editor.copy({5, 4});
        QVERIFY(text);
        QCOMPARE(*text, QByteArray("Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked\r\n"
                                   "4,\" Chan 4\",1400.00,USB,0.00,A,no\r\n"
                                   "5,\" Chan 5\",1500.00,USB,0.00,A,yes\r\n"));
    }

    void copyThenPaste_onTheSameRows_equalsTheRows()
    {
        Table t;
        QVERIFY(t.editor.setCell(4, MemoryColumn::Chan, "40m FT8"));
        QVERIFY(t.editor.setCell(5, MemoryColumn::Clar, "-0.25"));
        QVERIFY(t.editor.setCell(6, MemoryColumn::Mode, "DataUSR"));
        QVERIFY(t.editor.setCell(7, MemoryColumn::Ant, "Rx"));
        const QList<MemoryRow> before = t.model.rows();
        const std::optional<QByteArray> text = t.editor.copy({4, 5, 6, 7});
        QVERIFY(text);
        QVERIFY(t.editor.clear({4, 5, 6, 7}));
        QString reason;
        QVERIFY2(t.editor.paste(4, *text, &reason), qPrintable(reason));
        QCOMPARE(t.model.rows(), before);
    }

    void paste_fromTheCurrentRowDown_channelsOwnNamesFollow()
    {
        Table t;
        const std::optional<QByteArray> text = t.editor.copy({1, 2});
        QVERIFY(t.editor.setCell(2, MemoryColumn::Chan, "Net"));
        const std::optional<QByteArray> named = t.editor.copy({2});
        QVERIFY(text && named);
        QVERIFY(t.editor.paste(20, *text));
        QCOMPARE(t.cell(20, MemoryColumn::Freq), t.cell(1, MemoryColumn::Freq));
        QCOMPARE(t.cell(21, MemoryColumn::Freq), QStringLiteral("1,200.00 "));
        QCOMPARE(t.cell(20, MemoryColumn::Chan), QStringLiteral(" Chan 20"));
        QVERIFY(t.editor.paste(30, *named));
        QCOMPARE(t.cell(30, MemoryColumn::Chan), QStringLiteral(" Net"));
    }

    void paste_isOneStep()
    {
        Table t;
        const std::optional<QByteArray> text = t.editor.copy({1, 2, 3});
        QVERIFY(t.editor.paste(50, *text));
        QCOMPARE(t.changed(), (QList<int>{50, 51, 52}));
        QCOMPARE(t.editor.undoText(), QStringLiteral("Paste"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(!t.editor.canUndo());
        t.editor.redo();
        QCOMPARE(t.changed(), (QList<int>{50, 51, 52}));
    }

    void paste_exchangeLayout()
    {
        Table t;
        const QByteArray text = "Location,Name,Frequency,Mode\r\n1,Net,14.1955,USB\r\n2,,7.074,LSB\r\n";
        QString reason;
        QVERIFY2(t.editor.paste(10, text, &reason), qPrintable(reason));
        QCOMPARE(t.cell(10, MemoryColumn::Freq), QStringLiteral("14,195.50 "));
        QCOMPARE(t.cell(10, MemoryColumn::Chan), QStringLiteral(" Net"));
        QCOMPARE(t.cell(11, MemoryColumn::Mode), QStringLiteral("LSB"));
    }

    void paste_cellsCopiedFromASpreadsheet_tabSeparated()
    {
        Table t;
        const QByteArray text =
            "Channel\tName\tFrequency_kHz\tMode\tClarifier_kHz\tAntenna\tMasked\n"
            "4\t Chan 4\t7074.00\tUSB\t0.00\tA\tno\n"
            "5\tNet, E\t7075.50\tLSB\t-0.25\tRx\tyes\n";
        QString reason;
        QVERIFY2(t.editor.paste(30, text, &reason), qPrintable(reason));
        QCOMPARE(t.cell(30, MemoryColumn::Chan), QStringLiteral(" Chan 30"));
        QCOMPARE(t.cell(30, MemoryColumn::Freq), QStringLiteral("7,074.00 "));
        QCOMPARE(t.cell(31, MemoryColumn::Chan), QStringLiteral(" Net, E"));
        QCOMPARE(t.cell(31, MemoryColumn::Clar), QStringLiteral("-0.25 "));
        QCOMPARE(t.model.colour(31), MemoryColour::Masked);
    }

    void paste_tabSeparatedBadLine_namesTheSpreadsheetsLine()
    {
        Table t;
        const QByteArray text = "Channel\tName\tFrequency_kHz\tMode\n1\ta\t7074\tUSB\n2\tb\t7074.001\tUSB\n";
        QString reason;
        QVERIFY(!t.editor.paste(30, text, &reason));
        QVERIFY2(reason.startsWith("Line 3: "), qPrintable(reason));
        QCOMPARE(t.model.rows(), t.original);
    }

    void paste_oneBadLine_changesNothing_namesTheLine_data()
    {
        QTest::addColumn<QByteArray>("badLine");
        QTest::addColumn<QString>("reasonHas");
        QTest::newRow("finer than 10 Hz") << QByteArray("3,x,14195.505,USB,0,A,no") << "finer than 10 Hz";
        QTest::newRow("outside the range") << QByteArray("3,x,50.00,USB,0,A,no") << "outside the radio's range";
        QTest::newRow("unknown mode") << QByteArray("3,x,14195.50,SSB,0,A,no") << "unknown mode";
        QTest::newRow("clarifier too large") << QByteArray("3,x,14195.50,USB,12,A,no") << "outside -9.99";
        QTest::newRow("name too long") << QByteArray("3,Longname,14195.50,USB,0,A,no") << "is cut";
        QTest::newRow("bad antenna") << QByteArray("3,x,14195.50,USB,0,C,no") << "unknown antenna";
    }
    void paste_oneBadLine_changesNothing_namesTheLine()
    {
        QFETCH(QByteArray, badLine);
        QFETCH(QString, reasonHas);
        Table t;
        const QByteArray text =
            "Channel,Name,Frequency_kHz,Mode,Clarifier_kHz,Antenna,Masked\r\n"
            "1,a,7074.00,USB,0,A,no\r\n"
            "2,b,7075.00,USB,0,A,no\r\n" +
            badLine + "\r\n4,d,7077.00,USB,0,A,no\r\n";
        QString reason;
        QVERIFY(!t.editor.paste(10, text, &reason));
        QVERIFY2(reason.startsWith("Line 4: "), qPrintable(reason));
        QVERIFY2(reason.contains(reasonHas), qPrintable(reason));
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(!t.editor.canUndo());
    }

    void paste_pastChannel113_isRefused()
    {
        Table t;
        const std::optional<QByteArray> text = t.editor.copy({1, 2, 3});
        QString reason;
        QVERIFY(t.editor.paste(111, *text, &reason));  // 111, 112, 113
        t.editor.undo();
        QVERIFY(!t.editor.paste(112, *text, &reason));
        QVERIFY2(reason.contains("past channel 113"), qPrintable(reason));
        QCOMPARE(t.model.rows(), t.original);
    }

    void paste_withoutHeader_isRefused()
    {
        Table t;
        QString reason;
        QVERIFY(!t.editor.paste(1, "1,a,7074.00,USB,0,A,no\r\n", &reason));
        QVERIFY(reason.contains("no header"));
        QCOMPARE(t.model.rows(), t.original);
    }

    // --- Moving and sorting ---

    void moveUp_selectionStepsUp_neighbourGoesBelow_unchangedRowsUnmarked()
    {
        Table t;
        QVERIFY(t.editor.moveUp({5, 6}));
        QCOMPARE(t.cell(4, MemoryColumn::Freq), QStringLiteral("1,500.00 "));
        QCOMPARE(t.cell(5, MemoryColumn::Freq), QStringLiteral("1,600.00 "));
        QCOMPARE(t.cell(6, MemoryColumn::Freq), QStringLiteral("1,400.00 "));
        // A channel's own name stays with the channel; the mask goes with the row.
        QCOMPARE(t.cell(4, MemoryColumn::Chan), QStringLiteral(" Chan 4"));
        QCOMPARE(t.model.colour(4), MemoryColour::Masked);
        QCOMPARE(t.changed(), (QList<int>{4, 5, 6}));
        QCOMPARE(t.editor.undoText(), QStringLiteral("Move Up"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
        QVERIFY(t.changed().isEmpty());
        t.editor.redo();
        QCOMPARE(t.changed(), (QList<int>{4, 5, 6}));
    }

    void moveDown_andBack_leavesNothingMarked()
    {
        Table t;
        QVERIFY(t.editor.setCell(10, MemoryColumn::Chan, "Ten"));
        QVERIFY(t.editor.moveDown({10}));
        QCOMPARE(t.cell(11, MemoryColumn::Chan), QStringLiteral(" Ten"));
        QCOMPARE(t.cell(10, MemoryColumn::Chan), QStringLiteral(" Chan 10"));
        QCOMPARE(t.cell(10, MemoryColumn::Freq), QStringLiteral("2,100.00 "));
        QVERIFY(t.editor.moveUp({11}));
        QCOMPARE(t.changed(), QList<int>{10});  // only the renamed row
        t.editor.undo();
        t.editor.undo();
        QCOMPARE(t.changed(), QList<int>{10});
        t.editor.undo();
        QVERIFY(t.changed().isEmpty());
    }

    void move_pastTheEnds_isRefused()
    {
        Table t;
        QVERIFY(!t.editor.moveUp({1, 2}));
        QVERIFY(!t.editor.moveDown({113}));
        QVERIFY(!t.editor.canUndo());
    }

    void sortByFrequency_sortsTheSelectionOnly_unchangedRowsUnmarked()
    {
        Table t;
        QVERIFY(t.editor.setCell(20, MemoryColumn::Freq, "1500"));  // below 21 .. 24
        QVERIFY(t.editor.setCell(22, MemoryColumn::Freq, "9000"));  // above them
        const QList<MemoryRow> beforeSort = t.model.rows();
        QVERIFY(t.editor.sortByFrequency({20, 21, 22, 23, 24}));
        QCOMPARE(t.cell(20, MemoryColumn::Freq), QStringLiteral("1,500.00 "));
        QCOMPARE(t.cell(21, MemoryColumn::Freq), QStringLiteral("3,100.00 "));
        QCOMPARE(t.cell(22, MemoryColumn::Freq), QStringLiteral("3,300.00 "));
        QCOMPARE(t.cell(23, MemoryColumn::Freq), QStringLiteral("3,400.00 "));
        QCOMPARE(t.cell(24, MemoryColumn::Freq), QStringLiteral("9,000.00 "));
        QCOMPARE(t.cell(24, MemoryColumn::Chan), QStringLiteral(" Chan 24"));
        // 20 keeps its edit, 21 its row as read (unmarked); 22 to 24 hold other rows now.
        QCOMPARE(t.changed(), (QList<int>{20, 22, 23, 24}));
        QCOMPARE(t.editor.undoText(), QStringLiteral("Sort by Frequency"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), beforeSort);
        t.editor.redo();
        QCOMPARE(t.cell(24, MemoryColumn::Freq), QStringLiteral("9,000.00 "));
    }

    void sortByFrequency_alreadySorted_isNoStep()
    {
        Table t;
        QVERIFY(!t.editor.sortByFrequency({1, 2, 3}));
        QVERIFY(!t.editor.canUndo());
    }

    // --- Saved and written ---

    void markSaved_leavesTheRowUnwritten_markWritten_leavesItUnsaved()
    {
        Table t;
        QVERIFY(t.editor.setCell(7, MemoryColumn::Ant, "B"));
        QVERIFY(t.editor.setCell(8, MemoryColumn::Ant, "B"));
        t.editor.markSaved();
        QCOMPARE(t.editor.changeOf(7), int(MemoryEditor::Unwritten));
        QVERIFY(!t.editor.hasUnsavedChanges());
        t.editor.markWritten({7});
        QCOMPARE(t.editor.changeOf(7), int(MemoryEditor::Unchanged));
        QCOMPARE(t.editor.changeOf(8), int(MemoryEditor::Unwritten));
        QVERIFY(t.editor.setCell(9, MemoryColumn::Ant, "B"));
        t.editor.markWritten({9});
        QCOMPARE(t.editor.changeOf(9), int(MemoryEditor::Unsaved));
        QCOMPARE(t.editor.unwrittenChannels(1, 108), QList<int>{8});
    }

    void unwrittenChannels_onlyWithinTheRangeAsked()
    {
        Table t;
        QVERIFY(t.editor.setCell(108, MemoryColumn::Ant, "B"));
        QVERIFY(t.editor.setCell(109, MemoryColumn::Ant, "B"));
        QCOMPARE(t.editor.unwrittenChannels(1, 108), QList<int>{108});
    }

    void putRows_isOneStepOfChanges()
    {
        Table t;
        QMap<int, MemoryRow> rows;
        MemoryRow r = sampleRow(1);
        r.cells[MemoryColumn::Freq] = QStringLiteral("7,074.00 ");
        rows.insert(1, r);
        rows.insert(2, sampleRow(2));  // as it is: no change
        QVERIFY(t.editor.putRows(rows, QStringLiteral("Restore Backup")));
        QCOMPARE(t.changed(), QList<int>{1});
        QCOMPARE(t.editor.undoText(), QStringLiteral("Restore Backup"));
        t.editor.undo();
        QCOMPARE(t.model.rows(), t.original);
    }

    void radioShowsColour_unchangedRowTakesIt_unmarked()
    {
        Table t;
        t.editor.radioShowsColour(4, MemoryColour::Masked);
        QCOMPARE(t.model.colour(4), MemoryColour::Masked);
        QCOMPARE(t.editor.changeOf(4), int(MemoryEditor::Unsaved));  // the file still has it unmasked
        QCOMPARE(t.editor.unwrittenChannels(1, 113), QList<int>{});
    }

    void radioShowsColour_changedRowKeepsTheChange()
    {
        Table t;
        QVERIFY(t.editor.toggleMask({4}));  // masked in the table, not yet written
        t.editor.radioShowsColour(4, MemoryColour::Unmasked);
        QCOMPARE(t.model.colour(4), MemoryColour::Masked);
        QCOMPARE(t.editor.unwrittenChannels(1, 113), QList<int>{4});
    }

    void takeAsBaseline_forgetsTheHistory()
    {
        Table t;
        QVERIFY(t.editor.setCell(7, MemoryColumn::Ant, "B"));
        t.editor.takeAsBaseline();
        QVERIFY(!t.editor.canUndo());
        QVERIFY(t.changed().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestMemoryEditor)
#include "test_memory_editor.moc"
