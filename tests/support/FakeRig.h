// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A radio for the doors' tests: a state the test arranges and a list of every set it was given, each
// applied to the state as the real one would (frequencies to the 10 Hz step). Its gate is the real
// one's in short: no set while the link is down, no key unless authorised and no scope shown, and
// `busy` refuses every set as a client with too many jobs waiting would be.

#include "CatCommand.h"
#include "Rig.h"

#include <QStringList>
#include <map>

// What differs between the scene the network server's tests arrange and the sharing ports' tests'.
struct FakeRigScene {
    qint64 vfoAHz;
    int mainSMeterRaw;
};

class FakeRig final : public Rig {
public:
    static constexpr FakeRigScene ServerScene{14074000, 120};
    static constexpr FakeRigScene SharingScene{14076000, 0};

    explicit FakeRig(FakeRigScene scene = ServerScene)
    {
        values.haveStatus = true;
        values.vfoAHz = scene.vfoAHz;
        values.vfoBHz = 7074000;
        values.modeA = ModeCode::Usb;
        values.modeB = ModeCode::Lsb;
        values.mainSMeterRaw = scene.mainSMeterRaw;
    }

    RigState state() const override { return values; }
    bool linkUp() const override { return up; }
    bool txAuthorized() const override { return authorized; }

    ClientId openClient(const QString& door) override
    {
        const ClientId id = ++lastClient;
        open[id] = door;
        return id;
    }
    void closeClient(ClientId client) override
    {
        open.erase(client);
        if (keyHolder == client)
            record(
                QStringLiteral("ptt 0"), [this] { values.ptt = false; }, client);
    }
    bool holdsKey(ClientId client) const override { return keyHolder == client && client != 0; }

    Refusal setFrequency(ClientId client, RigVfo vfo, qint64 hz) override
    {
        return record(
            QStringLiteral("freq %1 %2").arg(vfo == RigVfo::B ? "B" : "A").arg(hz),
            [&] { (vfo == RigVfo::B ? values.vfoBHz : values.vfoAHz) = hz / 10 * 10; }, client);
    }
    Refusal setMode(ClientId client, int code) override
    {
        return record(
            QStringLiteral("mode A %1").arg(code), [&] { values.modeA = code; }, client);
    }
    Refusal setModeB(ClientId client, int code) override
    {
        return record(
            QStringLiteral("mode B %1").arg(code), [&] { values.modeB = code; }, client);
    }
    Refusal setSplit(ClientId client, bool on) override
    {
        return record(
            QStringLiteral("split %1").arg(on ? 1 : 0), [&] { values.split = on; }, client);
    }
    Refusal setPtt(ClientId client, bool on) override
    {
        if (on && !up)
            return Refusal::LinkDown;
        if (on && !authorized)
            return Refusal::NotAuthorized;
        if (on && scopeShown)
            return Refusal::ScopeSweeping;
        const Refusal r = record(
            QStringLiteral("ptt %1").arg(on ? 1 : 0), [&] { values.ptt = on; }, client, !on);
        if (r == Refusal::None)
            keyHolder = on ? client : 0;
        return r;
    }
    Refusal send(ClientId client, const CatCommand& set) override
    {
        if (set.op == Op::Ptt)
            return setPtt(client, set.p4 != 0);
        return record(
            QStringLiteral("send %1").arg(set.hex()), [] {}, client);
    }
    Refusal ask(ClientId client, const CatCommand& read, std::function<void(const QByteArray&)> done) override
    {
        const Refusal r = record(
            QStringLiteral("ask %1").arg(read.hex()), [] {}, client);
        if (r == Refusal::None && done)
            done(QByteArray());
        return r;
    }

    RigState values;
    bool up = true;
    bool authorized = false;
    bool scopeShown = false;
    bool busy = false;
    QStringList calls;
    std::map<ClientId, QString> open;  // the clients open now, with their doors
    ClientId keyHolder = 0;

private:
    template <typename Apply>
    Refusal record(const QString& call, Apply apply, ClientId, bool unkey = false)
    {
        if (!up)
            return Refusal::LinkDown;
        if (busy && !unkey)
            return Refusal::Busy;
        calls << call;
        apply();
        return Refusal::None;
    }

    ClientId lastClient = 0;
};
