// SPDX-License-Identifier: GPL-3.0-or-later
#include "AccessCodes.h"

#include "WebLimits.h"

#include <QRandomGenerator>
#include <array>

QByteArray AccessCodes::newCode()
{
    std::array<quint32, WebLimits::CodeBytes / sizeof(quint32)> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char*>(words.data()), WebLimits::CodeBytes).toHex();
}

bool AccessCodes::wellFormed(const QByteArray& code)
{
    if (code.size() != WebLimits::CodeBytes * 2)
        return false;
    for (const char c : code) {
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f')))
            return false;
    }
    return true;
}

Access AccessCodes::check(const QByteArray& given) const
{
    // Both comparisons always run; an empty stored code never matches.
    const bool isControl = constantTimeEquals(given, control) && !control.isEmpty();
    const bool isView = constantTimeEquals(given, viewOnly) && !viewOnly.isEmpty();
    if (isControl)
        return Access::Control;
    if (isView)
        return Access::ViewOnly;
    return Access::None;
}

bool constantTimeEquals(const QByteArray& given, const QByteArray& expected)
{
    unsigned diff = given.size() == expected.size() ? 0U : 1U;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const unsigned char g = i < given.size() ? static_cast<unsigned char>(given[i]) : 0U;
        diff |= g ^ static_cast<unsigned char>(expected[i]);
    }
    return diff == 0;
}
