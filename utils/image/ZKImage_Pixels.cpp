// ZKImage: packing conversion, fills and colour mixing. The loops work on
// fixed-size blocks of pixels so that the compiler turns them into vector
// code; the results are those of the plain per-pixel formulas.
#include "ZKImage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

// On x86 with GCC or Clang the pixel loops are also compiled for AVX2 and
// chosen at run time; elsewhere the portable loops alone are built. Both
// give the same bytes.
#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define ZK_IMAGE_AVX2 1
#define ZK_IMAGE_INLINE inline __attribute__((always_inline))
#else
#define ZK_IMAGE_INLINE inline
#endif

namespace {

#ifdef ZK_IMAGE_AVX2
bool hasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}
#endif

// Pixels per block of the conversion loops: a constant count lets the
// compiler turn each block into vector code.
constexpr std::size_t kBlock = 16;

// Destination channel k takes source channel I[k]; -1 writes 255 (alpha).
template <int SrcDepth, int DstDepth, int I0, int I1, int I2, int I3> struct MoveChannels {
    static constexpr std::size_t srcDepth = SrcDepth, dstDepth = DstDepth;
    static ZK_IMAGE_INLINE void pixel(const unsigned char* s, unsigned char* d) {
        d[0] = s[I0];
        d[1] = s[I1];
        d[2] = s[I2];
        if constexpr (DstDepth == 4)
            d[3] = I3 < 0 ? 255 : s[I3 < 0 ? 0 : I3];
    }
};

// Red and blue exchanged in 4-byte pixels, alpha kept: one 32-bit word each.
struct SwapRedBlue4 {
    static constexpr std::size_t srcDepth = 4, dstDepth = 4;
    static ZK_IMAGE_INLINE void pixel(const unsigned char* s, unsigned char* d) {
        std::uint32_t v;
        std::memcpy(&v, s, 4);
        const std::uint32_t w = (v & 0xff00ff00u) | ((v >> 16) & 0xffu) | ((v & 0xffu) << 16);
        std::memcpy(d, &w, 4);
    }
};

template <typename K>
ZK_IMAGE_INLINE void convertGeneric(const unsigned char* __restrict src,
                                    unsigned char* __restrict dst, std::size_t n) {
    std::size_t i = 0;
    for (; i + kBlock <= n; i += kBlock)
        for (std::size_t j = 0; j < kBlock; ++j)
            K::pixel(src + (i + j) * K::srcDepth, dst + (i + j) * K::dstDepth);
    for (; i < n; ++i)
        K::pixel(src + i * K::srcDepth, dst + i * K::dstDepth);
}

#ifdef ZK_IMAGE_AVX2
template <typename K>
__attribute__((target("avx2"))) void convertAvx2(const unsigned char* src, unsigned char* dst,
                                                 std::size_t n) {
    convertGeneric<K>(src, dst, n);
}
#endif

template <typename K>
void convertPixels(const unsigned char* src, unsigned char* dst, std::size_t n) {
#ifdef ZK_IMAGE_AVX2
    if (hasAvx2())
        return convertAvx2<K>(src, dst, n);
#endif
    convertGeneric<K>(src, dst, n);
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
        return toDepth == 4 ? convertPixels<MoveChannels<1, 4, 0, 0, 0, -1>>
                            : convertPixels<MoveChannels<1, 3, 0, 0, 0, 0>>;
    if (!isColourPacking(from))
        return nullptr;
    const bool exchange = isBlueFirst(from) != isBlueFirst(to);
    const int fromDepth = ZKImage::depthOf(from);
    if (fromDepth == toDepth) // the same depth in a different packing: red and blue exchanged
        return fromDepth == 4 ? convertPixels<SwapRedBlue4>
                              : convertPixels<MoveChannels<3, 3, 2, 1, 0, 0>>;
    if (fromDepth == 3)
        return exchange ? convertPixels<MoveChannels<3, 4, 2, 1, 0, -1>>
                        : convertPixels<MoveChannels<3, 4, 0, 1, 2, -1>>;
    return exchange ? convertPixels<MoveChannels<4, 3, 2, 1, 0, 0>>
                    : convertPixels<MoveChannels<4, 3, 0, 1, 2, 0>>;
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

// Bytes per block of the byte loops: a whole number of pixels of every depth.
constexpr std::size_t kPeriod = 48;

// Writes the depth-byte pixel over the first total bytes of dst, one block of
// pixels per store group.
void fillBytes(unsigned char* dst, std::size_t total, const unsigned char* pixel, int depth) {
    unsigned char block[kPeriod];
    for (std::size_t k = 0; k < kPeriod; ++k)
        block[k] = pixel[k % std::size_t(depth)];
    std::size_t i = 0;
    for (; i + kPeriod <= total; i += kPeriod)
        std::memcpy(dst + i, block, kPeriod);
    std::memcpy(dst + i, block, total - i);
}

// (v x mul[k] + add[k]) >> 8 over every byte, k the byte's place in a period
// of Period bytes (a whole number of pixels, at most kPeriod); the factors of
// one period stay in registers.
template <std::size_t Period>
ZK_IMAGE_INLINE void mixBytesGeneric(unsigned char* p, std::size_t total,
                                     const std::uint16_t* mulIn, const std::uint16_t* addIn) {
    std::uint16_t mul[Period], add[Period];
    std::memcpy(mul, mulIn, sizeof mul);
    std::memcpy(add, addIn, sizeof add);
    std::size_t i = 0;
    for (; i + Period <= total; i += Period)
        for (std::size_t k = 0; k < Period; ++k)
            p[i + k] = static_cast<unsigned char>(std::uint16_t(p[i + k] * mul[k] + add[k]) >> 8);
    for (std::size_t k = 0; i < total; ++i, ++k)
        p[i] = static_cast<unsigned char>(std::uint16_t(p[i] * mul[k] + add[k]) >> 8);
}

#ifdef ZK_IMAGE_AVX2
// The same loop in 32-byte vectors, for processors that have them.
template <std::size_t Period>
__attribute__((target("avx2"))) void mixBytesAvx2(unsigned char* p, std::size_t total,
                                                  const std::uint16_t* mul,
                                                  const std::uint16_t* add) {
    mixBytesGeneric<Period>(p, total, mul, add);
}
#endif

template <std::size_t Period>
void mixBytes(unsigned char* p, std::size_t total, const std::uint16_t* mul,
              const std::uint16_t* add) {
#ifdef ZK_IMAGE_AVX2
    if (hasAvx2())
        return mixBytesAvx2<Period>(p, total, mul, add);
#endif
    mixBytesGeneric<Period>(p, total, mul, add);
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
    // Each byte v becomes (v x mul + add) >> 8 with per-channel factors. A colour
    // channel has mul = 255 - alpha and add = c x alpha; the alpha channel has
    // mul = 256, add = 0, which keeps it. Every sum fits in 16 bits.
    // Kept: the shift divides by 256, not 255, so alpha 255 gives c x 255 / 256.
    unsigned char colour[4];
    const int depth = pixelBytes(colour, m_packing, ZKColor4ub(c.r, c.g, c.b, 0));
    std::uint16_t mul[kPeriod], add[kPeriod];
    for (std::size_t k = 0; k < kPeriod; ++k) {
        const std::size_t channel = k % std::size_t(depth);
        const bool isAlpha = channel == 3;
        mul[k] = isAlpha ? 256 : std::uint16_t(255 - alpha);
        add[k] = isAlpha ? 0 : std::uint16_t(colour[channel] * alpha);
    }
    if (depth == 4)
        mixBytes<32>(m_pixels, getByteCount(), mul, add);
    else
        mixBytes<kPeriod>(m_pixels, getByteCount(), mul, add);
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
