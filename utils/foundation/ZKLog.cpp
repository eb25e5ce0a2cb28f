#include "ZKLog.h"

#include "ZKDisk.h"
#include "ZKProcessServer.h"
#include "ZKTimeServer.h"
#include "internal/ZKFormat.h"

#include <cstdarg>
#include <cstdio>

namespace {

const char* const kDefaultWindowTitle = "ZKLogWindow";

ZKStringW marginFor(int depth) {
    return ZKStringW(QString(2 * depth, QLatin1Char(' ')));
}

} // namespace

bool ZKLog::m_initialized = false;
ZKBoolArray ZKLog::m_enabledChannels;
bool ZKLog::m_addTimeInLog = true;
bool ZKLog::m_UserLog_enabled = false;
ZKStringW ZKLog::m_UserLog_filepath;
bool ZKLog::m_BetaLog_enabled = false;
ZKStringW ZKLog::m_BetaLog_filepath;
ZKStringW ZKLog::m_logWindowTitle = ZKStringW(QLatin1String(kDefaultWindowTitle));
void* ZKLog::m_logHandler = nullptr;
int ZKLog::m_blocsDepth = 0;
ZKStringW ZKLog::m_marginOffsetString;
ZKMutex ZKLog::s_userLogCS;
bool ZKLog::s_userLogCSInitialized = false;

void ZKLog::init(bool) {
    if (m_initialized)
        return;
    m_initialized = true;
    if (m_enabledChannels.size() != kChannelCount) {
        m_enabledChannels.releaseMemory();
        m_enabledChannels.resize(kChannelCount, false);
    } else {
        m_enabledChannels.clearAll();
    }
    enableChannel(0, true);
    // The lock is a ZKMutex constructed with the library, usable at once;
    // this only notes that the log has been set up.
    s_userLogCSInitialized = true;
}

void ZKLog::uninit() {
    if (!m_initialized)
        return;
    m_initialized = false;
    m_enabledChannels.releaseMemory();
    m_BetaLog_enabled = false;
    m_BetaLog_filepath.clear();
    m_UserLog_enabled = false;
    m_UserLog_filepath.clear();
    m_logWindowTitle = ZKStringW(QLatin1String(kDefaultWindowTitle));
    m_addTimeInLog = true;
    m_logHandler = nullptr;
    m_blocsDepth = 0;
    m_marginOffsetString.clear();
}

void ZKLog::enableChannel(int channel, bool on) {
    if (channel < 0 || channel >= m_enabledChannels.size())
        return;
    if (on)
        m_enabledChannels.set(channel, 1);
    else
        m_enabledChannels.clear(channel, 1);
}

bool ZKLog::isChannelEnabled(int channel) {
    return channel >= 0 && channel < m_enabledChannels.size() && m_enabledChannels.get(channel);
}

void ZKLog::startBloc() {
    ++m_blocsDepth;
    m_marginOffsetString = marginFor(m_blocsDepth);
}

void ZKLog::endBloc() {
    // Kept on purpose: ending a block deepens the indentation too (a negative
    // depth restarts from 0); applications were written against it.
    if (m_blocsDepth >= 0)
        ++m_blocsDepth;
    else
        m_blocsDepth = 0;
    m_marginOffsetString = marginFor(m_blocsDepth);
}

void ZKLog::genericLog(int, int, const ZKColor3ub&, const ZKStringW& text) {
    ZKStringW line;
    if (m_addTimeInLog)
        line = ZKStringW(QString::asprintf("%.2fs: ", ZKTimeServer::getAppTimeInS()) + text);
    else
        line = text;
    // Kept: the composed line is dropped; channel, level and colour are not
    // consulted and nothing is written.
    (void)line;
}

void ZKLog::setUserLogFile(const ZKStringW& name, bool resetFile, bool isFullPath) {
    if (isFullPath)
        m_UserLog_filepath = name;
    else
        m_UserLog_filepath =
            ZKDisk::concatPathAndFileName(ZKProcessServer::getCurrentAppFolder(), name);
    if (resetFile) {
        // Opening with "w" empties the file; a failure is ignored.
        if (FILE* file = fopenUtf8(m_UserLog_filepath, "w"))
            std::fclose(file);
    }
}

void ZKLog::userLog(const char* format, ...) {
    if (!m_UserLog_enabled || !format)
        return;
    va_list args;
    va_start(args, format);
    const ZKStringC text(ZKInternal::vformat4096(format, args));
    va_end(args);
    userLog(text);
}

void ZKLog::userLog(const ZKStringC& text) {
    if (!m_UserLog_enabled)
        return;
    s_userLogCS.lock();
    if (FILE* file = fopenUtf8(m_UserLog_filepath, "a")) {
        // The stamp reads "12.345s" whatever locale the application set.
        ZKInternal::CLocaleScope cLocale;
        if (m_addTimeInLog)
            std::fprintf(file, "%.3fs: %s\n", ZKTimeServer::getAppTimeInS(), text.constData());
        else
            std::fprintf(file, "%s\n", text.constData());
        std::fflush(file);
        std::fclose(file);
    }
    s_userLogCS.unlock();
}

void ZKLog::setLogFile(const ZKStringW&) {}
void ZKLog::enableLogInFile(bool) {}
void ZKLog::setLogFile_BesideApp(const ZKStringW&) {}
void ZKLog::showLogWindow(bool) {}
void ZKLog::enableLogInWindow(bool) {}
void ZKLog::setTopMostWindow(bool) {}
void ZKLog::releaseOtherThreadBuffer() {}
void ZKLog::clear() {}
void ZKLog::setBetaLogFile(const ZKStringW&, bool, bool) {}
void ZKLog::betaLog(const char*, ...) {}
void ZKLog::betaLog(const ZKStringC&) {}
void ZKLog::logCallStack() {}

ZKStringW getFolderBesideApp() {
    return ZKProcessServer::getCurrentAppFolder();
}
