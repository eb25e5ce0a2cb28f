#include "ZKBinaryFile.h"
#include "ZKTestSupport.h"

#include "ZKBBox.h"
#include "ZKBoolArray.h"
#include "ZKColor.h"
#include "ZKMatrix.h"
#include "ZKObject.h"
#include "ZKPlane.h"
#include "ZKVec.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

class SavedShape : public ZKObject {
    ZK_DECLARE_CLASS(SavedShape)
public:
    int m_corners = 0;
};
ZK_IMPLEMENT_CLASS(SavedShape)

class BinaryFileTest : public ::testing::Test {
protected:
    ZKStringW path(const char* name = "data.bin") const {
        return ZKStringW(m_dir.filePath(QString::fromLatin1(name)));
    }

    // Writes with `body` into a fresh file and returns its bytes as hex.
    QByteArray written(const std::function<void(ZKBinaryFile&)>& body) {
        const ZKStringW p = path();
        {
            ZKBinaryFile file(p, "wb");
            EXPECT_TRUE(file.isOpen());
            body(file);
        }
        return zkReadFile(p).toHex(' ');
    }

    void writeRaw(const QByteArray& bytes, const char* name = "raw.bin") {
        ASSERT_TRUE(zkWriteFile(path(name), bytes));
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(BinaryFileTest, PrimitivesAreTheirNativeImageOrBigEndian) {
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeInt(1); }), "01 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeInt_BigEndian(1); }), "00 00 00 01");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeUInt_BigEndian(0x01020304u); }), "01 02 03 04");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeInt(-2); }), "fe ff ff ff");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeUId(7); }), "07 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeInt16(0x1234); }), "34 12");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeInt8(-1); }), "ff");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeUInt64(0x0102030405060708ull); }),
              "08 07 06 05 04 03 02 01");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeFloat(1.0f); }), "00 00 80 3f");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeFloat_BigEndian(1.0f); }), "3f 80 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeDouble(1.0); }), "00 00 00 00 00 00 f0 3f");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeSize(5); }), "05 00 00 00 00 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) {
                  f.setSizeAs64Bits(false);
                  f.writeSize(0x100000005ul);
              }),
              "05 00 00 00");
}

TEST_F(BinaryFileTest, BoolsArePackedIntoOneByte) {
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeBoolAsChar(true); }), "01");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeBoolsAsChar(true, false, true); }), "05");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeBoolsAsChar(true, true, true, true, true); }),
              "1f");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeBoolsAsChar(false, false, false, true); }),
              "08");

    writeRaw(QByteArray::fromHex("ff02"));
    ZKBinaryFile file(path("raw.bin"), "rb");
    bool a = false, b = false, c = true;
    EXPECT_TRUE(file.readBoolsAsChar(a, b));
    EXPECT_TRUE(a);
    EXPECT_TRUE(b);
    EXPECT_TRUE(file.readBoolAsChar(c)); // any non-zero byte is true
    EXPECT_TRUE(c);
    EXPECT_FALSE(file.readBoolAsChar(c));
}

TEST_F(BinaryFileTest, ValueTypesAreTheirComponentsInOrder) {
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeVec2i(ZKVec2i(1, -1)); }),
              "01 00 00 00 ff ff ff ff");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeVec3f(ZKVec3f(1, 2, 0)); }),
              "00 00 80 3f 00 00 00 40 00 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeColor3ub(ZKColor3ub(1, 2, 3)); }), "01 02 03");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeColor4ub(ZKColor4ub(1, 2, 3, 4)); }),
              "01 02 03 04");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeColor4f(ZKColor4f(1, 0, 0, 1)); }),
              "00 00 80 3f 00 00 00 00 00 00 00 00 00 00 80 3f");
    ZKPlane3f plane;
    plane.normal = ZKVec3f(0, 0, 1);
    plane.d = 2;
    EXPECT_EQ(written([&](ZKBinaryFile& f) { EXPECT_TRUE(f.writePlane(plane)); }),
              "00 00 00 00 00 00 00 00 00 00 80 3f 00 00 00 40");
    ZKMatrix4f m;
    m.m[12] = 1;
    const QByteArray hex = written([&](ZKBinaryFile& f) { f.writeMatrix4f(m); });
    EXPECT_EQ(hex.size(), 64 * 3 - 1);
    EXPECT_TRUE(hex.startsWith("00 00 80 3f 00 00 00 00")); // column-major identity
    EXPECT_EQ(hex.mid(12 * 4 * 3, 11), "00 00 80 3f");      // translation x at index 12

    // Round trip of every value type.
    const ZKStringW p = path("values.bin");
    ZKBBox3f box;
    box.min = ZKVec3f(-1, -2, -3);
    box.max = ZKVec3f(4, 5, 6);
    {
        ZKBinaryFile f(p, "wb");
        f.writeVec2f(ZKVec2f(0.5f, 1.5f));
        f.writeVec3d(ZKVec3d(1e300, -2, 3));
        f.writeColor3f(ZKColor3f(0.25f, 0.5f, 0.75f));
        f.writeBBox3f(box);
        f.writeMatrix4f(m);
        f.writePlane(plane);
    }
    ZKBinaryFile f(p, "rb");
    ZKVec2f v2;
    ZKVec3d v3;
    ZKColor3f c3;
    ZKBBox3f b;
    ZKMatrix4f m2;
    ZKPlane3f pl;
    EXPECT_TRUE(f.readVec2f(v2));
    EXPECT_TRUE(f.readVec3d(v3));
    EXPECT_TRUE(f.readColor3f(c3));
    EXPECT_TRUE(f.readBBox3f(b));
    EXPECT_TRUE(f.readMatrix4f(m2));
    EXPECT_TRUE(f.readPlane(pl));
    EXPECT_EQ(v2.y, 1.5f);
    EXPECT_EQ(v3.x, 1e300);
    EXPECT_EQ(c3.b, 0.75f);
    EXPECT_EQ(b.max.z, 6.0f);
    EXPECT_EQ(m2.m[12], 1.0f);
    EXPECT_EQ(pl.d, 2.0f);
    // Kept: the two-piece readers answer true even at the end of the file.
    EXPECT_TRUE(f.readPlane(pl));
    EXPECT_TRUE(f.readBBox3f(b));
    EXPECT_FALSE(f.readVec2f(v2));
}

TEST_F(BinaryFileTest, StringsAreCountedBytesOrUtf16Units) {
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeStringC(ZKStringC()); }), "00 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) { f.writeStringC("abc"); }), "03 00 00 00 61 62 63");
    EXPECT_EQ(
        written([](ZKBinaryFile& f) { f.writeStringW(ZKStringW(QString::fromUtf8("\xc3\xa9"))); }),
        "02 00 00 00 c3 a9");
    EXPECT_EQ(written([](ZKBinaryFile& f) {
                  f.setStringWMode(2);
                  f.writeStringW(ZKStringW(QString::fromUtf8("a\xc3\xa9")));
              }),
              "02 00 00 00 61 00 e9 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) {
                  f.setStringWMode(1);
                  EXPECT_FALSE(f.writeStringW(ZKStringW("x")));
              }),
              "");
    ZKArray<ZKStringC> list{"a", ""};
    EXPECT_EQ(written([&](ZKBinaryFile& f) { f.writeStringCArray(list); }),
              "02 00 00 00 01 00 00 00 61 00 00 00 00");

    const ZKStringW p = path("strings.bin");
    ZKArray<ZKStringW> wide{ZKStringW("one"), ZKStringW(QString::fromUtf8("\xe2\x82\xac"))};
    {
        ZKBinaryFile f(p, "wb");
        f.writeStringW(ZKStringW("utf8"));
        f.setStringWMode(2);
        f.writeStringWArray(wide);
        f.writeStringW(ZKStringW());
    }
    ZKBinaryFile f(p, "rb");
    ZKStringW s;
    EXPECT_TRUE(f.readStringW(s));
    EXPECT_EQ(s, QStringLiteral("utf8"));
    f.setStringWMode(1);
    EXPECT_FALSE(f.readStringW(s)); // other modes fail without reading
    f.setStringWMode(2);
    ZKArray<ZKStringW> back{ZKStringW("stale"), ZKStringW("more"), ZKStringW("most")};
    EXPECT_TRUE(f.readStringWArray(back));
    EXPECT_EQ(back, wide);
    s = ZKStringW("x");
    EXPECT_TRUE(f.readStringW(s));
    EXPECT_TRUE(s.isNull());
}

TEST_F(BinaryFileTest, StringReadersOnOddCounts) {
    // count 0, a negative count, then a count past the end.
    writeRaw(QByteArray::fromHex("00000000"
                                 "ffffffff"
                                 "05000000616263"));
    ZKBinaryFile f(path("raw.bin"), "rb");
    ZKStringC s("before");
    EXPECT_TRUE(f.readStringC(s));
    EXPECT_TRUE(s.isEmpty());
    s = "kept";
    EXPECT_FALSE(f.readStringC(s));
    EXPECT_EQ(s, "kept");
    EXPECT_FALSE(f.readStringC(s)); // short read
    EXPECT_EQ(s.size(), 5);
    EXPECT_TRUE(s.startsWith("abc"));

    // Mode 2: the units are kept even when fewer bytes arrived; a count past
    // the end of a larger file keeps the units that are left.
    writeRaw(QByteArray::fromHex("05000000610062"), "short16.bin");
    ZKBinaryFile s16(path("short16.bin"), "rb");
    s16.setStringWMode(2);
    ZKStringW w;
    EXPECT_FALSE(s16.readStringW(w));
    EXPECT_EQ(w.size(), 5);
    EXPECT_TRUE(w.startsWith(QStringLiteral("ab")));
    writeRaw(QByteArray::fromHex("ffffff7f610062"), "huge16.bin");
    ZKBinaryFile h16(path("huge16.bin"), "rb");
    h16.setStringWMode(2);
    EXPECT_FALSE(h16.readStringW(w));
    EXPECT_EQ(w, QStringLiteral("ab"));
    unsigned char rest = 0;
    EXPECT_FALSE(h16.readUInt8(rest)); // every byte was consumed, the half unit too
    writeRaw(QByteArray::fromHex("feffffff6100"), "negative16.bin");
    ZKBinaryFile n16(path("negative16.bin"), "rb");
    n16.setStringWMode(2);
    EXPECT_FALSE(n16.readStringW(w));
    EXPECT_EQ(w, QStringLiteral("ab"));

    // An absurd count fails without allocating it.
    writeRaw(QByteArray::fromHex("ffffff7f616263"), "huge.bin");
    ZKBinaryFile h(path("huge.bin"), "rb");
    EXPECT_FALSE(h.readStringC(s));
    EXPECT_LE(s.size(), 3);
    writeRaw(QByteArray::fromHex("ffffff7f"), "hugearray.bin");
    ZKBinaryFile ha(path("hugearray.bin"), "rb");
    ZKArray<ZKStringC> list{"unchanged"};
    EXPECT_FALSE(ha.readStringCArray(list));
    EXPECT_EQ(list.size(), 1);
}

TEST_F(BinaryFileTest, RewindsAndSkipsKeepTheirOddResults) {
    const ZKStringW p = path();
    {
        ZKBinaryFile f(p, "wb");
        f.writeInt(0x11111111);
        f.writeStringC("abcd");
        f.writeInt(42);
        f.setStringWMode(2);
        f.writeStringW(ZKStringW("xy"));
    }
    ZKBinaryFile f(p, "rb");
    EXPECT_FALSE(f.skipData(4)); // kept: false means the seek succeeded
    ZKStringC s;
    ASSERT_TRUE(f.readStringC(s));
    EXPECT_EQ(ftell(f.getFile()), 12);
    f.rewindReadStringC(s);
    EXPECT_EQ(ftell(f.getFile()), 3); // kept: one byte further back than the string
    f.skipData(9);
    EXPECT_TRUE(f.readUId(999)); // kept: reads and discards
    EXPECT_EQ(ftell(f.getFile()), 16);
    f.setStringWMode(2);
    ZKStringW w;
    ASSERT_TRUE(f.readStringW(w));
    f.rewindReadStringW(w);
    EXPECT_EQ(ftell(f.getFile()), 16);
    EXPECT_TRUE(f.skipData(-100)); // a failed seek answers true

    f.skipData(8);
    EXPECT_FALSE(f.skipBoolArray()); // at the end: the count cannot be read

    ZKBinaryFile closed;
    EXPECT_TRUE(closed.skipData(4));
    EXPECT_TRUE(closed.skipBoolArray()); // kept inverted: no file answers true
    EXPECT_FALSE(closed.readUId(0));
    EXPECT_FALSE(closed.writeInt(1));
}

TEST_F(BinaryFileTest, WithoutAFileOnlyTheKeptMembersAnswerTrue) {
    ZKBinaryFile closed;
    // Kept: these answer true whatever happened.
    EXPECT_TRUE(closed.writePlane(ZKPlane3f()));
    EXPECT_TRUE(closed.writeBBox3f(ZKBBox3f()));
    ZKPlane3f plane;
    EXPECT_TRUE(closed.readPlane(plane));
    ZKBBox3f box;
    EXPECT_TRUE(closed.readBBox3f(box));
    EXPECT_TRUE(closed.writeEmptyBloc(3));
    EXPECT_TRUE(closed.rewriteBlocSize());
    EXPECT_TRUE(closed.endWriteBloc(true));
    ZKBinFileBlocHeader header{1, 8};
    EXPECT_TRUE(closed.endReadBloc(header));
    closed.rewindReadStringC(ZKStringC("abc")); // nothing to rewind
    closed.rewindReadStringW(ZKStringW("abc"));
    // Everything else fails.
    EXPECT_FALSE(closed.writeBlocHeader(header));
    EXPECT_FALSE(closed.readBlocHeader(header));
    ZKBinaryFile::ReadBlocData data;
    data.m_startPosition = 12;
    EXPECT_FALSE(closed.readBlocHeader(header, data));
    EXPECT_EQ(data.m_startPosition, -1);
    EXPECT_FALSE(closed.skipBloc(header));
    EXPECT_FALSE(closed.skipBloc(header, data));
    EXPECT_FALSE(closed.endReadBloc(header, data));
    EXPECT_FALSE(closed.writeStringC(ZKStringC("x")));
    EXPECT_FALSE(closed.writeStringW(ZKStringW("x")));
    ZKStringW w;
    EXPECT_FALSE(closed.readStringW(w));
    ZKArray<ZKStringC> list{"kept"};
    EXPECT_FALSE(closed.readStringCArray(list));
    EXPECT_FALSE(closed.writeStringCArray(list));
    EXPECT_EQ(list.size(), 1);
    ZKBoolArray bits(2, true);
    EXPECT_FALSE(closed.writeBoolArray(bits));
    EXPECT_FALSE(closed.readBoolArray(bits));
    EXPECT_EQ(closed.readClassTypeAndCreateObj(), nullptr);
}

TEST_F(BinaryFileTest, BoolArraysAreOneBytePerElement) {
    ZKBoolArray bits(10, false);
    bits.set(1, 1);
    bits.set(9, 1);
    EXPECT_EQ(written([&](ZKBinaryFile& f) { f.writeBoolArray(bits); }),
              "0a 00 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00 01");
    EXPECT_EQ(written([&](ZKBinaryFile& f) {
                  f.setSizeAs64Bits(false);
                  f.writeBoolArray(ZKBoolArray());
              }),
              "00 00 00 00");

    const ZKStringW p = path("bits.bin");
    {
        ZKBinaryFile f(p, "wb");
        f.writeBoolArray(bits);
        f.writeBoolArray(bits);
        f.writeInt(77);
        f.setSizeAs64Bits(false);
        f.writeBoolArray(bits);
    }
    ZKBinaryFile f(p, "rb");
    ZKBoolArray back(10, false);
    back.set(0, 1); // cleared because the size already matches
    EXPECT_TRUE(f.readBoolArray(back));
    EXPECT_EQ(back.size(), 10);
    EXPECT_FALSE(back.get(0));
    EXPECT_TRUE(back.get(1));
    EXPECT_TRUE(back.get(9));
    EXPECT_EQ(back.countBitSet(), 2);
    EXPECT_FALSE(f.skipBoolArray()); // kept inverted: false when skipped
    int marker = 0;
    EXPECT_TRUE(f.readInt(marker));
    EXPECT_EQ(marker, 77);
    f.setBoolArrayCountAs32Bits(true);
    ZKBoolArray older(3, false);
    EXPECT_TRUE(f.readBoolArray(older));
    EXPECT_EQ(older.size(), 10);
    EXPECT_TRUE(older.get(9));

    // A count beyond the end fails before allocating and leaves the array alone.
    writeRaw(QByteArray::fromHex("ffffffff0f000000"
                                 "0101"));
    ZKBinaryFile raw(path("raw.bin"), "rb");
    ZKBoolArray untouched(4, false);
    untouched.set(2, 1);
    EXPECT_FALSE(raw.readBoolArray(untouched));
    EXPECT_EQ(untouched.size(), 4);
    EXPECT_TRUE(untouched.get(2));
}

TEST_F(BinaryFileTest, ObjectsAreRecreatedByClassName) {
    SavedShape shape;
    const ZKStringW p = path();
    {
        ZKBinaryFile f(p, "wb");
        EXPECT_TRUE(f.writeClassType(&shape));
        EXPECT_TRUE(f.writeClassType(nullptr)); // the empty name
        f.writeStringC("NotARegisteredClass");
        f.writeInt(5);
    }
    QFile raw(p);
    raw.open(QIODevice::ReadOnly);
    EXPECT_EQ(raw.readAll().toHex(' ').left(3 * 14 - 1),
              "0a 00 00 00 53 61 76 65 64 53 68 61 70 65");

    ZKBinaryFile f(p, "rb");
    std::unique_ptr<ZKObject> made(f.readClassTypeAndCreateObj());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getClassType(), SavedShape::getClassTypeStatic());
    EXPECT_EQ(f.readClassTypeAndCreateObj(), nullptr);
    EXPECT_EQ(f.readClassTypeAndCreateObj(), nullptr); // unknown name, record consumed
    int after = 0;
    EXPECT_TRUE(f.readInt(after));
    EXPECT_EQ(after, 5);

    ZKBinaryFile closed;
    EXPECT_TRUE(closed.writeClassType(&shape)); // kept: always true
}

TEST_F(BinaryFileTest, BlocsAreSizePatchedAndNest) {
    EXPECT_EQ(written([](ZKBinaryFile& f) { EXPECT_TRUE(f.writeEmptyBloc(7)); }),
              "07 00 00 00 08 00 00 00");
    EXPECT_EQ(written([](ZKBinaryFile& f) {
                  f.writeBlocHeader(ZKBinFileBlocHeader{1, 0});
                  f.writeInt(1);
                  f.writeDouble(0);
                  EXPECT_TRUE(f.endWriteBloc(true));
              }).left(23),
              "01 00 00 00 14 00 00 00"); // 20 bytes in all

    const ZKStringW p = path("nested.bin");
    {
        ZKBinaryFile f(p, "wb");
        f.writeBlocHeader(ZKBinFileBlocHeader{10, 0});
        f.writeInt(1);
        f.writeBlocHeader(ZKBinFileBlocHeader{11, 0});
        f.writeStringC("inner");
        f.endWriteBloc(true);
        f.writeEmptyBloc(12);
        f.endWriteBloc(true);
        f.writeBlocHeader(ZKBinFileBlocHeader{20, 99});
        f.endWriteBloc(false); // the placeholder stays
        f.writeInt(-1);
    }
    ZKBinaryFile f(p, "rb");
    ZKBinFileBlocHeader outer, inner, other;
    ZKBinaryFile::ReadBlocData outerData;
    ASSERT_TRUE(f.readBlocHeader_CheckId(outer, outerData, 10));
    EXPECT_EQ(outerData.m_startPosition, 0);
    EXPECT_EQ(outer.size, 8u + 4 + (8 + 4 + 5) + 8);
    int one = 0;
    f.readInt(one);
    EXPECT_FALSE(f.readBlocHeader_CheckId(inner, 99)); // consumed anyway
    EXPECT_EQ(inner.size, 17u);
    EXPECT_TRUE(f.skipBloc(inner));
    EXPECT_TRUE(f.endReadBloc(inner));
    // Read too little of the outer bloc: endReadBloc resynchronises.
    EXPECT_FALSE(f.endReadBloc(outer, outerData));
    EXPECT_EQ(ftell(f.getFile()), long(outer.size));
    ZKBinaryFile::ReadBlocData otherData;
    ASSERT_TRUE(f.readBlocHeader(other, otherData));
    EXPECT_EQ(other.size, 99u);
    EXPECT_EQ(otherData.m_startPosition, long(outer.size));
    f.skipData(-8);
    ASSERT_TRUE(f.readBlocHeader(other, otherData));
    other.size = 8;
    EXPECT_TRUE(f.endReadBloc(other, otherData));
    int last = 0;
    EXPECT_TRUE(f.readInt(last));
    EXPECT_EQ(last, -1);
    EXPECT_TRUE(f.skipBloc(outer, outerData));
    EXPECT_EQ(ftell(f.getFile()), long(outer.size));
}

TEST_F(BinaryFileTest, OpenCloseAndModes) {
    ZKBinaryFile f;
    EXPECT_FALSE(f.isOpen());
    EXPECT_EQ(f.getReadWriteCase(), 0);
    EXPECT_FALSE(f.open(ZKStringW(), "rb"));
    EXPECT_FALSE(f.open(path("missing.bin"), "rb"));
    f.setStringWMode(2);
    f.setSizeAs64Bits(false);
    f.setBoolArrayCountAs32Bits(true);
    ASSERT_TRUE(f.open(path(), "ab"));
    EXPECT_EQ(f.getReadWriteCase(), 2);
    EXPECT_EQ(f.getModeStr(), "ab");
    // Opening resets the string mode and both size flags.
    EXPECT_EQ(f.getStringWMode(), 0);
    EXPECT_TRUE(f.getSizeAs64Bits());
    EXPECT_FALSE(f.getBoolArrayCountAs32Bits());
    ASSERT_TRUE(f.open(path(), "r+b"));
    EXPECT_EQ(f.getReadWriteCase(), 1);
    f.close();
    EXPECT_TRUE(f.getModeStr().isEmpty());
    EXPECT_EQ(f.getReadWriteCase(), 0);
    f.close();
    EXPECT_FALSE(f.isOpen());
}

TEST_F(BinaryFileTest, EveryTruncationOfAValidFileFailsCleanly) {
    const ZKStringW p = path("full.bin");
    ZKBoolArray bits(20, false);
    bits.set(3, 1);
    {
        ZKBinaryFile f(p, "wb");
        f.writeBlocHeader(ZKBinFileBlocHeader{1, 0});
        f.writeClassType(nullptr);
        f.writeStringC("hello");
        f.writeStringW(ZKStringW(QString::fromUtf8("w\xc3\xa9")));
        f.writeStringCArray(ZKArray<ZKStringC>{"a", "bc"});
        f.writeBoolArray(bits);
        f.writeDouble(2.5);
        f.writeBoolsAsChar(true, true, false);
        f.endWriteBloc(true);
    }
    QFile full(p);
    full.open(QIODevice::ReadOnly);
    const QByteArray bytes = full.readAll();

    auto readAll = [](ZKBinaryFile& f) {
        ZKBinFileBlocHeader h;
        ZKBinaryFile::ReadBlocData d;
        bool ok = f.readBlocHeader(h, d);
        ZKObject* none = f.readClassTypeAndCreateObj();
        ok = none == nullptr && ok;
        ZKStringC s;
        ok = f.readStringC(s) && ok;
        ZKStringW w;
        ok = f.readStringW(w) && ok;
        ZKArray<ZKStringC> list;
        ok = f.readStringCArray(list) && ok;
        ZKBoolArray b;
        ok = f.readBoolArray(b) && ok;
        double d2 = 0;
        ok = f.readDouble(d2) && ok;
        bool x, y, z;
        ok = f.readBoolsAsChar(x, y, z) && ok;
        f.endReadBloc(h, d);
        return ok;
    };
    {
        ZKBinaryFile f(p, "rb");
        EXPECT_TRUE(readAll(f));
    }
    for (int cut = 0; cut < bytes.size(); ++cut) {
        const ZKStringW cutPath = path("cut.bin");
        QFile out(cutPath);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(bytes.left(cut));
        out.close();
        ZKBinaryFile f(cutPath, "rb");
        EXPECT_FALSE(readAll(f)) << "cut at " << cut;
    }
}
