// ZKSystemServer.h: what the application needs of the operating system.
//
// A server class of static functions, no state and no locks: environment
// variables, user, computer and temporary-folder names, the library's own file
// and folder, shell commands, opening files and launching applications,
// messages to other applications, scripts, the shared documents folder and a
// few memory queries. Everything runs synchronously on the calling thread and
// nothing is cached; any thread may call, within the limits of the
// process-wide facilities used (system(), the current folder).
//
// Failures are reported only by the results (false, 0, an empty string, the
// shell's status). Commands are handed to the shell as they are: paths and
// scripts are not escaped.
//
// On Linux: files open with xdg-open, applications are found through /proc
// and started with QProcess, a document is handed to an application by
// starting it with the document; there are no Apple events or AppleScript
// (those calls return false and run nothing), bringing a process to the
// front does nothing, and the shared folder is $HOME/Public.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

// A running application as the process calls address it, high half then
// low half; {0, 0} is no process. On Linux the low half is the pid. Passed
// to the calls below as an opaque pointer to these 8 bytes.
struct ZKProcessSerialNumber {
    unsigned int high = 0;
    unsigned int low = 0;
};

class ZKUTILS_EXPORT ZKSystemServer {
public:
    ZKSystemServer() = delete;

    // The variable's value in the process environment; empty when unset. The
    // byte name is read as Latin-1.
    static ZKStringW getEnvVar(const char* name);
    static ZKStringW getEnvVar(const ZKStringW& name);
    // $USER and $TMPDIR as the environment gives them (TMPDIR usually ends
    // with a slash); empty when unset.
    static ZKStringW getUserName();
    static ZKStringW getTempFolder();
    // The host name; empty when the system cannot tell.
    static ZKStringW getComputerName();
    // Qt's ideal thread count, at least 1.
    static int idealThreadCount();

    // The full path of this library's file as loaded (not the application's);
    // empty when the loader cannot tell.
    static ZKStringW getCurrentModuleFileName();
    // Its folder without trailing separator; empty when the name has none.
    static ZKStringW getCurrentModuleFolder();
    // The modification date of the library's file; all 0 and false when it
    // cannot be read.
    static bool getModuleModifiedDate(int& year, int& month, int& day);

    // system(command), or in the background (command + " &") when not
    // waiting: then the result only tells whether the shell started.
    static int systemCmd(const ZKStringC& command, bool wait = true);
    // The same with "command arguments" (just command when arguments is
    // empty). The last argument is not used.
    static int systemCmd(const ZKStringC& command, const ZKStringC& arguments, bool wait = true,
                         bool unused = false);
    // Opens the file in its default application, in the background, through
    // the shell; system()'s result.
    static int openFile(const ZKStringC& path);

    // Waiting: QProcess::execute's result (the exit code; -2 when the program
    // cannot be started, -1 when it crashed). Not waiting: the new process id,
    // 0 on failure; it starts in the current folder.
    static long long launchApplication(const ZKStringW& app, const ZKArray<ZKStringW>& args,
                                       bool wait = true);
    static long long launchApplication(const ZKStringC& app, const ZKArray<ZKStringC>& args,
                                       bool wait = true);
    // The command line is split at blanks outside quotes and each piece loses
    // its surrounding quotes. The wide form converts both texts to Latin-1
    // first.
    static long long launchApplication(const ZKStringC& app, const ZKStringC& commandLine,
                                       bool wait = true);
    static long long launchApplication(const ZKStringW& app, const ZKStringW& commandLine,
                                       bool wait = true);

    // Runs an AppleScript through osascript; Linux has none: false, nothing run.
    static bool runAppleScript(const ZKStringC& script);

    // `psn` (a ZKProcessSerialNumber) receives the first running process of
    // the application file `appPath`; when none runs it is set to no process
    // and, with `launch`, the application is started in the background and
    // `psn` receives it. False when `appPath` names no file, when nothing is
    // found and `launch` is false, or when the launch fails.
    static bool getRunningProcessSerialFromAppPath(void* psn, const ZKStringC& appPath,
                                                   bool launch);
    // Sends an "aevt" event with `text` as its direct object and brings the
    // process to the front. No Apple events on Linux: false.
    static bool sendAppleEventToProcess(const void* psn, unsigned int eventClass,
                                        unsigned int eventID, const ZKStringC& text);
    static bool sendAppleEventToApplication(const ZKStringC& appPath, unsigned int eventClass,
                                            unsigned int eventID, const ZKStringC& text,
                                            bool launch);
    // Finds (or, with `launch`, starts) the application and brings it to the
    // front; true when found or started. No key event is sent: the two
    // integers change nothing.
    static bool sendKeyEventToApplication(const ZKStringC& appPath, int key, int modifiers,
                                          bool launch);
    // Hands the file (converted to Latin-1) to the application, starting it
    // when needed; false when either path names no file or the application
    // cannot be given the file.
    static bool openFileInApplication(const ZKStringC& appPath, const ZKStringW& file);

    // The folder where users share documents ($HOME/Public on Linux).
    static ZKStringW getPublicDocumentsFolder();

    // Not measured: every value is 0.
    static void getGlobalMemoryInfo(unsigned long long& totalPhysical,
                                    unsigned long long& availablePhysical,
                                    unsigned long long& totalVirtual,
                                    unsigned long long& availableVirtual);
    static void getCurrentProcessMemoryUsage(unsigned long long& workingSet,
                                             unsigned long long& pagefile);
    static long long getCurrentProcessMemoryUsage();
    // Not measured: the arguments are left unchanged; the result is 0.
    static void getCurrentProcessPeakMemoryUsage(unsigned long long& workingSet,
                                                 unsigned long long& pagefile);
    static long long getCurrentProcessPeakMemoryUsage();
};

// The full path of this library's file, as bytes; `path` is left unchanged
// when the loader cannot tell.
ZKUTILS_EXPORT void getPathToDyLib(ZKStringC& path);
// The shared documents folder as constant text, valid for the whole run.
ZKUTILS_EXPORT const char* getSharedFolder();
