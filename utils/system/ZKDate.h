// ZKDate.h: a calendar date.
//
// A ZKDate holds exactly one QDate (a day number) and is copied by value.
// A default date is null and invalid. Comparisons and daysTo follow QDate;
// the text forms use Qt's format letters ("yyyy-MM-dd", "d MMM yyyy", ...).
//
// Threads: a value must not be changed from two threads at once.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <QDate>

class ZKUTILS_EXPORT ZKDate {
public:
    ZKDate() = default;
    ZKDate(int year, int month, int day) : m_date(year, month, day) {}
    ZKDate(const QDate& date) : m_date(date) {}

    bool isValid() const { return m_date.isValid(); }
    int getYear() const { return m_date.year(); }
    int getMonth() const { return m_date.month(); }
    int getDay() const { return m_date.day(); }
    int getDayOfYear() const { return m_date.dayOfYear(); }
    // Days from this date to `other`: negative when `other` is earlier.
    long long daysTo(const ZKDate& other) const { return m_date.daysTo(other.m_date); }

    const QDate& getQDate() const { return m_date; }

    bool operator==(const ZKDate& o) const { return m_date == o.m_date; }
    bool operator!=(const ZKDate& o) const { return m_date != o.m_date; }
    bool operator<(const ZKDate& o) const { return m_date < o.m_date; }
    bool operator<=(const ZKDate& o) const { return m_date <= o.m_date; }
    bool operator>(const ZKDate& o) const { return m_date > o.m_date; }
    bool operator>=(const ZKDate& o) const { return m_date >= o.m_date; }

    // Today's local date.
    static ZKDate currentDate();
    // QDate::fromString with a Qt format; text that does not match gives an
    // invalid date. The byte form reads both strings as Latin-1.
    static ZKDate fromString(const ZKStringW& text, const ZKStringW& format);
    static ZKDate fromString(const ZKStringC& text, const ZKStringC& format);

    // QDate::toString(format); an invalid date gives an empty string. toStringC
    // reads the format as Latin-1 and returns the text as Latin-1 bytes.
    ZKStringW toString(const ZKStringW& format) const;
    ZKStringC toStringC(const ZKStringC& format) const;

private:
    QDate m_date;
};
