#include "ZKBoolArray.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <utility>

// The hot loops read and write the storage eight bytes at a time through
// memcpy (unaligned loads are fine: the block starts one byte after the
// allocation). Bit k of byte j is bit 8 * j + k of a little-endian word.
#if defined(__GNUC__) || defined(__clang__)
#define ZK_ALWAYS_INLINE __attribute__((always_inline)) inline
#else
#define ZK_ALWAYS_INLINE inline
#endif

namespace {

using Word = std::uint64_t;

constexpr Word kAllOnes = ~Word(0);

#if defined(__BYTE_ORDER__) && defined(__ORDER_BIG_ENDIAN__) &&                                    \
    __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool kBigEndian = true;
#else
constexpr bool kBigEndian = false;
#endif

// Storage bytes for n elements: ceil(n / 8), 0 for n <= 0.
constexpr long long bytesFor(long long n) {
    return n <= 0 ? 0 : (n >> 3) + ((n & 7) != 0);
}

// Bits 0 ... k - 1 of a byte, k in 0 ... 8.
constexpr unsigned char lowMask(long long k) {
    return static_cast<unsigned char>((1u << k) - 1u);
}

ZK_ALWAYS_INLINE Word loadRaw(const unsigned char* p) {
    Word w;
    std::memcpy(&w, p, sizeof w);
    return w;
}

ZK_ALWAYS_INLINE void storeRaw(unsigned char* p, Word w) {
    std::memcpy(p, &w, sizeof w);
}

// A word whose bit 8 * j + k is bit k of byte p[j], whatever the byte order.
ZK_ALWAYS_INLINE Word loadBits(const unsigned char* p) {
    const Word w = loadRaw(p);
    if constexpr (kBigEndian)
        return __builtin_bswap64(w);
    return w;
}

ZK_ALWAYS_INLINE int lowestBit(Word w) {
    return __builtin_ctzll(w);
}

ZK_ALWAYS_INLINE int highestBit(Word w) {
    return 63 - __builtin_clzll(w);
}

enum TableKind { BitCount, LowestSet, LowestCleared, HighestSet, HighestCleared };

constexpr std::array<unsigned char, 256> makeTable(TableKind kind) {
    std::array<unsigned char, 256> table{};
    for (int v = 0; v < 256; ++v) {
        const int b = (kind == LowestCleared || kind == HighestCleared) ? (~v & 0xFF) : v;
        int r = 8;
        if (kind == BitCount) {
            r = 0;
            for (int k = 0; k < 8; ++k)
                r += (b >> k) & 1;
        } else if (kind == LowestSet || kind == LowestCleared) {
            for (int k = 7; k >= 0; --k)
                if ((b >> k) & 1)
                    r = k;
        } else {
            for (int k = 0; k < 8; ++k)
                if ((b >> k) & 1)
                    r = k;
        }
        table[std::size_t(v)] = static_cast<unsigned char>(r);
    }
    return table;
}

// Counting kernel over whole bytes: four words per iteration, then words, then
// the last bytes by table. Hw selects the compiler's popcount builtin, which is
// the hardware instruction inside a function compiled for it.
template <bool Hw> ZK_ALWAYS_INLINE long long popcountWord(Word w) {
    if constexpr (Hw) {
        return __builtin_popcountll(w);
    } else {
        w = w - ((w >> 1) & 0x5555555555555555ull);
        w = (w & 0x3333333333333333ull) + ((w >> 2) & 0x3333333333333333ull);
        w = (w + (w >> 4)) & 0x0F0F0F0F0F0F0F0Full;
        return static_cast<long long>((w * 0x0101010101010101ull) >> 56);
    }
}

template <bool Hw>
ZK_ALWAYS_INLINE long long countBytesKernel(const unsigned char* p, long long n) {
    long long a = 0, b = 0, c = 0, d = 0;
    for (; n >= 32; n -= 32, p += 32) {
        a += popcountWord<Hw>(loadRaw(p));
        b += popcountWord<Hw>(loadRaw(p + 8));
        c += popcountWord<Hw>(loadRaw(p + 16));
        d += popcountWord<Hw>(loadRaw(p + 24));
    }
    for (; n >= 8; n -= 8, p += 8)
        a += popcountWord<Hw>(loadRaw(p));
    for (; n > 0; --n, ++p)
        b += ZKBoolArray::s_bitCountTable[*p];
    return a + b + c + d;
}

#if (defined(__x86_64__) || defined(__i386__)) && (defined(__GNUC__) || defined(__clang__))
// x86: POPCNT is not in the base instruction set, so the counting loop is
// compiled twice and chosen once at run time.
__attribute__((target("popcnt"))) long long countBytesPopcnt(const unsigned char* p, long long n) {
    return countBytesKernel<true>(p, n);
}

bool cpuHasPopcnt() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("popcnt") != 0;
}

long long countBytes(const unsigned char* p, long long n) {
    static const bool hasPopcnt = cpuHasPopcnt();
    return hasPopcnt ? countBytesPopcnt(p, n) : countBytesKernel<false>(p, n);
}
#else
long long countBytes(const unsigned char* p, long long n) {
    return countBytesKernel<true>(p, n);
}
#endif

// dst[i] = op(dst[i], src[i]) over n bytes, a word at a time. op is bitwise,
// so the byte order of the words does not matter. Storage starts one byte
// into its block, after the leading guard, so words taken from its start
// straddle cache lines: single bytes come first, up to a 16-byte boundary of
// dst (the other array's storage, placed alike, is then aligned too), and
// the plain word loop after them becomes vector operations.
template <typename Op>
ZK_ALWAYS_INLINE void combineBytes(unsigned char* dst, const unsigned char* src, long long n,
                                   Op op) {
    for (; n > 0 && (reinterpret_cast<std::uintptr_t>(dst) & 15) != 0; --n, ++dst, ++src)
        *dst = static_cast<unsigned char>(op(Word(*dst), Word(*src)));
    const long long words = n >> 3;
    for (long long i = 0; i < words; ++i)
        storeRaw(dst + 8 * i, op(loadRaw(dst + 8 * i), loadRaw(src + 8 * i)));
    for (long long i = words * 8; i < n; ++i)
        dst[i] = static_cast<unsigned char>(op(Word(dst[i]), Word(src[i])));
}

// op over the first n elements: whole bytes, then the partial byte under its
// mask, so the bits beyond n keep their values.
template <typename Op>
ZK_ALWAYS_INLINE void combineBits(unsigned char* dst, const unsigned char* src, long long n,
                                  Op op) {
    if (n <= 0)
        return;
    const long long full = n >> 3;
    combineBytes(dst, src, full, op);
    if (const long long rem = n & 7) {
        const unsigned char m = lowMask(rem);
        const unsigned char r = static_cast<unsigned char>(op(Word(dst[full]), Word(src[full])));
        dst[full] = static_cast<unsigned char>((dst[full] & ~m) | (r & m));
    }
}

const auto orOp = [](Word a, Word b) { return a | b; };
const auto xorOp = [](Word a, Word b) { return a ^ b; };
const auto andOp = [](Word a, Word b) { return a & b; };
const auto andNotOp = [](Word a, Word b) { return a & ~b; };

void flipBytes(unsigned char* p, long long n) {
    for (; n >= 8; n -= 8, p += 8)
        storeRaw(p, loadRaw(p) ^ kAllOnes);
    for (; n > 0; --n, ++p)
        *p = static_cast<unsigned char>(~*p);
}

// Calls f(i) for every element i < size equal to value, in increasing order.
template <typename F>
void forEachIndex(const unsigned char* data, long long size, bool value, F f) {
    if (size <= 0)
        return;
    const Word flip = value ? 0 : kAllOnes;
    const long long fullBytes = size >> 3;
    const auto visitWord = [&f](long long byteIndex, Word w) {
        for (; w; w &= w - 1)
            f((byteIndex << 3) + lowestBit(w));
    };
    long long k = 0;
    // Four words per test: sparse sets skip their empty stretches quickly.
    for (; k + 32 <= fullBytes; k += 32) {
        const Word w0 = loadBits(data + k) ^ flip, w1 = loadBits(data + k + 8) ^ flip;
        const Word w2 = loadBits(data + k + 16) ^ flip, w3 = loadBits(data + k + 24) ^ flip;
        if ((w0 | w1 | w2 | w3) == 0)
            continue;
        visitWord(k, w0);
        visitWord(k + 8, w1);
        visitWord(k + 16, w2);
        visitWord(k + 24, w3);
    }
    for (; k + 8 <= fullBytes; k += 8)
        visitWord(k, loadBits(data + k) ^ flip);
    const long long nb = bytesFor(size);
    for (; k < nb; ++k) {
        for (unsigned w = (data[k] ^ unsigned(flip)) & 0xFFu; w; w &= w - 1) {
            const long long i = (k << 3) + lowestBit(w);
            if (i >= size)
                return;
            f(i);
        }
    }
}

// The smallest index >= from holding V, or -1; 0 <= from < size. Scans the
// used bytes only: storage reserved beyond them is never read.
template <bool V>
long long findFirstFrom(const unsigned char* data, long long size, long long from) {
    // An element holding V is a set bit of (storage ^ flip).
    constexpr Word flip = V ? 0 : kAllOnes;
    constexpr unsigned char flipByte = V ? 0x00 : 0xFF;
    const std::array<unsigned char, 256>& lowest =
        V ? ZKBoolArray::s_lowestSetTable : ZKBoolArray::s_lowestClearedTable;
    const unsigned char* p = data + (from >> 3);
    const unsigned char* const used = data + bytesFor(size);
    long long found = -1;
    if (used - p >= 8) {
        // The word holding from, its bits below from masked, then four words
        // per test over long stretches, then single words.
        if (const Word head = (loadBits(p) ^ flip) & (kAllOnes << (from & 7))) {
            found = ((p - data) << 3) + lowestBit(head);
        } else {
            p += 8;
            while (used - p >= 32 && ((loadRaw(p) ^ flip) | (loadRaw(p + 8) ^ flip) |
                                      (loadRaw(p + 16) ^ flip) | (loadRaw(p + 24) ^ flip)) == 0)
                p += 32;
            for (; used - p >= 8; p += 8) {
                if (const Word w = loadBits(p) ^ flip) {
                    found = ((p - data) << 3) + lowestBit(w);
                    break;
                }
            }
        }
    } else if (const unsigned head = (*p ^ flipByte) & (0xFFu << (from & 7))) {
        found = ((p - data) << 3) + ZKBoolArray::s_lowestSetTable[head];
    } else {
        ++p;
    }
    for (; found < 0 && p < used; ++p)
        if (*p != flipByte)
            found = ((p - data) << 3) + lowest[*p];
    // The bits beyond the size in the last byte may hold anything.
    return found < size ? found : -1;
}

// Where a walk goes on after index i: i + 1, 0 below -1, and LLONG_MAX (past
// any size) after LLONG_MAX instead of an overflow.
constexpr long long indexAfter(long long i) {
    return i < -1 ? 0 : i < LLONG_MAX ? i + 1 : LLONG_MAX;
}

} // namespace

const std::array<unsigned char, 256> ZKBoolArray::s_bitCountTable = makeTable(BitCount);
const std::array<unsigned char, 256> ZKBoolArray::s_lowestSetTable = makeTable(LowestSet);
const std::array<unsigned char, 256> ZKBoolArray::s_lowestClearedTable = makeTable(LowestCleared);
const std::array<unsigned char, 256> ZKBoolArray::s_highestSetTable = makeTable(HighestSet);
const std::array<unsigned char, 256> ZKBoolArray::s_highestClearedTable = makeTable(HighestCleared);

// Shared by every array in the empty state; never written by a checked
// operation and never freed.
unsigned char ZKBoolArray::s_emptyByte = 1;

ZKBoolArray::ZKBoolArray() noexcept : m_data(&s_emptyByte), m_dataEnd(&s_emptyByte), m_size(0) {}

ZKBoolArray::ZKBoolArray(int n, bool value) : ZKBoolArray() {
    if (n < 1) {
        // kept: a size below 1 is stored as given, with no storage
        m_size = n;
        return;
    }
    assign(n, value);
}

ZKBoolArray::ZKBoolArray(int n, ZKStaticArray<int> indices, bool value) : ZKBoolArray(n, false) {
    // Below 1 no index lies under n: the list changes nothing.
    writeListed(indices.size(), indices.data(), n, value);
}

ZKBoolArray::ZKBoolArray(const ZKBoolArray& other) : ZKBoolArray() {
    const long long nb = bytesFor(other.m_size);
    if (nb > 0) {
        reallocate(nb, 0, false);
        std::memcpy(m_data, other.m_data, std::size_t(nb));
    }
    m_size = other.m_size;
}

ZKBoolArray::ZKBoolArray(ZKBoolArray&& other) noexcept
    : m_data(other.m_data), m_dataEnd(other.m_dataEnd), m_size(other.m_size) {
    other.setEmptyState();
}

ZKBoolArray& ZKBoolArray::operator=(const ZKBoolArray& other) {
    copy(other, false);
    return *this;
}

ZKBoolArray& ZKBoolArray::operator=(ZKBoolArray&& other) noexcept {
    if (this != &other) {
        ZKBoolArray taken(std::move(other));
        swap(taken);
    }
    return *this;
}

ZKBoolArray::~ZKBoolArray() {
    releaseData();
}

void ZKBoolArray::setEmptyState() noexcept {
    m_data = &s_emptyByte;
    m_dataEnd = &s_emptyByte;
    m_size = 0;
}

// Replaces the storage by exactly nbBytes bytes between two guard bytes of
// value 1, keeping the first bytesToKeep bytes and clearing the others (or
// leaving them to the caller).
void ZKBoolArray::reallocate(long long nbBytes, long long bytesToKeep, bool clearRest) {
    unsigned char* block = new unsigned char[std::size_t(nbBytes) + 2];
    block[0] = 1;
    block[nbBytes + 1] = 1;
    unsigned char* data = block + 1;
    const long long keep = std::min({bytesToKeep, nbBytes, (long long)(m_dataEnd - m_data)});
    if (keep > 0)
        std::memcpy(data, m_data, std::size_t(keep));
    if (clearRest)
        std::memset(data + keep, 0, std::size_t(nbBytes - keep));
    if (m_dataEnd > m_data)
        delete[](m_data - 1);
    m_data = data;
    m_dataEnd = data + nbBytes;
}

void ZKBoolArray::assign(long long n, bool value) {
    if (capacity() < n)
        reallocate(bytesFor(n), 0, false); // every byte is filled below
    std::memset(m_data, value ? 0xFF : 0x00, std::size_t(bytesFor(n)));
    m_size = n;
}

void ZKBoolArray::assign(long long n, const char* bytes) {
    if (capacity() < n)
        reallocate(bytesFor(n), 0, false); // every byte is written below
    if (bytes)
        std::memcpy(m_data, bytes, std::size_t(bytesFor(n)));
    else
        std::memset(m_data, 0, std::size_t(bytesFor(n)));
    m_size = n;
}

void ZKBoolArray::assign(long long count, const int* indices, int maxIndex) {
    if (count < 0 || !indices)
        count = 0;
    if (maxIndex == -1)
        for (long long k = 0; k < count; ++k)
            maxIndex = std::max(maxIndex, indices[k]);
    const long long n = maxIndex >= 0 ? maxIndex + 1LL : 0LL;
    assign(n, false);
    writeListed(count, indices, n, true);
}

void ZKBoolArray::copy(const ZKBoolArray& other, bool fill) {
    const long long n = other.m_size;
    const long long nb = bytesFor(n);
    if (capacity() < n)
        reallocate(nb, 0, false); // the copy writes every byte of the new block
    if (&other != this && nb > 0)
        std::memcpy(m_data, other.m_data, std::size_t(nb));
    m_size = n;
    const unsigned char fillByte = fill ? 0xFF : 0x00;
    if (n > 0 && (n & 7)) {
        const unsigned char m = lowMask(n & 7);
        m_data[nb - 1] = static_cast<unsigned char>((m_data[nb - 1] & m) | (fillByte & ~m));
    }
    std::memset(m_data + nb, fillByte, std::size_t((m_dataEnd - m_data) - nb));
}

void ZKBoolArray::swap(ZKBoolArray& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_dataEnd, other.m_dataEnd);
    std::swap(m_size, other.m_size);
}

void ZKBoolArray::clearArray() noexcept {
    releaseData();
}

void ZKBoolArray::releaseData() noexcept {
    if (m_dataEnd > m_data)
        delete[](m_data - 1);
    setEmptyState();
}

void ZKBoolArray::releaseMemory() noexcept {
    releaseData();
}

void ZKBoolArray::reserve(long long n) {
    if (capacity() < n)
        reallocate(bytesFor(n), bytesFor(m_size));
}

long long ZKBoolArray::getMemoryUsed() const noexcept {
    return getDynMemoryUsed() + 24;
}

long long ZKBoolArray::getDynMemoryUsed() const noexcept {
    return m_dataEnd - m_data;
}

void ZKBoolArray::writeBit(long long i, bool value) noexcept {
    const unsigned char bit = static_cast<unsigned char>(1u << (i & 7));
    if (value)
        m_data[i >> 3] |= bit;
    else
        m_data[i >> 3] &= static_cast<unsigned char>(~bit);
}

void ZKBoolArray::resize(long long n, bool value) {
    if (n <= m_size) {
        m_size = n;
        return;
    }
    const long long nb = bytesFor(n);
    if (capacity() < n)
        reallocate(nb, m_dataEnd - m_data);
    long long i = std::max(m_size, 0LL);
    for (; i < n && (i & 7); ++i)
        writeBit(i, value);
    if (i < n)
        std::memset(m_data + (i >> 3), value ? 0xFF : 0x00, std::size_t(nb - (i >> 3)));
    m_size = n;
}

void ZKBoolArray::insert(long long i, bool value) {
    // kept: inserting at the size (or outside the elements) is ignored
    if (i < 0 || i >= m_size)
        return;
    const long long oldSize = m_size;
    resize(oldSize + 1, false);
    const long long first = i >> 3;
    for (long long k = oldSize >> 3; k > first; --k)
        m_data[k] = static_cast<unsigned char>((m_data[k] << 1) | (m_data[k - 1] >> 7));
    const unsigned char low = lowMask(i & 7);
    const unsigned char b = m_data[first];
    m_data[first] = static_cast<unsigned char>((b & low) | ((b << 1) & ~low));
    writeBit(i, value);
}

void ZKBoolArray::erase(long long i) {
    if (i < 0 || i >= m_size)
        return;
    const long long first = i >> 3;
    const long long last = (m_size - 1) >> 3;
    const unsigned char low = lowMask(i & 7);
    const unsigned char b = m_data[first];
    unsigned char shifted = static_cast<unsigned char>((b & low) | ((b >> 1) & ~low));
    for (long long k = first; k < last; ++k) {
        m_data[k] = static_cast<unsigned char>(shifted | ((m_data[k + 1] & 1) << 7));
        shifted = static_cast<unsigned char>(m_data[k + 1] >> 1);
    }
    m_data[last] = shifted;
    --m_size;
}

void ZKBoolArray::append(const ZKBoolArray& other) {
    if (&other == this) {
        const ZKBoolArray copyOfThis(other);
        append(copyOfThis);
        return;
    }
    const long long n = other.m_size;
    if (n <= 0)
        return;
    const long long old = std::max(m_size, 0LL);
    resize(old + n, false);
    const long long base = old >> 3;
    const int shift = int(old & 7);
    const long long full = n >> 3;
    const long long nb = bytesFor(n);
    for (long long k = 0; k < nb; ++k) {
        unsigned b = other.m_data[k];
        if (k == full)
            b &= lowMask(n & 7);
        if (!b)
            continue;
        m_data[base + k] |= static_cast<unsigned char>(b << shift);
        if (shift && (b >> (8 - shift)))
            m_data[base + k + 1] |= static_cast<unsigned char>(b >> (8 - shift));
    }
}

void ZKBoolArray::append_reversed(const ZKBoolArray& other) {
    if (&other == this) {
        const ZKBoolArray copyOfThis(other);
        append_reversed(copyOfThis);
        return;
    }
    const long long n = other.m_size;
    if (n <= 0)
        return;
    const long long newSize = std::max(m_size, 0LL) + n;
    resize(newSize, false);
    forEachIndex(other.m_data, n, true, [&](long long j) { writeBit(newSize - 1 - j, true); });
}

// Whole-byte fill of first ... end - 1: masked first and last bytes, a block
// fill between them.
void ZKBoolArray::fillRange(long long first, long long end, bool value) noexcept {
    const long long fb = first >> 3;
    const long long eb = end >> 3;
    const auto apply = [&](long long k, unsigned char m) {
        if (value)
            m_data[k] |= m;
        else
            m_data[k] &= static_cast<unsigned char>(~m);
    };
    const unsigned char head = static_cast<unsigned char>(0xFFu << (first & 7));
    const unsigned char tail = lowMask(end & 7);
    if (fb == eb) {
        apply(fb, static_cast<unsigned char>(head & tail));
        return;
    }
    apply(fb, head);
    std::memset(m_data + fb + 1, value ? 0xFF : 0x00, std::size_t(eb - fb - 1));
    if (end & 7)
        apply(eb, tail);
}

void ZKBoolArray::setRange(long long first, long long count, bool value) {
    if (first < 0 || count <= 0)
        return;
    if (count > LLONG_MAX - first)
        throw std::length_error("ZKBoolArray: range end exceeds the maximum size");
    const long long end = first + count;
    if (end > m_size)
        resize(end, false);
    fillRange(first, end, value);
}

void ZKBoolArray::set(long long first, long long count) {
    setRange(first, count, true);
}

void ZKBoolArray::clear(long long first, long long count) {
    setRange(first, count, false);
}

void ZKBoolArray::set(long long count, const int* indices, bool trust) {
    if (count <= 0 || !indices)
        return;
    if (!trust) {
        int largest = indices[0];
        for (long long k = 1; k < count; ++k)
            largest = std::max(largest, indices[k]);
        if (largest >= 0 && largest + 1LL > m_size)
            resize(largest + 1LL, false);
    }
    writeListed(count, indices, capacity(), true);
}

void ZKBoolArray::set_safe(long long count, const int* indices) {
    writeListed(count, indices, m_size, true);
}

void ZKBoolArray::clear(long long count, const int* indices) {
    writeListed(count, indices, m_size, false);
}

void ZKBoolArray::writeListed(long long count, const int* indices, long long limit,
                              bool value) noexcept {
    if (!indices)
        return;
    for (long long k = 0; k < count; ++k)
        if (indices[k] >= 0 && indices[k] < limit)
            writeBit(indices[k], value);
}

void ZKBoolArray::toggleAutoResize(long long i) {
    if (i < 0)
        return;
    if (i >= m_size)
        setRange(i, 1, false);
    toggle(i);
}

void ZKBoolArray::setAll() noexcept {
    if (m_size > 0)
        fillRange(0, m_size, true);
}

void ZKBoolArray::clearAll() noexcept {
    if (m_size > 0)
        fillRange(0, m_size, false);
}

void ZKBoolArray::inverse() noexcept {
    if (m_size <= 0)
        return;
    const long long full = m_size >> 3;
    flipBytes(m_data, full);
    if (m_size & 7)
        m_data[full] ^= lowMask(m_size & 7);
}

void ZKBoolArray::toggleAll() noexcept {
    if (m_size > 0)
        flipBytes(m_data, m_dataEnd - m_data);
}

void ZKBoolArray::toggle_allIndicesOK(const ZKStaticArray<int>& indices) noexcept {
    const long long cap = capacity();
    for (int i : indices)
        if (i >= 0 && i < cap)
            toggle(i);
}

void ZKBoolArray::writeModifiedBytes(const ZKArray<int>& indices, unsigned char byte) noexcept {
    const long long cap = capacity();
    const long long rem = m_size > 0 ? (m_size & 7) : 0;
    unsigned char* last = rem ? m_data + (m_size >> 3) : nullptr;
    const unsigned char saved = last ? *last : 0;
    // kept: the whole byte of each listed index is written, its neighbours
    // with it
    for (int i : indices)
        if (i >= 0 && i < cap)
            m_data[i >> 3] = byte;
    if (last) {
        const unsigned char m = lowMask(rem);
        *last = static_cast<unsigned char>((*last & m) | (saved & ~m));
    }
}

void ZKBoolArray::setAllModifiedIndices(const ZKArray<int>& indices) noexcept {
    writeModifiedBytes(indices, 0xFF);
}

void ZKBoolArray::clearAllModifiedIndices(const ZKArray<int>& indices) noexcept {
    writeModifiedBytes(indices, 0x00);
}

void ZKBoolArray::set(const ZKBoolArray& b) {
    const long long n = b.m_size;
    if (n > m_size)
        resize(n, false);
    combineBits(m_data, b.m_data, n, orOp);
}

void ZKBoolArray::merge(const ZKBoolArray& b) {
    set(b);
}

void ZKBoolArray::toggle(const ZKBoolArray& b) {
    const long long n = b.m_size;
    if (n > m_size)
        resize(n, false);
    combineBits(m_data, b.m_data, n, xorOp);
}

void ZKBoolArray::clear(const ZKBoolArray& b) noexcept {
    combineBits(m_data, b.m_data, std::min(m_size, b.m_size), andNotOp);
}

void ZKBoolArray::inter(const ZKBoolArray& b) noexcept {
    if (m_size <= 0)
        return;
    if (b.m_size <= 0) {
        // kept: an empty b empties a and writes 1 into its first storage byte
        m_size = 0;
        m_data[0] = 1;
        return;
    }
    const long long n = std::min(m_size, b.m_size);
    const long long nb = bytesFor(n);
    combineBytes(m_data, b.m_data, nb, andOp);
    if (n & 7)
        m_data[nb - 1] &= lowMask(n & 7);
    // kept: a fresh guard byte after the last used byte, when it is storage
    if (m_data + nb < m_dataEnd)
        m_data[nb] = 1;
    m_size = n;
}

bool ZKBoolArray::hasInter(const ZKBoolArray& b) const noexcept {
    const long long n = std::min(m_size, b.m_size);
    if (n <= 0)
        return false;
    const long long full = n >> 3;
    long long k = 0;
    for (; k + 8 <= full; k += 8)
        if (loadRaw(m_data + k) & loadRaw(b.m_data + k))
            return true;
    for (; k < full; ++k)
        if (m_data[k] & b.m_data[k])
            return true;
    return (n & 7) && (m_data[full] & b.m_data[full] & lowMask(n & 7));
}

bool ZKBoolArray::operator==(const ZKBoolArray& b) const noexcept {
    if (m_size == 0 && b.m_size == 0)
        return true;
    if (m_size != b.m_size)
        return false;
    if (m_size < 0)
        return true;
    const long long full = m_size >> 3;
    if (std::memcmp(m_data, b.m_data, std::size_t(full)) != 0)
        return false;
    // kept: a non-zero multiple of 8 compares unequal even when all bytes match
    if ((m_size & 7) == 0)
        return false;
    return ((m_data[full] ^ b.m_data[full]) & lowMask(m_size & 7)) == 0;
}

long long ZKBoolArray::countBitSetInScope(long long first, long long last) const noexcept {
    first = std::max(first, 0LL);
    last = std::min(last, m_size);
    if (last <= first)
        return 0;
    const long long fb = first >> 3;
    const long long lb = (last - 1) >> 3;
    const unsigned char head = static_cast<unsigned char>(0xFFu << (first & 7));
    const unsigned char tail = lowMask(((last - 1) & 7) + 1);
    if (fb == lb)
        return s_bitCountTable[m_data[fb] & head & tail];
    return s_bitCountTable[m_data[fb] & head] + countBytes(m_data + fb + 1, lb - fb - 1) +
           s_bitCountTable[m_data[lb] & tail];
}

long long ZKBoolArray::countBitSet() const noexcept {
    return countBitSetInScope(0, m_size);
}

long long ZKBoolArray::countBitCleared() const noexcept {
    return m_size - countBitSet();
}

long long ZKBoolArray::countBitClearedInScope(long long first, long long last) const noexcept {
    first = std::max(first, 0LL);
    last = std::min(last, m_size);
    if (last <= first)
        return 0;
    return (last - first) - countBitSetInScope(first, last);
}

long long ZKBoolArray::findFirst(bool value, long long from) const noexcept {
    from = std::max(from, 0LL);
    if (from >= m_size)
        return -1;
    return value ? findFirstFrom<true>(m_data, m_size, from)
                 : findFirstFrom<false>(m_data, m_size, from);
}

long long ZKBoolArray::findLast(bool value, long long from) const noexcept {
    from = std::min(from, m_size - 1);
    if (from < 0)
        return -1;
    const unsigned char flip = value ? 0x00 : 0xFF;
    const std::array<unsigned char, 256>& highest =
        value ? s_highestSetTable : s_highestClearedTable;
    const unsigned char* p = m_data + (from >> 3);
    const unsigned char head = static_cast<unsigned char>((*p ^ flip) & lowMask((from & 7) + 1));
    if (head)
        return ((p - m_data) << 3) + s_highestSetTable[head];
    --p;
    const Word wordFlip = value ? 0 : kAllOnes;
    for (; p - m_data >= 7; p -= 8)
        if (const Word w = loadBits(p - 7) ^ wordFlip)
            return ((p - 7 - m_data) << 3) + highestBit(w);
    // The leading guard byte (1) has a set and a clear bit: it ends this loop.
    while (*p == flip)
        --p;
    // At the guard p - m_data is -1: the position is negative, not found.
    const long long found = (p - m_data) * 8 + highest[*p];
    return found >= 0 ? found : -1;
}

void ZKBoolArray::goToNextSet(long long& i) const noexcept {
    const long long from = indexAfter(i);
    i = from >= m_size ? -1 : findFirstFrom<true>(m_data, m_size, from);
}

void ZKBoolArray::goToNextSet(int& i) const noexcept {
    long long j = i;
    goToNextSet(j);
    i = int(j);
}

void ZKBoolArray::goToNextCleared(long long& i) const noexcept {
    const long long from = indexAfter(i);
    i = from >= m_size ? -1 : findFirstFrom<false>(m_data, m_size, from);
}

void ZKBoolArray::goToNextCleared(int& i) const noexcept {
    long long j = i;
    goToNextCleared(j);
    i = int(j);
}

bool ZKBoolArray::getIndices(ZKArray<int>& out, bool value) const {
    const long long count = value ? countBitSet() : countBitCleared();
    if (count <= 0) {
        out.clear();
        return false;
    }
    out.resize(count);
    int* dst = out.data();
    forEachIndex(m_data, m_size, value, [&dst](long long i) { *dst++ = int(i); });
    return true;
}

bool ZKBoolArray::appendIndices(ZKArray<int>& out, int reserveHint, bool value) const {
    if (reserveHint < 0)
        return getIndices(out, value);
    if (out.capacity() < reserveHint)
        out.reserve(reserveHint);
    forEachIndex(m_data, m_size, value, [&out](long long i) { out.push_back(int(i)); });
    return true;
}

bool ZKBoolArray::getIndicesSet(ZKArray<int>& out) const {
    return getIndices(out, true);
}

bool ZKBoolArray::getIndicesCleared(ZKArray<int>& out) const {
    return getIndices(out, false);
}

bool ZKBoolArray::getIndicesSet(ZKArray<int>& out, int reserveHint) const {
    return appendIndices(out, reserveHint, true);
}

bool ZKBoolArray::getIndicesCleared(ZKArray<int>& out, int reserveHint) const {
    return appendIndices(out, reserveHint, false);
}
