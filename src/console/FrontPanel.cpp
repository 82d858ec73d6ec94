// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrontPanel.h"

#include "SettingsStore.h"

#include <array>
#include <cmath>

namespace FrontPanel {

namespace {
constexpr std::array<const char*, 33> Captions = {
    "Tuner",  "Start",   "Clar Rx", "Clar Tx", "&LSB",    "&USB",  "&CW",    "CW-R",  "&AM",    "AM-E",  "&FM",
    "",       "&RTTY-N", "RTTY-R",  "&PKT LS", "PKT FM",  "A > B", "A <> B", "A > M", "M > A",  "&Dual", "&Split",
    "M-List", "VFO/M",   "Scop&e",  "&K-Pad",  "Filters", "EDSP",  "Notch",  "Rptr",  "DSP-NB", "- - -", "PTT"};

constexpr int ShiftNone = 0, ShiftPlus = 1, ShiftMinus = 2;

CatCommand toggle(int op, bool on)
{
    return CatCommand::make(op, on ? 1 : 0);
}
}  // namespace

bool keyExists(int index)
{
    return (index >= 0 && index <= KeyIndex::Ptt && index != 11) || isScopeKey(index);
}

bool isScopeKey(int index)
{
    return index >= FirstScopeKey && index <= LastScopeKey;
}

QString keyCaption(int index)
{
    if (index < 0 || index > KeyIndex::Ptt)
        return {};
    return QString::fromLatin1(Captions[static_cast<size_t>(index)]);
}

bool isToggleKey(int index)
{
    using namespace KeyIndex;
    return index == Tuner || index == ClarRx || index == ClarTx || index == Dual || index == Split || index == Repeater;
}

std::optional<CatCommand> keyCommand(int index, const Indicators& shown, int lastParam)
{
    using namespace KeyIndex;
    if (index >= FirstMode && index <= LastMode && index != 11)
        return CatCommand::make(Op::SetMode, index - FirstMode);
    switch (index) {
        case Tuner:
            return toggle(Op::Tuner, !shown.tuner);
        case Start:
            if (!shown.txAuthorized)
                return std::nullopt;
            return CatCommand::make(Op::TunerStart, 0);
        case ClarRx:
            return CatCommand::make(Op::Clarifier, !shown.clarRx ? ClarifierParam::RxOn : ClarifierParam::RxOff);
        case ClarTx:
            return CatCommand::make(Op::Clarifier, !shown.clarTx ? ClarifierParam::TxOn : ClarifierParam::TxOff);
        case CopyAtoB:
            return CatCommand::make(Op::CopyAtoB, 0);
        case SwapAB:
            return CatCommand::make(Op::VfoSelect, 1);
        case Dual:
            return toggle(Op::Dual, !shown.dual);
        case Split:
            return toggle(Op::Split, !shown.split);
        case Repeater: {
            if (shown.mode != FmModeText)
                return std::nullopt;
            int p = lastParam;
            if (!shown.repeaterShown)
                p = ShiftPlus;
            else if (shown.repeater == RepeaterMinus)
                p = ShiftMinus;
            else if (shown.repeater == RepeaterPlus)
                p = ShiftNone;
            return CatCommand::make(Op::RepeaterShift, p);
        }
        default:
            return std::nullopt;
    }
}

MemoryNumber parseMemoryNumber(const QString& typed)
{
    const double v = leadingNumber(typed, 0.0);
    MemoryNumber n;
    if (v < FirstMemory || v > LastWritableMemory)
        return n;
    n.valid = true;
    n.channel = static_cast<int>(std::lround(v));
    return n;
}

int channelFromReply(int firstByte)
{
    return firstByte + 1;
}

Layout layoutAtStart(int storedWidth)
{
    Layout l;
    l.windowWidth = storedWidth;
    l.small = storedWidth == SmallWidth;
    l.frameWidth = l.small ? SmallFrameWidth : LargeFrameWidth;
    l.scopeKeyEnabled = !l.small;
    l.menuCaption = l.small ? LargeCaption : SmallCaption;
    return l;
}

Layout switchLayout(int currentWidth)
{
    Layout l;
    if (currentWidth != LargeWidth) {
        l.small = false;
        l.windowWidth = LargeWidth;
        l.frameWidth = LargeFrameWidth;
        l.scopeKeyEnabled = true;
        l.menuCaption = SmallCaption;
    } else {
        l.small = true;
        l.windowWidth = SmallWidth;
        l.frameWidth = SmallFrameWidth;
        l.scopeKeyEnabled = false;
        l.menuCaption = LargeCaption;
    }
    return l;
}

}  // namespace FrontPanel
