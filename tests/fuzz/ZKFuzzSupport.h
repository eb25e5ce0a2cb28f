// ZKFuzzSupport.h: helpers shared by the libFuzzer targets of tests/fuzz.
//
// File-based readers get the fuzz input through a scratch file of their own
// process: created once in $TMPDIR (or /tmp) with a unique name, rewritten for
// every input and removed when the process exits, so that several fuzzers (or
// several jobs of one) never share a file. A target keeps its ScratchFile in a
// function-local static.
#pragma once

#include "ZKStringC.h"
#include "ZKStringW.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace ZKFuzz {

class ScratchFile {
public:
    explicit ScratchFile(const char* tag) {
        const char* dir = std::getenv("TMPDIR");
        std::string pattern = (dir && *dir) ? dir : "/tmp";
        pattern += "/zk_fuzz_";
        pattern += tag;
        pattern += "_XXXXXX";
        const int fd = mkstemp(pattern.data());
        if (fd < 0) {
            std::perror("mkstemp");
            std::abort();
        }
        ::close(fd);
        m_path = pattern;
    }
    ~ScratchFile() { ::unlink(m_path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return m_path; }
    ZKStringC pathC() const { return ZKStringC(QByteArray(m_path.c_str())); }
    ZKStringW pathW() const { return ZKStringW(QString::fromUtf8(m_path.c_str())); }

    // Replaces the file's content with the input; aborts when that fails, since
    // every later result would be meaningless.
    void write(const uint8_t* data, size_t size) const {
        FILE* f = std::fopen(m_path.c_str(), "wb");
        if (!f || (size && std::fwrite(data, 1, size, f) != size) || std::fclose(f) != 0) {
            std::perror(m_path.c_str());
            std::abort();
        }
    }

private:
    std::string m_path;
};

// Stops the run on a broken property so that libFuzzer records the input.
inline void check(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "fuzz property failed: %s\n", what);
        std::abort();
    }
}

// Reads every byte of a block, so that the sanitizers report one shorter than
// it claims to be.
inline void touchAll(const unsigned char* bytes, size_t count) {
    volatile unsigned sum = 0;
    for (size_t i = 0; i < count; ++i)
        sum = sum + bytes[i];
}

// The byte stream rule read one byte at a time: LF, CR and CR LF each end a
// line; the last line needs no line end; nothing left to read gives false.
inline bool nextByteLine(const uint8_t* data, size_t size, size_t& position, QByteArray& line) {
    line.clear();
    bool lineEnd = false;
    while (position < size) {
        const char c = char(data[position++]);
        if (c == '\n' || c == '\r') {
            if (c == '\r' && position < size && data[position] == '\n')
                ++position;
            lineEnd = true;
            break;
        }
        line.append(c);
    }
    return !line.isEmpty() || lineEnd;
}

} // namespace ZKFuzz
