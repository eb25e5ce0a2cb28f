#include "ZKStringServer.h"
#include "ZKVec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

ZKStringW utf8(const char* s) {
    return ZKStringW(QString::fromUtf8(s));
}

// "suffix=value", or "none" when extractNumberSuffix finds nothing (and must
// then leave both outputs as they were).
template <typename Str> std::string suffixOf(const Str& s) {
    Str suffix("before");
    int value = -1;
    if (ZKStringServer::extractNumberSuffix(s, suffix, &value))
        return suffix.toStdString() + "=" + std::to_string(value);
    EXPECT_EQ(suffix, Str("before"));
    EXPECT_EQ(value, -1);
    return "none";
}

template <typename Str> std::string replaced(Str s, const char* suffix) {
    EXPECT_TRUE(ZKStringServer::replaceOrAddNumberSuffix(s, Str(suffix)));
    return s.toStdString();
}

template <typename Str> std::string incremented(Str s, int increment, int startValue) {
    ZKStringServer::incrementSuffix(s, increment, startValue);
    return s.toStdString();
}

} // namespace

TEST(ZKStringServer, ExtractNumberSuffixTakesTheTrailingAsciiDigits) {
    EXPECT_EQ(suffixOf(ZKStringC("123")), "123=123");
    EXPECT_EQ(suffixOf(ZKStringC("x007")), "007=7");
    EXPECT_EQ(suffixOf(ZKStringC("a1b")), "none");
    EXPECT_EQ(suffixOf(ZKStringC("")), "none");
    EXPECT_EQ(suffixOf(utf8("\xc3\xa9t\xc3\xa9"
                            "45")),
              "45=45");
    // Only ASCII digits count: ARABIC-INDIC DIGIT THREE is not one.
    EXPECT_EQ(suffixOf(utf8("n\xd9\xa3")), "none");
    EXPECT_EQ(suffixOf(utf8("\xd9\xa3"
                            "8")),
              "8=8");
    // The value is optional.
    ZKStringC suffix;
    EXPECT_TRUE(ZKStringServer::extractNumberSuffix(ZKStringC("v9"), suffix, nullptr));
    EXPECT_EQ(suffix, "9");
}

TEST(ZKStringServer, NumberSuffixTooLongForAnIntReadsAsZero) {
    EXPECT_EQ(suffixOf(ZKStringC("n2147483647")), "2147483647=2147483647");
    EXPECT_EQ(suffixOf(ZKStringC("n2147483648")), "2147483648=0");
    EXPECT_EQ(suffixOf(ZKStringW("w3000000000")), "3000000000=0");
    // Leading zeros do not make a value too long.
    EXPECT_EQ(suffixOf(ZKStringC("n000000000000000000042")), "000000000000000000042=42");
}

TEST(ZKStringServer, ReplaceOrAddNumberSuffixCutsOnlyForAnIntegerSuffix) {
    EXPECT_EQ(replaced(ZKStringC("Layer12"), "7"), "Layer7");
    EXPECT_EQ(replaced(ZKStringC("Layer"), "7"), "Layer7");
    EXPECT_EQ(replaced(ZKStringC("Layer12"), "b"), "Layer12b");
    EXPECT_EQ(replaced(ZKStringC("a5"), ""), "a5");
    // A negative number reads as an integer; one too long for an int does not.
    EXPECT_EQ(replaced(ZKStringC("Layer12"), "-3"), "Layer-3");
    EXPECT_EQ(replaced(ZKStringC("Layer12"), "99999999999"), "Layer1299999999999");
    EXPECT_EQ(replaced(utf8("\xc3\x89tage3"), "40"), "\xc3\x89tage40");
    EXPECT_EQ(replaced(utf8("\xc3\x89tage3"), "x"), "\xc3\x89tage3x");
    // The string may be its own suffix.
    ZKStringC s("12");
    ZKStringServer::replaceOrAddNumberSuffix(s, s);
    EXPECT_EQ(s, "12");
}

TEST(ZKStringServer, IncrementSuffixReplacesOrStartsTheNumber) {
    EXPECT_EQ(incremented(ZKStringC("img009"), 1, 1), "img10");
    EXPECT_EQ(incremented(ZKStringC("img"), 1, 1), "img1");
    EXPECT_EQ(incremented(ZKStringC(""), 1, 0), "0");
    EXPECT_EQ(incremented(ZKStringC("a5"), -10, 0), "a-5");
    // A suffix too long for an int counts as 0.
    EXPECT_EQ(incremented(ZKStringC("n99999999999"), 1, 7), "n1");
    // The sum wraps around instead of overflowing.
    EXPECT_EQ(incremented(ZKStringC("x2147483647"), 1, 0), "x-2147483648");
    EXPECT_EQ(incremented(ZKStringW("img9"), 1, 1), "img10");
    // The byte form keeps bytes above 0x7F as they are.
    EXPECT_EQ(incremented(ZKStringC("\xe9"
                                    "1"),
                          1, 1),
              "\xe9"
              "2");
}

TEST(ZKStringServer, WideIncrementSuffixKeepsItsLatin1RoundTrip) {
    // Above U+00FF: Latin-1 turns the characters into "?".
    EXPECT_EQ(incremented(utf8("\xe2\x82\xac\xe6\x97\xa5"
                               "3"),
                          1, 1),
              "??4");
    // U+00E9 becomes the byte E9, which does not decode as UTF-8.
    ZKStringW w(utf8("\xc3\xa9"
                     "1"));
    ZKStringServer::incrementSuffix(w, 1, 1);
    EXPECT_EQ(w, QString(QChar(QChar::ReplacementCharacter)) + QStringLiteral("2"));
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
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abc", ""}), 0);
    EXPECT_EQ(ZKStringServer::computeBiggestCommonPrefix(L{"abcdef", "abcxef", "abzz"}), 2);
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
    EXPECT_EQ(ZKStringServer::computeBiggestCommonSuffix(L{"abc", "abd"}), 0);

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
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(0.5f, -1), "%.1f"), "(0.5, -1.0)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2i(3, -4)), "(3, -4)");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3)), "(1.000000, 2.000000, 3.000000)");
    // Single-precision components are printed as the doubles they convert to.
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(0.1f, 0), "%.10f"), "(0.1000000015, 0.0000000000)");
    // Literal percent signs, flags and the no-op "l" are fine.
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%%%+.0lf"), "(%+1, %+2)");

    ZKStringServer::setAsStrFloatFormat("%g");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3f(1, 0.25f, 3)), "(1, 0.25, 3)");
    ZKStringServer::setAsStrFloatFormat("%f");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(5, 6)), "(5.000000, 6.000000)");
}

namespace {

// What vsnprintf writes for `frame` and the three components, given room for
// all of it, cut to the 4095 bytes vecAsStr keeps.
std::string uncutReference(const std::string& frame, const ZKVec3d& v) {
    const int length = std::snprintf(nullptr, 0, frame.c_str(), v.x, v.y, v.z);
    std::string text(size_t(std::max(length, 4096)) + 1, '\0');
    std::snprintf(&text[0], text.size(), frame.c_str(), v.x, v.y, v.z);
    return text.substr(0, std::min(text.find('\0'), size_t(4095)));
}

} // namespace

TEST(ZKStringServer, VecAsStrIsCutAt4095Bytes) {
    const ZKStringC cut = ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3), "%04090.1f");
    EXPECT_EQ(cut.size(), 4095);
    EXPECT_TRUE(cut.startsWith("(0000"));
    EXPECT_TRUE(cut.endsWith("01.0, 00"));
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%.99999f").toStdString(),
              "(1." + std::string(4092, '0'));
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(-1, 2), "%06000.1f").toStdString(),
              "(-" + std::string(4093, '0'));
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%-9000.2f").toStdString(),
              "(1.00" + std::string(4090, ' '));

    // Widths and precisions far past the kept bytes give the text vsnprintf
    // would give with room for all of it.
    const double firsts[] = {-2.25, 5e-324, std::numeric_limits<double>::infinity()};
    const std::pair<const char*, const char*> fields[] = {
        {"", ".6000"}, {"9000", ""}, {"9000", ".6000"}, {"12000", ".5196"}, {"30000", ".4000"}};
    for (const char* flags : {"-", "0#"})
        for (const auto& [width, precision] : fields)
            for (const char kind : {'f', 'e', 'g', 'a'})
                for (const double x : firsts) {
                    const std::string format = std::string("%") + flags + width + precision + kind;
                    const ZKVec3d v(x, 0.5, -0.5);
                    EXPECT_EQ(ZKStringServer::vecAsStr(v, format.c_str()).toStdString(),
                              uncutReference("(" + format + ", " + format + ", " + format + ")", v))
                        << format << " " << x;
                }

    // The frame is cut at 4095 bytes as well: the conversions it still holds
    // are formatted, a conversion it cuts is dropped with the rest.
    for (int filler : {2040, 2043}) {
        const std::string format = std::string(size_t(filler), 'x') + "%.0f";
        const std::string frame =
            ("(" + format + ", " + format + ", " + format + ")").substr(0, 4095);
        const ZKVec3d v(1, 2, 3);
        EXPECT_EQ(ZKStringServer::vecAsStr(v, format.c_str()).toStdString(),
                  uncutReference(frame, v))
            << filler;
    }
}

TEST(ZKStringServer, VecAsStrRefusesFormatsForOtherArguments) {
    // Conversions of another kind, or more of them than there are components,
    // give an empty string instead of reading arguments that were never passed.
    for (const char* bad :
         {"%d", "%s", "%f %f", "%", "%*f", "%1$f", "%Lf", "%hf", "%p", "%3000000000f"})
        EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3), bad), "") << bad;
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "%n"), "");
    // A format without conversion is only text.
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec3d(1, 2, 3), ""), "(, , )");
    EXPECT_EQ(ZKStringServer::vecAsStr(ZKVec2f(1, 2), "x%%"), "(x%, x%)");
}
