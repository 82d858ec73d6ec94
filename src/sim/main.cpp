// ft1000-sim: the virtual radio on a pseudo-terminal, for trying CAT programs without a radio.
// Prints the device path on one line and serves until SIGINT or SIGTERM.

#include "SimHost.h"

#include <pthread.h>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <csignal>

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
    parser.process(app);

    QTextStream err(stderr);
    const QString modelName = parser.value(modelOption).toLower();
    if (modelName != u"markv" && modelName != u"mp") {
        err << "ft1000-sim: unknown model \"" << modelName << "\" (markv or mp)\n";
        return 2;
    }
    const auto model = modelName == u"mp" ? VirtualRadio::Model::MP : VirtualRadio::Model::MarkV;

    // The signals are taken by sigwait below; blocked before the serving thread starts, so that thread
    // inherits the mask and never sees them.
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);

    SimHost host(model);
    QString error;
    if (!host.start(&error)) {
        err << "ft1000-sim: " << error << '\n';
        return 1;
    }
    QTextStream out(stdout);
    out << host.devicePath() << Qt::endl;  // endl flushes: a script reads the path at once

    int signal = 0;
    sigwait(&stopSignals, &signal);
    host.stop();
    return 0;
}
