// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A sharing port: a pseudo-terminal that another program opens as if it were a radio's serial port,
// with a stable symbolic link to it (ShareFolder/<name>), so a client's setting survives a restart
// of this program.
//
// The terminal is raw (no echo, no line editing, no byte translated), and the host keeps a
// descriptor of the client side open itself: a client that closes and opens it again finds it
// still there, and reading the host side never fails for want of a client. The terminal device has
// mode 0600; the link is removed on close, unless another instance has replaced it meanwhile.
//
// Bytes are read on the thread that owns the port, through a socket notifier: the replies come
// from state that lives on that thread (the radio's polled snapshot), so no lock is needed, and the
// host's event loop answers within the few milliseconds a client waits.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <memory>

class QSocketNotifier;

class SharePty {
public:
    // What one turn of the event loop reads at most from the client: the rest waits for the next.
    static constexpr int MaxBytesPerTurn = 4096;

    using Receiver = std::function<void(const QByteArray&)>;

    // name: the link's file name ("native", "text").
    explicit SharePty(QString name);
    ~SharePty();

    SharePty(const SharePty&) = delete;
    SharePty& operator=(const SharePty&) = delete;

    // Called with every read from a client, in order.
    void setReceiver(Receiver receiver) { receiver_ = std::move(receiver); }

    // False, with the reason, when the terminal or its link cannot be made.
    bool open(QString* error = nullptr);
    void close();
    bool isOpen() const { return master_ >= 0; }

    QString name() const { return name_; }
    QString terminalPath() const { return terminal_; }  // "/dev/pts/N"; empty while closed
    QString linkPath() const { return link_; }          // empty while closed

    // To the client; what does not fit into the terminal's buffer (a client that does not read) is
    // lost. Returns the bytes written.
    qint64 write(QByteArrayView bytes);

private:
    void readAvailable();
    bool makeLink(const QString& folder, QString* error);

    QString name_;
    QString terminal_;
    QString link_;
    int master_ = -1;
    int client_ = -1;  // our own descriptor of the client side
    std::unique_ptr<QSocketNotifier> notifier_;
    Receiver receiver_;
    bool receiving_ = false;  // the receiver is running
};
