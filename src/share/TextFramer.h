// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Cuts what a text-port client writes into commands: each ends with ';', and one write may hold
// several or part of one. Carriage returns, line feeds and every other byte that is not printable
// ASCII are dropped; letters come out in upper case. A command that grows past MaxCommandChars
// without its ';' is dropped whole, up to and including the ';' that finally ends it, so a client
// that sends garbage cannot make the port hold an ever longer line. Nothing between two ';' is no
// command at all.

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

class TextFramer {
public:
    static constexpr int MaxCommandChars = 64;
    static constexpr char Terminator = ';';

    // The commands completed by these bytes, in order, without their ';'.
    QList<QByteArray> feed(QByteArrayView bytes);

    // Overlong commands dropped so far.
    int droppedCommands() const { return dropped_; }
    // The bytes of an unfinished command are forgotten (a client went away).
    void reset();

private:
    QByteArray pending_;
    bool overlong_ = false;
    int dropped_ = 0;
};
