#include "ZKNumeric.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <random>
#include <thread>
#include <vector>

// Tables are process-wide and never rebuilt, so each test below uses its own
// table index: 0 for the contents, 1 for repeated building, 2 for the
// accuracy sweep, 3 for concurrent building; 4 is built by the default-index calls.

TEST(ZKNumeric, FastLogTableHoldsLog2OfTheMantissaSteps) {
    ZKNumeric::updateFastLogTable(0);
    const float* table = ZKNumeric::fastLogTables[0].load();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table[0], 0.0f);
    EXPECT_NEAR(table[128], 0.5849625f, 1e-6f);
    EXPECT_NEAR(table[255], std::log2(1.0 + 255.0 / 256.0), 1e-6);
    // Entries increase strictly with k.
    for (int k = 1; k < 256; ++k)
        EXPECT_LT(table[k - 1], table[k]) << k;
}

TEST(ZKNumeric, UpdatingATableTwiceBuildsItOnceAndBadIndexesAreIgnored) {
    ZKNumeric::updateFastLogTable(1);
    const float* first = ZKNumeric::fastLogTables[1].load();
    ASSERT_NE(first, nullptr);
    const float entry = first[512];
    ZKNumeric::updateFastLogTable(1);
    EXPECT_EQ(ZKNumeric::fastLogTables[1].load(), first);
    EXPECT_EQ(first[512], entry);

    ZKNumeric::updateFastLogTable(-1);
    ZKNumeric::updateFastLogTable(5);
    EXPECT_TRUE(std::isnan(ZKNumeric::fastLog2(2.0f, 5)));
    EXPECT_TRUE(std::isnan(ZKNumeric::fastLog2(2.0f, -1)));
}

TEST(ZKNumeric, FastLog2StaysWithinTheTableResolution) {
    std::mt19937 rng(20240607);
    std::uniform_real_distribution<float> mantissa(1.0f, 2.0f);
    std::uniform_int_distribution<int> exponent(-126, 127);
    // Truncating the mantissa to n bits loses at most log2(1 + 2^-n); the
    // entry's rounding and the float sum with the exponent add an ulp or so.
    const double resolution = std::log2(1.0 + 1.0 / 4096.0);
    for (int i = 0; i < 20000; ++i) {
        const float x = std::ldexp(mantissa(rng), exponent(rng));
        const double exact = std::log2(double(x));
        const double fast = ZKNumeric::fastLog2(x, 2);
        const double rounding = 1e-6 + std::abs(exact) * 1.2e-7;
        EXPECT_LE(exact - fast, resolution + rounding) << x;
        EXPECT_GE(exact - fast, -rounding) << x;
    }
    // Powers of two are exact: entry 0 is 0.
    EXPECT_EQ(ZKNumeric::fastLog2(1.0f, 2), 0.0f);
    EXPECT_EQ(ZKNumeric::fastLog2(1024.0f, 2), 10.0f);
    EXPECT_EQ(ZKNumeric::fastLog2(0.125f, 2), -3.0f);
    // Subnormals go through the normal range.
    EXPECT_NEAR(ZKNumeric::fastLog2(std::ldexp(1.5f, -140), 2), -140.0 + std::log2(1.5), 1e-3);
    EXPECT_EQ(ZKNumeric::fastLog2(std::numeric_limits<float>::denorm_min(), 2), -149.0f);
}

TEST(ZKNumeric, FastLog2SpecialValuesAndDerivedLogarithms) {
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(ZKNumeric::fastLog2(0.0f), -inf);
    EXPECT_EQ(ZKNumeric::fastLog2(-0.0f), -inf);
    EXPECT_EQ(ZKNumeric::fastLog2(inf), inf);
    EXPECT_TRUE(std::isnan(ZKNumeric::fastLog2(-1.0f)));
    EXPECT_TRUE(std::isnan(ZKNumeric::fastLog2(std::numeric_limits<float>::quiet_NaN())));

    EXPECT_NEAR(ZKNumeric::fastLn(10.0f), std::log(10.0), 1e-4);
    EXPECT_NEAR(ZKNumeric::fastLog10(1000.0f), 3.0, 1e-4);
    EXPECT_NEAR(ZKNumeric::s_log2_e, 1.0 / std::log(2.0), 1e-6);
    EXPECT_NEAR(ZKNumeric::s_log10_e, 1.0 / std::log(10.0), 1e-6);
}

TEST(ZKNumeric, ConcurrentBuildersOfOneTableBuildItOnce) {
    ASSERT_EQ(ZKNumeric::fastLogTables[3].load(), nullptr) << "another test built table 3";
    constexpr int nbThreads = 8;
    std::atomic<int> ready{0};
    std::vector<const float*> seen(nbThreads, nullptr);
    std::vector<float> lookups(nbThreads, 0.0f);
    std::vector<std::thread> threads;
    for (int i = 0; i < nbThreads; ++i) {
        threads.emplace_back([&, i] {
            ready.fetch_add(1);
            while (ready.load() < nbThreads) {
            }
            ZKNumeric::updateFastLogTable(3);
            seen[i] = ZKNumeric::fastLogTables[3].load();
            lookups[i] = ZKNumeric::fastLog2(3.0f, 3);
        });
    }
    for (std::thread& t : threads)
        t.join();
    // One table for everybody (a second build would also leak the first one,
    // which the sanitizer build reports).
    ASSERT_NE(seen[0], nullptr);
    for (int i = 0; i < nbThreads; ++i) {
        EXPECT_EQ(seen[i], seen[0]);
        EXPECT_NEAR(lookups[i], std::log2(3.0), 1e-4);
    }
}

TEST(ZKNumeric, LinearMappingFollowsTheBreakpointsAndBothSlopes) {
    const ZKArray<float> xs = {0.0f, 1.0f, 3.0f};
    const ZKArray<float> ys = {10.0f, 20.0f, 0.0f};
    // At exactly xs[0] the below-slope branch returns ys[0].
    const float cases[][2] = {{0, 10}, {-1.5f, 7}, {1, 20}, {3, 0}, {0.5f, 15}, {2.5f, 5}, {4, 5}};
    for (const auto& c : cases)
        EXPECT_EQ(ZKNumeric::linearMapping(c[0], xs, ys, 2.0f, 5.0f), c[1]) << c[0];

    // A repeated breakpoint never divides by zero: the first of the pair wins.
    const ZKArray<float> stepXs = {0.0f, 1.0f, 1.0f, 2.0f};
    const ZKArray<float> stepYs = {0.0f, 1.0f, 5.0f, 5.0f};
    EXPECT_EQ(ZKNumeric::linearMapping(1.0f, stepXs, stepYs, 0.0f, 0.0f), 1.0f);
    EXPECT_EQ(ZKNumeric::linearMapping(1.5f, stepXs, stepYs, 0.0f, 0.0f), 5.0f);

    // One point: both sides extrapolate from it; no point at all gives 0.
    const ZKArray<float> oneX = {2.0f};
    const ZKArray<float> oneY = {1.0f};
    EXPECT_EQ(ZKNumeric::linearMapping(1.0f, oneX, oneY, 3.0f, 4.0f), -2.0f);
    EXPECT_EQ(ZKNumeric::linearMapping(3.0f, oneX, oneY, 3.0f, 4.0f), 5.0f);
    EXPECT_EQ(ZKNumeric::linearMapping(3.0f, ZKArray<float>(), ZKArray<float>(), 3.0f, 4.0f), 0.0f);
    // Arrays of different lengths use the common prefix.
    EXPECT_EQ(ZKNumeric::linearMapping(5.0f, xs, oneY, 1.0f, 1.0f), 6.0f);
}
