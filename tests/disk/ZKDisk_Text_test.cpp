#include "ZKDisk.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray("<missing>");
    return f.readAll();
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
    EXPECT_EQ(readAll(path), QByteArray("ok"));
    // The name on disk is the UTF-8 encoding of the wide name.
    const QByteArray utf8Path =
        QFile::encodeName(dir.path()) + "/d\xc3\xa9j\xc3\xa0 \xe2\x82\xac.txt";
    FILE* check = std::fopen(utf8Path.constData(), "rb");
    ASSERT_NE(check, nullptr);
    char buffer[8] = {};
    EXPECT_EQ(std::fread(buffer, 1, sizeof buffer, check), 2u);
    std::fclose(check);
    EXPECT_STREQ(buffer, "ok");

    EXPECT_EQ(fopenUtf8(ZKStringW(), "rb"), ZKDisk::s_invalidFile);
    EXPECT_EQ(fopenUtf8(ZKStringW(""), "w"), ZKDisk::s_invalidFile);
    EXPECT_EQ(fopenUtf8(ZKStringW(dir.filePath("missing.txt")), "rb"), ZKDisk::s_invalidFile);
}
