// ZKColorServer: HSL conversions, blends and palettes. The value-to-colour
// scales are in ZKColorServer_Values.cpp.
#include "ZKColorServer.h"

#include "internal/ZKColorConvert.h"

#include <algorithm>
#include <cmath>

using ZKInternal::combine;
using ZKInternal::fromFloat;
using ZKInternal::toBytes;
using ZKInternal::toUnit;

namespace {

// Brings a hue into 0 to 1 by whole turns: add 1 while below 0, subtract 1
// while above 1. Far from that range the same result is reached in one step,
// so no input can make the loop run long.
float wrapHue(float t) {
    if (std::fabs(t) < 64.0f) {
        while (t < 0.0f)
            t += 1.0f;
        while (t > 1.0f)
            t -= 1.0f;
        return t;
    }
    if (!std::isfinite(t))
        return t;
    return t < 0.0f ? t - std::floor(t) : t - std::ceil(t) + 1.0f;
}

float hueComponent(float p, float q, float t) {
    t = wrapHue(t);
    if (t < 1.0f / 6.0f)
        return p + (q - p) * 6.0f * t;
    if (t < 0.5f)
        return q;
    if (t < 2.0f / 3.0f)
        return p + (q - p) * (2.0f / 3.0f - t) * 6.0f;
    return p;
}

template <typename C> C paletteBlend(const ZKStaticArray<C>& palette, float t, const C& white) {
    const long long n = palette.size();
    if (n == 0)
        return white;
    if (n == 1 || !(t > 0.0f))
        return palette[0];
    if (t >= 1.0f)
        return palette[n - 1];
    const float x = float(n - 1) * t;
    const long long i = static_cast<long long>(x);
    if (i >= n - 1) // rounding of (count - 1) x t for very long palettes
        return palette[n - 1];
    const float f = x - float(i);
    return combine(palette[i], palette[i + 1],
                   [f](auto a, auto b) { return fromFloat(a * (1.0f - f) + b * f, a); });
}

void addColor(ZKArray<ZKColor3ub>& palette, int r, int g, int b) {
    palette.push_back(ZKColor3ub(r, g, b));
}

void addColor(ZKArray<ZKColor4ub>& palette, int r, int g, int b) {
    palette.push_back(ZKColor4ub(r, g, b, 255));
}

// b x 255 / (count - 1), truncated, without overflowing for large counts.
int level(long long b, long long count) {
    return int(b * 255 / (count - 1));
}

template <typename C> void buildPalette(ZKArray<C>& palette, int n) {
    palette.clear();
    if (n > 0)
        palette.reserve(n);
    if (n == 1) {
        addColor(palette, 255, 0, 0);
        return;
    }
    const int k = int(std::cbrt(float(n)) + 0.5f);
    if (k < 1)
        return;
    if (k == 1) {
        for (int b = 0; b < n; ++b)
            addColor(palette, 122, 122, level(b, n));
        return;
    }
    // Kept: each grid cell takes its share of the colours still missing, so
    // the last green level of red level 0 takes them all and later red levels
    // get none; callers depend on this exact distribution.
    for (int r = 0; r < k; ++r) {
        const int red = level(r, k);
        for (int g = 0; g < k; ++g) {
            const int green = level(g, k);
            const long long missing = n - palette.size();
            const int cells = (k - 1 - g) * (k - 1 - r) + 1;
            const int m = int(float(missing) / float(cells) + 0.5f);
            for (int b = 0; b < m; ++b)
                addColor(palette, red, green, m == 1 ? 0 : level(b, m));
        }
    }
}

} // namespace

ZKColor3ub ZKColorServer::getPalette10Color_3ub(int i) {
    static const ZKColor3ub palette[10] = {
        {255, 0, 0}, {0, 0, 127},   {0, 255, 0}, {127, 127, 0}, {0, 0, 255},
        {127, 0, 0}, {255, 255, 0}, {0, 127, 0}, {255, 0, 255}, {127, 0, 127}};
    const int k = i % 10;
    return palette[k < 0 ? k + 10 : k];
}

void ZKColorServer::RGB_2_HSL(ZKColor3f& out, const ZKColor3f& in) {
    const float max = std::max({in.r, in.g, in.b});
    const float min = std::min({in.r, in.g, in.b});
    const float l = (max + min) / 2.0f;
    if (max == min) {
        out.set(0.0f, 0.0f, l);
        return;
    }
    const float d = max - min;
    const float s = l <= 0.5f ? d / (max + min) : d / (2.0f - max - min);
    float h;
    if (in.r == max)
        h = (in.g - in.b) / d; // kept unwrapped: slightly negative when blue exceeds green
    else if (in.g == max)
        h = (in.b - in.r) / d + 2.0f;
    else
        h = (in.r - in.g) / d + 4.0f;
    out.set(h / 6.0f, s, l);
}

ZKColor3f ZKColorServer::RGB_2_HSL(const ZKColor3f& in) {
    ZKColor3f out;
    RGB_2_HSL(out, in);
    return out;
}

void ZKColorServer::HSL_2_RGB(ZKColor3f& out, const ZKColor3f& in) {
    const float h = in.r, s = in.g, l = in.b;
    if (s == 0.0f) {
        out.set(l, l, l);
        return;
    }
    const float q = l < 0.5f ? l * (1.0f + s) : l + s - l * s;
    const float p = 2.0f * l - q;
    out.set(hueComponent(p, q, h + 1.0f / 3.0f), hueComponent(p, q, h),
            hueComponent(p, q, h - 1.0f / 3.0f));
}

ZKColor3f ZKColorServer::HSL_2_RGB(const ZKColor3f& in) {
    ZKColor3f out;
    HSL_2_RGB(out, in);
    return out;
}

void ZKColorServer::RGB_2_HSL(ZKColor3ub& out, const ZKColor3ub& in) {
    out = toBytes(RGB_2_HSL(toUnit(in)));
}

ZKColor3ub ZKColorServer::RGB_2_HSL(const ZKColor3ub& in) {
    return toBytes(RGB_2_HSL(toUnit(in)));
}

void ZKColorServer::HSL_2_RGB(ZKColor3ub& out, const ZKColor3ub& in) {
    out = toBytes(HSL_2_RGB(toUnit(in)));
}

ZKColor3ub ZKColorServer::HSL_2_RGB(const ZKColor3ub& in) {
    return toBytes(HSL_2_RGB(toUnit(in)));
}

ZKColor3f ZKColorServer::multiplySatAndLum(const ZKColor3f& c, float satFactor, float lumFactor) {
    ZKColor3f hsl = RGB_2_HSL(c);
    hsl.g *= satFactor;
    hsl.b *= lumFactor;
    return HSL_2_RGB(hsl);
}

ZKColor3ub ZKColorServer::multiplySatAndLum(const ZKColor3ub& c, float satFactor, float lumFactor) {
    return toBytes(multiplySatAndLum(toUnit(c), satFactor, lumFactor));
}

ZKColor3f ZKColorServer::multiplyLum(const ZKColor3f& c, float f) {
    return ZKColor3f(std::min(c.r * f, 1.0f), std::min(c.g * f, 1.0f), std::min(c.b * f, 1.0f));
}

ZKColor3ub ZKColorServer::multiplyLum(const ZKColor3ub& c, float f) {
    return toBytes(multiplyLum(toUnit(c), f));
}

namespace {

template <typename C> C blendWeighted(const C& a, const C& b, float wa, float wb) {
    return combine(a, b, [wa, wb](auto x, auto y) { return fromFloat(x * wa + y * wb, x); });
}

template <typename C> C blendByteWeighted(const C& a, const C& b, int wa, int wb) {
    return combine(a, b, [wa, wb](int x, int y) {
        return static_cast<unsigned char>(y * wb / 255 + x * wa / 255); // kept: wraps above 255
    });
}

} // namespace

ZKColor3ub ZKColorServer::colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, float wa, float wb) {
    return blendWeighted(a, b, wa, wb);
}

ZKColor4ub ZKColorServer::colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, float wa, float wb) {
    return blendWeighted(a, b, wa, wb);
}

ZKColor3f ZKColorServer::colorBlend(const ZKColor3f& a, const ZKColor3f& b, float wa, float wb) {
    return blendWeighted(a, b, wa, wb);
}

ZKColor3ub ZKColorServer::colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, float t) {
    return blendWeighted(a, b, 1.0f - t, t);
}

ZKColor4ub ZKColorServer::colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, float t) {
    return blendWeighted(a, b, 1.0f - t, t);
}

ZKColor3f ZKColorServer::colorBlend(const ZKColor3f& a, const ZKColor3f& b, float t) {
    return blendWeighted(a, b, 1.0f - t, t);
}

ZKColor3ub ZKColorServer::colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, unsigned char wa,
                                     unsigned char wb) {
    return blendByteWeighted(a, b, wa, wb);
}

ZKColor4ub ZKColorServer::colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, unsigned char wa,
                                     unsigned char wb) {
    return blendByteWeighted(a, b, wa, wb);
}

ZKColor3ub ZKColorServer::colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, unsigned char t) {
    return blendByteWeighted(a, b, 255 - t, t);
}

ZKColor4ub ZKColorServer::colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, unsigned char t) {
    return blendByteWeighted(a, b, 255 - t, t);
}

ZKColor4ub ZKColorServer::colorBlend(const ZKStaticArray<ZKColor4ub>& palette, float t) {
    return paletteBlend(palette, t, ZKColor4ub(255, 255, 255, 255));
}

ZKColor3ub ZKColorServer::colorBlend(const ZKStaticArray<ZKColor3ub>& palette, float t) {
    return paletteBlend(palette, t, ZKColor3ub(255, 255, 255));
}

ZKColor3f ZKColorServer::colorBlend(const ZKStaticArray<ZKColor3f>& palette, float t) {
    return paletteBlend(palette, t, ZKColor3f(1.0f, 1.0f, 1.0f));
}

void ZKColorServer::buildColorPalette(ZKArray<ZKColor3ub>& palette, int n) {
    buildPalette(palette, n);
}

void ZKColorServer::buildColorPalette(ZKArray<ZKColor4ub>& palette, int n) {
    buildPalette(palette, n);
}

ZKColor3f ZKColorServer::getColor3fInRange_WhiteRed(float t) {
    return HSL_2_RGB(ZKColor3f(0.0f, t, 1.0f - 0.5f * t));
}

ZKColor3f ZKColorServer::getColor3fInRange_WhiteBlack(float t) {
    return ZKColor3f(1.0f - t, 1.0f - t, 1.0f - t);
}

ZKColor3f ZKColorServer::getColor3fInRange_ColdWarm(float t) {
    return HSL_2_RGB(ZKColor3f(0.5f * (1.0f - t), 1.0f, 0.5f));
}

void ZKColorServer::convertColors(ZKArray<ZKColor3ub>& out, const ZKArray<ZKColor3f>& in) {
    out.resize(in.size());
    for (long long i = 0; i < in.size(); ++i)
        out[i] = toBytes(in[i]);
}
