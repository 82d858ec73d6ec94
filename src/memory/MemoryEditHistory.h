// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The undo history of the channel table: each step is the rows it changed, before and after, so a
// paste, a sort or a move is one step however many rows it touched.

#include "MemoryTableModel.h"

#include <QList>
#include <QMap>
#include <QString>
#include <utility>

struct MemoryEditStep {
    QString text;                                     // "Paste", "Sort by Frequency" ...
    QMap<int, std::pair<MemoryRow, MemoryRow>> rows;  // channel: before, after
};

class MemoryEditHistory {
public:
    void push(const MemoryEditStep& step);  // drops whatever could be redone
    void clear();

    bool canUndo() const { return done_ > 0; }
    bool canRedo() const { return done_ < steps_.size(); }
    QString undoText() const { return canUndo() ? steps_[done_ - 1].text : QString(); }
    QString redoText() const { return canRedo() ? steps_[done_].text : QString(); }

    // The rows to put back (channel: row); empty when there is nothing to undo or redo.
    QMap<int, MemoryRow> undo();
    QMap<int, MemoryRow> redo();

private:
    QList<MemoryEditStep> steps_;
    qsizetype done_ = 0;
};
