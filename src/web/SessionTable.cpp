// SPDX-License-Identifier: GPL-3.0-or-later
#include "SessionTable.h"

#include "WebLimits.h"

QByteArray SessionTable::open(Access access)
{
    if (access == Access::None)
        return {};
    if (count() >= WebLimits::MaxSessions) {
        const auto idle = std::find_if(sessions_.begin(), sessions_.end(), [](const Session& s) { return !s.inUse; });
        if (idle == sessions_.end())
            return {};
        sessions_.erase(idle);
    }
    Session s{AccessCodes::newCode(), access};
    sessions_.push_back(s);
    return s.token;
}

int SessionTable::indexOf(const QByteArray& token) const
{
    int found = -1;
    for (int i = 0; i < count(); ++i) {
        if (constantTimeEquals(token, sessions_[static_cast<size_t>(i)].token))
            found = i;
    }
    return token.isEmpty() ? -1 : found;
}

Access SessionTable::find(const QByteArray& token) const
{
    const int i = indexOf(token);
    return i < 0 ? Access::None : sessions_[static_cast<size_t>(i)].access;
}

bool SessionTable::close(const QByteArray& token)
{
    const int i = indexOf(token);
    if (i < 0)
        return false;
    sessions_.erase(sessions_.begin() + i);
    return true;
}

QList<QByteArray> SessionTable::closeAll(Access access)
{
    QList<QByteArray> closed;
    std::erase_if(sessions_, [&](const Session& s) {
        if (s.access != access)
            return false;
        closed << s.token;
        return true;
    });
    return closed;
}

void SessionTable::setInUse(const QByteArray& token, bool inUse)
{
    const int i = indexOf(token);
    if (i >= 0)
        sessions_[static_cast<size_t>(i)].inUse = inUse;
}
