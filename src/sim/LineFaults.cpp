// SPDX-License-Identifier: GPL-3.0-or-later
#include "LineFaults.h"

#include <QStringList>
#include <algorithm>

namespace {
struct Named {
    LineFault fault;
    const char* name;
};
constexpr Named Names[] = {
    {LineFault::Drop, "drop"},     {LineFault::Corrupt, "corrupt"}, {LineFault::Truncate, "truncate"},
    {LineFault::Late, "late"},     {LineFault::Double, "double"},   {LineFault::Unsolicited, "unsolicited"},
    {LineFault::Silent, "silent"}, {LineFault::Close, "close"},
};

// The order in which forced faults act on one reply: silence first, so it wins over the rest.
constexpr LineFault ReplyOrder[] = {LineFault::Silent, LineFault::Drop, LineFault::Corrupt, LineFault::Truncate,
                                    LineFault::Double, LineFault::Late, LineFault::Close};

std::size_t indexOf(LineFault f)
{
    return static_cast<std::size_t>(f);
}
}  // namespace

QString lineFaultName(LineFault fault)
{
    for (const Named& n : Names)
        if (n.fault == fault)
            return QLatin1String(n.name);
    return {};
}

std::optional<LineFault> lineFaultFromName(const QString& name)
{
    const QString wanted = name.trimmed().toLower();
    for (const Named& n : Names)
        if (wanted == QLatin1String(n.name))
            return n.fault;
    return std::nullopt;
}

std::optional<QList<LineFault>> parseLineFaults(const QString& text, QString* error)
{
    QList<LineFault> faults;
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) {
        const auto f = lineFaultFromName(part);
        if (!f) {
            if (error) {
                QStringList known;
                for (const Named& n : Names)
                    known << QLatin1String(n.name);
                *error = QStringLiteral("unknown fault \"%1\" (one of %2)").arg(part.trimmed(), known.join(u','));
            }
            return std::nullopt;
        }
        if (!faults.contains(*f))
            faults << *f;
    }
    return faults;
}

LineFaults::LineFaults(quint32 seed) : random_(seed) {}

void LineFaults::setForced(LineFault fault, bool on)
{
    std::lock_guard lock(mutex_);
    forced_[indexOf(fault)] = on;
}

bool LineFaults::forced(LineFault fault) const
{
    std::lock_guard lock(mutex_);
    return forced_[indexOf(fault)];
}

void LineFaults::setRandom(const QList<LineFault>& kinds, double rate)
{
    std::lock_guard lock(mutex_);
    randomKinds_ = kinds;
    rate_ = std::clamp(rate, 0.0, 1.0);
}

void LineFaults::setSeed(quint32 seed)
{
    std::lock_guard lock(mutex_);
    random_.seed(seed);
}

void LineFaults::clear()
{
    std::lock_guard lock(mutex_);
    forced_.fill(false);
    randomKinds_.clear();
    rate_ = 0;
}

quint64 LineFaults::injected() const
{
    quint64 sum = 0;
    for (const auto& c : counts_)
        sum += c.load();
    return sum;
}

quint64 LineFaults::injected(LineFault fault) const
{
    return counts_[indexOf(fault)].load();
}

void LineFaults::count(LineFault fault)
{
    ++counts_[indexOf(fault)];
}

int LineFaults::uniform(int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random_);
}

bool LineFaults::admit(const QByteArray& command)
{
    // Every command is heard: a radio that has stopped answering still acts, it only says nothing.
    Q_UNUSED(command);
    return true;
}

void LineFaults::shape(const QByteArray& command, RadioReply& reply)
{
    Q_UNUSED(command);
    std::lock_guard lock(mutex_);
    for (const LineFault f : ReplyOrder)
        if (forced_[indexOf(f)])
            apply(f, reply);
    QList<LineFault> chance = randomKinds_;
    chance.removeAll(LineFault::Unsolicited);  // those come between replies, not instead of one
    if (chance.isEmpty() || rate_ <= 0)
        return;
    if (std::uniform_real_distribution<double>(0.0, 1.0)(random_) >= rate_)
        return;
    apply(chance[uniform(0, static_cast<int>(chance.size()) - 1)], reply);
}

void LineFaults::apply(LineFault fault, RadioReply& reply)
{
    using namespace LineFaultLimits;
    QByteArray& b = reply.bytes;
    switch (fault) {
        case LineFault::Drop: {
            if (b.isEmpty())
                return;
            const int n = uniform(1, std::max(1, static_cast<int>(b.size()) / 4));
            for (int i = 0; i < n && !b.isEmpty(); ++i)
                b.remove(uniform(0, static_cast<int>(b.size()) - 1), 1);
            break;
        }
        case LineFault::Corrupt: {
            if (b.isEmpty())
                return;
            const int n = uniform(1, std::min(3, static_cast<int>(b.size())));
            for (int i = 0; i < n; ++i) {
                const int at = uniform(0, static_cast<int>(b.size()) - 1);
                b[at] = static_cast<char>(static_cast<quint8>(b[at]) ^ static_cast<quint8>(uniform(1, 255)));
            }
            break;
        }
        case LineFault::Truncate:
            if (b.isEmpty())
                return;
            b.truncate(b.size() > 1 ? uniform(1, static_cast<int>(b.size()) - 1) : 0);
            break;
        case LineFault::Late:
            if (b.isEmpty())
                return;
            reply.extraDelayMs = uniform(LateMinMs, LateMaxMs);
            break;
        case LineFault::Double:
            if (b.isEmpty())
                return;
            b += QByteArray(b);
            break;
        case LineFault::Silent:
            if (b.isEmpty())
                return;
            b.clear();
            break;
        case LineFault::Close:
            reply.closeLineMs = forced_[indexOf(LineFault::Close)] ? ForcedCloseMs : uniform(CloseMinMs, CloseMaxMs);
            break;
        case LineFault::Unsolicited:
            return;
    }
    count(fault);
}

QByteArray LineFaults::unsolicited(qint64 nowMs)
{
    using namespace LineFaultLimits;
    std::lock_guard lock(mutex_);
    if (nowMs - lastUnsolicitedMs_ < UnsolicitedPeriodMs)
        return {};
    lastUnsolicitedMs_ = nowMs;
    const bool byChance = rate_ > 0 && randomKinds_.contains(LineFault::Unsolicited) &&
                          std::uniform_real_distribution<double>(0.0, 1.0)(random_) < rate_;
    if (!forced_[indexOf(LineFault::Unsolicited)] && !byChance)
        return {};
    QByteArray noise(uniform(1, UnsolicitedMaxBytes), '\0');
    for (char& c : noise)
        c = static_cast<char>(uniform(0, 255));
    count(LineFault::Unsolicited);
    return noise;
}
