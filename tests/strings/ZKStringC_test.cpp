#include "ZKStringC.h"

#include <gtest/gtest.h>

#include <string>

TEST(ZKStringC, FindFirst2AndFindLast2PickTheNearestOfTwoBytes) {
    const ZKStringC s("a\\b/c");
    EXPECT_EQ(s.findFirst2('/', '\\', 0), 1);
    EXPECT_EQ(s.findLast2('/', '\\'), 3);
    EXPECT_EQ(s.findFirst2('/', 'x', 0), 3);
    EXPECT_EQ(s.findFirst2('/', '\\', 2), 3);
    EXPECT_EQ(s.findLast2('/', '\\', 2), 1);
    EXPECT_EQ(ZKStringC("abc").findFirst2('/', '\\', 0), -1);
    EXPECT_EQ(ZKStringC("abc").findLast2('/', '\\'), -1);
}

TEST(ZKStringC, StartsAndEndsWithHandleEmptyShortAndCase) {
    EXPECT_TRUE(ZKStringC("abc").startsWith("", true));
    EXPECT_TRUE(ZKStringC("").startsWith("", false));
    EXPECT_FALSE(ZKStringC("ab").startsWith("abc", false));
    EXPECT_TRUE(ZKStringC("Image.PNG").endsWith(".png", false));
    EXPECT_FALSE(ZKStringC("Image.PNG").endsWith(".png", true));
    EXPECT_TRUE(ZKStringC("Image.PNG").startsWith("imAGE", false));
    EXPECT_FALSE(ZKStringC("Image.PNG").startsWith("imAGE", true));
    ZKStringC pattern("PNG");
    EXPECT_TRUE(ZKStringC("a.png").endsWith(pattern, false));
    EXPECT_EQ(pattern, "PNG"); // the argument is never changed
}

TEST(ZKStringC, CaseMappingChangesOnlyAsciiLetters) {
    ZKStringC s("\xc3\x84"
                "B1z");
    ZKStringC& self = s.toLower();
    EXPECT_EQ(&self, &s);
    EXPECT_EQ(s, ZKStringC("\xc3\x84"
                           "b1z"));
    EXPECT_EQ(s.toUpperCopy(), ZKStringC("\xc3\x84"
                                         "B1Z"));
    EXPECT_EQ(s, ZKStringC("\xc3\x84"
                           "b1z"));
    ZKStringC shared = s;
    shared.toUpper();
    EXPECT_EQ(s, ZKStringC("\xc3\x84"
                           "b1z")); // writing detaches from the copy
}

TEST(ZKStringC, CountsAndContains) {
    EXPECT_EQ(ZKStringC("aaaa").count(ZKStringC("aa")), 3); // overlapping occurrences
    EXPECT_EQ(ZKStringC("abcabc").count('c'), 2);
    EXPECT_TRUE(ZKStringC("abc").contains(ZKStringC("bc")));
    EXPECT_FALSE(ZKStringC("abc").contains('x'));
}

TEST(ZKStringC, AppendPatternReservesThenAppends) {
    ZKStringC s("x");
    s.appendPattern(3, "ab");
    EXPECT_EQ(s, "xababab");
    ZKStringC t("x");
    t.appendPattern(-2, "ab");
    EXPECT_EQ(t, "x");
}

TEST(ZKStringC, NumberFormattingUsesPrintfConversions) {
    EXPECT_EQ(ZKStringC::intStr(-42), "-42");
    EXPECT_EQ(ZKStringC::doubleStr(-0.0), "-0.000000");
    EXPECT_EQ(ZKStringC::doubleStr(1e20), "100000000000000000000.000000");
}

TEST(ZKStringC, PrintfKeepsAtMost4095Bytes) {
    const std::string big(5000, 'q');
    ZKStringC s("old content");
    s.printf("%s", big.c_str());
    EXPECT_EQ(s.size(), 4095);
    EXPECT_EQ(s, ZKStringC(std::string(4095, 'q').c_str()));
    s.printf("%d-%s", 7, "x");
    EXPECT_EQ(s, "7-x");
}

TEST(ZKStringC, ComparisonsStopAtTheFirstZeroByte) {
    EXPECT_EQ(ZKStringC::strcmp(nullptr, nullptr), 0);
    EXPECT_LT(ZKStringC::strcmp(nullptr, ""), 0);
    EXPECT_GT(ZKStringC::strcmp("b", "a"), 0);
    EXPECT_EQ(ZKStringC::strcmp_nocase("HeLLo", "hello"), 0);
    const ZKStringC withZero("ab\0cd", 5);
    const ZKStringC other("ab\0xy", 5);
    EXPECT_EQ(withZero.compare(other), 0);
    EXPECT_EQ(withZero.compare("ab"), 0);
    EXPECT_LT(ZKStringC("abc").compare("abd"), 0);
    EXPECT_EQ(ZKStringC("ABC").compareNoCase("abc"), 0);
    EXPECT_NE(ZKStringC("ABC").compare("abc"), 0);
}
