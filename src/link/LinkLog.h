// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Off by default; QT_LOGGING_RULES="link*=true" puts every byte on the wire into a bug report.
Q_DECLARE_LOGGING_CATEGORY(lcLink)
Q_DECLARE_LOGGING_CATEGORY(lcTraffic)
