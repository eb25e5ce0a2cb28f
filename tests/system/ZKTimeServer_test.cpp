#include "ZKChildProcess.h"
#include "ZKDate.h"
#include "ZKDateTime.h"
#include "ZKThread.h"
#include "ZKTimeServer.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace {

// Puts the process in a fixed zone 5:30 east of UTC for its lifetime.
struct FixedTimeZone {
    struct Reset {
        ~Reset() { tzset(); } // after the variable is restored
    } reset;
    ZKEnvGuard tz{"TZ", "ZKT-5:30"};
    FixedTimeZone() { tzset(); }
};

} // namespace

TEST(ZKTimeServer, AppClockReadsZeroUntilInitialisedThenRunsInSeconds) {
    // A fresh process: earlier tests may have started the clock.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const bool zero =
                ZKTimeServer::getAppTimeInS() == 0.0 && ZKTimeServer::getAppTimeInMS() == 0;
            ZKTimeServer::InitTimeServer();
            ZKThread::msleep(20);
            std::exit(zero && ZKTimeServer::getAppTimeInS() > 0.0 ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");

    EXPECT_TRUE(ZKTimeServer::InitTimeServer());
    const double s0 = ZKTimeServer::getAppTimeInS();
    const long long ms0 = ZKTimeServer::getAppTimeInMS();
    EXPECT_TRUE(ZKTimeServer::InitTimeServer()); // must not restart the clock
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ZKTimeServer::sleep(60), 0);
    const double elapsedS = double(timer.nsecsElapsed()) * 1e-9;
    const double s1 = ZKTimeServer::getAppTimeInS();
    const long long ms1 = ZKTimeServer::getAppTimeInMS();
    EXPECT_GE(s1 - s0, 0.059);
    EXPECT_LT(s1 - s0, elapsedS + 0.5); // seconds, not milliseconds or ticks
    EXPECT_GE(ms1 - ms0, 59);
    EXPECT_LT(ms1 - ms0, (long long)(elapsedS * 1000.0) + 500);
    double previous = ZKTimeServer::getAppTimeInS();
    for (int i = 0; i < 200; ++i) {
        const double now = ZKTimeServer::getAppTimeInS();
        ASSERT_GE(now, previous);
        previous = now;
    }
}

TEST(ZKTimeServer, AppTimeInMSIsALocalTimeOfDayDifference) {
    ZKTimeServer::InitTimeServer();
    const int offsetBefore = QDateTime::currentDateTime().offsetFromUtc();
    const long long ms0 = ZKTimeServer::getAppTimeInMS();
    const double s0 = ZKTimeServer::getAppTimeInS();
    long long ms1 = 0;
    double s1 = 0.0;
    int offsetAfter = 0;
    {
        FixedTimeZone zone;
        offsetAfter = QDateTime::currentDateTime().offsetFromUtc();
        ms1 = ZKTimeServer::getAppTimeInMS();
        s1 = ZKTimeServer::getAppTimeInS();
    }
    if (offsetAfter == offsetBefore)
        GTEST_SKIP() << "the machine is already in the test's time zone";
    // Kept: a change of zone moves this clock with the local time of day
    // (modulo a day); the clock in seconds does not move.
    const long long day = 86400000;
    const long long jump =
        (((ms1 - ms0) - (offsetAfter - offsetBefore) * 1000LL) % day + day) % day;
    EXPECT_LT(jump, 1000) << ms0 << " " << ms1;
    EXPECT_LT(s1 - s0, 1.0);
}

TEST(ZKTimeServer, EpochClocksAreWallClockMilliseconds) {
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const long long ms = ZKTimeServer::getMilliSecondsSinceEpoch();
    const double s = ZKTimeServer::getSecondsSinceEpoch();
    const long long msAfter = ZKTimeServer::getMilliSecondsSinceEpoch();
    EXPECT_GE(ms, before);
    EXPECT_LE(msAfter, QDateTime::currentMSecsSinceEpoch());
    EXPECT_GE(s * 1000.0, double(ms));
    EXPECT_LE(s * 1000.0, double(msAfter));
    EXPECT_EQ(ZKTimeServer::perfCounter(), 0);
    EXPECT_EQ(ZKTimeServer::perfCounterD(), 0.0);
    EXPECT_EQ(ZKTimeServer::getSysTimeInMS(), 0);
    EXPECT_EQ(ZKTimeServer::getSysTimeInS(), 0.0);
}

TEST(ZKTimeServer, SystemTimeIsLocalOrUtc) {
    FixedTimeZone zone;
    for (bool local : {true, false}) {
        SCOPED_TRACE(local ? "local" : "utc");
        const Qt::TimeSpec spec = local ? Qt::LocalTime : Qt::UTC;
        const QDateTime before = QDateTime::currentDateTimeUtc();
        int y, mo, d, h, mi, s, ms;
        const int ret = ZKTimeServer::getSystemTime(y, mo, d, h, mi, s, ms, local);
        ZKDateTime dt;
        ZKTimeServer::getSystemDateTime(dt, local);
        const QDateTime after = QDateTime::currentDateTimeUtc();
        EXPECT_EQ(ret, ms);
        const QDateTime read(QDate(y, mo, d), QTime(h, mi, s, ms), spec);
        EXPECT_GE(read, before);
        EXPECT_LE(read, after);
        EXPECT_GE(dt.getQDateTime(), read);
        EXPECT_LE(dt.getQDateTime(), after);
        EXPECT_EQ(dt.getQDateTime().timeSpec(), spec);
    }
    // The zone is 5:30 ahead (331 minutes if a minute turned in between).
    int uh, umi, us, ums, h, mi, s, ms;
    ZKTimeServer::getSystemTime(uh, umi, us, ums, false);
    ZKTimeServer::getSystemTime(h, mi, s, ms, true);
    const int shift = ((h * 60 + mi) - (uh * 60 + umi) + 1440) % 1440;
    EXPECT_TRUE(shift == 330 || shift == 331) << shift;

    int y, mo, d;
    ZKTimeServer::getSystemDate(y, mo, d, false);
    EXPECT_EQ(QDate(y, mo, d), QDateTime::currentDateTimeUtc().date());
    ZKDate today;
    ZKTimeServer::getSystemDate(today);
    EXPECT_EQ(today, ZKDate(QDate::currentDate()));
    EXPECT_EQ(ZKTimeServer::getDayOfWeek(true), QDate::currentDate().dayOfWeek());
}

TEST(ZKTimeServer, DayAndMonthNames) {
    ZKStringC days, months;
    for (int i = -1; i <= 7; ++i)
        days += ZKTimeServer::getDayAsString(i, false) + "," +
                ZKTimeServer::getDayAsString(i, true) + ";";
    for (int i = -1; i <= 12; ++i)
        months += ZKTimeServer::getMonthAsString(i, false) + "," +
                  ZKTimeServer::getMonthAsString(i, true) + ";";
    EXPECT_EQ(days, ",;Monday,Mon;Tuesday,Tue;Wednesday,Wed;Thursday,Thu;Friday,Fri;"
                    "Saturday,Sat;Sunday,Sun;,;");
    EXPECT_EQ(months, ",;January,Jan;February,Feb;March,Mar;April,Apr;May,May;June,Jun;July,Jul;"
                      "August,Aug;September,Sep;October,Oct;November,Nov;December,Dec;,;");
}

TEST(ZKTimeServer, DayOfWeekAsStringIsShiftedByOneDay) {
    // Kept on purpose: Monday reads "Tuesday" and Sunday reads empty. Indexed
    // by QDate::dayOfWeek (1 = Monday).
    const char* const longNames[8] = {"",       "Tuesday",  "Wednesday", "Thursday",
                                      "Friday", "Saturday", "Sunday",    ""};
    const char* const shortNames[8] = {"", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun", ""};
    for (bool shortForm : {false, true}) {
        const QDate today = QDate::currentDate();
        const ZKStringC name = ZKTimeServer::getDayOfWeekAsString(shortForm, true);
        if (QDate::currentDate() != today)
            continue; // midnight passed between the two readings
        EXPECT_EQ(name, (shortForm ? shortNames : longNames)[today.dayOfWeek()]);
    }
}
