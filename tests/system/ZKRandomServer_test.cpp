#include "ZKRandomServer.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

bool allIn(const ZKStringC& s, char lo, char hi) {
    for (char c : s)
        if (c < lo || c > hi)
            return false;
    return true;
}

} // namespace

TEST(ZKRandomServer, EachCharacterClass) {
    ZKStringC out("stale");
    ZKRandomServer::buildRandomString(out, 8, false, false, true);
    EXPECT_EQ(out.size(), 8);
    EXPECT_TRUE(allIn(out, '0', '9')) << out.constData();
    ZKRandomServer::buildRandomString(out, 8, false, true, false);
    EXPECT_EQ(out.size(), 8);
    EXPECT_TRUE(allIn(out, 'A', 'Z')) << out.constData();
    ZKRandomServer::buildRandomString(out, 8, true, false, false);
    EXPECT_EQ(out.size(), 8);
    EXPECT_TRUE(allIn(out, 'a', 'z')) << out.constData();

    // Over a long string every enabled class shows up.
    ZKRandomServer::buildRandomString(out, 2000, true, true, true);
    ASSERT_EQ(out.size(), 2000);
    int lower = 0, upper = 0, digit = 0, other = 0;
    for (char c : out)
        (c >= 'a' && c <= 'z'   ? lower
         : c >= 'A' && c <= 'Z' ? upper
         : c >= '0' && c <= '9' ? digit
                                : other)++;
    EXPECT_GT(lower, 0);
    EXPECT_GT(upper, 0);
    EXPECT_GT(digit, 0);
    EXPECT_EQ(other, 0);

    // Zero characters: an empty string, even with no class at all.
    out = "stale";
    ZKRandomServer::buildRandomString(out, 0, false, false, false);
    EXPECT_TRUE(out.isEmpty());
}

TEST(ZKRandomServer, PlainModuloOverLowerUpperDigits) {
    ZKRandomServer::init();
    for (int classes = 1; classes < 8; ++classes) {
        const bool lower = classes & 1, upper = classes & 2, digits = classes & 4;
        const int nl = lower ? 26 : 0, nu = upper ? 26 : 0, nd = digits ? 10 : 0;
        std::srand(1234u + unsigned(classes));
        ZKStringC expected;
        for (int i = 0; i < 64; ++i) {
            const int r = std::rand() % (nl + nu + nd);
            expected += r < nl        ? char('a' + r)
                        : r < nl + nu ? char('A' + r - nl)
                                      : char('0' + r - nl - nu);
        }
        std::srand(1234u + unsigned(classes));
        ZKStringC out;
        ZKRandomServer::buildRandomString(out, 64, lower, upper, digits);
        EXPECT_EQ(out, expected) << classes;
    }

    // init() seeds only once: a later call leaves the sequence alone.
    std::srand(7u);
    const int first = std::rand();
    std::srand(7u);
    ZKRandomServer::init();
    EXPECT_EQ(std::rand(), first);
}

TEST(ZKRandomServerDeathTest, NegativeLengthOrNoClassStopsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ZKStringC out;
    EXPECT_DEATH(ZKRandomServer::buildRandomString(out, -1, true, true, true), "i >= 0");
    EXPECT_DEATH(ZKRandomServer::buildRandomString(out, 5, false, false, false),
                 "no character class");
}
