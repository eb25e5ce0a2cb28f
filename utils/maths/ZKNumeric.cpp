#include "ZKNumeric.h"

#include <cmath>
#include <limits>
#include <mutex>

std::atomic<const float*> ZKNumeric::fastLogTables[ZKNumeric::s_nbFastLogTables] = {};

namespace {

// The one lock of table building: constant-initialised on first use,
// destroyed at process exit.
std::mutex& fastLogTableMutex() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

void ZKNumeric::updateFastLogTable(int index) {
    if (unsigned(index) >= unsigned(s_nbFastLogTables))
        return;
    // Held for the whole build, so concurrent callers of the same table build it once.
    std::lock_guard<std::mutex> lock(fastLogTableMutex());
    if (fastLogTables[index].load(std::memory_order_relaxed))
        return;
    const int n = fastLogTables_n[index];
    const std::uint32_t count = std::uint32_t(1) << n;
    // Kept for the life of the process: readers hold the raw pointer unlocked.
    float* table = new float[count];
    for (std::uint32_t k = 0; k < count; ++k) {
        // The float 1 + k / 2^n, built from its bit pattern.
        const std::uint32_t bits = 0x3F800000u + (k << (23 - n));
        float value;
        std::memcpy(&value, &bits, sizeof value);
        table[k] = std::log(value) / 0.6931472f;
    }
    // Published complete, so that unlocked readers never see a partial table.
    fastLogTables[index].store(table, std::memory_order_release);
}

float ZKNumeric::fastLog2Slow(float x, int index) {
    if (unsigned(index) >= unsigned(s_nbFastLogTables) || std::isnan(x) || x < 0.0f)
        return std::numeric_limits<float>::quiet_NaN();
    if (x == 0.0f)
        return -std::numeric_limits<float>::infinity();
    if (std::isinf(x))
        return x;
    if (!fastLogTables[index].load(std::memory_order_acquire))
        updateFastLogTable(index);
    if (x < std::numeric_limits<float>::min()) // subnormal: scale by 2^23 into the normal range
        return fastLog2(x * 8388608.0f, index) - 23.0f;
    return fastLog2(x, index);
}

float ZKNumeric::linearMapping(float x, const ZKStaticArray<float>& xs,
                               const ZKStaticArray<float>& ys, float slopeBelow, float slopeAbove) {
    const long long n = xs.size() < ys.size() ? xs.size() : ys.size();
    if (n == 0)
        return 0.0f;
    if (x <= xs[0])
        return (x - xs[0]) * slopeBelow + ys[0];
    for (long long i = 1; i < n; ++i) {
        if (x <= xs[i])
            return (ys[i - 1] - ys[i]) * (x - xs[i]) / (xs[i - 1] - xs[i]) + ys[i];
    }
    return (x - xs[n - 1]) * slopeAbove + ys[n - 1];
}
