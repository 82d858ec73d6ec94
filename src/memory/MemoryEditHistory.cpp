// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryEditHistory.h"

void MemoryEditHistory::push(const MemoryEditStep& step)
{
    steps_.resize(done_);
    steps_.append(step);
    done_ = steps_.size();
}

void MemoryEditHistory::clear()
{
    steps_.clear();
    done_ = 0;
}

QMap<int, MemoryRow> MemoryEditHistory::undo()
{
    QMap<int, MemoryRow> rows;
    if (!canUndo())
        return rows;
    const MemoryEditStep& step = steps_[--done_];
    for (auto it = step.rows.cbegin(); it != step.rows.cend(); ++it)
        rows.insert(it.key(), it.value().first);
    return rows;
}

QMap<int, MemoryRow> MemoryEditHistory::redo()
{
    QMap<int, MemoryRow> rows;
    if (!canRedo())
        return rows;
    const MemoryEditStep& step = steps_[done_++];
    for (auto it = step.rows.cbegin(); it != step.rows.cend(); ++it)
        rows.insert(it.key(), it.value().second);
    return rows;
}
