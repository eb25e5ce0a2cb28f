#include "ZKArrayDebugLog.h"

void ZKArrayDebugLog::onIndexError(long long, long long, const char*) {}

void ZKArrayDebugLog::onEndIndexError(long long, long long, const char*) {}
