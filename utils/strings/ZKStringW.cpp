#include "ZKStringW.h"

#include "internal/ZKFormat.h"

namespace {

Qt::CaseSensitivity qtCase(bool caseSensitive) {
    return caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

QString decodeUtf8UpToZero(const ZKStringC& s) {
    const char* data = s.constData();
    return QString::fromUtf8(data, int(qstrnlen(data, uint(s.size()))));
}

template <typename Ch> int firstOf2(const QString& s, Ch a, Ch b, int from, bool caseSensitive) {
    const int ia = s.indexOf(QChar(a), from, qtCase(caseSensitive));
    const int ib = s.indexOf(QChar(b), from, qtCase(caseSensitive));
    if (ia == -1)
        return ib;
    if (ib == -1)
        return ia;
    return ia < ib ? ia : ib;
}

} // namespace

ZKStringW::ZKStringW(const ZKStringC& s) : QString(decodeUtf8UpToZero(s)) {}

void ZKStringW::convertFrom(const ZKStringC& s) {
    QString::operator=(decodeUtf8UpToZero(s));
}

void ZKStringW::convertTo(ZKStringC& out) const {
    out = getAsStringC();
}

ZKStringC ZKStringW::getAsStringC() const {
    QByteArray latin1 = toLatin1();
    const int zero = latin1.indexOf('\0');
    if (zero >= 0)
        latin1.truncate(zero);
    return latin1;
}

ZKStringC ZKStringW::toUtf8() const {
    return QString::toUtf8();
}

void ZKStringW::toUtf8(ZKStringC& out, const ZKStringW& s) {
    out = s.QString::toUtf8();
}

void ZKStringW::fromUtf8(const ZKStringC& s) {
    fromUtf8(*this, s);
}

void ZKStringW::fromUtf8(ZKStringW& out, const ZKStringC& s) {
    if (s.isNull())
        out = QString();
    else
        out = decodeUtf8UpToZero(s);
}

int ZKStringW::findFirst2(char a, char b, int from, bool caseSensitive) const {
    return firstOf2(*this, uchar(a), uchar(b), from, caseSensitive);
}

int ZKStringW::findFirst2(QChar a, QChar b, int from, bool caseSensitive) const {
    return firstOf2(*this, a, b, from, caseSensitive);
}

int ZKStringW::findLast2(char a, char b, int from, bool caseSensitive) const {
    const int ia = lastIndexOf(QChar(uchar(a)), from, qtCase(caseSensitive));
    const int ib = lastIndexOf(QChar(uchar(b)), from, qtCase(caseSensitive));
    return ia > ib ? ia : ib;
}

bool ZKStringW::startsWith(const ZKStringW& s, bool caseSensitive) const {
    return QString::startsWith(s, qtCase(caseSensitive));
}

bool ZKStringW::endsWith(const ZKStringW& s, bool caseSensitive) const {
    return QString::endsWith(s, qtCase(caseSensitive));
}

int ZKStringW::compare(const ZKStringW& s) const {
    return QString::compare(s, Qt::CaseSensitive);
}

int ZKStringW::compareNoCase(const ZKStringW& s) const {
    return QString::compare(s, Qt::CaseInsensitive);
}

void ZKStringW::appendPattern(int n, const ZKStringW& pattern) {
    const long long extra = (long long)n * pattern.size();
    reserve(extra < 0 ? size() : int(size() + extra));
    for (int i = 0; i < n; ++i)
        QString::append(pattern);
}

ZKStringW& ZKStringW::toUpper() {
    // Kept: the upper-cased text is computed and discarded.
    (void)QString::toUpper();
    return *this;
}

ZKStringW& ZKStringW::toLower() {
    // Kept: the lower-cased text is computed and discarded.
    (void)QString::toLower();
    return *this;
}

ZKStringW ZKStringW::toUpperCopy() const {
    return *this; // kept: an unchanged copy
}

ZKStringW ZKStringW::toLowerCopy() const {
    return *this; // kept: an unchanged copy
}

void ZKStringW::printf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    QString::operator=(QString::vasprintf(format, args));
    va_end(args);
}

void ZKStringW::printf_(const ZKStringC& format, va_list args) {
    QString::operator=(QString::vasprintf(format.constData(), args));
}

ZKStringW ZKStringW::intStr(int v) {
    ZKStringW s;
    s.printf("%d", v);
    return s;
}

ZKStringW ZKStringW::doubleStr(double v) {
    ZKStringW s;
    s.printf("%f", v);
    return s;
}

ZKStringW ZKStringW::SPrintf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    ZKStringW s = SPrintf_(format, args);
    va_end(args);
    return s;
}

ZKStringW ZKStringW::SPrintf_(const char* format, va_list args) {
    return QString::fromUtf8(ZKInternal::vformat4096(format, args));
}

ZKStringW ZKStringW::arg(const ZKStringW& a) const {
    return QString::arg(a, 0, QLatin1Char(' '));
}

ZKStringW ZKStringW::arg(const ZKStringW& a, const ZKStringW& b) const {
    return QString::arg(static_cast<const QString&>(a), static_cast<const QString&>(b));
}

ZKStringW ZKStringW::arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c) const {
    return QString::arg(static_cast<const QString&>(a), static_cast<const QString&>(b),
                        static_cast<const QString&>(c));
}

ZKStringW ZKStringW::arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c,
                         const ZKStringW& d) const {
    return QString::arg(static_cast<const QString&>(a), static_cast<const QString&>(b),
                        static_cast<const QString&>(c), static_cast<const QString&>(d));
}

ZKStringW ZKStringW::arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c,
                         const ZKStringW& d, const ZKStringW& e) const {
    return QString::arg(static_cast<const QString&>(a), static_cast<const QString&>(b),
                        static_cast<const QString&>(c), static_cast<const QString&>(d),
                        static_cast<const QString&>(e));
}
