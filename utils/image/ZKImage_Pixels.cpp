// ZKImage: packing conversion, fills and colour mixing. The loops work on
// fixed-size blocks of pixels so that the compiler turns them into vector
// code; the results are those of the plain per-pixel formulas.
#include "ZKImage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t kBlock = 16;

// Calls fn(i) for every i below n, in blocks of a constant count.
template <typename Fn> inline void forEachIndex(std::size_t n, Fn fn) {
    std::size_t i = 0;
    for (; i + kBlock <= n; i += kBlock)
        for (std::size_t j = 0; j < kBlock; ++j)
            fn(i + j);
    for (; i < n; ++i)
        fn(i);
}

// Destination channel k takes source channel I[k]; -1 writes 255 (alpha).
template <int SrcDepth, int DstDepth, int I0, int I1, int I2, int I3>
void convertPixels(const unsigned char* __restrict src, unsigned char* __restrict dst,
                   std::size_t n) {
    forEachIndex(n, [src, dst](std::size_t i) {
        const unsigned char* s = src + i * SrcDepth;
        unsigned char* d = dst + i * DstDepth;
        d[0] = s[I0];
        d[1] = s[I1];
        d[2] = s[I2];
        if constexpr (DstDepth == 4)
            d[3] = I3 < 0 ? 255 : s[I3 < 0 ? 0 : I3];
    });
}

// Red and blue exchanged in 4-byte pixels, alpha kept: one 32-bit word each.
void swapRedBlue4(const unsigned char* __restrict src, unsigned char* __restrict dst,
                  std::size_t n) {
    forEachIndex(n, [src, dst](std::size_t i) {
        std::uint32_t v;
        std::memcpy(&v, src + 4 * i, 4);
        const std::uint32_t w = (v & 0xff00ff00u) | ((v >> 16) & 0xffu) | ((v & 0xffu) << 16);
        std::memcpy(dst + 4 * i, &w, 4);
    });
}

bool isColourPacking(_ZKImagePacking packing) {
    return packing >= ZK_PACKING_RGBA && packing <= ZK_PACKING_BGR;
}

bool isBlueFirst(_ZKImagePacking packing) {
    return packing == ZK_PACKING_BGRA || packing == ZK_PACKING_BGR;
}

using Converter = void (*)(const unsigned char*, unsigned char*, std::size_t);

// The converter between two different packings; null for the pairs that are
// not supported.
Converter converterFor(_ZKImagePacking from, _ZKImagePacking to) {
    if (!isColourPacking(to))
        return nullptr;
    const int toDepth = ZKImage::depthOf(to);
    if (from == ZK_PACKING_GREY)
        return toDepth == 4 ? convertPixels<1, 4, 0, 0, 0, -1> : convertPixels<1, 3, 0, 0, 0, 0>;
    if (!isColourPacking(from))
        return nullptr;
    const bool exchange = isBlueFirst(from) != isBlueFirst(to);
    const int fromDepth = ZKImage::depthOf(from);
    if (fromDepth == toDepth) // the same depth in a different packing: red and blue exchanged
        return fromDepth == 4 ? swapRedBlue4 : convertPixels<3, 3, 2, 1, 0, 0>;
    if (fromDepth == 3)
        return exchange ? convertPixels<3, 4, 2, 1, 0, -1> : convertPixels<3, 4, 0, 1, 2, -1>;
    return exchange ? convertPixels<4, 3, 2, 1, 0, 0> : convertPixels<4, 3, 0, 1, 2, 0>;
}

// The bytes of one pixel of colour (r, g, b, a) in the packing's order;
// returns the depth.
int pixelBytes(unsigned char* out, _ZKImagePacking packing, const ZKColor4ub& c) {
    const bool bgr = isBlueFirst(packing);
    out[0] = bgr ? c.b : c.r;
    out[1] = c.g;
    out[2] = bgr ? c.r : c.b;
    out[3] = c.a;
    return ZKImage::depthOf(packing);
}

// Repeats the first `unit` bytes of dst over its first `total` bytes, copying
// from a window that stays in cache (a multiple of every depth).
void repeatPattern(unsigned char* dst, std::size_t total, std::size_t unit) {
    constexpr std::size_t kWindow = 12 * 8192;
    std::size_t filled = std::min(unit, total);
    while (filled < total) {
        const std::size_t chunk = std::min({filled, total - filled, kWindow});
        std::memcpy(dst + filled, dst, chunk);
        filled += chunk;
    }
}

void fillBytes(unsigned char* dst, std::size_t total, const unsigned char* pixel, int depth) {
    if (total == 0)
        return;
    std::memcpy(dst, pixel, std::min<std::size_t>(depth, total));
    repeatPattern(dst, total, std::size_t(depth));
}

} // namespace

void ZKImage::convertPacking(ZKImage& out, _ZKImagePacking packing) const {
    if (packing == m_packing) {
        out.copy(*this);
        return;
    }
    ZKImage converted;
    if (hasPixels()) {
        converted.init(getSize(), packing);
        if (converted.m_pixels) {
            const std::size_t n = std::size_t(m_width) * std::size_t(m_height);
            if (Converter convert = converterFor(m_packing, packing))
                convert(m_pixels, converted.m_pixels, n);
            else
                std::memset(converted.m_pixels, 0, converted.getByteCount());
        }
    }
    out.swap(converted);
}

void ZKImage::convertPacking(_ZKImagePacking packing) {
    ZKImage converted;
    convertPacking(converted, packing);
    swap(converted);
}

void ZKImage::fillWithColor(const ZKColor3ub& c) {
    fillWithColor(c, 255);
}

void ZKImage::fillWithColor(const ZKColor3ub& c, unsigned char alpha) {
    if (!hasPixels() || !isColourPacking(m_packing))
        return;
    unsigned char pixel[4];
    const int depth = pixelBytes(pixel, m_packing, ZKColor4ub(c.r, c.g, c.b, alpha));
    fillBytes(m_pixels, getByteCount(), pixel, depth);
}

void ZKImage::mixWithColor(const ZKColor3ub& c, unsigned char alpha) {
    if (!hasPixels() || !isColourPacking(m_packing))
        return;
    // Each byte v becomes (v x mul + add) >> 8 with per-channel factors over
    // a 48-byte period (a whole number of 3- and 4-byte pixels). A colour
    // channel has mul = 255 - alpha and add = c x alpha; the alpha channel has
    // mul = 256, add = 0, which keeps it. Every sum fits in 16 bits.
    // Kept: the shift divides by 256, not 255, so alpha 255 gives c x 255 / 256.
    constexpr std::size_t kPeriod = 48;
    unsigned char colour[4];
    const int depth = pixelBytes(colour, m_packing, ZKColor4ub(c.r, c.g, c.b, 0));
    std::uint16_t mul[kPeriod], add[kPeriod];
    for (std::size_t k = 0; k < kPeriod; ++k) {
        const std::size_t channel = k % std::size_t(depth);
        const bool isAlpha = channel == 3;
        mul[k] = isAlpha ? 256 : std::uint16_t(255 - alpha);
        add[k] = isAlpha ? 0 : std::uint16_t(colour[channel] * alpha);
    }
    unsigned char* p = m_pixels;
    const std::size_t total = getByteCount();
    std::size_t i = 0;
    for (; i + kPeriod <= total; i += kPeriod)
        for (std::size_t k = 0; k < kPeriod; ++k)
            p[i + k] = static_cast<unsigned char>(std::uint16_t(p[i + k] * mul[k] + add[k]) >> 8);
    for (std::size_t k = 0; i < total; ++i, ++k)
        p[i] = static_cast<unsigned char>(std::uint16_t(p[i] * mul[k] + add[k]) >> 8);
}

void ZKImage::fillRectWithColor(const ZKPixRect& rect, const ZKColor4ub& c) {
    fillRectRows(rect, c, c);
}

void ZKImage::fillRectWithVGradient(const ZKPixRect& rect, const ZKColor4ub& first,
                                    const ZKColor4ub& second) {
    fillRectRows(rect, first, second);
}

void ZKImage::fillWithVGradient(const ZKColor4ub& first, const ZKColor4ub& second) {
    fillRectRows(ZKPixRect(0, 0, m_width, m_height), first, second);
}

// Row i of the n rows of rect gets first + (second - first) x i / (n - 1)
// channel by channel; only the part inside the image is written.
void ZKImage::fillRectRows(const ZKPixRect& rect, const ZKColor4ub& first,
                           const ZKColor4ub& second) {
    if (!hasPixels() || !isColourPacking(m_packing))
        return;
    const long long x0 = std::max<long long>(rect.left, 0);
    const long long x1 = std::min<long long>(rect.right, m_width);
    const long long y0 = std::max<long long>(rect.top, 0);
    const long long y1 = std::min<long long>(rect.bottom, m_height);
    if (x1 <= x0 || y1 <= y0)
        return;
    const long long steps = (long long)rect.bottom - rect.top - 1;
    const auto channelAt = [steps](unsigned char a, unsigned char b, long long i) {
        return static_cast<unsigned char>(steps <= 0 ? a : a + (b - a) * i / steps);
    };
    const std::size_t depth = std::size_t(getDepth());
    const std::size_t rowBytes = std::size_t(m_width) * depth;
    const std::size_t spanBytes = std::size_t(x1 - x0) * depth;
    for (long long y = y0; y < y1; ++y) {
        const long long i = y - rect.top;
        const ZKColor4ub c(channelAt(first.r, second.r, i), channelAt(first.g, second.g, i),
                           channelAt(first.b, second.b, i), channelAt(first.a, second.a, i));
        unsigned char pixel[4];
        pixelBytes(pixel, m_packing, c);
        fillBytes(m_pixels + std::size_t(y) * rowBytes + std::size_t(x0) * depth, spanBytes, pixel,
                  int(depth));
    }
}
