// SPDX-License-Identifier: GPL-3.0-or-later
#include "ScopeLog.h"

Q_LOGGING_CATEGORY(lcScope, "scope", QtWarningMsg)
