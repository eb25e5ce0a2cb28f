#include "ZKDisk.h"

#include "internal/ZKFormat.h"

#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstring>

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

// Gives back the `count` bytes just read by seeking back over them; a stream
// that cannot seek (a pipe) gets them pushed back instead, last byte first,
// so that they are not lost.
void giveBackBytes(FILE* stream, const char* bytes, int count) {
    if (std::fseek(stream, -long(count), SEEK_CUR) == 0)
        return;
    for (int i = count - 1; i >= 0; --i)
        std::ungetc(static_cast<unsigned char>(bytes[i]), stream);
}

// After a CR that ended a chunk: reads the next byte and gives it back unless
// it is the LF of a CRLF.
void giveBackUnlessLineFeed(FILE* stream) {
    const int next = std::fgetc(stream);
    if (next != EOF && next != '\n') {
        const char byte = char(next);
        giveBackBytes(stream, &byte, 1);
    }
}

// Up to kSize - 1 bytes of a line, read with one fgets: the C library scans
// the stream's buffer for the LF instead of being called once a byte. One
// more scan of the chunk finds a CR. The result is the byte-at-a-time rule:
// a lone CR, CRLF and LF each end one line, and the bytes read past a lone CR
// go back to the stream, which then stands right after the CR.
class LineChunk {
public:
    static constexpr int kSize = 256;
    enum class End { LineEnd, Full, EndOfFile };

    // Reads the next piece of the line; count() is then the number of its
    // bytes that belong to the line (line ends excluded). Bytes read past a
    // lone CR go back to the stream.
    End read(FILE* stream) {
        // A non-zero fill makes the zero that ends what fgets wrote the last
        // zero of the chunk, so zero bytes inside a line are told apart.
        std::memset(m_bytes, 0xff, sizeof m_bytes);
        m_count = 0;
        if (!std::fgets(m_bytes, kSize, stream))
            return End::EndOfFile;
        int from = 0;
        for (;;) {
            // One scan finds the first CR or zero byte.
            const int k = from + int(std::strcspn(m_bytes + from, "\r"));
            if (m_bytes[k] == '\r') {
                m_count = k;
                giveBackAfterCr(stream, k);
                return End::LineEnd;
            }
            if (k > 0 && m_bytes[k - 1] == '\n') {
                m_count = k - 1;
                return End::LineEnd;
            }
            if (k == terminator()) {
                m_count = k;
                return k == kSize - 1 ? End::Full : End::EndOfFile;
            }
            from = k + 1; // a zero byte inside the line
        }
    }
    const char* bytes() const { return m_bytes; }
    int count() const { return m_count; }

private:
    int terminator() const {
        int t = kSize - 1;
        while (m_bytes[t] != 0)
            --t;
        return t;
    }

    // The byte after a CR is given back unless it is the LF of a CRLF; so
    // are the bytes fgets read after it, up to its LF or its end.
    void giveBackAfterCr(FILE* stream, int cr) {
        if (m_bytes[cr + 1] == '\n')
            return;
        const void* lf = std::memchr(m_bytes + cr + 1, '\n', size_t(kSize - cr - 1));
        const int end = lf ? int(static_cast<const char*>(lf) - m_bytes) + 1 : terminator();
        if (end > cr + 1)
            giveBackBytes(stream, m_bytes + cr + 1, end - cr - 1);
        else
            giveBackUnlessLineFeed(stream);
    }

    char m_bytes[kSize];
    int m_count = 0;
};

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

// True when every byte reached the file, the flush at closing included.
bool writeBytesAndClose(FILE* stream, const ZKStringC& bytes) {
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
    ZKStringW widePath;
    widePath.convertFrom(path);
    return readTextFileContent(widePath, content, maxBytes);
}

bool ZKDisk::readTextFileContent(const ZKStringW& path, ZKStringW& content, int maxBytes) {
    ZKStringC bytes;
    if (!readTextFileContent(path, bytes, maxBytes))
        return false;
    content.fromUtf8(bytes);
    return true;
}

bool ZKDisk::writeTextFileContent(const ZKStringC& path, const ZKStringC& content) {
    FILE* stream = std::fopen(path.constData(), "w");
    if (!stream)
        return false;
    return writeBytesAndClose(stream, content);
}

bool ZKDisk::writeTextFileContent(const ZKStringW& path, const ZKStringW& content) {
    return writeTextFileContent(path, content.toUtf8());
}

bool ZKDisk::writeTextFileContent(const ZKStringW& path, const ZKStringC& content) {
    FILE* stream = fopenUtf8(path, "w");
    if (!stream)
        return false;
    return writeBytesAndClose(stream, content);
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
    LineChunk chunk;
    // A line longer than any string ends there; the rest is read as the next
    // line.
    while (length <= kMaxStringBytes - LineChunk::kSize) {
        const LineChunk::End end = chunk.read(stream);
        const int n = chunk.count();
        if (n > 0) {
            line.resize(length + n);
            std::memcpy(line.data() + length, chunk.bytes(), size_t(n));
            length += n;
        }
        if (end == LineChunk::End::LineEnd)
            lineEnd = true;
        if (end != LineChunk::End::Full)
            break;
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
