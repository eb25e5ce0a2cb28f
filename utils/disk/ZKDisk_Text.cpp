#include "ZKDisk.h"

#include "ZKNativeStdio.h"
#include "ZKStringServer.h"
#include "internal/ZKFormat.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

FILE* fopenUtf8(const ZKStringW& path, const char* mode) {
    if (path.isEmpty())
        return ZKDisk::s_invalidFile;
    const ZKStringC utf8 = path.toUtf8();
    return std::fopen(utf8.constData(), mode);
}

namespace {

// Line buffers start with room for 100 units and double when full.
constexpr int kLineBufferStart = 100;
// The longest byte string Qt can allocate, with room for its header.
constexpr int kMaxStringBytes = INT_MAX - 64;
// C string buffers start with room for 20 bytes.
constexpr long long kCStringBufferStart = 20;

// Holds the stream's lock for a whole line or string, so that the loops run
// on the unlocked character reads instead of one locked call per byte.
class StreamLock {
public:
    explicit StreamLock(FILE* stream) : m_stream(stream) { flockfile(stream); }
    ~StreamLock() { funlockfile(m_stream); }
    StreamLock(const StreamLock&) = delete;
    StreamLock& operator=(const StreamLock&) = delete;

private:
    FILE* m_stream;
};

// The first CR or LF among `count` bytes, or `count` when there is none;
// sixteen bytes at a time where the processor allows.
size_t findLineEnd(const char* bytes, size_t count) {
#if defined(__SSE2__)
    if (count >= 16) {
        const __m128i lf = _mm_set1_epi8('\n');
        const __m128i cr = _mm_set1_epi8('\r');
        const auto endIn = [&](size_t at) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
            return unsigned(_mm_movemask_epi8(
                _mm_or_si128(_mm_cmpeq_epi8(block, lf), _mm_cmpeq_epi8(block, cr))));
        };
        size_t i = 0;
        for (; i + 16 <= count; i += 16) {
            if (const unsigned mask = endIn(i))
                return i + size_t(__builtin_ctz(mask));
        }
        // The last block overlaps bytes already looked at instead of reading
        // past the end.
        if (i < count) {
            if (const unsigned mask = endIn(count - 16))
                return count - 16 + size_t(__builtin_ctz(mask));
        }
        return count;
    }
#endif
    for (size_t i = 0; i < count; ++i) {
        if (bytes[i] == '\n' || bytes[i] == '\r')
            return i;
    }
    return count;
}

// After a CR that ended a line: takes the next byte too when it is the LF of
// a CRLF, and leaves any other byte to the stream. The caller holds the lock.
void skipLineFeedAfterCr(FILE* stream) {
    const char* buffered = nullptr;
    if (ZKNative::bufferedBytes(stream, buffered) > 0) {
        if (*buffered == '\n')
            ZKNative::consumeBuffered(stream, 1);
        return;
    }
    const int next = getc_unlocked(stream);
    if (next != EOF && next != '\n')
        std::ungetc(next, stream);
}

// Reads one 32-bit unit in the machine's byte order; false at end of file
// or on a read error (a partial unit at the end counts as the end).
bool readUnit32(FILE* stream, std::uint32_t& unit) {
    unsigned char bytes[4];
    for (unsigned char& b : bytes) {
        const int c = getc_unlocked(stream);
        if (c == EOF)
            return false;
        b = static_cast<unsigned char>(c);
    }
    std::memcpy(&unit, bytes, sizeof unit);
    return true;
}

// True when every byte reached the file, the flush at closing included;
// false for a stream that could not be opened.
bool writeBytesAndClose(FILE* stream, const ZKStringC& bytes) {
    if (!stream)
        return false;
    const size_t size = size_t(bytes.size());
    const size_t written = size > 0 ? std::fwrite(bytes.constData(), 1, size, stream) : 0;
    const bool closed = std::fclose(stream) == 0;
    return written == size && closed;
}

// fprintf(stream, format) with no argument, written so that the format
// needs no literal.
void printWithoutArguments(FILE* stream, const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vfprintf(stream, format, args);
    va_end(args);
}

bool appendText(FILE* stream, const ZKStringC& text) {
    if (!stream)
        return false;
    // Kept: `text` is used as the format itself, so the output of the
    // formatting forms is formatted a second time.
    printWithoutArguments(stream, text.constData());
    std::fclose(stream);
    // Kept: true whatever the write did.
    return true;
}

} // namespace

bool ZKDisk::readTextFileContent(const ZKStringW& path, ZKStringC& content, int maxBytes) {
    FILE* stream = fopenUtf8(path, "rb");
    if (!stream) {
        content.clear();
        return false;
    }
    long size = -1;
    if (std::fseek(stream, 0, SEEK_END) == 0)
        size = std::ftell(stream);
    std::fseek(stream, 0, SEEK_SET);
    const long long count = (maxBytes >= 0 && size > maxBytes) ? maxBytes : size;
    // A size the stream cannot tell, or more than a string can hold, fails
    // like an unreadable file instead of attempting the allocation.
    if (size < 0 || count > kMaxStringBytes) {
        std::fclose(stream);
        content.clear();
        return false;
    }
    content.resize(int(count)); // QByteArray keeps a zero byte after the data
    const size_t read = count > 0 ? std::fread(content.data(), 1, size_t(count), stream) : 0;
    content.resize(int(read));
    std::fclose(stream);
    return read == size_t(count);
}

bool ZKDisk::readTextFileContent(const ZKStringC& path, ZKStringC& content, int maxBytes) {
    return readTextFileContent(ZKStringServer::fromNonUnicode(path), content, maxBytes);
}

bool ZKDisk::readTextFileContent(const ZKStringW& path, ZKStringW& content, int maxBytes) {
    ZKStringC bytes;
    if (!readTextFileContent(path, bytes, maxBytes))
        return false;
    content.fromUtf8(bytes);
    return true;
}

bool ZKDisk::writeTextFileContent(const ZKStringC& path, const ZKStringC& content) {
    return writeBytesAndClose(std::fopen(path.constData(), "w"), content);
}

bool ZKDisk::writeTextFileContent(const ZKStringW& path, const ZKStringW& content) {
    return writeTextFileContent(path, content.toUtf8());
}

bool ZKDisk::writeTextFileContent(const ZKStringW& path, const ZKStringC& content) {
    return writeBytesAndClose(fopenUtf8(path, "w"), content);
}

bool ZKDisk::addTextToFile(const ZKStringC& path, const char* format, ...) {
    va_list args;
    va_start(args, format);
    const ZKStringC text = ZKInternal::vformat4096(format, args);
    va_end(args);
    return addTextToFile(path, text);
}

bool ZKDisk::addTextToFile(const ZKStringC& path, const ZKStringC& text) {
    return appendText(std::fopen(path.constData(), "a"), text);
}

bool ZKDisk::addTextToFile(const ZKStringW& path, const char* format, ...) {
    va_list args;
    va_start(args, format);
    const ZKStringC text = ZKInternal::vformat4096(format, args);
    va_end(args);
    return addTextToFile(path, text);
}

bool ZKDisk::addTextToFile(const ZKStringW& path, const ZKStringC& text) {
    return appendText(fopenUtf8(path, "a"), text);
}

bool ZKDisk::readTextLine(FILE* stream, ZKStringC& line) {
    if (!stream)
        return false;
    // The line is built in `line`'s own storage: every outcome below replaces
    // its content, and reusing the caller's buffer saves an allocation a line.
    // Reserving keeps that storage when a line is shorter than the last one.
    if (line.capacity() < kLineBufferStart)
        line.reserve(kLineBufferStart);
    int length = 0;
    bool lineEnd = false;
    {
        // The rule is the byte-at-a-time one (a lone CR, CRLF and LF each end
        // one line), applied to the stream's buffer in place: one scan finds
        // the line end, one copy takes the bytes before it.
        StreamLock lock(stream);
        // A line longer than any string ends there; the rest is read as the
        // next line.
        while (length < kMaxStringBytes) {
            const char* bytes = nullptr;
            size_t available = ZKNative::bufferedBytes(stream, bytes);
            const bool buffered = available > 0;
            char single = 0;
            if (!buffered) {
                const int c = getc_unlocked(stream); // refills the buffer
                if (c == EOF)
                    break;
                single = char(c);
                bytes = &single;
                available = 1;
            }
            const size_t scanned = std::min(available, size_t(kMaxStringBytes - length));
            const size_t end = findLineEnd(bytes, scanned);
            if (end > 0) {
                line.resize(length + int(end));
                std::memcpy(line.data() + length, bytes, end);
                length += int(end);
            }
            if (end == scanned) {
                if (buffered)
                    ZKNative::consumeBuffered(stream, scanned);
                continue;
            }
            const char endByte = bytes[end];
            if (buffered)
                ZKNative::consumeBuffered(stream, end + 1);
            if (endByte == '\r')
                skipLineFeedAfterCr(stream);
            lineEnd = true;
            break;
        }
    }
    if (length == 0) {
        line.clear();
        return lineEnd;
    }
    return true;
}

bool ZKDisk::readTextLine(FILE* stream, ZKStringW& line) {
    if (!stream)
        return false;
    ZKArray<std::uint32_t> units;
    units.reserve(kLineBufferStart);
    bool lineEnd = false;
    {
        StreamLock lock(stream);
        std::uint32_t unit = 0;
        while (readUnit32(stream, unit)) {
            if (unit == 10 || unit == 13) {
                lineEnd = true;
                break;
            }
            units.push_back(unit);
        }
    }
    if (units.empty()) {
        line.clear();
        return lineEnd;
    }
    // Kept: the buffer of 32-bit units is read back as 16-bit units, as many
    // as units were read, from its start.
    const int count = int(units.size());
    line.resize(count);
    std::memcpy(static_cast<void*>(line.data()), units.data(), size_t(count) * sizeof(QChar));
    return lineEnd;
}

bool ZKDisk::readTextLine(const ZKStringC& content, int& position, ZKStringC& line) {
    const int size = content.size();
    if (position < 0 || position >= size)
        return false;
    const char* data = content.constData();
    const void* found = std::memchr(data + position, '\n', size_t(size - position));
    const int end = found ? int(static_cast<const char*>(found) - data) : size;
    ZKStringC buffer;
    buffer.reserve(end - position);
    for (int i = position; i < end; ++i) {
        // Kept: a CR is dropped wherever it stands, not only before LF.
        if (data[i] != '\r')
            buffer.append(data[i]);
    }
    position = found ? end + 1 : end;
    if (buffer.isEmpty()) {
        if (!found)
            return false;
        line.clear();
        return true;
    }
    line = buffer;
    return true;
}

bool ZKDisk::readTextLine(const ZKStringW& content, int& position, ZKStringW& line) {
    const int size = content.size();
    if (position < 0 || position >= size)
        return false;
    const QChar* data = content.constData();
    int end = position;
    while (end < size && data[end] != QLatin1Char('\n') && data[end] != QLatin1Char('\r'))
        ++end;
    const bool found = end < size;
    const int length = end - position;
    if (length == 0 && !found) {
        position = end;
        return false;
    }
    if (length == 0)
        line.clear();
    else
        line = content.mid(position, length);
    position = found ? end + 1 : end;
    return true;
}

bool ZKDisk::writeTextLine(FILE* stream, const ZKStringC& line, bool addNewLine) {
    if (!stream)
        return false;
    if (!line.isEmpty())
        std::fwrite(line.constData(), 1, size_t(line.size()), stream);
    if (addNewLine)
        std::fputc('\n', stream);
    // Kept: the write results are not looked at.
    return true;
}

bool ZKDisk::writeTextLine(FILE* stream, const ZKStringW& line, bool addNewLine) {
    if (!stream)
        return false;
    // Kept: 16-bit units in the machine's order, although the wide stream
    // reader expects 32-bit units.
    if (!line.isEmpty())
        std::fwrite(line.constData(), sizeof(QChar), size_t(line.size()), stream);
    if (addNewLine) {
        const std::uint16_t newLine = 10;
        std::fwrite(&newLine, sizeof newLine, 1, stream);
    }
    return true;
}

bool ZKDisk::readCString(FILE* stream, ZKStringC& text, ZKArray<char>* scratch) {
    if (!stream)
        return false;
    ZKArray<char> local;
    ZKArray<char>& buffer = scratch ? *scratch : local;
    buffer.clear();
    if (buffer.capacity() < kCStringBufferStart)
        buffer.reserve(kCStringBufferStart);
    {
        StreamLock lock(stream);
        for (;;) {
            const int c = getc_unlocked(stream);
            if (c == EOF || c == 0)
                break;
            if (buffer.size() == kMaxStringBytes)
                break; // the rest is read as the next string
            buffer.push_back(char(c));
        }
    }
    text = ZKStringC(buffer.data(), int(buffer.size()));
    return true;
}

bool ZKDisk::writeCString(FILE* stream, const ZKStringC& text) {
    if (!stream)
        return false;
    // constData() always ends with the zero byte.
    return std::fwrite(text.constData(), 1, size_t(text.size()) + 1, stream) > 0;
}
