// ZKImage: ownership, copies and the geometric operations (rotation,
// mirroring, sub-images). Packing conversion and fills are in
// ZKImage_Pixels.cpp.
#include "ZKImage.h"

#include "ZKVec.h"

#include <cstdlib>
#include <cstring>
#include <utility>

const int ZKImage::m_depthFromPacking[8] = {4, 3, 4, 3, 1, 4, 2, 1};

namespace {

unsigned char* allocatePixels(std::size_t byteCount) {
    return byteCount == 0 ? nullptr : static_cast<unsigned char*>(std::malloc(byteCount));
}

// Moves every pixel of a width x height image of depth D to the position
// target(x, y) gives, as a pixel index in dst.
template <int D, typename Target>
void movePixels(const unsigned char* src, unsigned char* dst, int width, int height,
                Target target) {
    for (int y = 0; y < height; ++y) {
        const unsigned char* s = src + std::size_t(y) * width * D;
        for (int x = 0; x < width; ++x, s += D)
            std::memcpy(dst + target(x, y) * D, s, D);
    }
}

template <typename Target>
void movePixels(int depth, const unsigned char* src, unsigned char* dst, int width, int height,
                Target target) {
    switch (depth) {
    case 1:
        return movePixels<1>(src, dst, width, height, target);
    case 2:
        return movePixels<2>(src, dst, width, height, target);
    case 3:
        return movePixels<3>(src, dst, width, height, target);
    default:
        return movePixels<4>(src, dst, width, height, target);
    }
}

} // namespace

ZKImage::ZKImage() = default;

ZKImage::ZKImage(const ZKImage& other) {
    copy(other, false);
}

ZKImage::ZKImage(ZKImage&& other) noexcept {
    swap(other);
}

ZKImage& ZKImage::operator=(const ZKImage& other) {
    copy(other, true);
    return *this;
}

ZKImage& ZKImage::operator=(ZKImage&& other) noexcept {
    if (this != &other) {
        ZKImage taken(std::move(other));
        swap(taken);
    }
    return *this;
}

ZKImage::~ZKImage() {
    freeOwned();
}

int ZKImage::depthOf(_ZKImagePacking packing) {
    return (packing >= 0 && packing < 8) ? m_depthFromPacking[packing] : 0;
}

std::size_t ZKImage::getByteCount() const {
    const int depth = getDepth();
    if (m_width <= 0 || m_height <= 0 || depth == 0)
        return 0;
    return std::size_t(m_width) * std::size_t(m_height) * std::size_t(depth);
}

void ZKImage::freeOwned() {
    if (!m_borrowedPixels)
        std::free(m_pixels);
    m_pixels = nullptr;
}

void ZKImage::copy(const ZKImage& src, bool freeOwnedFirst) {
    if (this == &src)
        return;
    if (freeOwnedFirst)
        freeOwned();
    m_width = src.m_width;
    m_height = src.m_height;
    m_packing = src.m_packing;
    m_borrowedPixels = src.m_borrowedPixels;
    if (m_borrowedPixels) {
        m_pixels = src.m_pixels;
        return;
    }
    const std::size_t n = src.m_pixels ? src.getByteCount() : 0;
    m_pixels = allocatePixels(n);
    if (m_pixels)
        std::memcpy(m_pixels, src.m_pixels, n);
}

void ZKImage::clear() {
    freeOwned();
    m_width = 0;
}

void ZKImage::setPixels(unsigned char* pixels, const ZKPixSize& size, _ZKImagePacking packing,
                        bool borrowed) {
    m_pixels = pixels;
    m_width = size.width;
    m_height = size.height;
    m_packing = packing;
    m_borrowedPixels = borrowed;
}

void ZKImage::copyPixels(const unsigned char* pixels, const ZKPixSize& size,
                         _ZKImagePacking packing) {
    ZKImage fresh;
    fresh.init(size, packing);
    if (fresh.m_pixels && pixels)
        std::memcpy(fresh.m_pixels, pixels, fresh.getByteCount());
    swap(fresh); // the source may be this image's own block: it is freed last
}

void ZKImage::init(const ZKPixSize& size, _ZKImagePacking packing) {
    freeOwned();
    m_width = size.width;
    m_height = size.height;
    m_packing = packing;
    m_borrowedPixels = false;
    m_pixels = allocatePixels(getByteCount());
}

void ZKImage::swap(ZKImage& other) noexcept {
    std::swap(m_pixels, other.m_pixels);
    std::swap(m_borrowedPixels, other.m_borrowedPixels);
    std::swap(m_width, other.m_width);
    std::swap(m_height, other.m_height);
    std::swap(m_packing, other.m_packing);
}

void ZKImage::scale(const ZKPixSize&) {
    // kept: scaling was never implemented and callers rely on the image being left as it is
}

void ZKImage::rotate90(bool clockwise) {
    ZKImage rotated;
    rotate90(rotated, clockwise);
    swap(rotated);
}

void ZKImage::rotate90(ZKImage& out, bool clockwise) const {
    ZKImage rotated;
    if (hasPixels()) {
        rotated.init(ZKPixSize(m_height, m_width), m_packing);
        if (rotated.m_pixels) {
            const std::size_t w = std::size_t(m_width), h = std::size_t(m_height);
            if (clockwise)
                movePixels(getDepth(), m_pixels, rotated.m_pixels, m_width, m_height,
                           [h](std::size_t x, std::size_t y) { return x * h + (h - 1 - y); });
            else
                movePixels(getDepth(), m_pixels, rotated.m_pixels, m_width, m_height,
                           [w, h](std::size_t x, std::size_t y) { return (w - 1 - x) * h + y; });
        }
    }
    out.swap(rotated);
}

void ZKImage::mirrorVertically() {
    ZKImage mirrored;
    mirrorVertically(mirrored);
    swap(mirrored);
}

void ZKImage::mirrorVertically(ZKImage& out) const {
    ZKImage mirrored;
    if (hasPixels()) {
        mirrored.init(getSize(), m_packing);
        if (mirrored.m_pixels) {
            const std::size_t rowBytes = std::size_t(m_width) * getDepth();
            for (int y = 0; y < m_height; ++y)
                std::memcpy(mirrored.m_pixels + std::size_t(m_height - 1 - y) * rowBytes,
                            m_pixels + std::size_t(y) * rowBytes, rowBytes);
        }
    }
    out.swap(mirrored);
}

void ZKImage::getSubImage(ZKImage& out, const ZKVec2i& origin, const ZKPixSize& size) const {
    ZKImage sub;
    if (hasPixels()) {
        ZKPixRect span;
        span.set(origin, size);
        span.intersectWith(ZKPixRect(0, 0, m_width, m_height));
        if (!span.isEmpty()) {
            sub.init(ZKPixSize(int(span.getWidth()), int(span.getHeight())), m_packing);
            if (sub.m_pixels) {
                const std::size_t depth = std::size_t(getDepth());
                const std::size_t rowBytes = std::size_t(span.getWidth()) * depth;
                for (long long y = span.top; y < span.bottom; ++y)
                    std::memcpy(sub.m_pixels + std::size_t(y - span.top) * rowBytes,
                                m_pixels +
                                    (std::size_t(y) * m_width + std::size_t(span.left)) * depth,
                                rowBytes);
            }
        } else {
            sub.init(ZKPixSize(0, 0), m_packing);
        }
    }
    out.swap(sub);
}
