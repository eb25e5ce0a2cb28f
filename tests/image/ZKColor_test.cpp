#include "ZKColor.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

TEST(ZKColor, LayoutIsTheComponentsOnly) {
    static_assert(sizeof(ZKColor3ub) == 3 && sizeof(ZKColor4ub) == 4);
    static_assert(sizeof(ZKColor3f) == 12 && sizeof(ZKColor4f) == 16);
    static_assert(std::is_standard_layout_v<ZKColor3ub> && std::is_standard_layout_v<ZKColor4f>);
    static_assert(std::is_trivially_copyable_v<ZKColor4ub>);
    const ZKColor4ub c(1, 2, 3, 4);
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(&c);
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(bytes[3], 4);
    EXPECT_EQ(ZKColor4ub(), ZKColor4ub(0, 0, 0, 0));
}

TEST(ZKColor, NamedConstantsAreTheTabledValuesOddOnesIncluded) {
    EXPECT_EQ(ZKColor3ub::s_BLACK, ZKColor3ub(0, 0, 0));
    EXPECT_EQ(ZKColor3ub::s_WHITE, ZKColor3ub(255, 255, 255));
    EXPECT_EQ(ZKColor3ub::s_RED, ZKColor3ub(255, 0, 0));
    EXPECT_EQ(ZKColor3ub::s_GREEN, ZKColor3ub(0, 255, 0));
    EXPECT_EQ(ZKColor3ub::s_BLUE, ZKColor3ub(0, 0, 255));
    EXPECT_EQ(ZKColor3ub::s_CYAN, ZKColor3ub(0, 255, 255));
    EXPECT_EQ(ZKColor3ub::s_GRAY, ZKColor3ub(122, 122, 122));
    EXPECT_EQ(ZKColor3ub::s_MAGENTA, ZKColor3ub(255, 0, 255));
    EXPECT_EQ(ZKColor3ub::s_YELLOW, ZKColor3ub(255, 255, 0));
    // Kept: three names are black and the two oranges differ.
    EXPECT_EQ(ZKColor3ub::s_DARKGRAY, ZKColor3ub(0, 0, 0));
    EXPECT_EQ(ZKColor3ub::s_LIGHTGRAY, ZKColor3ub(0, 0, 0));
    EXPECT_EQ(ZKColor3ub::s_PINK, ZKColor3ub(0, 0, 0));
    EXPECT_EQ(ZKColor3ub::s_ORANGE, ZKColor3ub(255, 128, 0));

    EXPECT_EQ(ZKColor4ub::s_BLACK, ZKColor4ub(0, 0, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_WHITE, ZKColor4ub(255, 255, 255, 255));
    EXPECT_EQ(ZKColor4ub::s_RED, ZKColor4ub(255, 0, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_GREEN, ZKColor4ub(0, 255, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_BLUE, ZKColor4ub(0, 0, 255, 255));
    EXPECT_EQ(ZKColor4ub::s_CYAN, ZKColor4ub(0, 255, 255, 255));
    EXPECT_EQ(ZKColor4ub::s_GRAY, ZKColor4ub(122, 122, 122, 255));
    EXPECT_EQ(ZKColor4ub::s_MAGENTA, ZKColor4ub(255, 0, 255, 255));
    EXPECT_EQ(ZKColor4ub::s_YELLOW, ZKColor4ub(255, 255, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_DARKGRAY, ZKColor4ub(0, 0, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_LIGHTGRAY, ZKColor4ub(0, 0, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_PINK, ZKColor4ub(0, 0, 0, 255));
    EXPECT_EQ(ZKColor4ub::s_ORANGE, ZKColor4ub(255, 127, 0, 255));
}

TEST(ZKColor, FloatToByteTruncatesWithoutRoundingOrClamping) {
    ZKColor3ub c;
    c.setRGB(ZKColor3f(0.5f, 1.0f, 0.999f));
    EXPECT_EQ(c, ZKColor3ub(127, 255, 254));
    c.setRGB(ZKColor4f(0.2f, 0.0f, 0.004f, 0.9f));
    EXPECT_EQ(c, ZKColor3ub(51, 0, 1));
    c.setRGB(ZKColor4ub(9, 8, 7, 6));
    EXPECT_EQ(c, ZKColor3ub(9, 8, 7));

    // Out of range wraps modulo 256 as the 32-bit conversion does; beyond the
    // 32-bit range or NaN gives 0.
    c.setRGB(ZKColor3f(1.5f, -0.5f, 2.0f));
    EXPECT_EQ(c, ZKColor3ub(126, 129, 254));
    c.setRGB(ZKColor3f(1e30f, -1e30f, std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(c, ZKColor3ub(0, 0, 0));
}

TEST(ZKColor, FourByteSettersConvertOrKeepAlpha) {
    ZKColor4ub c(1, 2, 3, 4);
    c.setRGBA(ZKColor4f(1.0f, 0.5f, 0.0f, 0.25f));
    EXPECT_EQ(c, ZKColor4ub(255, 127, 0, 63));
    c.setRGBA(ZKColor3f(0.0f, 0.2f, 1.0f), 0.5f);
    EXPECT_EQ(c, ZKColor4ub(0, 51, 255, 127));
    c.setRGBA(ZKColor3ub(7, 8, 9), static_cast<unsigned char>(200));
    EXPECT_EQ(c, ZKColor4ub(7, 8, 9, 200));
    c.setRGBA(ZKColor3f(0.5f, 0.5f, 0.5f), static_cast<unsigned char>(10));
    EXPECT_EQ(c, ZKColor4ub(127, 127, 127, 10));

    c.setRGB(ZKColor4f(1.0f, 1.0f, 1.0f, 0.0f));
    EXPECT_EQ(c, ZKColor4ub(255, 255, 255, 10));
    c.setRGB(ZKColor3f(0.0f, 0.0f, 0.2f));
    EXPECT_EQ(c, ZKColor4ub(0, 0, 51, 10));
    c.setRGB(ZKColor3ub(4, 5, 6));
    EXPECT_EQ(c, ZKColor4ub(4, 5, 6, 10));
}

TEST(ZKColor, ByteHslUsesDegreesAndPercent) {
    ZKColor3ub c;
    c.setHSL(0.0f, 100.0f, 50.0f);
    EXPECT_EQ(c, ZKColor3ub(255, 0, 0));
    c.setHSL(0.0f, 0.0f, 50.0f);
    EXPECT_EQ(c, ZKColor3ub(127, 127, 127));
    c.setHSL(120.0f, 100.0f, 50.0f);
    EXPECT_EQ(c, ZKColor3ub(0, 255, 0));
    c.setHSL(240.0f, 100.0f, 50.0f);
    EXPECT_EQ(c, ZKColor3ub(0, 0, 255));
    c.setHSL(600.0f, 100.0f, 50.0f); // whole turns are removed
    EXPECT_EQ(c, ZKColor3ub(0, 0, 255));

    float h = -1, s = -1, l = -1;
    ZKColor3ub(0, 255, 0).getHSL(h, s, l);
    EXPECT_FLOAT_EQ(h, 120.0f);
    EXPECT_FLOAT_EQ(s, 100.0f);
    EXPECT_FLOAT_EQ(l, 50.0f);
    ZKColor3ub(51, 51, 51).getHSL(h, s, l);
    EXPECT_FLOAT_EQ(h, 0.0f);
    EXPECT_FLOAT_EQ(s, 0.0f);
    EXPECT_FLOAT_EQ(l, 20.0f);
}
