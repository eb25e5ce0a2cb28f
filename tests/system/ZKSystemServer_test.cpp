#include "ZKChildProcess.h"
#include "ZKDisk.h"
#include "ZKProcessServer.h"
#include "ZKSystemServer.h"
#include "ZKTestSupport.h"

#include <QDateTime>
#include <QDir>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

// The recording child (see ZKChildProcess.h).
TEST(DISABLED_ZKChildProcess, RecordArgumentsUntilStopped) {
    const QString record = QFile::decodeName(qgetenv("ZK_CHILD_RECORD"));
    if (record.isEmpty())
        GTEST_SKIP() << "runs only as a child started by the process tests";
    QByteArray text = "started\n" + QDir::currentPath().toUtf8() + '\n';
    for (const QString& arg : QCoreApplication::arguments().mid(1))
        text += arg.toUtf8() + '\n';
    const QString temp = record + QStringLiteral(".tmp");
    ASSERT_TRUE(zkWriteFile(temp, text));
    ASSERT_TRUE(QFile::rename(temp, record));
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(record + QStringLiteral(".stop")); }, 60000));
}

namespace {

class ZKSystemServerProcess : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        m_folder = QFileInfo(m_dir.path()).canonicalFilePath();
        // A name of its own: tests running in parallel search by name too.
        m_name = QStringLiteral("zk_child_") +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name();
        m_helper = zkCopyOfTestExecutable(m_folder, m_name);
        ASSERT_FALSE(m_helper.isEmpty());
        m_record = m_folder + QStringLiteral("/record");
    }
    void TearDown() override {
        zkStopChild(m_record);
        ZKProcessSerialNumber psn;
        zkWaitFor([&] { return !running(&psn); });
    }
    ZKStringC exe() const { return ZKStringC(QFile::encodeName(m_helper)); }
    bool running(ZKProcessSerialNumber* psn) const {
        return ZKSystemServer::getRunningProcessSerialFromAppPath(psn, exe(), false);
    }

    QTemporaryDir m_dir;
    QString m_folder, m_name, m_helper, m_record;
};

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
    ASSERT_TRUE(running(&psn));
    EXPECT_EQ(psn.high, 0u);
    EXPECT_EQ(psn.low, static_cast<unsigned>(pid));
    EXPECT_EQ(ZKProcessServer::findProcessIDfromFileName(ZKStringW(m_name), false), pid);
    // Found, so the application is "brought forward"; no key is sent and no
    // Apple event exists here.
    EXPECT_TRUE(ZKSystemServer::sendKeyEventToApplication(exe(), 'a', 0, false));
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToProcess(&psn, 0x61657674, 0x6f646f63, "x"));
    EXPECT_FALSE(ZKSystemServer::sendAppleEventToApplication(exe(), 0, 0, "x", false));

    zkStopChild(m_record);
    EXPECT_TRUE(zkWaitFor([&] { return !running(&psn); }));
    EXPECT_EQ(psn.high + psn.low, 0u);
}

TEST_F(ZKSystemServerProcess, CommandLineFormsSplitAndUnquote) {
    {
        ZKChildEnvironment child(m_record);
        EXPECT_GT(ZKSystemServer::launchApplication(
                      exe(), ZKStringC("  one \"two three\"  'four' \"'five'\" "), false),
                  0);
    }
    QStringList got;
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got));
    // Only double quotes group; one level of quotes is removed.
    EXPECT_EQ(got, QStringList({"one", "two three", "four", "'five'"}));

    // Waiting forms return the exit code.
    EXPECT_EQ(
        ZKSystemServer::launchApplication(ZKStringW("/bin/sh"), ZKStringW("-c \"exit 4\""), true),
        4);
    ZKArray<ZKStringC> bytes{ZKStringC("-c"), ZKStringC("exit 5")};
    EXPECT_EQ(ZKSystemServer::launchApplication(ZKStringC("/bin/sh"), bytes, true), 5);
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
    EXPECT_FALSE(ZKSystemServer::getRunningProcessSerialFromAppPath(nullptr, exe(), true));
    {
        ZKChildEnvironment child(m_record);
        EXPECT_FALSE(running(&psn));
        EXPECT_EQ(psn.high + psn.low, 0u);
        EXPECT_FALSE(ZKSystemServer::sendKeyEventToApplication(exe(), 0, 0, false));
    }
    QThread::msleep(300);
    EXPECT_FALSE(QFile::exists(m_record)) << "nothing may have been started";

    {
        ZKChildEnvironment child(m_record);
        ASSERT_TRUE(ZKSystemServer::getRunningProcessSerialFromAppPath(&psn, exe(), true));
    }
    QStringList got{"unset"};
    ASSERT_TRUE(zkWaitForChildRecord(m_record, got));
    EXPECT_TRUE(got.isEmpty());
    ZKProcessSerialNumber found;
    ASSERT_TRUE(running(&found));
    EXPECT_EQ(found.low, psn.low);
}

TEST_F(ZKSystemServerProcess, OpenFileInApplicationHandsOverTheFile) {
    const QString document = m_folder + QStringLiteral("/doc one.txt");
    const QString euro = m_folder + QString::fromUtf8("/a\u20ac.txt");
    QFile(document).open(QIODevice::WriteOnly);
    QFile(euro).open(QIODevice::WriteOnly);
    {
        ZKChildEnvironment child(m_record);
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(exe(), ZKStringW(m_folder + "/x.txt")));
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(
            ZKStringC(QFile::encodeName(m_folder + "/none")), ZKStringW(document)));
        // The file name goes through Latin-1: U+20AC becomes '?', no file.
        EXPECT_FALSE(ZKSystemServer::openFileInApplication(exe(), ZKStringW(euro)));
        EXPECT_FALSE(QFile::exists(m_record));
        EXPECT_TRUE(ZKSystemServer::openFileInApplication(exe(), ZKStringW(document)));
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
    EXPECT_EQ(zkReadFile(dir.path() + "/a"), QByteArray("x"));
    // The shell's wait status: exit code 3 in the high byte.
    EXPECT_EQ(ZKSystemServer::systemCmd(ZKStringC("sh"), ZKStringC("-c 'exit 3'"), true, false),
              3 << 8);

    // Not waiting (both forms): " &" is appended, so the call returns while
    // the command still waits for its gate file.
    for (int form : {1, 2}) {
        const QByteArray n = QByteArray::number(form);
        const ZKStringC gated("(i=0; while [ ! -f '" + folder + "/gate" + n +
                              "' ] && [ $i -lt 3000 ]; do sleep 0.01; i=$((i+1)); done; touch '" +
                              folder + "/done" + n + "')");
        EXPECT_EQ(form == 1 ? ZKSystemServer::systemCmd(gated, ZKStringC(""), false)
                            : ZKSystemServer::systemCmd(gated, false),
                  0);
        EXPECT_FALSE(QFile::exists(dir.path() + "/done" + n));
        QFile(dir.path() + "/gate" + n).open(QIODevice::WriteOnly);
        EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(dir.path() + "/done" + n); }));
    }
}

TEST(ZKSystemServer, OpenFileUsesXdgOpenAndNoScriptRuns) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    // Fake commands first on PATH, each writing its first argument to a file.
    for (const char* name : {"xdg-open", "osascript"}) {
        QFile script(dir.path() + '/' + name);
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(QByteArray("#!/bin/sh\nprintf '%s' \"$1\" > \"$0.tmp\"; mv \"$0.tmp\" "
                                "\"$0.out\"\n"));
        script.setPermissions(script.permissions() | QFileDevice::ExeOwner);
    }
    ZKEnvGuard env("PATH", QFile::encodeName(dir.path()) + ':' + qgetenv("PATH"));

    EXPECT_EQ(ZKSystemServer::openFile(ZKStringC("/some folder/file.txt")), 0);
    EXPECT_TRUE(zkWaitFor([&] { return QFile::exists(dir.path() + "/xdg-open.out"); }));
    EXPECT_EQ(zkReadFile(dir.path() + "/xdg-open.out"), QByteArray("/some folder/file.txt"));
    // No script interpreter on this platform: false, and nothing is run.
    EXPECT_FALSE(ZKSystemServer::runAppleScript(ZKStringC("beep")));
    QThread::msleep(100);
    EXPECT_FALSE(QFile::exists(dir.path() + "/osascript.out"));
}

TEST(ZKSystemServer, EnvironmentUserAndTempFolder) {
    ZKEnvGuard env;
    env.set("ZK_TEST_VALUE", "v\xc3\xa9");
    env.set("USER", "someone");
    env.set("TMPDIR", "/tmp/x/");
    EXPECT_EQ(ZKSystemServer::getEnvVar(ZKStringW("ZK_TEST_VALUE")),
              ZKStringW(QString::fromUtf8("v\xc3\xa9")));
    EXPECT_EQ(ZKSystemServer::getUserName(), ZKStringW("someone"));
    EXPECT_EQ(ZKSystemServer::getTempFolder(), ZKStringW("/tmp/x/"));
    for (const char* name : {"USER", "TMPDIR", "ZK_TEST_VALUE"})
        env.unset(name);
    EXPECT_TRUE(ZKSystemServer::getUserName().isEmpty());
    EXPECT_TRUE(ZKSystemServer::getTempFolder().isEmpty());
    EXPECT_TRUE(ZKSystemServer::getEnvVar("ZK_TEST_VALUE").isEmpty());
}

TEST(ZKSystemServer, MachineQueries) {
    EXPECT_EQ(ZKSystemServer::getComputerName(), ZKStringW(QSysInfo::machineHostName()));
    const int qtCount = QThread::idealThreadCount();
    EXPECT_EQ(ZKSystemServer::idealThreadCount(), qtCount == -1 ? 1 : qtCount);
    // No memory figures here: zeros, except the peak queries leave theirs alone.
    unsigned long long a = 1, b = 2, c = 3, d = 4;
    ZKSystemServer::getGlobalMemoryInfo(a, b, c, d);
    EXPECT_EQ(a + b + c + d, 0u);
    a = b = 9;
    ZKSystemServer::getCurrentProcessMemoryUsage(a, b);
    EXPECT_EQ(a + b, 0u);
    a = b = 9;
    ZKSystemServer::getCurrentProcessPeakMemoryUsage(a, b);
    EXPECT_EQ(a + b, 18u);
    EXPECT_EQ(ZKSystemServer::getCurrentProcessMemoryUsage(), 0);
    EXPECT_EQ(ZKSystemServer::getCurrentProcessPeakMemoryUsage(), 0);
}

TEST(ZKSystemServer, ModuleIsTheLibraryNotTheApplication) {
    const ZKStringW file = ZKSystemServer::getCurrentModuleFileName();
    const QFileInfo info(file);
    EXPECT_TRUE(info.fileName().startsWith("libZKUtils.so"));
    EXPECT_TRUE(info.exists());
    EXPECT_EQ(ZKSystemServer::getCurrentModuleFolder() + "/" + info.fileName(), file);
    ZKStringC bytes("unchanged");
    getPathToDyLib(bytes);
    EXPECT_EQ(ZKStringW(bytes), file);

    int year = -1, month = -1, day = -1;
    ASSERT_TRUE(ZKSystemServer::getModuleModifiedDate(year, month, day));
    EXPECT_EQ(QDate(year, month, day), info.lastModified().date());
}

TEST(ZKSystemServer, SharedFolderIsPublicInHome) {
    const QString expected = QDir::homePath() + QStringLiteral("/Public");
    EXPECT_EQ(ZKSystemServer::getPublicDocumentsFolder(), ZKStringW(expected));
    EXPECT_STREQ(getSharedFolder(), QFile::encodeName(expected).constData());
}
