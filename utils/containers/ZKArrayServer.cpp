#include "ZKArrayServer.h"

#include <cmath>
#include <limits>

namespace {

bool isTagged(const ZKBoolArray& tags, int i) {
    return i >= 0 && i < tags.size() && tags.get(i);
}

// Kept: the old tags are read without a test against their size, so a bit
// past the size (ZKBoolArray(10, true) sets 10 ... 15) counts; only what lies
// outside the storage is taken as clear.
bool isStoredSet(const ZKBoolArray& tags, int i) {
    return i >= 0 && i < tags.capacity() && tags.get(i);
}

template <typename T>
void computeMinMax(T& min, T& max, bool& hasNegativeNonFinite, bool& hasPositiveNonFinite,
                   const ZKArray<T>& values) {
    hasNegativeNonFinite = false;
    hasPositiveNonFinite = false;
    min = std::numeric_limits<T>::max();
    // kept: max starts at the smallest positive normal value, not the lowest
    // value, so an all-negative array reports that tiny number as its max
    max = std::numeric_limits<T>::min();
    for (const T v : values) {
        if (!std::isfinite(v)) {
            if (v > 0)
                hasPositiveNonFinite = true;
            else
                hasNegativeNonFinite = true; // NaN counts as negative
            continue;
        }
        if (v > max)
            max = v;
        if (v < min)
            min = v;
    }
}

template <typename F> void forEachSet(const ZKBoolArray& tags, F f) {
    for (long long i = tags.findFirst(true, 0); i != -1; tags.goToNextSet(i))
        f(i);
}

template <bool Position>
void extractTagged(ZKArray<int>& out, const ZKBoolArray& tags, const ZKStaticArray<int>& indices) {
    for (long long k = 0; k < indices.size(); ++k)
        if (isTagged(tags, indices[k]))
            out.push_back(Position ? int(k) : indices[k]);
}

} // namespace

ZKArray<int> ZKArrayServer::filterIndices(const ZKArray<int>& indices, const ZKBoolArray& tags,
                                          bool keepTagged) {
    ZKArray<int> result;
    result.reserve(indices.size());
    for (int i : indices) {
        // Indices at or beyond the tag set are kept when untagged ones are.
        const bool tagged = isTagged(tags, i);
        if (tagged == keepTagged)
            result.push_back(i);
    }
    return result;
}

void ZKArrayServer::computeMinMaxValues(float& min, float& max, bool& hasNegativeNonFinite,
                                        bool& hasPositiveNonFinite, const ZKArray<float>& values) {
    computeMinMax(min, max, hasNegativeNonFinite, hasPositiveNonFinite, values);
}

void ZKArrayServer::computeMinMaxValues(double& min, double& max, bool& hasNegativeNonFinite,
                                        bool& hasPositiveNonFinite, const ZKArray<double>& values) {
    computeMinMax(min, max, hasNegativeNonFinite, hasPositiveNonFinite, values);
}

void ZKArrayServer::setBoolArrayFlags(ZKBoolArray& tags, const ZKArrayByBlocs<int>& blocs,
                                      int bloc) {
    if (!blocs.isValidBloc(bloc) || blocs.getBlocSize(bloc) == 0)
        return;
    tags.set(blocs.getBlocSize(bloc), blocs.getBloc(bloc), false);
}

void ZKArrayServer::applyToNew(ZKBoolArray& out, const ZKBoolArray& oldTags,
                               const ZKArray<int>& oldToNew, int newSize) {
    if (&out == &oldTags) {
        applyToNew(out, oldToNew, newSize);
        return;
    }
    out.resize(newSize, false);
    forEachSet(oldTags, [&](long long i) {
        if (i >= oldToNew.size())
            return;
        const int n = oldToNew[i];
        // Kept: no test against newSize; a target past the size lands in the
        // storage beyond it (the trusted write skips only what lies outside).
        if (n >= 0)
            out.set(1, &n, true);
    });
}

void ZKArrayServer::applyToNew(ZKBoolArray& tags, const ZKArray<int>& oldToNew, int newSize) {
    ZKBoolArray fresh;
    applyToNew(fresh, tags, oldToNew, newSize);
    tags.swap(fresh);
}

void ZKArrayServer::applyToOld(ZKBoolArray& out, const ZKBoolArray& oldTags,
                               const ZKArray<int>& newToOld) {
    if (&out == &oldTags) {
        applyToOld(out, newToOld);
        return;
    }
    const long long m = newToOld.size();
    if (out.size() == m) {
        out.clearAll();
    } else {
        out.clearArray();
        out.resize(m, false);
    }
    for (long long k = 0; k < m; ++k)
        if (isStoredSet(oldTags, newToOld[k]))
            out.set(k, 1);
}

void ZKArrayServer::applyToOld(ZKBoolArray& tags, const ZKArray<int>& newToOld) {
    ZKBoolArray fresh;
    applyToOld(fresh, tags, newToOld);
    tags.swap(fresh);
}

bool ZKArrayServer::hasOneTaggedIndex(const ZKBoolArray& tags, const ZKStaticArray<int>& indices) {
    for (int i : indices)
        if (isTagged(tags, i))
            return true;
    return false;
}

int ZKArrayServer::countTaggedIndex(const ZKBoolArray& tags, const ZKStaticArray<int>& indices) {
    int count = 0;
    for (int i : indices)
        count += isTagged(tags, i);
    return count;
}

void ZKArrayServer::extractTaggedIndices1(ZKArray<int>& out, const ZKBoolArray& tags,
                                          const ZKStaticArray<int>& indices) {
    extractTagged<true>(out, tags, indices);
}

void ZKArrayServer::extractTaggedIndices2(ZKArray<int>& out, const ZKBoolArray& tags,
                                          const ZKStaticArray<int>& indices) {
    extractTagged<false>(out, tags, indices);
}
