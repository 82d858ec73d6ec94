// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace {
bool isPlaceholder(QChar c)
{
    return c == u'#' || c == u'0';
}
}  // namespace

QString formatNumber(double value, const QString& pattern)
{
    const qsizetype point = pattern.indexOf(u'.');
    const QString intPat = point < 0 ? pattern : pattern.left(point);
    const QString fracPat = point < 0 ? QString() : pattern.mid(point + 1);

    int fracPlaces = 0;
    int lastRequired = 0;  // fraction digits that must print (up to the last '0')
    for (QChar c : fracPat) {
        if (isPlaceholder(c)) {
            ++fracPlaces;
            if (c == u'0')
                lastRequired = fracPlaces;
        }
    }
    int minIntDigits = 0;
    bool grouping = false;
    bool seenIntPlaceholder = false;
    for (QChar c : intPat) {
        if (c == u'0')
            ++minIntDigits;
        if (isPlaceholder(c))
            seenIntPlaceholder = true;
        if (c == u',' && seenIntPlaceholder)
            grouping = true;
    }

    const double scale = std::pow(10.0, fracPlaces);
    // Nothing the radio reports comes near these bounds; they keep nonsense input defined.
    const double magnitude = std::isfinite(value) ? std::fabs(value) : 0.0;
    const double limit = 9.0e18;
    const auto scaled = static_cast<long long>(std::llround(std::min(magnitude * scale, limit)));
    const long long whole = scaled / static_cast<long long>(scale);
    const long long frac = scaled % static_cast<long long>(scale);
    const bool negative = value < 0 && scaled != 0;

    QString digits = whole == 0 ? QString() : QString::number(whole);
    while (digits.size() < minIntDigits)
        digits.prepend(u'0');
    if (grouping) {
        for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
            digits.insert(i, u',');
    }

    // Integer part: literals before the first placeholder, the digits, literals after the last.
    QString out;
    qsizetype firstPh = -1;
    qsizetype lastPh = -1;
    for (qsizetype i = 0; i < intPat.size(); ++i) {
        if (isPlaceholder(intPat[i])) {
            if (firstPh < 0)
                firstPh = i;
            lastPh = i;
        }
    }
    if (firstPh < 0) {
        out = intPat + digits;
    } else {
        out = intPat.left(firstPh) + digits;
        for (qsizetype i = lastPh + 1; i < intPat.size(); ++i)
            if (intPat[i] != u',')
                out += intPat[i];
    }
    if (negative)
        out.prepend(u'-');

    if (point >= 0) {
        QString fracDigits = QString::number(frac).rightJustified(fracPlaces, u'0');
        if (fracPlaces == 0)
            fracDigits.clear();
        // Optional digits after the last required one drop their trailing zeros.
        int keep = fracPlaces;
        while (keep > lastRequired && fracDigits[keep - 1] == u'0')
            --keep;
        out += u'.';
        int used = 0;
        for (QChar c : fracPat) {
            if (isPlaceholder(c)) {
                if (used < keep)
                    out += fracDigits[used];
                ++used;
            } else {
                out += c;
            }
        }
    }
    return out;
}

double roundToTenHz(double kHz)
{
    return std::floor((kHz + 0.001) * 100.0) / 100.0;
}
