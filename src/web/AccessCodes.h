// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The panel's two access codes, "Control" and "View only": 128 random bits each, written as 32
// lower-case hexadecimal digits. A code given at the login is compared with both in a time that does
// not depend on where it first differs, so the time of a refusal tells nothing of the codes.

#include <QByteArray>

enum class Access { None, Control, ViewOnly };

struct AccessCodes {
    QByteArray control;
    QByteArray viewOnly;

    // A fresh code from the system's random source.
    static QByteArray newCode();
    // Whether the text has a code's form (so a stored value that was edited by hand is renewed).
    static bool wellFormed(const QByteArray& code);
    // The access the given code grants; None for anything else, an empty code included.
    Access check(const QByteArray& given) const;
};

// Equal texts, compared in a time that depends only on the length of `expected`.
bool constantTimeEquals(const QByteArray& given, const QByteArray& expected);
