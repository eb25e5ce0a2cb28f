// ZKProcessServer.h: the running program's file and folders.
//
// A server class of static functions. The executable path is read once and
// cached for the whole run (the cache is filled thread-safely on first use);
// everything else is computed at each call. The process-id and messaging
// entry points of the interface do nothing, as noted on each.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

class ZKUTILS_EXPORT ZKProcessServer {
public:
    ZKProcessServer() = delete;

    // Full path of the running executable, cached on first use; the system's
    // bytes are read as Latin-1. Empty when the system cannot tell or the path
    // has 2047 bytes or more (it is read into a buffer of 2047 bytes).
    static ZKStringW getCurrentProcessFileName();
    // The folder of that path without trailing separator.
    static ZKStringW getCurrentProcessFolder();
    // The folder the application lives in: for an executable inside an
    // application bundle (".../Name.app/Contents/MacOS" or
    // ".../Contents/Frameworks"), the folder that holds the bundle; otherwise
    // the process folder.
    static ZKStringW getCurrentAppFolder();
    // The rule of getCurrentAppFolder applied to a given process folder.
    static ZKStringW getAppFolderFromProcessFolder(const ZKStringW& processFolder);

    // Kept: always -1; callers treat the process id as unknown.
    static int getCurrentProcessID();
    // The pid of the first running process (lowest pid) whose executable is
    // `fileName`: the full path when `fullPath` is true, else the file name
    // alone (case-sensitive). -1 when none; `executable` (if not null)
    // receives the found process's full path.
    static int findProcessIDfromFileName(const ZKStringW& fileName, bool fullPath,
                                         ZKStringW* executable = nullptr);
    // Kept empty: `ids` is left as it is.
    static void findAllRunningProcessIDs(ZKArray<int>& ids);
    // Kept: no message is sent; always false.
    static bool sendTextMessageToProcess(int processID, const ZKStringC& text);
    static bool sendTextMessageToProcess(int processID, const ZKStringW& text);
    // Kept empty: the executable path comes from the system.
    static void setProcessPathFromArgv0(const char* argv0);
};

// If `text` ends with `suffix` (case-sensitive), cuts it off and returns true;
// otherwise leaves `text` unchanged and returns false.
ZKUTILS_EXPORT bool removeSuffix(ZKStringW& text, const ZKStringW& suffix);
