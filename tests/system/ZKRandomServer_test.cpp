#include "ZKRandomServer.h"

#include <gtest/gtest.h>

#include <cstdlib>

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
        ZKStringC out("stale");
        ZKRandomServer::buildRandomString(out, 64, lower, upper, digits);
        EXPECT_EQ(out, expected) << classes;
    }
    // Zero characters: an empty string, even with no class at all.
    ZKStringC out("stale");
    ZKRandomServer::buildRandomString(out, 0, false, false, false);
    EXPECT_TRUE(out.isEmpty());

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
