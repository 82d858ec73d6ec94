// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The text sharing port: a pseudo-terminal on which a client speaks the text dialect of a Kenwood
// TS-2000, answered from the radio's polled state and passed to the radio through the same setters
// the network server uses.

#include "KeySilence.h"
#include "SharePty.h"
#include "TextFramer.h"
#include "TextSession.h"

#include <QString>

class Rig;

class TextPort {
public:
    static inline const QString LinkName = QStringLiteral("text");

    explicit TextPort(Rig& rig, QString linkName = LinkName);

    bool open(QString* error = nullptr);
    void close();
    bool isOpen() const { return pty_.isOpen(); }
    QString terminalPath() const { return pty_.terminalPath(); }
    QString linkPath() const { return pty_.linkPath(); }

    // Commands taken from clients since the port was made, sets included (for the status bar).
    qint64 commandsAnswered() const { return answered_; }

    // What a client wrote; public so the conversation can be driven without a terminal.
    void receive(const QByteArray& bytes);
    // How long the client may hold the key without sending a byte (0: for ever).
    KeySilence& keySilence() { return silence_; }

private:
    SharePty pty_;
    TextFramer framer_;
    TextSession session_;
    KeySilence silence_;
    qint64 answered_ = 0;
};
