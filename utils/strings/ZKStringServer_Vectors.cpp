#include "ZKStringServer.h"

#include "ZKVec.h"
#include "internal/ZKFormat.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

ZKStringC ZKStringServer::m_asStrFormat("%f");

namespace {

// The bytes a bounded format keeps.
constexpr long long kKept = ZKInternal::kFormatBufferSize - 1;
// A double's exact decimal expansion ends within this many digits: past it,
// more precision only adds zeros (or, for %g, nothing) and never changes a
// digit already written.
constexpr long long kExactDigits = 1100;
// Widths and precisions up to this bound go to vsnprintf as they are. Larger
// ones are rewritten into smaller ones giving the same first 4095 bytes, so
// that vsnprintf neither pads nor computes digits (nor allocates for them)
// far past what is kept.
constexpr long long kFieldBound = kKept + kExactDigits;

// One conversion of a frame: the directive from its "%" to its letter.
struct Conversion {
    int begin = 0;
    int end = 0;
    std::string flags;
    long long width = -1;     // -1: none
    long long precision = -1; // -1: none
    char kind = 0;
};

// A run of decimal digits, saturated just above INT_MAX.
long long readNumber(const char*& p) {
    long long value = 0;
    for (; *p >= '0' && *p <= '9'; ++p)
        value = std::min<long long>(value * 10 + (*p - '0'), (long long)INT_MAX + 1);
    return value;
}

// Lists the conversions of `frame`. False when one of them does not take
// exactly one double (f, e, g or a in either case, with flags, width,
// precision and the no-op "l"): arguments of another type, through a
// pointer or by position are never read, and fields vsnprintf refuses (above
// INT_MAX) are not asked for. A directive cut off by the frame's own bound is
// dropped, as vsnprintf stops there.
bool parseFrame(ZKStringC& frame, std::vector<Conversion>& conversions) {
    const char* const start = frame.constData();
    for (const char* p = start; *p; ++p) {
        if (*p != '%')
            continue;
        Conversion c;
        c.begin = int(p - start);
        if (*++p == '%')
            continue;
        while (*p && std::strchr("-+ #0'", *p))
            c.flags += *p++;
        c.width = (*p >= '0' && *p <= '9') ? readNumber(p) : -1;
        if (*p == '.') {
            ++p;
            c.precision = readNumber(p);
        }
        if (*p == 'l')
            ++p;
        if (!*p) {
            frame.truncate(c.begin);
            return true;
        }
        if (!std::strchr("fFeEgGaA", *p) || c.width > INT_MAX || c.precision > INT_MAX)
            return false;
        c.kind = *p;
        c.end = int(p - start) + 1;
        conversions.push_back(c);
    }
    return true;
}

std::string directive(const Conversion& c, long long width, long long precision) {
    std::string text = "%" + c.flags;
    if (width >= 0)
        text += std::to_string(width);
    if (precision >= 0)
        text += "." + std::to_string(precision);
    return text + c.kind;
}

// Length of the field of c for v at `precision`, without its width.
long long bodyLength(const Conversion& c, long long precision, double v) {
    ZKInternal::CLocaleScope cLocale;
    return std::snprintf(nullptr, 0, directive(c, -1, precision).c_str(), v);
}

// The directive that writes the same first 4095 bytes as c does for v, with
// a width and a precision within kFieldBound.
std::string boundedDirective(const Conversion& c, double v) {
    long long precision = c.precision;
    long long length; // of the field as c writes it, without its width
    long long boundedLength;
    if (precision > kFieldBound) {
        boundedLength = bodyLength(c, kFieldBound, v);
        // One more character per digit, or none (%g without "#", inf, nan).
        const long long perDigit = bodyLength(c, kFieldBound + 1, v) - boundedLength;
        length = boundedLength + perDigit * (precision - kFieldBound);
        precision = kFieldBound;
    } else {
        length = boundedLength = bodyLength(c, precision, v);
    }
    // Padding beyond the kept bytes is cut anyway: keep no more than those.
    const long long width =
        c.width > length ? boundedLength + std::min(c.width - length, kKept) : -1;
    return directive(c, width, precision);
}

// Formats the components with `frame`, conversion i taking component i.
ZKStringC formatFrame(ZKStringC frame, const double* components, int n) {
    std::vector<Conversion> conversions;
    if (!parseFrame(frame, conversions) || int(conversions.size()) > n)
        return ZKStringC();
    ZKStringC bounded;
    int copied = 0;
    for (size_t i = 0; i < conversions.size(); ++i) {
        const Conversion& c = conversions[i];
        if (c.width <= kFieldBound && c.precision <= kFieldBound)
            continue;
        bounded.append(frame.constData() + copied, c.begin - copied);
        bounded.append(boundedDirective(c, components[i]).c_str());
        copied = c.end;
    }
    if (copied > 0) {
        bounded.append(frame.constData() + copied, frame.size() - copied);
        frame = bounded;
    }
    ZKStringC text;
    if (n == 2)
        text.printf(frame.constData(), components[0], components[1]);
    else
        text.printf(frame.constData(), components[0], components[1], components[2]);
    return text;
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
    const double components[] = {x, y};
    return formatFrame(componentFrame(format, 2), components, 2);
}

ZKStringC formatComponents(const ZKStringC& format, double x, double y, double z) {
    const double components[] = {x, y, z};
    return formatFrame(componentFrame(format, 3), components, 3);
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
