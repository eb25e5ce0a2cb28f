// ZKRandomServer.h: random text strings from the C library generator.
//
// A server class: static functions only. The generator is the C library's
// shared rand(), seeded once with the current time by init() or by the first
// buildRandomString. The seeding flag is not locked: call init() before
// threads start. Not for anything that needs secrecy.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

class ZKUTILS_EXPORT ZKRandomServer {
public:
    ZKRandomServer() = delete;

    // Seeds rand() with time(nullptr) on the first call; later calls do
    // nothing.
    static void init();

    // Replaces out with `length` characters drawn from the enabled classes:
    // lower-case letters, capitals, digits (rand() % count over the classes
    // in that order). A length of 0 gives an empty string. A negative length,
    // or a positive one with no class enabled, stops the program.
    static void buildRandomString(ZKStringC& out, int length, bool lower, bool upper, bool digits);
};
