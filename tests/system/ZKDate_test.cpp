#include "ZKDate.h"
#include "ZKDateTime.h"

#include <gtest/gtest.h>

TEST(ZKDate, FieldsValidityAndComparisons) {
    const ZKDate leap(2024, 2, 29);
    EXPECT_TRUE(leap.isValid());
    EXPECT_EQ(leap.getYear(), 2024);
    EXPECT_EQ(leap.getMonth(), 2);
    EXPECT_EQ(leap.getDay(), 29);
    EXPECT_EQ(leap.getDayOfYear(), 60);
    EXPECT_FALSE(ZKDate(2023, 2, 29).isValid());
    EXPECT_FALSE(ZKDate().isValid());

    const ZKDate next(2024, 3, 1);
    EXPECT_EQ(leap.daysTo(next), 1);
    EXPECT_EQ(next.daysTo(leap), -1);
    EXPECT_EQ(ZKDate(2023, 12, 31).daysTo(ZKDate(2025, 1, 1)), 367);

    EXPECT_TRUE(leap < next);
    EXPECT_TRUE(leap <= next);
    EXPECT_FALSE(leap > next);
    EXPECT_FALSE(leap >= next);
    EXPECT_TRUE(leap != next);
    EXPECT_FALSE(leap == next);
    const ZKDate copy = leap;
    EXPECT_TRUE(copy == leap);
    EXPECT_TRUE(copy <= leap);
    EXPECT_TRUE(copy >= leap);
    EXPECT_FALSE(copy < leap);

    EXPECT_EQ(ZKDate::currentDate(), ZKDate(QDate::currentDate()));
}

TEST(ZKDate, TextFormsUseQtFormatsAndLatin1Bytes) {
    const ZKDate d = ZKDate::fromString(ZKStringW("2026-11-15"), ZKStringW("yyyy-MM-dd"));
    EXPECT_EQ(d, ZKDate(2026, 11, 15));
    EXPECT_EQ(ZKDate::fromString(ZKStringC("15/11/2026"), ZKStringC("dd/MM/yyyy")), d);
    EXPECT_FALSE(ZKDate::fromString(ZKStringC("2026-13-01"), ZKStringC("yyyy-MM-dd")).isValid());
    EXPECT_FALSE(ZKDate::fromString(ZKStringC(""), ZKStringC("yyyy")).isValid());

    EXPECT_EQ(d.toString(ZKStringW("d.M.yy")), QStringLiteral("15.11.26"));
    EXPECT_EQ(d.toStringC(ZKStringC("yyyyMMdd")), "20261115");
    EXPECT_TRUE(ZKDate().toStringC(ZKStringC("yyyy")).isEmpty());

    // The byte forms read and write Latin-1: the byte E9 is the letter e-acute.
    EXPECT_EQ(d.toStringC(ZKStringC("'\xe9t\xe9' yyyy")), ZKStringC("\xe9t\xe9 2026"));
    EXPECT_EQ(d.toString(ZKStringW(QString::fromUtf8("'\xc3\xa9' yyyy"))),
              QString::fromUtf8("\xc3\xa9 2026"));
    EXPECT_EQ(ZKDate::fromString(ZKStringC("\xe9 2026-11-15"), ZKStringC("'\xe9' yyyy-MM-dd")), d);
}

TEST(ZKDateTime, FieldsComparisonsAndText) {
    const ZKDateTime dt(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17, 250), Qt::UTC));
    EXPECT_EQ(dt.getYear(), 2026);
    EXPECT_EQ(dt.getMonth(), 11);
    EXPECT_EQ(dt.getDay(), 15);
    EXPECT_EQ(dt.getDayOfYear(), 319);
    EXPECT_EQ(dt.getHour(), 23);
    EXPECT_EQ(dt.getMinute(), 41);
    EXPECT_EQ(dt.getSecond(), 17);
    EXPECT_EQ(dt.getMillisecond(), 250);

    // Qt's text form; a UTC value names its zone, a local one does not.
    EXPECT_EQ(dt.toString(), QStringLiteral("Sun Nov 15 23:41:17 2026 GMT"));
    const ZKDateTime local(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17), Qt::LocalTime));
    EXPECT_EQ(local.toString(), QStringLiteral("Sun Nov 15 23:41:17 2026"));
    EXPECT_EQ(local.toStringC(), "Sun Nov 15 23:41:17 2026");
    EXPECT_EQ(dt.toString(ZKStringW("yyyy-MM-dd HH:mm:ss.zzz")),
              QStringLiteral("2026-11-15 23:41:17.250"));
    EXPECT_EQ(dt.toStringC(ZKStringC("HH'h\xb0'mm")), ZKStringC("23h\xb0"
                                                                "41"));

    // Comparisons are between instants: the same moment in another offset is equal.
    const ZKDateTime sameInstant(
        QDateTime(QDate(2026, 11, 16), QTime(1, 41, 17, 250), Qt::OffsetFromUTC, 2 * 3600));
    EXPECT_TRUE(dt == sameInstant);
    EXPECT_FALSE(dt != sameInstant);
    const ZKDateTime later(QDateTime(QDate(2026, 11, 15), QTime(23, 41, 17, 251), Qt::UTC));
    EXPECT_TRUE(dt < later);
    EXPECT_TRUE(dt <= later);
    EXPECT_TRUE(later > dt);
    EXPECT_TRUE(later >= dt);
    EXPECT_FALSE(dt > later);
    EXPECT_FALSE(later <= dt);

    // Assigning a QDateTime is how file dates are filled.
    ZKDateTime assigned;
    EXPECT_FALSE(assigned.getQDateTime().isValid());
    assigned = QDateTime(QDate(2000, 1, 2), QTime(3, 4, 5));
    EXPECT_EQ(assigned.getDay(), 2);
    EXPECT_EQ(assigned.getSecond(), 5);

    const QDateTime before = QDateTime::currentDateTime();
    const ZKDateTime now = ZKDateTime::currentDateTime();
    EXPECT_GE(now.getQDateTime(), before);
    EXPECT_LE(now.getQDateTime(), QDateTime::currentDateTime());
    EXPECT_EQ(now.getQDateTime().timeSpec(), Qt::LocalTime);
}
