// ZKTyped.h: the polymorphic root of the classes that know their class type,
// and the macros that let an application class join the registry.
//
// A participating class X has the statics X::s_classType (null until first
// use), X::getOrCreateClassType(), X::getClassTypeStatic(), X::classBuilder()
// and X::classCaster(ZKTyped*), and overrides getClassType(), copyClone() and
// emptyClone(). Objects returned by the builders and clones belong to the
// caller.
//
// For an application class, derive from ZKObject (or ZKTyped), put
// ZK_DECLARE_CLASS(X) in the class body and ZK_IMPLEMENT_CLASS(X) in one
// source file. X needs a default and a copy constructor; its type is
// registered under the name "X" when the module that holds
// ZK_IMPLEMENT_CLASS(X) is loaded.
#pragma once

#include "ZKClassType.h"
#include "ZKExport.h"

class ZKUTILS_EXPORT ZKTyped {
public:
    virtual const ZKClassType* getClassType() const;
    // Null: ZKTyped itself cannot be cloned.
    virtual ZKTyped* copyClone() const;
    virtual ZKTyped* emptyClone() const;
    virtual ~ZKTyped() = default;

    // Calls t's caster with this object: this object seen as a t, or null.
    void* castIn(const ZKClassType& t);
    const void* castIn(const ZKClassType& t) const;

    static ZKClassType* s_classType;
    // Create the "ZKTyped" record on first call and return it.
    static ZKClassType* getOrCreateClassType();
    static ZKClassType* getClassTypeStatic();
    // Null: ZKTyped cannot be instantiated by type.
    static ZKTyped* classBuilder();
    // Every object is a ZKTyped: returns p itself.
    static void* classCaster(ZKTyped* p);
};

namespace ZKClassTypeDetail {
// Creates the record of a class on first use: allocate it with the class
// name, store it, then set its builder and caster.
ZKUTILS_EXPORT ZKClassType* createClassType(ZKClassType*& slot, const char* name,
                                            ZKClassType::Builder builder,
                                            ZKClassType::Caster caster);
} // namespace ZKClassTypeDetail

#define ZK_DECLARE_CLASS(X)                                                                        \
public:                                                                                            \
    static ZKClassType* s_classType;                                                               \
    static ZKClassType* getOrCreateClassType();                                                    \
    static ZKClassType* getClassTypeStatic() {                                                     \
        return getOrCreateClassType();                                                             \
    }                                                                                              \
    static ZKTyped* classBuilder();                                                                \
    static void* classCaster(ZKTyped* p);                                                          \
    const ZKClassType* getClassType() const override {                                             \
        return getOrCreateClassType();                                                             \
    }                                                                                              \
    ZKTyped* copyClone() const override;                                                           \
    ZKTyped* emptyClone() const override;                                                          \
                                                                                                   \
private:

#define ZK_IMPLEMENT_CLASS(X)                                                                      \
    ZKClassType* X::s_classType = nullptr;                                                         \
    ZKClassType* X::getOrCreateClassType() {                                                       \
        return s_classType ? s_classType                                                           \
                           : ZKClassTypeDetail::createClassType(s_classType, #X, &X::classBuilder, \
                                                                &X::classCaster);                  \
    }                                                                                              \
    ZKTyped* X::classBuilder() {                                                                   \
        return new X();                                                                            \
    }                                                                                              \
    void* X::classCaster(ZKTyped* p) {                                                             \
        return p ? dynamic_cast<X*>(p) : nullptr;                                                  \
    }                                                                                              \
    ZKTyped* X::copyClone() const {                                                                \
        return new X(*this);                                                                       \
    }                                                                                              \
    ZKTyped* X::emptyClone() const {                                                               \
        return new X();                                                                            \
    }                                                                                              \
    static ZKClassType* const zkClassTypeRegistration_##X = X::getOrCreateClassType();
