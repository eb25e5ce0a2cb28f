// ZKArrayDebugLog.h: the index-error hooks of the array templates.
//
// A debug build of an application may route out-of-range indices here; the
// library's own hooks do nothing (the arrays never check their indices), so
// calling them is free. Any thread may call them.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKArrayDebugLog {
public:
    ZKArrayDebugLog() = delete;

    // An index outside [0, size): does nothing.
    static void onIndexError(long long index, long long size, const char* where);
    // An end index beyond size: does nothing.
    static void onEndIndexError(long long index, long long size, const char* where);
};
