// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppOptions.h"

#include <QCommandLineParser>

AppOptions parseAppOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Control program for the Yaesu FT-1000MP and FT-1000MP Mark-V."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption simulate(QStringLiteral("simulate"),
                                      QStringLiteral("Run against the built-in virtual radio."));
    const QCommandLineOption model(QStringLiteral("model"),
                                   QStringLiteral("Model of the virtual radio: markv (default) or mp."),
                                   QStringLiteral("model"), QStringLiteral("markv"));
    const QCommandLineOption port(QStringLiteral("port"),
                                  QStringLiteral("Serial device to use for this run (the stored choice is kept)."),
                                  QStringLiteral("device"));
    const QCommandLineOption settings(QStringLiteral("settings"),
                                      QStringLiteral("Settings file to use instead of the per-user one."),
                                      QStringLiteral("file"));
    QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                  QStringLiteral("Save the main window as PNG after some ms, then quit."),
                                  QStringLiteral("file[,after-ms]"));
    screenshot.setFlags(QCommandLineOption::HiddenFromHelp);
    QCommandLineOption dump(QStringLiteral("dump-state"), QStringLiteral("Print the displays on exit."));
    dump.setFlags(QCommandLineOption::HiddenFromHelp);
    const QCommandLineOption rigctld(
        QStringLiteral("rigctld"),
        QStringLiteral("Share the radio with rigctld clients on [ADDRESS:]PORT (default address 127.0.0.1)."),
        QStringLiteral("[address:]port"));
    const QCommandLineOption fastLink(
        QStringLiteral("fast-link"),
        QStringLiteral("Read each reply as soon as it is complete, for this run (Setup > Fast Link keeps it)."));
    const QCommandLineOption share(
        QStringLiteral("share"),
        QStringLiteral(
            "Open sharing ports for this run: native, text or native,text (Setup > Sharing Ports keeps them)."),
        QStringLiteral("ports"));
    const QCommandLineOption web(
        QStringLiteral("web"),
        QStringLiteral("Serve the web panel on [ADDRESS:]PORT for this run (default address 127.0.0.1; "
                       "Setup > Web Panel keeps it)."),
        QStringLiteral("[address:]port"));
    const QCommandLineOption webCert(QStringLiteral("web-cert"),
                                     QStringLiteral("PEM certificate for the web panel: HTTPS only (with --web-key)."),
                                     QStringLiteral("file"));
    const QCommandLineOption webKey(QStringLiteral("web-key"),
                                    QStringLiteral("PEM private key for the web panel's certificate."),
                                    QStringLiteral("file"));
    parser.addOptions(
        {simulate, model, port, settings, rigctld, share, fastLink, web, webCert, webKey, screenshot, dump});
    parser.process(arguments);

    AppOptions o;
    o.simulate = parser.isSet(simulate);
    const QString m = parser.value(model).toLower();
    if (m == u"mp")
        o.markV = false;
    else if (m != u"markv" && m != u"mark-v")
        o.error = QStringLiteral("unknown model \"%1\": use markv or mp").arg(m);
    o.port = parser.value(port);
    o.settingsFile = parser.value(settings);
    o.dumpState = parser.isSet(dump);
    o.rigctld = parser.value(rigctld);
    o.share = parser.value(share);
    o.fastLink = parser.isSet(fastLink);
    o.web = parser.value(web);
    o.webCert = parser.value(webCert);
    o.webKey = parser.value(webKey);
    if (o.webCert.isEmpty() != o.webKey.isEmpty())
        o.error = QStringLiteral("--web-cert and --web-key go together");
    if (parser.isSet(screenshot)) {
        const QStringList parts = parser.value(screenshot).split(u',');
        o.screenshot = parts.value(0);
        if (parts.size() > 1) {
            bool ok = false;
            const int ms = parts[1].toInt(&ok);
            if (ok && ms >= 0)
                o.screenshotAfterMs = ms;
            else
                o.error = QStringLiteral("bad screenshot delay \"%1\"").arg(parts[1]);
        }
    }
    if (o.simulate && !o.port.isEmpty())
        o.error = QStringLiteral("--simulate and --port exclude each other");
    return o;
}
