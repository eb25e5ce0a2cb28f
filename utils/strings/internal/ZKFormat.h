// ZKFormat.h (internal): the bounded C formatting used by every printf-like
// helper of the library: vsnprintf into 4096 bytes, keeping at most 4095.
#pragma once

#include <QByteArray>

#include <cstdarg>
#include <cstdio>

namespace ZKInternal {

constexpr int kFormatBufferSize = 4096;

// Longer results are cut to their first 4095 bytes without a report: a
// deliberate bound, kept so.
inline QByteArray vformat4096(const char* format, va_list args) {
    char buffer[kFormatBufferSize];
    buffer[0] = '\0';
    std::vsnprintf(buffer, sizeof buffer, format, args);
    return QByteArray(buffer);
}

} // namespace ZKInternal
