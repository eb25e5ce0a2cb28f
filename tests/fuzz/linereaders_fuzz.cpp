// Fuzzes the ZKDisk line readers: the input is read to its end as a byte
// stream, a stream of 32-bit units, a C-string stream, and in memory as bytes
// and as UTF-16 units. Every reader must end, and every line it delivers must
// be free of line ends. The byte stream reader, which scans the stream's
// buffer in place, must split exactly as the byte-at-a-time rule does,
// whatever the size of that buffer.
#include "ZKFuzzSupport.h"

#include "ZKDisk.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

struct Stream {
    explicit Stream(const ZKFuzz::ScratchFile& file) : f(std::fopen(file.path().c_str(), "rb")) {
        ZKFuzz::check(f != nullptr, "the scratch file opens");
    }
    ~Stream() { std::fclose(f); }
    FILE* f;
};

template <typename S> bool hasLineEnd(const S& line) {
    return line.contains('\n') || line.contains('\r');
}

// Reads `content` line by line from its start to its end.
template <typename Str> void readInMemory(const Str& content, long long bound) {
    Str line;
    int position = 0;
    long long calls = 0;
    for (;;) {
        const int before = position;
        if (!ZKDisk::readTextLine(content, position, line))
            break;
        ZKFuzz::check(position > before && position <= content.size(),
                      "the in-memory reader moves forward within the content");
        ZKFuzz::check(!hasLineEnd(line), "in-memory lines hold no line end");
        ZKFuzz::check(++calls <= bound, "the in-memory reader ends");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile scratch("linereaders");
    scratch.write(data, size);
    const long long bound = (long long)size + 1; // every line but the last consumes a byte

    {
        Stream s(scratch);
        // Small buffers put line ends and CRLF pairs across buffer edges.
        static const size_t kBufferSizes[] = {0, 1, 2, 3, 16, 17};
        const size_t bufferSize = kBufferSizes[size % 6];
        if (bufferSize > 0)
            std::setvbuf(s.f, nullptr, _IOFBF, bufferSize);
        ZKStringC line;
        size_t modelPosition = 0;
        QByteArray modelLine;
        long long calls = 0;
        for (;;) {
            const bool read = ZKDisk::readTextLine(s.f, line);
            const bool modelRead = ZKFuzz::nextByteLine(data, size, modelPosition, modelLine);
            ZKFuzz::check(read == modelRead, "the byte stream reader ends where bytes run out");
            if (!read)
                break;
            ZKFuzz::check(line == modelLine, "the byte stream reader splits as byte by byte");
            ZKFuzz::check(++calls <= bound, "the byte stream reader ends");
        }
    }
    {
        Stream s(scratch);
        ZKStringW line;
        long long calls = 0;
        while (ZKDisk::readTextLine(s.f, line))
            ZKFuzz::check(++calls <= bound / 4 + 1, "the wide stream reader ends");
    }
    {
        Stream s(scratch);
        ZKStringC text;
        ZKArray<char> buffer;
        size_t modelPosition = 0;
        long long calls = 0;
        while (std::ftell(s.f) < (long)size) {
            ZKFuzz::check(ZKDisk::readCString(s.f, text, (calls & 1) ? &buffer : nullptr),
                          "C strings read from an open stream");
            const uint8_t* zero = static_cast<const uint8_t*>(
                std::memchr(data + modelPosition, 0, size - modelPosition));
            const size_t end = zero ? size_t(zero - data) : size;
            ZKFuzz::check(text == QByteArray(reinterpret_cast<const char*>(data) + modelPosition,
                                             int(end - modelPosition)),
                          "C strings end at a zero byte");
            modelPosition = zero ? end + 1 : end;
            ZKFuzz::check(++calls <= bound, "the C string reader ends");
        }
    }
    readInMemory(ZKStringC(QByteArray(reinterpret_cast<const char*>(data), int(size))), bound);
    readInMemory(
        ZKStringW(QString(reinterpret_cast<const QChar*>(data), int(size / sizeof(QChar)))), bound);
    return 0;
}
