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

// The bytes the stream has read ahead and not yet handed out, for a caller
// that holds the stream's lock and scans them in place. Where the C library
// keeps its buffer private this is always empty, and callers fall back to
// getc_unlocked, which also refills the buffer when it runs dry.
inline size_t bufferedBytes(FILE* file, const char*& bytes) {
#if defined(__GLIBC__)
    bytes = file->_IO_read_ptr;
    return file->_IO_read_end > file->_IO_read_ptr ? size_t(file->_IO_read_end - file->_IO_read_ptr)
                                                   : 0;
#else
    (void)file;
    bytes = nullptr;
    return 0;
#endif
}

// Hands out `count` bytes of those bufferedBytes() gave, as if read.
inline void consumeBuffered(FILE* file, size_t count) {
#if defined(__GLIBC__)
    file->_IO_read_ptr += count;
#else
    (void)file;
    (void)count;
#endif
}

} // namespace ZKNative
