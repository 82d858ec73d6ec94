// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShareLog.h"

Q_LOGGING_CATEGORY(lcShare, "share", QtWarningMsg)
