// ZKUIdGenerator.h: allocators of unsigned identifiers.
//
// ZKUIdGenerator hands out identifiers from a counter and recycles released
// ones through a free list (last released, first reused). It owns the list
// nodes, one heap allocation each. ZKUIdGenerator2 keeps a ZKBoolArray of the
// identifiers in use and hands out the first free one at or after a search
// hint, growing the set 10 identifiers at a time.
//
// Neither checks that a released identifier was in use.
//
// Threads: not locked; one generator must not be used from two threads at
// once.
#pragma once

#include "ZKBoolArray.h"
#include "ZKExport.h"

// A node of ZKUIdGenerator's free list.
struct ZKUTILS_EXPORT ZKFreeUIdItem {
    ZKFreeUIdItem() = default;
    ZKFreeUIdItem(unsigned int uid, ZKFreeUIdItem* next) : m_uid(uid), m_next(next) {}
    void clear() {
        m_uid = 0;
        m_next = nullptr;
    }

    unsigned int m_uid = 0;
    ZKFreeUIdItem* m_next = nullptr;
};

class ZKUTILS_EXPORT ZKUIdGenerator {
public:
    ZKUIdGenerator() = default;
    // Copies the counter and the free list, node by node in the same order.
    ZKUIdGenerator(const ZKUIdGenerator& other);
    ZKUIdGenerator(ZKUIdGenerator&& other) noexcept;
    ZKUIdGenerator& operator=(const ZKUIdGenerator& other);
    ZKUIdGenerator& operator=(ZKUIdGenerator&& other) noexcept;
    ~ZKUIdGenerator();

    // The most recently released identifier when there is one, otherwise the
    // counter, which then moves up by one.
    unsigned int getNewUId();
    // uid + 1 == counter: the counter moves down to uid. Otherwise uid goes to
    // the front of the free list. Entries of the list just below a lowered
    // counter stay in the list.
    void releaseUId(unsigned int uid);
    // Claims nothing: returns true and changes nothing.
    bool getThisUId(unsigned int uid);
    // Frees the list; counter 0.
    void clear();

    unsigned int getNextUId() const { return m_nextUId; }
    const ZKFreeUIdItem* getFreeList() const { return m_freeList; }

private:
    void copyListFrom(const ZKFreeUIdItem* first);

    unsigned int m_nextUId = 0;
    ZKFreeUIdItem* m_freeList = nullptr;
};

class ZKUTILS_EXPORT ZKUIdGenerator2 {
public:
    ZKUIdGenerator2() = default;
    void swap(ZKUIdGenerator2& other) noexcept;

    // The first clear identifier at or after the search hint, which becomes
    // the hint. None: the set grows by 10 and its old size is handed out.
    unsigned int getNewUId();
    // Claims uid: false when it is already in use. An identifier at or beyond
    // the size grows the set to max(uid + 1, size + 10). The hint is unchanged.
    bool getThisUId(unsigned int uid);
    // Marks uid free and lowers the search hint to it.
    void releaseUId(unsigned int uid);
    // Resizes the set to n identifiers (new ones free): the size changes, not
    // only the capacity.
    void reserve(int n);
    // Frees the set; hint 0.
    void clear();

    // The set's storage bytes + 8 / the set's storage bytes.
    long long getMemoryUsed() const { return m_usedUIds.getDynMemoryUsed() + 8; }
    long long getDynMemoryUsed() const { return m_usedUIds.getDynMemoryUsed(); }

    const ZKBoolArray& getUsedUIds() const { return m_usedUIds; }
    unsigned int getSearchFrom() const { return m_searchFrom; }

private:
    ZKBoolArray m_usedUIds;
    unsigned int m_searchFrom = 0;
};
