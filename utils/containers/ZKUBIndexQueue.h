// ZKUBIndexQueue.h: a queue of distinct indices below a fixed bound.
//
// The queue is linked through an array of next-links with one entry per
// admissible index, so membership, pushing at either end and popping take
// constant time. Link values: -1 the index is not queued, -2 the index is the
// last one, any other value the next index. m_first < 0 means empty.
//
// Indices outside 0 ... bound - 1 are never queued: pushing one does nothing.
//
// Threads: not locked; one queue must not be used from two threads at once.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"

class ZKUTILS_EXPORT ZKUBIndexQueue {
public:
    // An empty queue for indices 0 ... bound - 1.
    explicit ZKUBIndexQueue(int bound = 0);
    // Sets the bound, all links to -1 and empties the queue.
    void init(int bound);

    // Pushes i in front unless it is already queued.
    void pushAtStart(int i);
    // The same; true when i was pushed, false when it was already queued.
    bool pushAtStart2(int i);
    // Pushes i at the back unless it is already queued.
    void pushAtEnd(int i);
    // Push each listed index in array order (a list pushed at the start ends
    // up reversed in front).
    void pushAtStart(const ZKArray<int>& indices);
    void pushAtEnd(const ZKArray<int>& indices);
    // The first index, removed from the queue; -1 when empty. Popping the
    // last index leaves m_first at -2 (empty) and m_last as it was.
    int popAtStart();

    // The number of queued indices, counted along the links.
    int computeSize() const;
    bool isEmpty() const { return m_first < 0; }
    bool contains(int i) const { return i >= 0 && i < m_links.size() && m_links[i] != -1; }
    int getBound() const { return int(m_links.size()); }
    int getFirst() const { return m_first; }
    int getLast() const { return m_last; }
    const ZKArray<int>& getLinks() const { return m_links; }

    // Empty the queue along its links (the cost is its length, not the bound).
    void emptyList();
    void clearOneByOne();

    // out is emptied (storage kept) and receives the queued indices from first
    // to last. Unless noReserve, out is first given room for bound / 20
    // entries (bound >= 220) or 10, exactly, when its capacity is smaller.
    void convertToArray(ZKArray<int>& out, bool noReserve) const;
    // The same, then the queue is emptied.
    void convertToArrayAndClear(ZKArray<int>& out, bool noReserve);

private:
    bool admissible(int i) const { return i >= 0 && i < m_links.size(); }

    int m_first = -1;
    int m_last = -1;
    ZKArray<int> m_links;
};
