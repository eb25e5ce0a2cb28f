#include "ZKArrayIO.h"
#include "ZKTestSupport.h"
#include "ZKVec.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>

namespace {

ZKStringC pathIn(const QTemporaryDir& dir, const char* name) {
    return ZKStringC(dir.filePath(QString::fromLatin1(name)).toUtf8());
}

} // namespace

TEST(ZKArrayIO, IntArrayText) {
    const ZKArray<int> a{1, 2, 3};
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a), "[1, 2, 3]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, 2), "[1, 2...]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, 2, true), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, 3, true), "[1, 2, 3]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, 0), "[]");
    // A negative maxCount other than -1 cuts, yet shows the first element.
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, -5), "[1...]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(a, -2, true), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<int>{}, -5), "[]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<int>{}, 0, true), "[]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKStaticArray<int>{-7}), "[-7]");
}

TEST(ZKArrayIO, FloatingArrayText) {
    const ZKArray<float> f{0.5f, 1.25f};
    EXPECT_EQ(ZKArrayIO::arrayAsStr(f, "%.2f"), "[0.50, 1.25]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(f, "%g", 1), "[0.5...]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(f, "%g", 1, true), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(f, "%g", -3), "[0.5...]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<double>{1e10, -2}, "%g"), "[1e+10, -2]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<float>{0.1f}, "%.9f"), "[0.100000001]");
    // One element is formatted into 4096 bytes, of which 4095 are kept.
    const ZKStringC wide = ZKArrayIO::arrayAsStr(ZKArray<double>{1.0}, "%5000.1f");
    EXPECT_EQ(wide.size(), 4095 + 2);
}

TEST(ZKArrayIO, Vec3TextIsUnfinishedOnPurpose) {
    const ZKArray<ZKVec3f> v{ZKVec3f(1, 2, 3), ZKVec3f(4, 5, 6)};
    EXPECT_EQ(ZKArrayIO::arrayAsStr(v, "%g"), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(v, "%g", 1, true), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(v, "%g", 0), "[]");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<ZKVec3f>{}, "%g"), "[]");
    // Only a count shown of 0 gives "[]", not a negative maxCount.
    EXPECT_EQ(ZKArrayIO::arrayAsStr(v, "%g", -5), "");
    EXPECT_EQ(ZKArrayIO::arrayAsStr(ZKArray<ZKVec3f>{}, "%g", -5), "");
}

TEST(ZKArrayIO, BoolArrayCsv) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    ZKBoolArray tags(3, false);
    tags.set(1, 1);
    const ZKStringC path = pathIn(dir, "tags.csv");
    ZKArrayIO::saveBoolArray_CSV(path, tags);
    EXPECT_EQ(zkReadFile(dir.filePath("tags.csv")), "size;3\n0;0\n1;1\n2;0\n");

    ZKArrayIO::saveBoolArray_CSV(path, ZKBoolArray());
    EXPECT_EQ(zkReadFile(dir.filePath("tags.csv")), "size;0\n");

    ZKArrayIO::saveBoolArray_CSV(ZKStringC(), tags); // nothing happens
    ZKArrayIO::saveBoolArray_CSV(pathIn(dir, "no/such/folder.csv"), tags);
    EXPECT_FALSE(QFile::exists(dir.filePath("no/such/folder.csv")));

    // kept: loading the CSV form does nothing
    ZKArrayIO::saveBoolArray_CSV(path, tags);
    ZKBoolArray loaded(5, true);
    ZKArrayIO::loadBoolArray_CSV(path, loaded);
    EXPECT_EQ(loaded.size(), 5);
    EXPECT_EQ(loaded.countBitSet(), 5);
}

TEST(ZKArrayIO, BoolArrayBinary) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    ZKBoolArray tags(20, false); // 3 storage bytes
    tags.set(0, 1);
    tags.set(9, 2);
    tags.resize(10); // the size shrinks, the storage stays
    const ZKStringC path = pathIn(dir, "tags.bin");
    ZKArrayIO::saveBoolArray_Binary(path, tags);

    const long long header[2] = {10, 3};
    QByteArray expected(reinterpret_cast<const char*>(header), sizeof header);
    expected.append(char(0x01)).append(char(0x06)).append(char(0x00));
    EXPECT_EQ(zkReadFile(dir.filePath("tags.bin")), expected);

    ZKArrayIO::saveBoolArray_Binary(pathIn(dir, "empty.bin"), ZKBoolArray());
    const long long emptyHeader[2] = {0, 0};
    EXPECT_EQ(zkReadFile(dir.filePath("empty.bin")),
              QByteArray(reinterpret_cast<const char*>(emptyHeader), sizeof emptyHeader));

    // kept: loading reads the header, then always leaves an empty array
    ZKBoolArray loaded(7, true);
    ZKArrayIO::loadBoolArray_Binary(path, loaded);
    EXPECT_EQ(loaded.size(), 0);
    EXPECT_EQ(loaded.getDynMemoryUsed(), 0);

    ZKBoolArray untouched(7, true); // a missing file or empty path: unchanged
    ZKArrayIO::loadBoolArray_Binary(pathIn(dir, "missing.bin"), untouched);
    ZKArrayIO::loadBoolArray_Binary(ZKStringC(), untouched);
    EXPECT_EQ(untouched.size(), 7);

    ASSERT_TRUE(zkWriteFile(dir.filePath("short.bin"), "abc"));
    ZKArrayIO::loadBoolArray_Binary(pathIn(dir, "short.bin"), untouched);
    EXPECT_EQ(untouched.size(), 0);
}
