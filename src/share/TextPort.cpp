// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextPort.h"

#include "ShareLog.h"

TextPort::TextPort(Rig& rig, QString linkName)
    : pty_(std::move(linkName)),
      session_(rig),
      silence_(
          QStringLiteral("text"), [this] { return session_.client().holdsKey(); }, [this] { session_.releaseKey(); })
{
    pty_.setReceiver([this](const QByteArray& bytes) { receive(bytes); });
}

bool TextPort::open(QString* error)
{
    return pty_.open(error);
}

void TextPort::close()
{
    // The port's client cannot go on transmitting through a port that is gone.
    session_.releaseKey();
    silence_.stop();
    pty_.close();
    framer_.reset();
}

void TextPort::receive(const QByteArray& bytes)
{
    silence_.heard();
    const int droppedBefore = framer_.droppedCommands();
    const QList<QByteArray> commands = framer_.feed(bytes);
    if (framer_.droppedCommands() != droppedBefore)
        qCInfo(lcShare) << "text port: a command longer than" << TextFramer::MaxCommandChars
                        << "characters was dropped";
    QByteArray replies;
    for (const QByteArray& command : commands) {
        const TextSession::Result r = session_.handle(command);
        ++answered_;
        if (r.refusedTx)
            qCWarning(lcShare) << "text port: transmit refused,"
                               << (r.why == Refusal::ScopeSweeping ? "the band scope is sweeping"
                                                                   : "Authorize Tx is off");
        qCDebug(lcShare) << "text port:" << command << "->" << r.reply;
        replies += r.reply;
    }
    // One write for all the replies of one read, in the order of the commands.
    if (!replies.isEmpty())
        pty_.write(replies);
}
