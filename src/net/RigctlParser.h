// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One command line of the rigctld text protocol, taken apart: the extended-response prefix, the
// command (short letter or long name), an optional VFO token and the arguments.

#include "HamlibNames.h"

#include <QString>
#include <QStringList>
#include <optional>

enum class RigCommand {
    Unknown,
    GetFreq,
    SetFreq,
    GetMode,
    SetMode,
    GetVfo,
    SetVfo,
    GetSplitVfo,
    SetSplitVfo,
    GetSplitFreq,
    SetSplitFreq,
    GetSplitMode,
    SetSplitMode,
    GetPtt,
    SetPtt,
    GetLevel,
    GetPowerstat,
    SetPowerstat,
    GetLockMode,
    SetLockMode,
    ChkVfo,
    DumpState,
    Quit,
};

struct ParsedLine {
    bool empty = false;       // nothing but blanks: not a command, no reply
    bool extended = false;    // a leading +, ;, | or ,
    QChar separator = u'\n';  // between the records of an extended reply
    RigCommand command = RigCommand::Unknown;
    QString name;  // the long name ("get_freq"), for the extended reply's first record
    std::optional<VfoToken> vfo;
    QString vfoText;   // the VFO token as written
    QStringList args;  // the arguments after the VFO token
};

ParsedLine parseCommandLine(const QString& line);

// The long name of a command ("set_freq"); empty for Unknown.
QString longName(RigCommand command);
