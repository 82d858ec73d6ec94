// SPDX-License-Identifier: GPL-3.0-or-later
// Following the knob on the main window, on a fake port answered by the virtual radio's model and a
// fake clock: the poll that sees a VFO move, the readings of that VFO alone, the full poll at least
// every second, the rest after three agreeing readings, a failed reading, and the fast link off.
#include "ConsoleFixture.h"
#include "Procedures.h"
#include "VirtualRadio.h"

#include <QLabel>
#include <QTest>

namespace {
using Vfo = VirtualRadio::Vfo;
const QString ReadA = QStringLiteral("00 00 00 02 10");
const QString ReadB = QStringLiteral("00 00 00 03 10");
const QString ReadFlags = QStringLiteral("00 00 00 01 FA");

struct Scene : ConsoleFixture {
    Scene()
    {
        port->responder = [this](const QByteArray& command) { return answer(command); };
        link.setFastLink(true);
        form->setFollowKnob(true);
        form->setPollEnabled(true);
    }
    ~Scene() { form->setPollEnabled(false); }

    // The knob turns one 10 Hz step at each status read the radio answers, while steps remain.
    QByteArray answer(const QByteArray& command)
    {
        const bool statusRead = quint8(command[4]) == Op::StatusRequest;
        if (statusRead && knobSteps > 0) {
            if (tuneMain) {
                // The main receiver, whatever it works (a recalled channel goes to memory tune).
                radio.handle(setFreqCommand(radio.mainReceiver().freq10Hz + 1, 1).bytes());
            } else {
                VfoState v = radio.vfo(knobVfo);
                v.freq10Hz += 1;
                radio.setVfo(knobVfo, v);
            }
            --knobSteps;
        }
        if (onCommand)
            onCommand(command);
        QByteArray reply = radio.handle(command);
        if (storedVfoAFirst && statusRead && quint8(command[3]) == StatusKind::BothVfos && reply.size() > 5) {
            const quint32 count = quint32(radio.vfo(Vfo::A).freq10Hz * 16);  // 1600 to the kHz
            for (int i = 0; i < 4; ++i)
                reply[1 + i] = char(count >> (8 * (3 - i)));
        }
        // The current-VFO read that comes back short, counted from when it was asked for.
        if (statusRead && quint8(command[3]) == StatusKind::CurrentVfo && shortAtRead > 0 && --shortAtRead == 0)
            reply.chop(3);
        clock->advance(LineMsPerByte * (command.size() + reply.size()));
        return reply;
    }
    void poll() { form->Get_Status32(0); }
    int count(const QStringList& writes, const QString& command) const { return int(writes.count(command)); }
    QString shownA() const { return form->findChild<QLabel*>(QStringLiteral("Label2(1)"))->text(); }

    static constexpr int LineMsPerByte = 2;  // about 4800 baud
    VirtualRadio radio;
    Vfo knobVfo = Vfo::A;
    bool tuneMain = false;
    bool storedVfoAFirst = false;
    int knobSteps = 0;
    int shortAtRead = 0;
    std::function<void(const QByteArray&)> onCommand;
};
}  // namespace

class TestForm1Follow : public QObject {
    Q_OBJECT
private slots:
    void aPollThatSeesVfoAMoveReadsItAloneUntilTheKnobRests()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 6;
        s.poll();
        const QStringList w = s.takeWrites();
        // The poll stops at its first read, which found VFO-A moved; then VFO-A's record alone,
        // back to back, until three readings agree.
        const int readings = s.count(w, ReadA) - 1;  // the poll's own first read is one
        QVERIFY2(readings >= 3, qPrintable(w.join(u'|')));
        QCOMPARE(w, QStringList(readings + 1, ReadA));
        QVERIFY(!s.form->followingKnob());
        QCOMPARE(s.knobSteps, 0);
        // The display holds the radio's own frequency.
        QCOMPARE(s.form->vfoKHz(1), double(s.radio.vfo(Vfo::A).freq10Hz) / 100.0);
    }

    void vfoBsMoveIsFollowedWithItsOwnRecord()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobVfo = Vfo::B;
        s.knobSteps = 4;
        s.poll();
        const QStringList w = s.takeWrites();
        const QStringList after = w.mid(w.lastIndexOf(ReadFlags) + 1);
        QVERIFY2(after.size() >= 3, qPrintable(w.join(u'|')));
        QCOMPARE(after, QStringList(after.size(), ReadB));
        QCOMPARE(s.form->vfoKHz(2), double(s.radio.vfo(Vfo::B).freq10Hz) / 100.0);
    }

    void aFullPollAtLeastEverySecondWhileFollowing()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 400;  // far longer than a second of readings
        QList<qint64> fullPollsAt;
        s.onCommand = [&](const QByteArray& c) {
            if (quint8(c[4]) == Op::ReadFlags)
                fullPollsAt << s.clock->nowMs();
        };
        s.poll();
        QVERIFY(fullPollsAt.size() >= 3);
        for (int i = 1; i < fullPollsAt.size(); ++i)
            QVERIFY2(fullPollsAt[i] - fullPollsAt[i - 1] <= KnobFollower::FullPollEveryMs,
                     qPrintable(QStringLiteral("%1 ms between full polls").arg(fullPollsAt[i] - fullPollsAt[i - 1])));
        QVERIFY(!s.form->followingKnob());
    }

    void theFullPollWhileFollowingCarriesReadingsAndReadsNoRecordTwice()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 400;
        s.poll();
        const QStringList w = s.takeWrites();
        // In VFO operation with VFO-A followed, the both-VFOs reply brings VFO-A's record too;
        // a reading of VFO-A goes between each two of its reads.
        const int at = int(w.indexOf(ReadB));
        QVERIFY2(at > 0, qPrintable(w.join(u'|')));
        const QString mainS = QStringLiteral("00 00 00 00 F7"), subS = QStringLiteral("01 00 00 00 F7");
        const QString power = QStringLiteral("80 00 00 00 F7"), pitch = QStringLiteral("F1 00 00 00 F7");
        const QStringList expected = {ReadA, ReadB, ReadA, mainS, subS, ReadA, power, pitch, ReadA, ReadFlags, ReadA};
        QCOMPARE(w.mid(at - 1, int(expected.size())), expected);
    }

    void inMemoryOperationTheFullPollReadsVfoAsRecordItself()
    {
        Scene s;
        s.radio.handle(CatCommand::make(Op::RecallMemory, 1).bytes());
        VfoState a = s.radio.vfo(Vfo::A);
        a.freq10Hz = 2120000;  // away from the channel
        s.radio.setVfo(Vfo::A, a);
        // A radio whose both-VFOs reply starts with the stored VFO-A, not the channel it works.
        s.storedVfoAFirst = true;
        s.tuneMain = true;
        s.poll();
        s.takeWrites();
        QList<double> shown;
        QObject::connect(s.form.get(), &Form1::statusShown, [&] { shown << s.form->vfoKHz(1); });
        s.knobSteps = 400;
        s.poll();
        const QStringList w = s.takeWrites();
        QVERIFY2(s.count(w, ReadFlags) >= 2, qPrintable(w.join(u'|')));
        QVERIFY(!shown.isEmpty());
        QVERIFY2(!shown.contains(21200.0), "the both-VFOs reply's first half was shown for the channel");
        QCOMPARE(s.form->vfoKHz(1), double(s.radio.mainReceiver().freq10Hz) / 100.0);
    }

    void aTimedPollQueuedBeforeFollowingBeganLeavesTheChainAlone()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 10;
        int readings = 0;
        s.onCommand = [&](const QByteArray& c) {
            // A timer tick that fell due while the reading was on the line.
            if (CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes() == c && ++readings == 3)
                s.form->Get_Status32(0);
        };
        s.poll();
        const QStringList w = s.takeWrites();
        // No poll of its own, and one chain: the poll's read and each reading turn the knob a step
        // until it rests, then the readings that agree with the last.
        QCOMPARE(s.count(w, ReadFlags), 0);
        QCOMPARE(s.count(w, ReadB), 0);
        QCOMPARE(s.count(w, ReadA), 10 + KnobFollower::RestingReadings - 1);
        QVERIFY(!s.form->followingKnob());
    }

    void aJobPostedWhileFollowingWaitsAtMostOneReading()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 20;
        int readingsSeen = 0;
        s.onCommand = [&](const QByteArray& c) {
            if (CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes() == c && ++readingsSeen == 4)
                s.link.post([](CatPort& port) { port.send(CatCommand::make(Op::SetMode, ModeCode::Cw)); });
        };
        s.poll();
        const QStringList w = s.takeWrites();
        const int at = int(w.indexOf(QStringLiteral("00 00 00 02 0C")));
        QVERIFY(at > 0);
        QCOMPARE(w.at(at - 1), ReadA);     // right after the reading that was on the line
        QCOMPARE(w.value(at + 1), ReadA);  // and following goes on
    }

    void aShortReadingEndsFollowingAndTheTimedPollTakesOver()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 10;
        s.shortAtRead = 2;
        s.poll();
        const QStringList w = s.takeWrites();
        // The poll's own read, one reading that came short, and no more.
        QCOMPARE(w, QStringList(2, ReadA));
        QVERIFY(!s.form->followingKnob());
        s.poll();  // the timed poll goes on, and follows again on the moving knob
        QVERIFY(s.count(s.takeWrites(), ReadA) > 1);
    }

    void withTheFastLinkOffThePollIsExactlyThePoll()
    {
        Scene s;
        s.link.setFastLink(false);
        s.poll();
        s.takeWrites();
        s.knobSteps = 10;
        s.poll();
        s.poll();
        const QStringList w = s.takeWrites();
        QCOMPARE(s.count(w, ReadA), 2);
        QCOMPARE(s.count(w, ReadB), 2);
        QCOMPARE(s.count(w, ReadFlags), 2);
        QVERIFY(!s.form->followingKnob());
    }

    void followKnobOffKeepsThePoll()
    {
        Scene s;
        s.form->setFollowKnob(false);
        s.poll();
        s.takeWrites();
        s.knobSteps = 10;
        s.poll();
        QCOMPARE(s.count(s.takeWrites(), ReadA), 1);
    }

    void thePollSwitchedOffEndsFollowing()
    {
        Scene s;
        s.poll();
        s.takeWrites();
        s.knobSteps = 50;
        int readings = 0;
        s.onCommand = [&](const QByteArray& c) {
            if (CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes() == c && ++readings == 3)
                s.form->setPollEnabled(false);  // a sweep starting, say
        };
        s.poll();
        QCOMPARE(readings, 3);
        QVERIFY(!s.form->followingKnob());
    }
};

QTEST_MAIN(TestForm1Follow)
#include "test_form1_follow.moc"
