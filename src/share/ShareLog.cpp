#include "ShareLog.h"

Q_LOGGING_CATEGORY(lcShare, "share", QtWarningMsg)
