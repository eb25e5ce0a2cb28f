#include "ZKStringServer.h"

#include <algorithm>
#include <iterator>

namespace {

// Length of the longest common prefix (or, with fromEnd, suffix) of the
// strings of list. Each further string can only shorten the candidate length
// n; a first difference at the very start ends the search at once.
template <typename Str> int commonAffixLength(const ZKStaticArray<Str>& list, bool fromEnd) {
    if (list.empty())
        return 0;
    const Str& first = list[0];
    int n = first.size();
    for (long long j = 1; j < list.size(); ++j) {
        const Str& other = list[j];
        n = std::min(n, int(other.size()));
        if (n == 0)
            return 0;
        int k;
        if (fromEnd) {
            const auto a = std::make_reverse_iterator(first.constData() + first.size());
            const auto b = std::make_reverse_iterator(other.constData() + other.size());
            k = int(std::mismatch(a, a + n, b).first - a);
        } else {
            const auto a = first.constData();
            k = int(std::mismatch(a, a + n, other.constData()).first - a);
        }
        if (k == 0)
            return 0;
        n = k;
    }
    return n;
}

} // namespace

int ZKStringServer::computeBiggestCommonPrefix(const ZKStaticArray<ZKStringC>& list) {
    return commonAffixLength(list, false);
}

int ZKStringServer::computeBiggestCommonPrefix(const ZKStaticArray<ZKStringW>& list) {
    return commonAffixLength(list, false);
}

int ZKStringServer::computeBiggestCommonSuffix(const ZKStaticArray<ZKStringC>& list) {
    return commonAffixLength(list, true);
}

int ZKStringServer::computeBiggestCommonSuffix(const ZKStaticArray<ZKStringW>& list) {
    return commonAffixLength(list, true);
}
