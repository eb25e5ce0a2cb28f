#include "ZKReturnCodes.h"
#include "ZKStringServer.h"

ZKStringC ZKStringServer::retCodeAsString(int code) {
    static const char* const names[] = {
        "RC_OK",
        "RC_FAILED",
        "RC_BAD_INPUT",
        "RC_ABORTED",
        "RC_FILE_ACCESS_ERROR",
        "RC_FILE_CONTENT_ERROR",
        "RC_FILE_DO_NOT_EXIST",
    };
    // One unsigned comparison: every negative code is unknown too.
    if (unsigned(code) > unsigned(RC_FILE_DO_NOT_EXIST))
        return ZKStringC("UNKNOWN RET CODE");
    return ZKStringC(names[code]);
}
