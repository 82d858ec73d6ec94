// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The native port's conversation: the radio's own five-byte commands from a client, taken one at a
// time in the order they came.
//
// Reads the poll makes are answered from the poll's replies; a read whose record a set has changed
// waits for the next poll, and holds back the client's later commands meanwhile, so their order
// stays as the client wrote it. Other reads of the instruction table go to the radio and their
// replies come back as they came. Sets of the table go to the radio in order, those that transmit
// only while transmitting is authorised. Anything outside the table is not passed on: we do not
// send the radio what we cannot vet.

#include "CatCommand.h"
#include "PollCache.h"
#include "Rig.h"

#include <QByteArray>
#include <deque>
#include <functional>

// What the conversation needs of the radio.
class NativeRadio {
public:
    virtual ~NativeRadio() = default;
    // What a read taken now must see of the sets before it.
    virtual PollCache::Ticket ticket() const = 0;
    virtual PollCache::Answer polled(const CatCommand& read, const PollCache::Ticket& ticket) const = 0;
    // Passes a set on, through the transmit gate when it transmits; what became of it.
    virtual Refusal forwardSet(const CatCommand& set) = 0;
    // Asks the radio; done() gets its reply as it came, on the conversation's thread (perhaps
    // before passThrough() returns). False when the question was refused: no reply will come.
    virtual bool passThrough(const CatCommand& read, std::function<void(const QByteArray&)> done) = 0;
};

class NativeResponder {
public:
    using Writer = std::function<void(const QByteArray&)>;
    // Commands that may wait behind a read: a radio's input buffer is as small, and a client that
    // writes faster than the radio answers loses what comes after, as it would at the radio.
    static constexpr int MaxQueuedCommands = 64;

    NativeResponder(NativeRadio& radio, Writer write);

    // One whole five-byte command.
    void receive(const QByteArray& command);
    // A poll stored new replies: a read waiting for one may now be answered.
    void pollStored();
    // A read has waited for a poll too long (no poll is running): ask the radio instead.
    void stopWaitingForPoll();
    // A client gone or the port closed: drops the queue and any reply still on its way.
    void reset();

    bool waitingForPoll() const { return waitingRead_ && !askingRadio_; }
    // Commands taken from clients: reads answered and sets passed on.
    qint64 commandsAnswered() const { return answered_; }
    // Commands dropped because too many waited.
    qint64 commandsDropped() const { return dropped_; }
    int commandsWaiting() const { return static_cast<int>(queue_.size()); }

    // The kind of a command, as the conversation treats it.
    enum class Kind { PolledOrRadioRead, Set, TransmitSet, Unknown };
    static Kind kindOf(const CatCommand& c);

private:
    void drain();
    void handle(const CatCommand& c);
    // A read at the head of the queue; false while it waits.
    bool answerRead(const CatCommand& c);
    void askRadio(const CatCommand& c);
    void answered(const QByteArray& reply);

    NativeRadio& radio_;
    Writer write_;
    std::deque<CatCommand> queue_;
    std::optional<CatCommand> waitingRead_;  // the read at the head, waiting for a poll or the radio
    PollCache::Ticket ticket_;               // the read at the head: the sets it must see
    bool askingRadio_ = false;
    bool draining_ = false;
    quint64 generation_ = 0;  // replies of an earlier generation belong to a reset conversation
    qint64 answered_ = 0;
    qint64 dropped_ = 0;
    bool overflowing_ = false;  // dropping since the queue was last empty: said once in the log
};
