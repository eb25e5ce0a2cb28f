// ZKFormat.h (internal): the bounded C formatting used by every printf-like
// helper of the library: vsnprintf into 4096 bytes, keeping at most 4095, and
// always with the C locale's numbers (a "." decimal point), whatever locale
// the application set: files written by the library must not depend on it.
#pragma once

#include <QByteArray>

#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <locale.h>

namespace ZKInternal {

constexpr int kFormatBufferSize = 4096;

// Makes the C locale the calling thread's locale while it lives.
class CLocaleScope {
public:
    CLocaleScope() : m_previous(uselocale(cLocale())) {}
    ~CLocaleScope() { uselocale(m_previous); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    static locale_t cLocale() {
        static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(0));
        return c;
    }
    locale_t m_previous;
};

// Longer results are cut to their first 4095 bytes without a report: a
// deliberate bound, kept so.
inline QByteArray vformat4096(const char* format, va_list args) {
    char buffer[kFormatBufferSize];
    buffer[0] = '\0';
    {
        CLocaleScope cLocale;
        std::vsnprintf(buffer, sizeof buffer, format, args);
    }
    return QByteArray(buffer);
}

} // namespace ZKInternal
