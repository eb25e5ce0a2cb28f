// ZKLog.h: the logging facade of the application.
//
// A static class. Only one channel writes anything: the user log, a text file
// to which whole lines are appended, each optionally stamped with the seconds
// since application start ("%.3fs: %s\n", else "%s\n"; numbers always with a
// "." decimal point, whatever locale the application set). The general message
// path (genericLog) composes its line and drops it; the window, file,
// beta-log and call-stack entry points exist so that applications built
// against the full interface link and run, and do nothing.
//
// Set-up: init() once at start, uninit() at the end. The settings (channels,
// user-log file and switch, time stamps, block depth) are plain statics: set
// them from one thread before worker threads start. userLog may then be
// called from any thread: each line is written whole under s_userLogCS, so
// lines of different threads never interleave.
#pragma once

#include "ZKBoolArray.h"
#include "ZKColor.h"
#include "ZKExport.h"
#include "ZKMutex.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

class ZKUTILS_EXPORT ZKLog {
public:
    ZKLog() = delete;

    // Number of channel flags after init.
    static constexpr int kChannelCount = 600;

    // Marks the log initialised, makes 600 channel flags all clear, enables
    // channel 0 and readies the user-log lock; a second call does nothing.
    // The argument is not used.
    static void init(bool unused = false);
    // Back to the start state (the channel array's memory is released); the
    // lock stays usable. Does nothing when not initialised.
    static void uninit();

    static void setAddTimeInLog(bool on) { m_addTimeInLog = on; }
    static bool getAddTimeInLog() { return m_addTimeInLog; }
    static void setLogWindowTitle(const ZKStringW& title) { m_logWindowTitle = title; }
    static ZKStringW getLogWindowTitle() { return m_logWindowTitle; }
    // Always empty: there is no general log file.
    static ZKStringW getLogFile() { return ZKStringW(); }

    // Sets or clears the channel's flag. A channel outside the array (every
    // channel before init) is ignored.
    static void enableChannel(int channel, bool on);
    // The channel's flag; false for a channel outside the array.
    static bool isChannelEnabled(int channel);
    static ZKBoolArray& getEnabledChannelArray() { return m_enabledChannels; }

    // Both deepen the block indentation by one level (two blanks each).
    // Kept: endBloc does not undo startBloc; it adds a level too, except
    // that a negative depth becomes 0.
    static void startBloc();
    static void endBloc();

    // Composes the line (with the "%.2fs: " stamp when time stamps are on)
    // and discards it: nothing is written anywhere.
    static void genericLog(int channel, int level, const ZKColor3ub& color, const ZKStringW& text);

    // The user log file: `name` joined to the application folder, or `name`
    // itself when `isFullPath`; `resetFile` empties the file now. Logging
    // stays off until enableUserLog(true).
    static void setUserLogFile(const ZKStringW& name, bool resetFile, bool isFullPath);
    static void enableUserLog(bool on) { m_UserLog_enabled = on; }
    // While the user log is on: appends one line, formatted with vsnprintf
    // into 4096 bytes (longer text is cut at 4095). A file that cannot be
    // opened drops the line silently.
    static void userLog(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 1, 2)))
#endif
        ;
    static void userLog(const ZKStringC& text);

    // Sets the flag and does nothing else.
    static void enableBetaLog(bool on) {
        m_BetaLog_enabled = on;
    }

    // Do nothing: this library has no log file, log window or beta log.
    static void setLogFile(const ZKStringW& path);
    static void enableLogInFile(bool on);
    static void setLogFile_BesideApp(const ZKStringW& name);
    // Kept empty: the facade never shows a window.
    static void showLogWindow(bool show);
    static void enableLogInWindow(bool on);
    static void setTopMostWindow(bool on);
    static void releaseOtherThreadBuffer();
    static void clear();
    static void setBetaLogFile(const ZKStringW& name, bool resetFile, bool isFullPath);
    static void betaLog(const char* format, ...);
    static void betaLog(const ZKStringC& text);
    static void logCallStack();
    // Always false.
    static bool isLogInFileEnabled() {
        return false;
    }
    static bool isLogWindowVisible() {
        return false;
    }
    static bool isLogInWindowEnabled() {
        return false;
    }

    // The state; read it freely, change it through the functions above.
    static bool m_initialized;
    static ZKBoolArray m_enabledChannels;
    static bool m_addTimeInLog;
    static bool m_UserLog_enabled;
    static ZKStringW m_UserLog_filepath;
    static bool m_BetaLog_enabled;
    static ZKStringW m_BetaLog_filepath;
    static ZKStringW m_logWindowTitle;
    // Reserved hook: cleared by uninit, never called.
    static void* m_logHandler;
    static int m_blocsDepth;
    // Two blanks per block level; no output of this library uses it.
    static ZKStringW m_marginOffsetString;
    static ZKMutex s_userLogCS;
    static bool s_userLogCSInitialized;
};

// The application's folder (ZKProcessServer::getCurrentAppFolder).
ZKUTILS_EXPORT ZKStringW getFolderBesideApp();
