#include "ZKStringServer.h"

#include "ZKVec.h"

#include <cstring>

ZKStringC ZKStringServer::m_asStrFormat("%f");

namespace {

// Widths and precisions above the format buffer could not be kept anyway and
// would make vsnprintf pad or allocate for nothing: such formats are refused.
constexpr long kMaxFieldNumber = 4096;

// Skips a run of decimal digits; false when their value exceeds the bound.
bool skipFieldNumber(const char*& p) {
    long value = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        value = value * 10 + (*p - '0');
        if (value > kMaxFieldNumber)
            return false;
    }
    return true;
}

// The number of conversions in `format` when every one of them takes one
// double (f, e, g, a in either case with optional flags, width, precision and
// the no-op "l"); -1 when some conversion takes anything else or is cut off.
int countDoubleConversions(const char* format) {
    int count = 0;
    for (const char* p = format; *p; ++p) {
        if (*p != '%')
            continue;
        ++p;
        if (*p == '%')
            continue;
        while (*p && std::strchr("-+ #0'", *p))
            ++p;
        if (!skipFieldNumber(p))
            return -1;
        if (*p == '.') {
            ++p;
            if (!skipFieldNumber(p))
                return -1;
        }
        if (*p == 'l')
            ++p;
        if (!*p || !std::strchr("fFeEgGaA", *p))
            return -1;
        ++count;
    }
    return count;
}

// "(%s, %s, %s)" (or two) with `format` put in for each "%s", through the
// same bounded formatter as the text itself. Kept: both are cut at 4095
// bytes without a report.
ZKStringC componentFrame(const ZKStringC& format, int n) {
    ZKStringC frame;
    if (n == 2)
        frame.printf("(%s, %s)", format.constData(), format.constData());
    else
        frame.printf("(%s, %s, %s)", format.constData(), format.constData(), format.constData());
    return frame;
}

ZKStringC formatComponents(const ZKStringC& format, double x, double y) {
    const ZKStringC frame = componentFrame(format, 2);
    ZKStringC text;
    if (countDoubleConversions(frame.constData()) == 2)
        text.printf(frame.constData(), x, y);
    return text;
}

ZKStringC formatComponents(const ZKStringC& format, double x, double y, double z) {
    const ZKStringC frame = componentFrame(format, 3);
    ZKStringC text;
    if (countDoubleConversions(frame.constData()) == 3)
        text.printf(frame.constData(), x, y, z);
    return text;
}

} // namespace

ZKStringC ZKStringServer::vecAsStr(const ZKVec3f& v, const ZKStringC& format) {
    return formatComponents(format, double(v.x), double(v.y), double(v.z));
}

ZKStringC ZKStringServer::vecAsStr(const ZKVec3d& v, const ZKStringC& format) {
    return formatComponents(format, v.x, v.y, v.z);
}

ZKStringC ZKStringServer::vecAsStr(const ZKVec2f& v, const ZKStringC& format) {
    return formatComponents(format, double(v.x), double(v.y));
}

ZKStringC ZKStringServer::vecAsStr(const ZKVec2i& v) {
    ZKStringC text;
    text.printf("(%d, %d)", v.x, v.y);
    return text;
}

void ZKStringServer::setAsStrFloatFormat(const ZKStringC& format) {
    m_asStrFormat = format;
}
