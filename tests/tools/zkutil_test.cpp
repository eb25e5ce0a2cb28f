// Runs the zkutil tool as a process on files made here, damaged ones included.
#include "ZKBinaryFile.h"
#include "ZKTestSupport.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ToolRun {
    int status = -1;
    bool crashed = true;
    QString out;
    QString err;
};

ToolRun zkutil(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral(ZKUTIL_PATH), args);
    ToolRun r;
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        return r;
    }
    r.crashed = p.exitStatus() != QProcess::NormalExit;
    r.status = p.exitCode();
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
}

class ZKUtilTool : public ::testing::Test {
protected:
    QString path(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    void write(const char* name, const QByteArray& bytes) {
        ASSERT_TRUE(zkWriteFile(path(name), bytes));
    }
    QTemporaryDir m_dir;
};

} // namespace

TEST_F(ZKUtilTool, HelpAndUsageErrors) {
    ToolRun r = zkutil({"--help"});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(r.out.contains("blocs FILE"));
    for (const char* command : {"demo", "blocs", "tv", "png", "convert", "find", "sysinfo"}) {
        r = zkutil({command, "--help"});
        EXPECT_EQ(r.status, 0) << command;
        EXPECT_TRUE(r.out.startsWith(QStringLiteral("usage: zkutil %1").arg(command))) << command;
    }
    r = zkutil({});
    EXPECT_EQ(r.status, 2);
    r = zkutil({"frobnicate"});
    EXPECT_EQ(r.status, 2);
    EXPECT_TRUE(r.err.contains("unknown command"));
    r = zkutil({"convert", "only-one"});
    EXPECT_EQ(r.status, 2);
    EXPECT_FALSE(r.crashed);
}

TEST_F(ZKUtilTool, DemoPassesAndLeavesItsFiles) {
    const ToolRun r = zkutil({"demo", path("demo")});
    ASSERT_FALSE(r.crashed);
    EXPECT_EQ(r.status, 0) << r.out.toStdString() << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("all checks passed"));
    for (const char* f :
         {"demo/document.zkb", "demo/settings.txt", "demo/demo.png", "demo/zkutil-demo.log"})
        EXPECT_GT(QFileInfo(path(f)).size(), 0) << f;

    const ToolRun blocs = zkutil({"blocs", path("demo/document.zkb")});
    EXPECT_EQ(blocs.status, 0);
    const QStringList lines = blocs.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines[0].startsWith("0\t0\t"));
    EXPECT_TRUE(lines[0].contains("\tZKDC\t"));
    EXPECT_TRUE(lines[1].startsWith("8\t1\t"));
    EXPECT_TRUE(lines[4].contains("\tSELN\t"));

    const ToolRun png = zkutil({"png", path("demo/demo.png")});
    EXPECT_EQ(png.status, 0);
    EXPECT_TRUE(png.out.contains("width\t600"));
    EXPECT_TRUE(png.out.contains("packing\t0 (rgba)"));
    EXPECT_TRUE(png.out.contains("depth\t4"));

    const ToolRun tv = zkutil({"tv", path("demo/settings.txt"), "zoom"});
    EXPECT_EQ(tv.status, 0);
    EXPECT_EQ(tv.out, "1.250000\n");
}

TEST_F(ZKUtilTool, BlocsReportsNestingAndDamage) {
    const QString file = path("blocs.bin");
    {
        ZKBinaryFile f(ZKStringW(file), "wb");
        f.writeBlocHeader({0x41424344u, 0}); // 'ABCD'
        f.writeEmptyBloc(1);
        f.writeBlocHeader({2, 0});
        f.writeInt(7);
        f.endWriteBloc(true);
        f.endWriteBloc(true);
        f.writeBlocHeader({3, 100}); // runs past the end
        f.endWriteBloc(false);
    }
    const ToolRun r = zkutil({"blocs", file});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "0\t0\t1094861636\tABCD\t28\n"
                     "8\t1\t1\t-\t8\n"
                     "16\t1\t2\t-\t12\n"
                     "28\t0\t3\t-\t100\n"
                     "damaged\t28\tbloc runs past the end of the file (size 100, 8 bytes left)\n");

    write("short.bin", QByteArray::fromHex("0100000008000000ff"));
    const ToolRun shortFile = zkutil({"blocs", path("short.bin")});
    EXPECT_EQ(shortFile.status, 1);
    EXPECT_TRUE(shortFile.out.endsWith("damaged\t8\ttruncated header (1 bytes left)\n"));
    write("tiny.bin", QByteArray::fromHex("0100000004000000"));
    EXPECT_TRUE(zkutil({"blocs", path("tiny.bin")}).out.contains("smaller than the 8-byte"));
    write("empty.bin", QByteArray());
    const ToolRun empty = zkutil({"blocs", path("empty.bin")});
    EXPECT_EQ(empty.status, 0);
    EXPECT_TRUE(empty.out.isEmpty());
    const ToolRun missing = zkutil({"blocs", path("missing.bin")});
    EXPECT_EQ(missing.status, 2);
    EXPECT_TRUE(missing.err.contains("no such file"));
}

TEST_F(ZKUtilTool, TvListsPairsInFileOrderAndLooksTokensUp) {
    write("s.txt", "b=2\nnot a pair\na=x=y\nb=3\n\xff\xfe=\n");
    ToolRun r = zkutil({"tv", path("s.txt")});
    EXPECT_EQ(r.status, 0);
    EXPECT_TRUE(r.out.startsWith("b=2\na=x=y\nb=3\n"));
    r = zkutil({"tv", path("s.txt"), "b"});
    EXPECT_EQ(r.out, "2\n");
    r = zkutil({"tv", path("s.txt"), "zz"});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(zkutil({"tv", m_dir.path()}).status, 2);
}

TEST_F(ZKUtilTool, ImagesConvertAndCorruptFilesAreRefused) {
    ASSERT_EQ(zkutil({"demo", path("demo")}).status, 0);
    ToolRun r = zkutil({"convert", path("demo/demo.png"), path("out.png"), "--packing", "rgb",
                        "--rotate", "cw", "--flip"});
    EXPECT_EQ(r.status, 0) << r.err.toStdString();
    r = zkutil({"png", path("out.png")});
    EXPECT_TRUE(r.out.contains("width\t240"));
    EXPECT_TRUE(r.out.contains("height\t600"));
    EXPECT_TRUE(r.out.contains("packing\t1 (rgb)"));
    EXPECT_EQ(zkutil({"convert", path("out.png"), path("g.png"), "--packing", "grey"}).status, 2);
    EXPECT_EQ(zkutil({"convert", path("out.png"), path("g.png"), "--rotate", "up"}).status, 2);

    QFile png(path("demo/demo.png"));
    ASSERT_TRUE(png.open(QIODevice::ReadOnly));
    const QByteArray bytes = png.readAll();
    write("cut.png", bytes.left(bytes.size() / 2));
    write("junk.png", QByteArray(300, 'j'));
    for (const char* bad : {"cut.png", "junk.png"}) {
        r = zkutil({"png", path(bad)});
        EXPECT_FALSE(r.crashed) << bad;
        EXPECT_EQ(r.status, 2) << bad;
        EXPECT_TRUE(r.err.contains("not a readable PNG")) << bad;
        EXPECT_EQ(zkutil({"convert", path(bad), path("x.png")}).status, 2) << bad;
    }
}

TEST_F(ZKUtilTool, FindListsFilesDepthFirst) {
    QDir(m_dir.path()).mkpath("tree/sub");
    write("tree/b.txt", "b");
    write("tree/a.png", "a");
    write("tree/sub/c.txt", "c");
    ToolRun r = zkutil({"find", path("tree")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, path("tree/a.png") + "\n" + path("tree/b.txt") + "\n" +
                         path("tree/sub/c.txt") + "\n");
    r = zkutil({"find", path("tree"), "*.txt"});
    EXPECT_EQ(r.out, path("tree/b.txt") + "\n" + path("tree/sub/c.txt") + "\n");
    EXPECT_EQ(zkutil({"find", path("nowhere")}).status, 2);
}

TEST_F(ZKUtilTool, SysinfoNamesEveryItem) {
    const ToolRun r = zkutil({"sysinfo"});
    EXPECT_EQ(r.status, 0);
    for (const char* label :
         {"user", "computer", "temporary folder", "ideal thread count", "library file",
          "library folder", "executable", "application folder", "date and time"})
        EXPECT_TRUE(r.out.contains(QLatin1String(label))) << label;
    EXPECT_TRUE(r.out.contains("libZKUtils.so"));
    EXPECT_TRUE(r.out.contains("zkutil"));
}
