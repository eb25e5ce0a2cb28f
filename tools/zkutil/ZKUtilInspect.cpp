// zkutil blocs, zkutil tv: inspectors for the binary and token-value files.
#include "ZKUtilCommon.h"

#include <ZKUtils/ZKUtils.h>

#include <QFileInfo>

#include <cstdio>
#include <vector>

namespace zkutil {

namespace {

struct BlocEntry {
    long long offset;
    int depth;
    unsigned int id;
    unsigned int size;
};

// Deeper nesting is shown as opaque content: a crafted file must not exhaust
// the stack.
constexpr int kMaxDepth = 64;

QByteArray idAsChars(unsigned int id) {
    // Ids are usually four-character constants such as 'DOCU': most significant byte first.
    QByteArray chars;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const unsigned char c = static_cast<unsigned char>(id >> shift);
        if (c < 0x20 || c > 0x7e)
            return QByteArrayLiteral("-");
        chars.append(char(c));
    }
    return chars;
}

bool readHeaderAt(ZKBinaryFile& file, long long offset, ZKBinFileBlocHeader& header) {
    return fseeko(file.getFile(), offset, SEEK_SET) == 0 && file.readBlocHeader(header);
}

// True when [start, end) is made exactly of blocs; their entries (and those of
// the blocs they contain in turn) are appended to out.
bool tileWithBlocs(ZKBinaryFile& file, long long start, long long end, int depth,
                   std::vector<BlocEntry>& out) {
    if (depth > kMaxDepth)
        return false;
    std::vector<BlocEntry> found;
    for (long long pos = start; pos < end;) {
        ZKBinFileBlocHeader header;
        if (end - pos < 8 || !readHeaderAt(file, pos, header) || header.size < 8 ||
            pos + header.size > end)
            return false;
        found.push_back({pos, depth, header.id, header.size});
        if (header.size > 8)
            tileWithBlocs(file, pos + 8, pos + header.size, depth + 1, found);
        pos += header.size;
    }
    out.insert(out.end(), found.begin(), found.end());
    return true;
}

void printEntry(const BlocEntry& e) {
    std::printf("%lld\t%d\t%u\t%s\t%u\n", e.offset, e.depth, e.id, idAsChars(e.id).constData(),
                e.size);
}

class PrintingTokenValueFile : public ZKTokenValueFile {
public:
    void onTokenValue(const ZKStringW& token, const ZKStringW& value) override {
        std::printf("%s=%s\n", token.toUtf8().constData(), value.toUtf8().constData());
    }
};

} // namespace

int runBlocs(const QStringList& args) {
    if (args.size() != 1)
        return fail(QStringLiteral("blocs takes one FILE (see zkutil blocs --help)"));
    const QString path = args[0];
    if (const int status = checkReadableFile(path))
        return status;
    ZKBinaryFile file;
    if (!file.open(ZKStringW(path), "rb"))
        return fail(QStringLiteral("%1: cannot be opened").arg(path));
    const long long fileSize = QFileInfo(path).size();

    for (long long pos = 0; pos < fileSize;) {
        ZKBinFileBlocHeader header;
        if (fileSize - pos < 8 || !readHeaderAt(file, pos, header)) {
            std::printf("damaged\t%lld\ttruncated header (%lld bytes left)\n", pos, fileSize - pos);
            return kExitNo;
        }
        if (header.size < 8) {
            std::printf("damaged\t%lld\tsize %u is smaller than the 8-byte header\n", pos,
                        header.size);
            return kExitNo;
        }
        if (pos + header.size > fileSize) {
            printEntry({pos, 0, header.id, header.size});
            std::printf("damaged\t%lld\tbloc runs past the end of the file (size %u, %lld bytes "
                        "left)\n",
                        pos, header.size, fileSize - pos);
            return kExitNo;
        }
        std::vector<BlocEntry> entries{{pos, 0, header.id, header.size}};
        if (header.size > 8)
            tileWithBlocs(file, pos + 8, pos + header.size, 1, entries);
        for (const BlocEntry& e : entries)
            printEntry(e);
        pos += header.size;
    }
    return kExitOk;
}

int runTv(const QStringList& args) {
    if (args.isEmpty() || args.size() > 2)
        return fail(QStringLiteral("tv takes FILE [TOKEN] (see zkutil tv --help)"));
    const QString path = args[0];
    if (const int status = checkReadableFile(path))
        return status;
    if (args.size() == 1) {
        PrintingTokenValueFile file;
        if (!file.readFile(ZKStringW(path)))
            return fail(QStringLiteral("%1: cannot be opened").arg(path));
        return kExitOk;
    }
    ZKTokenValueFile file;
    if (!file.bufferedParseFile(ZKStringW(path)))
        return fail(QStringLiteral("%1: cannot be opened").arg(path));
    ZKStringC value;
    if (!file.getStringC(args[1].toUtf8().constData(), value)) {
        std::fprintf(stderr, "zkutil: %s: no token '%s'\n", local8(path).constData(),
                     args[1].toUtf8().constData());
        return kExitNo;
    }
    std::printf("%s\n", value.constData());
    return kExitOk;
}

} // namespace zkutil
