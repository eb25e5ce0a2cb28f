// ZKFileSystemWatcher.h: a set of watched files and folders.
//
// The watcher owns one QFileSystemWatcher. directoryChanged and fileChanged
// are hooks for subclasses, but nothing connects them to change
// notifications: the library never calls them.
//
// Kept: removePath adds its path (it is watched afterwards, not dropped); only
// removeAllPaths stops watching, and it stops watching everything.
//
// Ownership: not copyable. Threads: use a watcher from the thread that made it.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringW.h"

class QFileSystemWatcher;

class ZKUTILS_EXPORT ZKFileSystemWatcher {
public:
    ZKFileSystemWatcher();
    ZKFileSystemWatcher(const ZKFileSystemWatcher&) = delete;
    ZKFileSystemWatcher& operator=(const ZKFileSystemWatcher&) = delete;

    // Do nothing; never called by the library.
    virtual void directoryChanged(const ZKStringW& path);
    virtual void fileChanged(const ZKStringW& path);

    virtual ~ZKFileSystemWatcher();

    // Watches an existing file or folder (Qt warns about a missing one).
    void addPath(const ZKStringW& path);
    // Kept: adds `path`, exactly as addPath does.
    void removePath(const ZKStringW& path);
    // Stops watching every path: the Qt watcher is replaced by a fresh one.
    void removeAllPaths();

    // The watched files, then the watched folders.
    ZKArray<ZKStringW> getWatchedPaths() const;

private:
    QFileSystemWatcher* m_watcher;
};
