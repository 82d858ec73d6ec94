// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Off by default; QT_LOGGING_RULES="memory=true" traces read-outs, files and uploads.
Q_DECLARE_LOGGING_CATEGORY(lcMemory)
