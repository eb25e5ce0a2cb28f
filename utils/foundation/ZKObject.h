// ZKObject.h: the ordinary concrete base of the classes that know their class
// type. It adds no data to ZKTyped (from which it derives virtually); its
// type is registered as "ZKObject" while the library loads, and its builder
// and clones make new default ZKObjects owned by the caller.
#pragma once

#include "ZKExport.h"
#include "ZKTyped.h"

class ZKUTILS_EXPORT ZKObject : public virtual ZKTyped {
public:
    ZKObject() = default;
    ZKObject(const ZKObject&) = default;
    ZKObject& operator=(const ZKObject&) = default;
    ~ZKObject() override = default;

    const ZKClassType* getClassType() const override;
    ZKTyped* copyClone() const override;
    ZKTyped* emptyClone() const override;

    static ZKClassType* s_classType;
    static ZKClassType* getOrCreateClassType();
    static ZKClassType* getClassTypeStatic();
    static ZKTyped* classBuilder();
    // Null for a null p or an object that is not a ZKObject.
    static void* classCaster(ZKTyped* p);
};
