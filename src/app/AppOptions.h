// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The command line of the program.

#include <QString>
#include <QStringList>

struct AppOptions {
    bool simulate = false;
    bool markV = true;     // --model markv (default) or mp
    QString port;          // a device for this run only
    QString settingsFile;  // an INI file in place of the per-user store
    QString screenshot;    // grab the main window to this PNG and quit
    int screenshotAfterMs = 3000;
    bool dumpState = false;  // print the displays on exit
    QString rigctld;         // "[ADDRESS:]PORT": share the radio on the network for this run
    QString share;           // "native", "text" or both: sharing ports opened for this run
    bool fastLink = false;   // --fast-link: the fast link for this run, nothing stored
    QString web;             // "[ADDRESS:]PORT": the web panel there for this run
    QString webCert;         // PEM certificate and key: the web panel over HTTPS for this run
    QString webKey;
    QString error;  // non-empty: the command line is wrong
};

// Parses the arguments; --help and --version print and exit the process as usual.
AppOptions parseAppOptions(const QStringList& arguments);
