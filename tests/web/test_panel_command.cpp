// SPDX-License-Identifier: GPL-3.0-or-later
// Every command a page may send, and every bad message refused with a reason.

#include "PanelCommand.h"

#include <QTest>

using Kind = PanelCommand::Kind;
Q_DECLARE_METATYPE(PanelCommand::Kind)
Q_DECLARE_METATYPE(RigVfo)

class TestPanelCommand : public QObject {
    Q_OBJECT
private slots:
    void commands_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<RigVfo>("vfo");
        QTest::addColumn<qint64>("hz");
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("on");
        QTest::newRow("tune A") << QByteArray(R"({"t":"tune","vfo":"A","hz":14250000})") << Kind::Tune << RigVfo::A
                                << qint64(14250000) << 0 << false;
        QTest::newRow("tune B at the bottom") << QByteArray(R"({"t":"tune","vfo":"B","hz":100000})") << Kind::Tune
                                              << RigVfo::B << qint64(100000) << 0 << false;
        QTest::newRow("tune at the top") << QByteArray(R"({"t":"tune","vfo":"A","hz":30000000})") << Kind::Tune
                                         << RigVfo::A << qint64(30000000) << 0 << false;
        QTest::newRow("step down") << QByteArray(R"({"t":"step","vfo":"A","hz":-100})") << Kind::Step << RigVfo::A
                                   << qint64(-100) << 0 << false;
        QTest::newRow("step the largest") << QByteArray(R"({"t":"step","vfo":"B","hz":10000000})") << Kind::Step
                                          << RigVfo::B << qint64(10000000) << 0 << false;
        QTest::newRow("band") << QByteArray(R"({"t":"band","index":9})") << Kind::Band << RigVfo::A << qint64(0) << 9
                              << false;
        QTest::newRow("mode A") << QByteArray(R"({"t":"mode","vfo":"A","mode":2})") << Kind::Mode << RigVfo::A
                                << qint64(0) << 2 << false;
        QTest::newRow("mode B PKT FM") << QByteArray(R"({"t":"mode","vfo":"B","mode":11})") << Kind::Mode << RigVfo::B
                                       << qint64(0) << 11 << false;
        QTest::newRow("split on") << QByteArray(R"({"t":"split","on":true})") << Kind::Split << RigVfo::A << qint64(0)
                                  << 0 << true;
        QTest::newRow("copy A to B") << QByteArray(R"({"t":"copyAB"})") << Kind::CopyAToB << RigVfo::A << qint64(0) << 0
                                     << false;
        QTest::newRow("swap") << QByteArray(R"({"t":"swapAB"})") << Kind::SwapAB << RigVfo::A << qint64(0) << 0
                              << false;
        QTest::newRow("recall 1") << QByteArray(R"({"t":"recall","channel":1})") << Kind::Recall << RigVfo::A
                                  << qint64(0) << 1 << false;
        QTest::newRow("recall 113") << QByteArray(R"({"t":"recall","channel":113})") << Kind::Recall << RigVfo::A
                                    << qint64(0) << 113 << false;
        QTest::newRow("ptt held") << QByteArray(R"({"t":"ptt","on":true})") << Kind::Ptt << RigVfo::A << qint64(0) << 0
                                  << true;
        QTest::newRow("ptt let go") << QByteArray(R"({"t":"ptt","on":false})") << Kind::Ptt << RigVfo::A << qint64(0)
                                    << 0 << false;
        QTest::newRow("extra fields are ignored") << QByteArray(R"({"t":"split","on":false,"x":[1,2]})") << Kind::Split
                                                  << RigVfo::A << qint64(0) << 0 << false;
    }
    void commands()
    {
        QFETCH(QByteArray, message);
        QFETCH(Kind, kind);
        QFETCH(RigVfo, vfo);
        QFETCH(qint64, hz);
        QFETCH(int, value);
        QFETCH(bool, on);
        const ParsedPanelCommand p = parsePanelCommand(message);
        QVERIFY2(p.command.has_value(), qPrintable(p.error));
        QCOMPARE(p.command->kind, kind);
        QCOMPARE(p.command->vfo, vfo);
        QCOMPARE(p.command->hz, hz);
        QCOMPARE(p.command->value, value);
        QCOMPARE(p.command->on, on);
    }

    void badMessages_data()
    {
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QString>("reason");
        QTest::newRow("empty") << QByteArray() << "not JSON";
        QTest::newRow("not JSON") << QByteArray("tune 14250000") << "not JSON";
        QTest::newRow("truncated") << QByteArray(R"({"t":"tune","vfo":"A")") << "not JSON";
        QTest::newRow("an array") << QByteArray(R"(["tune"])") << "not a JSON object";
        QTest::newRow("no t") << QByteArray(R"({"vfo":"A"})") << "\"t\" is missing";
        QTest::newRow("t not text") << QByteArray(R"({"t":5})") << "\"t\" is missing";
        QTest::newRow("unknown") << QByteArray(R"({"t":"reboot"})") << "unknown command \"reboot\"";
        QTest::newRow("tune without vfo") << QByteArray(R"({"t":"tune","hz":14250000})") << "vfo must be";
        QTest::newRow("tune vfo C") << QByteArray(R"({"t":"tune","vfo":"C","hz":14250000})") << "vfo must be";
        QTest::newRow("tune vfo lower case") << QByteArray(R"({"t":"tune","vfo":"a","hz":14250000})") << "vfo must be";
        QTest::newRow("tune hz as text") << QByteArray(R"({"t":"tune","vfo":"A","hz":"14250000"})") << "hz must be";
        QTest::newRow("tune hz fraction") << QByteArray(R"({"t":"tune","vfo":"A","hz":14250000.5})") << "hz must be";
        QTest::newRow("tune below range") << QByteArray(R"({"t":"tune","vfo":"A","hz":99999})") << "hz must be";
        QTest::newRow("tune above range") << QByteArray(R"({"t":"tune","vfo":"A","hz":30000001})") << "hz must be";
        QTest::newRow("tune huge") << QByteArray(R"({"t":"tune","vfo":"A","hz":1e300})") << "hz must be";
        QTest::newRow("step 0") << QByteArray(R"({"t":"step","vfo":"A","hz":0})") << "hz must be";
        QTest::newRow("step too big") << QByteArray(R"({"t":"step","vfo":"A","hz":10000001})") << "hz must be";
        QTest::newRow("step missing") << QByteArray(R"({"t":"step","vfo":"A"})") << "hz must be";
        QTest::newRow("band 10") << QByteArray(R"({"t":"band","index":10})") << "index must be 0 to 9";
        QTest::newRow("band -1") << QByteArray(R"({"t":"band","index":-1})") << "index must be 0 to 9";
        QTest::newRow("mode 7 is no mode") << QByteArray(R"({"t":"mode","vfo":"A","mode":7})") << "not a mode code";
        QTest::newRow("mode 12") << QByteArray(R"({"t":"mode","vfo":"A","mode":12})") << "not a mode code";
        QTest::newRow("mode without vfo") << QByteArray(R"({"t":"mode","mode":1})") << "vfo must be";
        QTest::newRow("split as number") << QByteArray(R"({"t":"split","on":1})") << "on must be true or false";
        QTest::newRow("ptt missing on") << QByteArray(R"({"t":"ptt"})") << "on must be true or false";
        QTest::newRow("recall 0") << QByteArray(R"({"t":"recall","channel":0})") << "channel must be 1 to 113";
        QTest::newRow("recall 114") << QByteArray(R"({"t":"recall","channel":114})") << "channel must be 1 to 113";
    }
    void badMessages()
    {
        QFETCH(QByteArray, message);
        QFETCH(QString, reason);
        const ParsedPanelCommand p = parsePanelCommand(message);
        QVERIFY(!p.command.has_value());
        QVERIFY2(p.error.contains(reason), qPrintable(p.error));
    }
};

QTEST_GUILESS_MAIN(TestPanelCommand)
#include "test_panel_command.moc"
