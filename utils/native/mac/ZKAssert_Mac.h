// ZKAssert_Mac.h: the one assertion entry point of the library.
//
// showAssert reports a failed assertion as a Qt debug message and lets the
// program go on: no dialog, no debugger break, no abort. Messages listed in
// s_messagesToIgnore (compared without regard to ASCII case) are silenced;
// the library never adds to that list, the application fills it. s_inAssert
// is true only while a message is being emitted, so that an application's Qt
// message handler can tell an assertion from other debug output.
//
// Portable Qt code: it carries the platform only in its name. Not locked:
// s_messagesToIgnore must not change while another thread is in showAssert.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

#include <vector>

class ZKUTILS_EXPORT ZKAssert_Mac {
public:
    static std::vector<ZKStringC> s_messagesToIgnore;
    static bool s_inAssert;

    // `file` and `line` are accepted for the caller's convenience and not
    // used. `message` is Qt's format string with no arguments: pass plain
    // text ("%%" for a percent sign).
    static void showAssert(const char* message, const char* file, int line);
};
