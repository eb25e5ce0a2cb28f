// ZKReturnCodes.h: the return codes shared by every subsystem.
//
// Operations with several reasons to fail return one of these plain ints;
// one-step operations return bool instead. The values are stored and
// compared as numbers, so they never change. ZKStringServer::retCodeAsString
// turns a code into its name.
#pragma once

enum : int {
    RC_OK = 0,
    RC_FAILED = 1,
    RC_BAD_INPUT = 2,
    RC_ABORTED = 3,
    RC_FILE_ACCESS_ERROR = 4,
    RC_FILE_CONTENT_ERROR = 5,
    // Spelled so on purpose: it is also the text the code is turned into.
    RC_FILE_DO_NOT_EXIST = 6,
};
