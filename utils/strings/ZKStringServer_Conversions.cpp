#include "ZKStringServer.h"

namespace {

template <typename To, typename From, typename Convert>
void convertAll(ZKArray<To>& out, const ZKStaticArray<From>& in, Convert convert) {
    out.clear();
    out.reserve(in.size());
    for (const From& s : in)
        out.push_back(convert(s));
}

} // namespace

ZKStringW ZKStringServer::fromNonUnicode(const char* s) {
    return fromNonUnicode(ZKStringC(s));
}

// Kept asymmetric on purpose: UTF-8 from bytes, Latin-1 back to bytes.
ZKStringW ZKStringServer::fromNonUnicode(const ZKStringC& s) {
    ZKStringW w;
    w.convertFrom(s);
    return w;
}

ZKStringC ZKStringServer::toAscii(const ZKStringW& s) {
    ZKStringC c;
    s.convertTo(c);
    return c;
}

ZKStringC ZKStringServer::toAscii(const wchar_t* s) {
    return s ? toAscii(ZKStringW(QString::fromWCharArray(s))) : ZKStringC();
}

void ZKStringServer::toUnicode(ZKArray<ZKStringW>& out, const ZKStaticArray<ZKStringC>& in) {
    convertAll(out, in, [](const ZKStringC& s) { return fromNonUnicode(s); });
}

void ZKStringServer::toAscii(ZKArray<ZKStringC>& out, const ZKStaticArray<ZKStringW>& in) {
    convertAll(out, in, [](const ZKStringW& s) { return toAscii(s); });
}
