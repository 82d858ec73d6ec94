// SPDX-License-Identifier: GPL-3.0-or-later
#include "ModeKeys.h"

const char* ModeKeys::caption(int index)
{
    switch (index) {
        case 1:
            return "U/LSB";
        case 2:
            return "CW";
        case 4:
            return "AM";
        case 6:
            return "FM";
        default:
            return "";
    }
}

int ModeKeys::modeCode(int index, bool leftButton)
{
    switch (index) {
        case 1:
            return leftButton ? 1 : 0;  // USB / LSB
        case 2:
            return leftButton ? 2 : 3;  // CW / reverse CW
        case 4:
            return leftButton ? 4 : 5;  // AM / synchronous AM
        case 6:
            return 6;  // FM either way
        default:
            return -1;
    }
}
