// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebLog.h"

Q_LOGGING_CATEGORY(lcWeb, "web", QtWarningMsg)
