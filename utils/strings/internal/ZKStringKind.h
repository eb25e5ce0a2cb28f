// ZKStringKind.h (internal): what the string-server algorithms need to know
// about a string kind, so that each algorithm is written once as a template
// over ZKStringC (bytes, char) and ZKStringW (UTF-16 code units, QChar).
#pragma once

#include "ZKStringC.h"
#include "ZKStringW.h"

namespace ZKInternal {

template <typename Str> struct ZKStringKind;

template <> struct ZKStringKind<ZKStringC> {
    using Char = char;
    static constexpr Char ch(char c) { return c; }
    static constexpr unsigned code(Char c) { return static_cast<unsigned char>(c); }
};

template <> struct ZKStringKind<ZKStringW> {
    using Char = QChar;
    static constexpr Char ch(char c) { return QChar(static_cast<unsigned char>(c)); }
    static constexpr unsigned code(Char c) { return c.unicode(); }
};

// Only the ASCII digits count, for both string kinds.
template <typename Str> constexpr bool isAsciiDigit(typename ZKStringKind<Str>::Char c) {
    const unsigned u = ZKStringKind<Str>::code(c);
    return u >= '0' && u <= '9';
}

} // namespace ZKInternal
