// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The front panel's decisions without a widget: key captions, what a key sends given what the
// indicators show, the Large/Small layouts and the memory number typed for "A > M".

#include "CatCommand.h"

#include <QString>
#include <optional>

namespace FrontPanel {

// Key(0..53): indices 11 and 33..47 do not exist; 48..53 belong to the band scope.
constexpr int KeyCount = 54;
constexpr int FirstScopeKey = 48;
constexpr int LastScopeKey = 53;
bool keyExists(int index);
bool isScopeKey(int index);
QString keyCaption(int index);  // empty for the band scope's keys and missing indices

namespace KeyIndex {
constexpr int Tuner = 0;
constexpr int Start = 1;
constexpr int ClarRx = 2;
constexpr int ClarTx = 3;
constexpr int FirstMode = 4;  // "&LSB"
constexpr int LastMode = 15;  // "PKT FM"
constexpr int CopyAtoB = 16;
constexpr int SwapAB = 17;
constexpr int AtoM = 18;
constexpr int MtoA = 19;
constexpr int Dual = 20;
constexpr int Split = 21;
constexpr int MemoryList = 22;
constexpr int VfoMemory = 23;
constexpr int Scope = 24;
constexpr int KeyPad = 25;
constexpr int Filters = 26;
constexpr int Edsp = 27;
constexpr int Notch = 28;
constexpr int Repeater = 29;
constexpr int DspNb = 30;
constexpr int Analyser = 31;
constexpr int Ptt = 32;
constexpr int GetCenter = 48;
constexpr int ScopeCancel = 53;
}  // namespace KeyIndex

// What the indicator labels show at the moment of a click.
struct Indicators {
    bool dual = false;           // Label1(0) "DUAL" shown
    bool split = false;          // Label1(3) "SPLIT" shown
    bool tuner = false;          // Label1(4) "TUNER" shown
    QString mode;                // Label1(1)
    bool repeaterShown = false;  // Label1(6)
    QString repeater;            // its caption: "  RPTR +" or "  RPTR -"
    bool clarRx = false;         // Label3(5) "RX" shown
    bool clarTx = false;         // Label3(7) "TX" shown
    bool txAuthorized = false;   // Setup > "Authorize Tx" checked
};

// The command a key sends by itself, deciding toggles from the indicators before the click (the clarifier
// keys flip their label first: the command follows the new state). lastParam is the last toggle
// parameter sent, kept for the repeater key when its caption is neither shift. Nothing for keys that
// send nothing here (windows, reads, the scope, PTT) or refuse (Start unauthorized, Rptr outside FM).
std::optional<CatCommand> keyCommand(int index, const Indicators& shown, int lastParam = 0);

// True for the keys whose parameter byte is kept as the last toggle parameter.
bool isToggleKey(int index);

inline const QString RepeaterPlus = QStringLiteral("  RPTR +");
inline const QString RepeaterMinus = QStringLiteral("  RPTR -");
inline const QString FmModeText = QStringLiteral("FM");

// "A > M": the number typed in the prompt, the way the prompt's text is read (empty reads as 0).
struct MemoryNumber {
    bool valid = false;
    int channel = 0;
};
MemoryNumber parseMemoryNumber(const QString& typed);
constexpr int FirstMemory = 1;
constexpr int LastWritableMemory = 108;

// The channel a key works on: the radio reports its current channel counting from 0.
int channelFromReply(int firstByte);

// The two layouts of the main window, widths in twips.
constexpr int LargeWidth = 10410;
constexpr int SmallWidth = 7035;
constexpr int LargeFrameWidth = 10205;
constexpr int SmallFrameWidth = 6810;
constexpr int HeightScopeHidden = 3990;
constexpr int HeightScopeShown = 7140;

struct Layout {
    bool small = false;
    int windowWidth = LargeWidth;  // twips
    int frameWidth = LargeFrameWidth;
    bool scopeKeyEnabled = true;
    QString menuCaption;  // the layout the next click gives
};
// At start: the stored width is kept; only exactly 7035 gives the Small arrangement.
Layout layoutAtStart(int storedWidth);
// The layout menu item: from anything but Large to Large, from Large to Small.
Layout switchLayout(int currentWidth);

inline const QString LargeCaption = QStringLiteral("Large");
inline const QString SmallCaption = QStringLiteral("Small");

}  // namespace FrontPanel
