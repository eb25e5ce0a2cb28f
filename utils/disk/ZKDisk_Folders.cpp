// ZKDisk: operations on folders and on the current folder.
#include "ZKDisk.h"
#include "ZKStringServer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool ZKDisk::folderExists(const ZKStringC& path) {
    return folderExists(ZKStringServer::fromNonUnicode(path));
}

bool ZKDisk::folderExists(const ZKStringW& path) {
    return QDir(path).exists();
}

bool ZKDisk::deleteMultipleFiles(const ZKStringC& folder, const ZKStringC& pattern) {
    return deleteMultipleFiles(ZKStringServer::fromNonUnicode(folder),
                               ZKStringServer::fromNonUnicode(pattern));
}

bool ZKDisk::deleteMultipleFiles(const ZKStringW& folder, const ZKStringW& pattern) {
    if (pattern.isEmpty())
        return false;
    // Qt's defaults for this constructor: by name ignoring case, all entries.
    const QDir dir(folder, pattern);
    for (const QFileInfo& entry : dir.entryInfoList())
        QFile::remove(entry.absoluteFilePath()); // failures are skipped
    return true;
}

bool ZKDisk::deleteFolder(const ZKStringC& folder) {
    // Kept: only the byte form refuses the empty path; the wide form reports
    // it missing, hence deleted.
    return !folder.isEmpty() && deleteFolder(ZKStringServer::fromNonUnicode(folder));
}

bool ZKDisk::deleteFolder(const ZKStringW& folder) {
    // Kept: the existence test looks for the folder's path inside the folder
    // itself, so a relative path is normally reported missing (true).
    const QDir dir(folder);
    if (!dir.exists(folder))
        return true;
    const QFileInfoList entries = dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::System |
                                                        QDir::AllDirs | QDir::NoDotAndDotDot,
                                                    QDir::DirsFirst);
    for (const QFileInfo& entry : entries) {
        // A link to a folder is removed as a link: deleting never reaches
        // outside the tree.
        const bool removed = entry.isDir() && !entry.isSymLink()
                                 ? deleteFolder(ZKStringW(entry.absoluteFilePath()))
                                 : QFile::remove(entry.absoluteFilePath());
        if (!removed)
            return false;
    }
    return dir.rmdir(dir.absolutePath());
}

bool ZKDisk::createFolder(const ZKStringC& path) {
    return createFolder(ZKStringW(QString::fromLatin1(path)));
}

bool ZKDisk::createFolder(const ZKStringW& path) {
    return QDir().mkdir(path);
}

bool ZKDisk::createPath(const ZKStringC& path) {
    return createPath(ZKStringW(QString::fromLatin1(path)));
}

bool ZKDisk::createPath(const ZKStringW& path) {
    return QDir().mkpath(path);
}

ZKStringC ZKDisk::getCurrentPath() {
    return ZKStringServer::toAscii(getCurrentPathW());
}

ZKStringW ZKDisk::getCurrentPathW() {
    return QDir::currentPath();
}

bool ZKDisk::setCurrentPath(const ZKStringC& path) {
    return setCurrentPath(ZKStringW(QString::fromLatin1(path)));
}

bool ZKDisk::setCurrentPath(const ZKStringW& path) {
    return QDir::setCurrent(path);
}
