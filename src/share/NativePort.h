// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The native sharing port: a pseudo-terminal on which a client writes this radio's own five-byte
// commands and gets the replies the radio would give, framed as the radio frames them. Reads the
// poll makes come from the poll's replies, other reads and the sets go to the radio as jobs on the
// one radio link, between the polls.

#include "FrameAssembler.h"
#include "KeySilence.h"
#include "NativeResponder.h"
#include "SharePty.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

class PollCache;
class Rig;

class NativePort {
public:
    static inline const QString LinkName = QStringLiteral("native");
    // How long a read whose record a set has changed waits for a poll before it asks the radio
    // itself: the poll may be off (a closed port) or stopped.
    static constexpr int PollWaitCeilingMs = 2000;

    // rig: where the port's sets and questions go, through the one transmit gate of every door.
    // cache: the poll's replies.
    NativePort(Rig& rig, std::shared_ptr<PollCache> cache, QString linkName = LinkName);
    ~NativePort();

    NativePort(const NativePort&) = delete;
    NativePort& operator=(const NativePort&) = delete;

    bool open(QString* error = nullptr);
    void close();
    bool isOpen() const { return pty_.isOpen(); }
    QString terminalPath() const { return pty_.terminalPath(); }
    QString linkPath() const { return pty_.linkPath(); }

    // Reads answered and sets passed on since the port was made (for the status bar).
    qint64 commandsAnswered() const { return responder_.commandsAnswered(); }
    qint64 commandsDropped() const { return responder_.commandsDropped(); }
    int commandsWaiting() const { return responder_.commandsWaiting(); }
    // How long the client may hold the key without sending a byte (0: for ever).
    KeySilence& keySilence() { return silence_; }

    // What a client wrote; public so the conversation can be driven without a terminal.
    void receive(const QByteArray& bytes);

private:
    class LinkRadio;

    void afterCommand();
    void releaseKey();

    SharePty pty_;
    FrameAssembler framer_;
    QObject context_;  // the thread the poll's notices come back to
    std::shared_ptr<PollCache> cache_;
    std::unique_ptr<LinkRadio> radio_;
    NativeResponder responder_;
    KeySilence silence_;
    int listener_ = 0;
    QTimer pollWait_;
};
