#include "ZKChildProcess.h"
#include "ZKDisk.h"
#include "ZKProcessServer.h"
#include "ZKSystemServer.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

// The recording child (see ZKChildProcess.h): runs only in a copy of this
// executable started by the tests below.
TEST(DISABLED_ZKChildProcess, RecordArgumentsUntilStopped) {
    const QString record = QFile::decodeName(qgetenv("ZK_CHILD_RECORD"));
    if (record.isEmpty())
        GTEST_SKIP() << "runs only as a child started by the process tests";
    QByteArray text = "started\n" + QDir::currentPath().toUtf8() + '\n';
    for (const QString& arg : QCoreApplication::arguments().mid(1))
        text += arg.toUtf8() + '\n';
    QFile temp(record + QStringLiteral(".tmp"));
    ASSERT_TRUE(temp.open(QIODevice::WriteOnly));
    temp.write(text);
    temp.close();
    ASSERT_TRUE(QFile::rename(temp.fileName(), record));
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(record + QStringLiteral(".stop")); }, 60000));
}

namespace {

class ZKSystemServerProcess : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        m_folder = QFileInfo(m_dir.path()).canonicalFilePath();
        // A name of its own: tests running in parallel search by name too.
        m_name =
            QStringLiteral("zk_child_") +
            QString::fromLatin1(::testing::UnitTest::GetInstance()->current_test_info()->name());
        m_helper = zkCopyOfTestExecutable(m_folder, m_name);
        ASSERT_FALSE(m_helper.isEmpty());
        m_record = m_folder + QStringLiteral("/record");
    }
    void TearDown() override {
        zkStopChild(m_record);
        // Children exit at once on the stop file; wait so that the folder
        // can go.
        ZKProcessSerialNumber psn;
        zkWaitFor([&] {
            return !ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, helperBytes(), false);
        });
    }
    ZKStringC helperBytes() const { return ZKStringC(QFile::encodeName(m_helper)); }

    QTemporaryDir m_dir;
    QString m_folder;
    QString m_name;
    QString m_helper;
    QString m_record;
};

// A fake command in a folder put first on PATH: it writes its first argument
// to `output`.
QString writeRecordingScript(const QString& folder, const QString& name, const QString& output) {
    const QString path = folder + QLatin1Char('/') + name;
    QFile script(path);
    if (!script.open(QIODevice::WriteOnly))
        return QString();
    script.write("#!/bin/sh\nprintf '%s' \"$1\" > '" + QFile::encodeName(output) + ".tmp'\nmv '" +
                 QFile::encodeName(output) + ".tmp' '" + QFile::encodeName(output) + "'\n");
    script.close();
    script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
    return path;
}

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST_F(ZKSystemServerProcess, DetachedLaunchIsFoundByPathAndStops) {
    long long pid = 0;
    {
        ZKChildEnvironment child(m_record);
        ZKArray<ZKStringW> args{ZKStringW("alpha"), ZKStringW("b c"), ZKStringW("")};
        pid = ZKSystemServer::launchApplication(ZKStringW(m_helper), args, false);
    }
    ASSERT_GT(pid, 0);
    QStringList got;
    QString workingFolder;
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got, &workingFolder));
    EXPECT_EQ(got, QStringList({"alpha", "b c", ""}));
    EXPECT_EQ(workingFolder, QDir::currentPath());

    ZKProcessSerialNumber psn{7, 7};
    ASSERT_TRUE(ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, helperBytes(), false));
    EXPECT_EQ(psn.high, 0u);
    EXPECT_EQ(psn.low, static_cast<unsigned>(pid));
    ZKStringW exe;
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW(m_helper), true, &exe), pid);
    EXPECT_EQ(exe, ZKStringW(m_helper));
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW(m_name), false), pid);

    // Found, so the application is "brought forward"; no key is sent.
    EXPECT_TRUE(ZKSystemServer::sendKeyEventToApplication(helperBytes(), 'a', 0, false));
    // No Apple events here, whatever the class (which is ignored anyway).
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToProcess(&psn, 0x61657674, 0x6f646f63, "x"));
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToProcess(&psn, 0, 0x6f646f63, "x"));
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToProcess(nullptr, 0, 0, "x"));
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToApplication(helperBytes(), 0, 0, "x", false));

    zkStopChild(m_record);
    EXPECT_TRUE(zkWaitFor([&] {
        return !ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, helperBytes(), false);
    }));
    EXPECT_EQ(psn.high, 0u);
    EXPECT_EQ(psn.low, 0u);
}

TEST_F(ZKSystemServerProcess, CommandLineFormsSplitAndUnquote) {
    {
        ZKChildEnvironment child(m_record);
        EXPECT_GT(ZKSystemServer::launchApplication(
                      helperBytes(), ZKStringC("  one \"two three\"  'four' \"'five'\" "), false),
                  0);
    }
    QStringList got;
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got));
    // Only double quotes group; one level of quotes is removed.
    EXPECT_EQ(got, QStringList({"one", "two three", "four", "'five'"}));

    // Waiting forms return the exit code; the wide command line goes through
    // Latin-1 to the same splitting.
    EXPECT_EQ(
        ZKSystemServer::launchApplication(ZKStringC("/bin/sh"), ZKStringC("-c \"exit 3\""), true),
        3);
    EXPECT_EQ(
        ZKSystemServer::launchApplication(ZKStringW("/bin/sh"), ZKStringW("-c \"exit 4\""), true),
        4);
    ZKArray<ZKStringC> bytes{ZKStringC("-c"), ZKStringC("exit 5")};
    EXPECT_EQ(ZKSystemServer::launchApplication(ZKStringC("/bin/sh"), bytes, true), 5);
    ZKArray<ZKStringW> wide{ZKStringW("-c"), ZKStringW("exit 7")};
    EXPECT_EQ(ZKSystemServer::launchApplication(ZKStringW("/bin/sh"), wide, true), 7);
    // A program that cannot start: Qt's -2 when waiting, 0 when not.
    const ZKStringW missing(m_folder + QStringLiteral("/no_such_program"));
    EXPECT_EQ(ZKSystemServer::launchApplication(missing, ZKArray<ZKStringW>(), true), -2);
    EXPECT_EQ(ZKSystemServer::launchApplication(missing, ZKArray<ZKStringW>(), false), 0);
}

TEST_F(ZKSystemServerProcess, NotRunningIsLaunchedOnlyWhenAsked) {
    ZKProcessSerialNumber psn{1, 2};
    // A path that names no file fails before psn is touched.
    EXPECT_FALSE(ZKSystemServer::getRunningProcessSerialFromAppPath(
        &psn, ZKStringC(QFile::encodeName(m_folder + "/none")), true));
    EXPECT_EQ(psn.low, 2u);
    EXPECT_FALSE(ZKSystemServer::getRunningProcessSerialFromAppPath(nullptr, helperBytes(), true));

    {
        ZKChildEnvironment child(m_record);
        EXPECT_FALSE(
            ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, helperBytes(), false));
        EXPECT_EQ(psn.high, 0u);
        EXPECT_EQ(psn.low, 0u);
        EXPECT_FALSE(ZKSystemServer::sendKeyEventToApplication(helperBytes(), 0, 0, false));
    }
    QThread::msleep(300);
    EXPECT_FALSE(QFile::exists(m_record)) << "nothing may have been started";
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW(m_helper), true), -1);

    {
        ZKChildEnvironment child(m_record);
        ASSERT_TRUE(ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, helperBytes(), true));
    }
    EXPECT_GT(psn.low, 0u);
    QStringList got{"unset"};
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got));
    EXPECT_TRUE(got.isEmpty());
    ZKProcessSerialNumber found;
    ASSERT_TRUE(ZKSystemServer::getRunningProcessSerialFromAppPath(&found, helperBytes(), false));
    EXPECT_EQ(found.low, psn.low);
}

TEST_F(ZKSystemServerProcess, OpenFileInApplicationHandsOverTheFile) {
    const QString document = m_folder + QStringLiteral("/doc one.txt");
    QFile(document).open(QIODevice::WriteOnly);
    const QString euro = m_folder + QString::fromUtf8("/a\u20ac.txt");
    QFile(euro).open(QIODevice::WriteOnly);
    {
        ZKChildEnvironment child(m_record);
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(helperBytes(),
                                                           ZKStringW(m_folder + "/none.txt")));
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(
            ZKStringC(QFile::encodeName(m_folder + "/none")), ZKStringW(document)));
        // The file name goes through Latin-1: a character above U+00FF
        // becomes '?', which names no file.
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(helperBytes(), ZKStringW(euro)));
        EXPECT_FALSE(QFile::exists(m_record));
        EXPECT_TRUE(ZKSystemServer::openFileInApplication(helperBytes(), ZKStringW(document)));
    }
    QStringList got;
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got));
    EXPECT_EQ(got, QStringList({document}));
}

TEST(ZKSystemServer, ShellCommandsWaitOrRunInTheBackground) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray folder = QFile::encodeName(dir.path());
    EXPECT_EQ(ZKSystemServer::systemCmd(ZKStringC("printf x > '" + folder + "/a'"), true), 0);
    EXPECT_EQ(readAll(dir.path() + "/a"), QByteArray("x"));
    // The shell's wait status: exit code 3 in the high byte.
    EXPECT_EQ(ZKSystemServer::systemCmd(ZKStringC("sh"), ZKStringC("-c 'exit 3'"), true, false),
              3 << 8);
    EXPECT_EQ(ZKSystemServer::systemCmd(ZKStringC("exit 2"), ZKStringC(""), true), 2 << 8);

    // Not waiting: " &" is appended, so the call returns while the command
    // still waits for its gate file.
    const ZKStringC gated("(i=0; while [ ! -f '" + folder +
                          "/gate' ] && [ $i -lt 3000 ]; do sleep 0.01; i=$((i+1)); done; touch '" +
                          folder + "/done')");
    EXPECT_EQ(ZKSystemServer::systemCmd(gated, ZKStringC(""), false), 0);
    EXPECT_FALSE(QFile::exists(dir.path() + "/done"));
    QFile(dir.path() + "/gate").open(QIODevice::WriteOnly);
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(dir.path() + "/done"); }));

    const ZKStringC gated2(
        "(i=0; while [ ! -f '" + folder +
        "/gate2' ] && [ $i -lt 3000 ]; do sleep 0.01; i=$((i+1)); done; touch '" + folder +
        "/done2')");
    EXPECT_EQ(ZKSystemServer::systemCmd(gated2, false), 0);
    EXPECT_FALSE(QFile::exists(dir.path() + "/done2"));
    QFile(dir.path() + "/gate2").open(QIODevice::WriteOnly);
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(dir.path() + "/done2"); }));
}

TEST(ZKSystemServer, OpenFileUsesXdgOpenAndNoScriptRuns) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    ASSERT_FALSE(writeRecordingScript(dir.path(), "xdg-open", dir.path() + "/opened").isEmpty());
    ASSERT_FALSE(writeRecordingScript(dir.path(), "osascript", dir.path() + "/scripted").isEmpty());
    ZKEnvGuard env("PATH", QFile::encodeName(dir.path()) + ':' + qgetenv("PATH"));

    EXPECT_EQ(ZKSystemServer::openFile(ZKStringC("/some folder/file.txt")), 0);
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(dir.path() + "/opened"); }));
    EXPECT_EQ(readAll(dir.path() + "/opened"), QByteArray("/some folder/file.txt"));

    // No script interpreter on this platform: false, and nothing is run.
    EXPECT_FALSE(ZKSystemServer::runAppleScript(ZKStringC("beep")));
    QThread::msleep(100);
    EXPECT_FALSE(QFile::exists(dir.path() + "/scripted"));
}

TEST(ZKSystemServer, EnvironmentUserAndTempFolder) {
    ZKEnvGuard env;
    env.set("ZK_TEST_VALUE", "v\xc3\xa9");
    env.set("USER", "someone");
    env.set("TMPDIR", "/tmp/x/");
    EXPECT_EQ(ZKSystemServer::getEnvVar("ZK_TEST_VALUE"),
              ZKStringW(QString::fromUtf8("v\xc3\xa9")));
    EXPECT_EQ(ZKSystemServer::getEnvVar(ZKStringW("ZK_TEST_VALUE")),
              ZKStringW(QString::fromUtf8("v\xc3\xa9")));
    EXPECT_EQ(ZKSystemServer::getUserName(), ZKStringW("someone"));
    EXPECT_EQ(ZKSystemServer::getTempFolder(), ZKStringW("/tmp/x/"));
    env.unset("USER");
    env.unset("TMPDIR");
    env.unset("ZK_TEST_VALUE");
    EXPECT_TRUE(ZKSystemServer::getUserName().isEmpty());
    EXPECT_TRUE(ZKSystemServer::getTempFolder().isEmpty());
    EXPECT_TRUE(ZKSystemServer::getEnvVar("ZK_TEST_VALUE").isEmpty());
    EXPECT_TRUE(ZKSystemServer::getEnvVar("").isEmpty());
}

TEST(ZKSystemServer, MachineQueries) {
    EXPECT_EQ(ZKSystemServer::getComputerName(), ZKStringW(QSysInfo::machineHostName()));
    EXPECT_FALSE(ZKSystemServer::getComputerName().isEmpty());
    const int qtCount = QThread::idealThreadCount();
    EXPECT_EQ(ZKSystemServer::idealThreadCount(), qtCount == -1 ? 1 : qtCount);
    EXPECT_GE(ZKSystemServer::idealThreadCount(), 1);

    unsigned long long a = 1, b = 2, c = 3, d = 4;
    ZKSystemServer::getGlobalMemoryInfo(a, b, c, d);
    EXPECT_EQ(a + b + c + d, 0u);
    a = b = 9;
    ZKSystemServer::getCurrentProcessMemoryUsage(a, b);
    EXPECT_EQ(a + b, 0u);
    a = b = 9;
    ZKSystemServer::getCurrentProcessPeakMemoryUsage(a, b);
    EXPECT_EQ(a, 9u);
    EXPECT_EQ(b, 9u);
    EXPECT_EQ(ZKSystemServer::getCurrentProcessMemoryUsage(), 0);
    EXPECT_EQ(ZKSystemServer::getCurrentProcessPeakMemoryUsage(), 0);
}

TEST(ZKSystemServer, ModuleIsTheLibraryNotTheApplication) {
    const ZKStringW file = ZKSystemServer::getCurrentModuleFileName();
    ASSERT_FALSE(file.isEmpty());
    EXPECT_TRUE(QFileInfo(file).fileName().startsWith("libZKUtils.so"));
    EXPECT_TRUE(QFileInfo::exists(file));
    EXPECT_NE(QFileInfo(file).canonicalFilePath(), QCoreApplication::applicationFilePath());

    const ZKStringW folder = ZKSystemServer::getCurrentModuleFolder();
    EXPECT_FALSE(folder.endsWith('/'));
    EXPECT_EQ(folder + "/" + QFileInfo(file).fileName(), file);

    ZKStringC bytes("unchanged");
    getPathToDyLib(bytes);
    EXPECT_EQ(ZKStringW(bytes), file);

    int year = -1, month = -1, day = -1;
    ASSERT_TRUE(ZKSystemServer::getModuleModifiedDate(year, month, day));
    const QDate modified = QFileInfo(file).lastModified().date();
    EXPECT_EQ(year, modified.year());
    EXPECT_EQ(month, modified.month());
    EXPECT_EQ(day, modified.day());
}

TEST(ZKSystemServer, SharedFolderIsPublicInHome) {
    const QString expected = QDir::homePath() + QStringLiteral("/Public");
    EXPECT_EQ(ZKSystemServer::getPublicDocumentsFolder(), ZKStringW(expected));
    EXPECT_STREQ(getSharedFolder(), QFile::encodeName(expected).constData());
    EXPECT_EQ(getSharedFolder(), getSharedFolder());
}
