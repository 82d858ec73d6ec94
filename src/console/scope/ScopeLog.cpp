#include "ScopeLog.h"

Q_LOGGING_CATEGORY(lcScope, "scope", QtWarningMsg)
