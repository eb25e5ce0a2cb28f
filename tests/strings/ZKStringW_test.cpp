#include "ZKStringW.h"

#include <gtest/gtest.h>

#include <string>

TEST(ZKStringW, ByteToWideIsUtf8ButWideToByteIsLatin1) {
    const ZKStringC utf8("\xc3\xa9");
    const ZKStringW wide(utf8);
    ASSERT_EQ(wide.size(), 1);
    EXPECT_EQ(wide.at(0), QChar(0xE9));
    EXPECT_EQ(wide.getAsStringC(), ZKStringC("\xe9"));
    ZKStringC out("stale");
    wide.convertTo(out);
    EXPECT_EQ(out, ZKStringC("\xe9"));
    EXPECT_EQ(wide.toUtf8(), utf8);

    ZKStringW euro;
    euro.convertFrom(ZKStringC("a\xe2\x82\xac"
                               "b"));
    EXPECT_EQ(euro.size(), 3);
    EXPECT_EQ(euro.getAsStringC(), "a?b");
}

TEST(ZKStringW, ConversionsStopAtTheFirstZero) {
    EXPECT_EQ(ZKStringW(ZKStringC("ab\0cd", 5)), QStringLiteral("ab"));
    EXPECT_EQ(ZKStringW(QString::fromLatin1("ab\0cd", 5)).getAsStringC(), "ab");
}

TEST(ZKStringW, FromUtf8KeepsNullAndStopsAtZero) {
    ZKStringW s("previous");
    s.fromUtf8(ZKStringC());
    EXPECT_TRUE(s.isNull());
    ZKStringW::fromUtf8(s, ZKStringC(""));
    EXPECT_FALSE(s.isNull());
    EXPECT_TRUE(s.isEmpty());
    ZKStringW::fromUtf8(s, ZKStringC("x\xc3\xa9\0z", 5));
    EXPECT_EQ(s, QString::fromUtf8("x\xc3\xa9"));
    ZKStringC back;
    ZKStringW::toUtf8(back, s);
    EXPECT_EQ(back, ZKStringC("x\xc3\xa9"));
}

TEST(ZKStringW, FindFirst2AndFindLast2) {
    const ZKStringW s("xBa");
    EXPECT_EQ(s.findFirst2('a', 'b', 0, false), 1);
    EXPECT_EQ(s.findFirst2('a', 'b', 0, true), 2);
    // When a is missing the search for b decides, -1 included.
    EXPECT_EQ(s.findFirst2('q', 'B', 0, true), 1);
    EXPECT_EQ(s.findFirst2('q', 'r', 0, true), -1);
    EXPECT_EQ(s.findFirst2(QChar('a'), QChar('x'), 0, true), 0);
    EXPECT_EQ(ZKStringW("a/b\\c").findLast2('/', '\\'), 3);
    EXPECT_EQ(ZKStringW("a/b\\c").findLast2('q', '/'), 1);
    // A char is its Latin-1 character.
    EXPECT_EQ(ZKStringW(QString::fromUtf8("a\xc3\xa9")).findFirst2('\xe9', 'z'), 1);
}

TEST(ZKStringW, CaseChangeLeavesTheTextUnchangedOnPurpose) {
    ZKStringW s("abc");
    ZKStringW& self = s.toUpper();
    EXPECT_EQ(&self, &s);
    EXPECT_EQ(s, QStringLiteral("abc"));
    EXPECT_EQ(s.toUpperCopy(), QStringLiteral("abc"));
    ZKStringW t("ABC");
    t.toLower();
    EXPECT_EQ(t, QStringLiteral("ABC"));
    EXPECT_EQ(t.toLowerCopy(), QStringLiteral("ABC"));
}

TEST(ZKStringW, ComparisonsAndPrefixes) {
    EXPECT_TRUE(ZKStringW("Hello").startsWith(ZKStringW("hE"), false));
    EXPECT_FALSE(ZKStringW("Hello").startsWith(ZKStringW("hE"), true));
    EXPECT_TRUE(ZKStringW("Hello").endsWith(ZKStringW("LLO"), false));
    EXPECT_EQ(ZKStringW("abc").compareNoCase(ZKStringW("ABC")), 0);
    EXPECT_NE(ZKStringW("abc").compare(ZKStringW("ABC")), 0);
    // A zero character does not end the text.
    EXPECT_LT(ZKStringW(QString::fromLatin1("ab\0x", 4))
                  .compare(ZKStringW(QString::fromLatin1("ab\0y", 4))),
              0);
}

TEST(ZKStringW, FormattersDifferInTheirBound) {
    const std::string big(5000, 'z');
    ZKStringW bounded = ZKStringW::SPrintf("%s", big.c_str());
    EXPECT_EQ(bounded.size(), 4095);
    ZKStringW unbounded;
    unbounded.printf("%s", big.c_str());
    EXPECT_EQ(unbounded.size(), 5000);
    EXPECT_EQ(ZKStringW::SPrintf("%s-%d", "\xc3\xa9", 3), QString::fromUtf8("\xc3\xa9-3"));
    EXPECT_EQ(ZKStringW::intStr(-7), QStringLiteral("-7"));
    EXPECT_EQ(ZKStringW::doubleStr(2.25), QStringLiteral("2.250000"));
}

TEST(ZKStringW, NumberedArgumentsAreSubstitutedInOnePass) {
    EXPECT_EQ(ZKStringW("%2-%1").arg("x", "y"), QStringLiteral("y-x"));
    EXPECT_EQ(ZKStringW("%1 %2").arg("%2", "b"), QStringLiteral("%2 b"));
    EXPECT_EQ(ZKStringW("%3%1").arg(ZKStringW("a")), QStringLiteral("%3a"));
    EXPECT_EQ(ZKStringW("%1%2%3%4%5").arg("a", "b", "c", "d", "e"), QStringLiteral("abcde"));
    EXPECT_EQ(ZKStringW("%5%4%3%2").arg("a", "b", "c", "d"), QStringLiteral("dcba"));
}

TEST(ZKStringW, AppendPatternIgnoresNegativeCounts) {
    ZKStringW s("x");
    s.appendPattern(2, ZKStringW("ab"));
    EXPECT_EQ(s, QStringLiteral("xabab"));
    s.appendPattern(-3, ZKStringW("ab"));
    EXPECT_EQ(s, QStringLiteral("xabab"));
}
