// SPDX-License-Identifier: GPL-3.0-or-later
// The manual pages' options are read from --help as QCommandLineParser prints it.
#include "HelpPage.h"

#include <QTest>

namespace {
// Two programs' help, as printed (the second line of an option wraps to its description column).
const QString SimHelp = QStringLiteral(
    "Usage: /build/src/sim/ft1000-sim [options]\n"
    "A virtual FT-1000MP on a pseudo-terminal. Open the printed device at 4800,n,8,2.\n"
    "\n"
    "Options:\n"
    "  -h, --help           Displays help on commandline options.\n"
    "  --help-all           Displays help including Qt specific options.\n"
    "  -v, --version        Displays version information.\n"
    "  -m, --model <model>  The radio to play: markv or mp.\n"
    "  --fault <kinds>      Faults to inject at random, comma-separated: drop,\n"
    "                       corrupt, truncate, late, double, unsolicited, silent,\n"
    "                       close.\n"
    "  --seed <n>           Seed of the faults' random sequence.\n");
}  // namespace

class TestHelpPage : public QObject {
    Q_OBJECT
private slots:
    void readsNamesValuesAndWrappedDescriptions()
    {
        QString error;
        const auto help = HelpPage::parse(SimHelp, &error);
        QVERIFY2(help, qPrintable(error));
        QCOMPARE(help->description,
                 QStringLiteral("A virtual FT-1000MP on a pseudo-terminal. Open the printed device at 4800,n,8,2."));
        QCOMPARE(help->options.size(), 6);
        QCOMPARE(help->options[0].names, (QStringList{QStringLiteral("-h"), QStringLiteral("--help")}));
        QVERIFY(help->options[0].valueName.isEmpty());
        QCOMPARE(help->options[3].names, (QStringList{QStringLiteral("-m"), QStringLiteral("--model")}));
        QCOMPARE(help->options[3].valueName, QStringLiteral("model"));
        QCOMPARE(help->options[4].description,
                 QStringLiteral("Faults to inject at random, comma-separated: drop, corrupt, truncate, late, double, "
                                "unsolicited, silent, close."));
        QCOMPARE(help->options[5].names, QStringList{QStringLiteral("--seed")});
    }

    void optionsEndAtTheFirstBlankLine()
    {
        const auto help = HelpPage::parse(SimHelp + QStringLiteral("\nArguments:\n  file  A file.\n"));
        QVERIFY(help);
        QCOMPARE(help->options.size(), 6);
    }

    void refusesHelpWithoutOptions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("no options section") << QStringLiteral("Usage: x\nDoes things.\n");
        QTest::newRow("empty options section") << QStringLiteral("Usage: x\n\nOptions:\n\n");
        QTest::newRow("unclosed value") << QStringLiteral("Options:\n  --port <device  A port.\n");
        QTest::newRow("not an option") << QStringLiteral("Options:\n  port  A port.\n");
    }
    void refusesHelpWithoutOptions()
    {
        QFETCH(QString, text);
        QString error;
        QVERIFY(!HelpPage::parse(text, &error));
        QVERIFY(!error.isEmpty());
    }

    void escapesForTheManualPage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("plain") << QStringLiteral("Run it.") << QStringLiteral("Run it.");
        QTest::newRow("backslash") << QStringLiteral("C:\\radio") << QStringLiteral("C:\\eradio");
        QTest::newRow("leading dot") << QStringLiteral(".ymp files") << QStringLiteral("\\&.ymp files");
        QTest::newRow("leading quote") << QStringLiteral("'x'") << QStringLiteral("\\&'x'");
    }
    void escapesForTheManualPage()
    {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(HelpPage::escapeText(text), escaped);
    }

    void optionsBecomeTaggedParagraphs()
    {
        const auto help = HelpPage::parse(SimHelp);
        QVERIFY(help);
        const QStringList lines = HelpPage::optionsSection(help->options).split(u'\n');
        QCOMPARE(lines.size(), 3 * 6);
        QCOMPARE(lines[9], QStringLiteral(".TP"));
        QCOMPARE(lines[10], QStringLiteral("\\fB\\-m\\fR, \\fB\\-\\-model\\fR \\fImodel\\fR"));
        QCOMPARE(lines[11], QStringLiteral("The radio to play: markv or mp."));
    }

    void fillsTheTemplate()
    {
        const auto help = HelpPage::parse(SimHelp);
        QVERIFY(help);
        const auto page =
            HelpPage::fillTemplate(QStringLiteral(".SH DESCRIPTION\n%DESCRIPTION%\n.SH OPTIONS\n%OPTIONS%\n"), *help);
        QVERIFY(page);
        QVERIFY(page->startsWith(QStringLiteral(".SH DESCRIPTION\nA virtual FT-1000MP on a pseudo-terminal.")));
        QVERIFY(page->contains(QStringLiteral(".SH OPTIONS\n.TP\n\\fB\\-h\\fR, \\fB\\-\\-help\\fR\n")));
        QVERIFY(!page->contains(u'%'));
    }

    void aTemplateWithoutTheOptionsPlaceIsRefused()
    {
        const auto help = HelpPage::parse(SimHelp);
        QVERIFY(help);
        QString error;
        QVERIFY(!HelpPage::fillTemplate(QStringLiteral(".SH OPTIONS\n"), *help, &error));
        QVERIFY(error.contains(QStringLiteral("%OPTIONS%")));
    }
};

QTEST_GUILESS_MAIN(TestHelpPage)
#include "test_help_page.moc"
