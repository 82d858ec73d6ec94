// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The poll's latest replies, byte for byte as the radio gave them, so that a sharing port can answer
// the reads the poll already makes without touching the wire.
//
// The poll stores on the link thread; ports read on theirs, so every member takes the lock. A set
// that a sharing client sends makes the records it changes stale until a poll that started after
// the set went out has stored them again: a client that sets and reads back sees its own change,
// never a record the radio gave before it. A read waits only for the sets posted before it was
// taken (its ticket): sets that other clients keep sending meanwhile do not hold it back.

#include "CatCommand.h"

#include <QByteArray>
#include <QMap>
#include <functional>
#include <mutex>
#include <optional>

struct StatusReply;
struct VfoReading;
struct MeterReplies;
struct FlagsReply;

class PollCache {
public:
    // The records of a poll, as flags: what a set changes.
    enum Record : unsigned {
        StatusRecords = 1,  // the current-VFO and both-VFOs replies of instruction 0x10
        MeterRecords = 2,   // the meter replies of instruction 0xF7
        FlagsRecord = 4,    // the flags reply of instruction 0xFA
        AllRecords = StatusRecords | MeterRecords | FlagsRecord,
    };

    // What the cache holds for a read.
    enum class Holding {
        NotPolled,  // the poll does not make this read, or has not made it yet: ask the radio
        Stale,      // a set has changed it since: wait for the next poll
        Current,
    };
    struct Answer {
        Holding holding = Holding::NotPolled;
        QByteArray bytes;  // the radio's reply, when Current
    };
    static constexpr int RecordKinds = 3;
    // What a read taken now must see: per record, how many sets changing it must have gone out.
    struct Ticket {
        quint64 sends[RecordKinds] = {};
    };

    // The records a set of the instruction table changes.
    static unsigned recordsChangedBy(const CatCommand& set);

    // On the link thread as a poll starts: the mark its replies are stored with.
    quint64 pollStarting();
    void storeStatus(quint64 mark, const StatusReply& status);
    // A VFO's record read alone while following the knob: the current-VFO reply (VFO-A), or the
    // both-VFOs reply (VFO-B).
    void storeReading(quint64 mark, const VfoReading& reading, bool vfoB);
    // selector: the transmit meter the poll read.
    void storeMeters(quint64 mark, int selector, const MeterReplies& meters);
    void storeFlags(quint64 mark, const FlagsReply& flags);

    // A set posted to the link (on the posting thread), and the same set done on the link thread
    // after its bytes went out (or were dropped for a closed port).
    void setPosted(unsigned records);
    void setSent(unsigned records);
    // A posted set that will not be sent: replaced by a newer one while it waited, or dropped by a
    // closing link.
    void setDropped(unsigned records);

    Ticket ticket() const;
    // The answer for a read taken with `ticket`; without one, for a read taken now.
    Answer answer(const CatCommand& read, const Ticket& ticket) const;
    Answer answer(const CatCommand& read) const { return answer(read, ticket()); }

    // Called after every store, on the link thread, outside the lock; ports use it to answer the
    // reads that wait for a poll. Returns a handle for removeListener().
    int addListener(std::function<void()> listener);
    void removeListener(int handle);

private:
    struct Entry {
        QByteArray bytes;
        quint64 mark = 0;
    };
    // Per record, the marks after its latest sends, by send number: enough for the reads waiting.
    static constexpr int SendHistory = 64;

    static int index(unsigned record);
    bool stale(unsigned record, quint64 mark, const Ticket& ticket) const;
    void notify();

    mutable std::mutex mutex_;
    quint64 sets_ = 0;                                  // sets sent so far: the mark of the next poll
    quint64 sends_[RecordKinds] = {};                   // per record: sets that changed it and went out
    quint64 sendMarks_[RecordKinds][SendHistory] = {};  // per record: sets_ after send n, at n % SendHistory
    int pending_[RecordKinds] = {};                     // per record: sets posted but not yet sent
    std::optional<Entry> currentVfo_;                   // 0x10 P4 = 2
    std::optional<Entry> bothVfos_;                     // 0x10 P4 = 3
    QMap<int, Entry> meters_;                           // 0xF7 by selector, those of the last poll only
    std::optional<Entry> flags_;                        // 0xFA

    std::mutex listenersMutex_;
    QMap<int, std::function<void()>> listeners_;
    int nextListener_ = 1;
};
