#include "ZKLog.h"
#include "ZKLogCommaLocale.h"
#include "ZKProcessServer.h"
#include "ZKTestSupport.h"
#include "ZKTimeServer.h"

#include <QApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

// Every test starts from and leaves the start state.
class ZKLogTest : public ::testing::Test {
protected:
    void SetUp() override {
        ZKLog::init();
        ZKLog::uninit();
        ASSERT_TRUE(m_dir.isValid());
        m_path = m_dir.path() + QStringLiteral("/user.log");
        ZKTimeServer::InitTimeServer();
    }
    void TearDown() override {
        ZKLog::init();
        ZKLog::uninit();
    }
    void startUserLog() {
        ZKLog::init();
        ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
        ZKLog::enableUserLog(true);
    }
    QList<QByteArray> lines() const { return zkReadFile(m_path).split('\n'); }
    void writeFile(const QByteArray& text) {
        QFile file(m_path);
        file.open(QIODevice::WriteOnly);
        file.write(text);
    }

    QTemporaryDir m_dir;
    QString m_path;
};

// "<seconds with three decimals>s: <text>", the point a point in any locale.
void expectStamped(const QByteArray& line, const char* text) {
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d+\\.\\d{3}s: ") +
                                   QRegularExpression::escape(QString::fromLatin1(text)) + '$')
                    .match(QString::fromLatin1(line))
                    .hasMatch())
        << line.constData();
}

} // namespace

TEST_F(ZKLogTest, ChannelsExistOnlyAfterInit) {
    ZKLog::enableChannel(3, true); // ignored: no channel array yet
    EXPECT_FALSE(ZKLog::isChannelEnabled(0));
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 0);
    ZKLog::init();
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 600);
    EXPECT_TRUE(ZKLog::isChannelEnabled(0));
    for (int channel : {3, 599, 600, -1})
        EXPECT_FALSE(ZKLog::isChannelEnabled(channel)) << channel;
    ZKLog::enableChannel(599, true);
    ZKLog::enableChannel(0, false);
    ZKLog::enableChannel(600, true);
    ZKLog::enableChannel(-5, true);
    ZKLog::init(); // a second init changes nothing
    EXPECT_TRUE(ZKLog::isChannelEnabled(599));
    EXPECT_FALSE(ZKLog::isChannelEnabled(0));
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 600);

    // Flags set in the array before init are cleared, whatever its size.
    for (long long size : {600, 601}) {
        ZKLog::uninit();
        EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 0);
        ZKLog::getEnabledChannelArray().resize(size, true);
        ZKLog::init();
        EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 600) << size;
        EXPECT_TRUE(ZKLog::isChannelEnabled(0)) << size;
        EXPECT_FALSE(ZKLog::isChannelEnabled(1)) << size;
        EXPECT_FALSE(ZKLog::isChannelEnabled(599)) << size;
    }
}

TEST_F(ZKLogTest, UninitRestoresTheStartState) {
    ZKLog::init();
    ZKLog::setLogWindowTitle(ZKStringW("Mine"));
    ZKLog::setAddTimeInLog(false);
    ZKLog::setUserLogFile(ZKStringW(m_path), false, true);
    ZKLog::enableUserLog(true);
    ZKLog::enableBetaLog(true);
    ZKLog::startBloc();
    ZKLog::m_logHandler = this;
    ZKLog::uninit();
    EXPECT_FALSE(ZKLog::m_initialized);
    EXPECT_EQ(ZKLog::getLogWindowTitle(), ZKStringW("ZKLogWindow"));
    EXPECT_TRUE(ZKLog::getAddTimeInLog());
    EXPECT_FALSE(ZKLog::m_UserLog_enabled);
    EXPECT_TRUE(ZKLog::m_UserLog_filepath.isEmpty());
    EXPECT_FALSE(ZKLog::m_BetaLog_enabled);
    EXPECT_EQ(ZKLog::m_logHandler, nullptr);
    EXPECT_EQ(ZKLog::m_blocsDepth, 0);
    EXPECT_TRUE(ZKLog::m_marginOffsetString.isEmpty());
    // uninit of an uninitialised log does nothing.
    ZKLog::setAddTimeInLog(false);
    ZKLog::uninit();
    EXPECT_FALSE(ZKLog::getAddTimeInLog());
}

TEST_F(ZKLogTest, EndBlocDeepensTheIndentationToo) {
    ZKLog::startBloc();
    ZKLog::startBloc();
    ZKLog::endBloc();
    // Kept: ending a block adds a level instead of removing one.
    EXPECT_EQ(ZKLog::m_blocsDepth, 3);
    EXPECT_EQ(ZKLog::m_marginOffsetString, ZKStringW("      "));
    ZKLog::m_blocsDepth = -4;
    ZKLog::endBloc();
    EXPECT_EQ(ZKLog::m_blocsDepth, 0);
    EXPECT_EQ(ZKLog::m_marginOffsetString, ZKStringW(""));
}

TEST_F(ZKLogTest, UserLogLinesWithAndWithoutTimeStampsInAnyLocale) {
    startUserLog();
    ZKLog::userLog("x=%d", 5);
    ZKLog::setAddTimeInLog(false);
    ZKLog::userLog("x=%d", 6);
    ZKLog::userLog(ZKStringC("plain %d"));
    ZKLog::userLog("%s", QByteArray(5000, 'a').constData());
    QList<QByteArray> got = lines();
    ASSERT_EQ(got.size(), 5);
    expectStamped(got[0], "x=5");
    EXPECT_EQ(got[1], QByteArray("x=6"));
    EXPECT_EQ(got[2], QByteArray("plain %d"));
    EXPECT_EQ(got[3], QByteArray(4095, 'a')); // cut at 4095 bytes
    EXPECT_EQ(got[4], QByteArray());

    ZKCommaDecimalLocale comma;
    if (!comma.active())
        GTEST_SKIP() << "no locale with a decimal comma could be made";
    startUserLog();
    ZKLog::setAddTimeInLog(true);
    ZKLog::userLog("v=%.1f", 2.5);
    ZKLog::userLog(ZKStringC("plain"));
    got = lines();
    ASSERT_EQ(got.size(), 3);
    expectStamped(got[0], "v=2.5");
    expectStamped(got[1], "plain");
}

TEST_F(ZKLogTest, DisabledUserLogLeavesTheFileAlone) {
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), false, true);
    ZKLog::userLog("never %d", 1);
    EXPECT_FALSE(QFile::exists(m_path));
    writeFile("before\n");
    const QDateTime stamp = QFileInfo(m_path).lastModified();
    ZKLog::enableUserLog(true);
    ZKLog::enableUserLog(false);
    ZKLog::userLog(ZKStringC("never"));
    EXPECT_EQ(lines(), QList<QByteArray>({"before", ""}));
    EXPECT_EQ(QFileInfo(m_path).lastModified(), stamp);

    // A file that cannot be opened drops the line.
    ZKLog::setUserLogFile(ZKStringW(m_dir.path() + "/missing/folder/x.log"), true, true);
    ZKLog::enableUserLog(true);
    ZKLog::userLog("dropped");
    EXPECT_FALSE(QFile::exists(m_dir.path() + "/missing"));
}

TEST_F(ZKLogTest, SetUserLogFileResetsButDoesNotEnable) {
    writeFile("old content\n");
    ZKLog::setUserLogFile(ZKStringW(m_path), false, true);
    EXPECT_EQ(QFileInfo(m_path).size(), 12); // kept without a reset
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    EXPECT_EQ(QFileInfo(m_path).size(), 0);
    EXPECT_FALSE(ZKLog::m_UserLog_enabled);

    // A bare name lands in the application folder.
    const QString name =
        QStringLiteral("zk_log_test_%1.log").arg(QCoreApplication::applicationPid());
    ZKLog::setUserLogFile(ZKStringW(name), true, false);
    const QString inAppFolder = ZKProcessServer::getCurrentAppFolder() + "/" + name;
    EXPECT_EQ(ZKLog::m_UserLog_filepath, ZKStringW(inAppFolder));
    EXPECT_TRUE(QFile::exists(inAppFolder));
    QFile::remove(inAppFolder);
    EXPECT_EQ(getFolderBesideApp(), ZKProcessServer::getCurrentAppFolder());
}

TEST_F(ZKLogTest, LinesOfManyThreadsStayWhole) {
    startUserLog();
    constexpr int kThreads = 4, kLines = 250;
    const QByteArray padding(120, '.');
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([t, &padding] {
            for (int i = 0; i < kLines; ++i)
                ZKLog::userLog("thread %d line %04d %s end", t, i, padding.constData());
        });
    for (std::thread& thread : threads)
        thread.join();

    QList<QByteArray> got = lines();
    ASSERT_EQ(got.takeLast(), QByteArray());
    ASSERT_EQ(got.size(), kThreads * kLines);
    const QRegularExpression whole(
        QStringLiteral("^\\d+\\.\\d{3}s: thread \\d line \\d{4} \\.{120} end$"));
    for (const QByteArray& line : got)
        ASSERT_TRUE(whole.match(QString::fromLatin1(line)).hasMatch()) << line.constData();
}

TEST_F(ZKLogTest, GenericLogAndTheInertEntryPointsWriteNothing) {
    startUserLog();
    ZKLog::genericLog(0, 0, ZKColor3ub(255, 0, 0), ZKStringW("dropped"));
    ZKLog::betaLog("beta %d", 1);
    ZKLog::betaLog(ZKStringC("beta"));
    ZKLog::setBetaLogFile(ZKStringW(m_path), true, true);
    ZKLog::setLogFile(ZKStringW(m_path));
    ZKLog::enableLogInFile(true);
    ZKLog::enableLogInWindow(true);
    const int windows = QApplication::topLevelWidgets().size();
    ZKLog::showLogWindow(true);
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
    ZKLog::logCallStack();
    EXPECT_EQ(lines(), QList<QByteArray>({""}));
    EXPECT_FALSE(ZKLog::isLogInFileEnabled());
    EXPECT_FALSE(ZKLog::isLogInWindowEnabled());
    // Kept: showLogWindow never shows anything.
    EXPECT_FALSE(ZKLog::isLogWindowVisible());
    EXPECT_TRUE(ZKLog::getLogFile().isEmpty());
    EXPECT_TRUE(ZKLog::m_BetaLog_filepath.isEmpty());
}
