#include "MemoryLog.h"

Q_LOGGING_CATEGORY(lcMemory, "memory", QtWarningMsg)
