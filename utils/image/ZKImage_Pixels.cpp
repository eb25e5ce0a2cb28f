// ZKImage: packing conversion, fills and colour mixing. The loops work on
// whole blocks of pixels so that they run as vector code; the results are
// those of the plain per-pixel formulas.
#include "ZKImage.h"

#include "internal/ZKColorConvert.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

// On x86 with GCC or Clang, packing conversion also has SSSE3 and AVX2
// byte-shuffle loops and colour mixing an AVX2 build of its loop, chosen at run time
// when the processor has the instructions; elsewhere the portable loops alone
// are built. Every path gives the same bytes.
#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define ZK_IMAGE_X86 1
#define ZK_IMAGE_INLINE inline __attribute__((always_inline))
#include <immintrin.h>
#else
#define ZK_IMAGE_INLINE inline
#endif

namespace {

#ifdef ZK_IMAGE_X86
bool hasAvx2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}

bool hasSsse3() {
    static const bool has = __builtin_cpu_supports("ssse3");
    return has;
}
#endif

// Pixels per block of the portable conversion loop: a constant count lets the
// compiler turn each block into vector code.
constexpr std::size_t kBlock = 16;

// Destination channel k takes source channel I[k]; -1 writes 255 (alpha).
template <int SrcDepth, int DstDepth, int I0, int I1, int I2, int I3> struct MoveChannels {
    static constexpr int srcDepth = SrcDepth, dstDepth = DstDepth;
    static constexpr int channel[4] = {I0, I1, I2, I3};
    static ZK_IMAGE_INLINE void pixel(const unsigned char* s, unsigned char* d) {
        d[0] = s[I0];
        d[1] = s[I1];
        d[2] = s[I2];
        if constexpr (DstDepth == 4)
            d[3] = I3 < 0 ? 255 : s[I3 < 0 ? 0 : I3];
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

#ifdef ZK_IMAGE_X86
// The byte shuffle that moves the channels of as many whole pixels as one
// 16-byte load and one 16-byte store can hold, and the alpha bytes to set.
template <typename K> struct ShuffleMask {
    static constexpr int pixels = std::min(16 / K::srcDepth, 16 / K::dstDepth);
    unsigned char shuffle[16] = {};
    unsigned char alpha[16] = {};
    constexpr ShuffleMask() {
        for (int j = 0; j < 16; ++j) {
            const int p = j / K::dstDepth, c = K::channel[j % K::dstDepth];
            shuffle[j] = (p < pixels && c >= 0) ? (unsigned char)(p * K::srcDepth + c) : 0x80;
            alpha[j] = (p < pixels && c < 0) ? 0xff : 0;
        }
    }
};

// One shuffle step of 16 bytes at pixel i; see convertSsse3.
template <typename K>
__attribute__((target("ssse3"))) inline void shuffleStep(const unsigned char* src,
                                                         unsigned char* dst, std::size_t i,
                                                         __m128i shuffle, __m128i alpha) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * K::srcDepth));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i * K::dstDepth),
                     _mm_or_si128(_mm_shuffle_epi8(v, shuffle), alpha));
}

// Loads and stores stay inside both blocks; the bytes a store writes past its
// pixels belong to the next ones and are written again by the next step or
// by the per-pixel tail.
template <typename K>
__attribute__((target("ssse3"))) void convertSsse3(const unsigned char* src, unsigned char* dst,
                                                   std::size_t n, std::size_t i = 0) {
    static constexpr ShuffleMask<K> mask{};
    constexpr std::size_t step = ShuffleMask<K>::pixels;
    constexpr std::size_t s = K::srcDepth, d = K::dstDepth;
    const __m128i shuffle = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask.shuffle));
    const __m128i alpha = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask.alpha));
    for (; i * s + 16 <= n * s && i * d + 16 <= n * d; i += step)
        shuffleStep<K>(src, dst, i, shuffle, alpha);
    for (; i < n; ++i)
        K::pixel(src + i * s, dst + i * d);
}

// Two shuffle steps per 32-byte store, where the steps' outputs are adjacent
// (4-byte destinations); the rest as convertSsse3.
template <typename K>
__attribute__((target("avx2"))) void convertAvx2(const unsigned char* src, unsigned char* dst,
                                                 std::size_t n) {
    static constexpr ShuffleMask<K> mask{};
    constexpr std::size_t step = ShuffleMask<K>::pixels;
    constexpr std::size_t s = K::srcDepth, d = K::dstDepth;
    static_assert(step * d == 16, "the two lanes' outputs must be adjacent");
    const __m256i shuffle = _mm256_broadcastsi128_si256(
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask.shuffle)));
    const __m256i alpha =
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(mask.alpha)));
    std::size_t i = 0;
    for (; (i + step) * s + 16 <= n * s && i * d + 32 <= n * d; i += 2 * step) {
        const __m128i lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + i * s));
        const __m128i hi = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + (i + step) * s));
        const __m256i v = _mm256_inserti128_si256(_mm256_castsi128_si256(lo), hi, 1);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i * d),
                            _mm256_or_si256(_mm256_shuffle_epi8(v, shuffle), alpha));
    }
    convertSsse3<K>(src, dst, n, i);
}
#endif

template <typename K>
void convertPixels(const unsigned char* src, unsigned char* dst, std::size_t n) {
#ifdef ZK_IMAGE_X86
    if constexpr (K::dstDepth == 4) {
        if (hasAvx2())
            return convertAvx2<K>(src, dst, n);
    }
    if (hasSsse3())
        return convertSsse3<K>(src, dst, n);
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
        return fromDepth == 4 ? convertPixels<MoveChannels<4, 4, 2, 1, 0, 3>>
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

#ifdef ZK_IMAGE_X86
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
#ifdef ZK_IMAGE_X86
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
    // The result takes this size and the new packing even without pixels to
    // convert (a 0 x 0 image gives a 0 x 0 image of the new packing).
    ZKImage converted;
    converted.init(getSize(), packing);
    if (converted.m_pixels) {
        const std::size_t n = std::size_t(m_width) * std::size_t(m_height);
        Converter convert = hasPixels() ? converterFor(m_packing, packing) : nullptr;
        if (convert)
            convert(m_pixels, converted.m_pixels, n);
        else
            std::memset(converted.m_pixels, 0, converted.getByteCount());
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
    // The flag word of rect takes no part: only its coordinates are clipped.
    ZKPixRect span(rect.left, rect.top, rect.right, rect.bottom);
    span.intersectWith(ZKPixRect(0, 0, m_width, m_height));
    if (span.isEmpty())
        return;
    const long long steps = (long long)rect.bottom - rect.top - 1;
    const std::size_t depth = std::size_t(getDepth());
    const std::size_t rowBytes = std::size_t(m_width) * depth;
    const std::size_t spanBytes = std::size_t(span.getWidth()) * depth;
    for (long long y = span.top; y < span.bottom; ++y) {
        const long long i = y - rect.top;
        const ZKColor4ub c = ZKInternal::combine(first, second, [steps, i](int a, int b) {
            return static_cast<unsigned char>(steps <= 0 ? a : a + (b - a) * i / steps);
        });
        unsigned char pixel[4];
        pixelBytes(pixel, m_packing, c);
        fillBytes(m_pixels + std::size_t(y) * rowBytes + std::size_t(span.left) * depth, spanBytes,
                  pixel, int(depth));
    }
}
