// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkLog.h"

Q_LOGGING_CATEGORY(lcLink, "link", QtWarningMsg)
Q_LOGGING_CATEGORY(lcTraffic, "link.traffic", QtWarningMsg)
