// SPDX-License-Identifier: GPL-3.0-or-later
// The sharing ports' stored choice and the command line's list of ports.
#include "MemorySettingsStore.h"
#include "SharingSettings.h"

#include <QTest>

Q_DECLARE_METATYPE(SharingSettings)

class TestSharingSettings : public QObject {
    Q_OBJECT
private slots:
    void bothPortsAreOffByDefault()
    {
        MemorySettingsStore store;
        QCOMPARE(SharingSettings::load(store), SharingSettings{});
    }

    void savedUnderSharingAsOneAndZero()
    {
        MemorySettingsStore store;
        SharingSettings{.native = false, .text = true}.save(store);
        QCOMPARE(store.value(QStringLiteral("Sharing"), QStringLiteral("Native")), QStringLiteral("0"));
        QCOMPARE(store.value(QStringLiteral("Sharing"), QStringLiteral("Text")), QStringLiteral("1"));
        QCOMPARE(SharingSettings::load(store), (SharingSettings{.native = false, .text = true}));
        SharingSettings{.native = true, .text = false}.save(store);
        QCOMPARE(SharingSettings::load(store), (SharingSettings{.native = true, .text = false}));
    }

    void anythingButOneIsOff_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("on");
        QTest::newRow("1") << QStringLiteral("1") << true;
        QTest::newRow("blank around 1") << QStringLiteral(" 1 ") << true;
        QTest::newRow("0") << QStringLiteral("0") << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("true") << QStringLiteral("true") << false;
        QTest::newRow("2") << QStringLiteral("2") << false;
    }
    void anythingButOneIsOff()
    {
        QFETCH(QString, stored);
        QFETCH(bool, on);
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Sharing"), QStringLiteral("Text"), stored);
        store.setValue(QStringLiteral("Sharing"), QStringLiteral("Native"), stored);
        QCOMPARE(SharingSettings::load(store), (SharingSettings{.native = on, .text = on}));
    }

    void theCommandLinesList_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<SharingSettings>("ports");
        QTest::newRow("native") << QStringLiteral("native") << true << SharingSettings{.native = true, .text = false};
        QTest::newRow("text") << QStringLiteral("text") << true << SharingSettings{.native = false, .text = true};
        QTest::newRow("both") << QStringLiteral("native,text") << true << SharingSettings{.native = true, .text = true};
        QTest::newRow("reversed") << QStringLiteral("text,native") << true
                                  << SharingSettings{.native = true, .text = true};
        QTest::newRow("case and blanks") << QStringLiteral(" Text , NATIVE") << true
                                         << SharingSettings{.native = true, .text = true};
        QTest::newRow("twice") << QStringLiteral("text,text") << true << SharingSettings{.native = false, .text = true};
        QTest::newRow("empty") << QString() << false << SharingSettings{};
        QTest::newRow("trailing comma") << QStringLiteral("text,") << false << SharingSettings{};
        QTest::newRow("unknown") << QStringLiteral("serial") << false << SharingSettings{};
        QTest::newRow("one unknown") << QStringLiteral("text,kenwood") << false << SharingSettings{};
    }
    void theCommandLinesList()
    {
        QFETCH(QString, list);
        QFETCH(bool, valid);
        QFETCH(SharingSettings, ports);
        const std::optional<SharingSettings> parsed = SharingSettings::parseList(list);
        QCOMPARE(parsed.has_value(), valid);
        if (valid)
            QCOMPARE(*parsed, ports);
    }
};

QTEST_GUILESS_MAIN(TestSharingSettings)
#include "test_sharing_settings.moc"
