#include "ZKImageIO_Utils.h"
#include "ZKTestSupport.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes bytesOf(const ZKImage& image) {
    const unsigned char* p = image.getPixels();
    return p ? Bytes(p, p + image.getByteCount()) : Bytes();
}

ZKStringW suiteFile(const char* name) {
    return zkTestDataDir() + QStringLiteral("/pngsuite/") + QLatin1String(name);
}

// The decoded pixels of a suite file, [r, g, b, a, ...] at the file's depth.
std::vector<int> suitePixels(const char* name) {
    QFile file(zkTestDataDir() + QStringLiteral("/pngsuite/") + QLatin1String(name) +
               QStringLiteral(".json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    std::vector<int> values;
    for (const QJsonValue& v : QJsonDocument::fromJson(file.readAll()).array())
        values.push_back(v.toInt());
    return values;
}

// Expected bytes of a loaded suite image of `depth` bytes per pixel: the
// first `channels` channels of each RGBA pixel (16-bit values cut to their
// high byte), the rest of each row zero.
Bytes expectedSuiteBytes(const char* name, int width, int height, int depth,
                         std::vector<int> channels, bool sixteenBits) {
    const std::vector<int> rgba = suitePixels(name);
    Bytes out;
    for (int y = 0; y < height; ++y) {
        Bytes row;
        for (int x = 0; x < width; ++x)
            for (int c : channels) {
                const int v = rgba[std::size_t((y * width + x) * 4 + c)];
                row.push_back(static_cast<unsigned char>(sixteenBits ? v >> 8 : v));
            }
        row.resize(std::size_t(width) * depth, 0);
        out.insert(out.end(), row.begin(), row.end());
    }
    return out;
}

std::uint32_t crc32Of(const QByteArray& data) {
    std::uint32_t crc = 0xffffffffu;
    for (char ch : data) {
        crc ^= static_cast<unsigned char>(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

QByteArray be32(std::uint32_t v) {
    QByteArray b(4, 0);
    for (int i = 0; i < 4; ++i)
        b[i] = char(v >> (24 - 8 * i));
    return b;
}

QByteArray chunk(const char* type, const QByteArray& data) {
    const QByteArray body = QByteArray(type, 4) + data;
    return be32(std::uint32_t(data.size())) + body + be32(crc32Of(body));
}

QByteArray zlibStream(const QByteArray& raw) {
    return qCompress(raw).mid(4); // qCompress prefixes the length to a zlib stream
}

// A PNG whose IDAT holds `raw` (rows already prefixed with their filter byte).
QByteArray makePng(int width, int height, int bitDepth, int colorType, const QByteArray& raw,
                   const QByteArray& extraChunks = QByteArray(), int interlace = 0) {
    QByteArray ihdr = be32(std::uint32_t(width)) + be32(std::uint32_t(height));
    ihdr.append(char(bitDepth)).append(char(colorType)).append('\0').append('\0');
    ihdr.append(char(interlace));
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", ihdr) + extraChunks +
           chunk("IDAT", zlibStream(raw)) + chunk("IEND", QByteArray());
}

// Rows of bytesPerPixel-byte pixels from a flat top-first buffer, each with
// filter byte 0.
QByteArray rawRows(const Bytes& pixels, int width, int height, int bytesPerPixel) {
    QByteArray raw;
    const int rowBytes = width * bytesPerPixel;
    for (int y = 0; y < height; ++y) {
        raw.append('\0');
        raw.append(reinterpret_cast<const char*>(pixels.data()) + y * rowBytes, rowBytes);
    }
    return raw;
}

// The Adam7 passes of 8-bit pixels, each pass's rows with filter byte 0.
QByteArray adam7Rows(const Bytes& pixels, int width, int height, int bytesPerPixel) {
    const int x0[7] = {0, 4, 0, 2, 0, 1, 0}, y0[7] = {0, 0, 4, 0, 2, 0, 1};
    const int dx[7] = {8, 8, 4, 4, 2, 2, 1}, dy[7] = {8, 8, 8, 4, 4, 2, 2};
    QByteArray raw;
    for (int p = 0; p < 7; ++p) {
        if (x0[p] >= width)
            continue;
        for (int y = y0[p]; y < height; y += dy[p]) {
            raw.append('\0');
            for (int x = x0[p]; x < width; x += dx[p])
                raw.append(reinterpret_cast<const char*>(pixels.data()) +
                               (y * width + x) * bytesPerPixel,
                           bytesPerPixel);
        }
    }
    return raw;
}

class ZKImageIO_UtilsFiles : public ::testing::Test {
protected:
    ZKStringW path(const char* name) const { return m_dir.filePath(QLatin1String(name)); }
    ZKStringW write(const char* name, const QByteArray& bytes) const {
        EXPECT_TRUE(zkWriteFile(path(name), bytes));
        return path(name);
    }
    // Loading fails and leaves a cleared image.
    static void expectPngFailure(const ZKStringW& file) {
        ZKImage image;
        image.init(ZKPixSize(2, 2), ZK_PACKING_RGB);
        EXPECT_FALSE(ZKImageIO_Utils::loadImage_PNG(file, image)) << qPrintable(file);
        EXPECT_EQ(image.getPixels(), nullptr);
        EXPECT_EQ(image.getWidth(), 0);
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST(ZKImageIO_Utils, SuiteImagesLoadWithThePackingOfTheirHeader) {
    struct Case {
        const char* name;
        _ZKImagePacking packing;
        std::vector<int> channels;
        bool sixteenBits;
    };
    const Case cases[] = {
        {"basn0g08", ZK_PACKING_GREY, {0}, false},
        {"basn0g16", ZK_PACKING_CHANNEL_2x8, {0}, true}, // kept: 1 decoded byte of 2
        {"basn2c08", ZK_PACKING_RGB, {0, 1, 2}, false},
        {"basn2c16", ZK_PACKING_RGB, {0, 1, 2}, true},
        {"basn3p01", ZK_PACKING_RGBA, {0, 1, 2}, false}, // kept: 3 decoded bytes of 4
        {"basn3p02", ZK_PACKING_RGBA, {0, 1, 2}, false},
        {"basn3p04", ZK_PACKING_RGBA, {0, 1, 2}, false},
        {"basn3p08", ZK_PACKING_RGBA, {0, 1, 2}, false},
        {"basn6a08", ZK_PACKING_RGBA, {0, 1, 2, 3}, false},
        {"basn6a16", ZK_PACKING_RGBA, {0, 1, 2, 3}, true},
    };
    for (const Case& c : cases) {
        ZKImage image;
        ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
            suiteFile((std::string(c.name) + ".png").c_str()), image))
            << c.name;
        EXPECT_EQ(image.getSize(), ZKPixSize(32, 32)) << c.name;
        EXPECT_EQ(image.getPacking(), c.packing) << c.name;
        EXPECT_FALSE(image.isBorrowed());
        EXPECT_EQ(bytesOf(image),
                  expectedSuiteBytes(c.name, 32, 32, image.getDepth(), c.channels, c.sixteenBits))
            << c.name;
    }
}

TEST_F(ZKImageIO_UtilsFiles, UnsupportedAndCorruptPngsFail) {
    // Grey below 8 bits and grey with alpha are refused by the packing table.
    for (const char* name :
         {"basn0g01.png", "basn0g02.png", "basn0g04.png", "basn4a08.png", "basn4a16.png"})
        expectPngFailure(suiteFile(name));
    // A bad first byte, and a signature damaged after its first 4 bytes.
    expectPngFailure(suiteFile("xs1n0g01.png"));
    expectPngFailure(suiteFile("xcrn0g04.png"));
    expectPngFailure(path("missing.png"));
    expectPngFailure(ZKStringW());
    expectPngFailure(write("short.png", QByteArray("\x89PN", 3)));

    const QByteArray good = zkReadFile(suiteFile("basn2c08.png"));
    expectPngFailure(write("truncated.png", good.left(good.size() / 2)));
    QByteArray badCrc = good;
    badCrc[good.indexOf("IDAT") + 10] = char(badCrc[good.indexOf("IDAT") + 10] ^ 0x55);
    expectPngFailure(write("badcrc.png", badCrc));
    // A header announcing a million by a million pixels in a few bytes.
    expectPngFailure(
        write("huge.png", makePng(1000000, 1000000, 8, 6, rawRows({0, 0, 0, 0}, 1, 1, 4))));
}

TEST_F(ZKImageIO_UtilsFiles, SmallRgbLoadsTopRowFirst) {
    const Bytes pixels{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18};
    ZKImage image;
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("rgb.png", makePng(3, 2, 8, 2, rawRows(pixels, 3, 2, 3))), image));
    EXPECT_EQ(image.getSize(), ZKPixSize(3, 2));
    EXPECT_EQ(image.getPacking(), ZK_PACKING_RGB);
    EXPECT_EQ(bytesOf(image), pixels);

    // Interlaced files give the same pixels.
    const Bytes big = [] {
        Bytes b(std::size_t(11) * 9 * 3);
        for (std::size_t i = 0; i < b.size(); ++i)
            b[i] = static_cast<unsigned char>(i * 7);
        return b;
    }();
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("adam7.png", makePng(11, 9, 8, 2, adam7Rows(big, 11, 9, 3), QByteArray(), 1)),
        image));
    EXPECT_EQ(bytesOf(image), big);
}

TEST_F(ZKImageIO_UtilsFiles, TransparencyChunksExpandToAlpha) {
    // Palette with transparency: faithful RGBA.
    const QByteArray plte = chunk("PLTE", QByteArray("\x10\x20\x30\x40\x50\x60", 6));
    const QByteArray trnsPalette = chunk("tRNS", QByteArray("\x80", 1));
    ZKImage image;
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("ptrns.png", makePng(2, 1, 8, 3, rawRows({0, 1}, 2, 1, 1), plte + trnsPalette)),
        image));
    EXPECT_EQ(image.getPacking(), ZK_PACKING_RGBA);
    EXPECT_EQ(bytesOf(image), (Bytes{0x10, 0x20, 0x30, 0x80, 0x40, 0x50, 0x60, 255}));

    // Kept: RGB with transparency decodes 4 bytes per pixel; each row keeps
    // the first width x 3 of them.
    const QByteArray trnsRgb = chunk("tRNS", QByteArray("\0\1\0\2\0\3", 6));
    const Bytes rgb{1, 2, 3, 9, 9, 9, 5, 5, 5, 7, 7, 7};
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("rgbtrns.png", makePng(2, 2, 8, 2, rawRows(rgb, 2, 2, 3), trnsRgb)), image));
    EXPECT_EQ(image.getPacking(), ZK_PACKING_RGB);
    EXPECT_EQ(bytesOf(image), (Bytes{1, 2, 3, 0, 9, 9, 5, 5, 5, 255, 7, 7}));

    // Kept: 8-bit grey with transparency decodes grey and alpha pairs.
    const QByteArray trnsGrey = chunk("tRNS", QByteArray("\0\7", 2));
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("greytrns.png", makePng(3, 1, 8, 0, rawRows({7, 8, 9}, 3, 1, 1), trnsGrey)), image));
    EXPECT_EQ(image.getPacking(), ZK_PACKING_GREY);
    EXPECT_EQ(bytesOf(image), (Bytes{7, 0, 8}));

    // 16-bit grey with transparency fills its 2-byte packing with grey, alpha.
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(
        write("grey16trns.png", makePng(2, 1, 16, 0, rawRows({0x12, 0x34, 0xab, 0xcd}, 2, 1, 2),
                                        chunk("tRNS", QByteArray("\x12\x34", 2)))),
        image));
    EXPECT_EQ(image.getPacking(), ZK_PACKING_CHANNEL_2x8);
    EXPECT_EQ(bytesOf(image), (Bytes{0x12, 0, 0xab, 255}));
}

TEST_F(ZKImageIO_UtilsFiles, SavedPngsLoadBackAndTheResultIsAlwaysFalse) {
    const Bytes rgba{1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                     13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24};
    // Blue-first packings are converted first; packing 6 is written as 16-bit
    // grey and reads back cut to its high bytes.
    struct Case {
        _ZKImagePacking packing;
        int width, height, pngBitDepth, pngColorType;
        _ZKImagePacking loaded;
        Bytes back;
    };
    const Case cases[] = {
        {ZK_PACKING_RGBA, 3, 2, 8, 6, ZK_PACKING_RGBA, Bytes(rgba.begin(), rgba.end())},
        {ZK_PACKING_RGB, 2, 4, 8, 2, ZK_PACKING_RGB, Bytes(rgba.begin(), rgba.end())},
        {ZK_PACKING_GREY, 4, 6, 8, 0, ZK_PACKING_GREY, Bytes(rgba.begin(), rgba.end())},
        {ZK_PACKING_BGRA, 2, 1, 8, 6, ZK_PACKING_RGBA, {3, 2, 1, 4, 7, 6, 5, 8}},
        {ZK_PACKING_BGR, 1, 2, 8, 2, ZK_PACKING_RGB, {3, 2, 1, 6, 5, 4}},
        {ZK_PACKING_CHANNEL_2x8, 3, 1, 16, 0, ZK_PACKING_CHANNEL_2x8, {1, 3, 5, 0, 0, 0}},
    };
    for (const Case& c : cases) {
        ZKImage image;
        image.copyPixels(rgba.data(), ZKPixSize(c.width, c.height), c.packing);
        const ZKStringW file = path("saved.png");
        // Kept: false even though the file is written.
        EXPECT_FALSE(ZKImageIO_Utils::saveImage_PNG(file, image));
        const QByteArray written = zkReadFile(file);
        EXPECT_EQ(written[24], char(c.pngBitDepth)) << c.packing;
        EXPECT_EQ(written[25], char(c.pngColorType)) << c.packing;
        ZKImage back;
        ASSERT_TRUE(ZKImageIO_Utils::loadImage_PNG(file, back)) << c.packing;
        EXPECT_EQ(back.getPacking(), c.loaded);
        EXPECT_EQ(back.getSize(), image.getSize());
        EXPECT_EQ(bytesOf(back), c.back) << c.packing;
    }
}

TEST_F(ZKImageIO_UtilsFiles, PackingsWithoutAPngFormWriteNothing) {
    ZKImage image;
    image.init(ZKPixSize(2, 2), ZK_PACKING_CHANNEL_1x8);
    EXPECT_FALSE(ZKImageIO_Utils::saveImage_PNG(path("one.png"), image));
    EXPECT_FALSE(QFileInfo::exists(path("one.png")));
    // A 32-bit grey depth is refused by libpng: no PNG comes out.
    image.init(ZKPixSize(2, 2), ZK_PACKING_CHANNEL_4x8);
    std::fill(image.getPixels(), image.getPixels() + image.getByteCount(), 0);
    EXPECT_FALSE(ZKImageIO_Utils::saveImage_PNG(path("four.png"), image));
    ZKImage back;
    EXPECT_FALSE(ZKImageIO_Utils::loadImage_PNG(path("four.png"), back));
    // No pixels, or a folder that does not exist.
    EXPECT_FALSE(ZKImageIO_Utils::saveImage_PNG(path("none.png"), ZKImage()));
    EXPECT_FALSE(QFileInfo::exists(path("none.png")));
    image.init(ZKPixSize(1, 1), ZK_PACKING_RGB);
    EXPECT_FALSE(ZKImageIO_Utils::saveImage_PNG(path("no/such/folder.png"), image));
}

namespace {

void putLE(QByteArray& b, int offset, std::uint32_t v, int size = 4) {
    for (int i = 0; i < size; ++i)
        b[offset + i] = char(v >> (8 * i));
}

// A 24-bit BMP of a top-first RGB buffer, rows padded to 4 bytes.
QByteArray makeBmp(int width, int height, const Bytes& rgb, bool topDown = false,
                   bool writeImageSize = true) {
    const int stride = (width * 3 + 3) & ~3;
    QByteArray b(54, 0);
    b[0] = 'B';
    b[1] = 'M';
    putLE(b, 2, std::uint32_t(54 + stride * height));
    putLE(b, 10, 54);
    putLE(b, 14, 40);
    putLE(b, 18, std::uint32_t(width));
    putLE(b, 22, std::uint32_t(topDown ? -height : height));
    putLE(b, 26, 1, 2);
    putLE(b, 28, 24, 2);
    putLE(b, 34, writeImageSize ? std::uint32_t(stride * height) : 0);
    for (int r = 0; r < height; ++r) {
        const int y = topDown ? r : height - 1 - r;
        QByteArray row(stride, char(0xee)); // padding bytes are not pixels
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < 3; ++c)
                row[x * 3 + c] = char(rgb[std::size_t((y * width + x) * 3 + 2 - c)]);
        b.append(row);
    }
    return b;
}

} // namespace

TEST_F(ZKImageIO_UtilsFiles, BmpRowsArePaddedAndComeOutTopRowFirst) {
    for (int width = 1; width <= 4; ++width) {
        const int height = 3;
        Bytes rgb(std::size_t(width) * height * 3);
        for (std::size_t i = 0; i < rgb.size(); ++i)
            rgb[i] = static_cast<unsigned char>(10 + i);
        for (bool topDown : {false, true}) {
            ZKImage image;
            ASSERT_TRUE(ZKImageIO_Utils::loadImage_BMP(
                write("a.bmp", makeBmp(width, height, rgb, topDown, width % 2 == 0)), image))
                << width << topDown;
            EXPECT_EQ(image.getPacking(), ZK_PACKING_RGB);
            EXPECT_EQ(image.getSize(), ZKPixSize(width, height));
            EXPECT_EQ(bytesOf(image), rgb) << width << topDown;
        }
    }
    // The last row's padding may be missing when no image size is declared.
    const Bytes one{1, 2, 3};
    ZKImage image;
    EXPECT_TRUE(ZKImageIO_Utils::loadImage_BMP(
        write("cut.bmp", makeBmp(1, 1, one, false, false).left(57)), image));
    EXPECT_EQ(bytesOf(image), one);
}

TEST_F(ZKImageIO_UtilsFiles, HostileBmpHeadersFailWithoutReadingOutOfBounds) {
    const Bytes pixels(2 * 2 * 3, 7);
    const QByteArray good = makeBmp(2, 2, pixels);
    const std::vector<std::function<void(QByteArray&)>> damages = {
        [](QByteArray& b) { b[0] = 'X'; },
        [](QByteArray& b) { putLE(b, 18, 0); },                 // width 0
        [](QByteArray& b) { putLE(b, 18, std::uint32_t(-2)); }, // negative width
        [](QByteArray& b) { putLE(b, 22, 0); },                 // height 0
        [](QByteArray& b) { putLE(b, 22, 0x80000000u); },       // height INT_MIN
        [](QByteArray& b) { putLE(b, 18, 0x7fffffffu); },       // huge width
        [](QByteArray& b) { putLE(b, 22, 0x7fffffffu); },       // huge height
        [](QByteArray& b) { putLE(b, 22, std::uint32_t(-0x7fffffff)); },
        [](QByteArray& b) {
            putLE(b, 18, 0x40000000u);
            putLE(b, 22, 0x40000000u);
        },
        [](QByteArray& b) { putLE(b, 10, 0xfffffff0u); }, // offset beyond the file
        [](QByteArray& b) { putLE(b, 10, 60); },          // pixel data cut short
        [](QByteArray& b) { putLE(b, 10, 4); },           // offset inside the headers
        [](QByteArray& b) { putLE(b, 34, 0xffffffffu); }, // size beyond the file
        [](QByteArray& b) { putLE(b, 28, 32, 2); },       // not 24 bits
        [](QByteArray& b) { putLE(b, 30, 1); },           // compressed
        [](QByteArray& b) { putLE(b, 14, 12); },          // old core header
        [](QByteArray& b) { b.chop(4); },                 // truncated pixels
        [](QByteArray& b) { b.truncate(40); },            // truncated header
    };
    for (std::size_t i = 0; i < damages.size(); ++i) {
        QByteArray bad = good;
        damages[i](bad);
        ZKImage image;
        image.init(ZKPixSize(1, 1), ZK_PACKING_RGB);
        EXPECT_FALSE(ZKImageIO_Utils::loadImage_BMP(write("bad.bmp", bad), image)) << i;
        EXPECT_EQ(image.getPixels(), nullptr) << i;
    }
    ZKImage image;
    EXPECT_FALSE(ZKImageIO_Utils::loadImage_BMP(path("missing.bmp"), image));
    ASSERT_TRUE(ZKImageIO_Utils::loadImage_BMP(write("good.bmp", good), image));
    EXPECT_EQ(bytesOf(image), pixels);
}
