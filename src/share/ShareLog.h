// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Off by default; QT_LOGGING_RULES="share*=true" logs the ports and every command a client sends.
Q_DECLARE_LOGGING_CATEGORY(lcShare)
