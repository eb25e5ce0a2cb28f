#include "ZKLog.h"
#include "ZKLogCommaLocale.h"
#include "ZKProcessServer.h"
#include "ZKTimeServer.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>
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
    QByteArray content() const {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    void writeFile(const QByteArray& text) {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir m_dir;
    QString m_path;
};

} // namespace

TEST_F(ZKLogTest, ChannelsExistOnlyAfterInit) {
    EXPECT_FALSE(ZKLog::isChannelEnabled(0));
    ZKLog::enableChannel(3, true); // ignored: no channel array yet
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 0);

    ZKLog::init();
    EXPECT_TRUE(ZKLog::m_initialized);
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 600);
    EXPECT_TRUE(ZKLog::isChannelEnabled(0));
    EXPECT_FALSE(ZKLog::isChannelEnabled(3));
    EXPECT_FALSE(ZKLog::isChannelEnabled(599));
    EXPECT_FALSE(ZKLog::isChannelEnabled(600));
    EXPECT_FALSE(ZKLog::isChannelEnabled(-1));
    ZKLog::enableChannel(599, true);
    ZKLog::enableChannel(0, false);
    ZKLog::enableChannel(600, true);
    ZKLog::enableChannel(-5, true);
    EXPECT_TRUE(ZKLog::isChannelEnabled(599));
    EXPECT_FALSE(ZKLog::isChannelEnabled(0));
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 600);

    ZKLog::init(); // a second init changes nothing
    EXPECT_TRUE(ZKLog::isChannelEnabled(599));
    EXPECT_FALSE(ZKLog::isChannelEnabled(0));

    ZKLog::uninit();
    EXPECT_FALSE(ZKLog::m_initialized);
    EXPECT_EQ(ZKLog::getEnabledChannelArray().size(), 0);
    EXPECT_FALSE(ZKLog::isChannelEnabled(599));
    ZKLog::init();
    EXPECT_TRUE(ZKLog::isChannelEnabled(0));
    EXPECT_FALSE(ZKLog::isChannelEnabled(599));

    // Flags set in the array before init are cleared, whatever its size.
    for (long long size : {600, 601}) {
        ZKLog::uninit();
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
    EXPECT_EQ(ZKLog::getLogWindowTitle(), ZKStringW("Mine"));
    EXPECT_FALSE(ZKLog::getAddTimeInLog());

    ZKLog::uninit();
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
    ZKLog::endBloc();
    EXPECT_EQ(ZKLog::m_blocsDepth, 1);
    EXPECT_EQ(ZKLog::m_marginOffsetString, ZKStringW("  "));
}

TEST_F(ZKLogTest, UserLogLinesWithAndWithoutTimeStamps) {
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    ZKLog::enableUserLog(true);
    ZKLog::userLog("x=%d", 5);
    ZKLog::setAddTimeInLog(false);
    ZKLog::userLog("x=%d", 6);
    ZKLog::userLog(ZKStringC("plain %d"));
    ZKLog::userLog("%s", QByteArray(5000, 'a').constData());
    const QList<QByteArray> lines = content().split('\n');
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d+\\.\\d{3}s: x=5$"))
                    .match(QString::fromLatin1(lines[0]))
                    .hasMatch())
        << lines[0].constData();
    EXPECT_EQ(lines[1], QByteArray("x=6"));
    EXPECT_EQ(lines[2], QByteArray("plain %d"));
    EXPECT_EQ(lines[3], QByteArray(4095, 'a')); // cut at 4095 bytes
    EXPECT_EQ(lines[4], QByteArray());
}

TEST_F(ZKLogTest, TimeStampKeepsItsDecimalPointInAnyLocale) {
    ZKCommaDecimalLocale comma;
    if (!comma.active())
        GTEST_SKIP() << "no locale with a decimal comma could be made";
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    ZKLog::enableUserLog(true);
    ZKLog::userLog("v=%.1f", 2.5);
    ZKLog::userLog(ZKStringC("plain"));
    const QList<QByteArray> lines = content().split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d+\\.\\d{3}s: v=2\\.5$"))
                    .match(QString::fromLatin1(lines[0]))
                    .hasMatch())
        << lines[0].constData();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^\\d+\\.\\d{3}s: plain$"))
                    .match(QString::fromLatin1(lines[1]))
                    .hasMatch())
        << lines[1].constData();
}

TEST_F(ZKLogTest, DisabledUserLogLeavesTheFileAlone) {
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), false, true);
    ZKLog::userLog("never %d", 1);
    ZKLog::userLog(ZKStringC("never"));
    EXPECT_FALSE(QFile::exists(m_path));

    writeFile("before\n");
    const QDateTime stamp = QFileInfo(m_path).lastModified();
    ZKLog::userLog("never %d", 2);
    ZKLog::enableUserLog(true);
    ZKLog::enableUserLog(false);
    ZKLog::userLog(ZKStringC("never"));
    EXPECT_EQ(content(), QByteArray("before\n"));
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
    EXPECT_EQ(ZKLog::m_UserLog_filepath, ZKStringW(m_path));
    EXPECT_EQ(content(), QByteArray("old content\n"));
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    EXPECT_EQ(content(), QByteArray(""));
    EXPECT_FALSE(ZKLog::m_UserLog_enabled);

    // A bare name lands in the application folder.
    const QString name =
        QStringLiteral("zk_log_test_%1.log").arg(QCoreApplication::applicationPid());
    ZKLog::setUserLogFile(ZKStringW(name), true, false);
    const QString inAppFolder = ZKProcessServer::getCurrentAppFolder() + "/" + name;
    EXPECT_EQ(ZKLog::m_UserLog_filepath, ZKStringW(inAppFolder));
    EXPECT_TRUE(QFile::exists(inAppFolder));
    EXPECT_EQ(QFileInfo(inAppFolder).size(), 0);
    QFile::remove(inAppFolder);
    EXPECT_EQ(getFolderBesideApp(), ZKProcessServer::getCurrentAppFolder());
}

TEST_F(ZKLogTest, LinesOfManyThreadsStayWhole) {
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    ZKLog::enableUserLog(true);
    constexpr int kThreads = 8;
    constexpr int kLines = 1000;
    const QByteArray padding(120, '.');
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t, &padding] {
            for (int i = 0; i < kLines; ++i)
                ZKLog::userLog("thread %d line %04d %s end", t, i, padding.constData());
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    QList<QByteArray> lines = content().split('\n');
    ASSERT_EQ(lines.takeLast(), QByteArray());
    ASSERT_EQ(lines.size(), kThreads * kLines);
    const QRegularExpression whole(
        QStringLiteral("^\\d+\\.\\d{3}s: thread (\\d) line (\\d{4}) \\.{120} end$"));
    std::set<std::pair<int, int>> seen;
    for (const QByteArray& line : lines) {
        const QRegularExpressionMatch match = whole.match(QString::fromLatin1(line));
        ASSERT_TRUE(match.hasMatch()) << line.constData();
        seen.insert({match.captured(1).toInt(), match.captured(2).toInt()});
    }
    EXPECT_EQ(seen.size(), size_t(kThreads * kLines));
    EXPECT_EQ(seen.begin()->first, 0);
    EXPECT_EQ(seen.rbegin()->first, kThreads - 1);
    EXPECT_EQ(seen.rbegin()->second, kLines - 1);
}

TEST_F(ZKLogTest, GenericLogAndTheInertEntryPointsWriteNothing) {
    ZKLog::init();
    ZKLog::setUserLogFile(ZKStringW(m_path), true, true);
    ZKLog::enableUserLog(true);
    ZKLog::genericLog(0, 0, ZKColor3ub(255, 0, 0), ZKStringW("dropped"));
    ZKLog::setAddTimeInLog(false);
    ZKLog::genericLog(1, 2, ZKColor3ub(0, 0, 0), ZKStringW("dropped too"));
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
    EXPECT_EQ(content(), QByteArray(""));
    EXPECT_FALSE(ZKLog::isLogInFileEnabled());
    EXPECT_FALSE(ZKLog::isLogInWindowEnabled());
    // Kept: showLogWindow never shows anything.
    EXPECT_FALSE(ZKLog::isLogWindowVisible());
    EXPECT_TRUE(ZKLog::getLogFile().isEmpty());
    EXPECT_TRUE(ZKLog::m_BetaLog_filepath.isEmpty());
}
