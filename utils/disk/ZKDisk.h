// ZKDisk.h: paths, file names, files, folders and text files.
//
// ZKDisk is a server class: static functions only, no instances and no state.
// It offers
// - the path and file-name rules: pure string operations that never touch the
//   file system (ZKDisk_Paths.cpp);
// - whole text files and single lines on C streams or on strings held in
//   memory (ZKDisk_Text.cpp);
// - the operations on files and folders (ZKDisk_Files.cpp, ZKDisk_Folders.cpp).
//
// Both separators, '/' and '\', are recognised on input everywhere. A folder
// returned by the splitting operations keeps its trailing separator; an
// extension is returned without its dot. Most operations exist for ZKStringC
// and for ZKStringW; where the two differ, the comment of the member says so.
//
// Failures are false results (or empty strings); nothing is logged or thrown.
// Streams opened by an operation are closed by it; streams passed in belong to
// the caller.
//
// Threads: every member works on its arguments only. The byte-string
// unixifyFileName, getUnixifiedFileName and compareFileName write through
// storage shared with other copies of their arguments, so those copies must not
// be used from another thread meanwhile.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <cstdio>

// Opens a C stream on a wide path: an empty path gives a null stream without
// calling the C library; otherwise fopen(path as UTF-8, mode). The caller
// closes the stream. Every file-based reader and writer of the library opens
// its files through this helper.
ZKUTILS_EXPORT FILE* fopenUtf8(const ZKStringW& path, const char* mode);

class ZKUTILS_EXPORT ZKDisk {
public:
    ZKDisk() = delete;

    // The null stream: what fopenUtf8 returns when it cannot open a file.
    static constexpr FILE* s_invalidFile = nullptr;
};
