#include "NetLog.h"

Q_LOGGING_CATEGORY(lcNet, "net", QtWarningMsg)
