// ZKBoolArray.h: the library's growable bit set, used for selections and tags
// over indexed items (vertices, faces, objects).
//
// Storage: element i is bit (i mod 8) of byte i / 8, least significant bit
// first. Storage for n elements is one block of ceil(n / 8) + 2 bytes; m_data
// points at its second byte and m_dataEnd at its last one. The first and the
// last byte of the block are guard bytes holding 1 (one set and seven clear
// bits), so backward scans stop on them without a bounds test; element
// operations never write them. Nothing allocated: m_data and m_dataEnd both
// point at one shared static byte and the size is 0. The array owns its block
// and frees it whole.
//
// Capacity is always exactly what the last reallocation asked for: there is
// no growth factor. push_back reallocates every eighth element; callers that
// append many elements call reserve() first, then the push_back_reserved
// family.
//
// Bits beyond the size (the rest of the last used byte and the whole bytes up
// to m_dataEnd) carry no meaning: counting, searching and comparing mask
// them. Some operations keep them and others overwrite them, as documented per
// operation; the raw storage (getData()) shows them.
//
// Indices are 64-bit and, unless stated, unchecked. The single-element
// operations toggle, getAsMask, get, the push_back_reserved family are the
// caller's responsibility. Index lists are filtered as stated per operation.
//
// Failures: none are reported; allocation failure throws std::bad_alloc.
//
// Threads: not locked. Const members may run concurrently on one array; an
// array must not be changed while another thread uses it.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"

#include <array>

class ZKUTILS_EXPORT ZKBoolArray {
public:
    // Empty state: no storage, size 0.
    ZKBoolArray() noexcept;
    // n elements equal to value; with true the bits beyond n in the last byte
    // are set too (whole bytes are filled). n < 1 keeps the empty storage and
    // still stores n as the size.
    ZKBoolArray(int n, bool value);
    // n elements, all clear, then the listed indices get the value; indices
    // below 0 or at or beyond n are skipped.
    ZKBoolArray(int n, ZKStaticArray<int> indices, bool value);
    ZKBoolArray(const ZKBoolArray& other);
    ZKBoolArray(ZKBoolArray&& other) noexcept;
    // Same as copy(other, false).
    ZKBoolArray& operator=(const ZKBoolArray& other);
    ZKBoolArray& operator=(ZKBoolArray&& other) noexcept;
    ~ZKBoolArray();

    // n elements equal to value, storage bytes filled whole with 0xFF or 0x00.
    // Reallocates only when the capacity is below n, then exactly.
    void assign(long long n, bool value);
    // n elements copied from the packed bytes (ceil(n / 8) bytes are read).
    void assign(long long n, const char* bytes);
    // The array becomes maxIndex + 1 elements with exactly the listed indices
    // set (count indices are read). maxIndex -1: the largest listed index is
    // searched first. Negative indices, and indices above maxIndex, are
    // skipped.
    void assign(long long count, const int* indices, int maxIndex);
    // Copies size and bits; reallocates only when the capacity is below the
    // other's size. Every storage bit beyond the copied size (rest of the last
    // byte and all further bytes up to m_dataEnd) becomes fill.
    void copy(const ZKBoolArray& other, bool fill);
    void swap(ZKBoolArray& other) noexcept;

    // Free the storage and return to the empty state (three names, one
    // operation).
    void clearArray() noexcept;
    void releaseData() noexcept;
    void releaseMemory() noexcept;
    // When the capacity is below n: exactly ceil(n / 8) bytes, used bytes
    // copied, the rest cleared. The size does not change.
    void reserve(long long n);

    // Storage bytes + 24 (the object itself) / storage bytes.
    long long getMemoryUsed() const noexcept;
    long long getDynMemoryUsed() const noexcept;

    // Kept as hooks of the application's start and end and of its integrity
    // checks: they do nothing.
    static void DEBUG_checkStaticDataIntegrity() {}
    static void printLoggingStuffDisabled() {}
    static void onStartApp() {}
    static void onEndApp() {}
    void checkIntegrity() const {}
    void checkIntegrity2() const {}

    long long size() const noexcept { return m_size; }
    bool empty() const noexcept { return m_size <= 0; }
    // Capacity in elements: 8 * storage bytes.
    long long capacity() const noexcept { return (m_dataEnd - m_data) * 8; }
    // The raw storage: from the first storage byte to one past the last one.
    const unsigned char* getData() const noexcept { return m_data; }
    const unsigned char* getDataEnd() const noexcept { return m_dataEnd; }

    // Element i, unchecked.
    bool get(long long i) const noexcept { return (m_data[i >> 3] >> (i & 7)) & 1; }
    bool operator[](long long i) const noexcept { return get(i); }
    // The byte of element i masked to its bit: non-zero when set; unchecked.
    unsigned char getAsMask(long long i) const noexcept { return m_data[i >> 3] & (1u << (i & 7)); }

    // Growing: exact reallocation when needed (old bytes copied), then the new
    // elements get value: the rest of the old last byte bit by bit, the
    // following bytes whole (so with true the bits beyond n in the last byte
    // are set as well). Shrinking only lowers the size; the bits stay.
    void resize(long long n, bool value = false);
    void push_back(bool value) { resize(m_size + 1, value); }
    // Append without any capacity test: the caller must have reserved.
    void push_back_reserved(bool value) noexcept {
        if (value)
            push_back_reserved_true();
        else
            push_back_reserved_false();
    }
    void push_back_reserved_true() noexcept {
        m_data[m_size >> 3] |= static_cast<unsigned char>(1u << (m_size & 7));
        ++m_size;
    }
    void push_back_reserved_false() noexcept {
        m_data[m_size >> 3] &= static_cast<unsigned char>(~(1u << (m_size & 7)));
        ++m_size;
    }
    // Only for 0 <= i < size: grows by one, moves every element from i up by
    // one and writes value at i. Inserting at i == size does nothing: append
    // with push_back.
    void insert(long long i, bool value);
    // Only for 0 <= i < size: the elements above i move down by one.
    void erase(long long i);
    // Grows by other's size (new elements clear) and sets old size + j for
    // every set element j of other; append_reversed sets new size - 1 - j.
    void append(const ZKBoolArray& other);
    void append_reversed(const ZKBoolArray& other);

    // Elements first ... first + count - 1 are set (cleared); nothing when
    // first < 0 or count <= 0. A range passing the end grows the array first,
    // new elements clear.
    void set(long long first, long long count);
    void clear(long long first, long long count);
    // Sets the count listed elements; negative indices are skipped. Untrusted:
    // the array first grows to the largest index + 1 when needed. Trusted: no
    // size test (indices beyond the storage are still skipped).
    void set(long long count, const int* indices, bool trust);
    // Sets only the listed indices that lie in 0 ... size - 1.
    void set_safe(long long count, const int* indices);
    // Clears the listed indices that lie in 0 ... size - 1.
    void clear(long long count, const int* indices);
    // Flips element i, unchecked.
    void toggle(long long i) noexcept {
        m_data[i >> 3] ^= static_cast<unsigned char>(1u << (i & 7));
    }
    // Grows to i + 1 (new elements clear) when needed, then flips; nothing
    // for i < 0.
    void toggleAutoResize(long long i);

    // All elements set / clear; the bits beyond the size in the last byte keep
    // their values.
    void setAll() noexcept;
    void clearAll() noexcept;
    // Flips every element; the bits beyond the size in the last byte keep
    // their values.
    void inverse() noexcept;
    // Flips every storage byte up to m_dataEnd, the bits beyond the size
    // included; nothing on an empty array.
    void toggleAll() noexcept;
    // Flips each listed element (indices outside the storage are skipped).
    void toggle_allIndicesOK(const ZKStaticArray<int>& indices) noexcept;
    // For each listed index the whole byte holding it becomes 0xFF (0x00):
    // a fast fill for arrays whose set elements are all listed; the other
    // elements of those bytes change with them. The bits beyond the size in
    // the last byte get their previous values back.
    void setAllModifiedIndices(const ZKArray<int>& indices) noexcept;
    void clearAllModifiedIndices(const ZKArray<int>& indices) noexcept;

    // Set algebra with b; this array is a.
    // a OR b, size max(a, b) (a grows when b is longer).
    void set(const ZKBoolArray& b);
    void merge(const ZKBoolArray& b);
    // a XOR b, size max(a, b).
    void toggle(const ZKBoolArray& b);
    // a AND NOT b over the common length; size a.
    void clear(const ZKBoolArray& b) noexcept;
    // a AND b, size min(a, b); the bits beyond the new size in the last byte
    // are cleared and the byte after the last used one becomes 1 when it lies
    // in the storage. b empty: a becomes size 0 and its first storage byte 1.
    // a empty: nothing.
    void inter(const ZKBoolArray& b) noexcept;
    // True when a AND b has a set element over the common length.
    bool hasInter(const ZKBoolArray& b) const noexcept;
    // True when both sizes are 0; otherwise equal sizes, equal whole bytes and
    // equal bits of the partial last byte. A non-zero size that is a multiple
    // of 8 always compares unequal.
    bool operator==(const ZKBoolArray& b) const noexcept;
    bool operator!=(const ZKBoolArray& b) const noexcept { return !(*this == b); }

    // Counting: cleared = size - set.
    long long countBitSet() const noexcept;
    long long countBitCleared() const noexcept;
    // Over first ... last - 1 (clamped to the elements); 0 when last <= first.
    long long countBitSetInScope(long long first, long long last) const noexcept;
    long long countBitClearedInScope(long long first, long long last) const noexcept;

    // Smallest index >= max(from, 0) holding value, -1 when none.
    long long findFirst(bool value, long long from = 0) const noexcept;
    // Largest index <= min(from, size - 1) holding value, -1 when none or when
    // from < 0.
    long long findLast(bool value, long long from) const noexcept;
    // i becomes the next set (clear) index after i, or -1 when there is none
    // or when i + 1 is not below the size; the search starts at 0 when i is
    // below -1. Walk with: for (i = -1; a.goToNextSet(i), i != -1;) ...
    void goToNextSet(long long& i) const noexcept;
    void goToNextSet(int& i) const noexcept;
    void goToNextCleared(long long& i) const noexcept;
    void goToNextCleared(int& i) const noexcept;

    // With no set (clear) element: out is emptied and the result is false.
    // Otherwise out is resized to exactly the count and holds the indices in
    // increasing order: true.
    bool getIndicesSet(ZKArray<int>& out) const;
    bool getIndicesCleared(ZKArray<int>& out) const;
    // reserveHint < 0: as above. Otherwise the capacity of out is raised to
    // the hint (exactly) when smaller, and the indices are appended to what
    // out holds: true.
    bool getIndicesSet(ZKArray<int>& out, int reserveHint) const;
    bool getIndicesCleared(ZKArray<int>& out, int reserveHint) const;

    // Lookup tables indexed by a byte value: the number of set bits; the index
    // (0-7) of the lowest set, lowest clear, highest set and highest clear bit
    // (8 for a byte that has no such bit).
    static const std::array<unsigned char, 256> s_bitCountTable;
    static const std::array<unsigned char, 256> s_lowestSetTable;
    static const std::array<unsigned char, 256> s_lowestClearedTable;
    static const std::array<unsigned char, 256> s_highestSetTable;
    static const std::array<unsigned char, 256> s_highestClearedTable;

private:
    // clearRest false leaves the bytes after the kept ones unset, for callers
    // that write every storage byte next.
    void reallocate(long long nbBytes, long long bytesToKeep, bool clearRest = true);
    void setEmptyState() noexcept;
    void writeBit(long long i, bool value) noexcept;
    void writeListed(long long count, const int* indices, long long limit, bool value) noexcept;
    void fillRange(long long first, long long end, bool value) noexcept;
    void setRange(long long first, long long count, bool value);
    void writeModifiedBytes(const ZKArray<int>& indices, unsigned char byte) noexcept;
    bool getIndices(ZKArray<int>& out, bool value) const;
    bool appendIndices(ZKArray<int>& out, int reserveHint, bool value) const;

    unsigned char* m_data;
    unsigned char* m_dataEnd;
    long long m_size;

    static unsigned char s_emptyByte;
};
