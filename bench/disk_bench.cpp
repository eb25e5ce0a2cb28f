// Line reading: ZKDisk::readTextLine on a C stream against getline(3) and
// QFile::readLine, each reading every line of the same 50 MB text file.
#include "ZKDisk.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr long long kFileBytes = 50LL * 1024 * 1024;

// A 50 MB file of lines from 0 to 160 bytes, mostly LF-terminated with some
// CRLF ones, written once for all benchmarks.
const QByteArray& textFilePath() {
    static QTemporaryDir dir;
    static const QByteArray path = [] {
        const QByteArray p = QFile::encodeName(dir.filePath("lines.txt"));
        FILE* f = std::fopen(p.constData(), "wb");
        if (!f)
            std::abort();
        std::mt19937 random(12345);
        std::uniform_int_distribution<int> length(0, 160);
        std::uniform_int_distribution<int> letter('a', 'z');
        QByteArray line;
        long long written = 0;
        while (written < kFileBytes) {
            line.resize(length(random));
            for (char& c : line)
                c = char(letter(random));
            line.append(random() % 8 == 0 ? "\r\n" : "\n");
            written +=
                static_cast<long long>(std::fwrite(line.constData(), 1, size_t(line.size()), f));
        }
        std::fclose(f);
        return p;
    }();
    return path;
}

void ZKDisk_ReadLines(benchmark::State& state) {
    state.SetLabel("50 MB");
    const QByteArray& path = textFilePath();
    for (auto _ : state) {
        FILE* f = std::fopen(path.constData(), "rb");
        ZKStringC line;
        long long bytes = 0;
        while (ZKDisk::readTextLine(f, line))
            bytes += line.size();
        std::fclose(f);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(state.iterations() * kFileBytes);
}

void Getline_ReadLines(benchmark::State& state) {
    state.SetLabel("50 MB");
    const QByteArray& path = textFilePath();
    for (auto _ : state) {
        FILE* f = std::fopen(path.constData(), "rb");
        char* buffer = nullptr;
        size_t capacity = 0;
        long long bytes = 0;
        ssize_t n;
        while ((n = getline(&buffer, &capacity, f)) != -1)
            bytes += n;
        std::free(buffer);
        std::fclose(f);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(state.iterations() * kFileBytes);
}

void QFile_ReadLines(benchmark::State& state) {
    state.SetLabel("50 MB");
    const QByteArray& path = textFilePath();
    for (auto _ : state) {
        QFile file(QFile::decodeName(path));
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        long long bytes = 0;
        while (!file.atEnd())
            bytes += file.readLine().size();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(state.iterations() * kFileBytes);
}

} // namespace

BENCHMARK(ZKDisk_ReadLines)->Unit(benchmark::kMillisecond);
BENCHMARK(Getline_ReadLines)->Unit(benchmark::kMillisecond);
BENCHMARK(QFile_ReadLines)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
