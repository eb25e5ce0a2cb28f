#include "ZKSystemServer.h"

#include "ZKDateTime.h"
#include "ZKDisk.h"
#include "ZKNative.h"
#include "ZKStringServer.h"

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QThread>

#include <cstdlib>
#include <cstring>

namespace {

ZKNative::ProcessSerial readSerial(const void* psn) {
    ZKNative::ProcessSerial serial;
    ZKProcessSerialNumber number;
    std::memcpy(&number, psn, sizeof number);
    serial.high = number.high;
    serial.low = number.low;
    return serial;
}

void writeSerial(void* psn, const ZKNative::ProcessSerial& serial) {
    ZKProcessSerialNumber number;
    number.high = serial.high;
    number.low = serial.low;
    std::memcpy(psn, &number, sizeof number);
}

int runShell(const ZKStringC& commandLine, bool wait) {
    if (wait)
        return std::system(commandLine.constData());
    return std::system((commandLine + " &").constData());
}

} // namespace

ZKStringW ZKSystemServer::getEnvVar(const char* name) {
    return getEnvVar(ZKStringW(QString::fromLatin1(name)));
}

ZKStringW ZKSystemServer::getEnvVar(const ZKStringW& name) {
    return ZKStringW(QProcessEnvironment::systemEnvironment().value(name));
}

ZKStringW ZKSystemServer::getUserName() {
    return getEnvVar("USER");
}

ZKStringW ZKSystemServer::getTempFolder() {
    return getEnvVar("TMPDIR");
}

ZKStringW ZKSystemServer::getComputerName() {
    return ZKStringW(QString::fromLatin1(ZKNative::hostName()));
}

int ZKSystemServer::idealThreadCount() {
    const int count = QThread::idealThreadCount();
    return count == -1 ? 1 : count;
}

ZKStringW ZKSystemServer::getCurrentModuleFileName() {
    ZKStringC path;
    getPathToDyLib(path);
    return ZKStringW(path);
}

ZKStringW ZKSystemServer::getCurrentModuleFolder() {
    ZKStringW folder;
    if (!ZKDisk::getParentFolderFromFilename(folder, getCurrentModuleFileName(), false))
        return ZKStringW();
    return folder;
}

bool ZKSystemServer::getModuleModifiedDate(int& year, int& month, int& day) {
    ZKDateTime created;
    ZKDateTime modified;
    if (!ZKDisk::getFileDates(getCurrentModuleFileName(), &created, &modified, nullptr)) {
        year = month = day = 0;
        return false;
    }
    year = modified.getYear();
    month = modified.getMonth();
    day = modified.getDay();
    return true;
}

int ZKSystemServer::systemCmd(const ZKStringC& command, bool wait) {
    return runShell(command, wait);
}

int ZKSystemServer::systemCmd(const ZKStringC& command, const ZKStringC& arguments, bool wait,
                              bool) {
    if (arguments.isEmpty())
        return runShell(command, wait);
    return runShell(command + " " + arguments, wait);
}

int ZKSystemServer::openFile(const ZKStringC& path) {
    ZKStringC command;
    command.printf(ZKNative::openFileCommandFormat(), path.constData());
    return std::system(command.constData());
}

long long ZKSystemServer::launchApplication(const ZKStringW& app, const ZKArray<ZKStringW>& args,
                                            bool wait) {
    QStringList list;
    list.reserve(int(args.size()));
    for (const ZKStringW& arg : args)
        list.append(arg);
    if (wait)
        return static_cast<long long>(QProcess::execute(app, list));
    qint64 pid = 0;
    if (!QProcess::startDetached(app, list, ZKDisk::getCurrentPathW(), &pid))
        return 0;
    return pid;
}

long long ZKSystemServer::launchApplication(const ZKStringC& app, const ZKArray<ZKStringC>& args,
                                            bool wait) {
    ZKArray<ZKStringW> wide;
    ZKStringServer::toUnicode(wide, args);
    return launchApplication(ZKStringServer::fromNonUnicode(app), wide, wait);
}

long long ZKSystemServer::launchApplication(const ZKStringC& app, const ZKStringC& commandLine,
                                            bool wait) {
    ZKArray<ZKStringC> args;
    ZKStringServer::splitCmdLineArgs(args, commandLine);
    for (ZKStringC& arg : args)
        ZKStringServer::removeSurroundingQuotes(arg, false, true, true);
    return launchApplication(app, args, wait);
}

long long ZKSystemServer::launchApplication(const ZKStringW& app, const ZKStringW& commandLine,
                                            bool wait) {
    return launchApplication(ZKStringServer::toAscii(app), ZKStringServer::toAscii(commandLine),
                             wait);
}

bool ZKSystemServer::runAppleScript(const ZKStringC& script) {
    return ZKNative::runScript(script);
}

bool ZKSystemServer::getRunningProcessSerialFromAppPath(void* psn, const ZKStringC& appPath,
                                                        bool launch) {
    if (!psn)
        return false;
    QString app;
    if (!ZKNative::fileReference(appPath, app))
        return false;
    ZKNative::ProcessSerial serial;
    const bool found = ZKNative::findRunningProcess(app, serial);
    writeSerial(psn, found ? serial : ZKNative::ProcessSerial());
    if (found)
        return true;
    if (!launch)
        return false;
    const bool launched = ZKNative::launchApplication(app, serial);
    writeSerial(psn, serial);
    return launched;
}

bool ZKSystemServer::sendAppleEventToProcess(const void* psn, unsigned int eventClass,
                                             unsigned int eventID, const ZKStringC& text) {
    // Kept: eventClass is ignored; every event goes out with the class "aevt".
    (void)eventClass;
    if (!psn)
        return false;
    const ZKNative::ProcessSerial serial = readSerial(psn);
    if (!ZKNative::sendEventToProcess(serial, eventID, text))
        return false;
    ZKNative::bringToFront(serial);
    return true;
}

bool ZKSystemServer::sendAppleEventToApplication(const ZKStringC& appPath, unsigned int eventClass,
                                                 unsigned int eventID, const ZKStringC& text,
                                                 bool launch) {
    ZKProcessSerialNumber psn;
    if (!getRunningProcessSerialFromAppPath(&psn, appPath, launch))
        return false;
    return sendAppleEventToProcess(&psn, eventClass, eventID, text);
}

bool ZKSystemServer::sendKeyEventToApplication(const ZKStringC& appPath, int, int, bool launch) {
    ZKProcessSerialNumber psn;
    if (!getRunningProcessSerialFromAppPath(&psn, appPath, launch))
        return false;
    // Kept: no key event is sent; the application is only brought forward.
    ZKNative::bringToFront(readSerial(&psn));
    return true;
}

bool ZKSystemServer::openFileInApplication(const ZKStringC& appPath, const ZKStringW& file) {
    const ZKStringC filePath = ZKStringServer::toAscii(file);
    QString app;
    QString document;
    if (!ZKNative::fileReference(appPath, app) || !ZKNative::fileReference(filePath, document))
        return false;
    return ZKNative::openDocument(app, document);
}

ZKStringW ZKSystemServer::getPublicDocumentsFolder() {
    return ZKStringServer::fromNonUnicode(ZKNative::sharedFolder());
}

void ZKSystemServer::getGlobalMemoryInfo(unsigned long long& totalPhysical,
                                         unsigned long long& availablePhysical,
                                         unsigned long long& totalVirtual,
                                         unsigned long long& availableVirtual) {
    totalPhysical = availablePhysical = totalVirtual = availableVirtual = 0;
}

void ZKSystemServer::getCurrentProcessMemoryUsage(unsigned long long& workingSet,
                                                  unsigned long long& pagefile) {
    workingSet = pagefile = 0;
}

long long ZKSystemServer::getCurrentProcessMemoryUsage() {
    return 0;
}

void ZKSystemServer::getCurrentProcessPeakMemoryUsage(unsigned long long&, unsigned long long&) {}

long long ZKSystemServer::getCurrentProcessPeakMemoryUsage() {
    return 0;
}

void getPathToDyLib(ZKStringC& path) {
    QByteArray name;
    if (ZKNative::moduleFileNameOfAddress(reinterpret_cast<const void*>(&getPathToDyLib), name))
        path = ZKStringC(name);
}

const char* getSharedFolder() {
    return ZKNative::sharedFolder();
}
