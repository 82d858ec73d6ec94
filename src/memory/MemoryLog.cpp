// SPDX-License-Identifier: GPL-3.0-or-later
#include "MemoryLog.h"

Q_LOGGING_CATEGORY(lcMemory, "memory", QtWarningMsg)
