// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's line faults, on the radio itself (no terminal): what each kind does to a reply,
// switching them at run time, and the seeded random mode.
#include "CatCommand.h"
#include "LineFaults.h"
#include "VirtualRadio.h"

#include <QTest>
#include <memory>

namespace {
const QByteArray StatusA = CatCommand::make(Op::StatusRequest, StatusKind::CurrentVfo).bytes();
const QByteArray Both = CatCommand::make(Op::StatusRequest, StatusKind::BothVfos).bytes();

struct FaultyRadio {
    FaultyRadio() : faults(std::make_shared<LineFaults>(7)) { radio.setFaultHook(faults); }
    VirtualRadio radio;
    std::shared_ptr<LineFaults> faults;
    QByteArray clean(const QByteArray& command)
    {
        VirtualRadio plain;
        plain.setVfo(VirtualRadio::Vfo::A, radio.vfo(VirtualRadio::Vfo::A));
        return plain.handle(command);
    }
};

// Whether every byte of part appears in whole, in order.
bool isSubsequence(const QByteArray& part, const QByteArray& whole)
{
    qsizetype at = 0;
    for (const char c : part) {
        while (at < whole.size() && whole[at] != c)
            ++at;
        if (at == whole.size())
            return false;
        ++at;
    }
    return true;
}

int differences(const QByteArray& a, const QByteArray& b)
{
    int n = 0;
    for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i)
        n += a[i] != b[i];
    return n;
}
}  // namespace

class TestLineFaults : public QObject {
    Q_OBJECT
private slots:
    void namesAreReadFromTheCommandLine()
    {
        QString error;
        const auto all =
            parseLineFaults(QStringLiteral("drop,corrupt,truncate,late,double,unsolicited,silent,close"), &error);
        QVERIFY(all.has_value());
        QCOMPARE(all->size(), LineFaultLimits::Kinds);
        for (const LineFault f : *all)
            QCOMPARE(lineFaultFromName(lineFaultName(f)), f);
        QCOMPARE(parseLineFaults(QStringLiteral(" Late , late")).value(), QList<LineFault>{LineFault::Late});
    }

    void unknownNameIsRefusedWithTheKnownOnes()
    {
        QString error;
        QVERIFY(!parseLineFaults(QStringLiteral("drop,flood"), &error));
        QVERIFY(error.contains(QStringLiteral("flood")));
        QVERIFY(error.contains(QStringLiteral("truncate")));
    }

    void withoutFaultsTheReplyIsClean()
    {
        FaultyRadio r;
        const QByteArray clean = r.clean(StatusA);
        const RadioReply reply = r.radio.respond(StatusA);
        QCOMPARE(reply.bytes, clean);
        QCOMPARE(reply.extraDelayMs, 0);
        QCOMPARE(reply.closeLineMs, 0);
        QCOMPARE(r.faults->injected(), 0u);
    }

    void droppedBytesNeverArrive()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Drop, true);
        const QByteArray clean = r.clean(Both);
        const QByteArray got = r.radio.respond(Both).bytes;
        QVERIFY(got.size() < clean.size());
        QVERIFY(got.size() >= clean.size() * 3 / 4);
        QVERIFY(isSubsequence(got, clean));
        QCOMPARE(r.faults->injected(LineFault::Drop), 1u);
    }

    void corruptedBytesArriveChanged()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Corrupt, true);
        const QByteArray clean = r.clean(StatusA);
        const QByteArray got = r.radio.respond(StatusA).bytes;
        QCOMPARE(got.size(), clean.size());
        const int changed = differences(got, clean);
        QVERIFY(changed >= 1 && changed <= 3);
    }

    void truncatedReplyStopsEarly()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Truncate, true);
        const QByteArray clean = r.clean(StatusA);
        const QByteArray got = r.radio.respond(StatusA).bytes;
        QVERIFY(!got.isEmpty());
        QVERIFY(got.size() < clean.size());
        QCOMPARE(got, clean.left(got.size()));
    }

    void lateReplyComesAfterTheWait()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Late, true);
        const RadioReply reply = r.radio.respond(StatusA);
        QCOMPARE(reply.bytes, r.clean(StatusA));
        QVERIFY(reply.extraDelayMs >= LineFaultLimits::LateMinMs);
        QVERIFY(reply.extraDelayMs <= LineFaultLimits::LateMaxMs);
        QVERIFY(LineFaultLimits::LateMinMs > 200);  // longer than the longest wait of a poll
    }

    void doubledReplyComesTwice()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Double, true);
        const QByteArray clean = r.clean(StatusA);
        QCOMPARE(r.radio.respond(StatusA).bytes, clean + clean);
    }

    void silentRadioStillActsOnCommands()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Silent, true);
        QVERIFY(r.radio.respond(StatusA).bytes.isEmpty());
        r.radio.respond(CatCommand::make(Op::Split, 1).bytes());
        QVERIFY(r.radio.split());
        QCOMPARE(r.faults->injected(LineFault::Silent), 1u);  // only replies that had bytes count
    }

    void silenceWinsOverTheOtherFaults()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Double, true);
        r.faults->setForced(LineFault::Silent, true);
        QVERIFY(r.radio.respond(StatusA).bytes.isEmpty());
    }

    void closeAsksTheHostToCloseItsTerminal()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Close, true);
        QCOMPARE(r.radio.respond(StatusA).closeLineMs, LineFaultLimits::ForcedCloseMs);
    }

    void unsolicitedBytesComeWhileIdle()
    {
        FaultyRadio r;
        QVERIFY(r.radio.unsolicited(0).isEmpty());
        r.faults->setForced(LineFault::Unsolicited, true);
        const QByteArray noise = r.radio.unsolicited(1000);
        QVERIFY(!noise.isEmpty());
        QVERIFY(noise.size() <= LineFaultLimits::UnsolicitedMaxBytes);
        QVERIFY(r.radio.unsolicited(1050).isEmpty());  // not again within the period
        QVERIFY(!r.radio.unsolicited(1100).isEmpty());
        QCOMPARE(r.radio.respond(StatusA).bytes, r.clean(StatusA));  // replies are not touched
    }

    void faultSwitchedOffAtRunTimeLeavesCleanReplies()
    {
        FaultyRadio r;
        r.faults->setForced(LineFault::Silent, true);
        QVERIFY(r.radio.respond(StatusA).bytes.isEmpty());
        QVERIFY(r.faults->forced(LineFault::Silent));
        r.faults->setForced(LineFault::Silent, false);
        QCOMPARE(r.radio.respond(StatusA).bytes, r.clean(StatusA));
        r.faults->setForced(LineFault::Truncate, true);
        r.faults->clear();
        QCOMPARE(r.radio.respond(StatusA).bytes, r.clean(StatusA));
    }

    void randomFaultsRepeatWithTheSameSeed()
    {
        const auto run = [](quint32 seed) {
            FaultyRadio r;
            r.faults->setSeed(seed);
            r.faults->setRandom({LineFault::Drop, LineFault::Corrupt, LineFault::Truncate, LineFault::Double}, 0.5);
            QList<QByteArray> replies;
            for (int i = 0; i < 50; ++i)
                replies << r.radio.respond(Both).bytes;
            return replies;
        };
        QCOMPARE(run(11), run(11));
        QVERIFY(run(11) != run(12));
    }

    void randomRateIsTheShareOfRepliesHit()
    {
        FaultyRadio r;
        r.faults->setRandom({LineFault::Silent}, 0.2);
        int silent = 0;
        for (int i = 0; i < 1000; ++i)
            silent += r.radio.respond(StatusA).bytes.isEmpty();
        QVERIFY2(silent > 140 && silent < 260, qPrintable(QString::number(silent)));
        QCOMPARE(r.faults->injected(), quint64(silent));

        r.faults->setRandom({LineFault::Silent}, 0.0);
        for (int i = 0; i < 100; ++i)
            QVERIFY(!r.radio.respond(StatusA).bytes.isEmpty());
        r.faults->setRandom({LineFault::Silent}, 1.0);
        for (int i = 0; i < 100; ++i)
            QVERIFY(r.radio.respond(StatusA).bytes.isEmpty());
    }

    void randomModeDrawsEveryKindItWasGiven()
    {
        FaultyRadio r;
        const QList<LineFault> kinds = {LineFault::Drop,   LineFault::Corrupt, LineFault::Truncate, LineFault::Late,
                                        LineFault::Double, LineFault::Silent,  LineFault::Close};
        r.faults->setRandom(kinds, 1.0);
        for (int i = 0; i < 700; ++i)
            r.radio.respond(Both);
        for (const LineFault f : kinds)
            QVERIFY2(r.faults->injected(f) > 50, qPrintable(lineFaultName(f)));
        QCOMPARE(r.faults->injected(LineFault::Unsolicited), 0u);
    }
};

QTEST_GUILESS_MAIN(TestLineFaults)
#include "test_line_faults.moc"
