// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoginGuard.h"

#include "Clock.h"
#include "WebLimits.h"

qint64 LoginGuard::lockedForMs(const QString& address) const
{
    const auto it = entries_.constFind(address);
    if (it == entries_.cend())
        return 0;
    return qMax<qint64>(0, it->lockedUntil - clock_.nowMs());
}

bool LoginGuard::failed(const QString& address)
{
    const qint64 now = clock_.nowMs();
    auto it = entries_.find(address);
    if (it == entries_.end()) {
        if (entries_.size() >= WebLimits::MaxTrackedAddresses)
            forgetUnlocked();
        it = entries_.insert(address, Entry{});
    }
    if (it->lockedUntil != 0 && now >= it->lockedUntil)
        *it = Entry{};  // the lock-out ran out: a fresh count of five
    if (it->lockedUntil > now)
        return false;  // still locked: the attempt was not even checked
    if (++it->failures < WebLimits::LockoutFailures)
        return false;
    it->lockedUntil = now + WebLimits::LockoutMs;
    return true;
}

void LoginGuard::succeeded(const QString& address)
{
    entries_.remove(address);
}

void LoginGuard::forgetUnlocked()
{
    const qint64 now = clock_.nowMs();
    entries_.removeIf([now](const QHash<QString, Entry>::iterator& it) { return it->lockedUntil <= now; });
}
