// ZKPixRect.h: pixel sizes (ZKPixSize) and pixel rectangles (ZKPixRect), the
// companions of ZKImage.
//
// A ZKPixRect is a flag word followed by left, top, right and bottom pixel
// coordinates (32-bit signed); right and bottom are exclusive, so the
// rectangle covers columns left ... right - 1 and rows top ... bottom - 1.
// The flag word carries the emptiness marker s_EMPTY: a default rectangle is
// marked empty; set() clears the marker (or sets it when the given size is
// not positive). A rectangle is empty when it is marked or covers no pixel.
// Coordinate sums saturate at the int range instead of overflowing.
//
// Threads: plain values.
#pragma once

#include "ZKExport.h"

class ZKVec2i;

class ZKUTILS_EXPORT ZKPixSize {
public:
    int width = 0;
    int height = 0;

    constexpr ZKPixSize() = default;
    constexpr ZKPixSize(int width_, int height_) : width(width_), height(height_) {}

    friend bool operator==(const ZKPixSize& a, const ZKPixSize& b) {
        return a.width == b.width && a.height == b.height;
    }
    friend bool operator!=(const ZKPixSize& a, const ZKPixSize& b) { return !(a == b); }
};

class ZKUTILS_EXPORT ZKPixRect {
public:
    static constexpr unsigned int s_EMPTY = 1;

    unsigned int flags = s_EMPTY;
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr ZKPixRect() = default;
    // Unmarked; empty all the same when right <= left or bottom <= top.
    constexpr ZKPixRect(int left_, int top_, int right_, int bottom_)
        : flags(0), left(left_), top(top_), right(right_), bottom(bottom_) {}

    // The single pixel (x, y).
    void set(int x, int y);
    void set(const ZKPixRect& r);
    // origin and size; marked empty when the width or height is not positive.
    void set(const ZKVec2i& origin, const ZKPixSize& size);

    // Grows to include r, or the pixel (x, y), without looking at either
    // rectangle's emptiness first: callers use set() for the first element.
    // The flag word is left as it is.
    void addNoEmptyTest(const ZKPixRect& r);
    void addNoEmptyTest(int x, int y);

    // True when both are non-empty and share at least one pixel.
    static bool testIntersection(const ZKPixRect& a, const ZKPixRect& b);
    // Becomes the common part; marked empty when there is none.
    void intersectWith(const ZKPixRect& r);
    // True when both are non-empty and r lies inside this rectangle (as
    // QRect::contains, an empty rectangle is contained nowhere).
    bool contains(const ZKPixRect& r) const;

    bool isEmpty() const { return (flags & s_EMPTY) != 0 || right <= left || bottom <= top; }
    // right - left and bottom - top, as 64-bit values so that no range overflows.
    long long getWidth() const { return (long long)right - left; }
    long long getHeight() const { return (long long)bottom - top; }

    friend bool operator==(const ZKPixRect& a, const ZKPixRect& b) {
        return a.flags == b.flags && a.left == b.left && a.top == b.top && a.right == b.right &&
               a.bottom == b.bottom;
    }
    friend bool operator!=(const ZKPixRect& a, const ZKPixRect& b) { return !(a == b); }
};
