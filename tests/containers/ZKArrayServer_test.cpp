#include "ZKArrayServer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

std::vector<int> toVector(const ZKStaticArray<int>& a) {
    return std::vector<int>(a.begin(), a.end());
}

ZKBoolArray tagsOf(int size, std::initializer_list<int> set) {
    return ZKBoolArray(size, ZKStaticArray<int>(set), true);
}

std::vector<int> setIndices(const ZKBoolArray& a) {
    ZKArray<int> out;
    a.getIndicesSet(out);
    return toVector(out);
}

} // namespace

TEST(ZKArrayServer, FilterIndicesKeepsOrderAndDuplicates) {
    const ZKBoolArray tags = tagsOf(6, {1, 5});
    EXPECT_EQ(toVector(ZKArrayServer::filterIndices({5, 1, 9}, tags, false)), std::vector<int>{9});
    EXPECT_EQ(toVector(ZKArrayServer::filterIndices({5, 1, 9}, tags, true)),
              (std::vector<int>{5, 1}));
    EXPECT_EQ(toVector(ZKArrayServer::filterIndices({1, 0, 1, 6, -2}, tags, true)),
              (std::vector<int>{1, 1}));
    EXPECT_EQ(toVector(ZKArrayServer::filterIndices({1, 0, 1, 6, -2}, tags, false)),
              (std::vector<int>{0, 6, -2}));
    EXPECT_EQ(ZKArrayServer::filterIndices({4, 3, 2, 1}, tags, true).capacity(), 4);
    EXPECT_TRUE(ZKArrayServer::filterIndices({}, tags, false).empty());
}

TEST(ZKArrayServer, MinMaxStartsFromTheSmallestPositiveNormal) {
    float fmin = 0, fmax = 0;
    bool neg = true, pos = true;
    // kept: all values below the smallest positive normal leave it as the max
    ZKArrayServer::computeMinMaxValues(fmin, fmax, neg, pos, ZKArray<float>{-3.f, -1.f});
    EXPECT_EQ(fmin, -3.f);
    EXPECT_EQ(fmax, 1.17549435e-38f);
    EXPECT_FALSE(neg);
    EXPECT_FALSE(pos);

    const float inf = std::numeric_limits<float>::infinity();
    ZKArrayServer::computeMinMaxValues(fmin, fmax, neg, pos, ZKArray<float>{NAN, inf, 2.f});
    EXPECT_EQ(fmin, 2.f);
    EXPECT_EQ(fmax, 2.f);
    EXPECT_TRUE(neg); // NaN counts as negative
    EXPECT_TRUE(pos);

    double dmin = 0, dmax = 0;
    ZKArrayServer::computeMinMaxValues(dmin, dmax, neg, pos, ZKArray<double>{});
    EXPECT_EQ(dmin, 1.7976931348623157e308);
    EXPECT_EQ(dmax, 2.2250738585072014e-308);
    EXPECT_FALSE(neg);
    ZKArrayServer::computeMinMaxValues(dmin, dmax, neg, pos,
                                       ZKArray<double>{0.5, -2.5, 1e300, -HUGE_VAL});
    EXPECT_EQ(dmin, -2.5);
    EXPECT_EQ(dmax, 1e300);
    EXPECT_TRUE(neg);
    EXPECT_FALSE(pos);
}

TEST(ZKArrayServer, SetBoolArrayFlagsFromABloc) {
    ZKArrayByBlocs<int> blocs;
    blocs.addBloc(ZKArray<int>{2, 4});
    blocs.addBloc(ZKArray<int>{});
    blocs.addBloc(ZKArray<int>{-1, 12, 0});
    ASSERT_EQ(blocs.getNbBlocs(), 3);
    EXPECT_EQ(toVector(blocs.m_starts), (std::vector<int>{0, 2, 2, 5}));

    ZKBoolArray tags(6, false);
    ZKArrayServer::setBoolArrayFlags(tags, blocs, 0);
    EXPECT_EQ(setIndices(tags), (std::vector<int>{2, 4}));
    ZKArrayServer::setBoolArrayFlags(tags, blocs, 1); // empty bloc
    ZKArrayServer::setBoolArrayFlags(tags, blocs, 3); // no such bloc
    ZKArrayServer::setBoolArrayFlags(tags, blocs, -1);
    EXPECT_EQ(tags.size(), 6);
    ZKArrayServer::setBoolArrayFlags(tags, blocs, 2); // grows to 13
    EXPECT_EQ(tags.size(), 13);
    EXPECT_EQ(setIndices(tags), (std::vector<int>{0, 2, 4, 12}));

    ZKArrayByBlocs<int> broken; // a bloc that points past the elements
    broken.m_starts = {0, 4};
    broken.m_elements = {1};
    ZKArrayServer::setBoolArrayFlags(tags, broken, 0);
    EXPECT_EQ(setIndices(tags), (std::vector<int>{0, 2, 4, 12}));
}

TEST(ZKArrayServer, ApplyTagsAcrossRenumbering) {
    const ZKBoolArray old = tagsOf(6, {0, 2, 3, 5});
    const ZKArray<int> oldToNew{3, 0, -1, 1, 2, 7};

    ZKBoolArray out(8, false);
    out.set(6, 1); // existing bits of out are kept
    ZKArrayServer::applyToNew(out, old, oldToNew, 4);
    EXPECT_EQ(out.size(), 4);
    EXPECT_EQ(setIndices(out), (std::vector<int>{1, 3}));
    // Kept: no test against the new size; old element 5 goes to 7, a storage
    // bit past the size.
    EXPECT_TRUE(out.get(7));
    ZKBoolArray far;
    ZKArrayServer::applyToNew(far, tagsOf(2, {0, 1}), ZKArray<int>{40, 9}, 2);
    EXPECT_EQ(far.size(), 2);
    EXPECT_EQ(far.capacity(), 8);
    EXPECT_EQ(far.getData()[0], 0x00); // both targets lie outside the storage
    ZKBoolArray kept(3, true);
    ZKArrayServer::applyToNew(kept, old, oldToNew, 5);
    EXPECT_EQ(setIndices(kept), (std::vector<int>{0, 1, 2, 3}));

    ZKBoolArray inPlace(old);
    ZKArrayServer::applyToNew(inPlace, oldToNew, 4);
    EXPECT_EQ(setIndices(inPlace), (std::vector<int>{1, 3}));
    ZKBoolArray aliased(old);
    ZKArrayServer::applyToNew(aliased, aliased, oldToNew, 4);
    EXPECT_EQ(setIndices(aliased), (std::vector<int>{1, 3}));

    const ZKArray<int> newToOld{5, -1, 1, 2, 40, 0};
    ZKBoolArray back(6, true);
    ZKArrayServer::applyToOld(back, old, newToOld);
    EXPECT_EQ(back.size(), 6);
    EXPECT_EQ(setIndices(back), (std::vector<int>{0, 3, 5}));
    ZKBoolArray resized(2, true);
    ZKArrayServer::applyToOld(resized, old, newToOld);
    EXPECT_EQ(resized.size(), 6);
    EXPECT_EQ(resized.capacity(), 8);
    EXPECT_EQ(setIndices(resized), (std::vector<int>{0, 3, 5}));
    // Kept: old elements are read past the size: ZKBoolArray(10, true) fills
    // its second byte whole, so 12 reads as set; 16 lies outside the storage.
    ZKBoolArray fromFilled;
    ZKArrayServer::applyToOld(fromFilled, ZKBoolArray(10, true), ZKArray<int>{12, 16, 9, -1});
    EXPECT_EQ(setIndices(fromFilled), (std::vector<int>{0, 2}));
    ZKBoolArray self(old);
    ZKArrayServer::applyToOld(self, newToOld);
    EXPECT_EQ(setIndices(self), (std::vector<int>{0, 3, 5}));
    ZKArrayServer::applyToOld(self, ZKArray<int>{});
    EXPECT_EQ(self.size(), 0);
}

TEST(ZKArrayServer, TaggedIndexQueries) {
    const ZKBoolArray tags = tagsOf(8, {7});
    const ZKStaticArray<int> indices{4, 7, 9, -3, 7};
    EXPECT_TRUE(ZKArrayServer::hasOneTaggedIndex(tags, indices));
    EXPECT_FALSE(ZKArrayServer::hasOneTaggedIndex(tags, ZKStaticArray<int>{0, 8, 100}));
    EXPECT_EQ(ZKArrayServer::countTaggedIndex(tags, indices), 2);

    ZKArray<int> positions{42};
    ZKArrayServer::extractTaggedIndices1(positions, tags, ZKArray<int>{4, 7});
    EXPECT_EQ(toVector(positions), (std::vector<int>{42, 1}));
    ZKArray<int> values{42};
    ZKArrayServer::extractTaggedIndices2(values, tags, ZKArray<int>{4, 7});
    EXPECT_EQ(toVector(values), (std::vector<int>{42, 7}));
    ZKArrayServer::extractTaggedIndices1(positions, tags, indices);
    EXPECT_EQ(toVector(positions), (std::vector<int>{42, 1, 1, 4}));
}
