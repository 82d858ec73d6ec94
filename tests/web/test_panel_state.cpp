// SPDX-License-Identifier: GPL-3.0-or-later
// The state as the page gets it, and the page's fixed keys.

#include "BandPlan.h"
#include "PanelState.h"
#include "StatusDecoder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {
QJsonObject parse(const QByteArray& json)
{
    QJsonParseError e{};
    const QJsonDocument d = QJsonDocument::fromJson(json, &e);
    if (e.error != QJsonParseError::NoError)
        qWarning() << e.errorString() << json;
    return d.object();
}

RigState aState()
{
    RigState s;
    s.haveStatus = true;
    s.vfoAHz = 14250250;
    s.vfoBHz = 7074000;
    s.modeA = 1;
    s.modeB = 3;
    s.split = true;
    s.dual = true;
    s.ptt = false;
    s.tuner = true;
    s.lockText = QStringLiteral("A Lock");
    s.antennaText = QStringLiteral("ANT B");
    s.mainSMeterRaw = 130;
    s.transmitMeterName = QStringLiteral("SWR");
    s.transmitMeterPercent = 42;
    s.clarifierA = ClarifierState{true, false, 500};
    return s;
}
}  // namespace

class TestPanelState : public QObject {
    Q_OBJECT
private slots:
    void theStateCarriesWhatTheMainWindowShows()
    {
        const QJsonObject o = parse(panelStateJson(aState(), PanelView{true, true, Access::Control, false}));
        QCOMPARE(o.value("t").toString(), QStringLiteral("state"));
        QCOMPARE(o.value("link").toBool(), true);
        QCOMPARE(o.value("noLink").toBool(), false);
        QCOMPARE(o.value("known").toBool(), true);
        const QJsonObject a = o.value("a").toObject();
        QCOMPARE(a.value("hz").toInteger(), 14250250);
        // The display adds the receive clarifier, with the main window's pattern.
        QCOMPARE(a.value("text").toString(), QStringLiteral("14,250.75"));
        QCOMPARE(a.value("modeText").toString(), QStringLiteral("USB"));
        QCOMPARE(a.value("clarRx").toBool(), true);
        QCOMPARE(a.value("clarHz").toInt(), 500);
        const QJsonObject b = o.value("b").toObject();
        QCOMPARE(b.value("text").toString(), QStringLiteral("7,074.00"));
        QCOMPARE(b.value("mode").toInt(), 3);
        QCOMPARE(b.value("modeText").toString(), QStringLiteral("CW R"));
        QCOMPARE(o.value("split").toBool(), true);
        QCOMPARE(o.value("dual").toBool(), true);
        QCOMPARE(o.value("tx").toBool(), false);
        QCOMPARE(o.value("tuner").toBool(), true);
        QCOMPARE(o.value("lock").toString(), QStringLiteral("A Lock"));
        QCOMPARE(o.value("antenna").toString(), QStringLiteral("ANT B"));
        QCOMPARE(o.value("smeter").toInt(), 130);
        QCOMPARE(o.value("txMeter").toString(), QStringLiteral("SWR"));
        QCOMPARE(o.value("txMeterPercent").toInt(), 42);
        QCOMPARE(o.value("access").toString(), QStringLiteral("control"));
        QCOMPARE(o.value("authorized").toBool(), true);
        QCOMPARE(o.value("keyed").toBool(), false);
    }

    void noLinkWhenThePortIsClosedOrTheRadioSilent()
    {
        RigState s = aState();
        QCOMPARE(parse(panelStateJson(s, PanelView{false, false, Access::ViewOnly, false})).value("noLink").toBool(),
                 true);
        s.noLink = true;
        const QJsonObject o = parse(panelStateJson(s, PanelView{true, false, Access::ViewOnly, false}));
        QCOMPARE(o.value("noLink").toBool(), true);
        QCOMPARE(o.value("access").toString(), QStringLiteral("view"));
    }

    void anUnknownModeHasNoCaption()
    {
        RigState s;
        const QJsonObject o = parse(panelStateJson(s, PanelView{}));
        QCOMPARE(o.value("known").toBool(), false);
        QCOMPARE(o.value("a").toObject().value("modeText").toString(), QString());
    }

    void modeCaptionsAreThoseOfThePoll_data()
    {
        QTest::addColumn<int>("modeByte");
        QTest::addColumn<int>("qualifier");
        for (int m = 0; m <= 6; ++m) {
            QTest::addRow("mode byte %d", m) << m << 0;
            QTest::addRow("mode byte %d, second variant", m) << m << 0x80;
        }
    }
    void modeCaptionsAreThoseOfThePoll()
    {
        QFETCH(int, modeByte);
        QFETCH(int, qualifier);
        const auto d = decodeMode(modeByte, qualifier);
        QVERIFY(d.has_value());
        QCOMPARE(panelModeCaption(d->code), d->caption);
    }

    void helloCarriesTheBandPlanModesAndSteps()
    {
        const QJsonObject o = parse(panelHelloJson());
        QCOMPARE(o.value("t").toString(), QStringLiteral("hello"));
        const QJsonArray bands = o.value("bands").toArray();
        QCOMPARE(bands.size(), BandPlan::Count);
        QCOMPARE(bands[8].toObject().value("caption").toString(), QStringLiteral("24.5"));
        QCOMPARE(bands[5].toObject().value("mhz").toDouble(), 14.25);
        const QJsonArray modes = o.value("modes").toArray();
        QCOMPARE(modes.size(), 11);
        QCOMPARE(modes[1].toObject().value("key").toString(), QStringLiteral("USB"));
        const QJsonArray steps = o.value("steps").toArray();
        QCOMPARE(steps.first().toInteger(), 10);
        QCOMPARE(steps.last().toInteger(), 100000);
        QCOMPARE(o.value("pttRepeatMs").toInt(), 200);
        QCOMPARE(o.value("channels").toInt(), 113);
    }
};

QTEST_GUILESS_MAIN(TestPanelState)
#include "test_panel_state.moc"
