#include "ZKChildProcess.h"
#include "ZKProcessServer.h"
#include "ZKTestSupport.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(ZKProcessServer, ExecutableAndFolderOfTheRunningProgram) {
    const ZKStringW file = ZKProcessServer::getCurrentProcessFileName();
    EXPECT_EQ(file, ZKStringW(QCoreApplication::applicationFilePath()));
    const ZKStringW folder = ZKProcessServer::getCurrentProcessFolder();
    EXPECT_EQ(folder, ZKStringW(QCoreApplication::applicationDirPath()));
    EXPECT_EQ(ZKProcessServer::getCurrentAppFolder(), folder); // not inside a bundle
    EXPECT_EQ(ZKProcessServer::getCurrentProcessID(), -1);
    ZKArray<int> ids{4, 5};
    ZKProcessServer::findAllRunningProcessIDs(ids);
    EXPECT_EQ(ids.size(), 2);
    EXPECT_FALSE(ZKProcessServer::sendTextMessageToProcess(1, ZKStringC("x")));
    ZKProcessServer::setProcessPathFromArgv0("/elsewhere/tool");
    EXPECT_EQ(ZKProcessServer::getCurrentProcessFileName(), file);
}

TEST(ZKProcessServer, BundleFoldersAndSuffixes) {
    // Only these exact, case-sensitive endings name a bundle.
    const char* const cases[][2] = {
        {"/Apps/Tool.app/Contents/MacOS", "/Apps"},
        {"/Apps/Tool.app/Contents/Frameworks", "/Apps"},
        {"/a//b/../Apps/Tool.app/Contents/MacOS", "/a/Apps"},
        {"/Tool.app/Contents/MacOS", "/"},
        {"/Apps/Tool.app/Contents/MacOSX", "/Apps/Tool.app/Contents/MacOSX"},
        {"/Apps/Tool.app/contents/macos", "/Apps/Tool.app/contents/macos"},
        {"Contents/MacOS", "Contents/MacOS"},
        {"", ""}};
    for (const auto& c : cases)
        EXPECT_EQ(ZKProcessServer::getAppFolderFromProcessFolder(ZKStringW(c[0])), ZKStringW(c[1]));

    ZKStringW text("report.txt.bak");
    EXPECT_TRUE(removeSuffix(text, ZKStringW(".bak")));
    EXPECT_FALSE(removeSuffix(text, ZKStringW(".TXT")));
    EXPECT_FALSE(removeSuffix(text, ZKStringW("longer than report.txt")));
    EXPECT_EQ(text, ZKStringW("report.txt"));
    EXPECT_TRUE(removeSuffix(text, ZKStringW("report.txt")));
    EXPECT_EQ(text, ZKStringW(""));
}

TEST(ZKProcessServer, FindProcessByExecutableNameOrPath) {
    const ZKStringW self = ZKProcessServer::getCurrentProcessFileName();
    ZKStringW found;
    // Other runs of this executable may be alive: all have the same path.
    EXPECT_GT(ZKProcessServer::findProcessIDfromFileName(self, true, &found), 0);
    EXPECT_EQ(found, self);
    const ZKStringW name(QCoreApplication::applicationFilePath().section('/', -1));
    EXPECT_GT(ZKProcessServer::findProcessIDfromFileName(name, false), 0);
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(name, true), -1);
    found = ZKStringW("kept");
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW("/no/such"), true, &found), -1);
    EXPECT_EQ(found, ZKStringW("kept"));
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW(""), false), -1);
}

// Runs only in a copy of this executable started by the test below.
TEST(DISABLED_ZKProcessPathChild, RecordExecutablePath) {
    const QString record = QFile::decodeName(qgetenv("ZK_CHILD_RECORD"));
    if (record.isEmpty())
        GTEST_SKIP() << "runs only as a child started by ExecutablePathFitsIn2047Bytes";
    ASSERT_TRUE(zkWriteFile(record, ZKProcessServer::getCurrentProcessFileName().toUtf8()));
}

TEST(ZKProcessServer, ExecutablePathFitsIn2047Bytes) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString base = QFileInfo(dir.path()).canonicalFilePath();
    // The path a copy of this executable reads when its full path has `length` bytes.
    auto pathRead = [&](int length) {
        QString folder = base + QStringLiteral("/%1").arg(length);
        while (length - folder.size() > 256)
            folder += QLatin1Char('/') + QString(200, QLatin1Char('d'));
        if (!QDir().mkpath(folder))
            return QStringLiteral("<no folder>");
        const QString copy =
            zkCopyOfTestExecutable(folder, QString(length - folder.size() - 1, QLatin1Char('x')));
        if (copy.size() != length)
            return QStringLiteral("<no copy>");
        const QString record = base + QStringLiteral("/record%1").arg(length);
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        {
            ZKChildEnvironment child(record, "DISABLED_ZKProcessPathChild.*");
            process.start(copy, QStringList());
        }
        if (!process.waitForFinished(60000) || process.exitCode() != 0)
            return QStringLiteral("<child failed>");
        QFile file(record);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll())
                                              : QStringLiteral("<no record>");
    };
    const QString fits = pathRead(2046);
    EXPECT_EQ(fits.size(), 2046) << fits.left(40).toStdString();
    EXPECT_TRUE(fits.endsWith(QString(10, QLatin1Char('x'))));
    // 2047 bytes leave no room for the terminating zero: nothing is read.
    EXPECT_EQ(pathRead(2047), QString());
}
