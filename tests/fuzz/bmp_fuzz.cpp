// Fuzzes ZKImageIO_Utils::loadImage_BMP: the input is the file. A loaded
// image is an RGB image with every pixel byte read from the file; a failed
// load leaves the image cleared.
#include "ZKFuzzSupport.h"

#include "ZKImage.h"
#include "ZKImageIO_Utils.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile scratch("bmp");
    scratch.write(data, size);

    ZKImage image;
    if (ZKImageIO_Utils::loadImage_BMP(scratch.pathW(), image)) {
        ZKFuzz::check(image.hasPixels(), "a loaded BMP has pixels");
        ZKFuzz::check(image.getPacking() == ZK_PACKING_RGB, "a loaded BMP is RGB");
        ZKFuzz::check(image.getByteCount() <= size, "every pixel byte comes from the file");
        ZKFuzz::touchAll(image.getPixels(), image.getByteCount());
    } else {
        ZKFuzz::check(!image.hasPixels(), "a failed load leaves the image cleared");
    }
    return 0;
}
