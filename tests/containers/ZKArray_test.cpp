#include "ZKArray.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

int sumOf(const ZKStaticArray<int>& values) {
    int sum = 0;
    for (int v : values)
        sum += v;
    return sum;
}

const int* storageOf(const ZKStaticArray<int>& values) {
    return values.data();
}

} // namespace

static_assert(sizeof(ZKStaticArray<int>) == 3 * sizeof(void*));
static_assert(sizeof(ZKArray<double>) == 3 * sizeof(void*));

TEST(ZKArray, GrowthDoublesTheCapacityOrTakesTheRequiredCount) {
    ZKArray<int> a;
    EXPECT_EQ(a.data(), nullptr);
    std::vector<long long> capacities;
    for (int i = 0; i < 9; ++i) {
        a.push_back(i);
        capacities.push_back(a.capacity());
    }
    EXPECT_EQ(capacities, (std::vector<long long>{1, 2, 4, 4, 8, 8, 8, 8, 16}));
    a.resize(40);
    EXPECT_EQ(a.capacity(), 40); // required count beats twice the capacity
    a.resize(41);
    EXPECT_EQ(a.capacity(), 80);

    // The rule doubles the capacity, not the size.
    ZKArray<int> b;
    b.reserve(10);
    b.resize(3);
    b.resize(11);
    EXPECT_EQ(b.capacity(), 20);
}

TEST(ZKArray, ShrinkKeepsStorageAndFirstElements) {
    ZKArray<ZKStringC> names{"one", "two", "three"};
    const long long capacity = names.capacity();
    names.resize(1);
    names.resize(3);
    EXPECT_EQ(names, (ZKArray<ZKStringC>{"one", "", ""}));
    names.clear();
    EXPECT_TRUE(names.empty());
    EXPECT_EQ(names.capacity(), capacity);
}

namespace {

// Records the order in which elements are destroyed.
struct Tracked {
    static std::vector<int>* s_destroyed;
    int id = 0;
    Tracked() = default;
    explicit Tracked(int i) : id(i) {}
    Tracked(const Tracked&) = default;
    Tracked& operator=(const Tracked&) = default;
    ~Tracked() {
        if (s_destroyed && id)
            s_destroyed->push_back(id);
    }
};
std::vector<int>* Tracked::s_destroyed = nullptr;

} // namespace

TEST(ZKArray, ShrinkDestroysTheSurplusFromTheLastBackwards) {
    std::vector<int> destroyed;
    {
        ZKArray<Tracked> a;
        a.reserve(5);
        for (int i = 1; i <= 5; ++i)
            a.emplace_back(i);
        Tracked::s_destroyed = &destroyed;
        a.resize(2);
        EXPECT_EQ(destroyed, (std::vector<int>{5, 4, 3}));
        destroyed.clear();
        a.clear();
        EXPECT_EQ(destroyed, (std::vector<int>{2, 1}));
        destroyed.clear();
        a.emplace_back(7);
    }
    EXPECT_EQ(destroyed, std::vector<int>{7}); // the destructor destroys what is left
    Tracked::s_destroyed = nullptr;
}

TEST(ZKArray, ResizeFillValueInsideTheArraySurvivesReallocation) {
    ZKArray<ZKStringW> self{ZKStringW("first")};
    self.resize(50, self[0]);
    EXPECT_EQ(self[49], QStringLiteral("first"));
}

TEST(ZKArray, StaticViewReadsTheSameStorage) {
    ZKArray<int> a{1, 2, 3, 4};
    EXPECT_EQ(storageOf(a), a.data()); // passed in place, not copied
    ZKStaticArray<int> copy = a;
    EXPECT_EQ(sumOf(copy), 10);
    a[0] = 100;
    EXPECT_EQ(copy[0], 1);
}

TEST(ZKArray, CopiesOwnTheirElements) {
    ZKArray<ZKStringC> a{"alpha", "beta", "gamma"};
    ZKArray<ZKStringC> b = a;
    b[0].append('!');
    EXPECT_EQ(a[0], "alpha");
    ZKArray<ZKStringC> moved = std::move(b);
    EXPECT_EQ(moved[0], "alpha!");
    EXPECT_TRUE(b.empty());
    a = moved;
    EXPECT_EQ(a, moved);
    a.erase(1);
    EXPECT_EQ(a.front(), "alpha!");
    EXPECT_EQ(a.back(), "gamma");
}

TEST(ZKArray, ExhaustionThrowsTheStandardExceptions) {
    EXPECT_EQ(ZKArray<double>::max_size(), 2305843009213693951LL);
    EXPECT_EQ(ZKArray<char>::max_size(), 9223372036854775807LL);
    ZKArray<double> a;
    EXPECT_THROW(a.resize(ZKArray<double>::max_size() + 1), std::length_error);
    EXPECT_THROW(a.reserve(ZKArray<double>::max_size() + 1), std::length_error);
    EXPECT_THROW(a.resize(-1), std::length_error);
    EXPECT_TRUE(a.empty());
}

TEST(ZKArray, MatchesAVectorUnderRandomOperations) {
    std::mt19937 rng(1234);
    ZKArray<std::shared_ptr<int>> a;
    std::vector<std::shared_ptr<int>> model;
    for (int step = 0; step < 2000; ++step) {
        const int op = int(rng() % 5);
        if (op == 0 || op == 1) {
            auto v = std::make_shared<int>(step);
            a.push_back(v);
            model.push_back(v);
        } else if (op == 2 && !model.empty()) {
            a.pop_back();
            model.pop_back();
        } else if (op == 3) {
            const long long n = rng() % 40;
            a.resize(n);
            model.resize(size_t(n));
        } else if (op == 4 && !model.empty()) {
            const long long i = rng() % model.size();
            a.erase(i);
            model.erase(model.begin() + i);
        }
        ASSERT_EQ(a.size(), (long long)model.size());
    }
    for (size_t i = 0; i < model.size(); ++i)
        EXPECT_EQ(a[i], model[i]);
}
