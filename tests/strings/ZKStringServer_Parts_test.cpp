#include "ZKStringServer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Parts = std::vector<std::string>;

ZKStringW utf8(const char* s) {
    return ZKStringW(QString::fromUtf8(s));
}

template <typename Str> Parts toStd(const ZKArray<Str>& list) {
    Parts out;
    for (const Str& s : list)
        out.push_back(s.toStdString());
    return out;
}

// Calls extractNextPart from `start` until the cursor is -1; lists each
// extracted part as "part@pos", pos being the cursor after the call.
template <typename Str, typename... Seps> std::string walk(const Str& s, int start, Seps... seps) {
    std::string out;
    int pos = start;
    do {
        Str part("stale");
        ZKStringServer::extractNextPart(part, s, pos, seps...);
        out += (out.empty() ? "" : " ") + part.toStdString() + "@" + std::to_string(pos);
    } while (pos != -1);
    return out;
}

// Applies an editing operation to a copy of s: "+" and the new text when it
// reports a change, "-" and the text otherwise.
template <typename Str, typename Edit> std::string edited(const Str& s, Edit edit) {
    Str copy = s;
    const bool changed = edit(copy);
    return (changed ? "+" : "-") + copy.toStdString();
}

template <typename Str> Parts splitArgs(const Str& line) {
    ZKArray<Str> list;
    ZKStringServer::splitCmdLineArgs(list, line);
    return toStd(list);
}

} // namespace

TEST(ZKStringServer, ExtractNextPartMovesTheCursor) {
    EXPECT_EQ(walk(ZKStringC("a;b"), 0, ';'), "a@2 b@-1");
    EXPECT_EQ(walk(ZKStringC(";a;"), 0, ';'), "@1 a@3 @-1");
    // Exhausted, past the end or negative: an empty part and -1.
    for (int start : {-1, 3, 4, 100})
        EXPECT_EQ(walk(ZKStringC("a;b"), start, ';'), "@-1") << start;
    EXPECT_EQ(walk(utf8("\xc3\xa9|\xc3\xa0|"), 2, QChar('|')), "\xc3\xa0@4 @-1");
    // A separator string; an empty one is never found.
    EXPECT_EQ(walk(ZKStringC("a<>b<><"), 0, ZKStringC("<>")), "a@3 b@6 <@-1");
    EXPECT_EQ(walk(ZKStringC("a,b"), 1, ZKStringC()), ",b@-1");
    EXPECT_EQ(walk(ZKStringW("k => v"), 0, ZKStringW(" => ")), "k@5 v@-1");
    // The part may be the source string itself.
    ZKStringC s("x,y");
    int pos = 0;
    ZKStringServer::extractNextPart(s, s, pos, ',');
    EXPECT_EQ(s, "x");
    EXPECT_EQ(pos, 2);
}

TEST(ZKStringServer, TwoSeparatorsTakeAMixedPairAsOneBreak) {
    EXPECT_EQ(walk(ZKStringC("l1\r\nl2"), 0, '\n', '\r'), "l1@4 l2@-1");
    EXPECT_EQ(walk(ZKStringC("l1\n\rl2"), 0, '\n', '\r'), "l1@4 l2@-1");
    EXPECT_EQ(walk(ZKStringC("a\n\nb"), 0, '\n', '\r'), "a@2 @3 b@-1");
    EXPECT_EQ(walk(ZKStringC("a\r"), 0, '\n', '\r'), "a@2 @-1");
    EXPECT_EQ(walk(ZKStringW("x\r\ny"), 0, QChar('\r'), QChar('\n')), "x@3 y@-1");
    ZKArray<ZKStringC> list;
    ZKStringServer::splitMultiLine(list, ZKStringC("l1\r\nl2\n\nl3"));
    EXPECT_EQ(toStd(list), (Parts{"l1", "l2", "", "l3"}));
    ZKArray<ZKStringW> wide;
    ZKStringServer::splitMultiLine(wide, ZKStringW("x\n\ry\r\r\n"));
    EXPECT_EQ(toStd(wide), (Parts{"x", "y", ""}));

    // Kept: with sep1 == sep2 a doubled separator is a single break.
    EXPECT_EQ(walk(ZKStringC("a,,b"), 0, ',', ','), "a@3 b@-1");
    list.clear();
    ZKStringServer::splitParts(list, ZKStringC("a,,b,c"), ',', ',');
    EXPECT_EQ(toStd(list), (Parts{"a", "b", "c"}));
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

    // Parts are appended after what the list holds.
    ZKArray<ZKStringC> list{"x"};
    ZKStringServer::splitParts(list, ZKStringC("a;b"), ';', 99);
    ZKStringServer::splitParts(list, ZKStringC("c::d::"), ZKStringC("::"));
    ZKStringServer::splitParts(list, ZKStringC("e,f"), ZKStringC("")); // never found
    EXPECT_EQ(toStd(list), (Parts{"x", "a", "b", "c", "d", "e,f"}));
    // The source may be an element of the list.
    ZKArray<ZKStringC> self{"p,q"};
    ZKStringServer::splitParts(self, self[0], ',');
    EXPECT_EQ(toStd(self), (Parts{"p,q", "p", "q"}));

    ZKArray<ZKStringW> wide{ZKStringW("x")};
    ZKStringServer::splitParts(wide, utf8("\xc3\xa9,,b,"), QChar(','));
    ZKStringServer::splitParts(wide, ZKStringW("1 -> 2 -> "), ZKStringW(" -> "));
    // Two chars are two separators, not a separator and the unused count; a
    // char stands for its Latin-1 character.
    ZKStringServer::splitParts(wide,
                               utf8("c;d\xc2\xa7"
                                    "e"),
                               ';', '\xa7');
    EXPECT_EQ(toStd(wide), (Parts{"x", "\xc3\xa9", "", "b", "1", "2", "c", "d", "e"}));
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
    std::uniform_int_distribution<int> length(0, 16), letter(0, 5), preset(0, 2);
    for (int round = 0; round < 1000; ++round) {
        std::string text;
        for (int n = length(rng); n > 0; --n)
            text += "ab,;\n\r"[letter(rng)];
        const Parts existing(preset(rng), "old");
        // Splits text as both string kinds, after the existing entries.
        const auto check = [&](const Parts& model, auto split) {
            ZKArray<ZKStringC> listC;
            ZKArray<ZKStringW> listW;
            for (const std::string& e : existing) {
                listC.push_back(e.c_str());
                listW.push_back(ZKStringW(e.c_str()));
            }
            split(listC, ZKStringC(text.c_str()));
            split(listW, ZKStringW(text.c_str()));
            Parts expected = existing;
            expected.insert(expected.end(), model.begin(), model.end());
            EXPECT_EQ(toStd(listC), expected) << text;
            EXPECT_EQ(toStd(listW), expected) << text;
        };
        check(modelSplit(text, ",", false),
              [](auto& l, const auto& s) { ZKStringServer::splitParts(l, s, ','); });
        check(modelSplit(text, ",;", true),
              [](auto& l, const auto& s) { ZKStringServer::splitParts(l, s, ';', ','); });
        check(modelSplit(text, "\n\r", true),
              [](auto& l, const auto& s) { ZKStringServer::splitMultiLine(l, s); });
        check(modelSplitString(text, ",,"), [](auto& l, const auto& s) {
            ZKStringServer::splitParts(l, s, std::decay_t<decltype(s)>(",,"));
        });
    }
}

TEST(ZKStringServer, RemoveSurroundingSpacesTrimsOnlyBlanks) {
    const auto trim = [](auto& s) { return ZKStringServer::removeSurroundingSpaces(s); };
    EXPECT_EQ(edited(ZKStringC("  a b  "), trim), "+a b");
    EXPECT_EQ(edited(ZKStringC("   "), trim), "+");
    EXPECT_EQ(edited(ZKStringC("a b"), trim), "-a b");
    EXPECT_EQ(edited(ZKStringC(""), trim), "-");
    EXPECT_EQ(edited(ZKStringC("\ta\n"), trim), "-\ta\n");
    EXPECT_EQ(edited(utf8(" \xc3\xa9\t "), trim), "+\xc3\xa9\t");
}

TEST(ZKStringServer, RemoveSurroundingQuotes) {
    const auto unquote = [](bool recursive, bool single, bool dbl) {
        return [=](auto& s) {
            return ZKStringServer::removeSurroundingQuotes(s, recursive, single, dbl);
        };
    };
    const auto all = unquote(true, true, true);
    EXPECT_EQ(edited(ZKStringC("\"'x'\""), all), "+x");
    EXPECT_EQ(edited(ZKStringC("\"'x'\""), unquote(false, true, true)), "+'x'");
    // Only the kinds asked for.
    EXPECT_EQ(edited(ZKStringC("'x'"), unquote(true, false, true)), "-'x'");
    EXPECT_EQ(edited(ZKStringC("\"'x'\""), unquote(true, true, false)), "-\"'x'\"");
    EXPECT_EQ(edited(ZKStringC("'\"x\"'"), unquote(true, true, false)), "+\"x\"");
    for (const char* unchanged : {"\"x'", "'x\"", "x\"", "", "a"})
        EXPECT_EQ(edited(ZKStringC(unchanged), all), std::string("-") + unchanged);
    // A lone quote counts as surrounded and becomes empty.
    EXPECT_EQ(edited(ZKStringC("\""), unquote(false, true, true)), "+");
    EXPECT_EQ(edited(ZKStringC("\"\"\""), all), "+");
    // The inner quotes stay when they do not surround the rest.
    EXPECT_EQ(edited(ZKStringC("\"'a' 'b'\""), all), "+a' 'b");
    EXPECT_EQ(edited(utf8("'\"\xc3\xa9\"'"), all), "+\xc3\xa9");

    // Deep nesting is fine.
    ZKStringC deep;
    deep.appendPattern(100000, "\"");
    deep.append("x");
    deep.appendPattern(100000, "\"");
    EXPECT_EQ(edited(deep, all), "+x");
}

TEST(ZKStringServer, MakeWithQuotes) {
    const auto dq = [](bool replace) {
        return [=](auto& s) { return ZKStringServer::makeWithDoubleQuotes(s, replace); };
    };
    const auto sq = [](bool replace) {
        return [=](auto& s) { return ZKStringServer::makeWithSingleQuotes(s, replace); };
    };
    EXPECT_EQ(edited(ZKStringC("'x'"), dq(true)), "+\"x\"");
    EXPECT_EQ(edited(ZKStringC("\"x\""), dq(true)), "-\"x\"");
    EXPECT_EQ(edited(ZKStringC("'x'"), dq(false)), "+\"'x'\"");
    EXPECT_EQ(edited(ZKStringC(""), dq(true)), "+\"\"");
    // One quote character: a lone apostrophe is removed as a pair, a lone
    // double quote already counts as quoted.
    EXPECT_EQ(edited(ZKStringC("'"), dq(true)), "+\"\"");
    EXPECT_EQ(edited(ZKStringC("\""), dq(true)), "-\"");
    // Kept: false although the apostrophes have been removed.
    EXPECT_EQ(edited(ZKStringC("'\"x\"'"), dq(true)), "-\"x\"");

    EXPECT_EQ(edited(ZKStringC("\"x\""), sq(true)), "+'x'");
    EXPECT_EQ(edited(ZKStringC("'x'"), sq(true)), "-'x'");
    EXPECT_EQ(edited(ZKStringC("\"x\""), sq(false)), "+'\"x\"'");
    EXPECT_EQ(edited(ZKStringC("\"'x'\""), sq(true)), "-'x'");
    EXPECT_EQ(edited(utf8("'\xc3\xa9'"), dq(true)), "+\"\xc3\xa9\"");
    EXPECT_EQ(edited(utf8("\"\xc3\xa9\""), sq(true)), "+'\xc3\xa9'");
}

TEST(ZKStringServer, SplitCmdLineArgsKeepsQuotedBlanks) {
    EXPECT_EQ(splitArgs(ZKStringC("  a  b ")), (Parts{"a", "b"}));
    EXPECT_EQ(splitArgs(ZKStringC("a \"b c\" d")), (Parts{"a", "\"b c\"", "d"}));
    EXPECT_EQ(splitArgs(ZKStringC("a\"b c\"d e")), (Parts{"a\"b c\"d", "e"}));
    EXPECT_EQ(splitArgs(ZKStringC("\"open arg")), Parts{"\"open arg"});
    EXPECT_EQ(splitArgs(ZKStringC("x\ty \"\"")), (Parts{"x\ty", "\"\""}));
    EXPECT_EQ(splitArgs(utf8("open \"\xc3\xa9t\xc3\xa9 1\"")),
              (Parts{"open", "\"\xc3\xa9t\xc3\xa9 1\""}));
    ZKArray<ZKStringC> list{"prog"};
    ZKStringServer::splitCmdLineArgs(list, ZKStringC("-v file"));
    EXPECT_EQ(toStd(list), (Parts{"prog", "-v", "file"}));
}

TEST(ZKStringServer, SplitCmdLineArgsKeepsItsReservationHeuristic) {
    // Kept: length / 4 strings below 40 characters, 10 from 40 on; the
    // capacity after one short argument shows what was reserved.
    const auto capacityAfter = [](auto line, int length) {
        line.appendPattern(length - 1, decltype(line)(" "));
        ZKArray<decltype(line)> list;
        ZKStringServer::splitCmdLineArgs(list, line);
        EXPECT_EQ(list.size(), 1);
        return list.capacity();
    };
    EXPECT_EQ(capacityAfter(ZKStringC("a"), 8), 2);
    EXPECT_EQ(capacityAfter(ZKStringC("a"), 39), 9);
    EXPECT_EQ(capacityAfter(ZKStringC("a"), 40), 10);
    EXPECT_EQ(capacityAfter(ZKStringW("a"), 36), 9);
    EXPECT_EQ(capacityAfter(ZKStringW("a"), 41), 10);
}

TEST(ZKStringServer, ExtractCmdLineArgsReplacesTheList) {
    char prog[] = "prog";
    char accented[] = "\xc3\xa9";
    char* argv[] = {prog, accented, nullptr};
    ZKArray<ZKStringC> list{"old"};
    // A null argument is an empty string; the count is argc.
    ZKStringServer::extractCmdLineArgs(list, 3, argv);
    EXPECT_EQ(toStd(list), (Parts{"prog", "\xc3\xa9", ""}));
    for (auto [argc, args] : {std::pair{0, argv}, {-3, argv}, {5, nullptr}}) {
        list.push_back("old");
        ZKStringServer::extractCmdLineArgs(list, argc, args);
        EXPECT_TRUE(list.empty()) << argc;
    }
    ZKArray<ZKStringW> wide{ZKStringW("old")};
    ZKStringServer::extractCmdLineArgs(wide, 2, argv);
    EXPECT_EQ(toStd(wide), (Parts{"prog", "\xc3\xa9"}));
    EXPECT_EQ(wide[1].size(), 1);
    wchar_t wname[] = L"\u00e9\u65e5";
    wchar_t* wargv[] = {wname};
    ZKStringServer::extractCmdLineArgs(wide, 1, wargv);
    EXPECT_EQ(toStd(wide), Parts{"\xc3\xa9\xe6\x97\xa5"});
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
