// ZKStringW.h: the library's Unicode string.
//
// A ZKStringW is exactly one implicitly shared QString (UTF-16) with
// conversions to and from ZKStringC, C-style formatting and a few search
// helpers; it adds no data and no virtual function, so every QString
// operation is part of its interface.
//
// The two conversions are deliberately asymmetric and stay so:
// - byte string to wide string (the constructor, convertFrom) decodes UTF-8
//   up to the first zero byte;
// - wide string to byte string (convertTo, getAsStringC) encodes Latin-1,
//   "?" for a character above U+00FF, cut at the first zero character;
// - toUtf8 / fromUtf8 are the explicit UTF-8 round trip.
//
// Two formatters differ on purpose: printf/printf_/intStr/doubleStr use Qt's
// formatter with no length limit; SPrintf/SPrintf_ format with vsnprintf into
// 4096 bytes (at most 4095 kept) and decode the bytes as UTF-8.
//
// Threads: as for QString, a value must not be changed from two threads at
// once; copies in different threads are independent.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

#include <QString>

#include <cstdarg>

class ZKUTILS_EXPORT ZKStringW : public QString {
public:
    using QString::QString;
    ZKStringW() = default;
    ZKStringW(const QString& other) : QString(other) {}
    ZKStringW(QString&& other) noexcept : QString(std::move(other)) {}
    // UTF-8 decoding of s up to its first zero byte.
    ZKStringW(const ZKStringC& s);

    using QString::arg;
    using QString::endsWith;
    using QString::startsWith;

    void convertFrom(const ZKStringC& s);
    // Latin-1 with "?" above U+00FF, cut at the first zero character.
    void convertTo(ZKStringC& out) const;
    ZKStringC getAsStringC() const;

    ZKStringC toUtf8() const;
    static void toUtf8(ZKStringC& out, const ZKStringW& s);
    // A null s gives a null string; otherwise the bytes of s up to its first
    // zero byte (never beyond its size) are decoded as UTF-8.
    void fromUtf8(const ZKStringC& s);
    static void fromUtf8(ZKStringW& out, const ZKStringC& s);

    // Each char is taken as an unsigned byte (its Latin-1 character). The
    // smaller index found; when a is not found, whatever the search for b gave.
    int findFirst2(char a, char b, int from = 0, bool caseSensitive = true) const;
    int findFirst2(QChar a, QChar b, int from = 0, bool caseSensitive = true) const;
    // The larger index found; when a is not found, the result for b. from -1
    // searches from the end.
    int findLast2(char a, char b, int from = -1, bool caseSensitive = true) const;

    bool startsWith(const ZKStringW& s, bool caseSensitive = true) const;
    bool endsWith(const ZKStringW& s, bool caseSensitive = true) const;

    // Whole-string comparisons: a zero character does not end them.
    int compare(const ZKStringW& s) const;
    int compareNoCase(const ZKStringW& s) const;

    // Reserves size() + n * pattern.size() (only size() when that product is
    // negative), then appends pattern n times.
    void appendPattern(int n, const ZKStringW& pattern);

    // Kept: these compute the changed text and discard it; the string is left
    // unchanged and returned. Callers that need a real case change use
    // QString::toUpper / QString::toLower.
    ZKStringW& toUpper();
    ZKStringW& toLower();
    ZKStringW toUpperCopy() const;
    ZKStringW toLowerCopy() const;

    // Qt's formatter (QString::vasprintf): no length limit, %s is UTF-8.
    void printf(const char* format, ...);
    void printf_(const ZKStringC& format, va_list args);
    static ZKStringW intStr(int v);
    static ZKStringW doubleStr(double v);

    // vsnprintf into 4096 bytes, at most 4095 kept, decoded as UTF-8.
    static ZKStringW SPrintf(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 1, 2)))
#endif
        ;
    static ZKStringW SPrintf_(const char* format, va_list args);

    // Numbered-marker substitution (QString::arg): the lowest-numbered marker
    // takes the first argument, the next-lowest the second, all in one pass.
    ZKStringW arg(const ZKStringW& a) const;
    ZKStringW arg(const ZKStringW& a, const ZKStringW& b) const;
    ZKStringW arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c) const;
    ZKStringW arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c,
                  const ZKStringW& d) const;
    ZKStringW arg(const ZKStringW& a, const ZKStringW& b, const ZKStringW& c, const ZKStringW& d,
                  const ZKStringW& e) const;
};
