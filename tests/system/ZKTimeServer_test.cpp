#include "ZKDate.h"
#include "ZKDateTime.h"
#include "ZKThread.h"
#include "ZKTimeServer.h"

#include <QByteArray>
#include <QDateTime>
#include <QElapsedTimer>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace {

// Puts the process in a fixed zone 5:30 east of UTC (a POSIX TZ rule, no zone
// file needed), so that local and UTC results differ, and restores the zone.
class FixedTimeZone {
public:
    FixedTimeZone() : m_hadTz(qEnvironmentVariableIsSet("TZ")), m_oldTz(qgetenv("TZ")) {
        qputenv("TZ", "ZKT-5:30");
        tzset();
    }
    ~FixedTimeZone() {
        if (m_hadTz)
            qputenv("TZ", m_oldTz);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    bool m_hadTz;
    QByteArray m_oldTz;
};

QDateTime fromFields(int y, int mo, int d, int h, int mi, int s, int ms, Qt::TimeSpec spec) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s, ms), spec);
}

} // namespace

TEST(ZKTimeServer, AppClockReadsZeroUntilInitialised) {
    // A fresh process: earlier tests of this executable may have started the clock.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const bool zero =
                ZKTimeServer::getAppTimeInS() == 0.0 && ZKTimeServer::getAppTimeInMS() == 0;
            ZKTimeServer::InitTimeServer();
            ZKThread::msleep(20);
            const bool runs = ZKTimeServer::getAppTimeInS() > 0.0;
            std::exit(zero && runs ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ZKTimeServer, AppClockIsMonotonicAndInSeconds) {
    EXPECT_TRUE(ZKTimeServer::InitTimeServer());
    const double s0 = ZKTimeServer::getAppTimeInS();
    const long long ms0 = ZKTimeServer::getAppTimeInMS();
    // A second InitTimeServer must not restart the clock.
    EXPECT_TRUE(ZKTimeServer::InitTimeServer());
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(ZKTimeServer::sleep(60), 0);
    const double elapsedS = double(timer.nsecsElapsed()) * 1e-9;
    const double s1 = ZKTimeServer::getAppTimeInS();
    const long long ms1 = ZKTimeServer::getAppTimeInMS();

    EXPECT_GE(s0, 0.0);
    EXPECT_GE(s1 - s0, 0.059);
    // Seconds, not milliseconds or ticks: the step matches the elapsed time.
    EXPECT_LT(s1 - s0, elapsedS + 0.5);
    EXPECT_GE(ms1 - ms0, 59);
    EXPECT_LT(ms1 - ms0, (long long)(elapsedS * 1000.0) + 500);

    double previous = ZKTimeServer::getAppTimeInS();
    for (int i = 0; i < 1000; ++i) {
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
    // Kept: a change of zone moves the local time of day, and this clock with
    // it (modulo a day: it wraps at midnight); the clock in seconds does not.
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
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    EXPECT_GE(ms, before);
    EXPECT_LE(msAfter, after);
    // The seconds are the milliseconds / 1000.0: their whole part is ms / 1000.
    const long long wholeSeconds = (long long)std::floor(s);
    EXPECT_GE(wholeSeconds, ms / 1000);
    EXPECT_LE(wholeSeconds, msAfter / 1000);
    EXPECT_GE(s * 1000.0, double(ms));
    EXPECT_LE(s * 1000.0, double(msAfter));

    EXPECT_EQ(ZKTimeServer::perfCounter(), 0);
    EXPECT_EQ(ZKTimeServer::perfCounterD(), 0.0);
    EXPECT_EQ(ZKTimeServer::getSysTimeInMS(), 0);
    EXPECT_EQ(ZKTimeServer::getSysTimeInS(), 0.0);

    EXPECT_GE(ZKTimeServer::clock(), 0);
}

TEST(ZKTimeServer, SystemTimeIsLocalOrUtc) {
    FixedTimeZone zone;
    for (bool local : {true, false}) {
        SCOPED_TRACE(local ? "local" : "utc");
        const Qt::TimeSpec spec = local ? Qt::LocalTime : Qt::UTC;
        const QDateTime before = QDateTime::currentDateTimeUtc();
        int y, mo, d, h, mi, s, ms;
        const int ret = ZKTimeServer::getSystemTime(y, mo, d, h, mi, s, ms, local);
        unsigned short ny, nms;
        unsigned char nmo, nd, nh, nmi, ns;
        ZKTimeServer::getSystemTime(ny, nmo, nd, nh, nmi, ns, nms, local);
        ZKDateTime dt;
        ZKTimeServer::getSystemDateTime(dt, local);
        const QDateTime after = QDateTime::currentDateTimeUtc();

        EXPECT_EQ(ret, ms);
        const QDateTime wide = fromFields(y, mo, d, h, mi, s, ms, spec);
        ASSERT_TRUE(wide.isValid());
        EXPECT_GE(wide, before);
        EXPECT_LE(wide, after);
        const QDateTime narrow = fromFields(ny, nmo, nd, nh, nmi, ns, nms, spec);
        EXPECT_GE(narrow, wide);
        EXPECT_LE(narrow, after);
        EXPECT_GE(dt.getQDateTime(), narrow);
        EXPECT_LE(dt.getQDateTime(), after);
        EXPECT_EQ(dt.getQDateTime().timeSpec(), spec);
    }

    // The zone is 5:30 ahead: the local time of day is 330 minutes past the
    // UTC one (331 if a minute turned between the two readings).
    int uh, umi, us, ums, h, mi, s, ms;
    ZKTimeServer::getSystemTime(uh, umi, us, ums, false);
    ZKTimeServer::getSystemTime(h, mi, s, ms, true);
    const int shift = ((h * 60 + mi) - (uh * 60 + umi) + 1440) % 1440;
    EXPECT_TRUE(shift == 330 || shift == 331) << shift;

    int y, mo, d;
    ZKTimeServer::getSystemDate(y, mo, d, true);
    EXPECT_EQ(QDate(y, mo, d), QDate::currentDate());
    ZKTimeServer::getSystemDate(y, mo, d, false);
    EXPECT_EQ(QDate(y, mo, d), QDateTime::currentDateTimeUtc().date());
    ZKDate today;
    ZKTimeServer::getSystemDate(today);
    EXPECT_EQ(today, ZKDate(QDate::currentDate()));
    EXPECT_EQ(ZKTimeServer::getDayOfWeek(true), QDate::currentDate().dayOfWeek());
    EXPECT_EQ(ZKTimeServer::getDayOfWeek(false),
              QDateTime::currentDateTimeUtc().date().dayOfWeek());
}

TEST(ZKTimeServer, DayAndMonthTables) {
    ZKStringC days, shortDays;
    for (int i = 0; i < 7; ++i) {
        days += ZKTimeServer::getDayAsString(i, false) + ",";
        shortDays += ZKTimeServer::getDayAsString(i, true) + ",";
    }
    EXPECT_EQ(days, "Monday,Tuesday,Wednesday,Thursday,Friday,Saturday,Sunday,");
    EXPECT_EQ(shortDays, "Mon,Tue,Wed,Thu,Fri,Sat,Sun,");
    ZKStringC months, shortMonths;
    for (int i = 0; i < 12; ++i) {
        months += ZKTimeServer::getMonthAsString(i, false) + ",";
        shortMonths += ZKTimeServer::getMonthAsString(i, true) + ",";
    }
    EXPECT_EQ(months, "January,February,March,April,May,June,July,August,September,October,"
                      "November,December,");
    EXPECT_EQ(shortMonths, "Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec,");

    EXPECT_EQ(ZKTimeServer::getMonthAsString(11, false), "December");
    EXPECT_TRUE(ZKTimeServer::getMonthAsString(12, false).isEmpty());
    EXPECT_TRUE(ZKTimeServer::getMonthAsString(-1, true).isEmpty());
    EXPECT_TRUE(ZKTimeServer::getDayAsString(-1, true).isEmpty());
    EXPECT_TRUE(ZKTimeServer::getDayAsString(7, false).isEmpty());
}

TEST(ZKTimeServer, DayOfWeekAsStringIsShiftedByOneDay) {
    // Kept on purpose: Monday reads "Tuesday" and Sunday reads empty. Indexed
    // by QDate::dayOfWeek (1 = Monday).
    const char* const expectedLong[8] = {"",       "Tuesday",  "Wednesday", "Thursday",
                                         "Friday", "Saturday", "Sunday",    ""};
    const char* const expectedShort[8] = {"", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun", ""};
    for (bool shortForm : {false, true}) {
        const QDate today = QDate::currentDate();
        const ZKStringC name = ZKTimeServer::getDayOfWeekAsString(shortForm, true);
        if (QDate::currentDate() != today)
            continue; // midnight passed between the two readings
        const int dow = today.dayOfWeek();
        EXPECT_EQ(name, shortForm ? expectedShort[dow] : expectedLong[dow]);
    }
}
