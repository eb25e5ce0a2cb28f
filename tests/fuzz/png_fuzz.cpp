// Fuzzes ZKImageIO_Utils::loadImage_PNG: the input is the file. A loaded
// image has pixels of the size its packing asks for; a failed load leaves the
// image cleared.
//
// libpng refuses a critical chunk whose CRC is wrong, so random mutations
// would hardly ever get past the header: the custom mutator below mends the
// CRC of every whole chunk after most mutations.
#include "ZKFuzzSupport.h"

#include "ZKImage.h"
#include "ZKImageIO_Utils.h"

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace {

uint32_t readBigEndian32(const uint8_t* p) {
    return uint32_t(p[0]) << 24 | uint32_t(p[1]) << 16 | uint32_t(p[2]) << 8 | uint32_t(p[3]);
}

void writeBigEndian32(uint8_t* p, uint32_t v) {
    p[0] = uint8_t(v >> 24);
    p[1] = uint8_t(v >> 16);
    p[2] = uint8_t(v >> 8);
    p[3] = uint8_t(v);
}

// Rewrites the CRC of every chunk that lies whole in the data.
void mendChunkCrcs(uint8_t* data, size_t size) {
    static const uint8_t signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    if (size < 8 || std::memcmp(data, signature, 8) != 0)
        return;
    size_t pos = 8;
    while (pos + 12 <= size) {
        const uint32_t length = readBigEndian32(data + pos);
        if (length > size - pos - 12)
            break;
        const uint32_t crc = uint32_t(crc32(0, data + pos + 4, uInt(length) + 4));
        writeBigEndian32(data + pos + 8 + length, crc);
        pos += 12 + size_t(length);
    }
}

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize,
                                          unsigned int seed) {
    size = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 8 != 0) // now and then a wrong CRC goes through as well
        mendChunkCrcs(data, size);
    return size;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile scratch("png");
    scratch.write(data, size);

    ZKImage image;
    if (ZKImageIO_Utils::loadImage_PNG(scratch.pathW(), image)) {
        ZKFuzz::check(image.hasPixels(), "a loaded PNG has pixels");
        ZKFuzz::check(image.getByteCount() == size_t(image.getWidth()) * size_t(image.getHeight()) *
                                                  size_t(image.getDepth()),
                      "a loaded PNG holds width x height x depth bytes");
        ZKFuzz::touchAll(image.getPixels(), image.getByteCount());
    } else {
        ZKFuzz::check(!image.hasPixels(), "a failed load leaves the image cleared");
    }
    return 0;
}
