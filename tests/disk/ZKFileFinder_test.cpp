#include "ZKFileFinder.h"
#include "ZKTestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class FileFinder : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }

    void touch(const QString& name) const {
        ASSERT_TRUE(zkWriteFile(m_dir.filePath(name), QByteArray()));
    }
    void mkdir(const QString& name) const { ASSERT_TRUE(QDir(m_dir.path()).mkpath(name)); }
    ZKStringW path(const QString& name = QString()) const {
        return ZKStringW(name.isEmpty() ? m_dir.path() : m_dir.filePath(name));
    }

    // Every remaining name of the finder, joined with ','.
    static std::string drain(ZKFileFinder& finder) {
        std::string all;
        ZKStringW name;
        while (finder.findNext(name))
            all += name.toStdString() + ",";
        return all;
    }

    // The paths relative to the temporary folder, joined with ','.
    std::string relative(const ZKArray<ZKStringW>& files) const {
        std::string all;
        for (const ZKStringW& f : files)
            all += QDir(m_dir.path()).relativeFilePath(f).toStdString() + ",";
        return all;
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(FileFinder, DefaultListingSkipsHiddenAndDotEntries) {
    touch("a.txt");
    touch(".hidden");
    mkdir("sub");
    ZKFileFinder finder;
    EXPECT_EQ(finder.getFlags(), 25339);
    finder.setFolder(path());
    EXPECT_EQ(drain(finder), "a.txt,sub,");

    // Used up: it stays so, rewind() included, until a setter restarts it.
    ZKStringW name("kept");
    EXPECT_FALSE(finder.findNext(name));
    EXPECT_EQ(name, QStringLiteral("kept"));
    finder.rewind();
    finder.close();
    EXPECT_TRUE(finder.findNext().isEmpty());
    finder.setFolder(path());
    EXPECT_EQ(finder.findNext(), QStringLiteral("a.txt"));
    // A change of folder restarts from the first entry of the new folder.
    touch("sub/z");
    finder.setFolder(path("sub"));
    EXPECT_EQ(drain(finder), "z,");

    // The listing is made on the first findNext, not at the setter.
    finder.setFolder(path());
    touch("b.txt");
    EXPECT_EQ(drain(finder), "a.txt,b.txt,sub,");

    // A dropped listing is made again on demand.
    finder.deleteNativeObject();
    EXPECT_EQ(drain(finder), "a.txt,b.txt,sub,");
    finder.updateNativeObject();
    EXPECT_EQ(drain(finder), "");

    finder.setFolder(path("missing"));
    EXPECT_FALSE(finder.findNext(name));
}

TEST_F(FileFinder, PatternsApplyToFilesAndFolders) {
    for (const char* n : {"a.txt", "B.TXT", "c.png", "d.jpg"})
        touch(n);
    mkdir("dir.txt");
    mkdir("other");
    ZKFileFinder finder;
    finder.setFolder(path());
    finder.setFileSpec(ZKStringW("*.txt"));
    // Patterns ignore case and match folders too while the folder bit is set.
    EXPECT_EQ(drain(finder), "a.txt,B.TXT,dir.txt,");
    finder.setFlag(ZKFileFinder::Folders, false);
    EXPECT_EQ(drain(finder), "a.txt,B.TXT,");

    finder.addFileSpec(ZKStringW("*.png"));
    EXPECT_EQ(drain(finder), "a.txt,B.TXT,c.png,");
    finder.setFileSpecs(ZKArray<ZKStringW>{ZKStringW("*.jpg"), ZKStringW("?.png")});
    EXPECT_EQ(finder.getFileSpecs().size(), 2);
    EXPECT_EQ(drain(finder), "c.png,d.jpg,");
    finder.setFileSpec(ZKStringW("*.TXT"));
    EXPECT_EQ(drain(finder), "a.txt,B.TXT,");
    finder.setFileSpecs(ZKArray<ZKStringW>());
    finder.setFlag(ZKFileFinder::Folders, true);
    EXPECT_EQ(drain(finder), "a.txt,B.TXT,c.png,d.jpg,dir.txt,other,");
}

TEST_F(FileFinder, FlagsTranslateToQtFilters) {
    touch("f");
    touch(".h");
    mkdir("d");
    ASSERT_TRUE(QFile::link(m_dir.filePath("f"), m_dir.filePath("link")));
    ZKFileFinder finder;
    finder.setFolder(path());

    // Kept: bit 1 is files and bit 2 folders, the reverse of Qt's bits.
    finder.setFlag(ZKFileFinder::Files, false);
    EXPECT_EQ(drain(finder), "d,");
    finder.setFlag(ZKFileFinder::Files, true);
    finder.setFlag(ZKFileFinder::Folders, false);
    EXPECT_EQ(drain(finder), "f,");

    finder.setFlag(ZKFileFinder::Folders | ZKFileFinder::Hidden, true);
    EXPECT_EQ(drain(finder), ".h,d,f,");
    finder.setFlag(ZKFileFinder::NoSymLinks, false);
    EXPECT_EQ(drain(finder), ".h,d,f,link,");
    finder.setFlag(ZKFileFinder::NoDot, false);
    EXPECT_EQ(drain(finder), ".,.h,d,f,link,");
    finder.setFlag(ZKFileFinder::NoDotDot, false);
    EXPECT_EQ(drain(finder), ".,..,.h,d,f,link,");

    // Kept: Qt's all-folders (0x400) and case-sensitive (0x800) bits are
    // dropped, so a pattern still filters folders and still ignores case.
    finder.setFlag(0x400 | 0x800, true);
    finder.setFileSpec(ZKStringW("F*"));
    EXPECT_EQ(drain(finder), "f,");
}

TEST_F(FileFinder, ExtractAllFilesInFolderIsDepthFirst) {
    for (const char* d : {"root/sub/deep", "root/sub2", "root/.hid", "root/empty"})
        mkdir(d);
    for (const char* f : {"root/b.txt", "root/A.dat", "root/sub/c.txt", "root/sub/deep/d.txt",
                          "root/sub2/e.txt", "root/.hid/x.txt", "root/.top.txt"})
        touch(f);

    ZKFileFinder finder;
    finder.setFolder(path("root"));
    ZKArray<ZKStringW> files{ZKStringW("already")};
    EXPECT_TRUE(finder.extractAllFilesInFolder(files));
    ASSERT_GE(files.size(), 1);
    EXPECT_EQ(files[0], QStringLiteral("already"));
    files.erase(0);
    EXPECT_EQ(relative(files),
              "root/A.dat,root/b.txt,root/sub/c.txt,root/sub/deep/d.txt,root/sub2/e.txt,");
    EXPECT_EQ(finder.getFolder(), path("root"));
    // The finder keeps the flags of its files pass.
    EXPECT_EQ(finder.getFlags(), 0x62F9);

    // The patterns choose files; every sub-folder is still visited.
    ZKFileFinder txt;
    txt.setFolder(path("root"));
    txt.setFileSpec(ZKStringW("*.txt"));
    txt.setFlag(ZKFileFinder::Hidden, true);
    ZKArray<ZKStringW> texts;
    EXPECT_TRUE(txt.extractAllFilesInFolder(texts));
    EXPECT_EQ(relative(texts), "root/.top.txt,root/b.txt,root/.hid/x.txt,root/sub/c.txt,"
                               "root/sub/deep/d.txt,root/sub2/e.txt,");

    ZKFileFinder missing;
    missing.setFolder(path("nowhere"));
    ZKArray<ZKStringW> none{ZKStringW("x")};
    EXPECT_FALSE(missing.extractAllFilesInFolder(none));
    EXPECT_EQ(none.size(), 1);
}

TEST_F(FileFinder, ExtractAllFilesFollowsLinksButNotInCircles) {
    mkdir("root/sub");
    mkdir("elsewhere");
    touch("root/a");
    touch("root/sub/b");
    touch("elsewhere/c");
    ASSERT_TRUE(QFile::link(m_dir.filePath("root"), m_dir.filePath("root/sub/up")));
    ASSERT_TRUE(QFile::link(m_dir.filePath("elsewhere"), m_dir.filePath("root/sub/out")));

    ZKFileFinder finder;
    finder.setFolder(path("root"));
    finder.setFlag(ZKFileFinder::NoSymLinks, false);
    ZKArray<ZKStringW> files;
    EXPECT_TRUE(finder.extractAllFilesInFolder(files));
    EXPECT_EQ(relative(files), "root/a,root/sub/b,root/sub/out/c,");

    // By default links are not listed at all.
    ZKFileFinder plain;
    plain.setFolder(path("root"));
    ZKArray<ZKStringW> plainFiles;
    EXPECT_TRUE(plain.extractAllFilesInFolder(plainFiles));
    EXPECT_EQ(relative(plainFiles), "root/a,root/sub/b,");
}
