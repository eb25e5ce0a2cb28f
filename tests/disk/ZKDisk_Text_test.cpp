#include "ZKDisk.h"
#include "ZKTestSupport.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstring>
#include <random>
#include <unistd.h>
#include <vector>

namespace {

// A stream over `bytes`, read back through a temporary file.
class ByteStream {
public:
    // A `bufferSize` of 0 leaves the C library's buffering alone; -1 makes
    // the stream unbuffered.
    explicit ByteStream(const QByteArray& bytes, int bufferSize = 0) {
        const QString path = m_dir.filePath("stream.bin");
        if (m_dir.isValid() && zkWriteFile(path, bytes))
            m_file = std::fopen(QFile::encodeName(path).constData(), "rb");
        if (m_file && bufferSize != 0)
            std::setvbuf(m_file, nullptr, bufferSize < 0 ? _IONBF : _IOFBF,
                         bufferSize < 0 ? 0 : size_t(bufferSize));
    }
    ~ByteStream() {
        if (m_file)
            std::fclose(m_file);
    }
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;
    FILE* get() const { return m_file; }

private:
    QTemporaryDir m_dir;
    FILE* m_file = nullptr;
};

QByteArray units32(std::initializer_list<std::uint32_t> units) {
    QByteArray bytes;
    for (const std::uint32_t u : units)
        bytes.append(reinterpret_cast<const char*>(&u), sizeof u);
    return bytes;
}

// The line rule read one byte at a time: LF, CRLF and a lone CR each end one
// line; the last line needs no line end.
std::vector<QByteArray> modelLines(const QByteArray& bytes) {
    std::vector<QByteArray> lines;
    int i = 0;
    for (;;) {
        QByteArray line;
        bool lineEnd = false;
        while (i < bytes.size()) {
            const char c = bytes[i++];
            if (c == '\n' || c == '\r') {
                lineEnd = true;
                if (c == '\r' && i < bytes.size() && bytes[i] == '\n')
                    ++i;
                break;
            }
            line.append(c);
        }
        if (line.isEmpty() && !lineEnd)
            return lines;
        lines.push_back(line);
    }
}

// Every line left in the stream, each followed by '|'.
QByteArray drainStream(FILE* stream) {
    QByteArray all;
    ZKStringC line;
    while (ZKDisk::readTextLine(stream, line))
        all += line + "|";
    return all;
}

// Every line left in `content` from `position`, each followed by '|'.
template <class S> S drainMemory(const S& content, int& position, S& line) {
    S all;
    while (ZKDisk::readTextLine(content, position, line))
        all += line + "|";
    return all;
}

} // namespace

TEST(ZKDiskText, FopenUtf8OpensNonAsciiPathsAndRefusesEmptyOnes) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const ZKStringW path = dir.filePath(QString::fromUtf8("d\xc3\xa9j\xc3\xa0 \xe2\x82\xac.txt"));
    FILE* f = fopenUtf8(path, "w");
    ASSERT_NE(f, ZKDisk::s_invalidFile);
    std::fputs("ok", f);
    std::fclose(f);
    EXPECT_EQ(zkReadFile(path), QByteArray("ok"));
    // The name on disk is the UTF-8 encoding of the wide name.
    EXPECT_EQ(
        access((QFile::encodeName(dir.path()) + "/d\xc3\xa9j\xc3\xa0 \xe2\x82\xac.txt").constData(),
               F_OK),
        0);

    EXPECT_EQ(fopenUtf8(ZKStringW(), "rb"), ZKDisk::s_invalidFile);
    EXPECT_EQ(fopenUtf8(ZKStringW(""), "w"), ZKDisk::s_invalidFile);
    EXPECT_EQ(fopenUtf8(ZKStringW(dir.filePath("missing.txt")), "rb"), ZKDisk::s_invalidFile);
}

TEST(ZKDiskText, ReadTextFileContentHonoursMaxBytesAndReportsMissingFiles) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const ZKStringW path = dir.filePath(QString::fromUtf8("t\xc3\xa9n.txt"));
    ASSERT_TRUE(zkWriteFile(path, QByteArray("0123\0"
                                             "56789",
                                             10)));
    ZKStringC content;
    EXPECT_TRUE(ZKDisk::readTextFileContent(path, content, 4));
    EXPECT_EQ(content, "0123");
    EXPECT_TRUE(ZKDisk::readTextFileContent(path, content, -1));
    EXPECT_EQ(content, ZKStringC(QByteArray("0123\0"
                                            "56789",
                                            10)));
    EXPECT_TRUE(ZKDisk::readTextFileContent(path, content, 0));
    EXPECT_EQ(content, "");
    // A byte path is decoded as UTF-8 before opening.
    EXPECT_TRUE(ZKDisk::readTextFileContent(path.toUtf8(), content, 2));
    EXPECT_EQ(content, "01");

    for (const ZKStringW& bad : {ZKStringW(dir.filePath("missing")), ZKStringW()}) {
        content = "stale";
        EXPECT_FALSE(ZKDisk::readTextFileContent(bad, content, -1));
        EXPECT_TRUE(content.isEmpty());
    }
    content = "stale";
    EXPECT_FALSE(ZKDisk::readTextFileContent(ZKStringC(), content, -1));
    EXPECT_TRUE(content.isEmpty());

    // Wide content is the UTF-8 decoding, set only on success.
    const ZKStringW utf8Path = dir.filePath("utf8.txt");
    ASSERT_TRUE(zkWriteFile(utf8Path, "caf\xc3\xa9\n\xe2\x82\xac"));
    ZKStringW text("untouched");
    EXPECT_TRUE(ZKDisk::readTextFileContent(utf8Path, text, -1));
    EXPECT_EQ(text, QString::fromUtf8("caf\xc3\xa9\n\xe2\x82\xac"));
    text = "untouched";
    EXPECT_FALSE(ZKDisk::readTextFileContent(ZKStringW(dir.filePath("missing")), text, -1));
    EXPECT_EQ(text, "untouched");

    // A folder opens but cannot be read: a short read, false.
    EXPECT_FALSE(ZKDisk::readTextFileContent(ZKStringW(dir.path()), content, -1));
    EXPECT_TRUE(content.isEmpty());
}

TEST(ZKDiskText, WriteTextFileContentTruncatesAndWritesUtf8ForWideText) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath("w.txt");
    EXPECT_TRUE(ZKDisk::writeTextFileContent(ZKStringC(QFile::encodeName(path)),
                                             ZKStringC("first line\nsecond")));
    EXPECT_EQ(zkReadFile(path), QByteArray("first line\nsecond"));
    EXPECT_TRUE(ZKDisk::writeTextFileContent(ZKStringW(path), ZKStringC("ab\r\n")));
    EXPECT_EQ(zkReadFile(path), QByteArray("ab\r\n")); // no line-end conversion
    EXPECT_TRUE(ZKDisk::writeTextFileContent(ZKStringW(path),
                                             ZKStringW(QString::fromUtf8("\xc3\xa9\xe2\x82\xac"))));
    EXPECT_EQ(zkReadFile(path), QByteArray("\xc3\xa9\xe2\x82\xac"));
    EXPECT_TRUE(ZKDisk::writeTextFileContent(ZKStringW(path), ZKStringC()));
    EXPECT_EQ(zkReadFile(path), QByteArray(""));
    EXPECT_FALSE(
        ZKDisk::writeTextFileContent(ZKStringW(dir.filePath("no/such.txt")), ZKStringC("x")));
    EXPECT_FALSE(ZKDisk::writeTextFileContent(ZKStringW(), ZKStringW("x")));
    EXPECT_FALSE(ZKDisk::writeTextFileContent(ZKStringC(""), ZKStringC("x")));
}

TEST(ZKDiskText, AddTextToFileFormatsTheTextASecondTime) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QString::fromUtf8("\xc3\xa0jout.log"));
    const ZKStringC bytePath = QFile::encodeName(path);
    // Kept: the plain text is a format, so "%%" writes one percent sign.
    EXPECT_TRUE(ZKDisk::addTextToFile(bytePath, ZKStringC("100%%\n")));
    EXPECT_EQ(zkReadFile(path), QByteArray("100%\n"));
    // Kept: the formatting forms format twice, so an argument's "%%" and a
    // format's "%%%%" each reach the file as one percent sign.
    EXPECT_TRUE(ZKDisk::addTextToFile(bytePath, "%s=%d%%%%", "50%%", 7));
    EXPECT_EQ(zkReadFile(path), QByteArray("100%\n50%=7%"));
    EXPECT_TRUE(ZKDisk::addTextToFile(ZKStringW(path), ZKStringC(";w")));
    EXPECT_TRUE(ZKDisk::addTextToFile(ZKStringW(path), "%c%s", 'x', "y"));
    EXPECT_EQ(zkReadFile(path), QByteArray("100%\n50%=7%;wxy"));

    EXPECT_FALSE(ZKDisk::addTextToFile(ZKStringW(dir.filePath("no/such.log")), ZKStringC("x")));
    EXPECT_FALSE(ZKDisk::addTextToFile(ZKStringW(), "%d", 1));
    EXPECT_FALSE(ZKDisk::addTextToFile(ZKStringC(""), ZKStringC("x")));
}

TEST(ZKDiskText, ByteStreamLinesEndAtCrCrlfAndLf) {
    ZKStringC line("untouched");
    EXPECT_FALSE(ZKDisk::readTextLine(ZKDisk::s_invalidFile, line));
    EXPECT_EQ(line, "untouched");

    ByteStream mixed(QByteArray("a\r\nb\rc\n"));
    ASSERT_NE(mixed.get(), nullptr);
    EXPECT_TRUE(ZKDisk::readTextLine(mixed.get(), line));
    EXPECT_EQ(line, "a");
    EXPECT_TRUE(ZKDisk::readTextLine(mixed.get(), line));
    EXPECT_EQ(line, "b");
    // The byte after a lone CR was given back: the stream stands right after the CR.
    EXPECT_EQ(std::ftell(mixed.get()), 5);
    EXPECT_TRUE(ZKDisk::readTextLine(mixed.get(), line));
    EXPECT_EQ(line, "c");
    EXPECT_FALSE(ZKDisk::readTextLine(mixed.get(), line));
    EXPECT_TRUE(line.isEmpty());

    // A file of only line ends gives one empty line per end.
    ByteStream ends(QByteArray("\n\n\r\n\r"));
    EXPECT_EQ(drainStream(ends.get()), "||||");

    ByteStream empty(QByteArray(""));
    line = "stale";
    EXPECT_FALSE(ZKDisk::readTextLine(empty.get(), line));
    EXPECT_TRUE(line.isEmpty());
}

TEST(ZKDiskText, ByteStreamLinesGrowAndNeverTouchSharedCopies) {
    const QByteArray longLine(1000, 'x');
    ByteStream stream(longLine + "\r" + QByteArray(250, 'y') + "\nz");
    ZKStringC line("previous");
    const ZKStringC copy = line;
    EXPECT_TRUE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_EQ(line, ZKStringC(longLine));
    EXPECT_EQ(copy, "previous");
    const ZKStringC kept = line;
    EXPECT_TRUE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_EQ(line, ZKStringC(QByteArray(250, 'y')));
    EXPECT_EQ(kept, ZKStringC(longLine));
    ZKStringC literal(QByteArrayLiteral("read-only"));
    EXPECT_TRUE(ZKDisk::readTextLine(stream.get(), literal));
    EXPECT_EQ(literal, "z");
}

TEST(ZKDiskText, ByteStreamGivesBackTheByteAfterACrOnAPipe) {
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    ASSERT_EQ(write(fds[1], "a\rb\r", 4), 4);
    close(fds[1]);
    FILE* stream = fdopen(fds[0], "rb");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(drainStream(stream), "a|b|");
    std::fclose(stream);
}

TEST(ZKDiskText, WideStreamLinesReadThirtyTwoBitUnitsAsSixteenBitOnes) {
    if (Q_BYTE_ORDER != Q_LITTLE_ENDIAN)
        GTEST_SKIP() << "expected units are written for little-endian machines";
    ZKStringW line("untouched");
    EXPECT_FALSE(ZKDisk::readTextLine(ZKDisk::s_invalidFile, line));
    EXPECT_EQ(line, "untouched");

    ByteStream stream(units32({'A', 'B', 13, 10, 'C'}));
    // Kept: two 32-bit units read back as the first two 16-bit units of their
    // buffer, "A" and the zero high half of 'A'.
    EXPECT_TRUE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_EQ(line, QString(QChar('A')) + QChar(0));
    // CR and LF are not paired.
    EXPECT_TRUE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_TRUE(line.isEmpty());
    // The last line comes with false: the file ended before a line end.
    EXPECT_FALSE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_EQ(line, "C");
    EXPECT_FALSE(ZKDisk::readTextLine(stream.get(), line));
    EXPECT_TRUE(line.isEmpty());

    // Kept: the wide writer's 16-bit units do not read back with the wide
    // reader: "hi\n" holds one whole 32-bit unit and half of another.
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const ZKStringW path = dir.filePath("wide.txt");
    FILE* out = fopenUtf8(path, "wb");
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(ZKDisk::writeTextLine(out, ZKStringW("hi"), true));
    std::fclose(out);
    EXPECT_EQ(zkReadFile(path), QByteArray("h\0i\0\n\0", 6));
    FILE* in = fopenUtf8(path, "rb");
    ASSERT_NE(in, nullptr);
    EXPECT_FALSE(ZKDisk::readTextLine(in, line));
    EXPECT_EQ(line, "h");
    std::fclose(in);
}

TEST(ZKDiskText, InMemoryByteLinesDropEveryCr) {
    const ZKStringC content("a\r\nb\rc\n");
    int position = 0;
    ZKStringC line;
    EXPECT_TRUE(ZKDisk::readTextLine(content, position, line));
    EXPECT_EQ(line, "a");
    EXPECT_EQ(position, 3);
    EXPECT_EQ(drainMemory(content, position, line), "bc|");
    EXPECT_EQ(position, 7);
    EXPECT_EQ(line, "bc");
    position = 0;
    EXPECT_EQ(drainMemory(ZKStringC("\n\nlast"), position, line), "||last|");
    EXPECT_EQ(position, 6);

    // Only CRs left: nothing to return, `line` untouched.
    const ZKStringC crs("x\n\r\r");
    position = 2;
    line = "kept";
    EXPECT_FALSE(ZKDisk::readTextLine(crs, position, line));
    EXPECT_EQ(line, "kept");
    EXPECT_EQ(position, 4);
    // Positions outside the content read nothing.
    position = 9;
    EXPECT_FALSE(ZKDisk::readTextLine(crs, position, line));
    position = -1;
    EXPECT_FALSE(ZKDisk::readTextLine(crs, position, line));
    EXPECT_EQ(line, "kept");
    position = 0;
    EXPECT_FALSE(ZKDisk::readTextLine(ZKStringC(), position, line));
}

TEST(ZKDiskText, InMemoryWideLinesEndAtCrAndAtLf) {
    const ZKStringW content(QString::fromUtf8("\xc3\xa9\r\nb\rc"));
    int position = 0;
    ZKStringW line;
    EXPECT_EQ(drainMemory(content, position, line), QString::fromUtf8("\xc3\xa9||b|c|"));
    EXPECT_EQ(position, content.size());
    EXPECT_EQ(line, "c");
    position = 42;
    EXPECT_FALSE(ZKDisk::readTextLine(content, position, line));
}

TEST(ZKDiskText, WriteTextLineAndCStringsRoundTrip) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const ZKStringW path = dir.filePath("lines.bin");
    EXPECT_FALSE(ZKDisk::writeTextLine(ZKDisk::s_invalidFile, ZKStringC("x"), true));
    EXPECT_FALSE(ZKDisk::writeTextLine(ZKDisk::s_invalidFile, ZKStringW("x"), true));
    EXPECT_FALSE(ZKDisk::writeCString(ZKDisk::s_invalidFile, ZKStringC("x")));
    FILE* out = fopenUtf8(path, "wb");
    ASSERT_NE(out, nullptr);
    EXPECT_TRUE(ZKDisk::writeTextLine(out, ZKStringC("ab"), true));
    EXPECT_TRUE(ZKDisk::writeTextLine(out, ZKStringC("c"), false));
    EXPECT_TRUE(ZKDisk::writeTextLine(out, ZKStringW(QString::fromUtf8("\xc3\xa9")), false));
    EXPECT_TRUE(ZKDisk::writeCString(out, ZKStringC("xy")));
    EXPECT_TRUE(ZKDisk::writeCString(out, ZKStringC()));
    EXPECT_TRUE(ZKDisk::writeCString(out, ZKStringC("z")));
    std::fclose(out);
    const QByteArray e9 =
        Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? QByteArray("\xe9\0", 2) : QByteArray("\0\xe9", 2);
    EXPECT_EQ(zkReadFile(path), QByteArray("ab\nc") + e9 + QByteArray("xy\0\0z\0", 6));

    FILE* in = fopenUtf8(path, "rb");
    ASSERT_NE(in, nullptr);
    ASSERT_EQ(std::fseek(in, 6, SEEK_SET), 0);
    ZKArray<char> scratch;
    scratch.push_back('!');
    ZKStringC text("stale");
    EXPECT_TRUE(ZKDisk::readCString(in, text, &scratch));
    EXPECT_EQ(text, "xy");
    EXPECT_TRUE(ZKDisk::readCString(in, text, &scratch));
    EXPECT_EQ(text, "");
    EXPECT_TRUE(ZKDisk::readCString(in, text, nullptr));
    EXPECT_EQ(text, "z");
    // At the end of the file: an empty text, still true.
    EXPECT_TRUE(ZKDisk::readCString(in, text, &scratch));
    EXPECT_EQ(text, "");
    std::fclose(in);
    text = "untouched";
    EXPECT_FALSE(ZKDisk::readCString(ZKDisk::s_invalidFile, text, &scratch));
    EXPECT_EQ(text, "untouched");

    // A last string without its zero byte ends at the end of the file.
    ByteStream unterminated(QByteArray("tail"));
    EXPECT_TRUE(ZKDisk::readCString(unterminated.get(), text, nullptr));
    EXPECT_EQ(text, "tail");
}

TEST(ZKDiskText, ByteStreamLinesMatchTheByteAtATimeRuleAroundBufferEdges) {
    // Lines of many lengths with every kind of line end and zero bytes,
    // read through stream buffers of several sizes so that line ends, CRLF
    // pairs and the reader's 16-byte scan blocks fall across buffer edges,
    // against the simple rule.
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> length(0, 600);
    std::uniform_int_distribution<int> pick(0, 39);
    const int bufferSizes[] = {-1, 1, 2, 15, 16, 17, 64, 0};
    for (int round = 0; round < 16; ++round) {
        QByteArray bytes;
        for (int line = 0; line < 30; ++line) {
            // Every third line is plain text, so that it ends on a block edge.
            const bool plain = line % 3 == 0;
            const int n = plain ? 16 * (line % 5) + line % 2 : length(random);
            for (int i = 0; i < n; ++i) {
                const int p = plain ? 3 + i % 26 : pick(random);
                bytes.append(p == 0 ? '\0' : p == 1 ? '\r' : p == 2 ? '\n' : char('a' + p % 26));
            }
            const int end = pick(random) % 4;
            bytes.append(end == 0 ? "\n" : end == 1 ? "\r\n" : end == 2 ? "\r" : "\n\r");
        }
        if (round % 2 == 1)
            bytes.append("no end");
        const auto expected = modelLines(bytes);
        const int bufferSize = bufferSizes[(round / 2) % 8];
        ByteStream stream(bytes, bufferSize);
        ASSERT_NE(stream.get(), nullptr);
        ZKStringC line;
        size_t count = 0;
        while (ZKDisk::readTextLine(stream.get(), line)) {
            ASSERT_LT(count, expected.size()) << "buffer " << bufferSize;
            ASSERT_EQ(QByteArray(line), expected[count])
                << "buffer " << bufferSize << ", line " << count;
            ++count;
        }
        EXPECT_EQ(count, expected.size()) << "buffer " << bufferSize;
        EXPECT_TRUE(line.isEmpty());
    }
}
