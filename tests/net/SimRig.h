// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The server over the whole chain, for integration tests and benchmarks: the virtual radio on a
// pseudo-terminal, a threaded radio link on the real serial adapter, the backend fed by a small
// 250 ms poll (status, meters, flags, as the main window runs it), and the server on the loopback.

#include "FlagsDecoder.h"
#include "LinkRig.h"
#include "PollCache.h"
#include "Procedures.h"
#include "QtSerialPort.h"
#include "RadioLink.h"
#include "RealClock.h"
#include "RigctlServer.h"
#include "SimHost.h"
#include "StatusDecoder.h"

#include <QObject>
#include <QTimer>
#include <atomic>
#include <memory>

class SimRig : public QObject {
public:
    static constexpr int PollMs = 250;

    // False, with the reason, when the virtual radio or the port cannot be opened.
    bool start(QString* error)
    {
        if (!sim.start(error))
            return false;
        const QString path = sim.devicePath();
        link = std::make_unique<RadioLink>(
            [path] {
                auto p = std::make_unique<QtSerialPort>();
                p->setDevice(path);
                QString e;
                p->setSettings(QStringLiteral("4800,n,8,2"), &e);
                p->open(&e);
                return p;
            },
            std::make_shared<RealClock>());
        if (!link->portOpen()) {
            *error = QStringLiteral("cannot open the virtual radio at %1").arg(path);
            return false;
        }
        backend = std::make_unique<LinkRig>(*link);
        backend->setPollCache(cache);
        server = std::make_unique<RigctlServer>(*backend);
        if (!server->listen(QStringLiteral("127.0.0.1"), 0, error))
            return false;
        connect(&timer, &QTimer::timeout, this, [this] { pollTick(); });
        timer.start(PollMs);
        return true;
    }

    void stop()
    {
        timer.stop();
        server.reset();
        if (link) {
            link->waitForIdle();
            link.reset();
        }
        backend.reset();
        sim.stop();
    }

    ~SimRig() override { stop(); }

    quint16 port() const { return server->serverPort(); }

    SimHost sim;
    std::unique_ptr<RadioLink> link;
    std::unique_ptr<LinkRig> backend;
    std::unique_ptr<RigctlServer> server;
    QTimer timer;
    std::atomic<int> polls{0};  // polls whose results reached the backend
    // The poll's replies, kept as the main window's poll keeps them, for a native sharing port.
    std::shared_ptr<PollCache> cache = std::make_shared<PollCache>();

private:
    void pollTick()
    {
        // The job holds the link itself: while the link is being destroyed, `link` is already empty
        // and a poll may still be finishing on the link's thread.
        link->postTick(JobKind::Poll, [this, link = link.get(), cache = cache](CatPort& port) {
            const quint64 mark = cache->pollStarting();
            const StatusReply status = Get_Status32(port);
            MeterReplies meters;
            FlagsReply flags;
            if (status.ran)
                cache->storeStatus(mark, status);
            if (status.ran && !status.record.isEmpty()) {
                link->runWaitingSets(port);
                meters = readMeters(port, MeterSelector::TransmitBase);
                cache->storeMeters(mark, MeterSelector::TransmitBase, meters);
                if (meters.complete()) {
                    link->runWaitingSets(port);
                    flags = GetFlags(port, 1);
                    cache->storeFlags(mark, flags);
                }
            }
            link->deliver(this, [this, status, meters, flags] {
                const StatusView view = decodeStatus(store_, status.record);
                const FlagsView f = flags.ran ? decodeFlags(1, flags.waiting, flags.bytes) : FlagsView{};
                backend->update(view, f, firstByte(meters.mainS));
                ++polls;
            });
        });
    }

    StatusRecord store_;
};
