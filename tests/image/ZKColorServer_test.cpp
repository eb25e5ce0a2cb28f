#include "ZKColorServer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

void expectColor3f(const ZKColor3f& c, float r, float g, float b) {
    EXPECT_NEAR(c.r, r, 1e-6f);
    EXPECT_NEAR(c.g, g, 1e-6f);
    EXPECT_NEAR(c.b, b, 1e-6f);
}

} // namespace

TEST(ZKColorServer, TenColourPaletteWrapsEveryTenEntries) {
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(0), ZKColor3ub(255, 0, 0));
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(1), ZKColor3ub(0, 0, 127));
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(9), ZKColor3ub(127, 0, 127));
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(13), ZKColor3ub(127, 127, 0));
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(25), ZKColor3ub(127, 0, 0));
    // A negative index stays inside the table.
    EXPECT_EQ(ZKColorServer::getPalette10Color_3ub(-1), ZKColor3ub(127, 0, 127));
}

TEST(ZKColorServer, RgbToHslFollowsTheMaximumComponent) {
    expectColor3f(ZKColorServer::RGB_2_HSL(ZKColor3f(1, 0, 0)), 0.0f, 1.0f, 0.5f);
    expectColor3f(ZKColorServer::RGB_2_HSL(ZKColor3f(0, 1, 0)), 1.0f / 3.0f, 1.0f, 0.5f);
    expectColor3f(ZKColorServer::RGB_2_HSL(ZKColor3f(0, 0, 1)), 2.0f / 3.0f, 1.0f, 0.5f);
    expectColor3f(ZKColorServer::RGB_2_HSL(ZKColor3f(0.5f, 0.5f, 0.5f)), 0.0f, 0.0f, 0.5f);
    // Lightness above one half uses the other saturation formula.
    expectColor3f(ZKColorServer::RGB_2_HSL(ZKColor3f(1.0f, 0.5f, 0.5f)), 0.0f, 1.0f, 0.75f);
    // Kept: a red maximum with blue above green gives a negative hue.
    ZKColor3f hsl;
    ZKColorServer::RGB_2_HSL(hsl, ZKColor3f(1.0f, 0.0f, 0.5f));
    EXPECT_NEAR(hsl.r, -1.0f / 12.0f, 1e-6f);
}

TEST(ZKColorServer, HslToRgbInvertsRgbToHsl) {
    const ZKColor3f samples[] = {{0.1f, 0.7f, 0.3f}, {0.9f, 0.2f, 0.4f}, {0.25f, 0.5f, 0.75f},
                                 {1.0f, 0.0f, 0.5f}, {0.3f, 0.3f, 0.8f}, {0.6f, 0.6f, 0.1f}};
    for (const ZKColor3f& rgb : samples) {
        ZKColor3f back;
        ZKColorServer::HSL_2_RGB(back, ZKColorServer::RGB_2_HSL(rgb));
        expectColor3f(back, rgb.r, rgb.g, rgb.b);
    }
    // Hues are taken modulo a whole turn, even far outside 0 to 1.
    const ZKColor3f quarter = ZKColorServer::HSL_2_RGB(ZKColor3f(0.25f, 1.0f, 0.5f));
    expectColor3f(ZKColorServer::HSL_2_RGB(ZKColor3f(2.25f, 1.0f, 0.5f)), quarter.r, quarter.g,
                  quarter.b);
    const ZKColor3f huge = ZKColorServer::HSL_2_RGB(ZKColor3f(1e30f, 1.0f, 0.5f));
    EXPECT_TRUE(std::isfinite(huge.r) && std::isfinite(huge.g) && std::isfinite(huge.b));
    ZKColorServer::HSL_2_RGB(ZKColor3f(std::numeric_limits<float>::infinity(), 1.0f, 0.5f));
}

TEST(ZKColorServer, ByteHslGoesThroughFloatForm) {
    EXPECT_EQ(ZKColorServer::RGB_2_HSL(ZKColor3ub(255, 0, 0)), ZKColor3ub(0, 255, 127));
    EXPECT_EQ(ZKColorServer::RGB_2_HSL(ZKColor3ub(0, 0, 255)), ZKColor3ub(170, 255, 127));
    EXPECT_EQ(ZKColorServer::HSL_2_RGB(ZKColor3ub(0, 255, 51)), ZKColor3ub(102, 0, 0));
    ZKColor3ub out;
    ZKColorServer::HSL_2_RGB(out, ZKColor3ub(99, 0, 255));
    EXPECT_EQ(out, ZKColor3ub(255, 255, 255));
    ZKColorServer::RGB_2_HSL(out, ZKColor3ub(0, 0, 0));
    EXPECT_EQ(out, ZKColor3ub(0, 0, 0));
}

TEST(ZKColorServer, SaturationAndLuminanceFactors) {
    expectColor3f(ZKColorServer::multiplySatAndLum(ZKColor3f(1, 0, 0), 1.0f, 0.5f), 0.5f, 0, 0);
    expectColor3f(ZKColorServer::multiplySatAndLum(ZKColor3f(1, 0, 0), 0.0f, 1.0f), 0.5f, 0.5f,
                  0.5f);
    // The lightness is not clamped: above 1 the components leave 0 to 1.
    const ZKColor3f bright = ZKColorServer::multiplySatAndLum(ZKColor3f(1, 0, 0), 1.0f, 3.0f);
    EXPECT_FLOAT_EQ(bright.g, 2.0f);
    EXPECT_EQ(ZKColorServer::multiplySatAndLum(ZKColor3ub(255, 0, 0), 1.0f, 0.5f),
              ZKColor3ub(127, 0, 0));

    expectColor3f(ZKColorServer::multiplyLum(ZKColor3f(0.5f, 0.25f, 0.8f), 2.0f), 1.0f, 0.5f, 1.0f);
    // No lower limit.
    expectColor3f(ZKColorServer::multiplyLum(ZKColor3f(0.5f, 0.25f, 0.0f), -1.0f), -0.5f, -0.25f,
                  0.0f);
    EXPECT_EQ(ZKColorServer::multiplyLum(ZKColor3ub(51, 255, 0), 2.0f), ZKColor3ub(102, 255, 0));
}

TEST(ZKColorServer, TwoColourBlendsWithFloatWeights) {
    const ZKColor3ub a(100, 200, 50), b(50, 0, 250);
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, 0.5f, 0.5f), ZKColor3ub(75, 100, 150));
    // Truncated, not rounded; sums above 255 wrap.
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, 0.999f, 0.0f), ZKColor3ub(99, 199, 49));
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, 1.0f, 1.0f), ZKColor3ub(150, 200, 44));

    const ZKColor4ub c(0, 255, 10, 200), d(255, 0, 20, 100);
    EXPECT_EQ(ZKColorServer::colorBlend(c, d, 0.5f), ZKColor4ub(127, 127, 15, 150));
    EXPECT_EQ(ZKColorServer::colorBlend(c, d, 2.0f, 0.0f), ZKColor4ub(0, 254, 20, 144));

    expectColor3f(ZKColorServer::colorBlend(ZKColor3f(1, 1, 1), ZKColor3f(1, 1, 1), 2.0f, 1.0f),
                  3.0f, 3.0f, 3.0f);
}

TEST(ZKColorServer, ByteWeightBlendsDivideEachTermAndWrap) {
    using UC = unsigned char;
    const ZKColor3ub a(100, 255, 0), b(100, 255, 255);
    // 100 x 128 / 255 = 50 and 100 x 127 / 255 = 49: each quotient truncated.
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, UC(128), UC(127)), ZKColor3ub(99, 255, 127));
    // Kept: no clamping, 255 + 255 wraps to 254.
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, UC(255), UC(255)), ZKColor3ub(200, 254, 255));
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, UC(0)), a);
    EXPECT_EQ(ZKColorServer::colorBlend(a, b, UC(255)), b);
    EXPECT_EQ(ZKColorServer::colorBlend(ZKColor4ub(200, 0, 0, 255), ZKColor4ub(200, 0, 0, 255),
                                        UC(200), UC(100)),
              ZKColor4ub(234, 0, 0, 44));
}

TEST(ZKColorServer, PaletteBlendPicksTheEntriesAroundT) {
    ZKArray<ZKColor4ub> palette;
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 0.5f), ZKColor4ub(255, 255, 255, 255));
    palette.push_back(ZKColor4ub(10, 20, 30, 40));
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 0.7f), ZKColor4ub(10, 20, 30, 40));
    palette.push_back(ZKColor4ub(110, 20, 230, 240));
    palette.push_back(ZKColor4ub(210, 0, 0, 0));
    EXPECT_EQ(ZKColorServer::colorBlend(palette, -1.0f), palette[0]);
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 5.0f), palette[2]);
    EXPECT_EQ(ZKColorServer::colorBlend(palette, std::numeric_limits<float>::quiet_NaN()),
              palette[0]);
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 0.5f), palette[1]);
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 0.25f), ZKColor4ub(60, 20, 130, 140));
    EXPECT_EQ(ZKColorServer::colorBlend(palette, 0.75f), ZKColor4ub(160, 10, 115, 120));

    EXPECT_EQ(ZKColorServer::colorBlend(ZKArray<ZKColor3ub>(), 0.5f), ZKColor3ub(255, 255, 255));

    ZKArray<ZKColor3f> floats{ZKColor3f(0, 0, 0), ZKColor3f(1, 0.5f, 0.25f)};
    expectColor3f(ZKColorServer::colorBlend(floats, 0.5f), 0.5f, 0.25f, 0.125f);
    expectColor3f(ZKColorServer::colorBlend(ZKArray<ZKColor3f>(), 0.5f), 1, 1, 1);
}

TEST(ZKColorServer, BuildColorPaletteKeepsItsDistribution) {
    ZKArray<ZKColor3ub> p{ZKColor3ub(1, 2, 3)};
    ZKColorServer::buildColorPalette(p, 1);
    EXPECT_EQ(p, (ZKArray<ZKColor3ub>{{255, 0, 0}}));
    ZKColorServer::buildColorPalette(p, 2);
    EXPECT_EQ(p, (ZKArray<ZKColor3ub>{{122, 122, 0}, {122, 122, 255}}));
    ZKColorServer::buildColorPalette(p, 3);
    EXPECT_EQ(p, (ZKArray<ZKColor3ub>{{122, 122, 0}, {122, 122, 127}, {122, 122, 255}}));
    ZKColorServer::buildColorPalette(p, 4);
    EXPECT_EQ(p, (ZKArray<ZKColor3ub>{{0, 0, 0}, {0, 0, 255}, {0, 255, 0}, {0, 255, 255}}));
    // n = 10, k = 2: the first green level takes 10 / 2 = 5 colours, the last
    // one the 5 still missing.
    ZKColorServer::buildColorPalette(p, 10);
    ASSERT_EQ(p.size(), 10);
    EXPECT_EQ(p[4], ZKColor3ub(0, 0, 255));
    EXPECT_EQ(p[5], ZKColor3ub(0, 255, 0));
    EXPECT_EQ(p[6], ZKColor3ub(0, 255, 63));

    // Kept: from 4 colours on, every colour has red 0 and there are exactly n.
    for (int n = 4; n <= 200; ++n) {
        ZKColorServer::buildColorPalette(p, n);
        ASSERT_EQ(p.size(), n);
        for (const ZKColor3ub& c : p)
            ASSERT_EQ(c.r, 0) << n;
    }
    ZKColorServer::buildColorPalette(p, 0);
    EXPECT_TRUE(p.empty());
    ZKColorServer::buildColorPalette(p, -27);
    EXPECT_TRUE(p.empty());

    ZKArray<ZKColor4ub> q;
    ZKColorServer::buildColorPalette(q, 4);
    EXPECT_EQ(q, (ZKArray<ZKColor4ub>{
                     {0, 0, 0, 255}, {0, 0, 255, 255}, {0, 255, 0, 255}, {0, 255, 255, 255}}));
}

TEST(ZKColorServer, RangeScalesRunBetweenTheirEndColours) {
    expectColor3f(ZKColorServer::getColor3fInRange_WhiteRed(0.0f), 1, 1, 1);
    expectColor3f(ZKColorServer::getColor3fInRange_WhiteRed(1.0f), 1, 0, 0);
    expectColor3f(ZKColorServer::getColor3fInRange_WhiteRed(0.5f), 0.875f, 0.625f, 0.625f);
    expectColor3f(ZKColorServer::getColor3fInRange_WhiteBlack(0.25f), 0.75f, 0.75f, 0.75f);
    expectColor3f(ZKColorServer::getColor3fInRange_ColdWarm(0.0f), 0, 1, 1);
    expectColor3f(ZKColorServer::getColor3fInRange_ColdWarm(1.0f), 1, 0, 0);
    expectColor3f(ZKColorServer::getColor3fInRange_ColdWarm(0.5f), 0.5f, 1, 0);
}

TEST(ZKColorServer, NormalizedValueScales) {
    const ZKColor4ub marker(1, 2, 3, 4);
    ZKColor4ub out = marker;
    ZKColorServer::getColorFromnormalize_dValue(out, 0.25f, 1);
    EXPECT_EQ(out, ZKColor4ub(191, 191, 191, 255));
    ZKColorServer::getColorFromnormalize_dValue(out, 0.25f, 2);
    EXPECT_EQ(out, ZKColor4ub(63, 63, 63, 255));
    // Cyan end: blue comes out of float arithmetic as 0.99999994, hence 254.
    ZKColorServer::getColorFromnormalize_dValue(out, 0.0f, 3);
    EXPECT_EQ(out, ZKColor4ub(0, 255, 254, 255));
    ZKColorServer::getColorFromnormalize_dValue(out, 7.0f, 3); // clamped to 1
    EXPECT_EQ(out, ZKColor4ub(255, 0, 0, 255));
    ZKColorServer::getColorFromnormalize_dValue(out, -3.0f, 2); // clamped to 0
    EXPECT_EQ(out, ZKColor4ub(0, 0, 0, 255));

    // Scale 0 without a palette and unknown scales leave the colour.
    out = marker;
    ZKColorServer::getColorFromnormalize_dValue(out, 0.5f, 0);
    EXPECT_EQ(out, marker);
    ZKColorServer::getColorFromnormalize_dValue(out, 0.5f, 4);
    ZKColorServer::getColorFromnormalize_dValue(out, 0.5f, -1);
    EXPECT_EQ(out, marker);

    ZKColorServer::getColorFromValue(out, 5.0f, 2, 0.0f, 10.0f);
    EXPECT_EQ(out, ZKColor4ub(127, 127, 127, 255));
    ZKColorServer::getColorFromValue(out, 40.0f, 1, 10.0f, 30.0f);
    EXPECT_EQ(out, ZKColor4ub(0, 0, 0, 255));
}

TEST(ZKColorServer, ConvertColorsResizesAndTruncates) {
    ZKArray<ZKColor3ub> out{ZKColor3ub(1, 1, 1), ZKColor3ub(1, 1, 1), ZKColor3ub(1, 1, 1)};
    ZKColorServer::convertColors(out, ZKArray<ZKColor3f>{{1, 0.5f, 0}, {0.2f, 0.999f, 1}});
    EXPECT_EQ(out, (ZKArray<ZKColor3ub>{{255, 127, 0}, {51, 254, 255}}));
    ZKColorServer::convertColors(out, ZKArray<ZKColor3f>());
    EXPECT_TRUE(out.empty());
}

namespace {

const ZKColor4ub kWhite(255, 255, 255, 255);
const ZKColor4ub kBlack(0, 0, 0, 255);

ZKColor4ub grey(unsigned char v) {
    return ZKColor4ub(v, v, v, 255);
}

} // namespace

TEST(ZKColorServer, LogScaleMapsDecadesBelowTheMaximum) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    ZKArray<ZKColor4ub> colors{ZKColor4ub(1, 2, 3, 4), ZKColor4ub(1, 2, 3, 4)};
    ZKColorServer::realValuesToColors_Log(
        colors, ZKArray<float>{0.0f, -1.0f, 1.0f, 10.0f, 100.0f, 1000.0f, nan, -inf}, 2, 123.0f,
        100.0f, 2.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{grey(0), grey(0), grey(0), grey(127), grey(255),
                                           grey(255), kWhite, kWhite}));
    // Negative decades become 5.
    ZKColorServer::realValuesToColors_Log(colors, ZKArray<float>{10.0f}, 2, 0.0f, 100.0f, -1.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{grey(204)}));

    ZKArray<ZKColor4ub> fromDoubles;
    ZKColorServer::realValuesToColors_Log(fromDoubles, ZKArray<double>{0.5, 10.0, 100.0}, 1, 0.0,
                                          100.0, 2.0);
    EXPECT_EQ(fromDoubles, (ZKArray<ZKColor4ub>{grey(255), grey(127), grey(0)}));

    // Scales that leave colours unchanged still resize with opaque black.
    ZKArray<ZKColor4ub> kept{ZKColor4ub(9, 9, 9, 9)};
    ZKColorServer::realValuesToColors_Log(kept, ZKArray<double>{5.0, 6.0}, 7, 0.0, 10.0, 1.0);
    EXPECT_EQ(kept, (ZKArray<ZKColor4ub>{ZKColor4ub(9, 9, 9, 9), kBlack}));
}

TEST(ZKColorServer, PartialUpdateRecomputesOnlyTheNamedEntries) {
    const ZKColor4ub marker(1, 2, 3, 4);
    ZKArray<ZKColor4ub> colors{marker, marker, marker};
    const ZKArray<int> indices{2, 0, 99, -1};
    ZKColorServer::partialUpdateColorsFromValues(indices, colors, ZKArray<float>{10, 3, 5}, 2, 0.0f,
                                                 10.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{grey(255), marker, grey(127)}));

    // A count mismatch does nothing.
    ZKArray<ZKColor4ub> same{marker, marker};
    ZKColorServer::partialUpdateColorsFromValues(indices, same, ZKArray<double>{1, 2, 3}, 2, 0.0,
                                                 1.0);
    EXPECT_EQ(same, (ZKArray<ZKColor4ub>{marker, marker}));

    ZKArray<ZKColor4ub> doubles{marker, marker};
    ZKColorServer::partialUpdateColorsFromValues(
        ZKArray<int>{0, 1}, doubles, ZKArray<double>{std::numeric_limits<double>::infinity(), 2.5},
        1, 0.0, 10.0);
    EXPECT_EQ(doubles, (ZKArray<ZKColor4ub>{kWhite, grey(191)}));
    doubles[0] = marker; // equal bounds: white, as realValuesToColors gives
    ZKColorServer::partialUpdateColorsFromValues(ZKArray<int>{0}, doubles, ZKArray<double>{1, 2}, 2,
                                                 3.0, 3.0);
    EXPECT_EQ(doubles, (ZKArray<ZKColor4ub>{kWhite, grey(191)}));

    // Kept: the int scale adds 0.2 to both differences, so the minimum is
    // not the start of the scale: (0 + 0.2) / (9 + 0.2) x 255 = 5.5.
    ZKArray<ZKColor4ub> ints{marker, marker, marker};
    ZKColorServer::partialUpdateColorsFromValues(ZKArray<int>{0, 1, 2}, ints, ZKArray<int>{0, 4, 9},
                                                 2, 0, 9);
    EXPECT_EQ(ints, (ZKArray<ZKColor4ub>{grey(5), grey(116), grey(255)}));

    // Scale 0 blends the palette.
    const ZKArray<ZKColor4ub> palette{ZKColor4ub(0, 0, 0, 0), ZKColor4ub(200, 100, 50, 255)};
    ZKColorServer::partialUpdateColorsFromValues(ZKArray<int>{1}, ints, ZKArray<int>{0, 4, 9}, 0, 0,
                                                 9, &palette);
    EXPECT_EQ(ints[1], ZKColor4ub(91, 45, 22, 116));
}

TEST(ZKColorServer, PartialLogUpdateUsesTheLogRule) {
    const ZKColor4ub marker(1, 2, 3, 4);
    ZKArray<ZKColor4ub> colors{marker, marker, marker};
    ZKColorServer::partialUpdateColorsFromValues_LogScale(
        ZKArray<int>{1, 2}, colors, ZKArray<float>{0, 10, -4}, 2, 0.0f, 100.0f, 2.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{marker, grey(127), grey(0)}));
    ZKColorServer::partialUpdateColorsFromValues_LogScale(
        ZKArray<int>{0}, colors, ZKArray<double>{1000, 10, 1}, 1, 0.0, 100.0, 2.0);
    EXPECT_EQ(colors[0], grey(0));
    ZKColorServer::partialUpdateColorsFromValues_LogScale(ZKArray<int>{0, 1, 2}, colors,
                                                          ZKArray<int>{0, 10, 100}, 2, 0, 100, 2.0);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{grey(0), grey(127), grey(255)}));
    colors[0] = marker; // a count mismatch does nothing
    ZKColorServer::partialUpdateColorsFromValues_LogScale(ZKArray<int>{0}, colors,
                                                          ZKArray<int>{1, 2}, 2, 0, 100, 2.0);
    EXPECT_EQ(colors[0], marker);
}

TEST(ZKColorServer, RealValuesToColorsBounds) {
    ZKArray<ZKColor4ub> colors(5, ZKColor4ub(1, 2, 3, 4));
    ZKColorServer::realValuesToColors(colors, ZKArray<float>{1, 2, 3}, 2, -1.0f, -1.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{kBlack, grey(127), kWhite}));

    // Non-finite values take no part in the bounds and become white.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ZKArray<ZKColor4ub> fromDoubles;
    ZKColorServer::realValuesToColors(fromDoubles, ZKArray<double>{nan, 0, 10, 2.5}, 1, -1.0, -1.0);
    EXPECT_EQ(fromDoubles, (ZKArray<ZKColor4ub>{kWhite, kWhite, kBlack, grey(191)}));

    // All values negative: the array server's maximum starts at the smallest
    // normal float, so -1 sits at two thirds of [-3, 1.2e-38].
    ZKColorServer::realValuesToColors(colors, ZKArray<float>{-3, -1}, 2, -1.0f, -1.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{kBlack, grey(170)}));

    // Equal bounds give white.
    ZKColorServer::realValuesToColors(colors, ZKArray<float>{1, 2, 3}, 2, 4.0f, 4.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{kWhite, kWhite, kWhite}));
    ZKColorServer::realValuesToColors(colors, ZKArray<double>{7, 7}, 3, -1.0, -1.0);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{kWhite, kWhite}));

    // Given bounds: values outside are clamped, the palette serves scale 0,
    // and scales that leave colours keep the old ones.
    const ZKArray<ZKColor4ub> palette{ZKColor4ub(0, 0, 0, 0), ZKColor4ub(100, 100, 100, 100)};
    ZKColorServer::realValuesToColors(colors, ZKArray<float>{-5, 5, 50}, 0, 0.0f, 10.0f, &palette);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{ZKColor4ub(0, 0, 0, 0), ZKColor4ub(50, 50, 50, 50),
                                           ZKColor4ub(100, 100, 100, 100)}));
    ZKColorServer::realValuesToColors(colors, ZKArray<float>{1, 2, 3, 4}, 0, 0.0f, 10.0f);
    EXPECT_EQ(colors, (ZKArray<ZKColor4ub>{ZKColor4ub(0, 0, 0, 0), ZKColor4ub(50, 50, 50, 50),
                                           ZKColor4ub(100, 100, 100, 100), kBlack}));
}
