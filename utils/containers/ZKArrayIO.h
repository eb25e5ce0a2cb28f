// ZKArrayIO.h: arrays as short one-line texts, and ZKBoolArray files.
//
// arrayAsStr gives "[a, b, c]"; with maxCount other than -1 and more elements
// than maxCount, only maxCount are shown and the text ends with "...]", or is
// "" with emptyIfCut. A maxCount of 0, or an empty array, gives "[]"; a
// negative maxCount other than -1 still shows the first element ("[1...]").
//
// Bool-array files: a CSV ("size;<n>" then "<index>;<0|1>" per element) and a
// binary form (element count, storage byte count, storage bytes; 8-byte
// integers in native byte order). Paths are byte strings handed to fopen as
// they are; an empty path or a file that cannot be opened does nothing.
//
// Threads: no state; safe on distinct arguments.
#pragma once

#include "ZKArray.h"
#include "ZKBoolArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"

class ZKVec3f;

class ZKUTILS_EXPORT ZKArrayIO {
public:
    // Elements as ZKStringC::intStr.
    static ZKStringC arrayAsStr(const ZKStaticArray<int>& a, int maxCount = -1,
                                bool emptyIfCut = false);
    static ZKStringC arrayAsStr(const ZKArray<int>& a, int maxCount = -1, bool emptyIfCut = false);
    // Elements, widened to double, formatted with the C format (at most 4095
    // bytes each).
    static ZKStringC arrayAsStr(const ZKStaticArray<float>& a, const ZKStringC& format,
                                int maxCount = -1, bool emptyIfCut = false);
    static ZKStringC arrayAsStr(const ZKStaticArray<double>& a, const ZKStringC& format,
                                int maxCount = -1, bool emptyIfCut = false);
    // Unfinished on purpose: never writes an element. "" when cut with
    // emptyIfCut, "[]" when maxCount is 0 or the array is empty and not cut,
    // "" otherwise.
    static ZKStringC arrayAsStr(const ZKStaticArray<ZKVec3f>& a, const ZKStringC& format,
                                int maxCount = -1, bool emptyIfCut = false);

    // Writes "size;%lld\n", then "%lld;%d\n" per element in index order.
    static void saveBoolArray_CSV(const ZKStringC& path, const ZKBoolArray& tags);
    // Reads nothing and leaves tags unchanged.
    static void loadBoolArray_CSV(const ZKStringC& path, ZKBoolArray& tags);
    // Writes the element count, the storage byte count (the capacity in bytes,
    // which may exceed ceil(count / 8)) and the storage bytes as they lie.
    static void saveBoolArray_Binary(const ZKStringC& path, const ZKBoolArray& tags);
    // Reads the two counts and then empties tags: the result is always an
    // empty array (unless the file cannot be opened: then tags is unchanged).
    static void loadBoolArray_Binary(const ZKStringC& path, ZKBoolArray& tags);
};
