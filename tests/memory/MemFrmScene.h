// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The memory window on a fake port whose answers are those of a radio with the sample channels, and
// what the window's tests look at.

#include "ChannelBytes.h"
#include "FakeConsoleHost.h"
#include "FakeMemoryDialogs.h"
#include "Mem_Frm.h"
#include "MemoryTableModel.h"
#include "Twips.h"

#include <QAbstractItemModel>
#include <QFile>
#include <QLabel>
#include <QTableView>
#include <functional>
#include <memory>

namespace MemFrmTest {
using ChannelBytes::Channel;

// The fake radio's answers to the memory window's requests.
struct Scene {
    FakeConsoleHost host;
    FakeMemoryDialogs dialogs;
    int radioChannel = 1;  // the channel the radio is on, counted from 1
    QByteArray fullReply = ChannelBytes::fullReadout();
    std::function<Channel(int)> channel = ChannelBytes::sample;
    bool silent = false;

    Scene()
    {
        host.port->responder = [this](const QByteArray& c) -> QByteArray {
            if (silent || c.size() != 5 || quint8(c[4]) != 0x10)
                return {};
            switch (quint8(c[3])) {
                case 0:
                    return fullReply;
                case 1:
                    return QByteArray(1, char(radioChannel - 1));
                case 4:
                    return ChannelBytes::record(channel(quint8(c[0])));
                default:
                    return {};
            }
        };
    }
    std::unique_ptr<Mem_Frm> open() { return std::make_unique<Mem_Frm>(host, &dialogs); }
    QStringList& events() { return host.clock->events; }
    QStringList writes() const { return host.port->writtenHex(); }
    void clear()
    {
        host.clock->events.clear();
        host.port->writes.clear();
    }
};

inline QColor labelColour(const QLabel* l)
{
    return l->palette().color(QPalette::WindowText);
}

inline QColor cellColour(const Mem_Frm& w, int channel, int column)
{
    return w.MSFlexGrid1->model()->index(channel - 1, column).data(Qt::ForegroundRole).value<QColor>();
}

// The row's text as the table keeps it (and the file gets it).
inline QString cellText(Mem_Frm& w, int channel, int column)
{
    return w.table().cell(channel, column);
}

inline bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

inline QByteArray readFile(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline const QColor masked = fromBgr(0x0040C0);
inline const QColor unmasked = fromBgr(0x80C0FF);
}  // namespace MemFrmTest
