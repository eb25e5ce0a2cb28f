#include "ZKBinaryFile.h"

#include "ZKBBox.h"
#include "ZKBoolArray.h"
#include "ZKClassType.h"
#include "ZKColor.h"
#include "ZKDisk.h"
#include "ZKMatrix.h"
#include "ZKNativeStdio.h"
#include "ZKObject.h"
#include "ZKPlane.h"
#include "ZKTyped.h"
#include "ZKVec.h"

#include <climits>
#include <cstring>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

// Counts up to this many bytes are read without asking how much of the file
// is left: such an allocation is justified by any input.
constexpr long long kTrustedCount = 1 << 16;

void putBigEndian32(unsigned char* out, std::uint32_t v) {
    out[0] = static_cast<unsigned char>(v >> 24);
    out[1] = static_cast<unsigned char>(v >> 16);
    out[2] = static_cast<unsigned char>(v >> 8);
    out[3] = static_cast<unsigned char>(v);
}

std::uint32_t getBigEndian32(const unsigned char* in) {
    return (std::uint32_t(in[0]) << 24) | (std::uint32_t(in[1]) << 16) |
           (std::uint32_t(in[2]) << 8) | std::uint32_t(in[3]);
}

} // namespace

ZKBinaryFile::ZKBinaryFile() = default;

ZKBinaryFile::ZKBinaryFile(const ZKStringW& path, const char* mode) {
    open(path, mode);
}

ZKBinaryFile::~ZKBinaryFile() {
    close();
}

void ZKBinaryFile::resetSettings() {
    m_stringWMode = StringWMode_Utf8;
    m_sizeAs64Bits = true;
    m_boolArrayCountAs32Bits = false;
}

void ZKBinaryFile::updateReadWriteCaseFromModeStr() {
    m_readWriteCase = (m_modeStr.startsWith("w") || m_modeStr.startsWith("a")) ? 2 : 1;
}

bool ZKBinaryFile::open(const ZKStringW& path, const char* mode) {
    close();
    m_file = fopenUtf8(path, mode);
    if (m_file) {
        m_modeStr = mode;
        updateReadWriteCaseFromModeStr();
    }
    resetSettings();
    return m_file != nullptr;
}

void ZKBinaryFile::close() {
    if (!m_file)
        return;
    std::fclose(m_file);
    m_file = nullptr;
    m_modeStr.clear();
    m_readWriteCase = 0;
}

bool ZKBinaryFile::writeBytes(const void* data, size_t n) {
    if (!m_file)
        return false;
    return n == 0 || ZKNative::fwriteUnlocked(data, n, 1, m_file) == 1;
}

bool ZKBinaryFile::readBytes(void* data, size_t n) {
    if (!m_file)
        return false;
    return n == 0 || ZKNative::freadUnlocked(data, 1, n, m_file) == n;
}

long long ZKBinaryFile::position() const {
    return m_file ? (long long)ftello(m_file) : -1LL;
}

long long ZKBinaryFile::bytesLeft() {
    if (!m_file)
        return -1;
    const long long here = ftello(m_file);
    if (here < 0 || fseeko(m_file, 0, SEEK_END) != 0)
        return -1;
    const long long end = ftello(m_file);
    fseeko(m_file, here, SEEK_SET);
    return end < here ? 0 : end - here;
}

bool ZKBinaryFile::writeInt(int v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeUInt(unsigned int v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeUId(unsigned int v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeInt16(short v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeInt8(signed char v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeUInt8(unsigned char v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeUInt64(unsigned long long v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeFloat(float v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeDouble(double v) {
    return writeImage(v);
}

bool ZKBinaryFile::writeUInt_BigEndian(unsigned int v) {
    unsigned char bytes[4];
    putBigEndian32(bytes, v);
    return writeBytes(bytes, 4);
}

bool ZKBinaryFile::writeInt_BigEndian(int v) {
    return writeUInt_BigEndian(static_cast<unsigned int>(v));
}

bool ZKBinaryFile::writeFloat_BigEndian(float v) {
    std::uint32_t bits;
    std::memcpy(&bits, &v, 4);
    return writeUInt_BigEndian(bits);
}

bool ZKBinaryFile::writeSize(unsigned long v) {
    if (m_sizeAs64Bits)
        return writeUInt64(v);
    return writeUInt(static_cast<unsigned int>(v)); // the low 32 bits
}

bool ZKBinaryFile::writeBoolAsChar(bool v) {
    return writeUInt8(v ? 1 : 0);
}

bool ZKBinaryFile::writeBoolBits(unsigned bits) {
    return writeUInt8(static_cast<unsigned char>(bits));
}

bool ZKBinaryFile::writeBoolsAsChar(bool b0, bool b1) {
    return writeBoolBits(unsigned(b0) | unsigned(b1) << 1);
}
bool ZKBinaryFile::writeBoolsAsChar(bool b0, bool b1, bool b2) {
    return writeBoolBits(unsigned(b0) | unsigned(b1) << 1 | unsigned(b2) << 2);
}
bool ZKBinaryFile::writeBoolsAsChar(bool b0, bool b1, bool b2, bool b3) {
    return writeBoolBits(unsigned(b0) | unsigned(b1) << 1 | unsigned(b2) << 2 | unsigned(b3) << 3);
}
bool ZKBinaryFile::writeBoolsAsChar(bool b0, bool b1, bool b2, bool b3, bool b4) {
    return writeBoolBits(unsigned(b0) | unsigned(b1) << 1 | unsigned(b2) << 2 | unsigned(b3) << 3 |
                         unsigned(b4) << 4);
}

bool ZKBinaryFile::readInt(int& v) {
    return readImage(v);
}
bool ZKBinaryFile::readUInt(unsigned int& v) {
    return readImage(v);
}
bool ZKBinaryFile::readInt16(short& v) {
    return readImage(v);
}
bool ZKBinaryFile::readInt8(signed char& v) {
    return readImage(v);
}
bool ZKBinaryFile::readUInt8(unsigned char& v) {
    return readImage(v);
}
bool ZKBinaryFile::readUInt64(unsigned long long& v) {
    return readImage(v);
}
bool ZKBinaryFile::readFloat(float& v) {
    return readImage(v);
}
bool ZKBinaryFile::readDouble(double& v) {
    return readImage(v);
}

bool ZKBinaryFile::readUInt_BigEndian(unsigned int& v) {
    unsigned char bytes[4];
    if (!readBytes(bytes, 4))
        return false;
    v = getBigEndian32(bytes);
    return true;
}

bool ZKBinaryFile::readInt_BigEndian(int& v) {
    unsigned int u;
    if (!readUInt_BigEndian(u))
        return false;
    v = static_cast<int>(u);
    return true;
}

bool ZKBinaryFile::readFloat_BigEndian(float& v) {
    unsigned int bits;
    if (!readUInt_BigEndian(bits))
        return false;
    std::memcpy(&v, &bits, 4);
    return true;
}

bool ZKBinaryFile::readSizeField(bool as64Bits, unsigned long& v) {
    if (as64Bits) {
        unsigned long long wide;
        if (!readUInt64(wide))
            return false;
        v = static_cast<unsigned long>(wide);
        return true;
    }
    unsigned int narrow;
    if (!readUInt(narrow))
        return false;
    v = narrow;
    return true;
}

bool ZKBinaryFile::readSize(unsigned long& v) {
    return readSizeField(m_sizeAs64Bits, v);
}

bool ZKBinaryFile::readBoolArrayCount(unsigned long& count) {
    // The older layout's count is 32 bits whatever the size width.
    return readSizeField(m_sizeAs64Bits && !m_boolArrayCountAs32Bits, count);
}

bool ZKBinaryFile::readBoolAsChar(bool& v) {
    unsigned char byte;
    if (!readUInt8(byte))
        return false;
    v = byte != 0;
    return true;
}

bool ZKBinaryFile::readBoolBits(bool* const* targets, int n) {
    unsigned char byte;
    if (!readUInt8(byte))
        return false;
    for (int i = 0; i < n; ++i)
        *targets[i] = (byte >> i) & 1;
    return true;
}

bool ZKBinaryFile::readBoolsAsChar(bool& b0, bool& b1) {
    bool* const targets[] = {&b0, &b1};
    return readBoolBits(targets, 2);
}
bool ZKBinaryFile::readBoolsAsChar(bool& b0, bool& b1, bool& b2) {
    bool* const targets[] = {&b0, &b1, &b2};
    return readBoolBits(targets, 3);
}
bool ZKBinaryFile::readBoolsAsChar(bool& b0, bool& b1, bool& b2, bool& b3) {
    bool* const targets[] = {&b0, &b1, &b2, &b3};
    return readBoolBits(targets, 4);
}
bool ZKBinaryFile::readBoolsAsChar(bool& b0, bool& b1, bool& b2, bool& b3, bool& b4) {
    bool* const targets[] = {&b0, &b1, &b2, &b3, &b4};
    return readBoolBits(targets, 5);
}

bool ZKBinaryFile::readUId(unsigned int id) {
    (void)id; // kept: the identifier read is discarded
    unsigned int discarded;
    return readUInt(discarded);
}

bool ZKBinaryFile::writeVec2f(const ZKVec2f& v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeVec2i(const ZKVec2i& v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeVec3f(const ZKVec3f& v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeVec3d(const ZKVec3d& v) {
    return writeImage(v);
}
bool ZKBinaryFile::writeColor3f(const ZKColor3f& c) {
    return writeImage(c);
}
bool ZKBinaryFile::writeColor4f(const ZKColor4f& c) {
    return writeImage(c);
}
bool ZKBinaryFile::writeColor3ub(const ZKColor3ub& c) {
    return writeImage(c);
}
bool ZKBinaryFile::writeColor4ub(const ZKColor4ub& c) {
    return writeImage(c);
}
bool ZKBinaryFile::writeMatrix4f(const ZKMatrix4f& m) {
    return writeImage(m);
}

bool ZKBinaryFile::writePlane(const ZKPlane3f& p) {
    writeVec3f(p.normal);
    writeFloat(p.d);
    return true; // kept: always true
}

bool ZKBinaryFile::writeBBox3f(const ZKBBox3f& b) {
    writeVec3f(b.min);
    writeVec3f(b.max);
    return true; // kept: always true
}

bool ZKBinaryFile::readVec2f(ZKVec2f& v) {
    return readImage(v);
}
bool ZKBinaryFile::readVec2i(ZKVec2i& v) {
    return readImage(v);
}
bool ZKBinaryFile::readVec3f(ZKVec3f& v) {
    return readImage(v);
}
bool ZKBinaryFile::readVec3d(ZKVec3d& v) {
    return readImage(v);
}
bool ZKBinaryFile::readColor3f(ZKColor3f& c) {
    return readImage(c);
}
bool ZKBinaryFile::readColor4f(ZKColor4f& c) {
    return readImage(c);
}
bool ZKBinaryFile::readColor3ub(ZKColor3ub& c) {
    return readImage(c);
}
bool ZKBinaryFile::readColor4ub(ZKColor4ub& c) {
    return readImage(c);
}
bool ZKBinaryFile::readMatrix4f(ZKMatrix4f& m) {
    return readImage(m);
}

bool ZKBinaryFile::readPlane(ZKPlane3f& p) {
    readVec3f(p.normal);
    readFloat(p.d);
    return true; // kept: always true
}

bool ZKBinaryFile::readBBox3f(ZKBBox3f& b) {
    readVec3f(b.min);
    readVec3f(b.max);
    return true; // kept: always true
}

bool ZKBinaryFile::writeStringC(const ZKStringC& s) {
    if (!writeInt(s.size()))
        return false;
    return writeBytes(s.constData(), size_t(s.size()));
}

bool ZKBinaryFile::writeStringW(const ZKStringW& s) {
    if (m_stringWMode == StringWMode_Utf8)
        return writeStringC(s.toUtf8());
    if (m_stringWMode != StringWMode_Utf16)
        return false;
    if (!writeInt(s.size()))
        return false;
    return writeBytes(s.utf16(), size_t(s.size()) * 2);
}

bool ZKBinaryFile::readStringC(ZKStringC& s) {
    int n;
    if (!readInt(n))
        return false;
    if (n == 0) {
        s.clear();
        return true;
    }
    if (n < 0)
        return false;
    if (n > kTrustedCount) {
        const long long left = bytesLeft();
        if (left >= 0 && left < n) {
            // A damaged count: keep what is left rather than allocating the count.
            s.resize(int(left));
            readBytes(s.data(), size_t(left));
            return false;
        }
    }
    s.resize(n);
    const bool ok = readBytes(s.data(), size_t(n));
    s.resize(n);
    return ok;
}

bool ZKBinaryFile::readStringW(ZKStringW& s) {
    if (m_stringWMode == StringWMode_Utf8) {
        ZKStringC bytes;
        if (!readStringC(bytes))
            return false;
        s.fromUtf8(bytes);
        return true;
    }
    if (m_stringWMode != StringWMode_Utf16)
        return false;
    int n;
    if (!readInt(n))
        return false;
    if (n == 0) {
        s = QString();
        return true;
    }
    if (n < 0)
        return false;
    long long bytes = 2LL * n;
    if (n > kTrustedCount / 2) {
        const long long left = bytesLeft();
        if (left >= 0 && left < bytes)
            bytes = left; // a damaged count: read what is left, the last unit maybe half
    }
    const long long units = (bytes + 1) / 2;
    std::vector<char16_t> buffer(size_t(units), 0);
    const bool ok = readBytes(buffer.data(), size_t(bytes)) && bytes == 2LL * n;
    s = QString::fromUtf16(buffer.data(), int(units));
    return ok;
}

template <typename S, bool (ZKBinaryFile::*Write)(const S&)>
bool ZKBinaryFile::writeStringArray(const ZKStaticArray<S>& strings) {
    const long long n = strings.size();
    if (!writeInt(int(n)))
        return false;
    for (long long i = 0; i < n; ++i)
        (this->*Write)(strings[i]); // single elements are not checked
    return true;
}

bool ZKBinaryFile::writeStringCArray(const ZKStaticArray<ZKStringC>& strings) {
    return writeStringArray<ZKStringC, &ZKBinaryFile::writeStringC>(strings);
}

bool ZKBinaryFile::writeStringWArray(const ZKStaticArray<ZKStringW>& strings) {
    return writeStringArray<ZKStringW, &ZKBinaryFile::writeStringW>(strings);
}

template <typename S, bool (ZKBinaryFile::*Read)(S&)>
bool ZKBinaryFile::readStringArray(ZKArray<S>& strings) {
    int n;
    if (!readInt(n) || n < 0)
        return false;
    // Every element takes at least its 4-byte count.
    if (n > kTrustedCount / 4) {
        const long long left = bytesLeft();
        if (left >= 0 && left / 4 < n)
            return false;
    }
    strings.resize(n);
    for (int i = 0; i < n; ++i)
        (this->*Read)(strings[i]); // single elements are not checked
    return true;
}

bool ZKBinaryFile::readStringCArray(ZKArray<ZKStringC>& strings) {
    return readStringArray<ZKStringC, &ZKBinaryFile::readStringC>(strings);
}

bool ZKBinaryFile::readStringWArray(ZKArray<ZKStringW>& strings) {
    return readStringArray<ZKStringW, &ZKBinaryFile::readStringW>(strings);
}

bool ZKBinaryFile::writeBoolArray(const ZKBoolArray& bits) {
    const long long count = bits.size();
    if (count > std::numeric_limits<int>::max())
        throw std::length_error("ZKBinaryFile::writeBoolArray: more than 2^31-1 elements");
    if (!writeSize(static_cast<unsigned long>(count)))
        return false;
    if (count == 0)
        return true;
    std::vector<unsigned char> bytes(static_cast<size_t>(count), 0);
    for (long long i = bits.findFirst(true, 0); i >= 0 && i < count;
         i = bits.findFirst(true, i + 1))
        bytes[size_t(i)] = 1;
    return writeBytes(bytes.data(), bytes.size());
}

bool ZKBinaryFile::readBoolArray(ZKBoolArray& bits) {
    unsigned long count;
    if (!readBoolArrayCount(count))
        return false;
    if (count > (unsigned long)kTrustedCount) {
        const long long left = bytesLeft();
        if (left >= 0 && (unsigned long long)left < count)
            return false;
    }
    if (count > (unsigned long)ZKStaticArray<unsigned char>::max_size())
        return false;
    std::vector<unsigned char> bytes;
    bytes.resize(count);
    if (!readBytes(bytes.data(), count))
        return false;
    const long long n = static_cast<long long>(count);
    if (bits.size() == n) {
        bits.clearAll();
    } else {
        bits.clearArray();
        bits.resize(n, false);
    }
    for (long long i = 0; i < n; ++i) {
        if (bytes[size_t(i)])
            bits.set(i, 1);
    }
    return true;
}

bool ZKBinaryFile::skipBoolArray() {
    if (!m_file)
        return true; // kept inverted like skipData: no file answers true
    unsigned long count;
    if (!readBoolArrayCount(count))
        return false;
    // Kept inverted: false when the seek succeeded.
    return fseeko(m_file, static_cast<off_t>(count), SEEK_CUR) != 0;
}

bool ZKBinaryFile::skipData(int bytes) {
    if (!m_file)
        return true;
    // Kept inverted: false when the seek succeeded.
    return std::fseek(m_file, bytes, SEEK_CUR) != 0;
}

void ZKBinaryFile::rewindReadStringC(const ZKStringC& justRead) {
    if (!m_file)
        return;
    // Kept: one byte further back than the 4 + n the string took.
    std::fseek(m_file, -(5L + justRead.size()), SEEK_CUR);
}

void ZKBinaryFile::rewindReadStringW(const ZKStringW& justRead) {
    if (!m_file)
        return;
    std::fseek(m_file, -(4L + 2L * justRead.size()), SEEK_CUR);
}

bool ZKBinaryFile::writeClassType(const ZKTyped* object) {
    const char* name = "";
    if (object) {
        const ZKClassType* type = object->getClassType();
        if (type && type->getName())
            name = type->getName();
    }
    writeStringC(ZKStringC(name));
    return true; // kept: always true
}

bool ZKBinaryFile::readClassType(ZKStringC& className) {
    return readStringC(className);
}

ZKObject* ZKBinaryFile::readClassTypeAndCreateObj() {
    ZKStringC name;
    if (!readClassType(name) || name.isEmpty())
        return nullptr;
    const ZKClassType* type = ZKClassType::getFromName(name.constData());
    if (!type)
        return nullptr;
    std::unique_ptr<ZKTyped> made(type->createNewInstance());
    ZKObject* object = dynamic_cast<ZKObject*>(made.get());
    if (object)
        made.release();
    return object;
}

bool ZKBinaryFile::writeBlocHeader(const ZKBinFileBlocHeader& header) {
    m_blocStartPositions.push_back(position());
    return writeUInt(header.id) && writeUInt(header.size);
}

void ZKBinaryFile::patchInnermostBlocSize() {
    // Assumes an open file and an open bloc; without them there is nothing to patch.
    if (!m_file || m_blocStartPositions.empty())
        return;
    const long long start = m_blocStartPositions.back();
    const long long here = ftello(m_file);
    if (start < 0 || here < 0)
        return;
    fseeko(m_file, start + 4, SEEK_SET);
    writeUInt(static_cast<unsigned int>(here - start));
    fseeko(m_file, here, SEEK_SET);
}

bool ZKBinaryFile::rewriteBlocSize() {
    patchInnermostBlocSize();
    return true; // kept: always true
}

bool ZKBinaryFile::endWriteBloc(bool rewriteSize) {
    if (rewriteSize)
        patchInnermostBlocSize();
    if (!m_blocStartPositions.empty())
        m_blocStartPositions.pop_back();
    return true; // kept: always true
}

bool ZKBinaryFile::writeEmptyBloc(int id) {
    ZKBinFileBlocHeader header;
    header.id = static_cast<unsigned int>(id);
    header.size = 8;
    writeBlocHeader(header);
    return endWriteBloc(true); // kept: always true
}

bool ZKBinaryFile::readBlocHeader(ZKBinFileBlocHeader& header) {
    return readUInt(header.id) && readUInt(header.size);
}

bool ZKBinaryFile::readBlocHeader_CheckId(ZKBinFileBlocHeader& header, unsigned int expectedId) {
    return readBlocHeader(header) && header.id == expectedId;
}

bool ZKBinaryFile::skipBloc(const ZKBinFileBlocHeader& header) {
    if (!m_file)
        return false;
    // Unsigned as in the header: a damaged size below 8 seeks far forward, never back.
    return fseeko(m_file, static_cast<off_t>(header.size - 8u), SEEK_CUR) == 0;
}

bool ZKBinaryFile::endReadBloc(const ZKBinFileBlocHeader& header) {
    (void)header;
    return true; // kept: does nothing
}

bool ZKBinaryFile::readBlocHeader(ZKBinFileBlocHeader& header, ReadBlocData& data) {
    data.m_startPosition = position();
    return readBlocHeader(header);
}

bool ZKBinaryFile::readBlocHeader_CheckId(ZKBinFileBlocHeader& header, ReadBlocData& data,
                                          unsigned int expectedId) {
    data.m_startPosition = position();
    return readBlocHeader_CheckId(header, expectedId);
}

bool ZKBinaryFile::skipBloc(const ZKBinFileBlocHeader& header, ReadBlocData& data) {
    if (!m_file)
        return false;
    return fseeko(m_file, data.m_startPosition + header.size, SEEK_SET) == 0;
}

bool ZKBinaryFile::endReadBloc(const ZKBinFileBlocHeader& header, ReadBlocData& data) {
    if (!m_file)
        return false;
    const long long end = data.m_startPosition + header.size;
    if (ftello(m_file) == end)
        return true;
    fseeko(m_file, end, SEEK_SET);
    return false;
}
