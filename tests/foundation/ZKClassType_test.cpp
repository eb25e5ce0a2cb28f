#include "ZKClassType.h"
#include "ZKCompatibleType.h"
#include "ZKObject.h"
#include "ZKTyped.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

class TestWidget : public ZKObject {
    ZK_DECLARE_CLASS(TestWidget)
public:
    int m_value = 7;
};
ZK_IMPLEMENT_CLASS(TestWidget)

class TestGadget : public ZKObject {
    ZK_DECLARE_CLASS(TestGadget)
};
ZK_IMPLEMENT_CLASS(TestGadget)

// Records in the bucket of `name`, in registry order.
std::vector<ZKClassType*> bucketOf(const char* name) {
    const int h = ZKClassType::computeHashCode(name);
    std::vector<ZKClassType*> out;
    for (int i = 0; i < ZKClassType::sizeOfHash(h); ++i)
        out.push_back(ZKClassType::m_allTypes[ZKClassType::m_hash[h] + i]);
    return out;
}

} // namespace

TEST(ZKClassType, LibraryTypesAreRegisteredAtLoad) {
    ZKClassType* typed = ZKClassType::getFromName("ZKTyped");
    ZKClassType* object = ZKClassType::getFromName("ZKObject");
    ASSERT_NE(typed, nullptr);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(typed, ZKTyped::s_classType);
    EXPECT_EQ(object, ZKObject::getClassTypeStatic());
    EXPECT_STREQ(object->getName(), "ZKObject");
    EXPECT_EQ(ZKClassType::getFromName("zkobject"), nullptr); // case-sensitive
    EXPECT_EQ(ZKClassType::getFromName("NoSuchClass"), nullptr);
}

TEST(ZKClassType, HashIsTheSignedByteSumModulo41) {
    EXPECT_EQ(ZKClassType::computeHashCode(""), 0);
    EXPECT_EQ(ZKClassType::computeHashCode("ab"), 195 % 41);
    EXPECT_EQ(ZKClassType::computeHashCode("ba"), 31);
    EXPECT_EQ(ZKClassType::computeHashCode("\xff"), -1); // a signed byte
    EXPECT_EQ(ZKClassType::computeHashCode("\x80\x80"), -256 % 41);
    EXPECT_EQ(ZKClassType::sizeOfHash(-3), 0);
    // The 32-bit sum wraps around: 20000000 bytes of 'z' sum to 2440000000,
    // which is -1854967296 as a signed 32-bit value.
    const std::string longName(20000000, 'z');
    EXPECT_EQ(ZKClassType::computeHashCode(longName.c_str()), -1854967296 % 41);
    EXPECT_EQ(ZKClassType::getFromName(longName.c_str()), nullptr);
}

TEST(ZKClassType, NamesInANegativeBucketAreNeverFound) {
    // Runs in a child so the registry of this test process keeps its buckets.
    EXPECT_EXIT(
        {
            const int before = ZKClassType::m_numTypes;
            ZKClassType* negative = new ZKClassType("\xe9\xe9"); // bucket -46 % 41 = -5
            bool ok = ZKClassType::computeHashCode(negative->getName()) == -5 &&
                      negative->m_id == before && ZKClassType::m_numTypes == before + 1 &&
                      ZKClassType::getFromName("\xe9\xe9") == nullptr &&
                      ZKClassType::getFromName("ZKObject") == ZKObject::getClassTypeStatic();
            // Every other record is still in the bucket its name hashes to.
            int found = 0;
            for (int h = 0; h < ZKClassType::kNumBuckets; ++h)
                for (int i = 0; i < ZKClassType::sizeOfHash(h); ++i)
                    found +=
                        ZKClassType::computeHashCode(
                            ZKClassType::m_allTypes[ZKClassType::m_hash[h] + i]->getName()) == h;
            ok = ok && found == before;
            std::exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ZKClassType, InstancesAreBuiltByName) {
    EXPECT_EQ(ZKTyped::getClassTypeStatic()->createNewInstance(), nullptr);
    std::unique_ptr<ZKTyped> object(ZKObject::getClassTypeStatic()->createNewInstance());
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->getClassType(), ZKObject::getClassTypeStatic());

    std::unique_ptr<ZKTyped> widget(ZKClassType::getFromName("TestWidget")->createNewInstance());
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->getClassType(), TestWidget::getClassTypeStatic());
    EXPECT_EQ(dynamic_cast<TestWidget*>(widget.get())->m_value, 7);
}

TEST(ZKClassType, CastersAndClones) {
    TestWidget widget;
    widget.m_value = 3;
    ZKObject plain;
    EXPECT_EQ(widget.castIn(*TestWidget::getClassTypeStatic()), &widget);
    EXPECT_EQ(widget.castIn(*TestGadget::getClassTypeStatic()), nullptr);
    EXPECT_NE(plain.castIn(*ZKObject::getClassTypeStatic()), nullptr);
    EXPECT_EQ(plain.castIn(*TestWidget::getClassTypeStatic()), nullptr);
    ZKTyped* asTyped = &plain;
    EXPECT_EQ(plain.castIn(*ZKTyped::getClassTypeStatic()), asTyped);
    EXPECT_EQ(ZKObject::classCaster(nullptr), nullptr);
    EXPECT_EQ(ZKTyped::classCaster(nullptr), nullptr);

    std::unique_ptr<ZKTyped> copy(widget.copyClone());
    EXPECT_EQ(dynamic_cast<TestWidget*>(copy.get())->m_value, 3);
    std::unique_ptr<ZKTyped> empty(widget.emptyClone());
    EXPECT_EQ(dynamic_cast<TestWidget*>(empty.get())->m_value, 7);
    std::unique_ptr<ZKTyped> objectCopy(plain.copyClone());
    EXPECT_EQ(objectCopy->getClassType(), ZKObject::getClassTypeStatic());
    std::unique_ptr<ZKTyped> objectEmpty(plain.emptyClone());
    EXPECT_EQ(objectEmpty->getClassType(), ZKObject::getClassTypeStatic());

    // ZKTyped itself has no clones and no builder.
    ZKTyped root;
    EXPECT_EQ(root.copyClone(), nullptr);
    EXPECT_EQ(root.emptyClone(), nullptr);
    EXPECT_EQ(ZKTyped::classBuilder(), nullptr);
    EXPECT_EQ(root.getClassType(), ZKTyped::getClassTypeStatic());
    EXPECT_EQ(root.castIn(*ZKObject::getClassTypeStatic()), nullptr);
}

TEST(ZKClassType, TypedVirtualSlotsKeepTheirOrder) {
    // A virtual member pointer holds 1 + the byte offset of its slot
    // (Itanium C++ ABI): getClassType, copyClone, emptyClone, then the
    // destructor.
    const auto slotOf = [](auto member) {
        long long raw[2];
        static_assert(sizeof member == sizeof raw);
        std::memcpy(raw, &member, sizeof raw);
        return (raw[0] - 1) / (long long)sizeof(void*);
    };
    EXPECT_EQ(slotOf(&ZKTyped::getClassType), 0);
    EXPECT_EQ(slotOf(&ZKTyped::copyClone), 1);
    EXPECT_EQ(slotOf(&ZKTyped::emptyClone), 2);
    EXPECT_EQ(slotOf(&ZKObject::getClassType), 0);
    EXPECT_EQ(slotOf(&ZKObject::emptyClone), 2);
}

TEST(ZKClassType, IdentityNotNameMakesEquality) {
    const ZKClassType* a = ZKObject::getClassTypeStatic();
    EXPECT_TRUE(*a == *ZKClassType::getFromName("ZKObject"));
    EXPECT_TRUE(*a != *ZKTyped::getClassTypeStatic());
}

TEST(ZKClassType, CollidingNamesShareABucketNewestFirst) {
    const int before = ZKClassType::m_numTypes;
    const int bucket = ZKClassType::computeHashCode("ab");
    const int sizeBefore = ZKClassType::sizeOfHash(bucket);
    ZKClassType* ab = new ZKClassType("ab");
    ZKClassType* ba = new ZKClassType("ba");
    EXPECT_EQ(ab->m_id, before);
    EXPECT_EQ(ba->m_id, before + 1);
    EXPECT_EQ(ZKClassType::m_numTypes, before + 2);
    EXPECT_EQ(ZKClassType::sizeOfHash(bucket), sizeBefore + 2);
    std::vector<ZKClassType*> inBucket = bucketOf("ab");
    ASSERT_GE(inBucket.size(), 2u);
    EXPECT_EQ(inBucket[0], ba);
    EXPECT_EQ(inBucket[1], ab);
    EXPECT_EQ(ZKClassType::getFromName("ab"), ab);
    EXPECT_EQ(ZKClassType::getFromName("ba"), ba);

    ZKClassType* ab2 = new ZKClassType("ab");
    EXPECT_EQ(ZKClassType::getFromName("ab"), ab2); // the newest record wins

    // Every bucket's start stays consistent with the array.
    int total = 0;
    for (int h = 0; h < ZKClassType::kNumBuckets; ++h) {
        EXPECT_EQ(ZKClassType::m_hash[h], total);
        total += ZKClassType::sizeOfHash(h);
        for (int i = 0; i < ZKClassType::sizeOfHash(h); ++i)
            EXPECT_EQ(ZKClassType::computeHashCode(
                          ZKClassType::m_allTypes[ZKClassType::m_hash[h] + i]->getName()),
                      h);
    }
    EXPECT_EQ(total, ZKClassType::m_numTypes);
    EXPECT_EQ(ZKClassType::getFromName(""), nullptr);
}

TEST(ZKClassType, DeleteAllTypesEmptiesTheRegistry) {
    // Runs in a child so the registry of this test process stays intact.
    EXPECT_EXIT(
        {
            ZKClassType::deleteAllTypes();
            const bool empty = ZKClassType::m_numTypes == 0 && ZKClassType::m_allTypes == nullptr &&
                               ZKClassType::getFromName("ZKObject") == nullptr;
            ZKClassType* fresh = new ZKClassType("");
            const bool reset = fresh->m_id == 0 && ZKClassType::getFromName("") == fresh &&
                               ZKClassType::sizeOfHash(0) == 1 && ZKClassType::m_hash[40] == 1;
            ZKClassType::deleteAllTypes();
            std::exit(empty && reset ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ZKCompatibleType, OffsetCountsFourByteWords) {
    ZKCompatibleType t(nullptr);
    EXPECT_EQ(t.getOffset(), 0);
    char buffer[64];
    EXPECT_EQ(t.convertPointer(buffer), buffer);
    t.setOffset(3);
    // Kept: the offset is in 4-byte units, so 3 moves the pointer by 12 bytes.
    EXPECT_EQ(t.convertPointer(buffer), buffer + 12);
    EXPECT_EQ(t.convertPointer(nullptr), nullptr);
    t.setOffset(-2);
    EXPECT_EQ(t.convertPointer(buffer + 16), buffer + 8);
    ZKCompatibleType copy(t);
    EXPECT_EQ(copy.getOffset(), -2);
    ZKCompatibleType assigned(nullptr);
    assigned = t;
    EXPECT_EQ(assigned.convertPointer(buffer + 8), buffer);
}
