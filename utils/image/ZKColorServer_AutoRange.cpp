// ZKColorServer::realValuesToColors: value-to-colour mapping with bounds that
// may be taken from the values themselves.
#include "ZKColorServer.h"

#include "ZKArrayServer.h"
#include "internal/ZKColorScales.h"

using namespace ZKInternal;

namespace {

template <typename T>
void valuesToColors(ZKArray<ZKColor4ub>& colors, const ZKArray<T>& values, int scale, T min, T max,
                    const ZKStaticArray<ZKColor4ub>* palette) {
    if (min == T(-1) && max == T(-1)) {
        bool negativeNonFinite = false, positiveNonFinite = false;
        ZKArrayServer::computeMinMaxValues(min, max, negativeNonFinite, positiveNonFinite, values);
    }
    // Equal bounds make every colour opaque white.
    colorAll(colors, values, scale, LinearRule<T>{min, max}, palette);
}

} // namespace

void ZKColorServer::realValuesToColors(ZKArray<ZKColor4ub>& colors, const ZKArray<float>& values,
                                       int scale, float min, float max,
                                       const ZKStaticArray<ZKColor4ub>* palette) {
    valuesToColors(colors, values, scale, min, max, palette);
}

void ZKColorServer::realValuesToColors(ZKArray<ZKColor4ub>& colors, const ZKArray<double>& values,
                                       int scale, double min, double max,
                                       const ZKStaticArray<ZKColor4ub>* palette) {
    valuesToColors(colors, values, scale, min, max, palette);
}
