#include "ZKDate.h"

static_assert(sizeof(ZKDate) == sizeof(QDate), "a ZKDate is exactly one QDate");

ZKDate ZKDate::currentDate() {
    return ZKDate(QDate::currentDate());
}

ZKDate ZKDate::fromString(const ZKStringW& text, const ZKStringW& format) {
    return ZKDate(QDate::fromString(text, format));
}

ZKDate ZKDate::fromString(const ZKStringC& text, const ZKStringC& format) {
    return fromString(ZKStringW(QString::fromLatin1(text)), ZKStringW(QString::fromLatin1(format)));
}

ZKStringW ZKDate::toString(const ZKStringW& format) const {
    return m_date.toString(format);
}

ZKStringC ZKDate::toStringC(const ZKStringC& format) const {
    return m_date.toString(QString::fromLatin1(format)).toLatin1();
}
