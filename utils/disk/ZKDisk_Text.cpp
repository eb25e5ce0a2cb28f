#include "ZKDisk.h"

FILE* fopenUtf8(const ZKStringW& path, const char* mode) {
    if (path.isEmpty())
        return ZKDisk::s_invalidFile;
    const ZKStringC utf8 = path.toUtf8();
    return std::fopen(utf8.constData(), mode);
}
