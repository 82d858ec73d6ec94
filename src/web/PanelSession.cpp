// SPDX-License-Identifier: GPL-3.0-or-later
#include "PanelSession.h"

#include "BandPlan.h"
#include "CatCommand.h"
#include "Clock.h"
#include "PanelState.h"
#include "WebLimits.h"
#include "WebLog.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QWebSocket>

namespace {
// The key's repeats are watched at twice their rate, so a silence is noticed soon after it is one.
constexpr int KeyWatchMs = WebLimits::PttRepeatMs / 2;
// Tuning the rig could not take yet (its queue for this client full) is tried again this soon.
constexpr int TuningRetryMs = 20;
constexpr qint64 HzPerTenHz = 10;
// How long a closed panel's last frames may take to leave before its connection is cut.
constexpr int ClosingGraceMs = 1000;

QByteArray messageJson(const QJsonObject& o)
{
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}
}  // namespace

QString refusalText(Refusal r)
{
    switch (r) {
        case Refusal::None:
            return {};
        case Refusal::LinkDown:
            return QStringLiteral("No Link");
        case Refusal::NotAuthorized:
            return QStringLiteral("Authorize Tx is not checked");
        case Refusal::ScopeSweeping:
            return QStringLiteral("the band scope is sweeping");
        case Refusal::Busy:
            return QStringLiteral("the radio is busy");
    }
    return {};
}

PanelSession::PanelSession(std::unique_ptr<QWebSocket> socket, Rig& rig, const Clock& clock, const QByteArray& token,
                           Access access, QObject* parent)
    : QObject(parent),
      socket_(std::move(socket)),
      client_(rig, QStringLiteral("web panel")),
      clock_(clock),
      token_(token),
      access_(access)
{
    socket_->setParent(nullptr);
    socket_->setMaxAllowedIncomingFrameSize(WebLimits::MaxMessageBytes);
    socket_->setMaxAllowedIncomingMessageSize(WebLimits::MaxMessageBytes);
    keyTimer_.setInterval(KeyWatchMs);
    connect(&keyTimer_, &QTimer::timeout, this, &PanelSession::tickKey);
    tuningTimer_.setSingleShot(true);
    connect(&tuningTimer_, &QTimer::timeout, this, &PanelSession::handOnTuning);

    connect(socket_.get(), &QWebSocket::textMessageReceived, this, &PanelSession::onMessage);
    connect(socket_.get(), &QWebSocket::binaryMessageReceived, this, [this](const QByteArray&) {
        refuse(QStringLiteral("message"), QStringLiteral("binary messages are not understood"));
    });
    connect(socket_.get(), &QWebSocket::bytesWritten, this, [this](qint64) {
        if (const auto next = outbox_.drained(socket_->bytesToWrite()))
            send(*next);
    });
    connect(socket_.get(), &QWebSocket::disconnected, this, &PanelSession::end);
    qCInfo(lcWeb) << "panel opened from" << socket_->peerAddress() << socket_->peerPort()
                  << (access_ == Access::Control ? "control" : "view only");
    send(panelHelloJson());
    pushState();
}

PanelSession::~PanelSession()
{
    if (key_.end() == PttHold::Action::Unkey)
        client_.setPtt(false);
    QWebSocket* s = socket_.release();
    s->disconnect(this);
    if (s->state() == QAbstractSocket::UnconnectedState) {
        s->deleteLater();
    } else {
        connect(s, &QWebSocket::disconnected, s, &QObject::deleteLater);
        QTimer::singleShot(ClosingGraceMs, s, [s] {
            s->abort();
            s->deleteLater();
        });
    }
    // The rig client closes after this and releases a key the rig still counts as ours.
}

void PanelSession::pushState()
{
    if (ended_)
        return;
    const PanelView view{client_.linkUp(), client_.txAuthorized(), access_, client_.holdsKey()};
    if (const auto now = outbox_.offer(panelStateJson(client_.state(), view), socket_->bytesToWrite()))
        send(*now);
}

void PanelSession::send(const QByteArray& json)
{
    socket_->sendTextMessage(QString::fromUtf8(json));
}

void PanelSession::close(const QString& reason)
{
    if (ended_)
        return;
    qCInfo(lcWeb) << "closing panel" << socket_->peerAddress() << socket_->peerPort() << reason;
    socket_->close(QWebSocketProtocol::CloseCodePolicyViolated, reason);
    end();
}

void PanelSession::end()
{
    if (ended_)
        return;
    ended_ = true;
    keyTimer_.stop();
    tuningTimer_.stop();
    tuning_.clear();
    if (key_.end() == PttHold::Action::Unkey)
        client_.setPtt(false);
    emit finished(this);
}

void PanelSession::onMessage(const QString& text)
{
    if (ended_)
        return;
    const QByteArray bytes = text.toUtf8();
    if (bytes.size() > WebLimits::MaxMessageBytes) {
        qCWarning(lcWeb) << "panel" << socket_->peerAddress() << "sent" << bytes.size() << "bytes in one message";
        socket_->close(QWebSocketProtocol::CloseCodeTooMuchData, QStringLiteral("message too long"));
        end();
        return;
    }
    qCDebug(lcWeb) << socket_->peerPort() << bytes;
    const ParsedPanelCommand parsed = parsePanelCommand(bytes);
    if (!parsed.command) {
        refuse(QStringLiteral("message"), parsed.error);
        return;
    }
    if (access_ != Access::Control) {
        refuse(QStringLiteral("message"), QStringLiteral("this session may only view"));
        return;
    }
    apply(*parsed.command);
    pushState();
}

void PanelSession::apply(const PanelCommand& c)
{
    using Kind = PanelCommand::Kind;
    Refusal r = Refusal::None;
    switch (c.kind) {
        case Kind::Tune:
            tuning_.tune(c.vfo, c.hz);
            break;
        case Kind::Step: {
            const RigState s = client_.state();
            tuning_.step(c.vfo, c.hz, c.vfo == RigVfo::B ? s.vfoBHz : s.vfoAHz);
            break;
        }
        case Kind::Band:
            tuning_.tune(RigVfo::A, BandPlan::frequencyTenHz(c.value) * HzPerTenHz);
            break;
        case Kind::Mode:
            r = c.vfo == RigVfo::B ? client_.setModeB(c.value) : client_.setMode(c.value);
            break;
        case Kind::Split:
            r = client_.setSplit(c.on);
            break;
        case Kind::CopyAToB:
            r = client_.send(CatCommand::make(Op::CopyAtoB));
            break;
        case Kind::SwapAB:
            r = client_.send(CatCommand::make(Op::VfoSelect, 1));
            break;
        case Kind::Recall:
            r = client_.send(CatCommand::make(Op::RecallMemory, c.value));
            break;
        case Kind::Ptt:
            pressKey(c.on);
            return;
    }
    if (r != Refusal::None)
        refuse(QStringLiteral("set"), refusalText(r));
    if (!tuning_.empty() && !tuningTimer_.isActive())
        tuningTimer_.start(0);  // after the messages that came with this one
}

void PanelSession::handOnTuning()
{
    for (const RigVfo vfo : {RigVfo::A, RigVfo::B}) {
        const auto hz = tuning_.pending(vfo);
        if (!hz)
            continue;
        const Refusal r = client_.setFrequency(vfo, *hz);
        if (r == Refusal::Busy) {
            tuningTimer_.start(TuningRetryMs);  // stays pending; a newer target may replace it meanwhile
            continue;
        }
        tuning_.take(vfo);
        if (r != Refusal::None)
            refuse(QStringLiteral("tune"), refusalText(r));
    }
    pushState();
}

void PanelSession::pressKey(bool down)
{
    const PttHold::Action a = down ? key_.press(clock_.nowMs()) : key_.release();
    if (a == PttHold::Action::Key) {
        const Refusal r = client_.setPtt(true);
        if (r != Refusal::None) {
            key_.notKeyed();
            refuse(QStringLiteral("ptt"), refusalText(r));
        } else {
            qCInfo(lcWeb) << "panel" << socket_->peerAddress() << "keyed the transmitter";
        }
    } else if (a == PttHold::Action::Unkey) {
        client_.setPtt(false);
    }
    if (key_.held())
        keyTimer_.start();
    else
        keyTimer_.stop();
}

void PanelSession::tickKey()
{
    if (key_.keyed() && !client_.holdsKey())
        key_.notKeyed();  // the rig took the key back (Authorize Tx withdrawn, the scope shown)
    if (key_.tick(clock_.nowMs()) == PttHold::Action::Unkey) {
        qCWarning(lcWeb) << "panel" << socket_->peerAddress() << "stopped holding its key: unkeyed";
        client_.setPtt(false);
    }
    if (!key_.held())
        keyTimer_.stop();
    pushState();
}

void PanelSession::refuse(const QString& what, const QString& why)
{
    if (socket_->bytesToWrite() > WebLimits::MaxUnsentBytes)
        return;  // a page that sends bad messages and does not read gets no growing pile of answers
    send(messageJson(QJsonObject{{QStringLiteral("t"), QStringLiteral("refused")},
                                 {QStringLiteral("what"), what},
                                 {QStringLiteral("why"), why}}));
}
