#include "ZKStringServer.h"
#include "ZKVec.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

ZKStringW utf8(const char* s) {
    return ZKStringW(QString::fromUtf8(s));
}

} // namespace

TEST(ZKStringServer, ExtractNumberSuffixTakesTheTrailingAsciiDigits) {
    ZKStringC suffix;
    int value = -1;
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("123"), suffix, &value));
    EXPECT_EQ(suffix, "123");
    EXPECT_EQ(value, 123);
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("Layer12"), suffix, &value));
    EXPECT_EQ(suffix, "12");
    EXPECT_EQ(value, 12);
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("x007"), suffix, nullptr));
    EXPECT_EQ(suffix, "007");

    // No suffix: false, and both outputs are left as they were.
    suffix = "keep";
    value = -7;
    EXPECT_FALSE(ZKStringServer::extractNumberSuffix(ZKStringC("a1b"), suffix, &value));
    EXPECT_FALSE(ZKStringServer::extractNumberSuffix(ZKStringC(""), suffix, &value));
    EXPECT_EQ(suffix, "keep");
    EXPECT_EQ(value, -7);

    ZKStringW wideSuffix;
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(utf8("\xc3\xa9t\xc3\xa9"
                                                         "45"),
                                                    wideSuffix, &value));
    EXPECT_EQ(wideSuffix, QStringLiteral("45"));
    EXPECT_EQ(value, 45);
    // Only ASCII digits count: ARABIC-INDIC DIGIT THREE is not one.
    EXPECT_FALSE(ZKStringServer::extractNumberSuffix(utf8("n\xd9\xa3"), wideSuffix, &value));
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(utf8("\xd9\xa3"
                                                         "8"),
                                                    wideSuffix, &value));
    EXPECT_EQ(wideSuffix, QStringLiteral("8"));
}

TEST(ZKStringServer, NumberSuffixTooLongForAnIntReadsAsZero) {
    ZKStringC suffix;
    int value = -1;
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("n2147483647"), suffix, &value));
    EXPECT_EQ(value, INT_MAX);
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("n2147483648"), suffix, &value));
    EXPECT_EQ(suffix, "2147483648");
    EXPECT_EQ(value, 0);
    EXPECT_TRUE(
        ZKStringServer::extractNumberSuffix(ZKStringC("n99999999999999999999999"), suffix, &value));
    EXPECT_EQ(value, 0);
    // Leading zeros do not make a value too long.
    EXPECT_TRUE(
        ZKStringServer::extractNumberSuffix(ZKStringC("n000000000000000000042"), suffix, &value));
    EXPECT_EQ(value, 42);
    ZKStringW wideSuffix;
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringW("w3000000000"), wideSuffix, &value));
    EXPECT_EQ(value, 0);
}

TEST(ZKStringServer, ReplaceOrAddNumberSuffixCutsOnlyForAnIntegerSuffix) {
    ZKStringC s("Layer12");
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(s, "7"));
    EXPECT_EQ(s, "Layer7");
    s = "Layer";
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(s, "7"));
    EXPECT_EQ(s, "Layer7");
    s = "Layer12";
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(s, "b"));
    EXPECT_EQ(s, "Layer12b");
    s = "a5";
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(s, ""));
    EXPECT_EQ(s, "a5");
    // A negative number reads as an integer; one too long for an int does not.
    s = "Layer12";
    ZKStringServer::replaceOrAddNumberSuffix(s, "-3");
    EXPECT_EQ(s, "Layer-3");
    s = "Layer12";
    ZKStringServer::replaceOrAddNumberSuffix(s, "99999999999");
    EXPECT_EQ(s, "Layer1299999999999");
    // The string may be its own suffix.
    s = "12";
    ZKStringServer::replaceOrAddNumberSuffix(s, s);
    EXPECT_EQ(s, "12");

    ZKStringW w(utf8("\xc3\x89tage3"));
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(w, ZKStringW("40")));
    EXPECT_EQ(w, utf8("\xc3\x89tage40"));
    ZKStringServer::replaceOrAddNumberSuffix(w, ZKStringW("x"));
    EXPECT_EQ(w, utf8("\xc3\x89tage40x"));
}

TEST(ZKStringServer, IncrementSuffixReplacesOrStartsTheNumber) {
    ZKStringC s("img009");
    ZKStringServer::incrementSuffix(s, 1, 1);
    EXPECT_EQ(s, "img10");
    s = "img";
    ZKStringServer::incrementSuffix(s, 1, 1);
    EXPECT_EQ(s, "img1");
    s = "v2";
    ZKStringServer::incrementSuffix(s, 3, 0);
    EXPECT_EQ(s, "v5");
    s = "";
    ZKStringServer::incrementSuffix(s, 1, 0);
    EXPECT_EQ(s, "0");
    s = "a5";
    ZKStringServer::incrementSuffix(s, -10, 0);
    EXPECT_EQ(s, "a-5");
    // A suffix too long for an int counts as 0.
    s = "n99999999999";
    ZKStringServer::incrementSuffix(s, 1, 7);
    EXPECT_EQ(s, "n1");
    // The sum wraps around instead of overflowing.
    s = "x2147483647";
    ZKStringServer::incrementSuffix(s, 1, 0);
    EXPECT_EQ(s, "x-2147483648");

    ZKStringW w("img9");
    ZKStringServer::incrementSuffix(w, 1, 1);
    EXPECT_EQ(w, QStringLiteral("img10"));
}

TEST(ZKStringServer, WideIncrementSuffixKeepsItsLatin1RoundTrip) {
    // Above U+00FF: Latin-1 turns the characters into "?".
    ZKStringW w(utf8("\xe2\x82\xac\xe6\x97\xa5"
                     "3"));
    ZKStringServer::incrementSuffix(w, 1, 1);
    EXPECT_EQ(w, QStringLiteral("??4"));
    // U+00E9 becomes the byte E9, which does not decode as UTF-8.
    w = utf8("\xc3\xa9"
             "1");
    ZKStringServer::incrementSuffix(w, 1, 1);
    EXPECT_NE(w, utf8("\xc3\xa9"
                      "2"));
    EXPECT_EQ(w, QString(QChar(QChar::ReplacementCharacter)) + QStringLiteral("2"));
    // The byte form keeps such bytes as they are.
    ZKStringC c("\xe9"
                "1");
    ZKStringServer::incrementSuffix(c, 1, 1);
    EXPECT_EQ(c, "\xe9"
                 "2");
}

TEST(ZKStringServer, IncrementNumberInStringDoesNothing) {
    ZKStringC c("a1b2");
    ZKStringServer::incrementNumberInString(c, 1, 1, 3);
    EXPECT_EQ(c, "a1b2");
    ZKStringW w("a1b2");
    ZKStringServer::incrementNumberInString(w, 1, 1, 3);
    EXPECT_EQ(w, QStringLiteral("a1b2"));
}

TEST(ZKStringServer, CommonPrefixLength) {
    using L = ZKArray<ZKStringC>;
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"alone"}), 5);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abc", "abd", "ab"}), 2);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abc", "xbc"}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abc", ""}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abcdef", "abcxef", "abzz"}), 2);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abcd", "abcd", "a"}), 1);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"Abc", "abc"}), 0);

    using W = ZKArray<ZKStringW>;
    EXPECT_EQ(
        ZKStringServer::computeBiggestCommonPrefix(W{ZKStringW("path/a"), ZKStringW("path/b")}), 5);
    // UTF-16 code units: U+1F600 and U+1F601 share their high surrogate.
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(
                  W{utf8("x\xf0\x9f\x98\x80"), utf8("x\xf0\x9f\x98\x81")}),
              2);
}

TEST(ZKStringServer, CommonSuffixLength) {
    using L = ZKArray<ZKStringC>;
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"one"}), 3);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"file_a.txt", "b.txt"}), 4);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"xyz", "yz", "z"}), 1);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"abc", "abd"}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"same", "same"}), 4);

    using W = ZKArray<ZKStringW>;
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(W{ZKStringW("a.PNG"), ZKStringW("b.png")}),
              0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(
                  W{utf8("\xc3\xa9t\xc3\xa9"), utf8("\xc3\xa0t\xc3\xa9")}),
              2);
}

TEST(ZKStringServer, VecAsStrFormatsEachComponent) {
    EXPECT_EQ(ZKStringServer::m_asStrFormat, "%f");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3f(1, 2.5f, -3), "%.2f"), "(1.00, 2.50, -3.00)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2.5, -3), "%.2f"), "(1.00, 2.50, -3.00)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(0.5f, -1), "%.1f"), "(0.5, -1.0)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2i(3, -4)), "(3, -4)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3)), "(1.000000, 2.000000, 3.000000)");
    // Single-precision components are printed as the doubles they convert to.
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(0.1f, 0), "%.10f"), "(0.1000000015, 0.0000000000)");
    // Literal percent signs, flags and the no-op "l" are fine.
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%%%+.0lf"), "(%+1, %+2)");

    ZKStringServer::setAsStrFloatFormat("%g");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3f(1, 0.25f, 3)), "(1, 0.25, 3)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(5, 6)), "(5, 6)");
    ZKStringServer::setAsStrFloatFormat("%f");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(5, 6)), "(5.000000, 6.000000)");
}

TEST(ZKStringServer, VecAsStrIsCutAt4095BytesAndRefusesForeignFormats) {
    const ZKStringC cut = ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3), "%04090.1f");
    EXPECT_EQ(cut.size(), 4095);
    EXPECT_TRUE(cut.startsWith("(0000"));
    EXPECT_TRUE(cut.endsWith("01.0, 00"));
    // Formats that do not take exactly one double give an empty string
    // instead of reading arguments that were never passed.
    for (const char* bad : {"%d", "%s", "%f %f", "", "%", "%*f", "%1$f", "%Lf", "%.99999f"})
        EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3), bad), "") << bad;
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%n"), "");
}
