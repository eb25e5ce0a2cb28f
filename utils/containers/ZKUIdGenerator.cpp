#include "ZKUIdGenerator.h"

#include <algorithm>
#include <utility>

ZKUIdGenerator::ZKUIdGenerator(const ZKUIdGenerator& other) : m_nextUId(other.m_nextUId) {
    copyListFrom(other.m_freeList);
}

ZKUIdGenerator::ZKUIdGenerator(ZKUIdGenerator&& other) noexcept
    : m_nextUId(other.m_nextUId), m_freeList(other.m_freeList) {
    other.m_nextUId = 0;
    other.m_freeList = nullptr;
}

ZKUIdGenerator& ZKUIdGenerator::operator=(const ZKUIdGenerator& other) {
    if (this != &other) {
        clear();
        m_nextUId = other.m_nextUId;
        copyListFrom(other.m_freeList);
    }
    return *this;
}

ZKUIdGenerator& ZKUIdGenerator::operator=(ZKUIdGenerator&& other) noexcept {
    if (this != &other) {
        clear();
        std::swap(m_nextUId, other.m_nextUId);
        std::swap(m_freeList, other.m_freeList);
    }
    return *this;
}

ZKUIdGenerator::~ZKUIdGenerator() {
    clear();
}

void ZKUIdGenerator::copyListFrom(const ZKFreeUIdItem* first) {
    ZKFreeUIdItem** tail = &m_freeList;
    for (const ZKFreeUIdItem* item = first; item; item = item->m_next) {
        *tail = new ZKFreeUIdItem(item->m_uid, nullptr);
        tail = &(*tail)->m_next;
    }
}

unsigned int ZKUIdGenerator::getNewUId() {
    if (ZKFreeUIdItem* item = m_freeList) {
        const unsigned int uid = item->m_uid;
        m_freeList = item->m_next;
        delete item;
        return uid;
    }
    return m_nextUId++;
}

void ZKUIdGenerator::releaseUId(unsigned int uid) {
    // kept: lowering the counter does not take back free-list entries just
    // below it
    if (uid + 1 == m_nextUId)
        m_nextUId = uid;
    else
        m_freeList = new ZKFreeUIdItem(uid, m_freeList);
}

bool ZKUIdGenerator::getThisUId(unsigned int) {
    return true; // kept: claims nothing, callers only check the result
}

void ZKUIdGenerator::clear() {
    while (ZKFreeUIdItem* item = m_freeList) {
        m_freeList = item->m_next;
        delete item;
    }
    m_nextUId = 0;
}

void ZKUIdGenerator2::swap(ZKUIdGenerator2& other) noexcept {
    m_usedUIds.swap(other.m_usedUIds);
    std::swap(m_searchFrom, other.m_searchFrom);
}

unsigned int ZKUIdGenerator2::getNewUId() {
    const long long found = m_usedUIds.findFirst(false, m_searchFrom);
    if (found >= 0) {
        m_usedUIds.set(found, 1);
        m_searchFrom = static_cast<unsigned int>(found);
        return m_searchFrom;
    }
    const long long size = std::max(m_usedUIds.size(), 0LL);
    m_usedUIds.resize(size + 10, false);
    m_usedUIds.set(size, 1);
    m_searchFrom = static_cast<unsigned int>(size + 1);
    return static_cast<unsigned int>(size);
}

bool ZKUIdGenerator2::getThisUId(unsigned int uid) {
    const long long size = m_usedUIds.size();
    if (uid >= size) {
        m_usedUIds.resize(std::max(uid + 1LL, size + 10), false);
    } else if (m_usedUIds.get(uid)) {
        return false;
    }
    m_usedUIds.set(uid, 1);
    return true;
}

void ZKUIdGenerator2::releaseUId(unsigned int uid) {
    // Identifiers beyond the set are free already.
    if (uid < m_usedUIds.size())
        m_usedUIds.clear(uid, 1);
    m_searchFrom = std::min(m_searchFrom, uid);
}

void ZKUIdGenerator2::reserve(int n) {
    m_usedUIds.resize(n, false);
}

void ZKUIdGenerator2::clear() {
    m_usedUIds.releaseData();
    m_searchFrom = 0;
}
