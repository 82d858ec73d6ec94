// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Editing the channel table: every change goes through here, as one undoable step, and each row
// knows how it stands against what the memory file holds (unsaved) and what the radio holds
// (unwritten). Both references are the table as read or loaded until a save or a write moves one.
//
// Channels are numbered 1..113; a selection is a list of channels in any order.

#include "MemRecord.h"
#include "MemoryEditHistory.h"
#include "MemoryTableModel.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

class MemoryEditor : public QObject {
    Q_OBJECT
public:
    enum Change { Unchanged = 0, Unsaved = 1, Unwritten = 2 };

    explicit MemoryEditor(MemoryTableModel& table, QObject* parent = nullptr);

    // The table as it now is was read from the radio or loaded from a file: nothing is changed and
    // nothing can be undone.
    void takeAsBaseline();
    void markSaved();                              // the file now holds the table
    void markWritten(const QList<int>& channels);  // the radio now holds these rows
    // A read of one channel showed its mask: the row takes the colour, as the radio holds it, unless
    // the row has been changed and not written (the change is kept, and stays to be written).
    void radioShowsColour(int channel, quint32 bgr);

    int changeOf(int channel) const;  // Unsaved | Unwritten
    bool hasUnsavedChanges() const;
    // Rows differing from what the radio holds, among first..last.
    QList<int> unwrittenChannels(int first, int last) const;

    // Edits. Each is one step; a refused one (false, reason given) changes nothing.
    bool setCell(int channel, int column, const QString& text, QString* reason = nullptr);
    bool toggleMask(const QList<int>& channels);
    bool clear(const QList<int>& channels, const QString& stepText = QStringLiteral("Clear"));
    bool paste(int firstChannel, const QByteArray& text, QString* reason = nullptr);
    bool moveUp(const QList<int>& channels);
    bool moveDown(const QList<int>& channels);
    bool sortByFrequency(const QList<int>& channels);
    // Rows given (channel: row) put in as one change, "Restore Backup".
    bool putRows(const QMap<int, MemoryRow>& rows, const QString& stepText);

    // The selection as clipboard text; nothing, with the reason, when a row cannot be listed.
    std::optional<QByteArray> copy(const QList<int>& channels, QString* reason = nullptr) const;

    bool canUndo() const { return history_.canUndo(); }
    bool canRedo() const { return history_.canRedo(); }
    QString undoText() const { return history_.undoText(); }
    QString redoText() const { return history_.redoText(); }
    void undo();
    void redo();

    // The cleared row of a channel: its own name, no frequency, not masked.
    static MemoryRow clearedRow(int channel);

signals:
    // The rows, their marks or the history changed.
    void changed();

private:
    // Applies the rows that differ as one step; false when none does.
    bool apply(const QMap<int, MemoryRow>& rows, const QString& text);
    void put(const QMap<int, MemoryRow>& rows);
    // Moves the selection one row by delta (-1 up, +1 down).
    bool move(const QList<int>& channels, int delta, const QString& text);

    MemoryTableModel& table_;
    QList<MemoryRow> fileRows_;
    QList<MemoryRow> radioRows_;
    MemoryEditHistory history_;
};
