#include "ZKDate.h"
#include "ZKDateTime.h"

#include <gtest/gtest.h>

TEST(ZKDate, FieldsValidityAndComparisons) {
    const ZKDate leap(2024, 2, 29), next(2024, 3, 1);
    EXPECT_TRUE(leap.isValid());
    EXPECT_EQ(leap.getYear() * 10000 + leap.getMonth() * 100 + leap.getDay(), 20240229);
    EXPECT_EQ(leap.getDayOfYear(), 60);
    EXPECT_FALSE(ZKDate(2023, 2, 29).isValid());
    EXPECT_FALSE(ZKDate().isValid());
    EXPECT_EQ(next.daysTo(leap), -1);
    EXPECT_EQ(ZKDate(2023, 12, 31).daysTo(ZKDate(2025, 1, 1)), 367);
    EXPECT_TRUE(leap < next && leap <= next && leap != next && !(leap >= next));
    EXPECT_EQ(ZKDate::currentDate(), ZKDate(QDate::currentDate()));
}

TEST(ZKDate, TextFormsUseQtFormatsAndLatin1Bytes) {
    const ZKDate d = ZKDate::fromString(ZKStringW("2026-11-15"), ZKStringW("yyyy-MM-dd"));
    EXPECT_EQ(d, ZKDate(2026, 11, 15));
    EXPECT_FALSE(ZKDate::fromString(ZKStringC("2026-13-01"), ZKStringC("yyyy-MM-dd")).isValid());
    EXPECT_EQ(d.toString(ZKStringW("d.M.yy")), QStringLiteral("15.11.26"));
    EXPECT_TRUE(ZKDate().toStringC(ZKStringC("yyyy")).isEmpty());
    // The byte forms read and write Latin-1: the byte E9 is the letter e-acute.
    EXPECT_EQ(d.toStringC(ZKStringC("'\xe9t\xe9' yyyyMMdd")), ZKStringC("\xe9t\xe9 20261115"));
    EXPECT_EQ(ZKDate::fromString(ZKStringC("\xe9 15/11/2026"), ZKStringC("'\xe9' dd/MM/yyyy")), d);
}

TEST(ZKDateTime, FieldsComparisonsAndText) {
    const ZKDateTime dt(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17, 250), Qt::UTC));
    EXPECT_EQ(dt.getYear() * 10000 + dt.getMonth() * 100 + dt.getDay(), 20261115);
    EXPECT_EQ(dt.getDayOfYear(), 319);
    EXPECT_EQ(dt.getHour() * 10000 + dt.getMinute() * 100 + dt.getSecond(), 234117);
    EXPECT_EQ(dt.getMillisecond(), 250);

    // Qt's text form; a UTC value names its zone, a local one does not.
    EXPECT_EQ(dt.toString(), QStringLiteral("Sun Nov 15 23:41:17 2026 GMT"));
    const ZKDateTime local(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17), Qt::LocalTime));
    EXPECT_EQ(local.toStringC(), "Sun Nov 15 23:41:17 2026");
    EXPECT_EQ(dt.toString(ZKStringW("yyyy-MM-dd HH:mm:ss.zzz")),
              QStringLiteral("2026-11-15 23:41:17.250"));
    EXPECT_EQ(dt.toStringC(ZKStringC("HH'h\xb0'mm")), ZKStringC("23h\xb0"
                                                                "41"));

    // Comparisons are between instants: the same moment in another offset is equal.
    const ZKDateTime same(
        QDateTime(QDate(2026, 11, 16), QTime(1, 41, 17, 250), Qt::OffsetFromUTC, 2 * 3600));
    EXPECT_TRUE(dt == same);
    EXPECT_FALSE(dt != same);
    const ZKDateTime later(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17, 251), Qt::UTC));
    EXPECT_TRUE(dt < later && dt <= later && later > dt && !(later <= dt));

    ZKDateTime assigned; // assigning a QDateTime is how file dates are filled
    EXPECT_FALSE(assigned.getQDateTime().isValid());
    assigned = QDateTime(QDate(2000, 1, 2), QTime(3, 4, 5));
    EXPECT_EQ(assigned.getSecond(), 5);
    const QDateTime before = QDateTime::currentDateTime();
    const ZKDateTime now = ZKDateTime::currentDateTime();
    EXPECT_GE(now.getQDateTime(), before);
    EXPECT_EQ(now.getQDateTime().timeSpec(), Qt::LocalTime);
}
