// ZKImage.h: the library's in-memory raster.
//
// A ZKImage is a width x height block of 8-bit channels in one of eight pixel
// packings (_ZKImagePacking). Rows follow one another with no filler bytes:
// row y starts at byte y x width x depth, and row 0 is the first row in
// memory (the top of a picture loaded from a file).
//
// Ownership: the image owns its pixels, a malloc block of exactly
// width x height x depth bytes released with free, unless they are borrowed
// (isBorrowed()): borrowed pixels belong to the caller and are never freed by
// the image. Copying an owning image copies its pixels; copying a borrowing
// image shares the caller's pointer, and the copy borrows too.
//
// An image "has pixels" when its pointer is not null and width, height and
// depth are all positive. Operations on an image without pixels, or with a
// packing they do not handle, change nothing, except the forms that write
// into another image (rotate90, mirrorVertically), which then leave that
// image as a default one (no pixels, 0 x 0, packing 0, owning), and
// convertPacking to another packing, which always gives this size and the new
// packing; the in-place forms are those forms followed by a swap.
// The colour operations act on packings 0 to 3 only.
//
// Allocation uses malloc without a report: when it fails the image is left
// without pixels (null pointer, the requested size kept).
//
// Threads: a value; an image must not be changed while another thread uses it.
#pragma once

#include "ZKColor.h"
#include "ZKExport.h"
#include "ZKPixRect.h"

#include <cstddef>

class ZKVec2i;

// Pixel packings; the comment gives the channel order in memory.
enum _ZKImagePacking : int {
    ZK_PACKING_RGBA = 0,        // red, green, blue, alpha
    ZK_PACKING_RGB = 1,         // red, green, blue
    ZK_PACKING_BGRA = 2,        // blue, green, red, alpha
    ZK_PACKING_BGR = 3,         // blue, green, red
    ZK_PACKING_CHANNEL_1x8 = 4, // one 8-bit channel
    ZK_PACKING_CHANNEL_4x8 = 5, // four 8-bit channels (a 32-bit sample)
    ZK_PACKING_CHANNEL_2x8 = 6, // two 8-bit channels (a 16-bit sample)
    ZK_PACKING_GREY = 7         // one 8-bit grey level
};

class ZKUTILS_EXPORT ZKImage {
public:
    // Bytes per pixel indexed by packing: 4, 3, 4, 3, 1, 4, 2, 1.
    static const int m_depthFromPacking[8];

    // Null pixels, 0 x 0, packing 0, owning.
    ZKImage();
    ZKImage(const ZKImage& other);
    ZKImage(ZKImage&& other) noexcept;
    ZKImage& operator=(const ZKImage& other);
    ZKImage& operator=(ZKImage&& other) noexcept;
    ~ZKImage();

    // Copies width, height, packing and the borrowed flag; borrowed pixels are
    // shared, owned ones deep-copied into a fresh block (null when there are
    // no pixels to copy). freeOwnedFirst frees the pixels this image owned
    // before; false leaves them to the caller, as setPixels does, and suits
    // only an image that owns nothing.
    void copy(const ZKImage& src, bool freeOwnedFirst = true);

    // Frees owned pixels, sets the pointer to null and the width to 0; the
    // height, packing and borrowed flag are left as they are.
    void clear();

    // Adopts pixels, size and packing without copying; borrowed true leaves
    // the block to the caller, false hands it to the image (it must then come
    // from malloc). Owned pixels held before are not freed.
    void setPixels(unsigned char* pixels, const ZKPixSize& size, _ZKImagePacking packing,
                   bool borrowed);
    // Frees owned pixels, then owns a copy of width x height x depth bytes
    // read from pixels (a null source leaves the new block unspecified).
    void copyPixels(const unsigned char* pixels, const ZKPixSize& size, _ZKImagePacking packing);
    // Frees owned pixels, sets size and packing and allocates uninitialised
    // owned pixels (null when the size or the depth is not positive).
    void init(const ZKPixSize& size, _ZKImagePacking packing);

    void swap(ZKImage& other) noexcept;

    // Kept: does nothing; the image is left as it is. Callers still call it.
    void scale(const ZKPixSize& size);

    // A quarter turn, clockwise as the picture is seen (row 0 at the top)
    // when clockwise is true: the pixel at column x, row y of a W x H image
    // goes to column H - 1 - y, row x of the H x W result; counter-clockwise
    // it goes to column y, row W - 1 - x. The result owns a fresh block.
    void rotate90(bool clockwise);
    void rotate90(ZKImage& out, bool clockwise) const;

    // Reverses the order of the rows. The in-place form always ends with owned
    // pixels in a new block (a borrowing image becomes owning).
    void mirrorVertically();
    void mirrorVertically(ZKImage& out) const;

    // Same packing: a plain copy (sharing a borrowed pointer, as copy).
    // Otherwise a fresh owned block in the new packing for the pairs RGB <->
    // RGBA, BGR <-> BGRA (alpha 255 or dropped), RGB <-> BGRA and BGR <-> RGBA
    // (red and blue exchanged), RGBA <-> BGRA, RGB <-> BGR, and grey to
    // RGBA, BGRA, RGB or BGR (grey in the three colour channels, alpha 255).
    // Every other pair gives a block of unspecified content (zeros today).
    // The result always has this size and the new packing, pixels or not.
    void convertPacking(ZKImage& out, _ZKImagePacking packing) const;
    void convertPacking(_ZKImagePacking packing);

    // Every pixel gets c in the packing's channel order; alpha 255, or the
    // given alpha, in the 4-byte packings.
    void fillWithColor(const ZKColor3ub& c);
    void fillWithColor(const ZKColor3ub& c, unsigned char alpha);
    // Each colour channel v becomes (v x (255 - alpha) + c x alpha) >> 8; the
    // alpha channel is kept.
    void mixWithColor(const ZKColor3ub& c, unsigned char alpha);
    // Writes the four channels of c (alpha only in 4-byte packings), without
    // blending, over the rectangle clipped to the image.
    void fillRectWithColor(const ZKPixRect& rect, const ZKColor4ub& c);
    // A vertical gradient over the rectangle's rows: row i of n gets, channel
    // by channel (alpha included), first + (second - first) x i / (n - 1) in
    // integer arithmetic (truncated toward zero; one row gets first). Only
    // the part of the rectangle inside the image is written.
    void fillRectWithVGradient(const ZKPixRect& rect, const ZKColor4ub& first,
                               const ZKColor4ub& second);
    // fillRectWithVGradient over the whole image.
    void fillWithVGradient(const ZKColor4ub& first, const ZKColor4ub& second);

    // Copies the rectangle of the given origin and size, clipped to the
    // image, into out (a fresh owned block of this packing; the clipped size,
    // 0 x 0 with null pixels when nothing is left). A source without pixels
    // leaves out a default image.
    void getSubImage(ZKImage& out, const ZKVec2i& origin, const ZKPixSize& size) const;

    int getWidth() const { return m_width; }
    int getHeight() const { return m_height; }
    ZKPixSize getSize() const { return ZKPixSize(m_width, m_height); }
    _ZKImagePacking getPacking() const { return m_packing; }
    // Bytes per pixel of the packing; 0 for a value outside the enumeration.
    int getDepth() const { return depthOf(m_packing); }
    static int depthOf(_ZKImagePacking packing);
    // width x height x depth, 0 when any of them is not positive.
    std::size_t getByteCount() const;
    unsigned char* getPixels() { return m_pixels; }
    const unsigned char* getPixels() const { return m_pixels; }
    bool isBorrowed() const { return m_borrowedPixels; }
    bool hasPixels() const { return m_pixels != nullptr && getByteCount() != 0; }

private:
    void freeOwned();
    void fillRectRows(const ZKPixRect& rect, const ZKColor4ub& first, const ZKColor4ub& second);

    unsigned char* m_pixels = nullptr;
    bool m_borrowedPixels = false;
    int m_width = 0;
    int m_height = 0;
    _ZKImagePacking m_packing = ZK_PACKING_RGBA;
};
