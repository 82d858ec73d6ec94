// SPDX-License-Identifier: GPL-3.0-or-later
#include "NativePort.h"

#include "CatPort.h"
#include "PollCache.h"
#include "RadioLink.h"
#include "Rig.h"
#include "ShareLog.h"
#include "ThreadHandoff.h"
#include "Timing.h"

// The radio behind the port: the poll's replies, and jobs on the radio link.
class NativePort::LinkRadio final : public NativeRadio {
public:
    LinkRadio(Rig& rig, RadioLink& link, PollCache& cache, QObject& context)
        : rig_(rig), link_(link), cache_(cache), context_(context)
    {
    }

    bool txAuthorized() const override { return rig_.txAuthorized(); }
    PollCache::Ticket ticket() const override { return cache_.ticket(); }
    PollCache::Answer polled(const CatCommand& read, const PollCache::Ticket& ticket) const override
    {
        return cache_.answer(read, ticket);
    }

    void forwardSet(const CatCommand& set) override
    {
        const unsigned records = PollCache::recordsChangedBy(set);
        cache_.setPosted(records);
        PollCache* cache = &cache_;
        link_.post([set, records, cache](CatPort& port) {
            if (port.isOpen())
                port.send(set);
            cache->setSent(records);
        });
    }

    void passThrough(const CatCommand& read, std::function<void(const QByteArray&)> done) override
    {
        RadioLink* link = &link_;
        QObject* context = &context_;
        link_.post([read, done = std::move(done), link, context](CatPort& port) {
            const QByteArray reply = port.isOpen() ? port.request(read, replyWaitMs(read), true) : QByteArray();
            link->deliver(context, [done, reply] { done(reply); });
        });
    }

private:
    Rig& rig_;
    RadioLink& link_;
    PollCache& cache_;
    QObject& context_;
};

NativePort::NativePort(Rig& rig, RadioLink& link, std::shared_ptr<PollCache> cache, QString linkName)
    : pty_(std::move(linkName)),
      radio_(std::make_unique<LinkRadio>(rig, link, *cache, context_)),
      responder_(*radio_, [this](const QByteArray& reply) { pty_.write(reply); }),
      cache_(std::move(cache))
{
    pty_.setReceiver([this](const QByteArray& bytes) { receive(bytes); });
    pollWait_.setSingleShot(true);
    pollWait_.setInterval(PollWaitCeilingMs);
    QObject::connect(&pollWait_, &QTimer::timeout, &context_, [this] {
        responder_.stopWaitingForPoll();
        afterCommand();
    });
    // The cache calls on the link thread: the answer is given on the port's own.
    listener_ = cache_->addListener([this] {
        QMetaObject::invokeMethod(&context_, ThreadHandoff::handOver([this] {
            responder_.pollStored();
            afterCommand();
        }),
                                  Qt::QueuedConnection);
    });
}

NativePort::~NativePort()
{
    cache_->removeListener(listener_);
}

bool NativePort::open(QString* error)
{
    return pty_.open(error);
}

void NativePort::close()
{
    pty_.close();
    framer_.reset();
    responder_.reset();
    pollWait_.stop();
}

void NativePort::receive(const QByteArray& bytes)
{
    const qint64 droppedBefore = framer_.droppedBytes();
    const QList<QByteArray> commands = framer_.feed(bytes, FrameAssembler::Clock::now());
    if (framer_.droppedBytes() != droppedBefore)
        qCInfo(lcShare) << "native port: dropped" << framer_.droppedBytes() - droppedBefore
                        << "bytes of an unfinished command";
    for (const QByteArray& command : commands)
        responder_.receive(command);
    afterCommand();
}

void NativePort::afterCommand()
{
    if (!responder_.waitingForPoll())
        pollWait_.stop();
    else if (!pollWait_.isActive())
        pollWait_.start();
}
