// ZKColorServer.h: colour conversions, blends, palettes and value-to-colour
// scales.
//
// ZKColorServer is a server class: static functions only, no state. It
// converts between RGB and HSL (floats in 0 to 1, the hue a fraction of a full
// turn), blends colours, builds palettes of distinct colours and maps numeric
// values to colours (used to colour data by value).
//
// Byte colours go through float form: byte / 255 in, x 255 truncated out (see
// ZKColor.h). Results outside 0 to 1 are not clamped unless a member says so.
//
// Value to colour: t is clamped to 0 to 1 (not a number counts as 0), then
// `scale` selects the colour:
//   0  with a palette, colorBlend(palette, t); without one, out is unchanged
//   1  grey 1 - t (white to black), alpha 255
//   2  grey t (black to white), alpha 255
//   3  HSL (0.5 (1 - t), 1, 0.5): cyan to red, alpha 255
//   any other scale leaves out unchanged.
//
// The blends with float weights are called with float arguments and the byte
// forms with unsigned char ones: an int or double literal is ambiguous
// between the two.
//
// Threads: stateless; everything is passed in.
#pragma once

#include "ZKArray.h"
#include "ZKColor.h"
#include "ZKExport.h"

class ZKUTILS_EXPORT ZKColorServer {
public:
    ZKColorServer() = delete;

    // Entry i % 10 of (255, 0, 0), (0, 0, 127), (0, 255, 0), (127, 127, 0),
    // (0, 0, 255), (127, 0, 0), (255, 255, 0), (0, 127, 0), (255, 0, 255),
    // (127, 0, 127). A negative i counts from the end, as i % 10 + 10.
    static ZKColor3ub getPalette10Color_3ub(int i);

    // HSL in 0 to 1. The hue is not wrapped: it can be slightly negative for a
    // red maximum with blue above green.
    static void RGB_2_HSL(ZKColor3f& out, const ZKColor3f& in);
    static ZKColor3f RGB_2_HSL(const ZKColor3f& in);
    static void HSL_2_RGB(ZKColor3f& out, const ZKColor3f& in);
    static ZKColor3f HSL_2_RGB(const ZKColor3f& in);
    // The same through float form; HSL as bytes is each fraction x 255.
    static void RGB_2_HSL(ZKColor3ub& out, const ZKColor3ub& in);
    static ZKColor3ub RGB_2_HSL(const ZKColor3ub& in);
    static void HSL_2_RGB(ZKColor3ub& out, const ZKColor3ub& in);
    static ZKColor3ub HSL_2_RGB(const ZKColor3ub& in);

    // To HSL, saturation x satFactor and lightness x lumFactor (not clamped),
    // back to RGB.
    static ZKColor3f multiplySatAndLum(const ZKColor3f& c, float satFactor, float lumFactor);
    static ZKColor3ub multiplySatAndLum(const ZKColor3ub& c, float satFactor, float lumFactor);
    // Every RGB component x f, each limited to at most 1 (no lower limit).
    static ZKColor3f multiplyLum(const ZKColor3f& c, float f);
    static ZKColor3ub multiplyLum(const ZKColor3ub& c, float f);

    // Per component a x wa + b x wb, computed in float and truncated for bytes
    // (alpha included).
    static ZKColor3ub colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, float wa, float wb);
    static ZKColor4ub colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, float wa, float wb);
    static ZKColor3f colorBlend(const ZKColor3f& a, const ZKColor3f& b, float wa, float wb);
    // a x (1 - t) + b x t.
    static ZKColor3ub colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, float t);
    static ZKColor4ub colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, float t);
    static ZKColor3f colorBlend(const ZKColor3f& a, const ZKColor3f& b, float t);
    // Per component b x wb / 255 + a x wa / 255, each quotient an integer
    // division; not clamped: a sum above 255 wraps.
    static ZKColor3ub colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, unsigned char wa,
                                 unsigned char wb);
    static ZKColor4ub colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, unsigned char wa,
                                 unsigned char wb);
    // b x t / 255 + a x (255 - t) / 255, integer divisions.
    static ZKColor3ub colorBlend(const ZKColor3ub& a, const ZKColor3ub& b, unsigned char t);
    static ZKColor4ub colorBlend(const ZKColor4ub& a, const ZKColor4ub& b, unsigned char t);

    // Position t along the palette: an empty palette gives opaque white (1 for
    // every float component); one colour gives that colour; t at or below 0
    // (or not a number) the first colour, at or above 1 the last; otherwise
    // the two entries around (count - 1) x t blended linearly, truncated.
    static ZKColor4ub colorBlend(const ZKStaticArray<ZKColor4ub>& palette, float t);
    static ZKColor3ub colorBlend(const ZKStaticArray<ZKColor3ub>& palette, float t);
    static ZKColor3f colorBlend(const ZKStaticArray<ZKColor3f>& palette, float t);

    // Replaces the palette with n, or close to n, well-separated colours: one
    // red for n = 1; (122, 122, B) steps of blue for n = 2 or 3; otherwise a
    // grid of k red levels by k green levels (k = cube root of n, rounded),
    // each cell taking a share of the colours still missing as blue steps.
    // The last green level of the first red level takes every colour still
    // missing, so for n of 4 or more all colours have red 0 and there are
    // exactly n of them. The 4ub form makes every colour opaque. n below 1
    // gives an empty palette.
    static void buildColorPalette(ZKArray<ZKColor3ub>& palette, int n);
    static void buildColorPalette(ZKArray<ZKColor4ub>& palette, int n);

    // HSL (0, t, 1 - 0.5 t) to RGB: white at 0, red at 1.
    static ZKColor3f getColor3fInRange_WhiteRed(float t);
    // Grey 1 - t.
    static ZKColor3f getColor3fInRange_WhiteBlack(float t);
    // HSL (0.5 (1 - t), 1, 0.5) to RGB: cyan at 0, red at 1.
    static ZKColor3f getColor3fInRange_ColdWarm(float t);

    // The value-to-colour mapping of t (see above) without a palette.
    static void getColorFromnormalize_dValue(ZKColor4ub& out, float t, int scale);
    // Maps (v - min) / (max - min).
    static void getColorFromValue(ZKColor4ub& out, float v, int scale, float min, float max);

    // One colour per value. When min and max are both exactly -1 they are
    // taken from the values (ZKArrayServer::computeMinMaxValues). When max
    // equals min every colour becomes opaque white. Otherwise colors is
    // resized to the number of values (new entries opaque black) and each
    // value v maps (v - min) / (max - min); a value that is not finite gives
    // opaque white. palette serves scale 0 and may be null.
    static void realValuesToColors(ZKArray<ZKColor4ub>& colors, const ZKArray<float>& values,
                                   int scale, float min, float max,
                                   const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void realValuesToColors(ZKArray<ZKColor4ub>& colors, const ZKArray<double>& values,
                                   int scale, double min, double max,
                                   const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    // The same resizing (no automatic or equal bounds); decades below 0 become
    // 5; a finite v maps t = 0 when v <= 0, else 1 - log10(max / v) / decades
    // (min is not used); a value that is not finite gives opaque white.
    static void realValuesToColors_Log(ZKArray<ZKColor4ub>& colors, const ZKArray<float>& values,
                                       int scale, float min, float max, float decades,
                                       const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void realValuesToColors_Log(ZKArray<ZKColor4ub>& colors, const ZKArray<double>& values,
                                       int scale, double min, double max, double decades,
                                       const ZKStaticArray<ZKColor4ub>* palette = nullptr);

    // Recomputes only the entries named in indices, each as realValuesToColors
    // does for one value (with the given bounds, equal ones giving opaque
    // white). Nothing is done when colors and values differ in count; an
    // index outside the arrays is skipped. The int form maps
    // (v - min + 0.2) / (max - min + 0.2) and has no non-finite case.
    static void partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                              ZKArray<ZKColor4ub>& colors,
                                              const ZKArray<float>& values, int scale, float min,
                                              float max,
                                              const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                              ZKArray<ZKColor4ub>& colors,
                                              const ZKArray<double>& values, int scale, double min,
                                              double max,
                                              const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                              ZKArray<ZKColor4ub>& colors,
                                              const ZKArray<int>& values, int scale, int min,
                                              int max,
                                              const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    // The log rule of realValuesToColors_Log on the named entries; for int
    // values the rule is computed in double.
    static void partialUpdateColorsFromValues_LogScale(
        const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors,
        const ZKArray<float>& values, int scale, float min, float max, float decades,
        const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void partialUpdateColorsFromValues_LogScale(
        const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors,
        const ZKArray<double>& values, int scale, double min, double max, double decades,
        const ZKStaticArray<ZKColor4ub>* palette = nullptr);
    static void
    partialUpdateColorsFromValues_LogScale(const ZKStaticArray<int>& indices,
                                           ZKArray<ZKColor4ub>& colors, const ZKArray<int>& values,
                                           int scale, int min, int max, double decades,
                                           const ZKStaticArray<ZKColor4ub>* palette = nullptr);

    // out resized to the size of in, each colour x 255 truncated.
    static void convertColors(ZKArray<ZKColor3ub>& out, const ZKArray<ZKColor3f>& in);
};
