// SPDX-License-Identifier: GPL-3.0-or-later
// ft1000-sim: the virtual radio on a pseudo-terminal, for trying CAT programs without a radio.
// Prints the device path on one line and serves until SIGINT or SIGTERM. With --fault it misbehaves:
// each reply is hit, with the given chance, by one of the named faults, drawn from a seeded sequence.

#include "SimHost.h"

#include <pthread.h>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <csignal>

namespace {
constexpr double DefaultFaultRate = 0.1;
// Longer than any wait the program gives a reply: a radio this slow is a silent one.
constexpr int MaxReplyDelayMs = 10000;
constexpr int MaxBurstMs = 1000;
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ft1000-sim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PROJECT_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A virtual FT-1000MP on a pseudo-terminal. Open the printed device at 4800,n,8,2."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption modelOption(QStringList{QStringLiteral("m"), QStringLiteral("model")},
                                         QStringLiteral("The radio to play: markv or mp."), QStringLiteral("model"),
                                         QStringLiteral("markv"));
    parser.addOption(modelOption);
    const QCommandLineOption faultOption(
        QStringLiteral("fault"),
        QStringLiteral("Faults to inject at random, comma-separated: drop, corrupt, truncate, late, double, "
                       "unsolicited, silent, close."),
        QStringLiteral("kinds"));
    parser.addOption(faultOption);
    const QCommandLineOption rateOption(QStringLiteral("fault-rate"),
                                        QStringLiteral("The chance, 0 to 1, that a reply is hit by a fault."),
                                        QStringLiteral("rate"), QString::number(DefaultFaultRate));
    parser.addOption(rateOption);
    const QCommandLineOption seedOption(QStringLiteral("seed"), QStringLiteral("Seed of the faults' random sequence."),
                                        QStringLiteral("n"), QStringLiteral("1"));
    parser.addOption(seedOption);
    const QCommandLineOption linkOption(
        QStringLiteral("link"),
        QStringLiteral("A stable path to serve on: a link to the terminal, gone while the terminal is closed."),
        QStringLiteral("path"));
    parser.addOption(linkOption);
    const QCommandLineOption delayOption(
        QStringLiteral("reply-delay"),
        QStringLiteral("Milliseconds the radio takes before it starts each reply (a slow radio); default 0."),
        QStringLiteral("ms"), QStringLiteral("0"));
    parser.addOption(delayOption);
    const QCommandLineOption knobOption(
        QStringLiteral("knob"),
        QStringLiteral("Turn VFO-A's knob at HZ_PER_S in 10 Hz steps, for SECONDS (for ever without), then rest."),
        QStringLiteral("HZ_PER_S[,SECONDS]"));
    parser.addOption(knobOption);
    const QCommandLineOption burstOption(
        QStringLiteral("burst-ms"),
        QStringLiteral("Hand the reply bytes over in bursts every N ms, as a USB serial adapter does; default 0."),
        QStringLiteral("N"), QStringLiteral("0"));
    parser.addOption(burstOption);
    parser.process(app);

    QTextStream err(stderr);
    const QString modelName = parser.value(modelOption).toLower();
    if (modelName != u"markv" && modelName != u"mp") {
        err << "ft1000-sim: unknown model \"" << modelName << "\" (markv or mp)\n";
        return 2;
    }
    const auto model = modelName == u"mp" ? VirtualRadio::Model::MP : VirtualRadio::Model::MarkV;

    QList<LineFault> faults;
    if (parser.isSet(faultOption)) {
        QString error;
        const auto parsed = parseLineFaults(parser.value(faultOption), &error);
        if (!parsed) {
            err << "ft1000-sim: " << error << '\n';
            return 2;
        }
        faults = *parsed;
    }
    bool rateOk = false;
    const double rate = parser.value(rateOption).toDouble(&rateOk);
    if (!rateOk || rate < 0 || rate > 1) {
        err << "ft1000-sim: the fault rate must be a number from 0 to 1\n";
        return 2;
    }
    bool seedOk = false;
    const quint32 seed = parser.value(seedOption).toUInt(&seedOk);
    if (!seedOk) {
        err << "ft1000-sim: the seed must be a whole number\n";
        return 2;
    }

    bool delayOk = false;
    const int replyDelay = parser.value(delayOption).toInt(&delayOk);
    if (!delayOk || replyDelay < 0 || replyDelay > MaxReplyDelayMs) {
        err << "ft1000-sim: the reply delay must be a whole number of milliseconds from 0 to " << MaxReplyDelayMs
            << '\n';
        return 2;
    }

    bool burstOk = false;
    const int burst = parser.value(burstOption).toInt(&burstOk);
    if (!burstOk || burst < 0 || burst > MaxBurstMs) {
        err << "ft1000-sim: the burst time must be a whole number of milliseconds from 0 to " << MaxBurstMs << '\n';
        return 2;
    }

    std::optional<Knob::Turn> knob;
    if (parser.isSet(knobOption)) {
        QString error;
        knob = Knob::parse(parser.value(knobOption), &error);
        if (!knob) {
            err << "ft1000-sim: " << error << '\n';
            return 2;
        }
    }

    // The signals are taken by sigwait below; blocked before the serving thread starts, so that thread
    // inherits the mask and never sees them.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);

    SimHost host(model);
    host.setReplyDelayMs(replyDelay);
    host.setBurstMs(burst);
    if (parser.isSet(linkOption))
        host.setLinkPath(parser.value(linkOption));
    if (!faults.isEmpty()) {
        host.faults().setSeed(seed);
        host.faults().setRandom(faults, rate);
    }
    QString error;
    if (!host.start(&error)) {
        err << "ft1000-sim: " << error << '\n';
        return 1;
    }
    if (knob)
        host.turnKnob(*knob);
    QTextStream out(stdout);
    out << host.devicePath() << Qt::endl;  // endl flushes: a script reads the path at once

    int signal = 0;
    sigwait(&stopSignals, &signal);
    host.stop();
    if (!faults.isEmpty())
        err << "ft1000-sim: " << host.faults().injected() << " faults injected\n";
    return 0;
}
