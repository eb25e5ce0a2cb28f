// ZKColorScales.h (internal): the value-to-colour rules of ZKColorServer,
// written once for float, double and int values.
#pragma once

#include "ZKColorServer.h"
#include "internal/ZKColorConvert.h"

#include <cmath>

namespace ZKInternal {

inline const ZKColor4ub kOpaqueWhite(255, 255, 255, 255);
inline const ZKColor4ub kOpaqueBlack(0, 0, 0, 255);

inline void mapUnit(ZKColor4ub& out, float t, int scale, const ZKStaticArray<ZKColor4ub>* palette) {
    if (!(t > 0.0f))
        t = 0.0f;
    else if (t > 1.0f)
        t = 1.0f;
    switch (scale) {
    case 0:
        if (palette)
            out = ZKColorServer::colorBlend(*palette, t);
        break;
    case 1: {
        const unsigned char grey = unitToByte(1.0f - t);
        out.set(grey, grey, grey, 255);
        break;
    }
    case 2: {
        const unsigned char grey = unitToByte(t);
        out.set(grey, grey, grey, 255);
        break;
    }
    case 3:
        out.setRGBA(ZKColorServer::getColor3fInRange_ColdWarm(t), static_cast<unsigned char>(255));
        break;
    default:
        break;
    }
}

template <typename T> bool isFiniteValue(T v) {
    return std::isfinite(v);
}
inline bool isFiniteValue(int) {
    return true;
}

// Each rule maps a value to t; allWhite() says that every value gives opaque
// white whatever it is.

// (v - min) / (max - min) in the value type; equal bounds give white.
template <typename T> struct LinearRule {
    T min, max;
    bool allWhite() const { return max == min; }
    float operator()(T v) const { return float((v - min) / (max - min)); }
};

// Kept: the 0.2 offset of the integer scale, so that the minimum does not map
// exactly to the start of the scale.
struct IntLinearRule {
    int min, max;
    bool allWhite() const { return false; }
    float operator()(int v) const {
        return float((double(v) - min + 0.2) / (double(max) - min + 0.2));
    }
};

// 0 at or below 0, else 1 - log10(max / v) / decades; min takes no part.
template <typename T> struct LogRule {
    T max, decades;
    LogRule(T max_, T decades_) : max(max_), decades(decades_ < 0 ? T(5) : decades_) {}
    bool allWhite() const { return false; }
    float operator()(T v) const {
        if (v <= 0)
            return 0.0f;
        return float(T(1) - std::log10(max / v) / decades);
    }
};

struct IntLogRule {
    LogRule<double> rule;
    IntLogRule(int max, double decades) : rule(max, decades) {}
    bool allWhite() const { return false; }
    float operator()(int v) const { return rule(double(v)); }
};

template <typename T, typename Rule>
void colorOne(ZKColor4ub& out, T v, int scale, const Rule& rule,
              const ZKStaticArray<ZKColor4ub>* palette) {
    if (rule.allWhite() || !isFiniteValue(v)) {
        out = kOpaqueWhite;
        return;
    }
    mapUnit(out, rule(v), scale, palette);
}

template <typename T, typename Rule>
void colorAll(ZKArray<ZKColor4ub>& colors, const ZKArray<T>& values, int scale, const Rule& rule,
              const ZKStaticArray<ZKColor4ub>* palette) {
    colors.resize(values.size(), kOpaqueBlack);
    for (long long i = 0; i < values.size(); ++i)
        colorOne(colors[i], values[i], scale, rule, palette);
}

template <typename T, typename Rule>
void colorSome(const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors,
               const ZKArray<T>& values, int scale, const Rule& rule,
               const ZKStaticArray<ZKColor4ub>* palette) {
    if (colors.size() != values.size())
        return;
    for (int i : indices) {
        if (i >= 0 && i < values.size())
            colorOne(colors[i], values[i], scale, rule, palette);
    }
}

} // namespace ZKInternal
