#include "ZKDebugChrono.h"
#include "ZKLogCommaLocale.h"
#include "ZKTestSupport.h"
#include "ZKTimeServer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> g_printed;
void collect(const char* line) {
    g_printed.emplace_back(line);
}

// The expected texts, formatted in the C locale.
std::string printed(int i, const char* label, double a, double b) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, " %d: %s = %.5f  [%.5f]", i, label, a, b);
    return buffer;
}
std::string filed(int i, const char* label, double a, double b, double percent) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, "%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n", i, label, a, b,
                  percent);
    return buffer;
}
std::string readFile(const QByteArray& path) {
    return zkReadFile(QFile::decodeName(path)).toStdString();
}

// A chronometer started well after the application clock (start time not 0).
ZKDebugChrono startedChrono() {
    ZKTimeServer::InitTimeServer();
    QThread::msleep(30);
    ZKDebugChrono chrono;
    chrono.start("run");
    return chrono;
}

} // namespace

TEST(ZKDebugChrono, StartPushAndFind) {
    ZKDebugChrono idle;
    EXPECT_FALSE(idle.isRunning());
    idle.pushTime("before start"); // not running: the start time itself, 0
    ASSERT_EQ(idle.getTimes().size(), 1);
    EXPECT_EQ(idle.getTimes()[0], 0.0);

    ZKDebugChrono chrono = startedChrono();
    EXPECT_TRUE(chrono.isRunning());
    EXPECT_GE(chrono.getStartTime(), 0.03);
    EXPECT_STREQ(chrono.getName(), "run");
    const char sameText[] = "step";
    chrono.pushTime("step");
    QThread::msleep(5);
    chrono.pushTime("other");
    chrono.pushTime(sameText);
    int index = 7;
    EXPECT_EQ(chrono.findTime("step", index), chrono.getTimes()[0]);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(chrono.findTime("other", index, 99), chrono.getTimes()[1]);
    EXPECT_EQ(index, 1);
    EXPECT_GE(chrono.getTimes()[1], 0.005);
    EXPECT_LT(chrono.getTimes()[1], chrono.getStartTime() + 10); // elapsed, not absolute
    EXPECT_EQ(chrono.findTime("missing", index), 0.0);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(chrono.findTime(nullptr, index), 0.0);

    // clearDebug keeps the start: later entries still measure from it.
    const double start = chrono.getStartTime();
    QThread::msleep(10);
    chrono.clearDebug();
    EXPECT_EQ(chrono.getTimes().size() + chrono.getLabels().size(), 0);
    EXPECT_EQ(chrono.getName(), nullptr);
    EXPECT_EQ(chrono.getStartTime(), start);
    chrono.pushTime("after clear");
    EXPECT_GE(chrono.getTimes()[0], 0.015);
}

TEST(ZKDebugChrono, ReportsSubtractTheStartTwiceInAnyLocale) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray path = QFile::encodeName(dir.path() + "/chrono.txt");
    ZKDebugChrono chrono = startedChrono();
    g_printed.clear();
    ZKDebugChrono::setOutFunction(&collect);
    EXPECT_EQ(ZKDebugChrono::getOutFunction(), &collect);
    chrono.print(); // no entries: no call
    QFile old(QFile::decodeName(path));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    EXPECT_EQ(chrono.printFile(path.constData()), 0);
    EXPECT_EQ(readFile(path), "");

    chrono.pushTime("a");
    QThread::msleep(3);
    chrono.pushTime("b");
    {
        ZKCommaDecimalLocale comma; // a point in the reports whatever the locale
        chrono.print();
        EXPECT_EQ(chrono.printFile(path.constData()), 0);
    }
    ZKDebugChrono::setOutFunction(nullptr);
    chrono.print(); // no output function: nothing
    const double s = chrono.getStartTime(), t0 = chrono.getTimes()[0], t1 = chrono.getTimes()[1];
    // Kept: stored times are elapsed, yet the start is subtracted again and
    // is the first entry's predecessor.
    ASSERT_EQ(g_printed.size(), 2u);
    EXPECT_EQ(g_printed[0], printed(0, "a", t0 - s, t0 - s));
    EXPECT_EQ(g_printed[1], printed(1, "b", t1 - s, t1 - t0));
    EXPECT_EQ(g_printed[0].rfind(" 0: a = -0.0", 0), 0u) << g_printed[0];
    EXPECT_EQ(readFile(path), filed(0, "a", t0 - s, t0 - s, (t0 - s) * 100 / (t1 - s)) +
                                  filed(1, "b", t1 - s, t1 - t0, (t1 - t0) * 100 / (t1 - s)));

    // An unwritable path reports a failed close instead of crashing.
    EXPECT_EQ(chrono.printFile((dir.path() + "/no/such/folder.txt").toUtf8().constData()), EOF);
}
