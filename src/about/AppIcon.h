// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The program's icon, from the renderings embedded in the executable: windows show it even on a
// desktop whose icon theme does not hold it (or when the program runs from its build folder).

#include <QIcon>

QIcon appIcon();
