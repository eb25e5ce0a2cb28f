#include "ZKTestSupport.h"
#include "ZKTokenValueFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

namespace {

class RecordingFile : public ZKTokenValueFile {
public:
    void onTokenValue(const ZKStringW& token, const ZKStringW& value) override {
        m_seen.emplace_back(token, value);
    }
    std::vector<std::pair<QString, QString>> m_seen;
};

class TokenValueFileTest : public ::testing::Test {
protected:
    ZKStringW path(const char* name = "settings.txt") const {
        return ZKStringW(m_dir.filePath(QString::fromLatin1(name)));
    }
    ZKStringW writeText(const QByteArray& text, const char* name = "settings.txt") {
        EXPECT_TRUE(zkWriteFile(path(name), text));
        return path(name);
    }
    QByteArray readText(const char* name = "settings.txt") const { return zkReadFile(path(name)); }
    QTemporaryDir m_dir;
};

} // namespace

TEST_F(TokenValueFileTest, LinesSplitAtTheFirstEqualSignWithoutTrimming) {
    RecordingFile file;
    const ZKStringW p = writeText("a=b=c\n key = 1\r\n# comment\n\nnoequal\n=orphan\nflag=\n"
                                  "caf\xc3\xa9=\xe2\x82\xac\n");
    EXPECT_TRUE(file.bufferedParseFile(p));
    ASSERT_EQ(file.m_seen.size(), 5u);
    EXPECT_EQ(file.m_seen[0], std::make_pair(QString("a"), QString("b=c")));
    EXPECT_EQ(file.m_seen[1], std::make_pair(QString(" key "), QString(" 1")));
    EXPECT_EQ(file.m_seen[2], std::make_pair(QString(), QString("orphan")));
    EXPECT_EQ(file.m_seen[3], std::make_pair(QString("flag"), QString()));
    EXPECT_EQ(file.m_seen[4].first, QString::fromUtf8("caf\xc3\xa9"));
    EXPECT_EQ(file.m_seen[4].second, QString::fromUtf8("\xe2\x82\xac"));
    EXPECT_EQ(file.getCount(), 5);
    EXPECT_EQ(file.getNbEmptyValues(), 1); // only a non-empty token counts

    ZKStringC bytes;
    EXPECT_TRUE(file.getStringC("caf\xc3\xa9", bytes));
    EXPECT_EQ(bytes, ZKStringC("\xe2\x82\xac"));
    EXPECT_FALSE(file.hasToken("key"));
    EXPECT_TRUE(file.hasToken(" key "));
    bool flag = false;
    EXPECT_TRUE(file.getBool("flag", flag));
    EXPECT_TRUE(flag); // the empty value is true
    ZKStringW w;
    EXPECT_TRUE(file.getStringW(ZKStringW(QString::fromUtf8("caf\xc3\xa9")), w));
    EXPECT_EQ(w, QString::fromUtf8("\xe2\x82\xac"));
}

TEST_F(TokenValueFileTest, ReadFileWithoutBufferingOnlyCallsTheHook) {
    RecordingFile file;
    EXPECT_TRUE(file.readFile(writeText("x=1\ny=2")));
    EXPECT_EQ(file.m_seen.size(), 2u);
    EXPECT_TRUE(file.isEmpty());
    EXPECT_FALSE(file.readFile(path("missing.txt")));
}

TEST_F(TokenValueFileTest, BooleansAreLenient) {
    for (const char* falseValue : {"NO", "0", "False"})
        EXPECT_FALSE(ZKTokenValueFile::valueAsBool(ZKStringC(falseValue))) << falseValue;
    for (const char* trueValue : {"off", "", " 0", "nope"})
        EXPECT_TRUE(ZKTokenValueFile::valueAsBool(ZKStringW(trueValue))) << trueValue;
    EXPECT_FALSE(ZKTokenValueFile::valueAsBool(ZKStringW("fAlSe")));
}

TEST_F(TokenValueFileTest, QueriesTakeTheFirstPairAndNumbersDefaultToZero) {
    ZKTokenValueFile file;
    ASSERT_TRUE(file.bufferedParseFile(writeText("a=first\na=second\nn=42\nf=0.5\nbad=x1\n")));
    ZKStringC s;
    EXPECT_TRUE(file.getStringC("a", s));
    EXPECT_EQ(s, "first");
    int n = -1;
    EXPECT_TRUE(file.getInt("n", n));
    EXPECT_EQ(n, 42);
    EXPECT_TRUE(file.getInt("bad", n)); // still found
    EXPECT_EQ(n, 0);
    float f = 0;
    EXPECT_TRUE(file.getFloat("f", f));
    EXPECT_EQ(f, 0.5f);
    double d = 7;
    EXPECT_FALSE(file.getDouble("missing", d));
    EXPECT_EQ(d, 7.0);
    EXPECT_TRUE(file.getBool_("missing", true));
    EXPECT_FALSE(file.getBool_("missing", false));

    EXPECT_TRUE(file.rmvTokenValue("a"));
    EXPECT_TRUE(file.getStringC("a", s));
    EXPECT_EQ(s, "second");
    EXPECT_FALSE(file.rmvTokenValue("nothing"));
    EXPECT_EQ(file.getCount(), 4);

    // Pairs buffered before stay; clear() drops them.
    ASSERT_TRUE(file.bufferedParseFile(writeText("z=1\n", "more.txt")));
    EXPECT_EQ(file.getCount(), 5);
    file.clear();
    EXPECT_TRUE(file.isEmpty());
}

TEST_F(TokenValueFileTest, EditsAndWriteBack) {
    ZKTokenValueFile file;
    file.addTokenValue("count", 3);
    file.addTokenValue("name", ZKStringC("caf\xc3\xa9"));
    file.addTokenValue("wide", ZKStringW(QString::fromUtf8("\xe2\x82\xac")));
    file.addTokenValue("count", 4); // appended, not replaced
    file.setTokenValue("count", 5);
    file.setTokenValue("new", ZKStringW("v"));
    file.replaceToken("name", ZKStringW("n"));
    int n = 0;
    EXPECT_TRUE(file.getInt("count", n));
    EXPECT_EQ(n, 5);
    ZKStringC wideBytes;
    EXPECT_TRUE(file.getStringC("wide", wideBytes));
    EXPECT_EQ(wideBytes, "?"); // the byte form is Latin-1
    ZKStringW name;
    file.addTokenValue("accent", ZKStringC("caf\xc3\xa9"));
    EXPECT_TRUE(file.getStringW("accent", name));
    EXPECT_EQ(name, QString::fromUtf8("caf\xc3\xa9"));

    EXPECT_TRUE(file.writeBufferedTokens(path("out.txt")));
    EXPECT_EQ(readText("out.txt"), QByteArray("count=5\nname=n\nwide=\xe2\x82\xac\ncount=4\nnew=v\n"
                                              "accent=caf\xc3\xa9\n"));
    EXPECT_FALSE(file.writeBufferedTokens(path("no/such/folder/out.txt")));

    ZKTokenValueFile back;
    ASSERT_TRUE(back.bufferedParseFile(path("out.txt")));
    EXPECT_EQ(back.getCount(), file.getCount());
    ZKStringW wide;
    EXPECT_TRUE(back.getStringW("wide", wide));
    EXPECT_EQ(wide, QString::fromUtf8("\xe2\x82\xac"));
}

TEST_F(TokenValueFileTest, WritersProduceTheFixedLineFormats) {
    ZKTokenValueFile file;
    EXPECT_FALSE(file.writeInt("x", 1)); // no file: nothing written
    ASSERT_TRUE(file.open(ZKStringC(path().toUtf8()), "w"));
    file.writeBool("x", true);
    file.writeBool("y", false);
    file.writeFloat("f", 0.5f);
    file.writeDouble("d", -1.25);
    file.writeInt("i", -7);
    file.write("raw", "a=b");
    file.writeStringC("c", ZKStringC("bytes"));
    file.writeStringW(ZKStringW(QString::fromUtf8("t\xc3\xa9")),
                      ZKStringW(QString::fromUtf8("\xe2\x82\xac")));
    file.writeStringW(ZKStringC("k"), ZKStringW("v"));
    file.close();
    EXPECT_FALSE(file.writeBool("x", true));
    EXPECT_EQ(readText(), QByteArray("x=TRUE\ny=FALSE\nf=0.500000\nd=-1.250000\ni=-7\nraw=a=b\n"
                                     "c=bytes\nt\xc3\xa9=\xe2\x82\xac\nk=v\n"));
    EXPECT_FALSE(file.open(ZKStringW(), "w"));
    EXPECT_FALSE(file.isOpen());
}

TEST(ZKTokenValueFile, OnTokenValueIsTheFirstVirtualSlot) {
    // A virtual member pointer holds 1 + the byte offset of its slot
    // (Itanium C++ ABI): derived readers rely on the hook's place.
    const auto hook = &ZKTokenValueFile::onTokenValue;
    long long raw[2];
    static_assert(sizeof hook == sizeof raw);
    std::memcpy(raw, &hook, sizeof raw);
    EXPECT_EQ(raw[0], 1);
}

TEST_F(TokenValueFileTest, FormatIsAlwaysUtf8) {
    ZKTokenValueFile file;
    EXPECT_EQ(file.getFileFormat(), 1);
    file.setFileFormat(0); // kept: ignored
    EXPECT_EQ(file.getFileFormat(), 1);
}

TEST_F(TokenValueFileTest, LookupsAmongManyPairsKeepTheFirstMatchThroughEdits) {
    QByteArray text;
    for (int i = 0; i < 100; ++i)
        text += "k" + QByteArray::number(i % 40) + "=" + QByteArray::number(i) + "\n";
    ZKTokenValueFile file;
    ASSERT_TRUE(file.bufferedParseFile(writeText(text)));
    int v = -1;
    EXPECT_TRUE(file.getInt("k7", v));
    EXPECT_EQ(v, 7); // the first of k7's three pairs
    EXPECT_TRUE(file.rmvTokenValue("k7"));
    EXPECT_TRUE(file.getInt("k7", v));
    EXPECT_EQ(v, 47);
    EXPECT_TRUE(file.getInt("k39", v)); // pairs after the removed one moved down
    EXPECT_EQ(v, 39);
    file.addTokenValue("k39", 1000); // a later duplicate does not win
    file.addTokenValue("fresh", 5);
    EXPECT_TRUE(file.getInt("k39", v));
    EXPECT_EQ(v, 39);
    EXPECT_TRUE(file.getInt("fresh", v));
    EXPECT_EQ(v, 5);
    file.setTokenValue("k0", 9);
    EXPECT_TRUE(file.getInt("k0", v));
    EXPECT_EQ(v, 9);
    EXPECT_FALSE(file.hasToken("k40"));
    file.clear();
    EXPECT_FALSE(file.hasToken("k1"));
    file.addTokenValue("k1", 3);
    EXPECT_TRUE(file.getInt("k1", v));
    EXPECT_EQ(v, 3);
}
