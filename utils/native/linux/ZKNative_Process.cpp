// Process and system services on Linux: /proc for the executable and the
// running processes, dladdr for the library's own file, QProcess to launch
// programs. There are no Apple events or AppleScript here: those calls fail
// without running anything.
#include "ZKNative.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

namespace {

// readlink of a /proc link; empty when it cannot be read (a zombie, a
// process of another user).
QByteArray readLink(const QByteArray& link) {
    char buffer[PATH_MAX];
    const ssize_t n = readlink(link.constData(), buffer, sizeof buffer);
    if (n <= 0 || size_t(n) >= sizeof buffer)
        return QByteArray();
    return QByteArray(buffer, int(n));
}

// The pids in /proc, in increasing order, so that the search is
// deterministic: the oldest matching process is found first.
std::vector<unsigned int> runningProcessIds() {
    std::vector<unsigned int> pids;
    const QStringList names =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        bool ok = false;
        const unsigned int pid = name.toUInt(&ok);
        if (ok && pid != 0)
            pids.push_back(pid);
    }
    std::sort(pids.begin(), pids.end());
    return pids;
}

} // namespace

QByteArray ZKNative::executablePath() {
    return readLink("/proc/self/exe");
}

bool ZKNative::moduleFileNameOfAddress(const void* address, QByteArray& fileName) {
    Dl_info info;
    if (dladdr(address, &info) == 0 || !info.dli_fname)
        return false;
    fileName = QByteArray(info.dli_fname);
    return true;
}

QByteArray ZKNative::hostName() {
    char buffer[512];
    if (gethostname(buffer, sizeof buffer) != 0)
        return QByteArray();
    buffer[sizeof buffer - 1] = '\0';
    return QByteArray(buffer);
}

bool ZKNative::fileReference(const QByteArray& path, QString& reference) {
    if (path.isEmpty())
        return false;
    const QString canonical = QFileInfo(QFile::decodeName(path)).canonicalFilePath();
    if (canonical.isEmpty())
        return false;
    reference = canonical;
    return true;
}

void ZKNative::forEachRunningProcess(bool (*visit)(unsigned int pid, const QByteArray& executable,
                                                   void* context),
                                     void* context) {
    for (unsigned int pid : runningProcessIds()) {
        const QByteArray exe = readLink("/proc/" + QByteArray::number(pid) + "/exe");
        if (!exe.isEmpty() && !visit(pid, exe, context))
            return;
    }
}

bool ZKNative::findRunningProcess(const QString& appReference, ProcessSerial& process) {
    struct Search {
        QByteArray wanted;
        unsigned int pid;
    } search{QFile::encodeName(appReference), 0};
    forEachRunningProcess(
        [](unsigned int pid, const QByteArray& exe, void* context) {
            Search& s = *static_cast<Search*>(context);
            if (exe != s.wanted)
                return true;
            s.pid = pid;
            return false;
        },
        &search);
    process = ProcessSerial();
    process.low = search.pid;
    return search.pid != 0;
}

bool ZKNative::launchApplication(const QString& appReference, ProcessSerial& process) {
    process = ProcessSerial();
    qint64 pid = 0;
    if (!QProcess::startDetached(appReference, QStringList(), QString(), &pid) || pid <= 0)
        return false;
    process.low = static_cast<unsigned int>(pid);
    return true;
}

bool ZKNative::openDocument(const QString& appReference, const QString& documentReference) {
    // A running instance gets the document the same way: programs that keep
    // one instance forward what a second start is given.
    qint64 pid = 0;
    return QProcess::startDetached(appReference, QStringList{documentReference}, QString(), &pid) &&
           pid > 0;
}

bool ZKNative::sendEventToProcess(const ProcessSerial&, unsigned int, const QByteArray&) {
    return false;
}

void ZKNative::bringToFront(const ProcessSerial&) {}

const char* ZKNative::openFileCommandFormat() {
    return "xdg-open '%s' &";
}

bool ZKNative::runScript(const QByteArray&) {
    return false;
}

const char* ZKNative::sharedFolder() {
    // Computed once: callers keep the pointer.
    static const std::string folder = [] {
        QByteArray home = qgetenv("HOME");
        while (home.size() > 1 && home.endsWith('/'))
            home.chop(1);
        if (home == "/")
            home.clear();
        return (home + "/Public").toStdString();
    }();
    return folder.c_str();
}
