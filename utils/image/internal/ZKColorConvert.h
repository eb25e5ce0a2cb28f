// ZKColorConvert.h (internal): the float-to-byte rule of the colour types and
// the per-channel combinators that let every colour twin (3ub, 4ub, 3f) share
// one blend algorithm.
#pragma once

#include "ZKColor.h"

namespace ZKInternal {

// A float truncated toward zero into a byte, wrapping modulo 256 as the
// processor's 32-bit conversion does; beyond the 32-bit range or not a number
// gives 0, where that conversion gives 0x80000000.
inline unsigned char truncToByte(float x) {
    if (!(x > -2147483648.0f && x < 2147483648.0f))
        return 0;
    return static_cast<unsigned char>(static_cast<int>(x));
}

// A 0-to-1 component as a byte: x 255, truncated.
inline unsigned char unitToByte(float v) {
    return truncToByte(v * 255.0f);
}

inline float byteToUnit(unsigned char v) {
    return float(v) / 255.0f;
}

inline ZKColor3f toUnit(const ZKColor3ub& c) {
    return ZKColor3f(byteToUnit(c.r), byteToUnit(c.g), byteToUnit(c.b));
}

inline ZKColor3ub toBytes(const ZKColor3f& c) {
    return ZKColor3ub(unitToByte(c.r), unitToByte(c.g), unitToByte(c.b));
}

// The result channel type from a value computed in float: bytes truncate,
// floats stay.
inline unsigned char fromFloat(float x, unsigned char) {
    return truncToByte(x);
}
inline float fromFloat(float x, float) {
    return x;
}

// Applies f channel by channel to a and b (alpha included) and stores each
// result in the channel type of the colour.
template <typename F> ZKColor3ub combine(const ZKColor3ub& a, const ZKColor3ub& b, F f) {
    return ZKColor3ub(f(a.r, b.r), f(a.g, b.g), f(a.b, b.b));
}
template <typename F> ZKColor4ub combine(const ZKColor4ub& a, const ZKColor4ub& b, F f) {
    return ZKColor4ub(f(a.r, b.r), f(a.g, b.g), f(a.b, b.b), f(a.a, b.a));
}
template <typename F> ZKColor3f combine(const ZKColor3f& a, const ZKColor3f& b, F f) {
    return ZKColor3f(f(a.r, b.r), f(a.g, b.g), f(a.b, b.b));
}

} // namespace ZKInternal
