#include "ZKFileSystemWatcher.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileSystemWatcher>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

bool watches(const ZKFileSystemWatcher& w, const QString& path) {
    const ZKArray<ZKStringW> paths = w.getWatchedPaths();
    return std::find(paths.begin(), paths.end(), ZKStringW(path)) != paths.end();
}

// Creates the file if needed and appends `text`.
bool append(const QString& path, const char* text) {
    QFile f(path);
    return f.open(QIODevice::Append) && f.write(text) >= 0;
}

class CountingWatcher : public ZKFileSystemWatcher {
public:
    void directoryChanged(const ZKStringW&) override { ++calls; }
    void fileChanged(const ZKStringW&) override { ++calls; }
    int calls = 0;
};

} // namespace

TEST(ZKFileSystemWatcher, RemovePathKeepsWatchingUntilRemoveAll) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString file = dir.filePath("f.txt");
    ASSERT_TRUE(append(file, ""));
    ZKFileSystemWatcher watcher;
    EXPECT_EQ(watcher.getWatchedPaths().size(), 0);
    watcher.addPath(ZKStringW(file));
    watcher.addPath(ZKStringW(dir.path()));
    EXPECT_TRUE(watches(watcher, file));
    EXPECT_TRUE(watches(watcher, dir.path()));
    EXPECT_EQ(watcher.getWatchedPaths().size(), 2);

    // Kept: removePath adds the path; it stays watched.
    watcher.removePath(ZKStringW(file));
    EXPECT_TRUE(watches(watcher, file));
    const QString other = dir.filePath("g.txt");
    ASSERT_TRUE(append(other, ""));
    watcher.removePath(ZKStringW(other));
    EXPECT_TRUE(watches(watcher, other));

    watcher.removeAllPaths();
    EXPECT_EQ(watcher.getWatchedPaths().size(), 0);
    watcher.addPath(ZKStringW(file));
    EXPECT_TRUE(watches(watcher, file));
}

TEST(ZKFileSystemWatcher, ChangeHooksAreNeverCalled) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString file = dir.filePath("f.txt");
    ASSERT_TRUE(append(file, ""));
    CountingWatcher watcher;
    watcher.addPath(ZKStringW(file));
    watcher.addPath(ZKStringW(dir.path()));
    // A plain Qt watcher on the same paths tells when the change was seen.
    QFileSystemWatcher reference({file, dir.path()});
    int seen = 0;
    QObject::connect(&reference, &QFileSystemWatcher::fileChanged, [&] { ++seen; });
    QObject::connect(&reference, &QFileSystemWatcher::directoryChanged, [&] { ++seen; });
    ASSERT_TRUE(append(file, "change"));
    ASSERT_TRUE(append(dir.filePath("new.txt"), ""));
    QElapsedTimer timer;
    timer.start();
    while (seen < 2 && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    ASSERT_GE(seen, 2);
    QCoreApplication::processEvents();
    EXPECT_EQ(watcher.calls, 0);
}
