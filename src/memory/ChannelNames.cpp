// SPDX-License-Identifier: GPL-3.0-or-later
#include "ChannelNames.h"

namespace {
QString channelName(int channel, const QString& pPrefix)
{
    if (channel <= Channels::LastRegular)
        return QStringLiteral(" Chan ") + QString::number(channel);
    if (channel <= Channels::LastP)
        return pPrefix + QString::number(channel - Channels::LastRegular);
    return QStringLiteral(" QMB ") + QString::number(channel - Channels::LastP);
}
}  // namespace

QString gridChannelName(int channel)
{
    return channelName(channel, QStringLiteral(" P "));
}

QString labelChannelName(int channel)
{
    return channelName(channel, QStringLiteral(" P"));
}
