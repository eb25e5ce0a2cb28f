#include "ZKAssert.h"

int ZKAssertClass::s_inZKAssertCount = 0;
