// ZKColor.h: the colour values ZKColor3ub, ZKColor4ub, ZKColor3f and ZKColor4f.
//
// A byte colour holds red, green, blue (and alpha for 4ub) as unsigned 8-bit
// values, a float colour the same as floats meant to lie in 0 to 1; each type
// holds exactly its components in that order, with no padding, so arrays of
// colours and the binary file store them as their in-memory image. Default
// construction gives zeros (transparent black for the 4-component types).
//
// Float to byte is always value x 255 truncated toward zero, with no rounding
// and no clamping: callers keep float components in 0 to 1. A value outside
// 0 to 1 wraps modulo 256 as the processor's 32-bit conversion does (a value
// beyond the 32-bit range, or not a number, gives 0).
//
// The byte types' HSL members use degrees (0 to 360) for the hue and percent
// (0 to 100) for saturation and lightness; ZKColorServer works with HSL as
// fractions in 0 to 1.
//
// Threads: plain values; the named constants are immutable.
#pragma once

#include "ZKExport.h"

class ZKColor3f;
class ZKColor4f;
class ZKColor4ub;

class ZKUTILS_EXPORT ZKColor3ub {
public:
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;

    constexpr ZKColor3ub() = default;
    constexpr ZKColor3ub(unsigned char r_, unsigned char g_, unsigned char b_)
        : r(r_), g(g_), b(b_) {}

    void set(unsigned char r_, unsigned char g_, unsigned char b_) { r = r_, g = g_, b = b_; }
    // Each component x 255, truncated; the alpha of the 4f form is ignored.
    void setRGB(const ZKColor3f& c);
    void setRGB(const ZKColor4f& c);
    // Copies red, green and blue.
    void setRGB(const ZKColor4ub& c);

    // h in degrees, s and l in percent.
    void setHSL(float h, float s, float l);
    void getHSL(float& h, float& s, float& l) const;

    friend bool operator==(const ZKColor3ub& x, const ZKColor3ub& y) {
        return x.r == y.r && x.g == y.g && x.b == y.b;
    }
    friend bool operator!=(const ZKColor3ub& x, const ZKColor3ub& y) { return !(x == y); }

    // Kept as tabled: s_DARKGRAY, s_LIGHTGRAY and s_PINK are black, and the
    // byte orange differs from the 4ub one (128 against 127 green).
    static const ZKColor3ub s_BLACK;
    static const ZKColor3ub s_WHITE;
    static const ZKColor3ub s_RED;
    static const ZKColor3ub s_GREEN;
    static const ZKColor3ub s_BLUE;
    static const ZKColor3ub s_CYAN;
    static const ZKColor3ub s_DARKGRAY;
    static const ZKColor3ub s_GRAY;
    static const ZKColor3ub s_LIGHTGRAY;
    static const ZKColor3ub s_MAGENTA;
    static const ZKColor3ub s_ORANGE;
    static const ZKColor3ub s_PINK;
    static const ZKColor3ub s_YELLOW;
};

class ZKUTILS_EXPORT ZKColor4ub {
public:
    unsigned char r = 0;
    unsigned char g = 0;
    unsigned char b = 0;
    unsigned char a = 0;

    constexpr ZKColor4ub() = default;
    constexpr ZKColor4ub(unsigned char r_, unsigned char g_, unsigned char b_, unsigned char a_)
        : r(r_), g(g_), b(b_), a(a_) {}

    void set(unsigned char r_, unsigned char g_, unsigned char b_, unsigned char a_) {
        r = r_, g = g_, b = b_, a = a_;
    }
    // Components and alpha x 255, truncated.
    void setRGBA(const ZKColor4f& c);
    void setRGBA(const ZKColor3f& c, float alpha);
    // Colour copied or converted, alpha as given.
    void setRGBA(const ZKColor3ub& c, unsigned char alpha);
    void setRGBA(const ZKColor3f& c, unsigned char alpha);
    // Red, green and blue only; alpha unchanged.
    void setRGB(const ZKColor4f& c);
    void setRGB(const ZKColor3f& c);
    void setRGB(const ZKColor3ub& c);

    friend bool operator==(const ZKColor4ub& x, const ZKColor4ub& y) {
        return x.r == y.r && x.g == y.g && x.b == y.b && x.a == y.a;
    }
    friend bool operator!=(const ZKColor4ub& x, const ZKColor4ub& y) { return !(x == y); }

    // Kept as tabled: s_DARKGRAY, s_LIGHTGRAY and s_PINK are opaque black, and
    // this orange has green 127 where the 3ub one has 128. All are opaque.
    static const ZKColor4ub s_BLACK;
    static const ZKColor4ub s_WHITE;
    static const ZKColor4ub s_RED;
    static const ZKColor4ub s_GREEN;
    static const ZKColor4ub s_BLUE;
    static const ZKColor4ub s_CYAN;
    static const ZKColor4ub s_DARKGRAY;
    static const ZKColor4ub s_GRAY;
    static const ZKColor4ub s_LIGHTGRAY;
    static const ZKColor4ub s_MAGENTA;
    static const ZKColor4ub s_ORANGE;
    static const ZKColor4ub s_PINK;
    static const ZKColor4ub s_YELLOW;
};

class ZKUTILS_EXPORT ZKColor3f {
public:
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;

    constexpr ZKColor3f() = default;
    constexpr ZKColor3f(float r_, float g_, float b_) : r(r_), g(g_), b(b_) {}

    void set(float r_, float g_, float b_) { r = r_, g = g_, b = b_; }

    friend bool operator==(const ZKColor3f& x, const ZKColor3f& y) {
        return x.r == y.r && x.g == y.g && x.b == y.b;
    }
    friend bool operator!=(const ZKColor3f& x, const ZKColor3f& y) { return !(x == y); }
};

class ZKUTILS_EXPORT ZKColor4f {
public:
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;

    constexpr ZKColor4f() = default;
    constexpr ZKColor4f(float r_, float g_, float b_, float a_) : r(r_), g(g_), b(b_), a(a_) {}

    void set(float r_, float g_, float b_, float a_) { r = r_, g = g_, b = b_, a = a_; }

    friend bool operator==(const ZKColor4f& x, const ZKColor4f& y) {
        return x.r == y.r && x.g == y.g && x.b == y.b && x.a == y.a;
    }
    friend bool operator!=(const ZKColor4f& x, const ZKColor4f& y) { return !(x == y); }
};
