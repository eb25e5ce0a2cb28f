// ZKNumeric.h: numeric helpers shared by the application: a fast base-2
// logarithm read from lookup tables, and piecewise-linear mapping through a
// table of breakpoints. All members are static.
//
// Fast logarithm: table i (i = 0 to 4) holds 2^n floats, n = fastLogTables_n[i]
// mantissa bits; entry k is log2(1 + k / 2^n). A table is built once, on the
// first updateFastLogTable(i) or fastLog2(x, i), and kept for the life of the
// process (the library owns it; callers only read it). fastLog2 adds the
// float's unbiased exponent to the entry at the top n bits of its mantissa, so
// for positive normal floats the result is at most log2(1 + 2^-n) below the
// exact log2 (never above it but for the rounding of the entry itself).
//
// Threads: table building is serialised by one process-wide mutex, so several
// threads asking for the same table at once build it once. Reading a table is
// not locked: a table pointer is published only once its table is complete.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"

#include <atomic>
#include <cstdint>
#include <cstring>

class ZKUTILS_EXPORT ZKNumeric {
public:
    static constexpr int s_nbFastLogTables = 5;
    // Mantissa bits of each table: table i holds 2^fastLogTables_n[i] floats.
    static constexpr int fastLogTables_n[s_nbFastLogTables] = {8, 10, 12, 14, 16};
    // One pointer per table, null until that table is built.
    static std::atomic<const float*> fastLogTables[s_nbFastLogTables];

    static constexpr float s_log10_e = 0.4342945f; // log10(e)
    static constexpr float s_log2_e = 1.442695f;   // log2(e)

    // Builds table `index` (0 to 4) unless it exists already; any other index
    // is ignored.
    static void updateFastLogTable(int index);

    // log2(x) through table `index`, building the table on first use. Exact
    // special cases: +0 and -0 give -infinity, +infinity gives +infinity,
    // negative x and NaN give NaN; subnormal x are scaled into the normal range
    // first. An index outside 0 to 4 gives NaN.
    static float fastLog2(float x, int index = s_nbFastLogTables - 1) {
        std::uint32_t bits;
        std::memcpy(&bits, &x, sizeof bits);
        if (unsigned(index) < unsigned(s_nbFastLogTables) && bits - 0x00800000u < 0x7F000000u) {
            if (const float* table = fastLogTables[index].load(std::memory_order_acquire)) {
                const int exponent = int(bits >> 23) - 127;
                return float(exponent) +
                       table[(bits & 0x007FFFFFu) >> (23 - fastLogTables_n[index])];
            }
        }
        return fastLog2Slow(x, index);
    }
    // Natural and decimal logarithms derived from fastLog2.
    static float fastLn(float x, int index = s_nbFastLogTables - 1) {
        return fastLog2(x, index) / s_log2_e;
    }
    static float fastLog10(float x, int index = s_nbFastLogTables - 1) {
        return fastLog2(x, index) / s_log2_e * s_log10_e;
    }

    // The piecewise-linear function through the points (xs[i], ys[i]), xs
    // ascending: below xs[0] it continues with slopeBelow from ys[0], above the
    // last breakpoint with slopeAbove from the last y. At exactly xs[0] the
    // below-slope branch gives ys[0]; at exactly xs[i] the result is ys[i].
    // Only the first min(xs.size(), ys.size()) points are used; with no point
    // at all the result is 0.
    static float linearMapping(float x, const ZKStaticArray<float>& xs,
                               const ZKStaticArray<float>& ys, float slopeBelow, float slopeAbove);

private:
    // The cases the inline path does not take: table not built yet, values
    // that are not positive normal floats, bad index.
    static float fastLog2Slow(float x, int index);
};
