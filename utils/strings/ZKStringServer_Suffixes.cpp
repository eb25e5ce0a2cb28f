#include "ZKStringServer.h"

#include "internal/ZKStringKind.h"

#include <climits>

using ZKInternal::isAsciiDigit;
using ZKInternal::ZKStringKind;

namespace {

// Index where the number suffix of s starts; s.size() when there is none.
template <typename Str> int numberSuffixStart(const Str& s) {
    int start = s.size();
    while (start > 0 && isAsciiDigit<Str>(s.at(start - 1)))
        --start;
    return start;
}

// The decimal value of the digits s[from, size()); 0 when it does not fit an
// int (leading zeros do not count against the length).
template <typename Str> int readDigits(const Str& s, int from) {
    long long value = 0;
    for (int i = from; i < s.size(); ++i) {
        value = value * 10 + (ZKStringKind<Str>::code(s.at(i)) - '0');
        if (value > INT_MAX)
            return 0;
    }
    return int(value);
}

template <typename Str> bool extractNumberSuffixT(const Str& s, Str& suffix, int* value) {
    const int start = numberSuffixStart(s);
    if (start == s.size())
        return false;
    if (value)
        *value = readDigits(s, start);
    suffix = s.mid(start);
    return true;
}

template <typename Str> bool replaceOrAddNumberSuffixT(Str& s, const Str& suffix) {
    const Str added = suffix; // s and suffix may be the same string
    bool readsAsInt = false;
    (void)added.toInt(&readsAsInt, 10);
    if (readsAsInt)
        s.truncate(numberSuffixStart(s));
    s.append(added);
    return true;
}

// n + increment with the wrap-around of the machine addition instead of an
// overflow.
int addWrapping(int n, int increment) {
    return int(unsigned(n) + unsigned(increment));
}

} // namespace

bool ZKStringServer::extractNumberSuffix(const ZKStringC& s, ZKStringC& suffix, int* value) {
    return extractNumberSuffixT(s, suffix, value);
}

bool ZKStringServer::extractNumberSuffix(const ZKStringW& s, ZKStringW& suffix, int* value) {
    return extractNumberSuffixT(s, suffix, value);
}

bool ZKStringServer::replaceOrAddNumberSuffix(ZKStringC& s, const ZKStringC& suffix) {
    return replaceOrAddNumberSuffixT(s, suffix);
}

bool ZKStringServer::replaceOrAddNumberSuffix(ZKStringW& s, const ZKStringW& suffix) {
    return replaceOrAddNumberSuffixT(s, suffix);
}

void ZKStringServer::incrementSuffix(ZKStringC& s, int increment, int startValue) {
    const int start = numberSuffixStart(s);
    if (start == s.size()) {
        s.append(ZKStringC::intStr(startValue));
        return;
    }
    const int n = readDigits(s, start);
    s.truncate(start);
    s.append(ZKStringC::intStr(addWrapping(n, increment)));
}

void ZKStringServer::incrementSuffix(ZKStringW& s, int increment, int startValue) {
    // Kept on purpose: the wide form goes through Latin-1 and back through
    // UTF-8, so characters from U+0080 up do not survive it.
    ZKStringC bytes;
    s.convertTo(bytes);
    incrementSuffix(bytes, increment, startValue);
    s.convertFrom(bytes);
}

void ZKStringServer::incrementNumberInString(ZKStringC&, int, int, int) {
    // kept: does nothing
}

void ZKStringServer::incrementNumberInString(ZKStringW&, int, int, int) {
    // kept: does nothing
}
