#include "ZKDateTime.h"

static_assert(sizeof(ZKDateTime) == sizeof(QDateTime), "a ZKDateTime is exactly one QDateTime");

ZKStringW ZKDateTime::toString(const ZKStringW& format) const {
    return m_dateTime.toString(format);
}

ZKStringC ZKDateTime::toStringC(const ZKStringC& format) const {
    return m_dateTime.toString(QString::fromLatin1(format)).toLatin1();
}

ZKStringW ZKDateTime::toString() const {
    return m_dateTime.toString(Qt::TextDate);
}

ZKStringC ZKDateTime::toStringC() const {
    return m_dateTime.toString(Qt::TextDate).toLatin1();
}

ZKDateTime ZKDateTime::currentDateTime() {
    return ZKDateTime(QDateTime::currentDateTime());
}
