#include "ZKBoolArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <vector>

namespace {

using Model = std::vector<bool>;

const long long kSizes[] = {0, 1, 7, 8, 9, 15, 16, 17, 63, 64, 65, 3001};

// Both guard bytes hold 1, or the array is in the shared empty state.
::testing::AssertionResult guardsIntact(const ZKBoolArray& a) {
    if (a.getDataEnd() == a.getData())
        return ::testing::AssertionSuccess();
    if (a.getDataEnd() < a.getData())
        return ::testing::AssertionFailure() << "storage end before its start";
    if (a.getData()[-1] != 1 || a.getDataEnd()[0] != 1)
        return ::testing::AssertionFailure()
               << "guards " << int(a.getData()[-1]) << " and " << int(a.getDataEnd()[0]);
    if (a.capacity() < a.size())
        return ::testing::AssertionFailure() << "capacity below size";
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult matches(const ZKBoolArray& a, const Model& m) {
    if (a.size() != (long long)m.size())
        return ::testing::AssertionFailure() << "size " << a.size() << ", model " << m.size();
    for (std::size_t i = 0; i < m.size(); ++i)
        if (a.get(i) != m[i])
            return ::testing::AssertionFailure() << "element " << i << " differs";
    return guardsIntact(a);
}

// A random array of n elements with random bits beyond its size and random
// spare capacity, so that any missing mask shows.
ZKBoolArray randomArray(std::mt19937& rng, long long n, Model& model, double density) {
    std::bernoulli_distribution bit(density);
    const long long spare = rng() % 24;
    std::vector<char> bytes(std::size_t((n + spare + 7) / 8 + 1), 0);
    model.assign(std::size_t(n), false);
    for (long long i = 0; i < n + spare; ++i) {
        const bool v = i < n ? bit(rng) : (rng() & 1);
        if (v)
            bytes[std::size_t(i >> 3)] |= char(1 << (i & 7));
        if (i < n)
            model[std::size_t(i)] = v;
    }
    ZKBoolArray a;
    a.assign(n + spare, bytes.data());
    a.resize(n);
    return a;
}

long long modelFindFirst(const Model& m, bool v, long long from) {
    for (long long i = std::max(from, 0LL); i < (long long)m.size(); ++i)
        if (m[std::size_t(i)] == v)
            return i;
    return -1;
}

long long modelFindLast(const Model& m, bool v, long long from) {
    for (long long i = std::min(from, (long long)m.size() - 1); i >= 0; --i)
        if (m[std::size_t(i)] == v)
            return i;
    return -1;
}

long long modelCount(const Model& m, bool v, long long first, long long last) {
    long long c = 0;
    for (long long i = std::max(first, 0LL); i < std::min(last, (long long)m.size()); ++i)
        c += m[std::size_t(i)] == v;
    return c;
}

std::vector<int> modelIndices(const Model& m, bool v) {
    std::vector<int> out;
    for (std::size_t i = 0; i < m.size(); ++i)
        if (m[i] == v)
            out.push_back(int(i));
    return out;
}

std::vector<int> toVector(const ZKStaticArray<int>& a) {
    return std::vector<int>(a.begin(), a.end());
}

void checkQueries(const ZKBoolArray& a, const Model& m, std::mt19937& rng) {
    const long long n = (long long)m.size();
    EXPECT_EQ(a.countBitSet(), modelCount(m, true, 0, n));
    EXPECT_EQ(a.countBitCleared(), modelCount(m, false, 0, n));

    std::uniform_int_distribution<long long> pos(-3, n + 3);
    for (int k = 0; k < 30; ++k) {
        const long long first = pos(rng), last = pos(rng);
        EXPECT_EQ(a.countBitSetInScope(first, last), modelCount(m, true, first, last))
            << first << ".." << last;
        EXPECT_EQ(a.countBitClearedInScope(first, last), modelCount(m, false, first, last))
            << first << ".." << last;
    }

    std::vector<long long> froms = {-5, -1, 0, n - 1, n, n + 1, n + 100};
    if (n <= 70)
        for (long long f = 0; f < n; ++f)
            froms.push_back(f);
    else
        for (int k = 0; k < 40; ++k)
            froms.push_back(pos(rng));
    for (long long from : froms) {
        for (bool v : {true, false}) {
            EXPECT_EQ(a.findFirst(v, from), modelFindFirst(m, v, from)) << v << " from " << from;
            EXPECT_EQ(a.findLast(v, from), modelFindLast(m, v, from)) << v << " from " << from;
        }
    }

    for (bool v : {true, false}) {
        const std::vector<int> expected = modelIndices(m, v);
        std::vector<int> walked;
        for (int i = -7;;) { // an index below -1 starts at 0
            v ? a.goToNextSet(i) : a.goToNextCleared(i);
            if (i == -1)
                break;
            walked.push_back(i);
        }
        EXPECT_EQ(walked, expected);

        ZKArray<int> out{42, 43};
        const bool any = v ? a.getIndicesSet(out) : a.getIndicesCleared(out);
        EXPECT_EQ(any, !expected.empty());
        EXPECT_EQ(toVector(out), expected);

        ZKArray<int> appended{7};
        EXPECT_TRUE(v ? a.getIndicesSet(appended, 5) : a.getIndicesCleared(appended, 5));
        std::vector<int> withPrefix = {7};
        withPrefix.insert(withPrefix.end(), expected.begin(), expected.end());
        EXPECT_EQ(toVector(appended), withPrefix);
    }
}

} // namespace

TEST(ZKBoolArray, QueriesMatchModelOnSparseAndDenseArrays) {
    std::mt19937 rng(20240601);
    for (long long n : kSizes) {
        for (double density : {0.0, 0.02, 0.5, 0.97, 1.0}) {
            SCOPED_TRACE(::testing::Message() << "size " << n << " density " << density);
            Model m;
            const ZKBoolArray a = randomArray(rng, n, m, density);
            ASSERT_TRUE(matches(a, m));
            checkQueries(a, m, rng);
        }
    }
}

TEST(ZKBoolArray, SetAlgebraMatchesModelAcrossSizes) {
    std::mt19937 rng(77);
    for (long long na : kSizes) {
        for (long long nb : kSizes) {
            SCOPED_TRACE(::testing::Message() << "sizes " << na << " and " << nb);
            Model ma, mb;
            const ZKBoolArray a = randomArray(rng, na, ma, 0.5);
            const ZKBoolArray b = randomArray(rng, nb, mb, 0.5);
            const std::size_t lo = std::min(ma.size(), mb.size());
            const std::size_t hi = std::max(ma.size(), mb.size());
            const auto at = [](const Model& m, std::size_t i) { return i < m.size() && m[i]; };

            Model orM(hi), xorM(hi), andNotM = ma, andM(lo);
            bool anyInter = false;
            for (std::size_t i = 0; i < hi; ++i) {
                orM[i] = at(ma, i) || at(mb, i);
                xorM[i] = at(ma, i) != at(mb, i);
            }
            for (std::size_t i = 0; i < lo; ++i) {
                andNotM[i] = ma[i] && !mb[i];
                andM[i] = ma[i] && mb[i];
                anyInter = anyInter || andM[i];
            }

            Model appended = ma;
            appended.insert(appended.end(), mb.begin(), mb.end());
            Model reversed = ma;
            reversed.insert(reversed.end(), mb.rbegin(), mb.rend());

            using Op = void (*)(ZKBoolArray&, const ZKBoolArray&);
            const struct {
                const char* name;
                Op op;
                const Model& expected;
            } cases[] = {
                {"set", [](ZKBoolArray& r, const ZKBoolArray& o) { r.set(o); }, orM},
                {"merge", [](ZKBoolArray& r, const ZKBoolArray& o) { r.merge(o); }, orM},
                {"toggle", [](ZKBoolArray& r, const ZKBoolArray& o) { r.toggle(o); }, xorM},
                {"clear", [](ZKBoolArray& r, const ZKBoolArray& o) { r.clear(o); }, andNotM},
                {"inter", [](ZKBoolArray& r, const ZKBoolArray& o) { r.inter(o); },
                 na == 0 ? ma : andM},
                {"append", [](ZKBoolArray& r, const ZKBoolArray& o) { r.append(o); }, appended},
                {"append_reversed",
                 [](ZKBoolArray& r, const ZKBoolArray& o) { r.append_reversed(o); }, reversed},
            };
            for (const auto& c : cases) {
                ZKBoolArray r(a);
                c.op(r, b);
                EXPECT_TRUE(matches(r, c.expected)) << c.name;
            }
            EXPECT_EQ(a.hasInter(b), anyInter);
            EXPECT_EQ(b.hasInter(a), anyInter);
        }
    }
}

TEST(ZKBoolArray, RandomEditsMatchModelAndKeepGuards) {
    std::mt19937 rng(12345);
    const auto pick = [&rng](long long lo, long long hi) {
        return std::uniform_int_distribution<long long>(lo, hi)(rng);
    };
    const auto indices = [&](int maxCount, long long lo, long long hi) {
        ZKArray<int> idx;
        for (int k = int(rng() % maxCount); k > 0; --k)
            idx.push_back(int(pick(lo, hi)));
        return idx;
    };
    // Model of a write through a list of indices: sets v at the valid ones.
    const auto write = [](Model& m, const ZKArray<int>& idx, bool v) {
        for (int i : idx)
            if (i >= 0 && i < (long long)m.size())
                m[std::size_t(i)] = v;
    };
    for (long long start : kSizes) {
        Model m;
        ZKBoolArray a = randomArray(rng, start, m, 0.3);
        for (int step = 0; step < 300; ++step) {
            const long long n = a.size();
            const bool v = rng() & 1;
            const int op = int(rng() % 21);
            SCOPED_TRACE(::testing::Message()
                         << "start " << start << " step " << step << " op " << op << " size " << n);
            Model other;
            switch (op) {
            case 0: {
                const long long to = pick(0, 2 * n + 10);
                a.resize(to, v);
                m.resize(std::size_t(to), v);
                break;
            }
            case 1:
                a.push_back(v);
                m.push_back(v);
                break;
            case 2: {
                const int k = int(rng() % 30);
                a.reserve(n + k);
                for (int j = 0; j < k; ++j) {
                    const bool b = rng() & 1;
                    if (j % 3 == 0)
                        a.push_back_reserved(b);
                    else
                        b ? a.push_back_reserved_true() : a.push_back_reserved_false();
                    m.push_back(b);
                }
                break;
            }
            case 3: {
                const long long i = pick(-1, n + 1);
                a.insert(i, v);
                if (i >= 0 && i < n)
                    m.insert(m.begin() + i, v);
                break;
            }
            case 4: {
                const long long i = pick(-1, n);
                a.erase(i);
                if (i >= 0 && i < n)
                    m.erase(m.begin() + i);
                break;
            }
            case 5: {
                const long long first = pick(-3, n + 20), count = pick(-1, 40);
                v ? a.set(first, count) : a.clear(first, count);
                if (first >= 0 && count > 0) {
                    if (first + count > n)
                        m.resize(std::size_t(first + count), false);
                    std::fill(m.begin() + first, m.begin() + first + count, v);
                }
                break;
            }
            case 6: { // set growing to the largest index
                const ZKArray<int> idx = indices(12, -3, n + 20);
                a.set((long long)idx.size(), idx.data(), false);
                const int largest = idx.empty() ? -1 : *std::max_element(idx.begin(), idx.end());
                if (largest + 1LL > (long long)m.size())
                    m.resize(std::size_t(largest + 1), false);
                write(m, idx, true);
                break;
            }
            case 7: { // set trusting every index to be inside
                const ZKArray<int> idx = indices(12, -3, n - 1);
                a.set((long long)idx.size(), idx.data(), true);
                write(m, idx, true);
                break;
            }
            case 8: {
                const ZKArray<int> idx = indices(12, -3, n + 20);
                v ? a.set_safe((long long)idx.size(), idx.data())
                  : a.clear((long long)idx.size(), idx.data());
                write(m, idx, v);
                break;
            }
            case 9:
                if (n > 0) {
                    const long long i = (long long)(rng() % n);
                    a.toggle(i);
                    m[std::size_t(i)] = !m[std::size_t(i)];
                }
                break;
            case 10: {
                const long long i = pick(-1, n + 20);
                a.toggleAutoResize(i);
                if (i >= 0) {
                    if (i >= n)
                        m.resize(std::size_t(i + 1), false);
                    m[std::size_t(i)] = !m[std::size_t(i)];
                }
                break;
            }
            case 11: {
                const int which = int(rng() % 4);
                which == 0   ? a.setAll()
                : which == 1 ? a.clearAll()
                : which == 2 ? a.inverse()
                             : a.toggleAll();
                for (std::size_t i = 0; i < m.size(); ++i)
                    m[i] = which == 0 ? true : which == 1 ? false : !m[i];
                break;
            }
            case 12:
                if (n > 0) {
                    const ZKArray<int> idx = indices(10, 0, n - 1);
                    a.toggle_allIndicesOK(idx);
                    for (int i : idx)
                        m[std::size_t(i)] = !m[std::size_t(i)];
                }
                break;
            case 13:
                if (n > 0) {
                    const ZKArray<int> idx = indices(6, 0, n - 1);
                    v ? a.setAllModifiedIndices(idx) : a.clearAllModifiedIndices(idx);
                    for (int i : idx) // whole bytes
                        for (long long j = i & ~7; j < (i | 7) + 1 && j < n; ++j)
                            m[std::size_t(j)] = v;
                }
                break;
            case 14: {
                const long long to = pick(0, n + 40);
                a.assign(to, v);
                m.assign(std::size_t(to), v);
                break;
            }
            case 15: {
                const ZKArray<int> idx = indices(10, -3, 2 * n + 10);
                const int largest = idx.empty() ? -1 : *std::max_element(idx.begin(), idx.end());
                a.assign((long long)idx.size(), idx.data(), -1);
                m.assign(std::size_t(std::max(largest + 1, 0)), false);
                write(m, idx, true);
                break;
            }
            case 16: {
                const ZKBoolArray b = randomArray(rng, (long long)(rng() % 100), other, 0.5);
                a.copy(b, v);
                m = other;
                break;
            }
            case 17: {
                ZKBoolArray b = randomArray(rng, (long long)(rng() % 100), other, 0.5);
                a.swap(b);
                std::swap(m, other);
                EXPECT_TRUE(guardsIntact(b));
                break;
            }
            default: {
                const long long to = pick(0, n);
                a.resize(to);
                m.resize(std::size_t(to));
                break;
            }
            }
            ASSERT_TRUE(matches(a, m));
            if (a.size() > 6000) {
                a.resize(3000);
                m.resize(3000);
            }
        }
        checkQueries(a, m, rng);
    }
}

TEST(ZKBoolArray, StorageIsExactWithSharedEmptyState) {
    ZKBoolArray e1, e2;
    EXPECT_EQ(e1.getData(), e2.getData()); // one shared byte, never freed
    EXPECT_EQ(e1.getDataEnd(), e1.getData());
    EXPECT_EQ(e1.getDynMemoryUsed(), 0);
    EXPECT_EQ(e1.getMemoryUsed(), 24);

    ZKBoolArray a(10, true);
    EXPECT_EQ(a.getDynMemoryUsed(), 2);
    EXPECT_EQ(a.getMemoryUsed(), 26);
    EXPECT_EQ(a.getData()[-1], 1);
    EXPECT_EQ(a.getDataEnd()[0], 1);

    // No growth factor: push_back reallocates at every eighth element.
    ZKBoolArray p;
    std::vector<long long> capacities;
    for (int i = 0; i < 17; ++i) {
        p.push_back(i % 3 == 0);
        capacities.push_back(p.capacity());
    }
    EXPECT_EQ(capacities,
              (std::vector<long long>{8, 8, 8, 8, 8, 8, 8, 8, 16, 16, 16, 16, 16, 16, 16, 16, 24}));
    p.reserve(100);
    EXPECT_EQ(p.capacity(), 104);
    EXPECT_EQ(p.size(), 17);
    EXPECT_EQ(p.countBitSet(), 6);
    p.reserve(50); // never shrinks
    EXPECT_EQ(p.capacity(), 104);

    p.releaseData();
    EXPECT_EQ(p.getData(), e1.getData());
    EXPECT_EQ(p.size(), 0);
    ZKBoolArray q(20, false);
    q.clearArray();
    EXPECT_EQ(q.getDynMemoryUsed(), 0);
    q.resize(3, true);
    q.releaseMemory();
    EXPECT_EQ(q.getData(), e1.getData());

    // Copies allocate exactly; assignment keeps a larger storage.
    ZKBoolArray big(200, false);
    big = a;
    EXPECT_EQ(big.capacity(), 200);
    EXPECT_EQ(ZKBoolArray(a).capacity(), 16);
    ZKBoolArray moved(std::move(big));
    EXPECT_EQ(moved.size(), 10);
    EXPECT_EQ(moved.countBitSet(), 10);
}

TEST(ZKBoolArray, ConstructorsAndAssignKeepStatedBitsBeyondSize) {
    ZKBoolArray t(10, true);
    EXPECT_EQ(t.countBitSet(), 10); // the six set bits beyond the size are not counted
    EXPECT_EQ(t.getData()[1], 0xFF);

    ZKBoolArray neg(-3, true); // kept: a size below 1 is stored as given
    EXPECT_EQ(neg.size(), -3);
    EXPECT_EQ(neg.getDynMemoryUsed(), 0);
    EXPECT_EQ(neg.countBitSet(), 0);
    EXPECT_EQ(neg.findFirst(true, 0), -1);

    ZKBoolArray listed(12, ZKStaticArray<int>{3, -1, 11, 40, 3}, true);
    EXPECT_EQ(listed.size(), 12);
    EXPECT_EQ(listed.countBitSet(), 2);
    EXPECT_TRUE(listed.get(3) && listed.get(11));

    ZKBoolArray a;
    const char bytes[] = {char(0xA5), char(0xFF)};
    a.assign(12, bytes);
    EXPECT_EQ(a.countBitSet(), 8);
    EXPECT_EQ(a.getData()[1], 0xFF); // copied whole
    a.assign(4, true);               // fits: no reallocation, one byte written
    EXPECT_EQ(a.capacity(), 16);
    EXPECT_EQ(a.getData()[0], 0xFF);

    const int idx[] = {5, -2, 9, 2};
    a.assign(4, idx, -1);
    EXPECT_EQ(a.size(), 10);
    EXPECT_EQ(a.countBitSet(), 3);
    a.assign(4, idx, 6); // trusted largest index: 9 lies beyond it
    EXPECT_EQ(a.size(), 7);
    EXPECT_EQ(a.countBitSet(), 2);

    // copy fills every storage bit beyond the copied size with its argument.
    ZKBoolArray c(40, false);
    c.copy(ZKBoolArray(3, false), true);
    EXPECT_EQ(c.size(), 3);
    EXPECT_EQ(c.capacity(), 40);
    EXPECT_EQ(c.getData()[0], 0xF8);
    for (const unsigned char* p = c.getData() + 1; p != c.getDataEnd(); ++p)
        EXPECT_EQ(*p, 0xFF);
    c.copy(ZKBoolArray(9, true), false);
    EXPECT_EQ(c.getData()[1], 0x01);
    EXPECT_EQ(c.getData()[2], 0x00);
}

TEST(ZKBoolArray, ByteWiseOperationsPreserveOrOverwriteBitsBeyondSize) {
    // Size 10 inside a 4-byte storage; all storage bits set.
    ZKBoolArray a(32, true);
    a.resize(10); // shrinking keeps the bits
    a.clearAll();
    EXPECT_EQ(a.getData()[1], 0xFC); // bits beyond the size kept
    EXPECT_EQ(a.getData()[2], 0xFF); // whole bytes beyond untouched
    a.inverse();
    EXPECT_EQ(a.getData()[1], 0xFF);
    a.toggleAll(); // every storage byte, bits beyond the size included
    EXPECT_EQ(a.getData()[1], 0x00);
    EXPECT_EQ(a.getData()[3], 0x00);
    EXPECT_EQ(a.countBitSet(), 0);

    // Growing writes the rest of the old byte bit by bit, then whole bytes.
    ZKBoolArray g(3, false);
    g.resize(10, true);
    EXPECT_EQ(g.getData()[0], 0xF8);
    EXPECT_EQ(g.getData()[1], 0xFF);
    g.resize(4);
    g.resize(6, false);
    EXPECT_EQ(g.getData()[0], 0xC8); // bits 6 and 7 kept from before
}

TEST(ZKBoolArray, WalksEndWithoutOverflowAndScansStopAtTheGuard) {
    ZKBoolArray a(10, false);
    a.set(3, 1);
    a.set(9, 1);
    long long at = LLONG_MAX; // the walk ends there without an overflow
    a.goToNextSet(at);
    EXPECT_EQ(at, -1);
    at = LLONG_MAX;
    a.goToNextCleared(at);
    EXPECT_EQ(at, -1);
    at = -7; // below -1 the walk starts at 0
    a.goToNextSet(at);
    EXPECT_EQ(at, 3);
    int atInt = INT_MAX;
    a.goToNextCleared(atInt);
    EXPECT_EQ(atInt, -1);

    ZKBoolArray full(16, true); // the scan stops at the guard byte
    EXPECT_EQ(full.findFirst(false, 0), -1);
    EXPECT_EQ(full.findLast(false, 15), -1);

    ZKArray<int> out{1, 2, 3};
    EXPECT_FALSE(ZKBoolArray(5, false).getIndicesSet(out));
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(ZKBoolArray(5, false).getIndicesSet(out, 2));
    EXPECT_EQ(out.capacity(), 3); // a smaller hint does not shrink

    ZKBoolArray r(3, false);
    r.toggleAutoResize(12);
    EXPECT_NE(r.getAsMask(12), 0);
    EXPECT_EQ(r.getAsMask(11), 0);
}

TEST(ZKBoolArray, KeptQuirks) {
    // Equal arrays whose size is a non-zero multiple of 8 compare unequal.
    ZKBoolArray a8(8, true), b8(8, true);
    EXPECT_FALSE(a8 == b8);
    EXPECT_TRUE(a8 != b8);
    ZKBoolArray a9(9, true), b9(9, true);
    EXPECT_TRUE(a9 == b9);
    b9.toggle(8);
    EXPECT_FALSE(a9 == b9);
    ZKBoolArray shrunk(20, true);
    shrunk.resize(0);
    EXPECT_TRUE(shrunk == ZKBoolArray()); // both sizes 0
    ZKBoolArray junk(9, false), clean(9, false);
    junk.toggleAll(); // bits beyond the size differ, elements do not
    junk.inverse();
    EXPECT_TRUE(junk == clean);

    // Inserting at the size is ignored.
    ZKBoolArray ins(3, false);
    ins.toggle(2);
    ins.insert(3, true);
    EXPECT_EQ(ins.size(), 3);
    ins.insert(0, true);
    EXPECT_EQ(ins.size(), 4);
    EXPECT_TRUE(ins.get(0) && !ins.get(1) && !ins.get(2) && ins.get(3));

    // inter clears the bits beyond the new size and writes a fresh guard byte
    // after the last used byte.
    ZKBoolArray big(30, true), small(10, true);
    big.inter(small);
    EXPECT_EQ(big.size(), 10);
    EXPECT_EQ(big.getData()[1], 0x03);
    EXPECT_EQ(big.getData()[2], 0x01);
    EXPECT_EQ(big.getData()[3], 0xFF);
    ZKBoolArray shorter(20, true);
    shorter.inter(ZKBoolArray(4, true));
    EXPECT_EQ(shorter.size(), 4);
    EXPECT_EQ(shorter.getData()[0], 0x0F);
    EXPECT_EQ(shorter.getData()[1], 0x01);
    ZKBoolArray emptied(20, false);
    emptied.inter(ZKBoolArray());
    EXPECT_EQ(emptied.size(), 0);
    EXPECT_EQ(emptied.getData()[0], 1);
    ZKBoolArray none;
    none.inter(ZKBoolArray(5, true));
    EXPECT_EQ(none.size(), 0);

    // The modified-indices pair writes whole bytes; the bits beyond the size
    // in the last byte get their old values back.
    ZKBoolArray tags(12, false);
    tags.setAllModifiedIndices(ZKArray<int>{2, 9});
    EXPECT_EQ(tags.countBitSet(), 12);
    EXPECT_EQ(tags.getData()[1], 0x0F);
    ZKBoolArray marks(12, true);
    marks.clearAllModifiedIndices(ZKArray<int>{10});
    EXPECT_EQ(marks.countBitSet(), 8);
    EXPECT_EQ(marks.getData()[1], 0xF0);
}

TEST(ZKBoolArray, OperationsWithItself) {
    ZKBoolArray a(11, false);
    a.set(2, 3);
    a.set(9, 1); // {2, 3, 4, 9}
    ZKBoolArray b(a);
    b.append(b);
    EXPECT_EQ(b.size(), 22);
    EXPECT_EQ(b.countBitSet(), 8);
    EXPECT_TRUE(b.get(13) && b.get(20) && !b.get(12));
    b = a;
    b.append_reversed(b);
    ZKArray<int> set;
    b.getIndicesSet(set);
    EXPECT_EQ(toVector(set), (std::vector<int>{2, 3, 4, 9, 12, 17, 18, 19}));
    b = a;
    b.set(b);
    EXPECT_EQ(b.countBitSet(), 4);
    b.inter(b);
    EXPECT_EQ(b.countBitSet(), 4);
    EXPECT_EQ(b.size(), 11);
    b.toggle(b);
    EXPECT_EQ(b.countBitSet(), 0);
    b = a;
    b.clear(b);
    EXPECT_EQ(b.countBitSet(), 0);
    b.copy(b, true);
    EXPECT_EQ(b.size(), 11);
    EXPECT_TRUE(guardsIntact(b));
}
