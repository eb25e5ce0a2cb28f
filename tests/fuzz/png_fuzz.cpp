// Fuzzes ZKImageIO_Utils::loadImage_PNG: the input is the file. A loaded
// image has pixels of the size its packing asks for; a failed load leaves the
// image cleared.
#include "ZKFuzzSupport.h"

#include "ZKImage.h"
#include "ZKImageIO_Utils.h"

#include <cstddef>
#include <cstdint>

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
