// ZKArrayServer.h: static utilities over index lists, numeric arrays and tag
// sets (ZKBoolArray).
//
// An index is tested against a tag set only when it is below the set's size;
// negative indices never count as tagged. Renumberings are index maps:
// old-to-new (entry i is the new index of old element i, negative when the
// element is gone) or new-to-old (entry k is the old index of new element k,
// -1 when the element is new).
//
// Threads: no state; safe on distinct arguments.
#pragma once

#include "ZKArray.h"
#include "ZKArrayByBlocs.h"
#include "ZKBoolArray.h"
#include "ZKExport.h"

class ZKUTILS_EXPORT ZKArrayServer {
public:
    // The indices, in order and with their repetitions, that are tagged
    // (keepTagged) or not tagged (!keepTagged); with !keepTagged the indices
    // at or beyond the tag set's size are kept. The result's capacity is the
    // input count.
    static ZKArray<int> filterIndices(const ZKArray<int>& indices, const ZKBoolArray& tags,
                                      bool keepTagged);

    // The range of the finite values. Starts from min = the largest finite
    // value and max = the smallest positive normal value (not the most
    // negative one), so values all below that tiny number report it as max.
    // Non-finite values only raise a flag: positive ones hasPositiveNonFinite,
    // the others (NaN included) hasNegativeNonFinite.
    static void computeMinMaxValues(float& min, float& max, bool& hasNegativeNonFinite,
                                    bool& hasPositiveNonFinite, const ZKArray<float>& values);
    static void computeMinMaxValues(double& min, double& max, bool& hasNegativeNonFinite,
                                    bool& hasPositiveNonFinite, const ZKArray<double>& values);

    // Sets in tags the indices listed in bloc b (negative ones skipped), the
    // set grown to the largest index + 1 when needed. An empty or invalid bloc
    // changes nothing.
    static void setBoolArrayFlags(ZKBoolArray& tags, const ZKArrayByBlocs<int>& blocs, int bloc);

    // out is resized to newSize (new elements clear, existing bits kept), then
    // oldToNew[i] is set for every set i of oldTags (when >= 0). Targets are
    // not tested against newSize: one past the size sets a storage bit beyond
    // it (out.get shows it, the size does not change). Indices the map does
    // not cover and targets outside out's storage are skipped.
    static void applyToNew(ZKBoolArray& out, const ZKBoolArray& oldTags,
                           const ZKArray<int>& oldToNew, int newSize);
    // In place: tags becomes a fresh set of newSize built the same way.
    static void applyToNew(ZKBoolArray& tags, const ZKArray<int>& oldToNew, int newSize);
    // out gets newToOld's size, all clear (reallocated unless it already has
    // that size); element k is set when newToOld[k] names a set old element.
    // The old element is read without a test against oldTags' size, so a set
    // storage bit past the size counts; outside the storage it reads clear.
    static void applyToOld(ZKBoolArray& out, const ZKBoolArray& oldTags,
                           const ZKArray<int>& newToOld);
    static void applyToOld(ZKBoolArray& tags, const ZKArray<int>& newToOld);

    // True as soon as one listed index is tagged; false for an empty list.
    static bool hasOneTaggedIndex(const ZKBoolArray& tags, const ZKStaticArray<int>& indices);
    // The listed indices (with repetitions) that are tagged.
    static int countTaggedIndex(const ZKBoolArray& tags, const ZKStaticArray<int>& indices);
    // Append to out, in list order, the position k (1) or the index itself (2)
    // of every tagged listed index; out is not emptied first.
    static void extractTaggedIndices1(ZKArray<int>& out, const ZKBoolArray& tags,
                                      const ZKStaticArray<int>& indices);
    static void extractTaggedIndices2(ZKArray<int>& out, const ZKBoolArray& tags,
                                      const ZKStaticArray<int>& indices);
};
