// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The band scope's S-record, apart from its widgets: Timer2 reads the receiver's S-meter every
// 2992 ms with the poll off, one read per tick (ticks that fall due while a read waits are merged),
// until the chosen time has run out or a graticule redraw stops it. The window draws what comes.

#include "ScopeExport.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QTime>
#include <functional>
#include <memory>

class QTimer;
class ScopeHost;

class ScopeRecord : public QObject {
    Q_OBJECT
public:
    static constexpr int TickMs = 2992;

    // receiver: asked at every tick, the scope's receiver field as it stands then.
    ScopeRecord(ScopeHost& host, std::function<int()> receiver, QObject* parent = nullptr);

    void start(double minutes);  // the poll off, Timer2 on; the start time is taken now
    void stop();                 // Timer2 off (the graticule redraw); the poll is the redraw's business
    bool active() const;
    QTimer* timer() const { return Timer2; }
    QTime startTime() const { return start_; }
    const QList<RecordReading>& readings() const { return readings_; }  // of the last recording

    void Timer2_Timer();

signals:
    void labelDue(double seconds, const QTime& at);         // an "hh:mm" label along the time axis
    void reading(double seconds, const QByteArray& reply);  // empty when the radio did not answer

private:
    void onReading(double seconds, const QByteArray& reply);

    ScopeHost& host_;
    std::function<int()> receiver_;
    QTimer* Timer2 = nullptr;
    double minutes_ = 1;
    int ticks_ = 0;
    QTime start_;
    int nextLabelMinute_ = 0;
    QList<RecordReading> readings_;
    std::shared_ptr<QObject> mailbox_;  // as the sweep's: outlives this object while a read is under way
};
