// ZKImageIO_Utils.h: loading and saving ZKImages as image files.
//
// PNG files are read and written through libpng; uncompressed 24-bit BMP files
// can be read. Files are opened through fopenUtf8 (ZKDisk.h) from a wide path
// and closed before the call returns. Failures are false results: nothing is
// printed or logged, whatever the file holds.
//
// Reading a PNG: 16-bit channels are cut to 8 bits, sub-byte pixels unpacked,
// palette and low-depth grey images expanded, a transparency chunk expanded to
// an alpha channel. The packing comes from the header alone:
//   grey 8 bits -> 7 (grey); grey 16 bits -> 6; RGB -> 1 (RGB);
//   palette -> 0 (RGBA); RGBA -> 0 (RGBA); grey below 8 bits, grey with alpha
//   and anything else -> failure.
// Kept on purpose, because callers have always received these images: a
// palette image without transparency decodes to 3 bytes per pixel into its
// 4-byte packing, and a 16-bit grey image to 1 byte per pixel into its 2-byte
// packing; each row then holds the decoded bytes first and zeros after them.
// An RGB (or 8-bit grey) image with a transparency chunk decodes to 4 (or 2)
// bytes per pixel, of which each row keeps the first width x depth bytes.
// Row 0 of the image is the top row of the picture.
//
// Saving a PNG writes packing 0 as RGBA and 1 as RGB (8 bits), 7 as 8-bit
// grey, 6 as 16-bit grey and 5 as 32-bit grey (which libpng refuses, so
// nothing is written); 2 and 3 are converted to 0 and 1 and saved again;
// packing 4 (and any other value) writes nothing, as does an image without
// pixels. The result is false in every case, success included.
//
// Reading a BMP: "BM" files with an information header of at least 40 bytes,
// 24 bits per pixel and no compression, bottom-up or top-down rows padded to
// a multiple of 4 bytes. The result has packing 1 (RGB), top row first.
// Headers that do not describe pixel data lying inside the file (a width or
// height of zero, a negative width, an offset or size beyond the file) give
// false before anything is allocated.
//
// On any failure the target image is left cleared (ZKImage::clear).
//
// Threads: the functions share no state; each call works on its own file.
#pragma once

#include "ZKExport.h"
#include "ZKImage.h"
#include "ZKStringW.h"

struct png_struct_def;

// The libpng callbacks of the codec. The warning callback does nothing and
// returns; the error callback does nothing and leaves through the error exit
// of the call in progress (the reader or writer then reports false), so that
// libpng never prints its own message.
ZKUTILS_EXPORT void ZK_png_error(png_struct_def* png, const char* message);
ZKUTILS_EXPORT void ZK_png_warning(png_struct_def* png, const char* message);

class ZKUTILS_EXPORT ZKImageIO_Utils {
public:
    ZKImageIO_Utils() = delete;

    static bool loadImage_PNG(const ZKStringW& fileName, ZKImage& image);
    // Kept: always returns false, even after a successful write.
    static bool saveImage_PNG(const ZKStringW& fileName, const ZKImage& image);
    static bool loadImage_BMP(const ZKStringW& fileName, ZKImage& image);
};
