// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the page is told, as JSON text: the radio's state as the main window shows it, and what the
// session may do with it. Also the page's fixed keys (bands, modes, steps), so the page carries no
// copy of the program's tables.

#include "AccessCodes.h"
#include "RigState.h"

#include <QByteArray>
#include <QString>

// Beside the radio's state: the link, the transmit permission and the session's own standing.
struct PanelView {
    bool linkUp = false;
    bool txAuthorized = false;
    Access access = Access::None;
    bool holdsKey = false;  // this session's key is the one holding the transmitter
};

// The caption the main window shows for a mode code ("USB", "CW R"...); empty for no known code.
QString panelModeCaption(int modeCode);
// {"t":"state",...}
QByteArray panelStateJson(const RigState& state, const PanelView& view);
// {"t":"hello",...}: the band keys, the mode keys, the step keys and the key's repeat time.
QByteArray panelHelloJson();
