// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Off by default; QT_LOGGING_RULES="scope=true" traces sweeps and recordings.
Q_DECLARE_LOGGING_CATEGORY(lcScope)
