// SPDX-License-Identifier: GPL-3.0-or-later
// The band scope inside the main window: how its sweeps and recordings meet the status poll
// (Timer1) and the "Scop&e" key.

#include "BandScope.h"
#include "CatCommand.h"
#include "ConsoleFixture.h"
#include "Twips.h"
#include "WaterfallView.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace {
const QString StatusRequest = QStringLiteral("00 00 00 02 10");

void choose(QComboBox* combo, const QString& entry)
{
    combo->setCurrentIndex(combo->findText(entry));
    QVERIFY2(combo->currentText() == entry, qPrintable(entry));
}

bool isTune(const QString& hex)
{
    return hex.endsWith(QStringLiteral(" 0A"));
}
}  // namespace

class TestForm1Scope : public QObject {
    Q_OBJECT
private slots:
    void hidingTheScope_endsAnSRecordAndTurnsThePollOn()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);  // shown
        BandScope* scope = f.form->bandScope();
        scope->centreEdit()->setText(QStringLiteral("14250.00"));
        scope->scan(2)->setChecked(true);
        f.form->Key_Click(49);
        QVERIFY(scope->recording());
        QVERIFY(!f.form->pollEnabled());
        f.form->Key_Click(24);  // hidden: presses Cancel
        QVERIFY(f.form->Frame[1]->isHidden());
        QVERIFY(scope->scan(1)->isChecked());
        QVERIFY(!scope->recording());
        QVERIFY(!scope->timer2()->isActive());
        QVERIFY(f.form->pollEnabled());
    }

    void hidingTheScope_withOneShotSelected_leavesThePollAsItIs()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);
        f.form->setPollEnabled(false);  // as during another window's work
        f.form->Key_Click(24);
        QVERIFY(!f.form->pollEnabled());
    }

    void continuousSweep_afterASpanChange_noStatusPollBetweenTheLaterPasses()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);
        BandScope* scope = f.form->bandScope();
        scope->centreEdit()->setText(QStringLiteral("14250.00"));
        choose(scope->panCombo(1), QStringLiteral("100 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        scope->scan(0)->setChecked(true);

        // Passes of 5 samples, then (50 kHz span) 3: tunes 1-5, 6-8, 9-11, 12-14. The span changes at
        // the second tune and Cancel comes at the 12th. Whenever the poll is on, a Timer1 tick falls
        // due at each frame the radio gets; it queues behind the pass under way.
        int tunes = 0;
        bool ticking = true;
        f.port->responder = [&](const QByteArray& c) {
            const int op = static_cast<quint8>(c.at(4));
            if (op == Op::SetVfoA) {
                ++tunes;
                if (tunes == 2) {
                    choose(scope->panCombo(1), QStringLiteral("50 Khz"));
                    scope->PanCombo_Click(1);
                }
                if (tunes == 12) {
                    ticking = false;
                    f.form->Key_Click(53);
                }
            }
            if (ticking && f.form->pollEnabled())
                f.form->Timer1_Timer();
            if (op == Op::ReadMeter)
                return QByteArray::fromHex("60000000f7");
            return QByteArray();
        };
        f.takeWrites();
        f.form->Key_Click(49);

        const QStringList w = f.port->writtenHex();
        QList<int> tuneAt;
        QList<int> statusAt;
        for (int i = 0; i < w.size(); ++i) {
            if (isTune(w[i]))
                tuneAt.append(i);
            if (w[i] == StatusRequest)
                statusAt.append(i);
        }
        QCOMPARE(tuneAt.size(), 12 + 1);  // and the tune back to the centre
        // The ticks after the span change merge into one poll, run before the second pass; none after.
        QCOMPARE(statusAt.size(), 1);
        QVERIFY(statusAt[0] > tuneAt[4] && statusAt[0] < tuneAt[5]);
        QVERIFY(!f.form->bandScope()->busy());
        QVERIFY(f.form->pollEnabled());
    }

    void oneShotSweep_startedDuringAPoll_tunesBackToTheCentreBeforeTheNextPoll()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);
        BandScope* scope = f.form->bandScope();
        scope->centreEdit()->setText(QStringLiteral("14250.00"));
        choose(scope->panCombo(1), QStringLiteral("50 Khz"));
        choose(scope->panCombo(2), QStringLiteral("25 Khz"));
        scope->scan(1)->setChecked(true);
        // During a poll a Timer1 tick falls due, then the operator starts the sweep.
        bool started = false;
        f.port->responder = [&](const QByteArray& c) {
            const int op = static_cast<quint8>(c.at(4));
            if (op == Op::StatusRequest && !started) {
                started = true;
                f.form->Timer1_Timer();
                f.form->Key_Click(49);
            }
            if (op == Op::ReadMeter)
                return QByteArray::fromHex("60000000f7");
            return QByteArray();
        };
        f.takeWrites();
        f.form->Timer1_Timer();

        const QStringList w = f.port->writtenHex();
        QList<int> tuneAt;
        QList<int> statusAt;
        for (int i = 0; i < w.size(); ++i) {
            if (isTune(w[i]))
                tuneAt.append(i);
            if (w[i] == StatusRequest)
                statusAt.append(i);
        }
        QCOMPARE(tuneAt.size(), 3 + 1);  // the samples, and the tune back to the centre
        QCOMPARE(statusAt.size(), 1);    // the poll that was running; the tick is forgotten
        QVERIFY(statusAt[0] < tuneAt[0]);
        QCOMPARE(tuneAt.last(), static_cast<int>(w.size()) - 1);  // nothing after the tune back
        QVERIFY(f.form->pollEnabled());
    }

    void waterfall_growsTheWindowWhileTheScopeIsShown()
    {
        ConsoleFixture f;
        BandScope* scope = f.form->bandScope();
        scope->setWaterfallShown(true);  // with the scope hidden the window stays as it is
        QCOMPARE(f.form->height(), Twips::toPixels(3990));
        f.form->Key_Click(24);
        const int strip = scope->waterfallView()->height();
        QVERIFY(strip >= 100);  // a line a sweep for the hundred kept
        QCOMPARE(f.form->height(), Twips::toPixels(7140) + strip + 2);
        QVERIFY(f.form->Frame[1]->height() >= strip + Twips::toPixels(7140 - 3990) - 4);
        scope->setWaterfallShown(false);
        QCOMPARE(f.form->height(), Twips::toPixels(7140));
        scope->setWaterfallShown(true);
        QCOMPARE(f.form->height(), Twips::toPixels(7140) + strip + 2);
        f.form->Key_Click(24);
        QCOMPARE(f.form->height(), Twips::toPixels(3990));
        QCOMPARE(f.store.value(QStringLiteral("Scope"), QStringLiteral("Waterfall")), QStringLiteral("1"));
        const QString out = qEnvironmentVariable("FT_TEST_OUTPUT");
        if (!out.isEmpty()) {
            f.form->Key_Click(24);
            f.form->show();
            QVERIFY(QTest::qWaitForWindowExposed(f.form.get()));
            f.form->grab().save(out + QStringLiteral("/form1-scope-waterfall.png"));
        }
    }

    void savePlot_unwritable_showsTheMessageBoxNamingTheFile()
    {
        ConsoleFixture f;
        f.form->Key_Click(24);
        QVERIFY(!f.form->bandScope()->savePlot(QStringLiteral("/proc/version/plot.png")));
        QCOMPARE(f.prompts.messages.size(), 1);
        QCOMPARE(f.prompts.messages[0].title, QStringLiteral("Save Plot"));
        QCOMPARE(f.prompts.messages[0].icon, QMessageBox::Warning);
        QVERIFY(f.prompts.messages[0].text.contains(QStringLiteral("/proc/version/plot.png")));
        QVERIFY(f.form->pollEnabled());  // the scope and the poll go on
    }
};

QTEST_MAIN(TestForm1Scope)
#include "test_form1_scope.moc"
