#include "ZKImage.h"
#include "ZKVec.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes bytesOf(const ZKImage& image) {
    const unsigned char* p = image.getPixels();
    return p ? Bytes(p, p + image.getByteCount()) : Bytes();
}

ZKImage imageOf(int width, int height, _ZKImagePacking packing, const Bytes& bytes) {
    ZKImage image;
    image.copyPixels(bytes.data(), ZKPixSize(width, height), packing);
    return image;
}

Bytes randomBytes(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    Bytes b(n);
    for (unsigned char& v : b)
        v = static_cast<unsigned char>(rng());
    return b;
}

} // namespace

TEST(ZKImage, UnknownPackingHasNoDepthAndDefaultImageIsEmpty) {
    EXPECT_EQ(ZKImage::depthOf(static_cast<_ZKImagePacking>(8)), 0);

    const ZKImage image;
    EXPECT_EQ(image.getPixels(), nullptr);
    EXPECT_EQ(image.getWidth(), 0);
    EXPECT_EQ(image.getHeight(), 0);
    EXPECT_EQ(image.getPacking(), ZK_PACKING_RGBA);
    EXPECT_FALSE(image.isBorrowed());
}

TEST(ZKImage, InitAllocatesExactlyAndRefusesEmptyOrInvalidSizes) {
    ZKImage image;
    image.init(ZKPixSize(3, 2), ZK_PACKING_RGB);
    EXPECT_NE(image.getPixels(), nullptr);
    EXPECT_EQ(image.getByteCount(), 18u);
    EXPECT_EQ(image.getDepth(), 3);
    image.init(ZKPixSize(0, 5), ZK_PACKING_GREY);
    EXPECT_EQ(image.getPixels(), nullptr);
    EXPECT_EQ(image.getHeight(), 5);
    image.init(ZKPixSize(-4, -4), ZK_PACKING_RGBA);
    EXPECT_EQ(image.getPixels(), nullptr);
    EXPECT_EQ(image.getByteCount(), 0u);
    image.init(ZKPixSize(4, 4), static_cast<_ZKImagePacking>(42));
    EXPECT_EQ(image.getPixels(), nullptr);
    EXPECT_FALSE(image.hasPixels());
}

TEST(ZKImage, CopiesShareBorrowedPixelsAndDeepCopyOwnedOnes) {
    unsigned char pixels[6] = {1, 2, 3, 4, 5, 6};
    ZKImage borrowed;
    borrowed.setPixels(pixels, ZKPixSize(2, 1), ZK_PACKING_RGB, true);
    const ZKImage shared(borrowed);
    EXPECT_TRUE(shared.isBorrowed());
    EXPECT_EQ(shared.getPixels(), pixels);

    const ZKImage owner = imageOf(2, 1, ZK_PACKING_RGB, Bytes(pixels, pixels + 6));
    ZKImage deep;
    deep = owner;
    EXPECT_FALSE(deep.isBorrowed());
    EXPECT_NE(deep.getPixels(), owner.getPixels());
    EXPECT_EQ(bytesOf(deep), bytesOf(owner));
    deep = borrowed; // frees the owned copy, then shares
    EXPECT_EQ(deep.getPixels(), pixels);
    deep = deep;
    EXPECT_EQ(deep.getPixels(), pixels);

    // An owning source of zero area gives null pixels but its size and packing.
    ZKImage flat;
    flat.init(ZKPixSize(0, 7), ZK_PACKING_GREY);
    ZKImage flatCopy;
    flatCopy.copy(flat);
    EXPECT_EQ(flatCopy.getPixels(), nullptr);
    EXPECT_EQ(flatCopy.getHeight(), 7);
    EXPECT_EQ(flatCopy.getPacking(), ZK_PACKING_GREY);

    ZKImage moved(std::move(deep));
    EXPECT_EQ(moved.getPixels(), pixels);
    EXPECT_EQ(deep.getPixels(), nullptr);
}

TEST(ZKImage, OwnershipOfAdoptedAndCopiedPixels) {
    // Handed over (not borrowed): the image frees the block.
    auto* block = static_cast<unsigned char*>(std::malloc(4));
    ZKImage adopted;
    adopted.setPixels(block, ZKPixSize(1, 1), ZK_PACKING_RGBA, false);
    EXPECT_FALSE(adopted.isBorrowed());

    // copyPixels may read the image's own block.
    ZKImage image = imageOf(2, 2, ZK_PACKING_GREY, {9, 8, 7, 6});
    image.copyPixels(image.getPixels(), ZKPixSize(1, 3), ZK_PACKING_GREY);
    EXPECT_EQ(bytesOf(image), (Bytes{9, 8, 7}));

    // clear frees and zeroes the pointer and width only.
    image.clear();
    EXPECT_EQ(image.getPixels(), nullptr);
    EXPECT_EQ(image.getWidth(), 0);
    EXPECT_EQ(image.getHeight(), 3);
    EXPECT_EQ(image.getPacking(), ZK_PACKING_GREY);

    ZKImage other = imageOf(1, 1, ZK_PACKING_RGB, {1, 2, 3});
    image.swap(other);
    EXPECT_EQ(bytesOf(image), (Bytes{1, 2, 3}));
    EXPECT_EQ(other.getHeight(), 3);
}

TEST(ZKImage, ScaleIsKeptAsANoOp) {
    ZKImage image = imageOf(2, 1, ZK_PACKING_GREY, {10, 20});
    const unsigned char* before = image.getPixels();
    image.scale(ZKPixSize(8, 8));
    EXPECT_EQ(image.getPixels(), before);
    EXPECT_EQ(image.getSize(), ZKPixSize(2, 1));
    EXPECT_EQ(bytesOf(image), (Bytes{10, 20}));
}

TEST(ZKImage, Rotate90TurnsAQuarterEachWay) {
    // 3 x 2 grey:  1 2 3
    //              4 5 6
    const ZKImage source = imageOf(3, 2, ZK_PACKING_GREY, {1, 2, 3, 4, 5, 6});
    ZKImage cw;
    source.rotate90(cw, true);
    EXPECT_EQ(cw.getSize(), ZKPixSize(2, 3));
    EXPECT_EQ(bytesOf(cw), (Bytes{4, 1, 5, 2, 6, 3}));
    ZKImage ccw;
    source.rotate90(ccw, false);
    EXPECT_EQ(bytesOf(ccw), (Bytes{3, 6, 2, 5, 1, 4}));

    // Multi-byte pixels move whole; turning back gives the original.
    const Bytes rgb = randomBytes(5 * 3 * 3, 7);
    ZKImage image = imageOf(5, 3, ZK_PACKING_RGB, rgb);
    image.rotate90(true);
    EXPECT_EQ(image.getSize(), ZKPixSize(3, 5));
    EXPECT_TRUE(std::equal(rgb.begin() + 10 * 3, rgb.begin() + 10 * 3 + 3, image.getPixels()));
    image.rotate90(false);
    EXPECT_EQ(bytesOf(image), rgb);
}

TEST(ZKImage, MirrorVerticallyReversesRowsIntoANewOwnedBlock) {
    ZKImage grey = imageOf(1, 3, ZK_PACKING_GREY, {1, 2, 3});
    grey.mirrorVertically();
    EXPECT_EQ(bytesOf(grey), (Bytes{3, 2, 1}));

    unsigned char pixels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    ZKImage borrowed;
    borrowed.setPixels(pixels, ZKPixSize(2, 2), ZK_PACKING_CHANNEL_2x8, true);
    ZKImage out;
    borrowed.mirrorVertically(out);
    EXPECT_EQ(bytesOf(out), (Bytes{5, 6, 7, 8, 1, 2, 3, 4}));
    borrowed.mirrorVertically();
    EXPECT_FALSE(borrowed.isBorrowed());
    EXPECT_NE(borrowed.getPixels(), pixels);
    EXPECT_EQ(pixels[0], 1); // the caller's block is untouched
    EXPECT_EQ(bytesOf(borrowed), (Bytes{5, 6, 7, 8, 1, 2, 3, 4}));

    ZKImage none;
    none.init(ZKPixSize(4, 0), ZK_PACKING_BGR);
    none.mirrorVertically();
    EXPECT_EQ(none.getPixels(), nullptr);
    EXPECT_EQ(none.getWidth(), 0);
    EXPECT_EQ(none.getPacking(), ZK_PACKING_RGBA);
}

namespace {

// The channel model of the colour packings: a pixel read as red, green, blue,
// alpha (alpha 255 where the packing has none; grey in all three colours).
ZKColor4ub readPixel(const unsigned char* p, _ZKImagePacking packing) {
    switch (packing) {
    case ZK_PACKING_RGBA:
        return ZKColor4ub(p[0], p[1], p[2], p[3]);
    case ZK_PACKING_RGB:
        return ZKColor4ub(p[0], p[1], p[2], 255);
    case ZK_PACKING_BGRA:
        return ZKColor4ub(p[2], p[1], p[0], p[3]);
    case ZK_PACKING_BGR:
        return ZKColor4ub(p[2], p[1], p[0], 255);
    default:
        return ZKColor4ub(p[0], p[0], p[0], 255);
    }
}

} // namespace

TEST(ZKImage, ConvertPackingOnLargeImagesMatchesThePixelModel) {
    // 37 x 3 pixels (whole vector steps and a tail), every supported pair,
    // into a new image and in place.
    const int w = 37, h = 3, n = w * h;
    const _ZKImagePacking froms[] = {ZK_PACKING_RGBA, ZK_PACKING_RGB, ZK_PACKING_BGRA,
                                     ZK_PACKING_BGR, ZK_PACKING_GREY};
    const _ZKImagePacking tos[] = {ZK_PACKING_RGBA, ZK_PACKING_RGB, ZK_PACKING_BGRA,
                                   ZK_PACKING_BGR};
    for (_ZKImagePacking from : froms)
        for (_ZKImagePacking to : tos) {
            const int fromDepth = ZKImage::depthOf(from), toDepth = ZKImage::depthOf(to);
            const ZKImage source =
                imageOf(w, h, from, randomBytes(std::size_t(n) * fromDepth, 11 + from));
            ZKImage out;
            source.convertPacking(out, to);
            EXPECT_EQ(out.getSize(), ZKPixSize(w, h));
            EXPECT_FALSE(out.isBorrowed());
            ZKImage inPlace = source;
            inPlace.convertPacking(to);
            EXPECT_EQ(inPlace.getPacking(), to);
            EXPECT_EQ(bytesOf(inPlace), bytesOf(out)) << from << " -> " << to;
            for (int i = 0; i < n; ++i) {
                ZKColor4ub expected = readPixel(source.getPixels() + i * fromDepth, from);
                if (toDepth == 4 && ZKImage::depthOf(from) != 4)
                    expected.a = 255;
                const ZKColor4ub got = readPixel(out.getPixels() + i * toDepth, to);
                if (toDepth != 4)
                    expected.a = 255;
                ASSERT_EQ(got, expected) << from << " -> " << to << " pixel " << i;
            }
        }
}

TEST(ZKImage, ConvertPackingSamePackingCopiesAndOtherPairsOnlyResize) {
    unsigned char pixels[3] = {1, 2, 3};
    ZKImage borrowed;
    borrowed.setPixels(pixels, ZKPixSize(3, 1), ZK_PACKING_GREY, true);
    ZKImage same;
    borrowed.convertPacking(same, ZK_PACKING_GREY);
    EXPECT_TRUE(same.isBorrowed());
    EXPECT_EQ(same.getPixels(), pixels);

    ZKImage other;
    borrowed.convertPacking(other, ZK_PACKING_CHANNEL_2x8);
    EXPECT_EQ(other.getPacking(), ZK_PACKING_CHANNEL_2x8);
    EXPECT_EQ(other.getByteCount(), 6u);
    EXPECT_FALSE(other.isBorrowed());
    const ZKImage rgba = imageOf(1, 1, ZK_PACKING_RGBA, {1, 2, 3, 4});
    rgba.convertPacking(other, ZK_PACKING_GREY);
    EXPECT_EQ(other.getPacking(), ZK_PACKING_GREY);
    EXPECT_EQ(other.getByteCount(), 1u);

    // Without pixels the result still takes the size and the new packing.
    ZKImage flat;
    flat.init(ZKPixSize(0, 4), ZK_PACKING_RGB);
    flat.convertPacking(ZK_PACKING_BGRA);
    EXPECT_EQ(flat.getPacking(), ZK_PACKING_BGRA);
    EXPECT_EQ(flat.getSize(), ZKPixSize(0, 4));
    EXPECT_EQ(flat.getPixels(), nullptr);
}

TEST(ZKImage, FillWithColorFollowsThePackingOrder) {
    ZKImage image = imageOf(2, 1, ZK_PACKING_BGRA, Bytes(8, 0));
    image.fillWithColor(ZKColor3ub(1, 2, 3));
    EXPECT_EQ(bytesOf(image), (Bytes{3, 2, 1, 255, 3, 2, 1, 255}));
    image.fillWithColor(ZKColor3ub(1, 2, 3), 9);
    EXPECT_EQ(bytesOf(image), (Bytes{3, 2, 1, 9, 3, 2, 1, 9}));
    image = imageOf(2, 1, ZK_PACKING_RGB, Bytes(6, 0));
    image.fillWithColor(ZKColor3ub(1, 2, 3), 9);
    EXPECT_EQ(bytesOf(image), (Bytes{1, 2, 3, 1, 2, 3}));
    image = imageOf(2, 1, ZK_PACKING_BGR, Bytes(6, 0));
    image.fillWithColor(ZKColor3ub(1, 2, 3));
    EXPECT_EQ(bytesOf(image), (Bytes{3, 2, 1, 3, 2, 1}));

    // Large odd sizes are filled to the last byte.
    image.init(ZKPixSize(1001, 33), ZK_PACKING_RGB);
    image.fillWithColor(ZKColor3ub(7, 8, 9));
    const Bytes all = bytesOf(image);
    for (std::size_t i = 0; i < all.size(); ++i)
        ASSERT_EQ(all[i], 7 + i % 3) << i;

    // Packings other than 0 to 3 are left alone.
    image = imageOf(2, 1, ZK_PACKING_GREY, {5, 6});
    image.fillWithColor(ZKColor3ub(1, 2, 3));
    EXPECT_EQ(bytesOf(image), (Bytes{5, 6}));
}

TEST(ZKImage, MixWithColorShiftsByEightBits) {
    // Kept: dividing by 256 turns black mixed fully with white into 254.
    ZKImage image = imageOf(1, 1, ZK_PACKING_RGBA, {0, 0, 0, 77});
    image.mixWithColor(ZKColor3ub(255, 255, 255), 255);
    EXPECT_EQ(bytesOf(image), (Bytes{254, 254, 254, 77}));

    // (100 x 127 + c x 128) >> 8 for c = 10, 20, 30, in BGR order.
    image = imageOf(1, 1, ZK_PACKING_BGR, {100, 100, 100});
    image.mixWithColor(ZKColor3ub(10, 20, 30), 128);
    EXPECT_EQ(bytesOf(image), (Bytes{64, 59, 54}));

    // Every byte of a large image against the formula; alpha kept.
    const int w = 53, h = 7;
    const Bytes before = randomBytes(std::size_t(w) * h * 4, 3);
    image = imageOf(w, h, ZK_PACKING_BGRA, before);
    image.mixWithColor(ZKColor3ub(200, 100, 0), 33);
    const unsigned char colour[3] = {0, 100, 200};
    const Bytes after = bytesOf(image);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const int channel = int(i % 4);
        const int expected =
            channel == 3 ? before[i] : (before[i] * (255 - 33) + colour[channel] * 33) >> 8;
        ASSERT_EQ(after[i], expected) << i;
    }

    image = imageOf(1, 1, ZK_PACKING_CHANNEL_2x8, {100, 100});
    image.mixWithColor(ZKColor3ub(0, 0, 0), 255);
    EXPECT_EQ(bytesOf(image), (Bytes{100, 100}));
}

TEST(ZKImage, FillRectWithColorIsClippedAndWritesAlphaOnlyInFourBytePackings) {
    ZKImage image = imageOf(3, 2, ZK_PACKING_RGBA, Bytes(24, 0));
    image.fillRectWithColor(ZKPixRect(2, -5, 10, 1), ZKColor4ub(1, 2, 3, 4));
    EXPECT_EQ(bytesOf(image), (Bytes{0, 0, 0, 0, 0, 0, 0, 0, 1, 2, 3, 4, //
                                     0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    image = imageOf(2, 2, ZK_PACKING_BGR, Bytes(12, 0));
    image.fillRectWithColor(ZKPixRect(0, 1, 2, 2), ZKColor4ub(1, 2, 3, 4));
    EXPECT_EQ(bytesOf(image), (Bytes{0, 0, 0, 0, 0, 0, 3, 2, 1, 3, 2, 1}));
    image.fillRectWithColor(ZKPixRect(5, 5, 9, 9), ZKColor4ub(9, 9, 9, 9));
    image.fillRectWithColor(ZKPixRect(1, 1, 0, 0), ZKColor4ub(9, 9, 9, 9));
    EXPECT_EQ(bytesOf(image), (Bytes{0, 0, 0, 0, 0, 0, 3, 2, 1, 3, 2, 1}));
    // Only the coordinates count: the emptiness mark is not looked at.
    ZKPixRect marked(0, 0, 1, 1);
    marked.flags = ZKPixRect::s_EMPTY;
    image.fillRectWithColor(marked, ZKColor4ub(7, 8, 9, 4));
    EXPECT_EQ(bytesOf(image), (Bytes{9, 8, 7, 0, 0, 0, 3, 2, 1, 3, 2, 1}));
    image = imageOf(1, 1, ZK_PACKING_GREY, {5});
    image.fillRectWithColor(ZKPixRect(0, 0, 1, 1), ZKColor4ub(1, 2, 3, 4));
    EXPECT_EQ(bytesOf(image), (Bytes{5}));
}

TEST(ZKImage, VerticalGradientInterpolatesRowByRow) {
    ZKImage image = imageOf(2, 3, ZK_PACKING_RGBA, Bytes(24, 0));
    image.fillWithVGradient(ZKColor4ub(0, 255, 10, 255), ZKColor4ub(255, 0, 10, 0));
    EXPECT_EQ(bytesOf(image), (Bytes{0,   255, 10, 255, 0,   255, 10, 255, //
                                     127, 128, 10, 128, 127, 128, 10, 128, //
                                     255, 0,   10, 0,   255, 0,   10, 0}));
    // Rows follow the rectangle, not the part of it inside the image.
    image = imageOf(1, 2, ZK_PACKING_RGB, Bytes(6, 0));
    image.fillRectWithVGradient(ZKPixRect(0, -2, 1, 3), ZKColor4ub(0, 0, 0, 0),
                                ZKColor4ub(100, 200, 40, 0));
    EXPECT_EQ(bytesOf(image), (Bytes{50, 100, 20, 75, 150, 30}));
    // One row gets the first colour.
    image.fillRectWithVGradient(ZKPixRect(0, 1, 1, 2), ZKColor4ub(1, 2, 3, 0),
                                ZKColor4ub(100, 200, 40, 0));
    EXPECT_EQ(bytesOf(image), (Bytes{50, 100, 20, 1, 2, 3}));
    // Row numbers count from a far-off top without overflowing.
    image.fillRectWithVGradient(ZKPixRect(0, INT_MIN, 1, INT_MAX), ZKColor4ub(0, 0, 0, 0),
                                ZKColor4ub(200, 100, 40, 0));
    EXPECT_EQ(bytesOf(image), (Bytes{100, 50, 20, 100, 50, 20}));
}

TEST(ZKImage, GetSubImageIsClippedToTheImage) {
    // 3 x 3 grey: 1 2 3 / 4 5 6 / 7 8 9
    const ZKImage image = imageOf(3, 3, ZK_PACKING_GREY, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    ZKImage sub;
    image.getSubImage(sub, ZKVec2i(1, 1), ZKPixSize(2, 2));
    EXPECT_EQ(sub.getSize(), ZKPixSize(2, 2));
    EXPECT_EQ(bytesOf(sub), (Bytes{5, 6, 8, 9}));
    image.getSubImage(sub, ZKVec2i(-1, 2), ZKPixSize(3, 5));
    EXPECT_EQ(sub.getSize(), ZKPixSize(2, 1));
    EXPECT_EQ(bytesOf(sub), (Bytes{7, 8}));
    image.getSubImage(sub, ZKVec2i(3, 0), ZKPixSize(2, 2));
    EXPECT_EQ(sub.getPixels(), nullptr);
    EXPECT_EQ(sub.getSize(), ZKPixSize(0, 0));
    EXPECT_EQ(sub.getPacking(), ZK_PACKING_GREY);
    image.getSubImage(sub, ZKVec2i(2147483000, 0), ZKPixSize(2147483000, 1));
    EXPECT_EQ(sub.getPixels(), nullptr);

    const ZKImage rgb = imageOf(2, 2, ZK_PACKING_RGB, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    rgb.getSubImage(sub, ZKVec2i(1, 0), ZKPixSize(1, 2));
    EXPECT_EQ(bytesOf(sub), (Bytes{4, 5, 6, 10, 11, 12}));
}
