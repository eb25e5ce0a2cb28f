// ZKClassType.h: the run-time class-type registry.
//
// Each class that takes part (see ZKTyped.h and the ZK_DECLARE_CLASS /
// ZK_IMPLEMENT_CLASS macros) owns one ZKClassType record holding its name, a
// serial number, a builder that makes a new default object and a caster that
// tells whether an object belongs to the class. The binary file format stores
// an object's class name and re-creates the object by name through
// getFromName(name)->createNewInstance().
//
// Records are never copied and compare by identity. The name pointer is kept,
// not copied: it must outlive the record (class names are static literals).
//
// The registry is a pointer array ordered by hash bucket: 41 buckets, bucket
// h holding entries m_hash[h] up to m_hash[h+1] (m_numTypes for bucket 40).
// Within a bucket the newest record comes first, so a name registered twice
// is found as its newest record.
//
// Threads: not locked. The library's own classes are registered while the
// library loads; application classes must register from one thread, before
// other threads look types up.
#pragma once

#include "ZKExport.h"

class ZKTyped;

class ZKUTILS_EXPORT ZKClassType {
public:
    using Builder = ZKTyped* (*)();
    using Caster = void* (*)(ZKTyped*);

    static constexpr int kNumBuckets = 41;

    // Registers the record first in its bucket; m_id is the number of types
    // registered before it.
    explicit ZKClassType(const char* name);
    // Does nothing: the record stays registered.
    ~ZKClassType() = default;

    ZKClassType(const ZKClassType&) = delete;
    ZKClassType& operator=(const ZKClassType&) = delete;

    const char* getName() const { return m_name; }
    bool operator==(const ZKClassType& other) const { return this == &other; }
    bool operator!=(const ZKClassType& other) const { return this != &other; }

    // The builder's new object (owned by the caller), or null without builder.
    ZKTyped* createNewInstance() const;

    // The registered type with exactly this name (case-sensitive), or null.
    static ZKClassType* getFromName(const char* name);
    // Sum of the name's bytes as signed 8-bit values, remainder by 41 with the
    // sign of the sum; a negative bucket is never found by getFromName.
    static int computeHashCode(const char* name);
    // Types in a bucket; 0 for a negative bucket.
    static int sizeOfHash(int bucket);
    // Deletes every record, last index first, and frees the array. The bucket
    // starts and the classes' s_classType pointers are left as they are: for
    // process shutdown only.
    static void deleteAllTypes();

    const char* m_name;
    int m_id;
    Builder m_builder = nullptr;
    Caster m_caster = nullptr;

    static int m_numTypes;
    static ZKClassType** m_allTypes;
    static int m_hash[kNumBuckets];
};
