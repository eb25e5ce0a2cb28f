// ZKDisk: operations on single files.
#include "ZKDisk.h"
#include "ZKStringServer.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

// What QFileInfo::created() gave: the birth time, or the metadata change time
// where the file system keeps no birth time.
QDateTime creationTime(const QFileInfo& info) {
    const QDateTime birth = info.birthTime();
    return birth.isValid() ? birth : info.metadataChangeTime();
}

template <typename S> bool copyOverriding(const S& from, const S& to) {
    if (ZKDisk::fileExists(to))
        ZKDisk::deleteFile(to); // a failure shows in copyFile's result
    return ZKDisk::copyFile(from, to);
}

} // namespace

bool ZKDisk::fileExists(const ZKStringC& path) {
    return fileExists(ZKStringServer::fromNonUnicode(path));
}

bool ZKDisk::fileExists(const ZKStringW& path) {
    return QFile::exists(path);
}

bool ZKDisk::deleteFile(const ZKStringC& path) {
    return !path.isEmpty() && deleteFile(ZKStringW(QString::fromLatin1(path)));
}

bool ZKDisk::deleteFile(const ZKStringW& path) {
    return QFile::remove(path);
}

bool ZKDisk::renameFile(const ZKStringC& from, const ZKStringC& to) {
    // Kept: the byte form renames with the C library, which replaces an
    // existing target, where moveFile and the wide form refuse it.
    return std::rename(from.constData(), to.constData()) == 0;
}

bool ZKDisk::renameFile(const ZKStringW& from, const ZKStringW& to) {
    return QFile::rename(from, to);
}

bool ZKDisk::moveFile(const ZKStringC& from, const ZKStringC& to) {
    return moveFile(ZKStringServer::fromNonUnicode(from), ZKStringServer::fromNonUnicode(to));
}

bool ZKDisk::moveFile(const ZKStringW& from, const ZKStringW& to) {
    return QFile::rename(from, to);
}

bool ZKDisk::copyFile(const ZKStringC& from, const ZKStringC& to) {
    return copyFile(ZKStringW(QString::fromLatin1(from)), ZKStringW(QString::fromLatin1(to)));
}

bool ZKDisk::copyFile(const ZKStringW& from, const ZKStringW& to) {
    return QFile::copy(from, to);
}

bool ZKDisk::copyFile_override(const ZKStringC& from, const ZKStringC& to) {
    return copyOverriding(from, to);
}

bool ZKDisk::copyFile_override(const ZKStringW& from, const ZKStringW& to) {
    return copyOverriding(from, to);
}

bool ZKDisk::getFileDates(const ZKStringC& path, ZKDateTime* created, ZKDateTime* modified,
                          ZKDateTime* lastRead) {
    return getFileDates(ZKStringServer::fromNonUnicode(path), created, modified, lastRead);
}

bool ZKDisk::getFileDates(const ZKStringW& path, ZKDateTime* created, ZKDateTime* modified,
                          ZKDateTime* lastRead) {
    if (!fileExists(path))
        return false;
    const QFileInfo info(path);
    if (created)
        *created = creationTime(info);
    if (modified)
        *modified = info.lastModified();
    if (lastRead)
        *lastRead = info.lastRead();
    return true;
}

long long ZKDisk::getFileSize(const ZKStringC& path) {
    return getFileSize(ZKStringServer::fromNonUnicode(path));
}

long long ZKDisk::getFileSize(const ZKStringW& path) {
    return QFile(path).size();
}
