// ZKNativeStdio.h (internal): the fastest C stream calls the platform offers.
// The library's streams are never shared between threads while in use, so
// the per-call stream lock of fread/fwrite is pure overhead where the C
// library offers unlocked variants.
#pragma once

#include <cstdio>

namespace ZKNative {

inline size_t freadUnlocked(void* data, size_t size, size_t count, FILE* file) {
#if defined(__GLIBC__)
    return fread_unlocked(data, size, count, file);
#else
    return std::fread(data, size, count, file);
#endif
}

inline size_t fwriteUnlocked(const void* data, size_t size, size_t count, FILE* file) {
#if defined(__GLIBC__)
    return fwrite_unlocked(data, size, count, file);
#else
    return std::fwrite(data, size, count, file);
#endif
}

} // namespace ZKNative
