#include "ZKUBIndexQueue.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>
#include <vector>

namespace {

std::vector<int> contents(const ZKUBIndexQueue& q) {
    ZKArray<int> out;
    q.convertToArray(out, true);
    return std::vector<int>(out.begin(), out.end());
}

} // namespace

TEST(ZKUBIndexQueue, PushesPopsAndSizes) {
    ZKUBIndexQueue q(8);
    EXPECT_EQ(q.popAtStart(), -1);
    q.pushAtEnd(3);
    q.pushAtEnd(5);
    q.pushAtStart(1);
    q.pushAtEnd(3); // already queued
    EXPECT_EQ(contents(q), (std::vector<int>{1, 3, 5}));
    EXPECT_EQ(q.getLinks()[1], 3);
    EXPECT_EQ(q.getLinks()[5], -2);
    EXPECT_EQ(q.getLinks()[0], -1);
    EXPECT_EQ(q.popAtStart(), 1);

    EXPECT_FALSE(q.pushAtStart2(5));
    EXPECT_TRUE(q.pushAtStart2(7));
    EXPECT_EQ(contents(q), (std::vector<int>{7, 3, 5}));

    // kept: popping the last index leaves m_first at -2 and m_last unchanged
    EXPECT_EQ(q.popAtStart(), 7);
    EXPECT_EQ(q.popAtStart(), 3);
    EXPECT_EQ(q.popAtStart(), 5);
    EXPECT_EQ(q.getFirst(), -2);
    EXPECT_EQ(q.getLast(), 5);
    EXPECT_TRUE(q.isEmpty());
    EXPECT_EQ(q.popAtStart(), -1);
    EXPECT_EQ(q.computeSize(), 0);
    q.pushAtEnd(6); // -2 reads as empty
    EXPECT_EQ(contents(q), std::vector<int>{6});
    EXPECT_EQ(q.getLast(), 6);

    // Indices outside the bound are never queued.
    q.pushAtEnd(8);
    q.pushAtStart(-1);
    EXPECT_FALSE(q.pushAtStart2(100));
    EXPECT_EQ(q.computeSize(), 1);
}

TEST(ZKUBIndexQueue, ListsAndConversions) {
    ZKUBIndexQueue q(300);
    q.pushAtStart(ZKArray<int>{4, 5, 6});
    q.pushAtEnd(ZKArray<int>{9, 4, 10});
    EXPECT_EQ(contents(q), (std::vector<int>{6, 5, 4, 9, 10}));

    ZKArray<int> out{1, 2, 3};
    q.convertToArray(out, false);
    EXPECT_EQ(out.capacity(), 15); // 300 / 20
    EXPECT_EQ(std::vector<int>(out.begin(), out.end()), (std::vector<int>{6, 5, 4, 9, 10}));

    ZKArray<int> small;
    ZKUBIndexQueue(219).convertToArray(small, false);
    EXPECT_EQ(small.capacity(), 10);
    EXPECT_TRUE(small.empty());
    ZKArray<int> roomy;
    roomy.reserve(40);
    ZKUBIndexQueue(1000).convertToArray(roomy, false);
    EXPECT_EQ(roomy.capacity(), 50);
    ZKArray<int> untouched;
    ZKUBIndexQueue(1000).convertToArray(untouched, true);
    EXPECT_EQ(untouched.capacity(), 0);

    q.convertToArrayAndClear(out, true);
    EXPECT_EQ(out.size(), 5);
    EXPECT_TRUE(q.isEmpty());
    for (int i : {4, 5, 6, 9, 10})
        EXPECT_EQ(q.getLinks()[i], -1);

    q.pushAtEnd(ZKArray<int>{1, 2});
    q.clearOneByOne();
    EXPECT_EQ(q.computeSize(), 0);
    EXPECT_EQ(q.getFirst(), -1);
    EXPECT_EQ(q.getLast(), -1);
    q.init(3);
    EXPECT_EQ(q.getBound(), 3);
    EXPECT_EQ(contents(q), std::vector<int>{});
}

TEST(ZKUBIndexQueue, MatchesADequeUnderRandomOperations) {
    std::mt19937 rng(99);
    const int bound = 50;
    ZKUBIndexQueue q(bound);
    std::deque<int> model;
    const auto queued = [&](int i) {
        for (int v : model)
            if (v == i)
                return true;
        return false;
    };
    for (int step = 0; step < 2000; ++step) {
        const int i = int(rng() % bound);
        switch (rng() % 5) {
        case 0:
            if (!queued(i))
                model.push_front(i);
            q.pushAtStart(i);
            break;
        case 1:
            if (!queued(i))
                model.push_back(i);
            q.pushAtEnd(i);
            break;
        case 2:
        case 3: {
            const int expected = model.empty() ? -1 : model.front();
            if (!model.empty())
                model.pop_front();
            ASSERT_EQ(q.popAtStart(), expected);
            break;
        }
        default:
            if (rng() % 20 == 0) {
                q.emptyList();
                model.clear();
            }
        }
        ASSERT_EQ(q.computeSize(), int(model.size()));
        for (int k = 0; k < bound; ++k)
            ASSERT_EQ(q.contains(k), queued(k));
    }
    EXPECT_EQ(contents(q), std::vector<int>(model.begin(), model.end()));
}
