#include "ZKProcessServer.h"

#include "ZKDisk.h"
#include "ZKNative.h"

#include <QByteArray>
#include <QFile>

namespace {

// The executable path is read into a buffer of 2047 bytes, its terminating
// zero included: a path of 2047 bytes or more does not fit and is not read.
constexpr int kExecutablePathBuffer = 2047;

} // namespace

ZKStringW ZKProcessServer::getCurrentProcessFileName() {
    static const ZKStringW cached = [] {
        QByteArray path = ZKNative::executablePath();
        if (path.size() >= kExecutablePathBuffer)
            path.clear();
        return ZKStringW(QString::fromLatin1(path));
    }();
    return cached;
}

ZKStringW ZKProcessServer::getCurrentProcessFolder() {
    ZKStringW folder;
    ZKDisk::getParentFolderFromFilename(folder, getCurrentProcessFileName(), false);
    return folder;
}

ZKStringW ZKProcessServer::getCurrentAppFolder() {
    return getAppFolderFromProcessFolder(getCurrentProcessFolder());
}

ZKStringW ZKProcessServer::getAppFolderFromProcessFolder(const ZKStringW& processFolder) {
    ZKStringW folder = processFolder;
    if (removeSuffix(folder, ZKStringW("/Contents/Frameworks")) ||
        removeSuffix(folder, ZKStringW("/Contents/MacOS")))
        return ZKDisk::cleanPath(ZKDisk::concatPathAndFileName(folder, ZKStringW("..")));
    return folder;
}

int ZKProcessServer::getCurrentProcessID() {
    return -1;
}

int ZKProcessServer::findProcessIDfromFileName(const ZKStringW& fileName, bool fullPath,
                                               ZKStringW* executable) {
    struct Search {
        QByteArray wanted;
        bool fullPath;
        unsigned int pid;
        QByteArray executable;
    } search{QFile::encodeName(fileName), fullPath, 0, QByteArray()};
    if (search.wanted.isEmpty())
        return -1;
    ZKNative::forEachRunningProcess(
        [](unsigned int pid, const QByteArray& exe, void* context) {
            Search& s = *static_cast<Search*>(context);
            const QByteArray candidate = s.fullPath ? exe : exe.mid(exe.lastIndexOf('/') + 1);
            if (candidate != s.wanted)
                return true;
            s.pid = pid;
            s.executable = exe;
            return false;
        },
        &search);
    if (search.pid == 0)
        return -1;
    if (executable)
        *executable = ZKStringW(QFile::decodeName(search.executable));
    return static_cast<int>(search.pid);
}

void ZKProcessServer::findAllRunningProcessIDs(ZKArray<int>&) {}

bool ZKProcessServer::sendTextMessageToProcess(int, const ZKStringC&) {
    return false;
}

bool ZKProcessServer::sendTextMessageToProcess(int, const ZKStringW&) {
    return false;
}

void ZKProcessServer::setProcessPathFromArgv0(const char*) {}

bool removeSuffix(ZKStringW& text, const ZKStringW& suffix) {
    if (!text.endsWith(suffix, true))
        return false;
    text.chop(suffix.size());
    return true;
}
