#include "ZKUBIndexQueue.h"

namespace {

constexpr int kNotQueued = -1;
constexpr int kLastInQueue = -2;

} // namespace

ZKUBIndexQueue::ZKUBIndexQueue(int bound) {
    init(bound);
}

void ZKUBIndexQueue::init(int bound) {
    m_links.clear();
    m_links.resize(bound > 0 ? bound : 0, kNotQueued);
    m_first = -1;
    m_last = -1;
}

void ZKUBIndexQueue::pushAtStart(int i) {
    pushAtStart2(i);
}

bool ZKUBIndexQueue::pushAtStart2(int i) {
    if (!admissible(i) || m_links[i] != kNotQueued)
        return false;
    if (m_first < 0) {
        m_links[i] = kLastInQueue;
        m_last = i;
    } else {
        m_links[i] = m_first;
    }
    m_first = i;
    return true;
}

void ZKUBIndexQueue::pushAtEnd(int i) {
    if (!admissible(i) || m_links[i] != kNotQueued)
        return;
    m_links[i] = kLastInQueue;
    if (m_first < 0)
        m_first = i;
    else
        m_links[m_last] = i;
    m_last = i;
}

void ZKUBIndexQueue::pushAtStart(const ZKArray<int>& indices) {
    for (int i : indices)
        pushAtStart2(i);
}

void ZKUBIndexQueue::pushAtEnd(const ZKArray<int>& indices) {
    for (int i : indices)
        pushAtEnd(i);
}

int ZKUBIndexQueue::popAtStart() {
    if (m_first < 0)
        return -1;
    const int popped = m_first;
    // kept: after the last index m_first becomes -2, which reads as empty, and
    // m_last keeps the popped index
    m_first = m_links[popped];
    m_links[popped] = kNotQueued;
    return popped;
}

int ZKUBIndexQueue::computeSize() const {
    int count = 0;
    for (int i = m_first; i >= 0; i = m_links[i])
        ++count;
    return count;
}

void ZKUBIndexQueue::emptyList() {
    for (int i = m_first; i >= 0;) {
        const int next = m_links[i];
        m_links[i] = kNotQueued;
        i = next;
    }
    m_first = -1;
    m_last = -1;
}

void ZKUBIndexQueue::clearOneByOne() {
    emptyList();
}

void ZKUBIndexQueue::convertToArray(ZKArray<int>& out, bool noReserve) const {
    out.clear();
    if (!noReserve) {
        const long long bound = m_links.size();
        const long long room = bound >= 220 ? bound / 20 : 10;
        if (out.capacity() < room)
            out.reserve(room);
    }
    for (int i = m_first; i >= 0; i = m_links[i])
        out.push_back(i);
}

void ZKUBIndexQueue::convertToArrayAndClear(ZKArray<int>& out, bool noReserve) {
    convertToArray(out, noReserve);
    emptyList();
}
