#include "ZKTyped.h"
#include "ZKObject.h"

ZKClassType* ZKClassTypeDetail::createClassType(ZKClassType*& slot, const char* name,
                                                ZKClassType::Builder builder,
                                                ZKClassType::Caster caster) {
    slot = new ZKClassType(name);
    slot->m_builder = builder;
    slot->m_caster = caster;
    return slot;
}

ZKClassType* ZKTyped::s_classType = nullptr;

ZKClassType* ZKTyped::getOrCreateClassType() {
    return s_classType ? s_classType
                       : ZKClassTypeDetail::createClassType(
                             s_classType, "ZKTyped", &ZKTyped::classBuilder, &ZKTyped::classCaster);
}

ZKClassType* ZKTyped::getClassTypeStatic() {
    return getOrCreateClassType();
}

const ZKClassType* ZKTyped::getClassType() const {
    return getOrCreateClassType();
}

ZKTyped* ZKTyped::copyClone() const {
    return nullptr;
}

ZKTyped* ZKTyped::emptyClone() const {
    return nullptr;
}

ZKTyped* ZKTyped::classBuilder() {
    return nullptr;
}

void* ZKTyped::classCaster(ZKTyped* p) {
    return p;
}

void* ZKTyped::castIn(const ZKClassType& t) {
    return t.m_caster ? t.m_caster(this) : nullptr;
}

const void* ZKTyped::castIn(const ZKClassType& t) const {
    return t.m_caster ? t.m_caster(const_cast<ZKTyped*>(this)) : nullptr;
}

ZKClassType* ZKObject::s_classType = nullptr;

ZKClassType* ZKObject::getOrCreateClassType() {
    return s_classType ? s_classType
                       : ZKClassTypeDetail::createClassType(s_classType, "ZKObject",
                                                            &ZKObject::classBuilder,
                                                            &ZKObject::classCaster);
}

ZKClassType* ZKObject::getClassTypeStatic() {
    return getOrCreateClassType();
}

const ZKClassType* ZKObject::getClassType() const {
    return getOrCreateClassType();
}

ZKTyped* ZKObject::copyClone() const {
    return new ZKObject();
}

ZKTyped* ZKObject::emptyClone() const {
    return new ZKObject();
}

ZKTyped* ZKObject::classBuilder() {
    return new ZKObject();
}

void* ZKObject::classCaster(ZKTyped* p) {
    return p ? dynamic_cast<ZKObject*>(p) : nullptr;
}

namespace {
// The library's own classes are registered while the library loads, before
// any user code runs.
struct RegisterLibraryClassTypes {
    RegisterLibraryClassTypes() {
        ZKTyped::getOrCreateClassType();
        ZKObject::getOrCreateClassType();
    }
} registerLibraryClassTypes;
} // namespace
