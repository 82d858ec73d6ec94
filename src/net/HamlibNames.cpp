// SPDX-License-Identifier: GPL-3.0-or-later
#include "HamlibNames.h"

#include <array>

namespace {

struct ModeName {
    const char* name;
    int code;
};

// Names a client may send, each with the radio's mode code sent by instruction 0x0C.
constexpr std::array<ModeName, 10> ModeNames{{
    {"USB", ModeCode::Usb},
    {"LSB", ModeCode::Lsb},
    {"CW", ModeCode::Cw},
    {"CWR", ModeCode::CwR},
    {"AM", ModeCode::Am},
    {"FM", ModeCode::Fm},
    {"RTTY", ModeCode::Rtty},
    {"RTTYR", ModeCode::RttyR},
    {"PKTLSB", ModeCode::PktLsb},
    {"PKTFM", ModeCode::PktFm},
}};

namespace Passband {
constexpr int Ssb = 2400;
constexpr int Narrow = 500;
constexpr int Am = 6000;
constexpr int Fm = 8000;
}  // namespace Passband

}  // namespace

std::optional<int> modeCodeForName(const QString& name)
{
    for (const ModeName& m : ModeNames) {
        if (name == QLatin1String(m.name))
            return m.code;
    }
    return std::nullopt;
}

QString modeNameForCode(int code)
{
    if (code == ModeCode::AmSync)
        return QStringLiteral("AM");
    for (const ModeName& m : ModeNames) {
        if (m.code == code)
            return QLatin1String(m.name);
    }
    return {};
}

int defaultPassbandHz(int code)
{
    switch (code) {
        case ModeCode::Cw:
        case ModeCode::CwR:
        case ModeCode::Rtty:
        case ModeCode::RttyR:
            return Passband::Narrow;
        case ModeCode::Am:
        case ModeCode::AmSync:
            return Passband::Am;
        case ModeCode::Fm:
        case ModeCode::PktFm:
            return Passband::Fm;
        default:  // LSB, USB, PKT LSB
            return Passband::Ssb;
    }
}

QStringList modeNames()
{
    QStringList names;
    for (const ModeName& m : ModeNames)
        names.append(QLatin1String(m.name));
    return names;
}

std::optional<VfoToken> parseVfoToken(const QString& text)
{
    if (text == QLatin1String("VFOA") || text == QLatin1String("Main"))
        return VfoToken::A;
    if (text == QLatin1String("VFOB") || text == QLatin1String("Sub"))
        return VfoToken::B;
    if (text == QLatin1String("currVFO"))
        return VfoToken::Current;
    if (text == QLatin1String("TX"))
        return VfoToken::Tx;
    if (text == QLatin1String("RX"))
        return VfoToken::Rx;
    static const QStringList unusable{QStringLiteral("VFOC"),  QStringLiteral("MainA"), QStringLiteral("MainB"),
                                      QStringLiteral("MainC"), QStringLiteral("SubA"),  QStringLiteral("SubB"),
                                      QStringLiteral("SubC"),  QStringLiteral("MEM"),   QStringLiteral("None")};
    if (unusable.contains(text))
        return VfoToken::Unusable;
    return std::nullopt;
}
