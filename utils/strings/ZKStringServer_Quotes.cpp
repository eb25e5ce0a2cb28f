#include "ZKStringServer.h"

#include "internal/ZKStringKind.h"

using ZKInternal::ZKStringKind;

namespace {

template <typename Str> bool removeSurroundingSpacesT(Str& s) {
    if (s.isEmpty())
        return false;
    const auto blank = ZKStringKind<Str>::ch(' '); // only U+0020, not tabs or line breaks
    int first = 0;
    int end = s.size();
    while (first < end && s.at(first) == blank)
        ++first;
    while (end > first && s.at(end - 1) == blank)
        --end;
    if (first == 0 && end == s.size())
        return false;
    s = s.mid(first, end - first);
    return true;
}

// s[first, end) starts and ends with c; a lone c counts as both.
template <typename Str>
bool surroundedBy(const Str& s, int first, int end, typename ZKStringKind<Str>::Char c) {
    return first < end && s.at(first) == c && s.at(end - 1) == c;
}

// The layers are counted first and cut once, so that deeply nested quotes
// cost neither recursion depth nor one copy per layer.
template <typename Str>
bool removeSurroundingQuotesT(Str& s, bool recursive, bool singleQuotes, bool doubleQuotes) {
    const auto dq = ZKStringKind<Str>::ch('"');
    const auto sq = ZKStringKind<Str>::ch('\'');
    int first = 0;
    int end = s.size();
    bool removed = false;
    for (;;) {
        const bool inDouble = doubleQuotes && surroundedBy(s, first, end, dq);
        if (!inDouble && !(singleQuotes && surroundedBy(s, first, end, sq)))
            break;
        removed = true;
        if (end - first == 1) {
            first = end; // a lone quote character becomes empty
            break;
        }
        ++first;
        --end;
        if (!recursive)
            break;
    }
    if (removed)
        s = s.mid(first, end - first);
    return removed;
}

// makeWithDoubleQuotes (quote '"', other '\'') and makeWithSingleQuotes.
template <typename Str> bool makeWithQuotesT(Str& s, char quote, char other, bool replaceOther) {
    const auto q = ZKStringKind<Str>::ch(quote);
    const auto o = ZKStringKind<Str>::ch(other);
    if (replaceOther && surroundedBy(s, 0, s.size(), o))
        s = s.size() > 1 ? Str(s.mid(1, s.size() - 2)) : Str();
    // Kept as it stands: when s is then already quoted the result is false,
    // although the other quotes have been removed.
    if (surroundedBy(s, 0, s.size(), q))
        return false;
    s.prepend(q);
    s.append(q);
    return true;
}

} // namespace

bool ZKStringServer::removeSurroundingSpaces(ZKStringC& s) {
    return removeSurroundingSpacesT(s);
}

bool ZKStringServer::removeSurroundingSpaces(ZKStringW& s) {
    return removeSurroundingSpacesT(s);
}

bool ZKStringServer::removeSurroundingQuotes(ZKStringC& s, bool recursive, bool singleQuotes,
                                             bool doubleQuotes) {
    return removeSurroundingQuotesT(s, recursive, singleQuotes, doubleQuotes);
}

bool ZKStringServer::removeSurroundingQuotes(ZKStringW& s, bool recursive, bool singleQuotes,
                                             bool doubleQuotes) {
    return removeSurroundingQuotesT(s, recursive, singleQuotes, doubleQuotes);
}

bool ZKStringServer::makeWithDoubleQuotes(ZKStringC& s, bool replaceSingleQuotes) {
    return makeWithQuotesT(s, '"', '\'', replaceSingleQuotes);
}

bool ZKStringServer::makeWithDoubleQuotes(ZKStringW& s, bool replaceSingleQuotes) {
    return makeWithQuotesT(s, '"', '\'', replaceSingleQuotes);
}

bool ZKStringServer::makeWithSingleQuotes(ZKStringC& s, bool replaceDoubleQuotes) {
    return makeWithQuotesT(s, '\'', '"', replaceDoubleQuotes);
}

bool ZKStringServer::makeWithSingleQuotes(ZKStringW& s, bool replaceDoubleQuotes) {
    return makeWithQuotesT(s, '\'', '"', replaceDoubleQuotes);
}
