#include "ZKClassType.h"
#include "ZKCompatibleType.h"
#include "ZKObject.h"
#include "ZKTyped.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

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

// Number of records in the bucket their name hashes to, checking that every
// bucket starts where the previous one ends.
int recordsInTheirBuckets() {
    int found = 0, start = 0;
    for (int h = 0; h < ZKClassType::kNumBuckets; ++h) {
        EXPECT_EQ(ZKClassType::m_hash[h], start) << h;
        start += ZKClassType::sizeOfHash(h);
        for (int i = 0; i < ZKClassType::sizeOfHash(h); ++i)
            found += ZKClassType::computeHashCode(
                         ZKClassType::m_allTypes[ZKClassType::m_hash[h] + i]->getName()) == h;
    }
    return found;
}

} // namespace

TEST(ZKClassType, LibraryTypesAreRegisteredAtLoadAndFoundByIdentity) {
    ZKClassType* object = ZKClassType::getFromName("ZKObject");
    EXPECT_EQ(ZKClassType::getFromName("ZKTyped"), ZKTyped::s_classType);
    ASSERT_EQ(object, ZKObject::getClassTypeStatic());
    EXPECT_STREQ(object->getName(), "ZKObject");
    EXPECT_EQ(ZKClassType::getFromName("zkobject"), nullptr); // case-sensitive
    EXPECT_TRUE(*object != *ZKTyped::getClassTypeStatic());
}

TEST(ZKClassType, HashIsTheSignedByteSumModulo41) {
    const std::pair<const char*, int> cases[] = {
        {"", 0}, {"ab", 195 % 41}, {"ba", 31}, {"\xff", -1}, {"\x80\x80", -256 % 41}};
    for (const auto& c : cases)
        EXPECT_EQ(ZKClassType::computeHashCode(c.first), c.second) << c.first;
    EXPECT_EQ(ZKClassType::sizeOfHash(-3), 0);
    // The 32-bit sum wraps: 20000000 'z' sum to 2440000000, -1854967296 signed.
    const std::string longName(20000000, 'z');
    EXPECT_EQ(ZKClassType::computeHashCode(longName.c_str()), -1854967296 % 41);
    EXPECT_EQ(ZKClassType::getFromName(longName.c_str()), nullptr);
}

TEST(ZKClassType, NamesInANegativeBucketAreNeverFound) {
    // In a child, so that this process's registry keeps its buckets.
    EXPECT_EXIT(
        {
            const int before = ZKClassType::m_numTypes;
            ZKClassType* negative = new ZKClassType("\xe9\xe9"); // bucket -46 % 41 = -5
            const bool ok = ZKClassType::computeHashCode(negative->getName()) == -5 &&
                            negative->m_id == before && ZKClassType::m_numTypes == before + 1 &&
                            ZKClassType::getFromName("\xe9\xe9") == nullptr &&
                            ZKClassType::getFromName("ZKObject") == ZKObject::getClassTypeStatic();
            std::exit(ok && recordsInTheirBuckets() == before ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST(ZKClassType, InstancesCastersAndClones) {
    EXPECT_EQ(ZKTyped::getClassTypeStatic()->createNewInstance(), nullptr);
    std::unique_ptr<ZKTyped> built(ZKClassType::getFromName("TestWidget")->createNewInstance());
    ASSERT_NE(dynamic_cast<TestWidget*>(built.get()), nullptr);
    EXPECT_EQ(dynamic_cast<TestWidget*>(built.get())->m_value, 7);

    TestWidget widget;
    widget.m_value = 3;
    ZKObject plain;
    EXPECT_EQ(widget.castIn(*TestWidget::getClassTypeStatic()), &widget);
    EXPECT_EQ(widget.castIn(*TestGadget::getClassTypeStatic()), nullptr);
    EXPECT_EQ(plain.castIn(*TestWidget::getClassTypeStatic()), nullptr);
    EXPECT_EQ(plain.castIn(*ZKTyped::getClassTypeStatic()), static_cast<ZKTyped*>(&plain));
    EXPECT_EQ(ZKObject::classCaster(nullptr), nullptr);
    std::unique_ptr<ZKTyped> copy(widget.copyClone()), empty(widget.emptyClone());
    EXPECT_EQ(dynamic_cast<TestWidget*>(copy.get())->m_value, 3);
    EXPECT_EQ(dynamic_cast<TestWidget*>(empty.get())->m_value, 7);
    std::unique_ptr<ZKTyped> objectCopy(plain.copyClone());
    EXPECT_EQ(objectCopy->getClassType(), ZKObject::getClassTypeStatic());

    // ZKTyped itself has no clones and no builder.
    ZKTyped root;
    EXPECT_EQ(root.copyClone(), nullptr);
    EXPECT_EQ(root.emptyClone(), nullptr);
    EXPECT_EQ(ZKTyped::classBuilder(), nullptr);
    EXPECT_EQ(root.castIn(*ZKObject::getClassTypeStatic()), nullptr);
}

TEST(ZKClassType, TypedVirtualSlotsKeepTheirOrder) {
    // A virtual member pointer holds 1 + the byte offset of its slot
    // (Itanium C++ ABI): getClassType, copyClone, emptyClone, destructor.
    const auto slotOf = [](auto member) {
        long long raw[2];
        static_assert(sizeof member == sizeof raw);
        std::memcpy(raw, &member, sizeof raw);
        return (raw[0] - 1) / (long long)sizeof(void*);
    };
    EXPECT_EQ(slotOf(&ZKTyped::getClassType), 0);
    EXPECT_EQ(slotOf(&ZKTyped::copyClone), 1);
    EXPECT_EQ(slotOf(&ZKTyped::emptyClone), 2);
    EXPECT_EQ(slotOf(&ZKObject::emptyClone), 2);
}

TEST(ZKClassType, CollidingNamesShareABucketNewestFirst) {
    const int before = ZKClassType::m_numTypes;
    const int bucket = ZKClassType::computeHashCode("ab");
    const int sizeBefore = ZKClassType::sizeOfHash(bucket);
    ZKClassType* ab = new ZKClassType("ab");
    ZKClassType* ba = new ZKClassType("ba");
    EXPECT_EQ(ab->m_id, before);
    EXPECT_EQ(ba->m_id, before + 1);
    ASSERT_EQ(ZKClassType::sizeOfHash(bucket), sizeBefore + 2);
    EXPECT_EQ(ZKClassType::m_allTypes[ZKClassType::m_hash[bucket]], ba);
    EXPECT_EQ(ZKClassType::m_allTypes[ZKClassType::m_hash[bucket] + 1], ab);
    EXPECT_EQ(ZKClassType::getFromName("ab"), ab);
    EXPECT_EQ(ZKClassType::getFromName("ba"), ba);
    ZKClassType* ab2 = new ZKClassType("ab");
    EXPECT_EQ(ZKClassType::getFromName("ab"), ab2); // the newest record wins
    EXPECT_EQ(recordsInTheirBuckets(), ZKClassType::m_numTypes);
    EXPECT_EQ(ZKClassType::getFromName(""), nullptr);
}

TEST(ZKClassType, DeleteAllTypesEmptiesTheRegistry) {
    // In a child, so that this process's registry stays intact.
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
    char buffer[64];
    EXPECT_EQ(t.convertPointer(buffer), buffer);
    t.setOffset(3);
    // Kept: the offset is in 4-byte units, so 3 moves the pointer by 12 bytes.
    EXPECT_EQ(t.convertPointer(buffer), buffer + 12);
    EXPECT_EQ(t.convertPointer(nullptr), nullptr);
    t.setOffset(-2);
    ZKCompatibleType copy(t);
    EXPECT_EQ(copy.getOffset(), -2);
    EXPECT_EQ(copy.convertPointer(buffer + 8), buffer);
}
