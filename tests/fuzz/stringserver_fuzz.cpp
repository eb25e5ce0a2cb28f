// Fuzzes the string server's splitters, quote and blank trimming, command-line
// splitting and number-suffix functions on byte and wide strings. The input
// gives the separators, the numbers and the text; the wide text is either the
// UTF-8 decoding of the bytes or their raw UTF-16 units.
#include "ZKFuzzSupport.h"

#include "ZKStringServer.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <fuzzer/FuzzedDataProvider.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isAsciiDigit(QChar c) {
    return c.unicode() >= '0' && c.unicode() <= '9';
}

int digitValue(char c) {
    return c - '0';
}

int digitValue(QChar c) {
    return c.unicode() - '0';
}

struct Params {
    char sep1, sep2;
    bool recursive, single, dual;
    int increment, startValue;
};

// Runs extractNextPart from the start to the end of s; each call must move
// the cursor forward or end it.
template <typename Str, typename... Seps> void walkParts(const Str& s, Seps... seps) {
    Str part;
    int pos = 0;
    int calls = 0;
    while (pos != -1) {
        const int before = pos;
        ZKStringServer::extractNextPart(part, s, pos, seps...);
        ZKFuzz::check(pos == -1 || pos > before, "extractNextPart moves forward");
        ZKFuzz::check(part.size() <= s.size(), "a part comes from the string");
        ZKFuzz::check(++calls <= s.size() + 1, "extractNextPart ends");
    }
}

template <typename Str, typename Sep>
void exercise(const Str& s, Sep sep1, Sep sep2, const Str& sepString, const Params& p) {
    walkParts(s, sep1);
    walkParts(s, sep1, sep2);
    walkParts(s, sepString);

    ZKArray<Str> list;
    ZKStringServer::splitParts(list, s, sep1);
    // The parts between separators, less one empty part at the end.
    auto model = s.split(sep1);
    if (model.last().isEmpty())
        model.removeLast();
    ZKFuzz::check(list.size() == model.size(), "splitParts gives the parts between separators");
    for (int i = 0; i < model.size(); ++i)
        ZKFuzz::check(list[i] == model[i], "splitParts keeps the parts as they are");
    ZKStringServer::splitParts(list, s, sep1, sep2);
    ZKStringServer::splitParts(list, s, sepString);
    ZKStringServer::splitMultiLine(list, s);
    ZKFuzz::check(list.size() <= 4 * (s.size() + 1), "splitting gives at most a part a character");

    Str t = s;
    ZKStringServer::removeSurroundingSpaces(t);
    t = s;
    ZKStringServer::removeSurroundingQuotes(t, p.recursive, p.single, p.dual);
    t = s;
    ZKStringServer::makeWithDoubleQuotes(t, p.single);
    t = s;
    ZKStringServer::makeWithSingleQuotes(t, p.dual);

    ZKArray<Str> args;
    ZKStringServer::splitCmdLineArgs(args, s);
    for (long long i = 0; i < args.size(); ++i)
        ZKFuzz::check(!args[i].isEmpty(), "a command line gives no empty argument");

    Str suffix;
    int value = -1;
    int digits = 0;
    long long modelValue = 0;
    while (digits < s.size() && isAsciiDigit(s.at(s.size() - 1 - digits)))
        ++digits;
    for (int i = s.size() - digits; i < s.size() && modelValue <= INT_MAX; ++i)
        modelValue = modelValue * 10 + (digitValue(s.at(i)));
    const bool found = ZKStringServer::extractNumberSuffix(s, suffix, &value);
    ZKFuzz::check(found == (digits > 0), "a number suffix is the run of digits at the end");
    if (found)
        ZKFuzz::check(suffix == s.right(digits) && value == (modelValue > INT_MAX ? 0 : modelValue),
                      "the suffix and its value, 0 when too large for an int");
    t = s;
    ZKStringServer::replaceOrAddNumberSuffix(t, sepString);
    t = s;
    ZKStringServer::incrementSuffix(t, p.increment, p.startValue);
    ZKStringServer::computeBiggestCommonPrefix(list);
    ZKStringServer::computeBiggestCommonSuffix(list);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    Params p;
    p.sep1 = input.ConsumeIntegral<char>();
    p.sep2 = input.ConsumeIntegral<char>();
    p.recursive = input.ConsumeBool();
    p.single = input.ConsumeBool();
    p.dual = input.ConsumeBool();
    p.increment = input.ConsumeIntegral<int>();
    p.startValue = input.ConsumeIntegral<int>();
    const bool rawUnits = input.ConsumeBool();
    const std::string sepString = input.ConsumeRandomLengthString(8);
    const std::string text = input.ConsumeRemainingBytesAsString();

    const ZKStringC textC(QByteArray(text.data(), int(text.size())));
    const ZKStringC sepC(QByteArray(sepString.data(), int(sepString.size())));
    exercise(textC, p.sep1, p.sep2, sepC, p);

    const ZKStringW textW =
        rawUnits
            ? ZKStringW(QString(reinterpret_cast<const QChar*>(text.data()), int(text.size() / 2)))
            : ZKStringW(QString::fromUtf8(text.data(), int(text.size())));
    const ZKStringW sepW = QString::fromUtf8(sepString.data(), int(sepString.size()));
    exercise(textW, QChar(QLatin1Char(p.sep1)), QChar(QLatin1Char(p.sep2)), sepW, p);
    ZKArray<ZKStringW> listW;
    ZKStringServer::splitParts(listW, textW, p.sep1);
    ZKStringServer::splitParts(listW, textW, p.sep1, p.sep2);

    // The same text as a command line of arguments (argc, argv).
    ZKArray<ZKStringC> parts;
    ZKStringServer::splitParts(parts, textC, ' ');
    std::vector<QByteArray> storage;
    std::vector<char*> argv;
    for (long long i = 0; i < parts.size() && i < 64; ++i)
        storage.push_back(parts[i]);
    for (QByteArray& a : storage)
        argv.push_back(a.data());
    const int argc = int(argv.size());
    ZKArray<ZKStringC> argsC;
    ZKStringServer::extractCmdLineArgs(argsC, argc, argv.data());
    ZKFuzz::check(argsC.size() == argc, "every argument is taken");
    ZKArray<ZKStringW> argsW;
    ZKStringServer::extractCmdLineArgs(argsW, argc, argv.data());
    ZKFuzz::check(argsW.size() == argc, "every wide argument is taken");
    ZKArray<ZKStringC> back;
    ZKStringServer::toAscii(back, argsW);
    ZKArray<ZKStringW> forth;
    ZKStringServer::toUnicode(forth, argsC);
    return 0;
}
