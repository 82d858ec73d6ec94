// SPDX-License-Identifier: GPL-3.0-or-later
#include "NativePort.h"

#include "PollCache.h"
#include "Rig.h"
#include "ShareLog.h"
#include "ThreadHandoff.h"

// The radio behind the port: the poll's replies, and the port's client of the rig, through which its
// sets and questions go to the link (the rig hands the replies back only while the client lives).
class NativePort::LinkRadio final : public NativeRadio {
public:
    LinkRadio(Rig& rig, PollCache& cache) : client_(rig, QStringLiteral("native port")), cache_(cache) {}

    PollCache::Ticket ticket() const override { return cache_.ticket(); }
    PollCache::Answer polled(const CatCommand& read, const PollCache::Ticket& ticket) const override
    {
        return cache_.answer(read, ticket);
    }
    Refusal forwardSet(const CatCommand& set) override { return client_.send(set); }
    bool passThrough(const CatCommand& read, std::function<void(const QByteArray&)> done) override
    {
        return client_.ask(read, std::move(done)) == Refusal::None;
    }

    RigClient& client() { return client_; }

private:
    RigClient client_;
    PollCache& cache_;
};

NativePort::NativePort(Rig& rig, std::shared_ptr<PollCache> cache, QString linkName)
    : pty_(std::move(linkName)),
      cache_(std::move(cache)),
      radio_(std::make_unique<LinkRadio>(rig, *cache_)),
      responder_(*radio_, [this](const QByteArray& reply) { pty_.write(reply); }),
      silence_(
          QStringLiteral("native"), [this] { return radio_->client().holdsKey(); }, [this] { releaseKey(); })
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
    // The port's client cannot go on transmitting through a port that is gone.
    releaseKey();
    silence_.stop();
    pty_.close();
    framer_.reset();
    responder_.reset();
    pollWait_.stop();
}

void NativePort::releaseKey()
{
    if (radio_->client().holdsKey())
        radio_->client().setPtt(false);
}

void NativePort::receive(const QByteArray& bytes)
{
    silence_.heard();
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
