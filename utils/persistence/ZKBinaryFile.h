// ZKBinaryFile.h: the library's binary persistence stream.
//
// A thin wrapper over a C FILE* through which the application stores and
// reloads its data: primitives, the library's value types, byte and wide
// strings and arrays of them, ZKBoolArrays, class-type records from which
// objects are re-created by name, and nested size-prefixed blocs that a
// reader can skip without understanding them.
//
// The format has no header, magic or version: the file is exactly the items
// the application wrote, in the host's byte order (little-endian here) by
// their memory image, except the *_BigEndian items; no alignment, no filler.
//   int, unsigned, uid ........ 4 bytes      int16 ............ 2 bytes
//   int8, uint8, bool ......... 1 byte       uint64, double ... 8 bytes
//   float ..................... 4 bytes      size ............. 8 bytes, or
//                                                the low 4 with sizeAs64Bits off
//   bools as char ............. 1 byte, bit 0 = first bool ... bit 4 = fifth
//   vectors, colours, matrix .. their components in member order
//   ZKStringC ................. int32 byte count n, then the n bytes
//   ZKStringW, mode 0 ......... its UTF-8 form as a ZKStringC (default)
//   ZKStringW, mode 2 ......... int32 count n of UTF-16 units, then 2n bytes
//   string arrays ............. int32 count, then each element
//   ZKBoolArray ............... count as a size field, then one byte (0/1) per
//                               element
//   class type ................ the class name as a ZKStringC; "" for null
//   bloc header ............... uint32 id, uint32 size of the whole bloc
//                               counted from the header's first byte
//
// Every operation reports success as a bool and nothing is written to any
// log; only memory exhaustion throws. Some results are odd and kept so,
// because saved documents and their readers depend on them: skipData and
// skipBoolArray answer false on success; rewindReadStringC goes back one
// byte too far; readUId discards what it reads; writePlane, readPlane,
// writeBBox3f, readBBox3f, writeClassType, rewriteBlocSize, endWriteBloc,
// writeEmptyBloc and endReadBloc without ReadBlocData always answer true.
//
// Damaged files: a count larger than what the rest of the file could hold
// (a string, a string array, a bool array) fails before anything is
// allocated for it; the target is then left as documented at each reader.
//
// Threads: an object must not be used from two threads at once.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <cstdint>
#include <cstdio>

class ZKBBox3f;
class ZKBoolArray;
class ZKColor3f;
class ZKColor3ub;
class ZKColor4f;
class ZKColor4ub;
class ZKMatrix4f;
class ZKObject;
class ZKPlane3f;
class ZKTyped;
class ZKVec2f;
class ZKVec2i;
class ZKVec3d;
class ZKVec3f;

// The 8-byte header in front of every bloc.
struct ZKBinFileBlocHeader {
    unsigned int id = 0;
    // Bytes of the whole bloc from the header's first byte: 8 for an empty bloc.
    unsigned int size = 0;
};

class ZKUTILS_EXPORT ZKBinaryFile {
public:
    // Where a bloc being read started, so that endReadBloc can put the reader
    // back on the next bloc.
    struct ReadBlocData {
        long long m_startPosition = -1; // -1: no file was open
    };

    enum StringWMode : int {
        StringWMode_Utf8 = 0,
        StringWMode_Utf16 = 2,
    };

    ZKBinaryFile();
    // Opens as open() does.
    ZKBinaryFile(const ZKStringW& path, const char* mode);
    ~ZKBinaryFile();

    ZKBinaryFile(const ZKBinaryFile&) = delete;
    ZKBinaryFile& operator=(const ZKBinaryFile&) = delete;

    // Closes any open file, then opens the path (through fopenUtf8: UTF-8,
    // an empty path opens nothing) with the fopen mode. A mode starting with
    // "w" or "a" writes, any other reads. The string mode and both size
    // flags are reset to their defaults after the attempt, whatever its
    // result: set them after opening.
    bool open(const ZKStringW& path, const char* mode);
    void close();
    bool isOpen() const { return m_file != nullptr; }
    FILE* getFile() const { return m_file; }
    const ZKStringC& getModeStr() const { return m_modeStr; }
    // 0 closed, 1 reading, 2 writing.
    int getReadWriteCase() const { return m_readWriteCase; }

    // 0 (UTF-8, default) or 2 (UTF-16 units); any other mode makes wide
    // string reads and writes fail.
    int getStringWMode() const { return m_stringWMode; }
    void setStringWMode(int mode) { m_stringWMode = mode; }
    // Width of size fields: 8 bytes (default) or 4.
    void setSizeAs64Bits(bool on) { m_sizeAs64Bits = on; }
    bool getSizeAs64Bits() const { return m_sizeAs64Bits; }
    // When set, readers take the count in front of a bool array as 32 bits
    // whatever the size width (the older layout). writeBoolArray always
    // writes a size field.
    void setBoolArrayCountAs32Bits(bool on) { m_boolArrayCountAs32Bits = on; }
    bool getBoolArrayCountAs32Bits() const { return m_boolArrayCountAs32Bits; }

    bool writeInt(int v);
    bool writeUInt(unsigned int v);
    bool writeUId(unsigned int v);
    bool writeInt16(short v);
    bool writeInt8(signed char v);
    bool writeUInt8(unsigned char v);
    bool writeUInt64(unsigned long long v);
    bool writeInt_BigEndian(int v);
    bool writeUInt_BigEndian(unsigned int v);
    bool writeFloat(float v);
    bool writeFloat_BigEndian(float v);
    bool writeDouble(double v);
    bool writeSize(unsigned long v);
    bool writeBoolAsChar(bool v);
    bool writeBoolsAsChar(bool b0, bool b1);
    bool writeBoolsAsChar(bool b0, bool b1, bool b2);
    bool writeBoolsAsChar(bool b0, bool b1, bool b2, bool b3);
    bool writeBoolsAsChar(bool b0, bool b1, bool b2, bool b3, bool b4);

    bool readInt(int& v);
    bool readUInt(unsigned int& v);
    bool readInt16(short& v);
    bool readInt8(signed char& v);
    bool readUInt8(unsigned char& v);
    bool readUInt64(unsigned long long& v);
    bool readInt_BigEndian(int& v);
    bool readUInt_BigEndian(unsigned int& v);
    bool readFloat(float& v);
    bool readFloat_BigEndian(float& v);
    bool readDouble(double& v);
    bool readSize(unsigned long& v);
    // Any non-zero byte is true.
    bool readBoolAsChar(bool& v);
    bool readBoolsAsChar(bool& b0, bool& b1);
    bool readBoolsAsChar(bool& b0, bool& b1, bool& b2);
    bool readBoolsAsChar(bool& b0, bool& b1, bool& b2, bool& b3);
    bool readBoolsAsChar(bool& b0, bool& b1, bool& b2, bool& b3, bool& b4);
    // Kept: reads 4 bytes and discards them; the argument is taken by value.
    bool readUId(unsigned int id);

    bool writeVec2f(const ZKVec2f& v);
    bool writeVec2i(const ZKVec2i& v);
    bool writeVec3f(const ZKVec3f& v);
    bool writeVec3d(const ZKVec3d& v);
    bool writeColor3f(const ZKColor3f& c);
    bool writeColor4f(const ZKColor4f& c);
    bool writeColor3ub(const ZKColor3ub& c);
    bool writeColor4ub(const ZKColor4ub& c);
    bool writeMatrix4f(const ZKMatrix4f& m);
    // The normal then d, in two pieces. Kept: always true.
    bool writePlane(const ZKPlane3f& p);
    // The minimum then the maximum corner, in two pieces. Kept: always true.
    bool writeBBox3f(const ZKBBox3f& b);

    bool readVec2f(ZKVec2f& v);
    bool readVec2i(ZKVec2i& v);
    bool readVec3f(ZKVec3f& v);
    bool readVec3d(ZKVec3d& v);
    bool readColor3f(ZKColor3f& c);
    bool readColor4f(ZKColor4f& c);
    bool readColor3ub(ZKColor3ub& c);
    bool readColor4ub(ZKColor4ub& c);
    bool readMatrix4f(ZKMatrix4f& m);
    // Kept: always true, also when a piece could not be read.
    bool readPlane(ZKPlane3f& p);
    bool readBBox3f(ZKBBox3f& b);

    bool writeStringC(const ZKStringC& s);
    // Fails (writing nothing) in a mode other than 0 and 2.
    bool writeStringW(const ZKStringW& s);
    // True once the count was written; single elements are not checked.
    bool writeStringCArray(const ZKStaticArray<ZKStringC>& strings);
    bool writeStringWArray(const ZKStaticArray<ZKStringW>& strings);
    // Count 0 clears the string; a negative count fails with the string
    // unchanged; a count larger than the rest of the file fails, the string
    // holding what was left. A short read leaves the string at the count
    // with unspecified tail bytes.
    bool readStringC(ZKStringC& s);
    // Mode 0: readStringC then UTF-8 decoding. Mode 2: count 0 gives the null
    // string, a negative count fails with the string unchanged; otherwise the
    // units read (even when fewer arrived; a count larger than the rest of
    // the file gives the units left). Other modes fail without reading.
    bool readStringW(ZKStringW& s);
    // False when the count cannot be read, is negative or exceeds what the
    // rest of the file could hold (array unchanged). Otherwise the array is
    // resized to the count, every element read in place (results ignored),
    // and the answer is true.
    bool readStringCArray(ZKArray<ZKStringC>& strings);
    bool readStringWArray(ZKArray<ZKStringW>& strings);

    // Count narrowed to 32 bits (std::length_error above 2^31-1) written as a
    // size field, then one byte per element.
    bool writeBoolArray(const ZKBoolArray& bits);
    // On any failure, a count beyond the end of the file included, the array
    // is left unchanged.
    bool readBoolArray(ZKBoolArray& bits);
    // Kept inverted like skipData: false when the seek over the elements
    // succeeded, true when it failed or no file is open; false when the
    // count cannot be read from the open file.
    bool skipBoolArray();

    // Kept inverted: false when the seek succeeded, true when it failed or no
    // file is open.
    bool skipData(int bytes);
    // Kept: goes back 5 + the string's byte count, one byte more than the
    // string took.
    void rewindReadStringC(const ZKStringC& justRead);
    // Goes back 4 + 2 x its UTF-16 length: exact for mode 2 only.
    void rewindReadStringW(const ZKStringW& justRead);

    // The object's class name ("" for null). Kept: always true.
    bool writeClassType(const ZKTyped* object);
    bool readClassType(ZKStringC& className);
    // A new object of the class named by the record (owned by the caller), or
    // null for an unknown or empty name or a read failure. The record is
    // consumed either way.
    ZKObject* readClassTypeAndCreateObj();

    // Remembers where the bloc starts, then writes the header (usually with a
    // placeholder size).
    bool writeBlocHeader(const ZKBinFileBlocHeader& header);
    // Patches the innermost open bloc's size to reach the current position.
    // Kept: always true.
    bool rewriteBlocSize();
    // Optionally patches the size, then closes the innermost bloc. Kept:
    // always true.
    bool endWriteBloc(bool rewriteSize);
    // A complete 8-byte bloc. Kept: always true.
    bool writeEmptyBloc(int id);

    bool readBlocHeader(ZKBinFileBlocHeader& header);
    // True only when the id read is the one expected; the header is consumed
    // either way.
    bool readBlocHeader_CheckId(ZKBinFileBlocHeader& header, unsigned int expectedId);
    // Right after the header: seeks forward over size - 8 bytes.
    bool skipBloc(const ZKBinFileBlocHeader& header);
    // Kept: does nothing, always true.
    bool endReadBloc(const ZKBinFileBlocHeader& header);

    // The same, recording where the header starts.
    bool readBlocHeader(ZKBinFileBlocHeader& header, ReadBlocData& data);
    bool readBlocHeader_CheckId(ZKBinFileBlocHeader& header, ReadBlocData& data,
                                unsigned int expectedId);
    // Seeks to the recorded start + size.
    bool skipBloc(const ZKBinFileBlocHeader& header, ReadBlocData& data);
    // True when the reader stands exactly at the bloc's end; otherwise seeks
    // there and answers false, so that a reader that consumed too little or
    // too much is put back on the next bloc and told so.
    bool endReadBloc(const ZKBinFileBlocHeader& header, ReadBlocData& data);

private:
    bool writeBytes(const void* data, size_t n);
    bool readBytes(void* data, size_t n);
    template <typename T> bool writeImage(const T& v) { return writeBytes(&v, sizeof v); }
    template <typename T> bool readImage(T& v) { return readBytes(&v, sizeof v); }
    bool writeBoolBits(unsigned bits);
    bool readBoolBits(bool* const* targets, int n);
    // A size field of 8 bytes, or of 4 when `as64Bits` is off.
    bool readSizeField(bool as64Bits, unsigned long& v);
    bool readBoolArrayCount(unsigned long& count);
    // The current offset in the file; -1 when no file is open.
    long long position() const;
    // Bytes from the current position to the end of the file; -1 when the
    // stream cannot tell (not seekable).
    long long bytesLeft();
    template <typename S, bool (ZKBinaryFile::*Read)(S&)> bool readStringArray(ZKArray<S>& strings);
    template <typename S, bool (ZKBinaryFile::*Write)(const S&)>
    bool writeStringArray(const ZKStaticArray<S>& strings);
    void resetSettings();
    void updateReadWriteCaseFromModeStr();
    void patchInnermostBlocSize();

    FILE* m_file = nullptr;
    int m_stringWMode = StringWMode_Utf8;
    ZKArray<long long> m_blocStartPositions;
    bool m_sizeAs64Bits = true;
    bool m_boolArrayCountAs32Bits = false;
    ZKStringC m_modeStr;
    int m_readWriteCase = 0;
};
