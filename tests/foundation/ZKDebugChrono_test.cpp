#include "ZKDebugChrono.h"
#include "ZKLogCommaLocale.h"
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

std::string format(const char* pattern, int i, const char* label, double a, double b,
                   double c = 0) {
    char buffer[512];
    std::snprintf(buffer, sizeof buffer, pattern, i, label, a, b, c);
    return buffer;
}

// A chronometer started well after the application clock, so that the start
// time is clearly not 0.
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
    EXPECT_EQ(idle.getStartTime(), 0.0);
    EXPECT_FALSE(idle.isRunning());
    idle.pushTime("before start"); // not running: the start time itself
    ASSERT_EQ(idle.getTimes().size(), 1);
    EXPECT_EQ(idle.getTimes()[0], 0.0);

    ZKDebugChrono chrono = startedChrono();
    EXPECT_TRUE(chrono.isRunning());
    EXPECT_GE(chrono.getStartTime(), 0.03);
    EXPECT_STREQ(chrono.getName(), "run");
    EXPECT_GE(chrono.getTimes().capacity(), 15);
    const char label[] = "step";
    const char sameText[] = "step";
    chrono.pushTime(label);
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
    EXPECT_EQ(index, -1);

    // clearDebug keeps the start: later entries still measure from it.
    const double start = chrono.getStartTime();
    QThread::msleep(10);
    chrono.clearDebug();
    EXPECT_EQ(chrono.getTimes().size(), 0);
    EXPECT_EQ(chrono.getLabels().size(), 0);
    EXPECT_EQ(chrono.getName(), nullptr);
    EXPECT_TRUE(chrono.isRunning());
    EXPECT_EQ(chrono.getStartTime(), start);
    chrono.pushTime("after clear");
    EXPECT_GE(chrono.getTimes()[0], 0.015);
}

TEST(ZKDebugChrono, PrintSubtractsTheStartTwice) {
    ZKDebugChrono::setOutFunction(nullptr);
    ZKDebugChrono chrono = startedChrono();
    g_printed.clear();
    chrono.print(); // no output function: nothing
    ZKDebugChrono::setOutFunction(&collect);
    EXPECT_EQ(ZKDebugChrono::getOutFunction(), &collect);
    chrono.print(); // no entries: no call
    EXPECT_TRUE(g_printed.empty());

    chrono.pushTime("a");
    QThread::msleep(2);
    chrono.pushTime("b");
    chrono.print();
    ZKDebugChrono::setOutFunction(nullptr);
    ASSERT_EQ(g_printed.size(), 2u);
    const double s = chrono.getStartTime();
    const double t0 = chrono.getTimes()[0];
    const double t1 = chrono.getTimes()[1];
    // Kept: stored times are elapsed, yet the start is subtracted again and
    // is the first entry's predecessor.
    EXPECT_EQ(g_printed[0], format(" %d: %s = %.5f  [%.5f]", 0, "a", t0 - s, t0 - s));
    EXPECT_EQ(g_printed[1], format(" %d: %s = %.5f  [%.5f]", 1, "b", t1 - s, t1 - t0));
    EXPECT_EQ(g_printed[0].rfind(" 0: a = -0.0", 0), 0u) << g_printed[0];
}

TEST(ZKDebugChrono, PrintFileWritesPercentagesOfTheWhole) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray path = QFile::encodeName(dir.path() + "/chrono.txt");
    ZKDebugChrono chrono = startedChrono();

    QFile old(QString::fromUtf8(path));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    EXPECT_EQ(chrono.printFile(path.constData()), 0);
    EXPECT_EQ(QFile(QString::fromUtf8(path)).size(), 0);

    chrono.pushTime("load");
    QThread::msleep(3);
    chrono.pushTime("draw");
    EXPECT_EQ(chrono.printFile(path.constData()), 0);
    QFile file(QString::fromUtf8(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const std::string text = file.readAll().toStdString();
    const double s = chrono.getStartTime();
    const double t0 = chrono.getTimes()[0];
    const double t1 = chrono.getTimes()[1];
    const char* pattern = "%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n";
    EXPECT_EQ(text, format(pattern, 0, "load", t0 - s, t0 - s, (t0 - s) * 100 / (t1 - s)) +
                        format(pattern, 1, "draw", t1 - s, t1 - t0, (t1 - t0) * 100 / (t1 - s)));

    // An unwritable path reports a failed close instead of crashing.
    EXPECT_EQ(chrono.printFile((dir.path() + "/no/such/folder.txt").toUtf8().constData()), EOF);
}

TEST(ZKDebugChrono, ReportsKeepTheirDecimalPointInAnyLocale) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray path = QFile::encodeName(dir.path() + "/chrono.txt");
    ZKDebugChrono chrono = startedChrono();
    chrono.pushTime("a");
    g_printed.clear();
    {
        ZKCommaDecimalLocale comma;
        if (!comma.active())
            GTEST_SKIP() << "no locale with a decimal comma could be made";
        ZKDebugChrono::setOutFunction(&collect);
        chrono.print();
        ZKDebugChrono::setOutFunction(nullptr);
        EXPECT_EQ(chrono.printFile(path.constData()), 0);
    }
    // Expected texts formatted back in the C locale.
    const double s = chrono.getStartTime();
    const double t0 = chrono.getTimes()[0];
    ASSERT_EQ(g_printed.size(), 1u);
    EXPECT_EQ(g_printed[0], format(" %d: %s = %.5f  [%.5f]", 0, "a", t0 - s, t0 - s));
    QFile file(QString::fromUtf8(path));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), format("%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n", 0, "a",
                                                   t0 - s, t0 - s, (t0 - s) * 100 / (t0 - s)));
}
