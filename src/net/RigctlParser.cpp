// SPDX-License-Identifier: GPL-3.0-or-later
#include "RigctlParser.h"

#include <QRegularExpression>
#include <array>

namespace {

struct CommandSpec {
    char letter;  // 0: reached only by its long name
    const char* name;
    RigCommand command;
    bool takesVfo;  // may be preceded by a VFO token ("f VFOB")
};

constexpr std::array<CommandSpec, 22> Commands{{
    {'f', "get_freq", RigCommand::GetFreq, true},
    {'F', "set_freq", RigCommand::SetFreq, true},
    {'m', "get_mode", RigCommand::GetMode, true},
    {'M', "set_mode", RigCommand::SetMode, true},
    {'v', "get_vfo", RigCommand::GetVfo, false},
    {'V', "set_vfo", RigCommand::SetVfo, false},
    {'s', "get_split_vfo", RigCommand::GetSplitVfo, true},
    {'S', "set_split_vfo", RigCommand::SetSplitVfo, true},
    {'i', "get_split_freq", RigCommand::GetSplitFreq, true},
    {'I', "set_split_freq", RigCommand::SetSplitFreq, true},
    {'x', "get_split_mode", RigCommand::GetSplitMode, true},
    {'X', "set_split_mode", RigCommand::SetSplitMode, true},
    {'t', "get_ptt", RigCommand::GetPtt, true},
    {'T', "set_ptt", RigCommand::SetPtt, true},
    {'l', "get_level", RigCommand::GetLevel, true},
    {0, "get_powerstat", RigCommand::GetPowerstat, false},
    {0, "set_powerstat", RigCommand::SetPowerstat, false},
    {0, "get_lock_mode", RigCommand::GetLockMode, false},
    {0, "set_lock_mode", RigCommand::SetLockMode, false},
    {0, "chk_vfo", RigCommand::ChkVfo, false},
    {0, "dump_state", RigCommand::DumpState, false},
    {'q', "quit", RigCommand::Quit, false},
}};

const CommandSpec* findCommand(const QString& token)
{
    if (token.isEmpty())
        return nullptr;
    // "\get_freq" and "get_freq" are the long form, "f" the short one.
    const bool backslash = token.front() == u'\\';
    const QString word = backslash ? token.mid(1) : token;
    for (const CommandSpec& c : Commands) {
        if (word == QLatin1String(c.name))
            return &c;
        if (!backslash && c.letter != 0 && word.size() == 1 && word.front() == QLatin1Char(c.letter))
            return &c;
    }
    // Q is accepted for q, as rigctl does.
    if (!backslash && word == QLatin1String("Q"))
        return &Commands.back();
    return nullptr;
}

bool isExtendedPrefix(QChar c)
{
    return c == u'+' || c == u';' || c == u'|' || c == u',';
}

}  // namespace

ParsedLine parseCommandLine(const QString& line)
{
    ParsedLine p;
    QString text = line.trimmed();
    if (text.isEmpty()) {
        p.empty = true;
        return p;
    }
    if (isExtendedPrefix(text.front())) {
        p.extended = true;
        p.separator = text.front() == u'+' ? QChar(u'\n') : text.front();
        text = text.mid(1).trimmed();
        if (text.isEmpty())
            return p;  // a prefix alone is an unknown command
    }
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QStringList tokens = text.split(blanks, Qt::SkipEmptyParts);
    const CommandSpec* entry = findCommand(tokens.takeFirst());
    if (entry == nullptr)
        return p;
    p.command = entry->command;
    p.name = QLatin1String(entry->name);
    if (entry->takesVfo && !tokens.isEmpty()) {
        if (const auto vfo = parseVfoToken(tokens.front())) {
            p.vfo = vfo;
            p.vfoText = tokens.takeFirst();
        }
    }
    p.args = tokens;
    return p;
}

QString longName(RigCommand command)
{
    for (const CommandSpec& c : Commands) {
        if (c.command == command)
            return QLatin1String(c.name);
    }
    return {};
}
