// ZKCompatibleType.h: a type record paired with a pointer offset.
//
// The offset counts 4-byte words, not bytes: convertPointer(p) advances p by
// offset * 4 bytes. The unit is deliberate and kept. ZKType is only ever held
// by pointer here.
#pragma once

#include "ZKExport.h"

class ZKType;

class ZKUTILS_EXPORT ZKCompatibleType {
public:
    explicit ZKCompatibleType(ZKType* type) : m_type(type), m_offset(0) {}
    ZKCompatibleType(const ZKCompatibleType& other) = default;
    ZKCompatibleType& operator=(const ZKCompatibleType& other) = default;

    void setOffset(int offset) { m_offset = offset; }
    ZKType* getType() const { return m_type; }
    int getOffset() const { return m_offset; }

    // Null for a null p; otherwise p advanced by offset 4-byte words.
    void* convertPointer(void* p) const {
        // Kept: the offset is in 4-byte units.
        return p ? static_cast<char*>(p) + static_cast<long long>(m_offset) * 4 : nullptr;
    }

    ZKType* m_type;
    int m_offset;
};
