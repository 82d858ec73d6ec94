// SPDX-License-Identifier: GPL-3.0-or-later
#include "DumpState.h"

#include "HamlibNames.h"

namespace {
QString hex(unsigned v)
{
    return QStringLiteral("0x%1").arg(v, 0, 16);
}

// start end modes low_power high_power vfos antennas
QString rangeLine(qint64 low, qint64 high, int lowMw, int highMw)
{
    using namespace DumpStateValue;
    return QStringLiteral("%1.000000 %2.000000 %3 %4 %5 %6 %7")
        .arg(low)
        .arg(high)
        .arg(hex(ModeBit::All))
        .arg(lowMw)
        .arg(highMw)
        .arg(hex(VfoMask))
        .arg(hex(AntennaMask));
}

const QString EndOfRanges = QStringLiteral("0 0 0 0 0 0 0");
const QString EndOfPairs = QStringLiteral("0 0");
}  // namespace

QStringList dumpStateLines()
{
    using namespace DumpStateValue;
    QStringList l;
    l << QString::number(ProtocolVersion) << QString::number(RigModel) << QString::number(ItuRegion);
    // Receive ranges: no power figures on the receiver.
    l << rangeLine(RxLowHz, RxHighHz, -1, -1) << EndOfRanges;
    l << rangeLine(TxLowHz, TxHighHz, TxLowMw, TxHighMw) << EndOfRanges;
    // Tuning steps: modes then step.
    l << QStringLiteral("%1 %2").arg(hex(ModeBit::All)).arg(TuningStepHz) << EndOfPairs;
    // Filters: modes then passband, the same figures "m" reports.
    l << QStringLiteral("%1 %2")
             .arg(hex(ModeBit::USB | ModeBit::LSB | ModeBit::PKTLSB))
             .arg(defaultPassbandHz(ModeCode::Usb));
    l << QStringLiteral("%1 %2")
             .arg(hex(ModeBit::CW | ModeBit::CWR | ModeBit::RTTY | ModeBit::RTTYR))
             .arg(defaultPassbandHz(ModeCode::Cw));
    l << QStringLiteral("%1 %2").arg(hex(ModeBit::AM)).arg(defaultPassbandHz(ModeCode::Am));
    l << QStringLiteral("%1 %2").arg(hex(ModeBit::FM | ModeBit::PKTFM)).arg(defaultPassbandHz(ModeCode::Fm));
    l << EndOfPairs;
    l << QString::number(MaxRitHz) << QString::number(MaxXitHz) << QStringLiteral("0");  // no IF shift
    l << QStringLiteral("0");                                                            // announces
    l << QStringLiteral("0");                                                            // preamps: none
    l << QStringLiteral("0");                                                            // attenuators: none
    // has_get_func, has_set_func, has_get_level, has_set_level, has_get_parm, has_set_parm
    l << hex(0) << hex(0) << hex(LevelStrength) << hex(0) << hex(0) << hex(0);
    l << QStringLiteral("vfo_ops=0x0") << QStringLiteral("ptt_type=%1").arg(hex(PttRig))
      << QStringLiteral("targetable_vfo=0x0") << QStringLiteral("has_set_vfo=1") << QStringLiteral("has_get_vfo=1")
      << QStringLiteral("has_set_freq=1") << QStringLiteral("has_get_freq=1")
      << QStringLiteral("timeout=%1").arg(TimeoutMs) << QStringLiteral("rig_model=%1").arg(RigModel);
    l << QStringLiteral("done");
    return l;
}
