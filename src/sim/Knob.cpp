// SPDX-License-Identifier: GPL-3.0-or-later
#include "Knob.h"

#include <QStringList>
#include <cmath>

namespace {
constexpr double MsPerS = 1000.0;
constexpr double MaxHzPerS = 1e6;  // a knob no hand turns faster
}  // namespace

std::optional<Knob::Turn> Knob::parse(const QString& text, QString* error)
{
    const QStringList parts = text.split(u',');
    Turn t;
    bool ok = parts.size() <= 2;
    if (ok)
        t.hzPerS = parts.at(0).trimmed().toDouble(&ok);
    if (ok && parts.size() == 2)
        t.seconds = parts.at(1).trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(t.hzPerS) || !std::isfinite(t.seconds) || std::abs(t.hzPerS) > MaxHzPerS ||
        t.seconds < 0) {
        if (error)
            *error = QStringLiteral("--knob takes HZ_PER_S[,SECONDS], not \"%1\"").arg(text);
        return std::nullopt;
    }
    return t;
}

void Knob::turn(const Turn& t, qint64 nowMs)
{
    turn_ = t;
    startMs_ = nowMs;
}

bool Knob::turning(qint64 nowMs) const
{
    if (!turn_ || turn_->hzPerS == 0)
        return false;
    return turn_->seconds == 0 || (nowMs - startMs_) < turn_->seconds * MsPerS;
}

qint64 Knob::stepsAt(qint64 nowMs) const
{
    if (!turn_ || nowMs <= startMs_)
        return 0;
    double ms = static_cast<double>(nowMs - startMs_);
    if (turn_->seconds > 0)
        ms = std::min(ms, turn_->seconds * MsPerS);
    const double steps = turn_->hzPerS * ms / MsPerS / StepHz;
    return static_cast<qint64>(steps < 0 ? std::ceil(steps) : std::floor(steps));
}

std::optional<qint64> Knob::reachedStepAtMs(qint64 step) const
{
    if (!turn_ || turn_->hzPerS == 0)
        return std::nullopt;
    const double ms = static_cast<double>(step) * StepHz * MsPerS / turn_->hzPerS;
    if (ms < 0)
        return std::nullopt;
    return startMs_ + static_cast<qint64>(std::ceil(ms));
}
