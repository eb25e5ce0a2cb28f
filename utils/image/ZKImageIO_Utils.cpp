// ZKImageIO_Utils: the PNG codec over libpng and the BMP reader.
//
// libpng reports errors by longjmp to the buffer set with setjmp in
// readPng/writePng. Those functions keep every value that must survive the
// jump in the state structure their caller owns, hold no object with a
// destructor, and the caller releases whatever the state holds.
#include "ZKImageIO_Utils.h"

#include "ZKDisk.h"

#include <png.h>

#include <climits>
#include <csetjmp>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

void ZK_png_error(png_struct_def* png, const char*) {
    png_longjmp(png, 1);
}

void ZK_png_warning(png_struct_def*, const char*) {}

namespace {

struct FileCloser {
    void operator()(FILE* f) const { std::fclose(f); }
};
using FileHandle = std::unique_ptr<FILE, FileCloser>;

// Size of the open file, or -1.
long long fileSizeOf(FILE* f) {
    if (std::fseek(f, 0, SEEK_END) != 0)
        return -1;
    const long long size = std::ftell(f);
    if (std::fseek(f, 0, SEEK_SET) != 0)
        return -1;
    return size;
}

// Deflate expands at most 1032 times; twice that leaves room for the row
// filter bytes of interlaced passes. Pixel data larger than this cannot come
// from a file of this size, so it is refused before any allocation.
bool fileCanHold(std::uint64_t rawBytes, long long fileSize) {
    return rawBytes <= std::uint64_t(fileSize) * 2064u + (1u << 20);
}

struct PngReadState {
    FILE* file = nullptr;
    long long fileSize = 0;
    png_structp png = nullptr;
    png_infop info = nullptr;
    png_bytep* rows = nullptr;
    unsigned char* scratch = nullptr;

    ~PngReadState() {
        if (png)
            png_destroy_read_struct(&png, info ? &info : nullptr, nullptr);
        std::free(rows);
        std::free(scratch);
    }
};

bool packingForPng(int colorType, int bitDepth, _ZKImagePacking& packing) {
    switch (colorType) {
    case PNG_COLOR_TYPE_GRAY:
        if (bitDepth == 8)
            packing = ZK_PACKING_GREY;
        else if (bitDepth == 16)
            packing = ZK_PACKING_CHANNEL_2x8;
        else
            return false;
        return true;
    case PNG_COLOR_TYPE_RGB:
        packing = ZK_PACKING_RGB;
        return true;
    case PNG_COLOR_TYPE_PALETTE:
    case PNG_COLOR_TYPE_RGB_ALPHA:
        packing = ZK_PACKING_RGBA;
        return true;
    default:
        return false;
    }
}

// Everything from the info structure to the end of the image; false on any
// failure, libpng's errors included.
bool readPng(PngReadState& s, ZKImage& image) {
    if (setjmp(png_jmpbuf(s.png)))
        return false;
    s.info = png_create_info_struct(s.png);
    if (!s.info)
        return false;
    png_init_io(s.png, s.file);
    png_set_sig_bytes(s.png, 4);
    png_read_info(s.png, s.info);
    png_uint_32 width = 0, height = 0;
    int bitDepth = 0, colorType = 0;
    png_get_IHDR(s.png, s.info, &width, &height, &bitDepth, &colorType, nullptr, nullptr, nullptr);

    png_set_strip_16(s.png);
    png_set_packing(s.png);
    if (colorType == PNG_COLOR_TYPE_PALETTE)
        png_set_expand(s.png);
    if (colorType == PNG_COLOR_TYPE_GRAY && bitDepth < 8)
        png_set_expand(s.png);
    if (png_get_valid(s.png, s.info, PNG_INFO_tRNS))
        png_set_expand(s.png);

    _ZKImagePacking packing = ZK_PACKING_RGBA;
    if (!packingForPng(colorType, bitDepth, packing))
        return false;
    const std::uint64_t rawRowBytes = png_get_rowbytes(s.png, s.info);
    if (!fileCanHold(std::uint64_t(height) * (rawRowBytes + 1), s.fileSize))
        return false;

    png_set_interlace_handling(s.png);
    png_read_update_info(s.png, s.info);
    const std::size_t decodedRowBytes = png_get_rowbytes(s.png, s.info);

    image.init(ZKPixSize(int(width), int(height)), packing);
    if (!image.getPixels())
        return false;
    const std::size_t stride = std::size_t(width) * std::size_t(image.getDepth());
    s.rows = static_cast<png_bytep*>(std::malloc(std::size_t(height) * sizeof(png_bytep)));
    if (!s.rows)
        return false;
    // Kept: the packing follows the header, not the decoded width. Narrower
    // decoded rows leave zeros after the decoded bytes; wider ones are
    // decoded aside and cut to the row width.
    unsigned char* target = image.getPixels();
    std::size_t targetStride = stride;
    if (decodedRowBytes > stride) {
        s.scratch = static_cast<unsigned char*>(std::malloc(std::size_t(height) * decodedRowBytes));
        if (!s.scratch)
            return false;
        target = s.scratch;
        targetStride = decodedRowBytes;
    } else if (decodedRowBytes < stride) {
        std::memset(image.getPixels(), 0, image.getByteCount());
    }
    for (png_uint_32 i = 0; i < height; ++i)
        s.rows[i] = target + std::size_t(i) * targetStride;
    png_read_image(s.png, s.rows);
    png_read_end(s.png, nullptr);
    if (s.scratch) {
        for (png_uint_32 i = 0; i < height; ++i)
            std::memcpy(image.getPixels() + std::size_t(i) * stride, s.rows[i], stride);
    }
    return true;
}

struct PngWriteState {
    png_structp png = nullptr;
    png_infop info = nullptr;

    ~PngWriteState() {
        if (png)
            png_destroy_write_struct(&png, info ? &info : nullptr);
    }
};

bool writePng(PngWriteState& s, FILE* file, const ZKImage& image, png_bytep* rows, int colorType,
              int bitDepth) {
    if (setjmp(png_jmpbuf(s.png)))
        return false;
    s.info = png_create_info_struct(s.png);
    if (!s.info)
        return false;
    png_init_io(s.png, file);
    png_set_IHDR(s.png, s.info, png_uint_32(image.getWidth()), png_uint_32(image.getHeight()),
                 bitDepth, colorType, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(s.png, s.info);
    png_write_image(s.png, rows);
    png_write_end(s.png, nullptr);
    return true;
}

std::uint32_t readLE32(const unsigned char* p) {
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

std::uint16_t readLE16(const unsigned char* p) {
    return std::uint16_t(p[0] | p[1] << 8);
}

bool readBmp(FILE* file, ZKImage& image) {
    const long long fileSize = fileSizeOf(file);
    unsigned char header[54];
    if (fileSize < 0 || std::fread(header, 1, sizeof header, file) != sizeof header)
        return false;
    const std::uint32_t dataOffset = readLE32(header + 10);
    const std::uint32_t infoSize = readLE32(header + 14);
    const std::int32_t width = std::int32_t(readLE32(header + 18));
    const std::int32_t height = std::int32_t(readLE32(header + 22));
    const std::uint16_t bitsPerPixel = readLE16(header + 28);
    const std::uint32_t compression = readLE32(header + 30);
    const std::uint32_t imageSize = readLE32(header + 34);
    if (header[0] != 'B' || header[1] != 'M' || infoSize < 40 || bitsPerPixel != 24 ||
        compression != 0)
        return false;
    if (width <= 0 || height == 0 || height == INT_MIN)
        return false;
    const bool topDown = height < 0;
    const std::uint64_t rows = std::uint64_t(topDown ? -std::int64_t(height) : height);
    const std::uint64_t rowBytes = std::uint64_t(width) * 3;
    const std::uint64_t stride = (rowBytes + 3) & ~std::uint64_t(3);
    // The pixel data: every row padded but the last, which may end the file.
    const std::uint64_t needed = stride * (rows - 1) + rowBytes;
    const std::uint64_t declared = imageSize != 0 ? imageSize : rowBytes * rows;
    if (dataOffset < sizeof header || dataOffset > std::uint64_t(fileSize))
        return false;
    const std::uint64_t available = std::uint64_t(fileSize) - dataOffset;
    if (needed > available || declared > available)
        return false;

    image.init(ZKPixSize(width, int(rows)), ZK_PACKING_RGB);
    unsigned char* pixels = image.getPixels();
    if (!pixels || std::fseek(file, long(dataOffset), SEEK_SET) != 0)
        return false;
    unsigned char padding[3];
    for (std::uint64_t r = 0; r < rows; ++r) {
        unsigned char* row = pixels + (topDown ? r : rows - 1 - r) * rowBytes;
        if (std::fread(row, 1, rowBytes, file) != rowBytes)
            return false;
        if (r + 1 < rows && std::fread(padding, 1, stride - rowBytes, file) != stride - rowBytes)
            return false;
        for (unsigned char* p = row; p != row + rowBytes; p += 3)
            std::swap(p[0], p[2]); // the file stores blue, green, red
    }
    return true;
}

} // namespace

bool ZKImageIO_Utils::loadImage_PNG(const ZKStringW& fileName, ZKImage& image) {
    image.clear();
    PngReadState s;
    s.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, ZK_png_error, ZK_png_warning);
    if (!s.png)
        return false;
    FileHandle file(fopenUtf8(fileName, "rb"));
    if (!file)
        return false;
    s.file = file.get();
    s.fileSize = fileSizeOf(s.file);
    unsigned char signature[4];
    if (s.fileSize < 0 || std::fread(signature, 1, 4, s.file) != 4 ||
        png_sig_cmp(signature, 0, 4) != 0)
        return false;
    if (!readPng(s, image)) {
        image.clear();
        return false;
    }
    return true;
}

bool ZKImageIO_Utils::saveImage_PNG(const ZKStringW& fileName, const ZKImage& image) {
    int colorType = PNG_COLOR_TYPE_RGB;
    int bitDepth = 8;
    switch (image.getPacking()) {
    case ZK_PACKING_RGBA:
        colorType = PNG_COLOR_TYPE_RGB_ALPHA;
        break;
    case ZK_PACKING_RGB:
        break;
    case ZK_PACKING_BGRA:
    case ZK_PACKING_BGR: {
        ZKImage converted;
        image.convertPacking(converted, image.getPacking() == ZK_PACKING_BGRA ? ZK_PACKING_RGBA
                                                                              : ZK_PACKING_RGB);
        saveImage_PNG(fileName, converted);
        return false; // kept: the result is false whatever happened
    }
    case ZK_PACKING_CHANNEL_4x8:
        colorType = PNG_COLOR_TYPE_GRAY;
        bitDepth = 32;
        break;
    case ZK_PACKING_CHANNEL_2x8:
        colorType = PNG_COLOR_TYPE_GRAY;
        bitDepth = 16;
        break;
    case ZK_PACKING_GREY:
        colorType = PNG_COLOR_TYPE_GRAY;
        break;
    default:
        return false;
    }
    if (!image.hasPixels())
        return false;
    FileHandle file(fopenUtf8(fileName, "wb"));
    if (!file)
        return false;
    const std::size_t stride = std::size_t(image.getWidth()) * std::size_t(image.getDepth());
    std::vector<png_bytep> rows(std::size_t(image.getHeight()));
    unsigned char* pixels = const_cast<unsigned char*>(image.getPixels()); // libpng only reads rows
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = pixels + i * stride;
    PngWriteState s;
    s.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, ZK_png_error, ZK_png_warning);
    if (s.png)
        writePng(s, file.get(), image, rows.data(), colorType, bitDepth);
    return false; // kept: callers have always received false, even after a successful write
}

bool ZKImageIO_Utils::loadImage_BMP(const ZKStringW& fileName, ZKImage& image) {
    image.clear();
    FileHandle file(fopenUtf8(fileName, "rb"));
    if (!file)
        return false;
    if (!readBmp(file.get(), image)) {
        image.clear();
        return false;
    }
    return true;
}
