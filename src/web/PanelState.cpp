// SPDX-License-Identifier: GPL-3.0-or-later
#include "PanelState.h"

#include "BandPlan.h"
#include "CatCommand.h"
#include "NumberFormat.h"
#include "WebLimits.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <array>

namespace {
struct PanelMode {
    int code;
    const char* caption;  // as the poll shows it
    const char* key;      // as the main window's mode key reads
};
constexpr std::array<PanelMode, 11> Modes{{
    {ModeCode::Lsb, "LSB", "LSB"},
    {ModeCode::Usb, "USB", "USB"},
    {ModeCode::Cw, "CW N", "CW"},
    {ModeCode::CwR, "CW R", "CW-R"},
    {ModeCode::Am, "AM", "AM"},
    {ModeCode::AmSync, "AM Sync", "AM-E"},
    {ModeCode::Fm, "FM", "FM"},
    {ModeCode::Rtty, "RTTY N", "RTTY-N"},
    {ModeCode::RttyR, "RTTY R", "RTTY-R"},
    {ModeCode::PktLsb, "PKT LSB", "PKT LS"},
    {ModeCode::PktFm, "PKT FM", "PKT FM"},
}};
// The step keys of the page, in Hz: 10 Hz to 100 kHz.
constexpr std::array<qint64, 5> StepsHz{10, 100, 1000, 10000, 100000};
constexpr double HzPerKHz = 1000.0;

QJsonObject vfoJson(qint64 hz, int mode, const ClarifierState& clar)
{
    const qint64 shownHz = hz + (clar.rxOn ? clar.offsetHz : 0);  // the main window adds it too
    return QJsonObject{
        {QStringLiteral("hz"), hz},
        {QStringLiteral("text"), formatNumber(static_cast<double>(shownHz) / HzPerKHz, Pattern::Frequency).trimmed()},
        {QStringLiteral("mode"), mode},
        {QStringLiteral("modeText"), panelModeCaption(mode)},
        {QStringLiteral("clarRx"), clar.rxOn},
        {QStringLiteral("clarTx"), clar.txOn},
        {QStringLiteral("clarHz"), clar.offsetHz},
    };
}

QString accessName(Access a)
{
    switch (a) {
        case Access::Control:
            return QStringLiteral("control");
        case Access::ViewOnly:
            return QStringLiteral("view");
        case Access::None:
            break;
    }
    return QStringLiteral("none");
}
}  // namespace

QString panelModeCaption(int modeCode)
{
    for (const PanelMode& m : Modes) {
        if (m.code == modeCode)
            return QString::fromLatin1(m.caption);
    }
    return {};
}

QByteArray panelStateJson(const RigState& s, const PanelView& v)
{
    const QJsonObject o{
        {QStringLiteral("t"), QStringLiteral("state")},
        {QStringLiteral("link"), v.linkUp},
        {QStringLiteral("noLink"), !v.linkUp || s.noLink},
        {QStringLiteral("known"), s.haveStatus},
        {QStringLiteral("a"), vfoJson(s.vfoAHz, s.modeA, s.clarifierA)},
        {QStringLiteral("b"), vfoJson(s.vfoBHz, s.modeB, s.clarifierB)},
        {QStringLiteral("split"), s.split},
        {QStringLiteral("dual"), s.dual},
        {QStringLiteral("tx"), s.ptt},
        {QStringLiteral("tuner"), s.tuner},
        {QStringLiteral("lock"), s.lockText},
        {QStringLiteral("antenna"), s.antennaText},
        {QStringLiteral("smeter"), s.mainSMeterRaw},
        {QStringLiteral("txMeter"), s.transmitMeterName},
        {QStringLiteral("txMeterPercent"), s.transmitMeterPercent},
        {QStringLiteral("access"), accessName(v.access)},
        {QStringLiteral("authorized"), v.txAuthorized},
        {QStringLiteral("keyed"), v.holdsKey},
    };
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}

QByteArray panelHelloJson()
{
    QJsonArray bands;
    for (int i = 0; i < BandPlan::Count; ++i) {
        bands.append(QJsonObject{{QStringLiteral("index"), i},
                                 {QStringLiteral("caption"), BandPlan::caption(i)},
                                 {QStringLiteral("mhz"), BandPlan::frequencyMHz(i)}});
    }
    QJsonArray modes;
    for (const PanelMode& m : Modes)
        modes.append(
            QJsonObject{{QStringLiteral("code"), m.code}, {QStringLiteral("key"), QString::fromLatin1(m.key)}});
    QJsonArray steps;
    for (const qint64 hz : StepsHz)
        steps.append(hz);
    const QJsonObject o{
        {QStringLiteral("t"), QStringLiteral("hello")},
        {QStringLiteral("bands"), bands},
        {QStringLiteral("modes"), modes},
        {QStringLiteral("steps"), steps},
        {QStringLiteral("pttRepeatMs"), WebLimits::PttRepeatMs},
        {QStringLiteral("channels"), ReplySize::MemoryChannels},
    };
    return QJsonDocument(o).toJson(QJsonDocument::Compact);
}
