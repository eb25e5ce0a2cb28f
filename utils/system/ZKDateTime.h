// ZKDateTime.h: a date and a time of day.
//
// A ZKDateTime holds exactly one QDateTime and is copied by value; it is
// built from a QDateTime (ZKDisk::getFileDates fills one that way). A default
// value is null and invalid. Comparisons follow QDateTime (instants in time,
// whatever the time spec). The text forms use Qt's format letters; without a
// format, Qt's default text form ("Sun Nov 15 23:41:17 2026").
//
// Threads: a value must not be changed from two threads at once.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <QDateTime>

class ZKUTILS_EXPORT ZKDateTime {
public:
    ZKDateTime() = default;
    ZKDateTime(const QDateTime& dateTime) : m_dateTime(dateTime) {}

    int getYear() const { return m_dateTime.date().year(); }
    int getMonth() const { return m_dateTime.date().month(); }
    int getDay() const { return m_dateTime.date().day(); }
    int getDayOfYear() const { return m_dateTime.date().dayOfYear(); }
    int getHour() const { return m_dateTime.time().hour(); }
    int getMinute() const { return m_dateTime.time().minute(); }
    int getSecond() const { return m_dateTime.time().second(); }
    int getMillisecond() const { return m_dateTime.time().msec(); }

    const QDateTime& getQDateTime() const { return m_dateTime; }

    bool operator==(const ZKDateTime& o) const { return m_dateTime == o.m_dateTime; }
    bool operator!=(const ZKDateTime& o) const { return m_dateTime != o.m_dateTime; }
    bool operator<(const ZKDateTime& o) const { return m_dateTime < o.m_dateTime; }
    bool operator<=(const ZKDateTime& o) const { return m_dateTime <= o.m_dateTime; }
    bool operator>(const ZKDateTime& o) const { return m_dateTime > o.m_dateTime; }
    bool operator>=(const ZKDateTime& o) const { return m_dateTime >= o.m_dateTime; }

    // QDateTime::toString(format); toStringC reads the format as Latin-1 and
    // returns Latin-1 bytes.
    ZKStringW toString(const ZKStringW& format) const;
    ZKStringC toStringC(const ZKStringC& format) const;
    // Qt::TextDate, for example "Sun Nov 15 23:41:17 2026".
    ZKStringW toString() const;
    ZKStringC toStringC() const;

    // The current local date and time.
    static ZKDateTime currentDateTime();

private:
    QDateTime m_dateTime;
};
