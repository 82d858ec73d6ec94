// SPDX-License-Identifier: GPL-3.0-or-later
// Taking a command line apart: short and long names, the VFO token, arguments, extended prefixes.

#include "RigctlParser.h"

#include <QTest>

Q_DECLARE_METATYPE(RigCommand)

class TestRigctlParser : public QObject {
    Q_OBJECT
private slots:
    void commandNames_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<RigCommand>("command");
        QTest::newRow("f") << "f" << RigCommand::GetFreq;
        QTest::newRow("F") << "F 14074000" << RigCommand::SetFreq;
        QTest::newRow("\\get_freq") << "\\get_freq" << RigCommand::GetFreq;
        QTest::newRow("\\set_freq") << "\\set_freq 14074000" << RigCommand::SetFreq;
        QTest::newRow("get_freq without backslash") << "get_freq" << RigCommand::GetFreq;
        QTest::newRow("m") << "m" << RigCommand::GetMode;
        QTest::newRow("M") << "M USB 2400" << RigCommand::SetMode;
        QTest::newRow("\\get_mode") << "\\get_mode" << RigCommand::GetMode;
        QTest::newRow("\\set_mode") << "\\set_mode USB 0" << RigCommand::SetMode;
        QTest::newRow("v") << "v" << RigCommand::GetVfo;
        QTest::newRow("V") << "V VFOB" << RigCommand::SetVfo;
        QTest::newRow("\\get_vfo") << "\\get_vfo" << RigCommand::GetVfo;
        QTest::newRow("\\set_vfo") << "\\set_vfo VFOA" << RigCommand::SetVfo;
        QTest::newRow("s") << "s" << RigCommand::GetSplitVfo;
        QTest::newRow("S") << "S 1 VFOB" << RigCommand::SetSplitVfo;
        QTest::newRow("\\get_split_vfo") << "\\get_split_vfo" << RigCommand::GetSplitVfo;
        QTest::newRow("\\set_split_vfo") << "\\set_split_vfo 0 VFOA" << RigCommand::SetSplitVfo;
        QTest::newRow("i") << "i" << RigCommand::GetSplitFreq;
        QTest::newRow("I") << "I 14076000" << RigCommand::SetSplitFreq;
        QTest::newRow("\\get_split_freq") << "\\get_split_freq" << RigCommand::GetSplitFreq;
        QTest::newRow("\\set_split_freq") << "\\set_split_freq 1" << RigCommand::SetSplitFreq;
        QTest::newRow("x") << "x" << RigCommand::GetSplitMode;
        QTest::newRow("X") << "X USB 0" << RigCommand::SetSplitMode;
        QTest::newRow("\\get_split_mode") << "\\get_split_mode" << RigCommand::GetSplitMode;
        QTest::newRow("\\set_split_mode") << "\\set_split_mode USB 0" << RigCommand::SetSplitMode;
        QTest::newRow("t") << "t" << RigCommand::GetPtt;
        QTest::newRow("T") << "T 1" << RigCommand::SetPtt;
        QTest::newRow("\\get_ptt") << "\\get_ptt" << RigCommand::GetPtt;
        QTest::newRow("\\set_ptt") << "\\set_ptt 0" << RigCommand::SetPtt;
        QTest::newRow("l") << "l STRENGTH" << RigCommand::GetLevel;
        QTest::newRow("\\get_level") << "\\get_level STRENGTH" << RigCommand::GetLevel;
        QTest::newRow("\\get_powerstat") << "\\get_powerstat" << RigCommand::GetPowerstat;
        QTest::newRow("\\set_powerstat") << "\\set_powerstat 1" << RigCommand::SetPowerstat;
        QTest::newRow("\\get_lock_mode") << "\\get_lock_mode" << RigCommand::GetLockMode;
        QTest::newRow("\\set_lock_mode") << "\\set_lock_mode 0" << RigCommand::SetLockMode;
        QTest::newRow("\\chk_vfo") << "\\chk_vfo" << RigCommand::ChkVfo;
        QTest::newRow("\\dump_state") << "\\dump_state" << RigCommand::DumpState;
        QTest::newRow("q") << "q" << RigCommand::Quit;
        QTest::newRow("Q") << "Q" << RigCommand::Quit;
        QTest::newRow("\\quit") << "\\quit" << RigCommand::Quit;
        QTest::newRow("unknown letter") << "z" << RigCommand::Unknown;
        QTest::newRow("unknown long name") << "\\set_bogus 1" << RigCommand::Unknown;
        QTest::newRow("letter glued to an argument") << "f14074000" << RigCommand::Unknown;
        QTest::newRow("short letter with a backslash") << "\\f" << RigCommand::Unknown;
        QTest::newRow("L is not offered") << "L STRENGTH 1" << RigCommand::Unknown;
        QTest::newRow("garbage bytes") << QString::fromLatin1("\x01\xff\x7f") << RigCommand::Unknown;
    }
    void commandNames()
    {
        QFETCH(QString, line);
        QFETCH(RigCommand, command);
        QCOMPARE(parseCommandLine(line).command, command);
    }

    void theLongNameIsKeptForTheExtendedReply()
    {
        QCOMPARE(parseCommandLine(QStringLiteral("f")).name, QStringLiteral("get_freq"));
        QCOMPARE(parseCommandLine(QStringLiteral("\\set_split_vfo 1 VFOB")).name, QStringLiteral("set_split_vfo"));
    }

    void argumentsFollowTheCommand()
    {
        const ParsedLine p = parseCommandLine(QStringLiteral("M  USB\t2400 "));
        QCOMPARE(p.args, (QStringList{"USB", "2400"}));
        QVERIFY(!p.vfo);
    }

    void vfoTokens_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("token");  // -1: none
        QTest::addColumn<QStringList>("args");
        QTest::newRow("f VFOA") << "f VFOA" << int(VfoToken::A) << QStringList{};
        QTest::newRow("f VFOB") << "f VFOB" << int(VfoToken::B) << QStringList{};
        QTest::newRow("f Main") << "f Main" << int(VfoToken::A) << QStringList{};
        QTest::newRow("f Sub") << "f Sub" << int(VfoToken::B) << QStringList{};
        QTest::newRow("f currVFO") << "f currVFO" << int(VfoToken::Current) << QStringList{};
        QTest::newRow("F VFOB 7074000") << "F VFOB 7074000" << int(VfoToken::B) << QStringList{"7074000"};
        QTest::newRow("M VFOA USB 0") << "M VFOA USB 0" << int(VfoToken::A) << QStringList{"USB", "0"};
        QTest::newRow("S VFOA 1 VFOB") << "S VFOA 1 VFOB" << int(VfoToken::A) << QStringList{"1", "VFOB"};
        QTest::newRow("S 1 VFOB keeps both arguments") << "S 1 VFOB" << -1 << QStringList{"1", "VFOB"};
        QTest::newRow("T currVFO 1") << "T currVFO 1" << int(VfoToken::Current) << QStringList{"1"};
        QTest::newRow("l VFOA STRENGTH") << "l VFOA STRENGTH" << int(VfoToken::A) << QStringList{"STRENGTH"};
        QTest::newRow("f VFOC is a token") << "f VFOC" << int(VfoToken::Unusable) << QStringList{};
        QTest::newRow("V VFOB is an argument of V") << "V VFOB" << -1 << QStringList{"VFOB"};
        QTest::newRow("\\get_freq VFOB") << "\\get_freq VFOB" << int(VfoToken::B) << QStringList{};
        QTest::newRow("lower case is not a VFO") << "f vfoa" << -1 << QStringList{"vfoa"};
    }
    void vfoTokens()
    {
        QFETCH(QString, line);
        QFETCH(int, token);
        QFETCH(QStringList, args);
        const ParsedLine p = parseCommandLine(line);
        QCOMPARE(p.vfo.has_value(), token >= 0);
        if (token >= 0)
            QCOMPARE(int(*p.vfo), token);
        QCOMPARE(p.args, args);
    }

    void extendedPrefixes_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("extended");
        QTest::addColumn<QChar>("separator");
        QTest::newRow("plain") << "f" << false << QChar(u'\n');
        QTest::newRow("+") << "+f" << true << QChar(u'\n');
        QTest::newRow(";") << ";f" << true << QChar(u';');
        QTest::newRow("|") << "|f" << true << QChar(u'|');
        QTest::newRow(",") << ",f" << true << QChar(u',');
        QTest::newRow("+ with a long name") << "+\\get_freq" << true << QChar(u'\n');
        QTest::newRow("; with a blank after it") << "; f" << true << QChar(u';');
    }
    void extendedPrefixes()
    {
        QFETCH(QString, line);
        QFETCH(bool, extended);
        QFETCH(QChar, separator);
        const ParsedLine p = parseCommandLine(line);
        QCOMPARE(p.extended, extended);
        QCOMPARE(p.separator, separator);
        QCOMPARE(p.command, RigCommand::GetFreq);
    }

    void aPrefixAloneIsAnUnknownCommand()
    {
        const ParsedLine p = parseCommandLine(QStringLiteral("+"));
        QVERIFY(p.extended);
        QVERIFY(!p.empty);
        QCOMPARE(p.command, RigCommand::Unknown);
    }

    void aBlankLineIsNoCommand()
    {
        QVERIFY(parseCommandLine(QString()).empty);
        QVERIFY(parseCommandLine(QStringLiteral("  \t ")).empty);
    }
};

QTEST_APPLESS_MAIN(TestRigctlParser)
#include "test_rigctl_parser.moc"
