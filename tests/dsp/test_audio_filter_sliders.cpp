// SPDX-License-Identifier: GPL-3.0-or-later
#include "AudioFilterSliders.h"

#include <QRandomGenerator>
#include <QTest>

namespace {
QStringList hex(const QList<CatCommand>& commands)
{
    QStringList l;
    for (const CatCommand& c : commands)
        l << c.hex();
    return l;
}
}  // namespace

class TestAudioFilterSliders : public QObject {
    Q_OBJECT
private slots:
    void atLoad_designPositionsAndTexts()
    {
        const AudioFilterSliders s;
        QCOMPARE(s.position(AudioFilterSliders::LowPass), 150);
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 15);
        QCOMPARE(s.position(AudioFilterSliders::Passband), 20);
        QCOMPARE(s.maximum(AudioFilterSliders::Passband), 20);
        QCOMPARE(s.maximum(AudioFilterSliders::LowPass), 155);
        QCOMPARE(s.lowPassCaption(), QStringLiteral(" LP Cut = 3000 Hz"));
        QCOMPARE(s.highPassCaption(), QStringLiteral(" HP Cut = 300 Hz"));
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 300 to 3000 Hz"));
        QCOMPARE(s.bandwidthCaption(), QStringLiteral(" Bandwidth = 2700 Hz"));
    }

    void lowPassTo150WithHighPassAt15_captionsAndCommand()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 100);
        QCOMPARE(hex(s.move(AudioFilterSliders::LowPass, 150)), QStringList{"00 00 96 41 75"});
        QCOMPARE(s.lowPassCaption(), QStringLiteral(" Low Pass Cut = 3000 Hz"));
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 300 to 3000 Hz"));
        QCOMPARE(s.bandwidthCaption(), QStringLiteral(" Bandwidth = 2700 Hz"));
        QCOMPARE(s.lowPassBarLeftTwips(), 150 * 14);
    }

    void highPassMove_captionBarAndCommand()
    {
        AudioFilterSliders s;
        QCOMPARE(hex(s.move(AudioFilterSliders::HighPass, 40)), QStringList{"00 00 28 42 75"});
        QCOMPARE(s.highPassCaption(), QStringLiteral(" High Pass Cut = 800 Hz"));
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 800 to 3000 Hz"));
        QCOMPARE(s.bandwidthCaption(), QStringLiteral(" Bandwidth = 2200 Hz"));
        QCOMPARE(s.highPassBarWidthTwips(), 40 * 14);
        // The passband position would follow the lower edge (40), but that is past its maximum of
        // 20: the assignment is dropped.
        QCOMPARE(s.position(AudioFilterSliders::Passband), 20);
    }

    void unchangedPosition_sendsNothing()
    {
        AudioFilterSliders s;
        QVERIFY(s.move(AudioFilterSliders::LowPass, 150).isEmpty());
        QCOMPARE(s.lowPassCaption(), QStringLiteral(" LP Cut = 3000 Hz"));
    }

    void crossedSliders_bandwidthStaysPositiveLargerNumberFirst()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 30);
        QCOMPARE(hex(s.move(AudioFilterSliders::HighPass, 100)), QStringList{"00 00 64 42 75"});
        QCOMPARE(s.bandwidthSteps(), 70);
        QCOMPARE(s.bandwidthCaption(), QStringLiteral(" Bandwidth = 1400 Hz"));
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 2000 to 600 Hz"));
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 100);
    }

    void crossingJustPastTheLowPassCut_passbandPullsTheHighPassBack()
    {
        // The lower edge (LP - width) lands inside the passband slider's range, so its own change
        // runs and puts the high-pass cut back at LP - width.
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 50);
        QCOMPARE(hex(s.move(AudioFilterSliders::HighPass, 90)), (QStringList{"00 00 5A 42 75", "00 00 0A 42 75"}));
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 10);
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 200 to 1000 Hz"));
    }

    void fullBandwidth_passbandMaximumIsOneNotZero()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 155);
        s.move(AudioFilterSliders::HighPass, 0);
        QCOMPARE(s.bandwidthSteps(), 155);
        QCOMPARE(s.maximum(AudioFilterSliders::Passband), 1);
        QCOMPARE(s.position(AudioFilterSliders::Passband), 0);
    }

    void fullBandwidth_passbandToOne_keepsCutsInRange()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 155);
        s.move(AudioFilterSliders::HighPass, 0);
        s.move(AudioFilterSliders::Passband, 1);
        QVERIFY(s.position(AudioFilterSliders::LowPass) <= 155);
        QVERIFY(s.position(AudioFilterSliders::HighPass) >= 0);
    }

    void passbandMove_setsBothCutsKeepingTheWidth()
    {
        AudioFilterSliders s;  // LP 150, HP 15: 135 steps wide
        QCOMPARE(hex(s.move(AudioFilterSliders::Passband, 10)), (QStringList{"00 00 91 41 75", "00 00 0A 42 75"}));
        QCOMPARE(s.position(AudioFilterSliders::LowPass), 145);
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 10);
        QCOMPARE(s.position(AudioFilterSliders::Passband), 10);
        QCOMPARE(s.maximum(AudioFilterSliders::Passband), 20);
        QCOMPARE(s.bandLimitsCaption(), QStringLiteral(" Band Limits = 200 to 2900 Hz"));
        QCOMPARE(s.bandwidthCaption(), QStringLiteral(" Bandwidth = 2700 Hz"));
    }

    void passbandMove_uncrossesCrossedCuts()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 30);
        s.move(AudioFilterSliders::HighPass, 100);  // crossed, 70 wide
        s.move(AudioFilterSliders::Passband, 10);
        QCOMPARE(s.position(AudioFilterSliders::LowPass), 80);
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 10);
        QCOMPARE(s.bandwidthSteps(), 70);
    }

    void passbandMove_maximumIs155MinusWidth()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 100);  // 85 wide
        s.move(AudioFilterSliders::Passband, 5);
        QCOMPARE(s.maximum(AudioFilterSliders::Passband), 70);
    }

    void outOfRangeValues_areClamped()
    {
        AudioFilterSliders s;
        s.move(AudioFilterSliders::LowPass, 400);
        QCOMPARE(s.position(AudioFilterSliders::LowPass), 155);
        s.move(AudioFilterSliders::HighPass, -3);
        QCOMPARE(s.position(AudioFilterSliders::HighPass), 0);
    }

    void unknownIndex_doesNothing()
    {
        AudioFilterSliders s;
        QVERIFY(s.move(2, 10).isEmpty());
    }

    void anySequenceOfMoves_settlesWithPositionsInRange()
    {
        AudioFilterSliders s;
        QRandomGenerator rng(1234);
        const int indices[] = {0, 1, 3};
        for (int step = 0; step < 3000; ++step) {
            const int index = indices[rng.bounded(3)];
            const QList<CatCommand> sent = s.move(index, rng.bounded(0, 156));
            QVERIFY(sent.size() <= 8);
            for (int i : indices) {
                QVERIFY(s.position(i) >= 0);
                QVERIFY(s.position(i) <= s.maximum(i));
            }
            QVERIFY(s.maximum(AudioFilterSliders::Passband) >= 1);
        }
    }
};

QTEST_GUILESS_MAIN(TestAudioFilterSliders)
#include "test_audio_filter_sliders.moc"
