// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScopeLists.h"

QStringList ScopeLists::spans()
{
    return {QStringLiteral("0.1 Khz"), QStringLiteral("0.5 Khz"),  QStringLiteral("1 Khz"),
            QStringLiteral("5 Khz"),   QStringLiteral("12.5 Khz"), QStringLiteral("25 Khz"),
            QStringLiteral("50 Khz"),  QStringLiteral("100 Khz"),  QStringLiteral("250 Khz"),
            QStringLiteral("500 Khz"), QStringLiteral("1000 Khz"), QStringLiteral("2500 Khz"),
            QStringLiteral("5000 KHz")};
}

QStringList ScopeLists::resolutions()
{
    return {QStringLiteral("0.1 Khz"), QStringLiteral("0.5 Khz"), QStringLiteral("1 Khz"),  QStringLiteral("5 Khz"),
            QStringLiteral("10 Khz"),  QStringLiteral("25 Khz"),  QStringLiteral("50 Khz"), QStringLiteral("100 Khz"),
            QStringLiteral("500 Khz"), QStringLiteral("1000 Khz")};
}

QStringList ScopeLists::recordTimes()
{
    return {QStringLiteral("1 mn"),  QStringLiteral("2 mn"),  QStringLiteral("3 mn"), QStringLiteral("5 mn"),
            QStringLiteral("10 mn"), QStringLiteral("15 mn"), QStringLiteral("30 mn")};
}

const char* ScopeKey::caption(int index)
{
    switch (index) {
        case GetCenter:
            return "Get Center";
        case RedPlot:
            return "Red Plot";
        case YellowPlot:
            return "Yellow Plot";
        case GreenPlot:
            return "Green Plot";
        case Clear:
            return "Clear";
        case Cancel:
            return "Cancel";
        default:
            return nullptr;
    }
}

quint32 ScopeColour::forKey(int index)
{
    switch (index) {
        case ScopeKey::RedPlot:
            return Red;
        case ScopeKey::YellowPlot:
            return Yellow;
        case ScopeKey::GreenPlot:
            return Green;
        default:
            return 0;
    }
}
