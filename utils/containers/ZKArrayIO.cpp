#include "ZKArrayIO.h"

#include "ZKVec.h"

#include <cstdio>

namespace {

// Whether the text is cut, and how many elements it shows.
struct Shown {
    bool cut;
    long long count;
};

Shown shownElements(long long n, int maxCount) {
    const bool cut = maxCount != -1 && n > maxCount;
    return {cut, cut ? maxCount : n};
}

template <typename T, typename Format>
ZKStringC joinElements(const ZKStaticArray<T>& a, int maxCount, bool emptyIfCut, Format format) {
    const Shown shown = shownElements(a.size(), maxCount);
    if (shown.cut && emptyIfCut)
        return ZKStringC();
    // An empty array has no first element to show, whatever maxCount says.
    if (shown.count == 0 || a.size() == 0)
        return ZKStringC("[]");
    // A negative maxCount other than -1 still shows the first element:
    // "[1...]". The loop below then adds nothing.
    ZKStringC text("[");
    text += format(a[0]);
    for (long long k = 1; k < shown.count; ++k) {
        text += ", ";
        text += format(a[k]);
    }
    text += a.size() > shown.count ? "...]" : "]";
    return text;
}

template <typename T>
ZKStringC joinFormatted(const ZKStaticArray<T>& a, const ZKStringC& format, int maxCount,
                        bool emptyIfCut) {
    return joinElements(a, maxCount, emptyIfCut, [&format](T v) {
        ZKStringC s;
        s.printf(format.constData(), double(v));
        return s;
    });
}

// The path's bytes handed to fopen as they are; null for an empty path or a
// file that cannot be opened.
FILE* openPath(const ZKStringC& path, const char* mode) {
    return path.isEmpty() ? nullptr : std::fopen(path.constData(), mode);
}

} // namespace

ZKStringC ZKArrayIO::arrayAsStr(const ZKStaticArray<int>& a, int maxCount, bool emptyIfCut) {
    return joinElements(a, maxCount, emptyIfCut, [](int v) { return ZKStringC::intStr(v); });
}

ZKStringC ZKArrayIO::arrayAsStr(const ZKArray<int>& a, int maxCount, bool emptyIfCut) {
    return arrayAsStr(static_cast<const ZKStaticArray<int>&>(a), maxCount, emptyIfCut);
}

ZKStringC ZKArrayIO::arrayAsStr(const ZKStaticArray<float>& a, const ZKStringC& format,
                                int maxCount, bool emptyIfCut) {
    return joinFormatted(a, format, maxCount, emptyIfCut);
}

ZKStringC ZKArrayIO::arrayAsStr(const ZKStaticArray<double>& a, const ZKStringC& format,
                                int maxCount, bool emptyIfCut) {
    return joinFormatted(a, format, maxCount, emptyIfCut);
}

ZKStringC ZKArrayIO::arrayAsStr(const ZKStaticArray<ZKVec3f>& a, const ZKStringC&, int maxCount,
                                bool emptyIfCut) {
    const Shown shown = shownElements(a.size(), maxCount);
    if (shown.cut && emptyIfCut)
        return ZKStringC();
    if (shown.count == 0)
        return ZKStringC("[]");
    return ZKStringC(); // kept: unfinished on purpose, no element is ever written
}

void ZKArrayIO::saveBoolArray_CSV(const ZKStringC& path, const ZKBoolArray& tags) {
    FILE* file = openPath(path, "w");
    if (!file)
        return;
    std::fprintf(file, "size;%lld\n", tags.size());
    for (long long i = 0; i < tags.size(); ++i)
        std::fprintf(file, "%lld;%d\n", i, tags.get(i) ? 1 : 0);
    std::fclose(file);
}

void ZKArrayIO::loadBoolArray_CSV(const ZKStringC&, ZKBoolArray&) {
    // kept: reading the CSV form was never written; the array stays as it is
}

void ZKArrayIO::saveBoolArray_Binary(const ZKStringC& path, const ZKBoolArray& tags) {
    FILE* file = openPath(path, "wb");
    if (!file)
        return;
    const long long count = tags.size();
    const long long nbBytes = tags.getDataEnd() - tags.getData();
    std::fwrite(&count, sizeof count, 1, file);
    std::fwrite(&nbBytes, sizeof nbBytes, 1, file);
    if (nbBytes > 0)
        std::fwrite(tags.getData(), 1, std::size_t(nbBytes), file);
    std::fclose(file);
}

void ZKArrayIO::loadBoolArray_Binary(const ZKStringC& path, ZKBoolArray& tags) {
    FILE* file = openPath(path, "rb");
    if (!file)
        return;
    long long count = 0;
    long long nbBytes = 0;
    const bool headerRead = std::fread(&count, sizeof count, 1, file) == 1 &&
                            std::fread(&nbBytes, sizeof nbBytes, 1, file) == 1;
    (void)headerRead;
    // kept: the storage bytes are never read; the array always ends up empty
    tags.releaseData();
    std::fclose(file);
}
