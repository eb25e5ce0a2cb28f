#include "ZKDisk.h"
#include "ZKTestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A fresh temporary folder with helpers to make and read files in it.
class DiskFiles : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }

    QString path(const QString& name) const { return m_dir.filePath(name); }
    ZKStringW wide(const QString& name) const { return ZKStringW(path(name)); }
    ZKStringC bytes(const char* name) const {
        return ZKStringC(QFile::encodeName(m_dir.path()) + "/" + name);
    }

    void write(const QString& name, const QByteArray& content) const {
        ASSERT_TRUE(zkWriteFile(path(name), content));
    }
    QByteArray read(const QString& name) const { return zkReadFile(path(name)); }
    bool exists(const QString& name) const { return QFileInfo::exists(path(name)); }

    QTemporaryDir m_dir;
};

// Restores the process's current folder when it goes.
class CurrentFolderGuard {
public:
    CurrentFolderGuard() : m_saved(QDir::currentPath()) {}
    ~CurrentFolderGuard() { QDir::setCurrent(m_saved); }

private:
    QString m_saved;
};

const QString kCafe = QString::fromUtf8("caf\xc3\xa9");

} // namespace

TEST_F(DiskFiles, ExistenceAndSize) {
    write("a.txt", "hello");
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("sub"));

    EXPECT_TRUE(ZKDisk::fileExists(wide("a.txt")));
    EXPECT_TRUE(ZKDisk::fileExists(bytes("a.txt")));
    EXPECT_TRUE(ZKDisk::fileExists(wide("sub"))); // folders count as files
    EXPECT_FALSE(ZKDisk::fileExists(wide("missing")));
    EXPECT_TRUE(ZKDisk::folderExists(wide("sub")));
    EXPECT_TRUE(ZKDisk::folderExists(bytes("sub")));
    EXPECT_FALSE(ZKDisk::folderExists(wide("a.txt")));
    EXPECT_FALSE(ZKDisk::folderExists(bytes("missing")));

    EXPECT_EQ(ZKDisk::getFileSize(wide("a.txt")), 5);
    EXPECT_EQ(ZKDisk::getFileSize(bytes("a.txt")), 5);
    EXPECT_EQ(ZKDisk::getFileSize(bytes("missing")), 0);

    // These byte forms decode UTF-8: the two bytes C3 A9 are one e-acute.
    write(kCafe, "x");
    EXPECT_TRUE(ZKDisk::fileExists(bytes("caf\xc3\xa9")));
    EXPECT_EQ(ZKDisk::getFileSize(bytes("caf\xc3\xa9")), 1);
    EXPECT_FALSE(ZKDisk::fileExists(bytes("caf\xe9")));
}

TEST_F(DiskFiles, DeleteFileAndMultipleFiles) {
    EXPECT_FALSE(ZKDisk::deleteFile(ZKStringC("")));
    EXPECT_FALSE(ZKDisk::deleteFile(bytes("missing")));
    write("a.txt", "a");
    EXPECT_TRUE(ZKDisk::deleteFile(wide("a.txt")));
    EXPECT_FALSE(exists("a.txt"));

    // This byte form reads each byte as one Latin-1 character: E9 is e-acute.
    write(kCafe, "x");
    EXPECT_TRUE(ZKDisk::deleteFile(bytes("caf\xe9")));
    EXPECT_FALSE(exists(kCafe));

    for (const char* name : {"k.txt", "r1.tmp", "r2.TMP", "r3.bak", ".hidden.tmp"})
        write(name, "x");
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("dir.tmp"));
    EXPECT_FALSE(ZKDisk::deleteMultipleFiles(wide(""), ZKStringW()));
    EXPECT_FALSE(
        ZKDisk::deleteMultipleFiles(ZKStringC(QFile::encodeName(m_dir.path())), ZKStringC("")));
    EXPECT_TRUE(exists("r1.tmp"));

    // Several patterns; the case of the name is ignored; a folder that matches
    // cannot be removed as a file and is skipped; hidden entries are not listed.
    EXPECT_TRUE(ZKDisk::deleteMultipleFiles(ZKStringW(m_dir.path()), ZKStringW("*.tmp;*.bak")));
    EXPECT_FALSE(exists("r1.tmp"));
    EXPECT_FALSE(exists("r2.TMP"));
    EXPECT_FALSE(exists("r3.bak"));
    EXPECT_TRUE(exists("k.txt"));
    EXPECT_TRUE(exists("dir.tmp"));
    EXPECT_TRUE(exists(".hidden.tmp"));

    EXPECT_TRUE(ZKDisk::deleteMultipleFiles(ZKStringC(QFile::encodeName(m_dir.path())),
                                            ZKStringC("*.none k?txt")));
    EXPECT_FALSE(exists("k.txt"));
    EXPECT_TRUE(ZKDisk::deleteMultipleFiles(wide("missing"), ZKStringW("*")));
}

TEST_F(DiskFiles, DeleteFolderRemovesWholeTrees) {
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("tree/sub/deeper"));
    ASSERT_TRUE(QDir(m_dir.path()).mkpath("tree/.hiddenDir"));
    for (const char* name : {"tree/a.txt", "tree/.hidden", "tree/sub/b.txt", "tree/sub/deeper/.c",
                             "tree/.hiddenDir/d"})
        write(name, "x");
    // A link to a folder outside the tree is removed, not followed.
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("outside"));
    write("outside/keep.txt", "keep");
    ASSERT_TRUE(QFile::link(path("outside"), path("tree/sub/link")));

    EXPECT_TRUE(ZKDisk::deleteFolder(wide("tree")));
    EXPECT_FALSE(exists("tree"));
    EXPECT_EQ(read("outside/keep.txt"), "keep");

    ASSERT_TRUE(QDir(m_dir.path()).mkpath("bytes/sub"));
    write("bytes/sub/x", "x");
    EXPECT_TRUE(ZKDisk::deleteFolder(bytes("bytes")));
    EXPECT_FALSE(exists("bytes"));

    // A missing folder counts as deleted.
    EXPECT_TRUE(ZKDisk::deleteFolder(wide("missing")));
    EXPECT_TRUE(ZKDisk::deleteFolder(bytes("missing")));
    // A file is not a folder: it stays and the result is false.
    write("plain", "x");
    EXPECT_FALSE(ZKDisk::deleteFolder(wide("plain")));
    EXPECT_TRUE(exists("plain"));
}

TEST_F(DiskFiles, DeleteFolderEmptyAndRelativePaths) {
    CurrentFolderGuard guard;
    ASSERT_TRUE(QDir::setCurrent(m_dir.path()));
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("rel"));
    write("rel/x.txt", "x");

    // Kept: the byte form refuses the empty path, the wide one reports it
    // missing; neither touches the current folder.
    EXPECT_FALSE(ZKDisk::deleteFolder(ZKStringC("")));
    EXPECT_TRUE(ZKDisk::deleteFolder(ZKStringW("")));
    EXPECT_TRUE(exists("rel/x.txt"));

    // Kept: the existence test looks for "rel" inside "rel", so the folder is
    // reported missing and stays.
    EXPECT_TRUE(ZKDisk::deleteFolder(ZKStringW("rel")));
    EXPECT_TRUE(exists("rel/x.txt"));
    // Once rel/rel exists the relative path is found and rel is emptied and removed.
    ASSERT_TRUE(QDir(m_dir.path()).mkdir("rel/rel"));
    EXPECT_TRUE(ZKDisk::deleteFolder(ZKStringC("rel")));
    EXPECT_FALSE(exists("rel"));
}

TEST_F(DiskFiles, DeleteFolderStopsAtTheFirstFailure) {
    // Run as an unprivileged user in a forked child, so that a folder without
    // write permission really blocks the removal of its file.
    ASSERT_EQ(chmod(QFile::encodeName(m_dir.path()).constData(), 0777), 0);
    const std::string saved = GTEST_FLAG_GET(death_test_style);
    GTEST_FLAG_SET(death_test_style, "fast");
    EXPECT_EXIT(
        {
            if (geteuid() == 0 && setuid(65534) != 0)
                std::_Exit(2);
            QDir base(m_dir.path());
            if (!base.mkpath("tree/a") || !base.mkpath("tree/b"))
                std::_Exit(3);
            write("tree/a/locked.txt", "x");
            write("tree/b/x", "x");
            write("tree/c.txt", "x");
            chmod(QFile::encodeName(path("tree/a")).constData(), 0555);
            const bool deleted = ZKDisk::deleteFolder(wide("tree"));
            // Folders come first, by name: "a" fails and nothing after it is tried.
            const bool kept =
                exists("tree/a/locked.txt") && exists("tree/b/x") && exists("tree/c.txt");
            chmod(QFile::encodeName(path("tree/a")).constData(), 0755);
            std::_Exit(!deleted && kept ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
    GTEST_FLAG_SET(death_test_style, saved);
}

TEST_F(DiskFiles, RenameMoveAndCopy) {
    write("from", "new");
    write("to", "old");
    // Kept: the byte rename replaces an existing target ...
    EXPECT_TRUE(ZKDisk::renameFile(bytes("from"), bytes("to")));
    EXPECT_FALSE(exists("from"));
    EXPECT_EQ(read("to"), "new");
    // ... while moveFile and the wide rename refuse it.
    write("from", "newer");
    EXPECT_FALSE(ZKDisk::moveFile(bytes("from"), bytes("to")));
    EXPECT_FALSE(ZKDisk::moveFile(wide("from"), wide("to")));
    EXPECT_FALSE(ZKDisk::renameFile(wide("from"), wide("to")));
    EXPECT_EQ(read("from"), "newer");
    EXPECT_EQ(read("to"), "new");
    EXPECT_TRUE(ZKDisk::moveFile(bytes("from"), bytes("moved")));
    EXPECT_TRUE(ZKDisk::renameFile(wide("moved"), wide("renamed")));
    EXPECT_EQ(read("renamed"), "newer");
    EXPECT_FALSE(ZKDisk::renameFile(bytes("missing"), bytes("x")));

    // The byte rename hands the raw bytes to the C library: UTF-8 on disk here.
    EXPECT_TRUE(ZKDisk::renameFile(bytes("renamed"), bytes("caf\xc3\xa9")));
    EXPECT_EQ(read(kCafe), "newer");
    // moveFile decodes its byte paths as UTF-8.
    EXPECT_TRUE(ZKDisk::moveFile(bytes("caf\xc3\xa9"), bytes("back")));
    EXPECT_EQ(read("back"), "newer");

    write("src", "source");
    write("dst", "target");
    EXPECT_FALSE(ZKDisk::copyFile(bytes("src"), bytes("dst")));
    EXPECT_FALSE(ZKDisk::copyFile(wide("src"), wide("dst")));
    EXPECT_EQ(read("dst"), "target");
    EXPECT_TRUE(ZKDisk::copyFile_override(bytes("src"), bytes("dst")));
    EXPECT_EQ(read("dst"), "source");
    write("src", "again");
    EXPECT_TRUE(ZKDisk::copyFile_override(wide("src"), wide("dst")));
    EXPECT_EQ(read("dst"), "again");
    EXPECT_FALSE(ZKDisk::copyFile_override(wide("missing"), wide("other")));
    // copyFile reads its byte paths as Latin-1.
    EXPECT_TRUE(ZKDisk::copyFile(bytes("src"), bytes("caf\xe9")));
    EXPECT_EQ(read(kCafe), "again");
}

TEST_F(DiskFiles, CreateFolderAndPath) {
    EXPECT_FALSE(ZKDisk::createFolder(wide("a/b")));
    EXPECT_FALSE(exists("a"));
    EXPECT_TRUE(ZKDisk::createPath(wide("a/b")));
    EXPECT_TRUE(QFileInfo(path("a/b")).isDir());
    EXPECT_TRUE(ZKDisk::createFolder(bytes("a/c")));
    EXPECT_TRUE(QFileInfo(path("a/c")).isDir());
    // Latin-1: the byte E9 names the folder e-acute.
    EXPECT_TRUE(ZKDisk::createFolder(bytes("\xe9")));
    EXPECT_TRUE(QFileInfo(path(QString::fromUtf8("\xc3\xa9"))).isDir());
}

TEST_F(DiskFiles, FileDatesInTheirOrder) {
    write("f", "x");
    const QDateTime modified(QDate(2001, 2, 3), QTime(4, 5, 6), Qt::UTC);
    const QDateTime accessed(QDate(2010, 11, 12), QTime(13, 14, 15), Qt::UTC);
    {
        QFile f(path("f"));
        ASSERT_TRUE(f.open(QIODevice::ReadWrite));
        ASSERT_TRUE(f.setFileTime(modified, QFileDevice::FileModificationTime));
        ASSERT_TRUE(f.setFileTime(accessed, QFileDevice::FileAccessTime));
    }

    const ZKDateTime untouched(QDateTime(QDate(1999, 9, 9), QTime(9, 9, 9), Qt::UTC));
    ZKDateTime created = untouched, mod = untouched, read = untouched;
    EXPECT_FALSE(ZKDisk::getFileDates(wide("missing"), &created, &mod, &read));
    EXPECT_FALSE(ZKDisk::getFileDates(bytes("missing"), &created, &mod, &read));
    EXPECT_EQ(created, untouched);
    EXPECT_EQ(mod, untouched);
    EXPECT_EQ(read, untouched);

    EXPECT_TRUE(ZKDisk::getFileDates(wide("f"), nullptr, nullptr, nullptr));
    EXPECT_TRUE(ZKDisk::getFileDates(bytes("f"), nullptr, &mod, nullptr));
    EXPECT_EQ(mod.getQDateTime(), modified);
    mod = untouched;
    EXPECT_TRUE(ZKDisk::getFileDates(wide("f"), &created, &mod, &read));
    EXPECT_EQ(mod.getQDateTime(), modified);
    EXPECT_EQ(read.getQDateTime(), accessed);
    EXPECT_TRUE(created.getQDateTime().isValid());
    EXPECT_GT(created.getQDateTime(), modified); // made now, dated back afterwards
}

TEST_F(DiskFiles, CurrentPath) {
    CurrentFolderGuard guard;
    const QString canonical = QFileInfo(m_dir.path()).canonicalFilePath();
    EXPECT_TRUE(ZKDisk::setCurrentPath(ZKStringW(m_dir.path())));
    EXPECT_EQ(QFileInfo(ZKDisk::getCurrentPathW()).canonicalFilePath(), canonical);
    EXPECT_EQ(ZKDisk::getCurrentPath(), ZKStringC(ZKDisk::getCurrentPathW().toLatin1()));
    EXPECT_FALSE(ZKDisk::setCurrentPath(wide("missing")));
    EXPECT_FALSE(ZKDisk::setCurrentPath(bytes("missing")));

    // Relative paths resolve against the current folder; the byte form reads
    // its path as Latin-1.
    ASSERT_TRUE(QDir(m_dir.path()).mkdir(QString::fromUtf8("\xc3\xa9")));
    EXPECT_TRUE(ZKDisk::setCurrentPath(ZKStringC("\xe9")));
    write(QString::fromUtf8("\xc3\xa9/rel.txt"), "r");
    EXPECT_TRUE(ZKDisk::fileExists(ZKStringC("rel.txt")));
    // The byte form gives the path as Latin-1: e-acute is the byte E9.
    EXPECT_TRUE(ZKDisk::getCurrentPath().endsWith("/\xe9"));
}
