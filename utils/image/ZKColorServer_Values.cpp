// ZKColorServer: the value-to-colour scales with given bounds. The automatic
// bounds of realValuesToColors are in ZKColorServer_AutoRange.cpp.
#include "ZKColorServer.h"

#include "internal/ZKColorScales.h"

using namespace ZKInternal;

void ZKColorServer::getColorFromnormalize_dValue(ZKColor4ub& out, float t, int scale) {
    mapUnit(out, t, scale, nullptr);
}

void ZKColorServer::getColorFromValue(ZKColor4ub& out, float v, int scale, float min, float max) {
    mapUnit(out, LinearRule<float>{min, max}(v), scale, nullptr);
}

void ZKColorServer::realValuesToColors_Log(ZKArray<ZKColor4ub>& colors,
                                           const ZKArray<float>& values, int scale, float,
                                           float max, float decades,
                                           const ZKStaticArray<ZKColor4ub>* palette) {
    colorAll(colors, values, scale, LogRule<float>(max, decades), palette);
}

void ZKColorServer::realValuesToColors_Log(ZKArray<ZKColor4ub>& colors,
                                           const ZKArray<double>& values, int scale, double,
                                           double max, double decades,
                                           const ZKStaticArray<ZKColor4ub>* palette) {
    colorAll(colors, values, scale, LogRule<double>(max, decades), palette);
}

void ZKColorServer::partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                                  ZKArray<ZKColor4ub>& colors,
                                                  const ZKArray<float>& values, int scale,
                                                  float min, float max,
                                                  const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, LinearRule<float>{min, max}, palette);
}

void ZKColorServer::partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                                  ZKArray<ZKColor4ub>& colors,
                                                  const ZKArray<double>& values, int scale,
                                                  double min, double max,
                                                  const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, LinearRule<double>{min, max}, palette);
}

void ZKColorServer::partialUpdateColorsFromValues(const ZKStaticArray<int>& indices,
                                                  ZKArray<ZKColor4ub>& colors,
                                                  const ZKArray<int>& values, int scale, int min,
                                                  int max,
                                                  const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, IntLinearRule{min, max}, palette);
}

void ZKColorServer::partialUpdateColorsFromValues_LogScale(
    const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors, const ZKArray<float>& values,
    int scale, float, float max, float decades, const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, LogRule<float>(max, decades), palette);
}

void ZKColorServer::partialUpdateColorsFromValues_LogScale(
    const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors, const ZKArray<double>& values,
    int scale, double, double max, double decades, const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, LogRule<double>(max, decades), palette);
}

void ZKColorServer::partialUpdateColorsFromValues_LogScale(
    const ZKStaticArray<int>& indices, ZKArray<ZKColor4ub>& colors, const ZKArray<int>& values,
    int scale, int, int max, double decades, const ZKStaticArray<ZKColor4ub>* palette) {
    colorSome(indices, colors, values, scale, IntLogRule(max, decades), palette);
}
