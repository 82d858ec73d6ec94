// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QLoggingCategory>

// Failed logins and refused handshakes are warnings, so they are logged by default;
// QT_LOGGING_RULES="web*=true" logs every connection and message too.
Q_DECLARE_LOGGING_CATEGORY(lcWeb)
