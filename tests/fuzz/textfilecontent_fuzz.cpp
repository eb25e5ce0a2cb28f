// Fuzzes ZKDisk::readTextFileContent in its three forms. The input is the
// file; its first byte also chooses the byte limit (0xFF: no limit). Each form
// must deliver exactly the first min(limit, size) bytes of the file.
#include "ZKFuzzSupport.h"

#include "ZKDisk.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile scratch("textfilecontent");
    scratch.write(data, size);

    const int maxBytes = (size == 0 || data[0] == 0xFF) ? -1 : data[0] * 13;
    const size_t expected = (maxBytes >= 0 && size > size_t(maxBytes)) ? size_t(maxBytes) : size;
    const QByteArray prefix(reinterpret_cast<const char*>(data), int(expected));

    ZKStringC bytes("stale");
    ZKFuzz::check(ZKDisk::readTextFileContent(scratch.pathW(), bytes, maxBytes),
                  "the wide-path form reads the file");
    ZKFuzz::check(bytes == prefix, "the wide-path form delivers the file's first bytes");

    ZKStringC bytes2("stale");
    ZKFuzz::check(ZKDisk::readTextFileContent(scratch.pathC(), bytes2, maxBytes),
                  "the byte-path form reads the file");
    ZKFuzz::check(bytes2 == prefix, "the byte-path form delivers the file's first bytes");

    ZKStringW text(QStringLiteral("stale"));
    ZKFuzz::check(ZKDisk::readTextFileContent(scratch.pathW(), text, maxBytes),
                  "the wide-content form reads the file");
    ZKFuzz::check(text == QString::fromUtf8(prefix), "the wide-content form decodes UTF-8");
    return 0;
}
