// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A misbehaving line for the virtual radio: each kind of fault can be switched on for every reply
// (forced), or left to chance at a given rate with a seed, so a run can be repeated byte for byte.
//
//   drop         some bytes of a reply never arrive
//   corrupt      some bytes of a reply arrive changed
//   truncate     the reply stops early
//   late         the reply comes after the wait the program allows for it
//   double       the reply comes twice
//   unsolicited  bytes arrive that nobody asked for
//   silent       the radio stops answering
//   close        the radio's terminal goes away (and comes back after a while)

#include "FaultHook.h"

#include <QList>
#include <QString>
#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <random>

enum class LineFault { Drop, Corrupt, Truncate, Late, Double, Unsolicited, Silent, Close };

namespace LineFaultLimits {
constexpr int Kinds = 8;
// A late reply starts this much after the command (the longest poll wait is 200 ms).
constexpr int LateMinMs = 300;
constexpr int LateMaxMs = 700;
// Unsolicited bytes are considered this often while the line is idle, a burst of up to this many.
constexpr int UnsolicitedPeriodMs = 100;
constexpr int UnsolicitedMaxBytes = 8;
// How long a closed terminal stays away: a forced close, and the range of a random one.
constexpr int ForcedCloseMs = 1000;
constexpr int CloseMinMs = 500;
constexpr int CloseMaxMs = 3000;
}  // namespace LineFaultLimits

// The name used on the command line ("drop", "corrupt", ...).
QString lineFaultName(LineFault fault);
std::optional<LineFault> lineFaultFromName(const QString& name);
// A comma-separated list of names; nothing, with a description, when a name is unknown.
std::optional<QList<LineFault>> parseLineFaults(const QString& text, QString* error = nullptr);

// Safe to switch from any thread while the host serves.
class LineFaults final : public FaultHook {
public:
    explicit LineFaults(quint32 seed = 1);

    // On for every reply (for unsolicited: every idle period; for close: after every command).
    void setForced(LineFault fault, bool on);
    bool forced(LineFault fault) const;
    // Each reply is hit with probability `rate` by one kind drawn from `kinds`; an empty list or a rate
    // of 0 switches chance off.
    void setRandom(const QList<LineFault>& kinds, double rate);
    void setSeed(quint32 seed);
    // Everything off.
    void clear();

    quint64 injected() const;  // faults injected so far, all kinds
    quint64 injected(LineFault fault) const;

    bool admit(const QByteArray& command) override;
    void shape(const QByteArray& command, RadioReply& reply) override;
    QByteArray unsolicited(qint64 nowMs) override;

private:
    void apply(LineFault fault, RadioReply& reply);
    int uniform(int low, int high);  // low..high inclusive
    void count(LineFault fault);

    mutable std::mutex mutex_;
    std::mt19937 random_;
    std::array<bool, LineFaultLimits::Kinds> forced_{};
    QList<LineFault> randomKinds_;
    double rate_ = 0;
    qint64 lastUnsolicitedMs_ = -LineFaultLimits::UnsolicitedPeriodMs;
    std::array<std::atomic<quint64>, LineFaultLimits::Kinds> counts_{};
};
