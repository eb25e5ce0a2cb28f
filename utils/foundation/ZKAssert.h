// ZKAssert.h: the application-wide assertion counter.
//
// ZKAssertClass::s_inZKAssertCount is a public counter of assertion handling
// in progress in the application. The library never reads or writes it; it
// is kept for the application's own assertion code. Not locked.
#pragma once

#include "ZKExport.h"

class ZKUTILS_EXPORT ZKAssertClass {
public:
    static int s_inZKAssertCount;
};
