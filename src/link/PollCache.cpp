// SPDX-License-Identifier: GPL-3.0-or-later
#include "PollCache.h"

#include "Procedures.h"

unsigned PollCache::recordsChangedBy(const CatCommand& set)
{
    switch (set.op) {
        case Op::Split:
        case Op::Dual:
            return FlagsRecord;
        case Op::Ptt:
        case Op::Tuner:
        case Op::TunerStart:
            return FlagsRecord | MeterRecords;
        case Op::RecallMemory:
        case Op::WriteMemory:
        case Op::VfoSelect:
        case Op::MemoryToVfoA:
            // and the VFO / MEM / M-TUN indications, and the meters of the receiver now tuned elsewhere
            return StatusRecords | FlagsRecord | MeterRecords;
        case Op::Edsp:
            return StatusRecords | MeterRecords;  // filters in the status record, the CW pitch meter
        case Op::SetVfoA:
        case Op::SetVfoB:
        case Op::StepUp:
        case Op::StepDown:
        case Op::Clarifier:
        case Op::SetMode:
        case Op::FilterSelect:
            // What the receiver hears moves with its frequency, mode and filter: an S-meter reading
            // taken before such a set is not one of the signal after it.
            return StatusRecords | MeterRecords;
        default:
            return StatusRecords;
    }
}

int PollCache::index(unsigned record)
{
    return record == StatusRecords ? 0 : record == MeterRecords ? 1 : 2;
}

quint64 PollCache::pollStarting()
{
    std::lock_guard lock(mutex_);
    return sets_;
}

void PollCache::storeStatus(quint64 mark, const StatusReply& status)
{
    {
        std::lock_guard lock(mutex_);
        currentVfo_ = Entry{status.currentVfo, mark};
        bothVfos_ = Entry{status.bothVfos, mark};
    }
    notify();
}

void PollCache::storeReading(quint64 mark, const VfoReading& reading, bool vfoB)
{
    if (reading.record.isEmpty())
        return;  // a reply that did not come whole changes nothing a client may read
    {
        std::lock_guard lock(mutex_);
        (vfoB ? bothVfos_ : currentVfo_) = Entry{reading.reply, mark};
    }
    notify();
}

void PollCache::storeMeters(quint64 mark, int selector, const MeterReplies& meters)
{
    {
        std::lock_guard lock(mutex_);
        meters_.clear();
        meters_.insert(MeterSelector::MainS, Entry{meters.mainS, mark});
        meters_.insert(MeterSelector::SubS, Entry{meters.subS, mark});
        meters_.insert(selector & 0xFF, Entry{meters.transmit, mark});
        meters_.insert(MeterSelector::CwPitch, Entry{meters.pitch, mark});
    }
    notify();
}

void PollCache::storeFlags(quint64 mark, const FlagsReply& flags)
{
    {
        std::lock_guard lock(mutex_);
        flags_ = Entry{flags.bytes, mark};
    }
    notify();
}

void PollCache::setPosted(unsigned records)
{
    std::lock_guard lock(mutex_);
    for (int i = 0; i < RecordKinds; ++i) {
        if (records & (1u << i))
            ++pending_[i];
    }
}

void PollCache::setSent(unsigned records)
{
    std::lock_guard lock(mutex_);
    ++sets_;
    for (int i = 0; i < RecordKinds; ++i) {
        if (records & (1u << i)) {
            if (pending_[i] > 0)
                --pending_[i];
            const quint64 n = ++sends_[i];
            sendMarks_[i][n % SendHistory] = sets_;
        }
    }
}

void PollCache::setDropped(unsigned records)
{
    std::lock_guard lock(mutex_);
    for (int i = 0; i < RecordKinds; ++i) {
        if ((records & (1u << i)) && pending_[i] > 0)
            --pending_[i];
    }
}

PollCache::Ticket PollCache::ticket() const
{
    // The link runs its jobs in the order they were posted (a set that replaces a waiting one takes
    // its place), so the sets waiting now go out before any posted later.
    std::lock_guard lock(mutex_);
    Ticket t;
    for (int i = 0; i < RecordKinds; ++i)
        t.sends[i] = sends_[i] + static_cast<quint64>(pending_[i]);
    return t;
}

bool PollCache::stale(unsigned record, quint64 mark, const Ticket& ticket) const
{
    const int i = index(record);
    const quint64 needed = ticket.sends[i];
    if (needed == 0)
        return false;
    if (sends_[i] < needed)
        return true;  // a set the read must see has not gone out yet
    // The mark after that send; when it has left the history, the latest one (stricter).
    const quint64 after =
        sends_[i] - needed < SendHistory ? sendMarks_[i][needed % SendHistory] : sendMarks_[i][sends_[i] % SendHistory];
    return mark < after;
}

PollCache::Answer PollCache::answer(const CatCommand& read, const Ticket& ticket) const
{
    std::lock_guard lock(mutex_);
    const Entry* entry = nullptr;
    unsigned record = 0;
    if (read.op == Op::StatusRequest && read.p4 == StatusKind::CurrentVfo) {
        entry = currentVfo_ ? &*currentVfo_ : nullptr;
        record = StatusRecords;
    } else if (read.op == Op::StatusRequest && read.p4 == StatusKind::BothVfos) {
        entry = bothVfos_ ? &*bothVfos_ : nullptr;
        record = StatusRecords;
    } else if (read.op == Op::ReadMeter) {
        const auto it = meters_.constFind(read.p1);
        entry = it != meters_.constEnd() ? &*it : nullptr;
        record = MeterRecords;
    } else if (read.op == Op::ReadFlags) {
        entry = flags_ ? &*flags_ : nullptr;
        record = FlagsRecord;
    }
    if (entry == nullptr)
        return {};
    if (stale(record, entry->mark, ticket))
        return {Holding::Stale, {}};
    return {Holding::Current, entry->bytes};
}

int PollCache::addListener(std::function<void()> listener)
{
    std::lock_guard lock(listenersMutex_);
    const int handle = nextListener_++;
    listeners_.insert(handle, std::move(listener));
    return handle;
}

void PollCache::removeListener(int handle)
{
    std::lock_guard lock(listenersMutex_);
    listeners_.remove(handle);
}

void PollCache::notify()
{
    // Under the listeners' lock, so a port that removes its listener knows it is not being called.
    std::lock_guard lock(listenersMutex_);
    for (const auto& listener : std::as_const(listeners_))
        listener();
}
