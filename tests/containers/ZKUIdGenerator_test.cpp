#include "ZKUIdGenerator.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<unsigned int> freeListOf(const ZKUIdGenerator& g) {
    std::vector<unsigned int> out;
    for (const ZKFreeUIdItem* item = g.getFreeList(); item; item = item->m_next)
        out.push_back(item->m_uid);
    return out;
}

} // namespace

TEST(ZKUIdGenerator, CounterAndFreeListSequences) {
    ZKUIdGenerator g;
    EXPECT_EQ(g.getNewUId(), 0u);
    EXPECT_EQ(g.getNewUId(), 1u);
    EXPECT_EQ(g.getNewUId(), 2u);

    g.releaseUId(2); // the top one: the counter moves down
    EXPECT_EQ(g.getNextUId(), 2u);
    EXPECT_TRUE(freeListOf(g).empty());
    EXPECT_EQ(g.getNewUId(), 2u);

    g.releaseUId(0);
    EXPECT_EQ(freeListOf(g), std::vector<unsigned int>{0});
    EXPECT_EQ(g.getNewUId(), 0u);
    EXPECT_EQ(g.getNewUId(), 3u);

    // Last released, first reused.
    g.releaseUId(1);
    g.releaseUId(0);
    EXPECT_EQ(g.getNewUId(), 0u);
    EXPECT_EQ(g.getNewUId(), 1u);
    EXPECT_EQ(g.getNewUId(), 4u);

    // kept: lowering the counter does not take back entries just below it.
    g.releaseUId(3);
    g.releaseUId(4);
    EXPECT_EQ(g.getNextUId(), 4u);
    EXPECT_EQ(freeListOf(g), std::vector<unsigned int>{3});
    EXPECT_EQ(g.getNewUId(), 3u);
    EXPECT_EQ(g.getNewUId(), 4u);

    // Nothing is checked: a free identifier can be released twice.
    g.releaseUId(1);
    g.releaseUId(1);
    EXPECT_EQ(g.getNewUId(), 1u);
    EXPECT_EQ(g.getNewUId(), 1u);

    EXPECT_TRUE(g.getThisUId(77)); // kept: claims nothing
    EXPECT_EQ(g.getNextUId(), 5u);

    g.clear();
    EXPECT_EQ(g.getNextUId(), 0u);
    EXPECT_EQ(g.getNewUId(), 0u);
}

TEST(ZKUIdGenerator, CopiesKeepTheFreeListOrder) {
    ZKUIdGenerator g;
    for (int i = 0; i < 10; ++i)
        g.getNewUId();
    g.releaseUId(4);
    g.releaseUId(7);
    g.releaseUId(2);
    const std::vector<unsigned int> list = {2, 7, 4};
    ASSERT_EQ(freeListOf(g), list);

    ZKUIdGenerator copy(g);
    EXPECT_EQ(freeListOf(copy), list);
    EXPECT_EQ(copy.getNextUId(), 10u);
    EXPECT_EQ(copy.getNewUId(), 2u); // the copy owns its own nodes
    EXPECT_EQ(freeListOf(g), list);

    ZKUIdGenerator assigned;
    assigned.releaseUId(5);
    assigned = g;
    EXPECT_EQ(freeListOf(assigned), list);
    assigned = assigned;
    EXPECT_EQ(freeListOf(assigned), list);

    ZKUIdGenerator moved(std::move(assigned));
    EXPECT_EQ(freeListOf(moved), list);
    EXPECT_EQ(moved.getNewUId(), 2u);
}

TEST(ZKUIdGenerator2, HandsOutTheSmallestFreeFromTheHint) {
    ZKUIdGenerator2 g;
    EXPECT_EQ(g.getNewUId(), 0u);
    EXPECT_EQ(g.getUsedUIds().size(), 10);
    for (unsigned int i = 1; i < 10; ++i)
        EXPECT_EQ(g.getNewUId(), i);
    EXPECT_EQ(g.getNewUId(), 10u); // grows by 10
    EXPECT_EQ(g.getUsedUIds().size(), 20);
    EXPECT_EQ(g.getSearchFrom(), 11u);

    g.releaseUId(3);
    EXPECT_EQ(g.getSearchFrom(), 3u);
    g.releaseUId(8);
    EXPECT_EQ(g.getSearchFrom(), 3u);
    EXPECT_EQ(g.getNewUId(), 3u);
    EXPECT_EQ(g.getNewUId(), 8u);
    EXPECT_EQ(g.getNewUId(), 11u);

    EXPECT_EQ(g.getMemoryUsed(), 3 + 8);
    EXPECT_EQ(g.getDynMemoryUsed(), 3);

    ZKUIdGenerator2 copy(g);
    g.clear();
    EXPECT_EQ(g.getUsedUIds().size(), 0);
    EXPECT_EQ(g.getNewUId(), 0u);
    EXPECT_EQ(copy.getNewUId(), 12u);
    copy.swap(g);
    EXPECT_EQ(g.getNewUId(), 13u);
    EXPECT_EQ(copy.getNewUId(), 1u);
}

TEST(ZKUIdGenerator2, ClaimingAndReserving) {
    ZKUIdGenerator2 g;
    EXPECT_TRUE(g.getThisUId(25));
    EXPECT_EQ(g.getUsedUIds().size(), 26);
    EXPECT_FALSE(g.getThisUId(25));
    EXPECT_EQ(g.getSearchFrom(), 0u);
    EXPECT_TRUE(g.getThisUId(26)); // just past the end: size + 10
    EXPECT_EQ(g.getUsedUIds().size(), 36);
    EXPECT_TRUE(g.getThisUId(4));
    EXPECT_EQ(g.getNewUId(), 0u);
    g.getThisUId(1);
    EXPECT_EQ(g.getNewUId(), 2u);

    g.releaseUId(1000); // beyond the set: only the hint could move
    EXPECT_EQ(g.getUsedUIds().size(), 36);

    // reserve changes the size, not only the capacity.
    ZKUIdGenerator2 r;
    r.reserve(5);
    EXPECT_EQ(r.getUsedUIds().size(), 5);
    EXPECT_EQ(r.getUsedUIds().countBitSet(), 0);
    for (unsigned int i = 0; i < 5; ++i)
        EXPECT_EQ(r.getNewUId(), i);
    EXPECT_EQ(r.getNewUId(), 5u);
    EXPECT_EQ(r.getUsedUIds().size(), 15);
}
