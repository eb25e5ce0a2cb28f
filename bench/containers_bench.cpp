// ZKBoolArray against boost::dynamic_bitset<uint64_t> and std::vector<bool>,
// side by side on 10^6 and 10^8 elements: counting, counting over a range,
// walking the set elements of a sparse (0.1 %) and a dense (50 %) set, OR,
// AND and XOR with a second set, listing the set indices, and appending to
// reserved storage.
//
// boost::dynamic_bitset has no count over a range: its peer counts the
// blocks of the range directly (friends disabled to reach them), its best
// case.
#define BOOST_DYNAMIC_BITSET_DONT_USE_FRIENDS
#include <boost/dynamic_bitset.hpp>

#include "ZKBoolArray.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using Bitset = boost::dynamic_bitset<std::uint64_t>;

enum Density { Sparse, Dense };

std::uint64_t splitmix(std::uint64_t& state) {
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

// One set in the three representations, built once per size, density and
// seed.
struct Sets {
    ZKBoolArray zk;
    Bitset boost;
    std::vector<bool> vec;
};

const Sets& sets(long long n, Density density, std::uint64_t seed) {
    static std::map<std::tuple<long long, int, std::uint64_t>, std::unique_ptr<Sets>> cache;
    auto& slot = cache[{n, int(density), seed}];
    if (slot)
        return *slot;
    std::vector<std::uint64_t> words(std::size_t((n + 63) / 64), 0);
    std::uint64_t state = seed;
    if (density == Dense) {
        for (auto& w : words)
            w = splitmix(state);
    } else {
        for (long long i = static_cast<long long>(splitmix(state) % 2000); i < n;
             i += 1 + static_cast<long long>(splitmix(state) % 1999))
            words[std::size_t(i >> 6)] |= std::uint64_t(1) << (i & 63);
    }
    if (n & 63)
        words.back() &= (std::uint64_t(1) << (n & 63)) - 1;
    slot = std::make_unique<Sets>();
    slot->zk.assign(n, reinterpret_cast<const char*>(words.data()));
    slot->boost = Bitset(words.begin(), words.end());
    slot->boost.resize(std::size_t(n));
    slot->vec.resize(std::size_t(n));
    for (long long i = 0; i < n; ++i)
        slot->vec[std::size_t(i)] = (words[std::size_t(i >> 6)] >> (i & 63)) & 1;
    return *slot;
}

long long scopeFirst(long long n) {
    return n / 7 + 3;
}
long long scopeLast(long long n) {
    return n - n / 5 + 5;
}

// countBitSet
void ZK_Count(benchmark::State& state) {
    const Sets& s = sets(state.range(0), Dense, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(s.zk.countBitSet());
}
void Boost_Count(benchmark::State& state) {
    const Sets& s = sets(state.range(0), Dense, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(s.boost.count());
}
void VecBool_Count(benchmark::State& state) {
    const Sets& s = sets(state.range(0), Dense, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::count(s.vec.begin(), s.vec.end(), true));
}

// countBitSetInScope
void ZK_CountInScope(benchmark::State& state) {
    const long long n = state.range(0);
    const Sets& s = sets(n, Dense, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(s.zk.countBitSetInScope(scopeFirst(n), scopeLast(n)));
}
void Boost_CountInScope(benchmark::State& state) {
    const long long n = state.range(0);
    const Sets& s = sets(n, Dense, 1);
    for (auto _ : state) {
        const std::size_t first = std::size_t(scopeFirst(n)), last = std::size_t(scopeLast(n));
        const std::size_t fb = first / 64, lb = (last - 1) / 64;
        const auto& blocks = s.boost.m_bits;
        long long c = 0;
        for (std::size_t b = fb + 1; b < lb; ++b)
            c += __builtin_popcountll(blocks[b]);
        c += __builtin_popcountll(blocks[fb] & (~0ull << (first % 64)));
        c += __builtin_popcountll(blocks[lb] & (~0ull >> (63 - (last - 1) % 64)));
        benchmark::DoNotOptimize(c);
    }
}
void VecBool_CountInScope(benchmark::State& state) {
    const long long n = state.range(0);
    const Sets& s = sets(n, Dense, 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            std::count(s.vec.begin() + scopeFirst(n), s.vec.begin() + scopeLast(n), true));
}

// A full walk over the set elements.
template <Density D> void ZK_Walk(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    for (auto _ : state) {
        long long sum = 0;
        for (long long i = s.zk.findFirst(true, 0); i != -1; s.zk.goToNextSet(i))
            sum += i;
        benchmark::DoNotOptimize(sum);
    }
}
template <Density D> void Boost_Walk(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    for (auto _ : state) {
        long long sum = 0;
        for (std::size_t i = s.boost.find_first(); i != Bitset::npos; i = s.boost.find_next(i))
            sum += (long long)i;
        benchmark::DoNotOptimize(sum);
    }
}
template <Density D> void VecBool_Walk(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    for (auto _ : state) {
        long long sum = 0;
        const std::size_t n = s.vec.size();
        for (std::size_t i = 0; i < n; ++i)
            if (s.vec[i])
                sum += (long long)i;
        benchmark::DoNotOptimize(sum);
    }
}

// OR, AND, XOR of a copy of one dense set with another, in place.
enum Op { Or, And, Xor };

template <Op O> void ZK_Combine(benchmark::State& state) {
    ZKBoolArray a = sets(state.range(0), Dense, 1).zk;
    const ZKBoolArray& b = sets(state.range(0), Dense, 3).zk;
    for (auto _ : state) {
        if (O == Or)
            a.set(b);
        else if (O == And)
            a.inter(b);
        else
            a.toggle(b);
        benchmark::ClobberMemory();
    }
}
template <Op O> void Boost_Combine(benchmark::State& state) {
    Bitset a = sets(state.range(0), Dense, 1).boost;
    const Bitset& b = sets(state.range(0), Dense, 3).boost;
    for (auto _ : state) {
        if (O == Or)
            a |= b;
        else if (O == And)
            a &= b;
        else
            a ^= b;
        benchmark::ClobberMemory();
    }
}
template <Op O> void VecBool_Combine(benchmark::State& state) {
    std::vector<bool> a = sets(state.range(0), Dense, 1).vec;
    const std::vector<bool>& b = sets(state.range(0), Dense, 3).vec;
    for (auto _ : state) {
        const std::size_t n = a.size();
        for (std::size_t i = 0; i < n; ++i)
            a[i] = O == Or ? (a[i] || b[i]) : O == And ? (a[i] && b[i]) : (a[i] != b[i]);
        benchmark::ClobberMemory();
    }
}

// The set indices into an int array.
template <Density D> void ZK_GetIndicesSet(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    ZKArray<int> out;
    for (auto _ : state) {
        s.zk.getIndicesSet(out);
        benchmark::DoNotOptimize(out.data());
    }
}
template <Density D> void Boost_GetIndicesSet(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    std::vector<int> out;
    for (auto _ : state) {
        out.clear();
        for (std::size_t i = s.boost.find_first(); i != Bitset::npos; i = s.boost.find_next(i))
            out.push_back(int(i));
        benchmark::DoNotOptimize(out.data());
    }
}
template <Density D> void VecBool_GetIndicesSet(benchmark::State& state) {
    const Sets& s = sets(state.range(0), D, 2);
    std::vector<int> out;
    for (auto _ : state) {
        out.clear();
        const std::size_t n = s.vec.size();
        for (std::size_t i = 0; i < n; ++i)
            if (s.vec[i])
                out.push_back(int(i));
        benchmark::DoNotOptimize(out.data());
    }
}

// Appending n elements to storage reserved beforehand.
void ZK_PushBackReserved(benchmark::State& state) {
    const long long n = state.range(0);
    for (auto _ : state) {
        ZKBoolArray a;
        a.reserve(n);
        for (long long i = 0; i < n; ++i)
            a.push_back_reserved((i & 3) == 0);
        benchmark::DoNotOptimize(a.getData());
    }
}
void Boost_PushBackReserved(benchmark::State& state) {
    const long long n = state.range(0);
    for (auto _ : state) {
        Bitset a;
        a.reserve(std::size_t(n));
        for (long long i = 0; i < n; ++i)
            a.push_back((i & 3) == 0);
        benchmark::DoNotOptimize(a.m_bits.data());
    }
}
void VecBool_PushBackReserved(benchmark::State& state) {
    const long long n = state.range(0);
    for (auto _ : state) {
        std::vector<bool> a;
        a.reserve(std::size_t(n));
        for (long long i = 0; i < n; ++i)
            a.push_back((i & 3) == 0);
        benchmark::DoNotOptimize(a.size());
    }
}

constexpr long long kSmall = 1000000;
constexpr long long kLarge = 100000000;

#define ZK_SIDE_BY_SIDE(name)                                                                      \
    BENCHMARK(ZK_##name)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);                 \
    BENCHMARK(Boost_##name)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);              \
    BENCHMARK(VecBool_##name)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond)

#define ZK_SIDE_BY_SIDE_T(name, arg)                                                               \
    BENCHMARK_TEMPLATE(ZK_##name, arg)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);   \
    BENCHMARK_TEMPLATE(Boost_##name, arg)                                                          \
        ->Arg(kSmall)                                                                              \
        ->Arg(kLarge)                                                                              \
        ->Unit(benchmark::kMicrosecond);                                                           \
    BENCHMARK_TEMPLATE(VecBool_##name, arg)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond)

} // namespace

ZK_SIDE_BY_SIDE(Count);
ZK_SIDE_BY_SIDE(CountInScope);
ZK_SIDE_BY_SIDE_T(Walk, Sparse);
ZK_SIDE_BY_SIDE_T(Walk, Dense);
ZK_SIDE_BY_SIDE_T(Combine, Or);
ZK_SIDE_BY_SIDE_T(Combine, And);
ZK_SIDE_BY_SIDE_T(Combine, Xor);
ZK_SIDE_BY_SIDE_T(GetIndicesSet, Sparse);
ZK_SIDE_BY_SIDE_T(GetIndicesSet, Dense);
ZK_SIDE_BY_SIDE(PushBackReserved);

BENCHMARK_MAIN();
