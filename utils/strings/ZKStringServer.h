// ZKStringServer.h: static string utilities for ZKStringC and ZKStringW.
//
// A server class: static functions only, no state of its own beyond the
// vector formatting setting. Each operation exists for both string kinds
// where it makes sense; the algorithm is written once and both overloads
// call it.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

class ZKUTILS_EXPORT ZKStringServer {
public:
    ZKStringServer() = delete;

    // The name of a return code ("RC_OK" ... "RC_FILE_DO_NOT_EXIST"), or
    // "UNKNOWN RET CODE" for any other value, negative ones included.
    static ZKStringC retCodeAsString(int code);
};
