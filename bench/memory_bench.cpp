// Memory held by ZKBoolArray and ZKImage side by side with their peers
// (boost::dynamic_bitset and std::vector<bool>; QImage). Each benchmark
// measures the heap that one structure holds while it is alive (glibc's
// mallinfo2: bytes of the chunks in use in the arenas plus the mmap'd
// blocks, malloc's own overhead included), adds the object itself and reports
// it as the counter "bytes" (with "elements", the bytes per element follow).
// The time is that of building and destroying the structure.
//
// The library's figures are checked against its storage rules before
// anything is timed, and a mismatch fails the run: a bool array of n elements
// holds ceil(n / 8) storage bytes plus two guard bytes, reports ceil(n / 8)
// through getDynMemoryUsed() and ceil(n / 8) + 24 through getMemoryUsed(); an
// owning image holds exactly width x height x depth bytes.
#define BOOST_DYNAMIC_BITSET_DONT_USE_FRIENDS
#include <boost/dynamic_bitset.hpp>

#include "ZKBoolArray.h"
#include "ZKImage.h"

#include <QImage>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Bitset = boost::dynamic_bitset<std::uint64_t>;

// Heap bytes in use now.
long long heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<long long>(info.uordblks + info.hblkhd);
}

// False when the heap statistics do not follow malloc (another allocator, or
// a sanitizer's): then nothing is measured.
bool heapIsMeasurable() {
    static const bool measurable = [] {
        constexpr long long kProbe = 1 << 20;
        const long long before = heapInUse();
        void* volatile block = std::malloc(kProbe);
        const bool grew = heapInUse() - before >= kProbe;
        std::free(block);
        return grew;
    }();
    return measurable;
}

// What malloc may add to a block: its chunk header and alignment, or the
// rounding of an mmap'd block to whole pages.
constexpr long long kMallocSlack = 4096 + 64;

// Heap growth while make()'s structure lives, plus the structure itself.
template <typename T, typename Make> long long bytesHeld(Make make) {
    const long long before = heapInUse();
    const T value = make();
    const long long held = heapInUse() - before;
    benchmark::DoNotOptimize(&value);
    return held + static_cast<long long>(sizeof(T));
}

bool skipUnlessMeasurable(benchmark::State& state) {
    if (heapIsMeasurable())
        return false;
    state.SkipWithError("heap statistics unavailable (not glibc's malloc)");
    return true;
}

void setMemoryCounters(benchmark::State& state, long long bytes, long long elements) {
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["elements"] = static_cast<double>(elements);
}

// An empty string when `held` (heap bytes) is what `expected` storage bytes
// cost, else what went wrong.
std::string checkHeld(long long held, long long expected) {
    if (held >= expected && held <= expected + kMallocSlack)
        return {};
    return "heap held " + std::to_string(held) + " bytes for " + std::to_string(expected) +
           " storage bytes";
}

// `held`: what bytesHeld measured for an array of n clear elements.
std::string checkBoolArray(long long n, long long held) {
    const ZKBoolArray a(int(n), false);
    const long long storage = (n + 7) / 8;
    if (a.size() != n || a.getDynMemoryUsed() != storage || a.getMemoryUsed() != storage + 24 ||
        a.capacity() != 8 * storage)
        return "size, capacity or reported bytes differ from ceil(n / 8)";
    // The block: the storage plus the two guard bytes.
    return checkHeld(held - static_cast<long long>(sizeof(ZKBoolArray)), storage + 2);
}

void ZK_BoolArrayClear(benchmark::State& state) {
    if (skipUnlessMeasurable(state))
        return;
    const long long n = state.range(0);
    const long long held = bytesHeld<ZKBoolArray>([n] { return ZKBoolArray(int(n), false); });
    const std::string problem = checkBoolArray(n, held);
    if (!problem.empty()) {
        state.SkipWithError(problem.c_str());
        return;
    }
    setMemoryCounters(state, held, n);
    for (auto _ : state) {
        ZKBoolArray a(int(n), false);
        benchmark::DoNotOptimize(a.getData());
    }
}

void Boost_BoolArrayClear(benchmark::State& state) {
    if (skipUnlessMeasurable(state))
        return;
    const long long n = state.range(0);
    setMemoryCounters(state, bytesHeld<Bitset>([n] { return Bitset(std::size_t(n)); }), n);
    for (auto _ : state) {
        Bitset a(static_cast<std::size_t>(n));
        benchmark::DoNotOptimize(a.m_bits.data());
    }
}

void VecBool_BoolArrayClear(benchmark::State& state) {
    if (skipUnlessMeasurable(state))
        return;
    const long long n = state.range(0);
    setMemoryCounters(
        state, bytesHeld<std::vector<bool>>([n] { return std::vector<bool>(std::size_t(n)); }), n);
    for (auto _ : state) {
        std::vector<bool> a(static_cast<std::size_t>(n));
        benchmark::DoNotOptimize(&a);
    }
}

QImage::Format qtFormat(_ZKImagePacking packing) {
    switch (packing) {
    case ZK_PACKING_RGBA:
        return QImage::Format_RGBA8888;
    case ZK_PACKING_RGB:
        return QImage::Format_RGB888;
    default:
        return QImage::Format_Grayscale8;
    }
}

ZKImage initImage(int width, int height, _ZKImagePacking packing) {
    ZKImage image;
    image.init(ZKPixSize(width, height), packing);
    return image;
}

void ZKImage_Init(benchmark::State& state, int width, int height, _ZKImagePacking packing) {
    if (skipUnlessMeasurable(state))
        return;
    const long long pixelBytes = static_cast<long long>(width) * height * ZKImage::depthOf(packing);
    const ZKImage image = initImage(width, height, packing);
    const long long held = bytesHeld<ZKImage>([=] { return initImage(width, height, packing); });
    std::string problem = checkHeld(held - static_cast<long long>(sizeof(ZKImage)), pixelBytes);
    if (image.getByteCount() != std::size_t(pixelBytes) || image.isBorrowed())
        problem = "the image does not own exactly width x height x depth bytes";
    if (!problem.empty()) {
        state.SkipWithError(problem.c_str());
        return;
    }
    setMemoryCounters(state, held, static_cast<long long>(width) * height);
    for (auto _ : state) {
        ZKImage img = initImage(width, height, packing);
        benchmark::DoNotOptimize(img.getPixels());
    }
}

void QImage_Init(benchmark::State& state, int width, int height, _ZKImagePacking packing) {
    if (skipUnlessMeasurable(state))
        return;
    const QImage::Format format = qtFormat(packing);
    setMemoryCounters(state, bytesHeld<QImage>([=] { return QImage(width, height, format); }),
                      static_cast<long long>(width) * height);
    for (auto _ : state) {
        QImage img(width, height, format);
        benchmark::DoNotOptimize(img.bits());
    }
}

} // namespace

BENCHMARK(ZK_BoolArrayClear)->Arg(1000)->Arg(1000000)->Arg(100000000);
BENCHMARK(Boost_BoolArrayClear)->Arg(1000)->Arg(1000000)->Arg(100000000);
BENCHMARK(VecBool_BoolArrayClear)->Arg(1000)->Arg(1000000)->Arg(100000000);

// Odd widths: QImage pads its rows to 4 bytes, ZKImage has no filler bytes.
BENCHMARK_CAPTURE(ZKImage_Init, 4096x4096_RGBA, 4096, 4096, ZK_PACKING_RGBA);
BENCHMARK_CAPTURE(QImage_Init, 4096x4096_RGBA, 4096, 4096, ZK_PACKING_RGBA);
BENCHMARK_CAPTURE(ZKImage_Init, 1001x1001_RGB, 1001, 1001, ZK_PACKING_RGB);
BENCHMARK_CAPTURE(QImage_Init, 1001x1001_RGB, 1001, 1001, ZK_PACKING_RGB);
BENCHMARK_CAPTURE(ZKImage_Init, 1001x1001_grey, 1001, 1001, ZK_PACKING_GREY);
BENCHMARK_CAPTURE(QImage_Init, 1001x1001_grey, 1001, 1001, ZK_PACKING_GREY);

// Chunks that malloc keeps in its per-thread cache count as in use for
// mallinfo2, which would hide small blocks: the program runs itself again with
// that cache turned off.
int main(int argc, char** argv) {
    static const char kNoThreadCache[] = "glibc.malloc.tcache_count=0";
    const char* tunables = std::getenv("GLIBC_TUNABLES");
    if (!tunables || !std::strstr(tunables, kNoThreadCache)) {
        const std::string value =
            tunables && *tunables ? std::string(tunables) + ":" + kNoThreadCache : kNoThreadCache;
        setenv("GLIBC_TUNABLES", value.c_str(), 1);
        execv("/proc/self/exe", argv);
        // Not reached unless exec failed: small blocks may then be reported wrong.
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
