// SPDX-License-Identifier: GPL-3.0-or-later
#include "PanelCommand.h"

#include "BandPlan.h"
#include "CatCommand.h"
#include "PanelState.h"
#include "RadioRange.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <cmath>

namespace {
using Kind = PanelCommand::Kind;

ParsedPanelCommand refuse(const QString& why)
{
    return ParsedPanelCommand{std::nullopt, why};
}

// A whole number in [low, high], or nothing.
std::optional<qint64> wholeNumber(const QJsonObject& o, const QString& key, qint64 low, qint64 high)
{
    const QJsonValue v = o.value(key);
    if (!v.isDouble())
        return std::nullopt;
    const double d = v.toDouble();
    if (!std::isfinite(d) || d != std::floor(d) || d < static_cast<double>(low) || d > static_cast<double>(high))
        return std::nullopt;
    return static_cast<qint64>(d);
}

std::optional<RigVfo> vfoOf(const QJsonObject& o)
{
    const QJsonValue v = o.value(QStringLiteral("vfo"));
    if (v == QJsonValue(QStringLiteral("A")))
        return RigVfo::A;
    if (v == QJsonValue(QStringLiteral("B")))
        return RigVfo::B;
    return std::nullopt;
}
}  // namespace

ParsedPanelCommand parsePanelCommand(const QByteArray& message)
{
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(message, &error);
    if (error.error != QJsonParseError::NoError)
        return refuse(QStringLiteral("not JSON: %1").arg(error.errorString()));
    if (!doc.isObject())
        return refuse(QStringLiteral("not a JSON object"));
    const QJsonObject o = doc.object();
    const QString t = o.value(QStringLiteral("t")).toString();
    PanelCommand c;

    if (t == u"tune" || t == u"step") {
        const auto vfo = vfoOf(o);
        if (!vfo)
            return refuse(QStringLiteral("%1: vfo must be \"A\" or \"B\"").arg(t));
        c.vfo = *vfo;
        if (t == u"tune") {
            const auto hz = wholeNumber(o, QStringLiteral("hz"), RadioRange::RxLowHz, RadioRange::RxHighHz);
            if (!hz)
                return refuse(QStringLiteral("tune: hz must be a whole number from %1 to %2")
                                  .arg(RadioRange::RxLowHz)
                                  .arg(RadioRange::RxHighHz));
            c.kind = Kind::Tune;
            c.hz = *hz;
        } else {
            const auto hz = wholeNumber(o, QStringLiteral("hz"), -PanelCommand::MaxStepHz, PanelCommand::MaxStepHz);
            if (!hz || *hz == 0)
                return refuse(QStringLiteral("step: hz must be a whole number, not 0, at most %1 either way")
                                  .arg(PanelCommand::MaxStepHz));
            c.kind = Kind::Step;
            c.hz = *hz;
        }
        return {c, {}};
    }
    if (t == u"band") {
        const auto index = wholeNumber(o, QStringLiteral("index"), 0, BandPlan::Count - 1);
        if (!index)
            return refuse(QStringLiteral("band: index must be 0 to %1").arg(BandPlan::Count - 1));
        c.kind = Kind::Band;
        c.value = static_cast<int>(*index);
        return {c, {}};
    }
    if (t == u"mode") {
        const auto vfo = vfoOf(o);
        const auto code = wholeNumber(o, QStringLiteral("mode"), ModeCode::Lsb, ModeCode::PktFm);
        if (!vfo)
            return refuse(QStringLiteral("mode: vfo must be \"A\" or \"B\""));
        if (!code || panelModeCaption(static_cast<int>(*code)).isEmpty())
            return refuse(QStringLiteral("mode: not a mode code"));
        c.kind = Kind::Mode;
        c.vfo = *vfo;
        c.value = static_cast<int>(*code);
        return {c, {}};
    }
    if (t == u"split" || t == u"ptt") {
        const QJsonValue on = o.value(QStringLiteral("on"));
        if (!on.isBool())
            return refuse(QStringLiteral("%1: on must be true or false").arg(t));
        c.kind = t == u"split" ? Kind::Split : Kind::Ptt;
        c.on = on.toBool();
        return {c, {}};
    }
    if (t == u"copyAB" || t == u"swapAB") {
        c.kind = t == u"copyAB" ? Kind::CopyAToB : Kind::SwapAB;
        return {c, {}};
    }
    if (t == u"recall") {
        const auto channel = wholeNumber(o, QStringLiteral("channel"), 1, ReplySize::MemoryChannels);
        if (!channel)
            return refuse(QStringLiteral("recall: channel must be 1 to %1").arg(ReplySize::MemoryChannels));
        c.kind = Kind::Recall;
        c.value = static_cast<int>(*channel);
        return {c, {}};
    }
    if (t.isEmpty())
        return refuse(QStringLiteral("no command: \"t\" is missing"));
    return refuse(QStringLiteral("unknown command \"%1\"").arg(t.left(32)));
}
