#include "ZKStringServer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

ZKStringW utf8(const char* s) {
    return ZKStringW(QString::fromUtf8(s));
}

std::vector<std::string> toStd(const ZKArray<ZKStringC>& list) {
    std::vector<std::string> out;
    for (const ZKStringC& s : list)
        out.push_back(s.toStdString());
    return out;
}

std::vector<std::string> toStd(const ZKArray<ZKStringW>& list) {
    std::vector<std::string> out;
    for (const ZKStringW& s : list)
        out.push_back(s.toStdString());
    return out;
}

using Parts = std::vector<std::string>;

} // namespace

TEST(ZKStringServer, ExtractNextPartMovesTheCursor) {
    ZKStringC part("stale");
    int pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("a;b"), pos, ';');
    EXPECT_EQ(part, "a");
    EXPECT_EQ(pos, 2);
    ZKStringServer::extractNextPart(part, ZKStringC("a;b"), pos, ';');
    EXPECT_EQ(part, "b");
    EXPECT_EQ(pos, -1);
    // Exhausted, past the end or negative: an empty part and -1.
    for (int start : {-1, 3, 4, 100}) {
        part = "stale";
        pos = start;
        ZKStringServer::extractNextPart(part, ZKStringC("a;b"), pos, ';');
        EXPECT_TRUE(part.isEmpty()) << start;
        EXPECT_EQ(pos, -1) << start;
    }
    // A trailing separator leaves the cursor at the end.
    pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("a;"), pos, ';');
    EXPECT_EQ(pos, 2);

    // The part may be the source string itself.
    ZKStringC s("x,y");
    pos = 0;
    ZKStringServer::extractNextPart(s, s, pos, ',');
    EXPECT_EQ(s, "x");
    EXPECT_EQ(pos, 2);

    ZKStringW w;
    pos = 2;
    ZKStringServer::extractNextPart(w, utf8("\xc3\xa9|\xc3\xa0|"), pos, QChar('|'));
    EXPECT_EQ(w, utf8("\xc3\xa0"));
    EXPECT_EQ(pos, 4);
}

TEST(ZKStringServer, ExtractNextPartWithASeparatorString) {
    const ZKStringC s("a<>b<>");
    ZKStringC part;
    int pos = 0;
    ZKStringServer::extractNextPart(part, s, pos, ZKStringC("<>"));
    EXPECT_EQ(part, "a");
    EXPECT_EQ(pos, 3);
    ZKStringServer::extractNextPart(part, s, pos, ZKStringC("<>"));
    EXPECT_EQ(part, "b");
    EXPECT_EQ(pos, 6);
    ZKStringServer::extractNextPart(part, s, pos, ZKStringC("<>"));
    EXPECT_TRUE(part.isEmpty());
    EXPECT_EQ(pos, -1);
    // An empty separator is never found: the rest is one part.
    pos = 1;
    ZKStringServer::extractNextPart(part, s, pos, ZKStringC());
    EXPECT_EQ(part, "<>b<>");
    EXPECT_EQ(pos, -1);

    ZKStringW w;
    pos = 0;
    ZKStringServer::extractNextPart(w, ZKStringW("k => v"), pos, ZKStringW(" => "));
    EXPECT_EQ(w, QStringLiteral("k"));
    EXPECT_EQ(pos, 5);
}

TEST(ZKStringServer, ExtractNextPartTakesAMixedPairAsOneBreak) {
    ZKStringC part;
    int pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("l1\r\nl2"), pos, '\n', '\r');
    EXPECT_EQ(part, "l1");
    EXPECT_EQ(pos, 4);
    pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("l1\n\rl2"), pos, '\n', '\r');
    EXPECT_EQ(pos, 4);
    // Two equal separators are two breaks.
    pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("a\n\nb"), pos, '\n', '\r');
    EXPECT_EQ(pos, 2);
    ZKStringServer::extractNextPart(part, ZKStringC("a\n\nb"), pos, '\n', '\r');
    EXPECT_TRUE(part.isEmpty());
    EXPECT_EQ(pos, 3);
    // A separator as the last character.
    pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("a\r"), pos, '\n', '\r');
    EXPECT_EQ(part, "a");
    EXPECT_EQ(pos, 2);

    // Kept: with sep1 == sep2 a doubled separator is a single break.
    pos = 0;
    ZKStringServer::extractNextPart(part, ZKStringC("a,,b"), pos, ',', ',');
    EXPECT_EQ(part, "a");
    EXPECT_EQ(pos, 3);
    ZKArray<ZKStringC> list;
    ZKStringServer::splitParts(list, ZKStringC("a,,b,c"), ',', ',');
    EXPECT_EQ(toStd(list), (Parts{"a", "b", "c"}));

    ZKStringW w;
    pos = 0;
    ZKStringServer::extractNextPart(w, ZKStringW("x\r\ny"), pos, QChar('\r'), QChar('\n'));
    EXPECT_EQ(w, QStringLiteral("x"));
    EXPECT_EQ(pos, 3);
}

TEST(ZKStringServer, SplitPartsKeepsInnerEmptyPartsAndDropsOneTrailing) {
    const auto split = [](const char* s) {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitParts(list, ZKStringC(s), ',');
        return toStd(list);
    };
    EXPECT_EQ(split("a,,b"), (Parts{"a", "", "b"}));
    EXPECT_EQ(split("a,b,"), (Parts{"a", "b"}));
    EXPECT_EQ(split(""), Parts{});
    EXPECT_EQ(split(","), Parts{""});
    EXPECT_EQ(split("a,,"), (Parts{"a", ""}));
    EXPECT_EQ(split(",a"), (Parts{"", "a"}));
    EXPECT_EQ(split("abc"), Parts{"abc"});

    // Parts are appended after what the list holds.
    ZKArray<ZKStringC> list{"x"};
    ZKStringServer::splitParts(list, ZKStringC("a;b"), ';', 99);
    EXPECT_EQ(toStd(list), (Parts{"x", "a", "b"}));
    ZKStringServer::splitParts(list, ZKStringC("c::d::"), ZKStringC("::"));
    EXPECT_EQ(toStd(list), (Parts{"x", "a", "b", "c", "d"}));
    // The source may be an element of the list.
    ZKArray<ZKStringC> self{"p,q"};
    ZKStringServer::splitParts(self, self[0], ',');
    EXPECT_EQ(toStd(self), (Parts{"p,q", "p", "q"}));
    // An empty separator string is never found.
    ZKArray<ZKStringC> whole;
    ZKStringServer::splitParts(whole, ZKStringC("a,b"), ZKStringC(""));
    EXPECT_EQ(toStd(whole), Parts{"a,b"});
}

TEST(ZKStringServer, SplitPartsWideForms) {
    ZKArray<ZKStringW> list{ZKStringW("x")};
    ZKStringServer::splitParts(list, utf8("\xc3\xa9,,b,"), QChar(','));
    EXPECT_EQ(toStd(list), (Parts{"x", "\xc3\xa9", "", "b"}));
    list.clear();
    ZKStringServer::splitParts(list, ZKStringW("a;b\r\nc"), ';');
    EXPECT_EQ(toStd(list), (Parts{"a", "b\r\nc"}));
    // Two chars are two separators, not a separator and the unused count.
    list.clear();
    ZKStringServer::splitParts(list, ZKStringW("a;b,c"), ';', ',');
    EXPECT_EQ(toStd(list), (Parts{"a", "b", "c"}));
    list.clear();
    ZKStringServer::splitParts(list, ZKStringW("a;b,c"), QChar(';'), QChar(','));
    EXPECT_EQ(toStd(list), (Parts{"a", "b", "c"}));
    list.clear();
    ZKStringServer::splitParts(list, ZKStringW("1 -> 2 -> "), ZKStringW(" -> "));
    EXPECT_EQ(toStd(list), (Parts{"1", "2"}));
    // A char separator is its Latin-1 character.
    list.clear();
    ZKStringServer::splitParts(list,
                               utf8("a\xc2\xa7"
                                    "b"),
                               '\xa7');
    EXPECT_EQ(toStd(list), (Parts{"a", "b"}));
}

TEST(ZKStringServer, SplitMultiLineBreaksOnEitherLineEnd) {
    ZKArray<ZKStringC> list;
    ZKStringServer::splitMultiLine(list, ZKStringC("l1\r\nl2\n\nl3"));
    EXPECT_EQ(toStd(list), (Parts{"l1", "l2", "", "l3"}));
    list.clear();
    ZKStringServer::splitMultiLine(list, ZKStringC("a\n\rb\r\rc\n"));
    EXPECT_EQ(toStd(list), (Parts{"a", "b", "", "c"}));
    list.clear();
    ZKStringServer::splitMultiLine(list, ZKStringC("a\r\r\nb"));
    EXPECT_EQ(toStd(list), (Parts{"a", "", "b"}));

    ZKArray<ZKStringW> wide;
    ZKStringServer::splitMultiLine(wide, ZKStringW("x\r\ny\n"));
    EXPECT_EQ(toStd(wide), (Parts{"x", "y"}));
}

namespace {

// Splits at every separator, then drops the last part when it is empty.
Parts modelSplit(const std::string& s, const std::string& seps, bool pairRule) {
    Parts parts(1);
    for (size_t i = 0; i < s.size(); ++i) {
        const char c = s[i];
        if (seps.find(c) == std::string::npos) {
            parts.back() += c;
            continue;
        }
        if (pairRule && i + 1 < s.size() && s[i + 1] != c &&
            seps.find(s[i + 1]) != std::string::npos)
            ++i;
        parts.emplace_back();
    }
    if (parts.back().empty())
        parts.pop_back();
    return parts;
}

Parts modelSplitString(const std::string& s, const std::string& sep) {
    Parts parts;
    size_t from = 0;
    for (size_t at; (at = s.find(sep, from)) != std::string::npos; from = at + sep.size())
        parts.push_back(s.substr(from, at - from));
    parts.push_back(s.substr(from));
    if (parts.back().empty())
        parts.pop_back();
    return parts;
}

} // namespace

TEST(ZKStringServer, SplitPartsMatchesASimpleModel) {
    std::mt19937 rng(20240611);
    const char alphabet[] = "ab,;\n\r";
    std::uniform_int_distribution<int> length(0, 16);
    std::uniform_int_distribution<int> letter(0, 5);
    std::uniform_int_distribution<int> preset(0, 2);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int n = length(rng); n > 0; --n)
            text += alphabet[letter(rng)];
        const ZKStringC s(text.c_str());
        const ZKStringW w = ZKStringServer::fromNonUnicode(s);
        Parts existing;
        for (int n = preset(rng); n > 0; --n)
            existing.push_back("old" + std::to_string(n));

        const auto check = [&](const Parts& modelParts, auto splitC, auto splitW) {
            ZKArray<ZKStringC> listC;
            ZKArray<ZKStringW> listW;
            for (const std::string& e : existing) {
                listC.push_back(ZKStringC(e.c_str()));
                listW.push_back(ZKStringW(e.c_str()));
            }
            splitC(listC);
            splitW(listW);
            Parts expected = existing;
            expected.insert(expected.end(), modelParts.begin(), modelParts.end());
            EXPECT_EQ(toStd(listC), expected) << "text: " << text;
            EXPECT_EQ(toStd(listW), expected) << "text: " << text;
        };
        check(
            modelSplit(text, ",", false),
            [&](ZKArray<ZKStringC>& l) { ZKStringServer::splitParts(l, s, ','); },
            [&](ZKArray<ZKStringW>& l) { ZKStringServer::splitParts(l, w, QChar(',')); });
        check(
            modelSplit(text, ",;", true),
            [&](ZKArray<ZKStringC>& l) { ZKStringServer::splitParts(l, s, ',', ';'); },
            [&](ZKArray<ZKStringW>& l) {
                ZKStringServer::splitParts(l, w, QChar(';'), QChar(','));
            });
        check(
            modelSplit(text, "\n\r", true),
            [&](ZKArray<ZKStringC>& l) { ZKStringServer::splitMultiLine(l, s); },
            [&](ZKArray<ZKStringW>& l) { ZKStringServer::splitMultiLine(l, w); });
        check(
            modelSplitString(text, ",,"),
            [&](ZKArray<ZKStringC>& l) { ZKStringServer::splitParts(l, s, ZKStringC(",,")); },
            [&](ZKArray<ZKStringW>& l) { ZKStringServer::splitParts(l, w, ZKStringW(",,")); });
    }
}

TEST(ZKStringServer, RemoveSurroundingSpacesTrimsOnlyBlanks) {
    ZKStringC s("  a b  ");
    EXPECT_TRUE(ZKStringServer::removeSurroundingSpaces(s));
    EXPECT_EQ(s, "a b");
    EXPECT_FALSE(ZKStringServer::removeSurroundingSpaces(s));
    EXPECT_EQ(s, "a b");
    s = " a";
    EXPECT_TRUE(ZKStringServer::removeSurroundingSpaces(s));
    EXPECT_EQ(s, "a");
    s = "   ";
    EXPECT_TRUE(ZKStringServer::removeSurroundingSpaces(s));
    EXPECT_TRUE(s.isEmpty());
    s = "";
    EXPECT_FALSE(ZKStringServer::removeSurroundingSpaces(s));
    s = "\ta\n";
    EXPECT_FALSE(ZKStringServer::removeSurroundingSpaces(s));
    EXPECT_EQ(s, "\ta\n");

    ZKStringW w(utf8(" \xc3\xa9\t "));
    EXPECT_TRUE(ZKStringServer::removeSurroundingSpaces(w));
    EXPECT_EQ(w, utf8("\xc3\xa9\t"));
}

TEST(ZKStringServer, RemoveSurroundingQuotes) {
    ZKStringC s("\"'x'\"");
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, true, true, true));
    EXPECT_EQ(s, "x");
    s = "\"'x'\"";
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, false, true, true));
    EXPECT_EQ(s, "'x'");
    // Only the kinds asked for.
    s = "'x'";
    EXPECT_FALSE(ZKStringServer::removeSurroundingQuotes(s, true, false, true));
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, true, true, false));
    EXPECT_EQ(s, "x");
    s = "\"'x'\"";
    EXPECT_FALSE(ZKStringServer::removeSurroundingQuotes(s, true, true, false));
    // Unmatched ends, empty strings.
    for (const char* unchanged : {"\"x'", "'x\"", "x\"", "", "a"}) {
        s = unchanged;
        EXPECT_FALSE(ZKStringServer::removeSurroundingQuotes(s, true, true, true)) << unchanged;
        EXPECT_EQ(s, unchanged);
    }
    // A lone quote counts as surrounded and becomes empty.
    for (const char* lone : {"\"", "'"}) {
        s = lone;
        EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, false, true, true)) << lone;
        EXPECT_TRUE(s.isEmpty()) << lone;
    }
    s = "\"\"\"";
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, true, true, true));
    EXPECT_TRUE(s.isEmpty());
    // The inner pair stays when it does not surround the rest.
    s = "\"'a' 'b'\"";
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(s, true, true, true));
    EXPECT_EQ(s, "a' 'b");

    // Deep nesting is fine.
    ZKStringC deep;
    deep.appendPattern(100000, "\"");
    deep.append("x");
    deep.appendPattern(100000, "\"");
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(deep, true, true, true));
    EXPECT_EQ(deep, "x");

    ZKStringW w(utf8("'\"\xc3\xa9\"'"));
    EXPECT_TRUE(ZKStringServer::removeSurroundingQuotes(w, true, true, true));
    EXPECT_EQ(w, utf8("\xc3\xa9"));
}

TEST(ZKStringServer, MakeWithQuotes) {
    ZKStringC s("'x'");
    EXPECT_TRUE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"x\"");
    EXPECT_FALSE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"x\"");
    s = "'x'";
    EXPECT_TRUE(ZKStringServer::makeWithDoubleQuotes(s, false));
    EXPECT_EQ(s, "\"'x'\"");
    s = "";
    EXPECT_TRUE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"\"");
    // One quote character: an apostrophe is removed as a pair, a double
    // quote already counts as quoted.
    s = "'";
    EXPECT_TRUE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"\"");
    s = "\"";
    EXPECT_FALSE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"");
    // Kept: false although the apostrophes have been removed.
    s = "'\"x\"'";
    EXPECT_FALSE(ZKStringServer::makeWithDoubleQuotes(s, true));
    EXPECT_EQ(s, "\"x\"");

    s = "\"x\"";
    EXPECT_TRUE(ZKStringServer::makeWithSingleQuotes(s, true));
    EXPECT_EQ(s, "'x'");
    EXPECT_FALSE(ZKStringServer::makeWithSingleQuotes(s, true));
    s = "\"x\"";
    EXPECT_TRUE(ZKStringServer::makeWithSingleQuotes(s, false));
    EXPECT_EQ(s, "'\"x\"'");

    ZKStringW w(utf8("'\xc3\xa9'"));
    EXPECT_TRUE(ZKStringServer::makeWithDoubleQuotes(w, true));
    EXPECT_EQ(w, utf8("\"\xc3\xa9\""));
    EXPECT_TRUE(ZKStringServer::makeWithSingleQuotes(w, true));
    EXPECT_EQ(w, utf8("'\xc3\xa9'"));
}

TEST(ZKStringServer, SplitCmdLineArgsKeepsQuotedBlanks) {
    const auto split = [](const char* line) {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitCmdLineArgs(list, ZKStringC(line));
        return toStd(list);
    };
    EXPECT_EQ(split("  a  b "), (Parts{"a", "b"}));
    EXPECT_EQ(split("a \"b c\" d"), (Parts{"a", "\"b c\"", "d"}));
    EXPECT_EQ(split("a\"b c\"d e"), (Parts{"a\"b c\"d", "e"}));
    EXPECT_EQ(split("\"open arg"), Parts{"\"open arg"});
    EXPECT_EQ(split("x\ty"), Parts{"x\ty"});
    EXPECT_EQ(split("\"\" a"), (Parts{"\"\"", "a"}));
    EXPECT_EQ(split(""), Parts{});
    EXPECT_EQ(split("    "), Parts{});

    ZKArray<ZKStringC> list{"prog"};
    ZKStringServer::splitCmdLineArgs(list, ZKStringC("-v file"));
    EXPECT_EQ(toStd(list), (Parts{"prog", "-v", "file"}));
    ZKArray<ZKStringW> wide;
    ZKStringServer::splitCmdLineArgs(wide, utf8("open \"\xc3\xa9t\xc3\xa9 1\""));
    EXPECT_EQ(toStd(wide), (Parts{"open", "\"\xc3\xa9t\xc3\xa9 1\""}));
}

TEST(ZKStringServer, SplitCmdLineArgsKeepsItsReservationHeuristic) {
    // Kept: length / 4 strings below 40 characters, 10 from 40 on; the
    // capacity after one short argument shows what was reserved.
    const auto capacityAfter = [](int length) {
        ZKArray<ZKStringC> list;
        ZKStringC line("a");
        line.appendPattern(length - 1, " ");
        ZKStringServer::splitCmdLineArgs(list, line);
        EXPECT_EQ(list.size(), 1);
        return list.capacity();
    };
    EXPECT_EQ(capacityAfter(8), 2);
    EXPECT_EQ(capacityAfter(39), 9);
    EXPECT_EQ(capacityAfter(40), 10);
    EXPECT_EQ(capacityAfter(500), 10);
    ZKArray<ZKStringW> wide;
    ZKStringServer::splitCmdLineArgs(wide, ZKStringW("a b c d e f g h i j k l m n o p q r s"));
    EXPECT_EQ(wide.size(), 19);
    EXPECT_EQ(wide.capacity(), 36); // 37 characters: 9 reserved, then doubled twice
}

TEST(ZKStringServer, ExtractCmdLineArgsReplacesTheList) {
    char prog[] = "prog";
    char flag[] = "-x";
    char accented[] = "\xc3\xa9";
    char* argv[] = {prog, flag, accented, nullptr};
    ZKArray<ZKStringC> list{"old"};
    ZKStringServer::extractCmdLineArgs(list, 3, argv);
    EXPECT_EQ(toStd(list), (Parts{"prog", "-x", "\xc3\xa9"}));
    // A null argument is an empty string; the count is argc.
    ZKStringServer::extractCmdLineArgs(list, 4, argv);
    EXPECT_EQ(toStd(list), (Parts{"prog", "-x", "\xc3\xa9", ""}));
    ZKStringServer::extractCmdLineArgs(list, 0, argv);
    EXPECT_TRUE(list.empty());
    list.push_back("old");
    ZKStringServer::extractCmdLineArgs(list, -3, argv);
    EXPECT_TRUE(list.empty());
    list.push_back("old");
    ZKStringServer::extractCmdLineArgs(list, 5, static_cast<char**>(nullptr));
    EXPECT_TRUE(list.empty());

    ZKArray<ZKStringW> wide{ZKStringW("old")};
    ZKStringServer::extractCmdLineArgs(wide, 3, argv);
    ASSERT_EQ(wide.size(), 3);
    EXPECT_EQ(wide[2], QString(QChar(0xE9)));
    wchar_t wprog[] = L"prog";
    wchar_t wname[] = L"\u00e9\u65e5";
    wchar_t* wargv[] = {wprog, wname};
    ZKStringServer::extractCmdLineArgs(wide, 2, wargv);
    ASSERT_EQ(wide.size(), 2);
    EXPECT_EQ(wide[0], QStringLiteral("prog"));
    EXPECT_EQ(wide[1], utf8("\xc3\xa9\xe6\x97\xa5"));
}

TEST(ZKStringServer, ConversionsBetweenTheStringKinds) {
    EXPECT_EQ(ZKStringServer::fromNonUnicode("\xc3\xa9t\xc3\xa9"), utf8("\xc3\xa9t\xc3\xa9"));
    EXPECT_EQ(ZKStringServer::fromNonUnicode(ZKStringC("a\0b", 3)), QStringLiteral("a"));
    EXPECT_TRUE(ZKStringServer::fromNonUnicode(static_cast<const char*>(nullptr)).isEmpty());
    EXPECT_EQ(ZKStringServer::toAscii(utf8("a\xe2\x82\xac\xc3\xa9")), "a?\xe9");
    EXPECT_EQ(ZKStringServer::toAscii(L"\u00e9\u20ac"), "\xe9?");
    EXPECT_TRUE(ZKStringServer::toAscii(static_cast<const wchar_t*>(nullptr)).isEmpty());

    ZKArray<ZKStringW> wide{ZKStringW("stale")};
    ZKStringServer::toUnicode(wide, ZKArray<ZKStringC>{"a", "\xc3\xa0", ""});
    EXPECT_EQ(toStd(wide), (Parts{"a", "\xc3\xa0", ""}));
    ZKArray<ZKStringC> bytes{"stale", "stale", "stale", "stale"};
    ZKStringServer::toAscii(bytes, wide);
    EXPECT_EQ(toStd(bytes), (Parts{"a", "\xe0", ""}));
}
