#include "ZKStringServer.h"

#include "internal/ZKStringKind.h"

using ZKInternal::ZKStringKind;

namespace {

// Where a separator was found and how many characters it takes; index -1
// when there is none.
struct SeparatorHit {
    int index;
    int length;
};

template <typename Str> struct OneSeparator {
    typename ZKStringKind<Str>::Char sep;
    SeparatorHit operator()(const Str& s, int from) const { return {int(s.indexOf(sep, from)), 1}; }
};

// One pass for the first of either character (two separate searches would
// rescan the rest of the string for a rare separator on every part).
template <typename Str> struct TwoSeparators {
    using Char = typename ZKStringKind<Str>::Char;
    Char sep1;
    Char sep2;
    SeparatorHit operator()(const Str& s, int from) const {
        const Char* d = s.constData();
        const int n = s.size();
        for (int i = from; i < n; ++i) {
            const Char c = d[i];
            if (c != sep1 && c != sep2)
                continue;
            // "\r\n" and "\n\r" are one break. Kept: when sep1 == sep2 a
            // doubled separator is one break too, as the pair rule gives.
            const bool pair =
                i + 1 < n && ((c == sep1 && d[i + 1] == sep2) || (c == sep2 && d[i + 1] == sep1));
            return {i, pair ? 2 : 1};
        }
        return {-1, 0};
    }
};

template <typename Str> struct SeparatorString {
    Str sep; // a shared copy: the caller's may be an element of the list being filled
    SeparatorHit operator()(const Str& s, int from) const {
        // An empty separator would be found everywhere without consuming
        // anything: it is never found instead.
        if (sep.isEmpty())
            return {-1, 0};
        return {int(s.indexOf(sep, from)), int(sep.size())};
    }
};

template <typename Str, typename Find>
void extractNextPartT(Str& part, const Str& s, int& pos, const Find& find) {
    if (pos < 0 || pos >= s.size()) {
        part = Str();
        pos = -1;
        return;
    }
    const SeparatorHit hit = find(s, pos);
    if (hit.index < 0) {
        part = s.mid(pos);
        pos = -1;
        return;
    }
    const int start = pos;
    pos = hit.index + hit.length;
    part = s.mid(start, hit.index - start); // part may be s itself: read it last
}

// extractNextPartT in a loop, each part built straight into the list.
template <typename Str, typename Find>
void splitPartsT(ZKArray<Str>& list, const Str& s, const Find& find) {
    const Str source = s; // s may be an element of list, which appending moves
    const int size = source.size();
    int pos = 0;
    // A part that starts at the end is the empty last part: dropped ("a,b,"
    // gives a, b; "" gives nothing).
    while (pos < size) {
        const SeparatorHit hit = find(source, pos);
        if (hit.index < 0) {
            list.push_back(source.mid(pos));
            return;
        }
        list.push_back(source.mid(pos, hit.index - pos));
        pos = hit.index + hit.length;
    }
}

QChar latin1(char c) {
    return QChar(static_cast<unsigned char>(c));
}

} // namespace

void ZKStringServer::extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos, char sep) {
    extractNextPartT(part, s, pos, OneSeparator<ZKStringC>{sep});
}

void ZKStringServer::extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos, QChar sep) {
    extractNextPartT(part, s, pos, OneSeparator<ZKStringW>{sep});
}

void ZKStringServer::extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos, char sep1,
                                     char sep2) {
    extractNextPartT(part, s, pos, TwoSeparators<ZKStringC>{sep1, sep2});
}

void ZKStringServer::extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos, QChar sep1,
                                     QChar sep2) {
    extractNextPartT(part, s, pos, TwoSeparators<ZKStringW>{sep1, sep2});
}

void ZKStringServer::extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos,
                                     const ZKStringC& sep) {
    extractNextPartT(part, s, pos, SeparatorString<ZKStringC>{sep});
}

void ZKStringServer::extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos,
                                     const ZKStringW& sep) {
    extractNextPartT(part, s, pos, SeparatorString<ZKStringW>{sep});
}

void ZKStringServer::splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, char sep, int) {
    splitPartsT(list, s, OneSeparator<ZKStringC>{sep});
}

void ZKStringServer::splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, char sep1, char sep2,
                                int) {
    splitPartsT(list, s, TwoSeparators<ZKStringC>{sep1, sep2});
}

void ZKStringServer::splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, const ZKStringC& sep,
                                int) {
    splitPartsT(list, s, SeparatorString<ZKStringC>{sep});
}

void ZKStringServer::splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, QChar sep, int) {
    splitPartsT(list, s, OneSeparator<ZKStringW>{sep});
}

void ZKStringServer::splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, QChar sep1,
                                QChar sep2, int) {
    splitPartsT(list, s, TwoSeparators<ZKStringW>{sep1, sep2});
}

void ZKStringServer::splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, const ZKStringW& sep,
                                int) {
    splitPartsT(list, s, SeparatorString<ZKStringW>{sep});
}

void ZKStringServer::splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, char sep, int) {
    splitPartsT(list, s, OneSeparator<ZKStringW>{latin1(sep)});
}

void ZKStringServer::splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, char sep1, char sep2,
                                int) {
    splitPartsT(list, s, TwoSeparators<ZKStringW>{latin1(sep1), latin1(sep2)});
}

void ZKStringServer::splitMultiLine(ZKArray<ZKStringC>& list, const ZKStringC& s) {
    splitPartsT(list, s, TwoSeparators<ZKStringC>{'\n', '\r'});
}

void ZKStringServer::splitMultiLine(ZKArray<ZKStringW>& list, const ZKStringW& s) {
    splitPartsT(list, s, TwoSeparators<ZKStringW>{QChar('\n'), QChar('\r')});
}
