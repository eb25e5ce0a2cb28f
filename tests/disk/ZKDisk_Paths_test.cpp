#include "ZKDisk.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>

#include <string>

namespace {

ZKStringW wide(const char* utf8) {
    return QString::fromUtf8(utf8);
}

} // namespace

TEST(ZKDiskPaths, ByteCompareFileNameWritesSlashesThroughSharedStorage) {
    ZKStringC a("A\\b");
    const ZKStringC copyOfA = a;
    ZKStringC b("A/b");
    EXPECT_TRUE(ZKDisk::compareFileName(a, b));
    EXPECT_EQ(a, "A/b");
    EXPECT_EQ(copyOfA, "A/b"); // shares a's storage, so it sees the slash too
    EXPECT_FALSE(ZKDisk::compareFileName(ZKStringC("a/b"), ZKStringC("A/b")));
    EXPECT_FALSE(ZKDisk::compareFileName(ZKStringC("a/b"), ZKStringC("a/b/")));
    EXPECT_TRUE(ZKDisk::compareFileName(ZKStringC(""), ZKStringC()));
    // The second argument is written through as well.
    ZKStringC left("p\\q"), right("r\\s");
    const ZKStringC copyOfRight = right;
    EXPECT_FALSE(ZKDisk::compareFileName(left, right));
    EXPECT_EQ(left, "p/q");
    EXPECT_EQ(copyOfRight, "r/s");

    ZKStringC s("x\\y\\z");
    const ZKStringC unixified = ZKDisk::getUnixifiedFileName(s);
    EXPECT_EQ(unixified, "x/y/z");
    EXPECT_EQ(s, "x/y/z");
    ZKStringC t("p\\q");
    ZKStringC copyOfT = t;
    ZKDisk::unixifyFileName(t);
    EXPECT_EQ(copyOfT, "p/q");

    // Windows separators are an ordinary replace: copies keep their slashes.
    ZKStringC w("m/n");
    const ZKStringC copyOfW = w;
    ZKDisk::windowsifyFileName(w);
    EXPECT_EQ(w, "m\\n");
    EXPECT_EQ(copyOfW, "m/n");
    EXPECT_EQ(ZKDisk::getWindowsifiedFileName(copyOfW), "m\\n");
    EXPECT_EQ(copyOfW, "m/n");
}

TEST(ZKDiskPaths, ByteUnixifyNeverWritesIntoReadOnlyStorage) {
    // Raw data over a string literal lives in read-only memory: writing it
    // would crash, so the conversion happens on a private copy.
    const ZKStringC raw(QByteArray::fromRawData("r\\s", 3));
    EXPECT_EQ(ZKDisk::getUnixifiedFileName(raw), "r/s");
    EXPECT_EQ(raw, "r\\s");
    ZKStringC literal(QByteArrayLiteral("u\\v"));
    const ZKStringC copyOfLiteral = literal;
    ZKDisk::unixifyFileName(literal);
    EXPECT_EQ(literal, "u/v");
    EXPECT_EQ(copyOfLiteral, "u\\v");
    EXPECT_TRUE(ZKDisk::compareFileName(raw, ZKStringC(QByteArrayLiteral("r/s"))));
}

TEST(ZKDiskPaths, WideCompareFileNameWorksOnCopies) {
    const ZKStringW a("a\\b");
    EXPECT_TRUE(ZKDisk::compareFileName(a, ZKStringW("a/b")));
    EXPECT_EQ(a, "a\\b");
    EXPECT_FALSE(ZKDisk::compareFileName(ZKStringW("a/b"), ZKStringW("A/b")));
    ZKStringW s("x\\y");
    const ZKStringW copy = s;
    ZKDisk::unixifyFileName(s);
    EXPECT_EQ(s, "x/y");
    EXPECT_EQ(copy, "x\\y");
    EXPECT_EQ(ZKDisk::getUnixifiedFileName(copy), "x/y");
    EXPECT_EQ(ZKDisk::getWindowsifiedFileName(ZKStringW("a/b/c")), "a\\b\\c");
}

TEST(ZKDiskPaths, PreparedKeyComparesCaseSensitivelyAfterSlashConversion) {
    ZKStringW key("c:/dir/file.txt");
    ZKDisk::compareFileName_prepare(key);
    EXPECT_EQ(key, "c:/dir/file.txt");
    EXPECT_TRUE(ZKDisk::compareFileName_prepared1(key, ZKStringW("c:\\dir\\file.txt")));
    // Kept: preparing does not lower the case, so this differs, as it does
    // for compareFileName.
    EXPECT_FALSE(ZKDisk::compareFileName_prepared1(key, ZKStringW("C:\\DIR\\File.TXT")));
    ZKStringW mixed("A\\B");
    ZKDisk::compareFileName_prepare(mixed);
    EXPECT_EQ(mixed, "A/B");
}

TEST(ZKDiskPaths, RemoveFilenameInvalidCharsDropsTheNineCharacters) {
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringC("<a>|b")), "ab");
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringC("\\/:*?\"<>|")), "");
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringC("")), "");
    // Other bytes, non-ASCII and zero bytes included, stay.
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringC("\xc3\xa9*.\t")), "\xc3\xa9.\t");
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringC(QByteArray("a\0:b", 4))),
              ZKStringC(QByteArray("a\0b", 3)));

    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(ZKStringW("<a>|b")), "ab");
    // The wide form goes through 8 bits: the euro sign becomes "?" and is
    // then dropped as an invalid character; e-acute comes back undecodable.
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(wide("a\xe2\x82\xac:b")), "ab");
    EXPECT_EQ(ZKDisk::removeFilenameInvalidChars(wide("\xc3\xa9t\xc3\xa9")),
              QString(QChar(0xFFFD)) + "t" + QChar(0xFFFD));
}

TEST(ZKDiskPaths, RelativeMeansBeginsWithADot) {
    EXPECT_TRUE(ZKDisk::isRelativePath(ZKStringC("..\\x")));
    EXPECT_TRUE(ZKDisk::isRelativePath(ZKStringC(".hidden")));
    EXPECT_FALSE(ZKDisk::isRelativePath(ZKStringC("x/..")));
    EXPECT_FALSE(ZKDisk::isRelativePath(ZKStringC("")));
    EXPECT_TRUE(ZKDisk::isRelativePath(ZKStringW("./a")));
    EXPECT_FALSE(ZKDisk::isRelativePath(ZKStringW("")));
    EXPECT_FALSE(ZKDisk::isRelativePath(ZKStringW("/abs/.")));
}

TEST(ZKDiskPaths, AbsolutePathResolvesALeadingDotAgainstTheFolderItself) {
    // Kept: ".." is resolved against the folder itself, not its parent.
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("../x"), ZKStringW("/p/q"), false), "/p/q/x");
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("../x"), ZKStringW("/p/q/f.txt"), true), "/p/q/x");
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("./x"), ZKStringW("/p/q/"), false), "/p/q/x");
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW(".x"), ZKStringW("/p"), false), "/p/x");
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("/abs"), ZKStringW("/p/q"), false), "/abs");
    // A base file without a folder is used whole.
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("./x"), ZKStringW("f.txt"), true), "f.txt/x");
    // Every result is cleaned, paths without a leading dot included.
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("a//b/../c"), ZKStringW("/p"), false), "a/c");
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringW("."), ZKStringW("/p/q"), false), "/p/q");

    EXPECT_EQ(ZKDisk::absolutePath(ZKStringC("../x"), ZKStringC("/p/q/f.txt"), true), "/p/q/x");
    // Byte form: UTF-8 in, Latin-1 out.
    EXPECT_EQ(ZKDisk::absolutePath(ZKStringC("./\xc3\xa9"), ZKStringC("/p"), false), "/p/\xe9");
}

TEST(ZKDiskPaths, CleanPathIsQtsWithLatin1ForBytes) {
    EXPECT_EQ(ZKDisk::cleanPath(ZKStringW("a//b/./c/..")), "a/b");
    EXPECT_EQ(ZKDisk::cleanPath(ZKStringW("")), "");
    EXPECT_EQ(ZKDisk::cleanPath(ZKStringC("\xe9//d/")), "\xe9/d");
    EXPECT_EQ(ZKDisk::cleanPath(ZKStringC("///")), "/");
}

TEST(ZKDiskPaths, ConcatAddsASlashOnlyWithoutATrailingSeparator) {
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC("dir\\"), ZKStringC("f")), "dir\\f");
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC("dir"), ZKStringC("f")), "dir/f");
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC(""), ZKStringC("x")), "/x");
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC("a/"), ZKStringC("/b")), "a//b");
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC("a"), ZKStringC("")), "a/");
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringW("dir"), ZKStringW("f")), "dir/f");
    // Mixed forms decode the byte argument as UTF-8.
    EXPECT_EQ(ZKDisk::concatPathAndFileName(ZKStringC("d\xc3\xa9"), wide("\xe2\x82\xac")),
              wide("d\xc3\xa9/\xe2\x82\xac"));
    EXPECT_EQ(ZKDisk::concatPathAndFileName(wide("\xe2\x82\xac\\"), ZKStringC("f\xc3\xa9")),
              wide("\xe2\x82\xac\\f\xc3\xa9"));
}

TEST(ZKDiskPaths, FileNameComponentsSplitAtLastSeparatorAndLastDot) {
    // folder|name|extension
    const auto parts = [](const ZKStringC& path) {
        ZKStringC folder("old"), name("old"), extension("old");
        ZKDisk::getFileNameComponents(folder, name, extension, path);
        return folder + "|" + name + "|" + extension;
    };
    EXPECT_EQ(parts("a/b.c/d"), "a/b.c/|d|");
    EXPECT_EQ(parts("x.tar.gz"), "|x.tar|gz");
    EXPECT_EQ(parts(".profile"), "||profile");
    EXPECT_EQ(parts("c:\\d/e\\f.txt"), "c:\\d/e\\|f|txt");
    EXPECT_EQ(parts("///"), "///||");
    EXPECT_EQ(parts(""), "||");
    // Non-ASCII bytes pass through untouched.
    EXPECT_EQ(parts("\xc3\xa9/n\xc3\xa9.x"), "\xc3\xa9/|n\xc3\xa9|x");
    // An output may be the path itself.
    ZKStringC name, extension, path("p/q.r");
    ZKDisk::getFileNameComponents(name, extension, path, path);
    EXPECT_EQ(name + "|" + extension + "|" + path, "p/|q|r");

    ZKStringW wFolder, wName, wExtension;
    ZKDisk::getFileNameComponents(wFolder, wName, wExtension,
                                  wide("\xc3\xa9t\xc3\xa9\\d\xc3\xa9.\xe2\x82\xac"));
    EXPECT_EQ(wFolder + "|" + wName + "|" + wExtension,
              wide("\xc3\xa9t\xc3\xa9\\|d\xc3\xa9|\xe2\x82\xac"));
    EXPECT_EQ(ZKDisk::getParentFolder(ZKStringC("a/b/c.txt")), "a/b/");
    EXPECT_EQ(ZKDisk::getParentFolder(ZKStringW("c.txt")), "");
    EXPECT_EQ(ZKDisk::getFileNameName(ZKStringC("a/b/c.txt")), "c");
    EXPECT_EQ(ZKDisk::getFileNameName(ZKStringW("a\\b")), "b");
}

TEST(ZKDiskPaths, ExtensionIsEmptyWhenTheDotBelongsToAFolder) {
    EXPECT_EQ(ZKDisk::getFileNameExtension(ZKStringC("a.b/c")), "");
    EXPECT_EQ(ZKDisk::getFileNameExtension(ZKStringC("c.")), "");
    EXPECT_EQ(ZKDisk::getFileNameExtension(ZKStringC("c.TXT")), "TXT");
    EXPECT_EQ(ZKDisk::getFileNameExtension(ZKStringC("d/x.tar.gz")), "gz");
    EXPECT_EQ(ZKDisk::getFileNameExtension(ZKStringW("a.b/c")), "");
    EXPECT_EQ(ZKDisk::getFileNameExtension(wide("f.\xc3\xa9")), wide("\xc3\xa9"));
}

TEST(ZKDiskPaths, PathComponentsAndParentFolderKeepOrDropTheSeparator) {
    // folder|name
    const auto parts = [](const ZKStringC& path, bool keepSeparator) {
        ZKStringC folder("old"), name("old");
        ZKDisk::getPathComponents(folder, name, path, keepSeparator);
        return folder + "|" + name;
    };
    EXPECT_EQ(parts("a/b\\c.txt", true), "a/b\\|c.txt");
    EXPECT_EQ(parts("a/b\\c.txt", false), "a/b|c.txt");
    EXPECT_EQ(parts("bare.txt", true), "|bare.txt");
    EXPECT_EQ(parts("/", false), "|");

    // result|parent
    const auto parent = [](const ZKStringW& path, bool keepSeparator) {
        ZKStringW out("old");
        const bool found = ZKDisk::getParentFolderFromFilename(out, path, keepSeparator);
        ZKStringW inPlace = path;
        EXPECT_EQ(ZKDisk::getParentFolderFromFilename(inPlace, keepSeparator), found);
        EXPECT_EQ(inPlace, out);
        return ZKStringW(found ? "true|" : "false|") + out;
    };
    EXPECT_EQ(parent("a/b/c.txt", true), "true|a/b/");
    EXPECT_EQ(parent("a/b\\c.txt", false), "true|a/b");
    EXPECT_EQ(parent("bare", false), "false|bare");
    EXPECT_EQ(parent("/", false), "true|");
    EXPECT_EQ(parent("//", true), "true|//");
    ZKStringC out;
    EXPECT_TRUE(ZKDisk::getParentFolderFromFilename(out, ZKStringC("x\\y"), false));
    EXPECT_EQ(out, "x");

    ZKStringC path("a/b\\c");
    EXPECT_TRUE(ZKDisk::removeFolderFromFilename(path));
    EXPECT_EQ(path, "c");
    ZKStringW bare("bare");
    EXPECT_TRUE(ZKDisk::removeFolderFromFilename(bare));
    EXPECT_EQ(bare, "bare");
}

TEST(ZKDiskPaths, ChangeFileNameInPathReplacesNameAndExtension) {
    EXPECT_EQ(ZKDisk::changeFileNameInPath(ZKStringC("a\\b.txt"), ZKStringC("c")), "a\\c");
    EXPECT_EQ(ZKDisk::changeFileNameInPath(ZKStringC("b.txt"), ZKStringC("c")), "/c");
    EXPECT_EQ(ZKDisk::changeFileNameInPath(ZKStringW("a/b"), ZKStringW("c")), "a/c");
}

TEST(ZKDiskPaths, ByteSetExtensionAppendsUnlessPresentWideDoesNothing) {
    ZKStringC name("a.TXT");
    EXPECT_FALSE(ZKDisk::setExtension(name, ZKStringC("txt")));
    EXPECT_EQ(name, "a.TXT");
    EXPECT_FALSE(ZKDisk::setExtension(name, ZKStringC(".Txt")));
    name = "a.txt";
    EXPECT_TRUE(ZKDisk::setExtension(name, ZKStringC("png")));
    EXPECT_EQ(name, "a.txt.png");
    name = "atxt";
    EXPECT_TRUE(ZKDisk::setExtension(name, ZKStringC("txt")));
    EXPECT_EQ(name, "atxt.txt");
    name = "";
    EXPECT_TRUE(ZKDisk::setExtension(name, ZKStringC(".png")));
    EXPECT_EQ(name, ".png");

    // Kept: the wide form does nothing at all.
    ZKStringW wName("a");
    EXPECT_FALSE(ZKDisk::setExtension(wName, ZKStringW("png")));
    EXPECT_EQ(wName, "a");
    EXPECT_FALSE(ZKDisk::setExtension(wName, ZKStringW("")));
    EXPECT_EQ(wName, "a");
}

TEST(ZKDiskPathsDeathTest, ByteSetExtensionWithEmptyExtensionStopsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ZKStringC name("a");
    EXPECT_DEATH(ZKDisk::setExtension(name, ZKStringC()), "uint\\(i\\) < uint\\(size\\(\\)\\)");
    ZKStringC other("b.txt");
    EXPECT_DEATH(ZKDisk::changeExtension(other, ZKStringC("")),
                 "uint\\(i\\) < uint\\(size\\(\\)\\)");
}

TEST(ZKDiskPaths, HasExtensionIgnoresCaseAndTheDot) {
    EXPECT_TRUE(ZKDisk::hasExtension(ZKStringC("a.PNG"), ZKStringC("png")));
    EXPECT_TRUE(ZKDisk::hasExtension(ZKStringC("a.png"), ZKStringC(".png")));
    EXPECT_FALSE(ZKDisk::hasExtension(ZKStringC("apng"), ZKStringC("png")));
    EXPECT_FALSE(ZKDisk::hasExtension(ZKStringC("a.png"), ZKStringC("")));
    EXPECT_TRUE(ZKDisk::hasExtension(ZKStringW("b.Tar.GZ"), ZKStringW("tar.gz")));
    EXPECT_FALSE(ZKDisk::hasExtension(ZKStringW("b.png"), ZKStringW("")));
    EXPECT_TRUE(ZKDisk::hasExtension(ZKStringW("b.png"), ZKStringC("PNG")));
    // Wide names are compared on their 8-bit form: the euro sign reads "?".
    EXPECT_TRUE(ZKDisk::hasExtension(wide("x.\xe2\x82\xac"), ZKStringW(".?")));
}

TEST(ZKDiskPaths, ChangeExtensionByteAndWideRulesDiffer) {
    ZKStringC name("noext");
    EXPECT_TRUE(ZKDisk::changeExtension(name, ZKStringC("png")));
    EXPECT_EQ(name, "noext.png");
    ZKStringW wName("noext");
    EXPECT_TRUE(ZKDisk::changeExtension(wName, ZKStringW("png")));
    EXPECT_EQ(wName, "noext.png");

    // Kept: the wide form never looks at a dot in the extension.
    name = "a.txt";
    EXPECT_TRUE(ZKDisk::changeExtension(name, ZKStringC(".png")));
    EXPECT_EQ(name, "a.png");
    wName = "a.txt";
    EXPECT_TRUE(ZKDisk::changeExtension(wName, ZKStringW(".png")));
    EXPECT_EQ(wName, "a..png");

    // The byte form reports setExtension's result; the wide one is always true.
    name = "a.png.png";
    EXPECT_FALSE(ZKDisk::changeExtension(name, ZKStringC("PNG")));
    EXPECT_EQ(name, "a.png");
    wName = "a.";
    EXPECT_TRUE(ZKDisk::changeExtension(wName, ZKStringW("")));
    EXPECT_EQ(wName, "a.");
    // Neither form minds a dot that lies in a folder name.
    name = "dir.d/file";
    EXPECT_TRUE(ZKDisk::changeExtension(name, ZKStringC("x")));
    EXPECT_EQ(name, "dir.x");
    wName = "dir.d/file";
    EXPECT_TRUE(ZKDisk::changeExtension(wName, ZKStringW("x")));
    EXPECT_EQ(wName, "dir.x");

    ZKStringC abc("a.b.c");
    EXPECT_TRUE(ZKDisk::removeExtension(abc));
    EXPECT_EQ(abc, "a.b");
    ZKStringW plain("abc");
    EXPECT_FALSE(ZKDisk::removeExtension(plain));
    EXPECT_EQ(plain, "abc");
}

TEST(ZKDiskPaths, AddSuffixFormatsTheByteSuffixAndInsertsTheWideOneLiterally) {
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringC("pic.png"), ZKStringC("_100%%")),
              "pic_100%.png");
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringW("pic.png"), ZKStringW("_100%%")),
              "pic_100%%.png");
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringC("a.b.c"), ZKStringC("_x")), "a.b_x.c");
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringC("nodot"), ZKStringC("_x")), "nodot");
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringW("nodot"), ZKStringW("_x")), "nodot");
    EXPECT_EQ(ZKDisk::addSuffixToFileName(wide("\xc3\xa9.png"), wide("_\xe2\x82\xac")),
              wide("\xc3\xa9_\xe2\x82\xac.png"));
    // The formatted byte suffix is cut to 4095 bytes.
    const ZKStringC longSuffix(5000, 's');
    EXPECT_EQ(ZKDisk::addSuffixToFileName(ZKStringC("a.b"), longSuffix),
              ZKStringC("a") + ZKStringC(4095, 's') + ".b");
}

TEST(ZKDiskPaths, IncrementFileNameNumbersTheNameAndAlwaysAddsTheDot) {
    // Kept: a name without extension comes back ending in a dot.
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringC("a/img")), "a/img1.");
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringC("img9.png")), "img10.png");
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringC("dir\\v009.txt")), "dir\\v10.txt");
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringC("d.1/x")), "d.1/x1.");
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringW("a/b2.tar.gz")), "a/b2.tar1.gz");
    EXPECT_EQ(ZKDisk::incrementFileName(wide("\xc3\xa9/x1.txt")), wide("\xc3\xa9/x2.txt"));
    EXPECT_EQ(ZKDisk::incrementFileName(ZKStringW("")), "1.");
}
