// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The six status-flag bytes: split, dual, transmit, VFO/memory, tuner, locks, muting and the model.

#include <QByteArray>
#include <QString>

struct FlagsView {
    bool decoded = false;  // false: a reply of another length, nothing changes
    QString dump;          // " 6 Bytes flags = 1+2+..." (Label4)
    bool markV = false;    // model check: only the title changes in that call
    bool split = false, dual = false, xmit = false;
    bool vfo = false, mem = false, mtun = false, qmb = false;
    bool tuner = false;
    bool lockVisible = false;
    QString lockCaption;  // empty: unchanged
    bool vfoAMuted = false, vfoBMuted = false;
    QString frameA, frameB;  // " VFO-A " / " VFO-A MUTED ", " VFO-B " / " VFO-B MUTED "
};

inline const QString MarkVTitle = QStringLiteral(" FT-1000 MP Mark-V");

FlagsView decodeFlags(int arg, int waiting, const QByteArray& bytes);
