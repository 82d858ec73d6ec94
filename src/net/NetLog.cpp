// SPDX-License-Identifier: GPL-3.0-or-later
#include "NetLog.h"

Q_LOGGING_CATEGORY(lcNet, "net", QtWarningMsg)
