#include "ZKStringServer.h"

#include "internal/ZKStringKind.h"

using ZKInternal::ZKStringKind;

namespace {

template <typename Str> void splitCmdLineArgsT(ZKArray<Str>& list, const Str& line) {
    const Str source = line; // line may be an element of list, which appending moves
    const int n = source.size();
    // Kept on purpose: the reservation heuristic, length / 4 strings below 40
    // characters, 10 from there on.
    list.reserve(n < 40 ? n / 4 : 10);
    const auto quote = ZKStringKind<Str>::ch('"');
    const auto blank = ZKStringKind<Str>::ch(' ');
    const auto* d = source.constData();
    bool inQuotes = false;
    int start = 0;
    for (int i = 0; i < n; ++i) {
        if (d[i] == quote) {
            inQuotes = !inQuotes;
        } else if (d[i] == blank && !inQuotes) {
            if (i > start)
                list.push_back(source.mid(start, i - start));
            start = i + 1;
        }
    }
    if (n > start)
        list.push_back(source.mid(start));
}

template <typename Str, typename Arg, typename Convert>
void extractCmdLineArgsT(ZKArray<Str>& list, int argc, Arg* const* argv, Convert convert) {
    list.clear();
    if (argc <= 0 || !argv)
        return;
    list.reserve(argc);
    for (int i = 0; i < argc; ++i)
        list.push_back(argv[i] ? convert(argv[i]) : Str());
}

} // namespace

void ZKStringServer::splitCmdLineArgs(ZKArray<ZKStringC>& list, const ZKStringC& line) {
    splitCmdLineArgsT(list, line);
}

void ZKStringServer::splitCmdLineArgs(ZKArray<ZKStringW>& list, const ZKStringW& line) {
    splitCmdLineArgsT(list, line);
}

void ZKStringServer::extractCmdLineArgs(ZKArray<ZKStringC>& list, int argc, char** argv) {
    extractCmdLineArgsT(list, argc, argv, [](const char* a) { return ZKStringC(a); });
}

void ZKStringServer::extractCmdLineArgs(ZKArray<ZKStringW>& list, int argc, char** argv) {
    extractCmdLineArgsT(list, argc, argv, [](const char* a) { return fromNonUnicode(a); });
}

void ZKStringServer::extractCmdLineArgs(ZKArray<ZKStringW>& list, int argc, wchar_t** argv) {
    extractCmdLineArgsT(list, argc, argv,
                        [](const wchar_t* a) { return ZKStringW(QString::fromWCharArray(a)); });
}
