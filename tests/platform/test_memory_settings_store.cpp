// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemorySettingsStore.h"

#include <QTest>

class TestMemorySettingsStore : public QObject {
    Q_OBJECT
private slots:
    void missingKeyGivesTheFallback()
    {
        MemorySettingsStore store;
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Set"), QStringLiteral("4800,n,8,2")),
                 QStringLiteral("4800,n,8,2"));
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Com:")), QString());
        QVERIFY(!store.contains(QStringLiteral("CommPort"), QStringLiteral("Com:")));
    }

    void storedValueComesBackInsteadOfTheFallback()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("CommPort"), QStringLiteral("Com:"), QStringLiteral("3"));
        QVERIFY(store.contains(QStringLiteral("CommPort"), QStringLiteral("Com:")));
        QCOMPARE(store.value(QStringLiteral("CommPort"), QStringLiteral("Com:"), QStringLiteral("9")),
                 QStringLiteral("3"));
        QCOMPARE(store.values.value(QStringLiteral("CommPort/Com:")), QStringLiteral("3"));
    }

    void emptyStoredValueIsNotReplacedByTheFallback()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Startup"), QStringLiteral("Left"), QString());
        QVERIFY(store.contains(QStringLiteral("Startup"), QStringLiteral("Left")));
        QCOMPARE(store.value(QStringLiteral("Startup"), QStringLiteral("Left"), QStringLiteral("5")), QString());
    }

    void laterWriteReplacesEarlierOne()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Radio"), QStringLiteral("Type"), QStringLiteral("1"));
        store.setValue(QStringLiteral("Radio"), QStringLiteral("Type"), QStringLiteral("0"));
        QCOMPARE(store.value(QStringLiteral("Radio"), QStringLiteral("Type")), QStringLiteral("0"));
        QCOMPARE(store.values.size(), 1);
    }

    void sectionsKeepSameKeysApart()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Startup"), QStringLiteral("Top"), QStringLiteral("400"));
        store.setValue(QStringLiteral("Other"), QStringLiteral("Top"), QStringLiteral("7"));
        QCOMPARE(store.value(QStringLiteral("Startup"), QStringLiteral("Top")), QStringLiteral("400"));
        QCOMPARE(store.value(QStringLiteral("Other"), QStringLiteral("Top")), QStringLiteral("7"));
    }

    void keysAreCaseSensitive()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Settings"), QStringLiteral("TxInh"), QStringLiteral("1"));
        QVERIFY(!store.contains(QStringLiteral("Settings"), QStringLiteral("txinh")));
    }

    void numberFallsBackOnGarbage()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("Settings"), QStringLiteral("TxInh"), QStringLiteral("abc"));
        QCOMPARE(store.number(QStringLiteral("Settings"), QStringLiteral("TxInh"), 0.0), 0.0);
        store.setValue(QStringLiteral("Settings"), QStringLiteral("TxInh"), QStringLiteral("1"));
        QCOMPARE(store.number(QStringLiteral("Settings"), QStringLiteral("TxInh"), 0.0), 1.0);
    }

    void syncDoesNothingHarmful()
    {
        MemorySettingsStore store;
        store.setValue(QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"));
        store.sync();
        QCOMPARE(store.value(QStringLiteral("A"), QStringLiteral("B")), QStringLiteral("C"));
    }
};

QTEST_GUILESS_MAIN(TestMemorySettingsStore)
#include "test_memory_settings_store.moc"
