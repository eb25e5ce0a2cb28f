// ZKStringC.h: the library's 8-bit string.
//
// A ZKStringC is exactly one implicitly shared QByteArray with a few
// searching, comparing, case and formatting helpers on top: it adds no data
// and no virtual function, so every QByteArray operation is part of its
// interface and copies are cheap (writing detaches). The bytes carry no
// encoding of their own: ASCII, paths for C calls, UTF-8 from ZKStringW.
//
// Indices and counts are int; "not found" is -1. Case mapping is per byte
// with the C library's tolower/toupper on signed chars, so only ASCII letters
// change case. Formatting helpers format into 4096 bytes and keep at most
// 4095; longer results are cut silently.
//
// Threads: a value must not be changed from two threads at once; separate
// copies may live in separate threads.
#pragma once

#include "ZKExport.h"

#include <QByteArray>

class ZKUTILS_EXPORT ZKStringC : public QByteArray {
public:
    using QByteArray::QByteArray;
    ZKStringC() = default;
    ZKStringC(const QByteArray& other) : QByteArray(other) {}
    ZKStringC(QByteArray&& other) noexcept : QByteArray(std::move(other)) {}

    using QByteArray::contains;
    using QByteArray::count;
    using QByteArray::endsWith;
    using QByteArray::startsWith;

    // Smallest index of a or b at or after `from`; -1 when neither is found.
    int findFirst2(char a, char b, int from = 0) const;
    // Largest index of a or b at or before `from` (-1: from the end); -1 when
    // neither is found.
    int findLast2(char a, char b, int from = -1) const;

    bool contains(const ZKStringC& s) const { return indexOf(s, 0) != -1; }
    bool contains(char c) const { return indexOf(c, 0) != -1; }
    // Occurrences of s, overlapping ones included.
    int count(const ZKStringC& s) const { return QByteArray::count(s); }
    int count(char c) const { return QByteArray::count(c); }

    // An empty s is a prefix (suffix) of every string; a string shorter than s
    // never starts (ends) with it. Without case sensitivity both sides are
    // compared lower-cased; s itself is not changed.
    bool startsWith(const ZKStringC& s, bool caseSensitive = true) const;
    bool endsWith(const ZKStringC& s, bool caseSensitive = true) const;

    // Change the ASCII letters in place and return the string itself.
    ZKStringC& toLower();
    ZKStringC& toUpper();
    ZKStringC toLowerCopy() const;
    ZKStringC toUpperCopy() const;

    // Reserves size() + n * pattern.size() bytes, then appends pattern n times
    // (nothing for n <= 0).
    void appendPattern(int n, const ZKStringC& pattern);

    // "%d" and "%f" (six digits after the point, no exponent).
    static ZKStringC intStr(int v);
    static ZKStringC doubleStr(double v);

    // qstrcmp / qstricmp: byte order, a null pointer sorts before any string.
    static int strcmp(const char* a, const char* b);
    static int strcmp_nocase(const char* a, const char* b);
    // Compare the character data; the comparison stops at the first zero byte.
    int compare(const ZKStringC& s) const;
    int compareNoCase(const ZKStringC& s) const;

    // Replaces the content with the vsnprintf formatting of the arguments,
    // cut to its first 4095 bytes.
    void printf(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
};
