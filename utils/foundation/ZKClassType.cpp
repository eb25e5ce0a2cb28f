#include "ZKClassType.h"

#include "ZKObject.h"
#include "ZKTyped.h"

#include <cstdlib>
#include <cstring>
#include <new>

int ZKClassType::m_numTypes = 0;
ZKClassType** ZKClassType::m_allTypes = nullptr;
int ZKClassType::m_hash[ZKClassType::kNumBuckets] = {};

ZKClassType::ZKClassType(const char* name) : m_name(name), m_id(m_numTypes) {
    if (m_numTypes == 0) {
        for (int& start : m_hash)
            start = 0;
    }
    int h = computeHashCode(name);
    // Names with bytes above 0x7F may hash negative; such a record is kept at
    // the front of the array, where getFromName never looks.
    if (h < 0)
        h = -1;
    for (int b = h + 1; b < kNumBuckets; ++b)
        ++m_hash[b];

    const int at = h < 0 ? 0 : m_hash[h];
    auto** grown = static_cast<ZKClassType**>(std::malloc(sizeof(ZKClassType*) * (m_numTypes + 1)));
    if (!grown)
        throw std::bad_alloc();
    if (m_allTypes)
        std::memcpy(grown, m_allTypes, sizeof(ZKClassType*) * at);
    grown[at] = this;
    if (m_allTypes)
        std::memcpy(grown + at + 1, m_allTypes + at, sizeof(ZKClassType*) * (m_numTypes - at));
    std::free(m_allTypes);
    m_allTypes = grown;
    ++m_numTypes;
}

ZKTyped* ZKClassType::createNewInstance() const {
    return m_builder ? m_builder() : nullptr;
}

int ZKClassType::computeHashCode(const char* name) {
    if (!name)
        return 0;
    // A 32-bit sum that wraps around like the machine addition: a name read
    // from a damaged file may be long enough to overflow it.
    unsigned sum = 0;
    for (const char* p = name; *p; ++p)
        sum += unsigned(static_cast<signed char>(*p));
    return int(sum) % kNumBuckets;
}

int ZKClassType::sizeOfHash(int bucket) {
    if (bucket < 0 || bucket >= kNumBuckets || m_numTypes == 0)
        return 0;
    const int end = bucket + 1 < kNumBuckets ? m_hash[bucket + 1] : m_numTypes;
    return end - m_hash[bucket];
}

ZKClassType* ZKClassType::getFromName(const char* name) {
    if (!name)
        return nullptr;
    const int h = computeHashCode(name);
    const int n = sizeOfHash(h);
    if (n <= 0)
        return nullptr;
    for (int i = m_hash[h]; i < m_hash[h] + n; ++i) {
        if (std::strcmp(m_allTypes[i]->m_name, name) == 0)
            return m_allTypes[i];
    }
    return nullptr;
}

void ZKClassType::deleteAllTypes() {
    while (m_numTypes > 0) {
        --m_numTypes;
        delete m_allTypes[m_numTypes];
    }
    std::free(m_allTypes);
    m_allTypes = nullptr;
}
