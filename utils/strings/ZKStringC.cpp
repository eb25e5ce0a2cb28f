#include "ZKStringC.h"

#include "internal/ZKFormat.h"

#include <cctype>
#include <cstdarg>
#include <cstring>

int ZKStringC::findFirst2(char a, char b, int from) const {
    const int ia = indexOf(a, from);
    const int ib = indexOf(b, from);
    if (ia == -1)
        return ib;
    if (ib == -1)
        return ia;
    return ia < ib ? ia : ib;
}

int ZKStringC::findLast2(char a, char b, int from) const {
    const int ia = lastIndexOf(a, from);
    const int ib = lastIndexOf(b, from);
    return ia > ib ? ia : ib;
}

namespace {

bool sameBytes(const QByteArray& a, const QByteArray& b) {
    return a.size() == b.size() && std::memcmp(a.constData(), b.constData(), size_t(a.size())) == 0;
}

bool matchesAt(const ZKStringC& self, const ZKStringC& s, int pos, bool caseSensitive) {
    if (self.size() < s.size())
        return false;
    if (s.isEmpty())
        return true;
    ZKStringC part = self.mid(pos, s.size());
    if (caseSensitive)
        return sameBytes(part, s);
    ZKStringC lowered = s;
    return sameBytes(part.toLower(), lowered.toLower());
}

template <int (*Map)(int)> void mapBytes(ZKStringC& s) {
    char* p = s.data();
    const int n = s.size();
    for (int i = 0; i < n; ++i) {
        // Bytes go to the C library as signed chars, so 0x80-0xFF stay as they are.
        const signed char c = static_cast<signed char>(p[i]);
        if (c >= 0)
            p[i] = char(Map(c));
    }
}

} // namespace

bool ZKStringC::startsWith(const ZKStringC& s, bool caseSensitive) const {
    return matchesAt(*this, s, 0, caseSensitive);
}

bool ZKStringC::endsWith(const ZKStringC& s, bool caseSensitive) const {
    return matchesAt(*this, s, size() - s.size(), caseSensitive);
}

ZKStringC& ZKStringC::toLower() {
    mapBytes<::tolower>(*this);
    return *this;
}

ZKStringC& ZKStringC::toUpper() {
    mapBytes<::toupper>(*this);
    return *this;
}

ZKStringC ZKStringC::toLowerCopy() const {
    ZKStringC copy = *this;
    return copy.toLower();
}

ZKStringC ZKStringC::toUpperCopy() const {
    ZKStringC copy = *this;
    return copy.toUpper();
}

void ZKStringC::appendPattern(int n, const ZKStringC& pattern) {
    // A negative product reserves the current size: the reservation never shrinks.
    const long long extra = (long long)n * pattern.size();
    reserve(extra < 0 ? size() : int(size() + extra));
    for (int i = 0; i < n; ++i)
        append(pattern);
}

ZKStringC ZKStringC::intStr(int v) {
    ZKStringC s;
    s.printf("%d", v);
    return s;
}

ZKStringC ZKStringC::doubleStr(double v) {
    ZKStringC s;
    s.printf("%f", v);
    return s;
}

int ZKStringC::strcmp(const char* a, const char* b) {
    return qstrcmp(a, b);
}

int ZKStringC::strcmp_nocase(const char* a, const char* b) {
    return qstricmp(a, b);
}

int ZKStringC::compare(const ZKStringC& s) const {
    return qstrcmp(constData(), s.constData());
}

int ZKStringC::compareNoCase(const ZKStringC& s) const {
    return qstricmp(constData(), s.constData());
}

void ZKStringC::printf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    *this = ZKInternal::vformat4096(format, args);
    va_end(args);
}
