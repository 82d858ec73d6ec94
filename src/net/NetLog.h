// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Off by default; QT_LOGGING_RULES="net*=true" logs connections and every command line.
Q_DECLARE_LOGGING_CATEGORY(lcNet)
