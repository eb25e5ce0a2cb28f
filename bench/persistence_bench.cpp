// ZKBinaryFile against raw stdio and QDataStream: writing then reading back
// 10^7 ints, 10^7 doubles and 10^6 short byte strings, item by item.
#include "ZKBinaryFile.h"

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

constexpr int kNumbers = 10000000;
constexpr int kStrings = 1000000;

QString scratchPath() {
    static QTemporaryDir dir;
    return dir.filePath(QStringLiteral("bench.bin"));
}

template <typename T> const char* numbersLabel() {
    return std::is_same_v<T, int> ? "10^7 ints" : "10^7 doubles";
}

template <typename T> T valueAt(int i) {
    return static_cast<T>(i) * static_cast<T>(3);
}

template <typename T> void ZKBinaryFile_WriteRead(benchmark::State& state) {
    state.SetLabel(numbersLabel<T>());
    const ZKStringW path(scratchPath());
    for (auto _ : state) {
        {
            ZKBinaryFile f(path, "wb");
            for (int i = 0; i < kNumbers; ++i) {
                if constexpr (std::is_same_v<T, int>)
                    f.writeInt(valueAt<T>(i));
                else
                    f.writeDouble(valueAt<T>(i));
            }
        }
        ZKBinaryFile f(path, "rb");
        T sum = 0, v = 0;
        for (int i = 0; i < kNumbers; ++i) {
            if constexpr (std::is_same_v<T, int>)
                f.readInt(v);
            else
                f.readDouble(v);
            sum += v;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

template <typename T> void Stdio_WriteRead(benchmark::State& state) {
    state.SetLabel(numbersLabel<T>());
    const QByteArray path = scratchPath().toUtf8();
    for (auto _ : state) {
        FILE* out = std::fopen(path.constData(), "wb");
        for (int i = 0; i < kNumbers; ++i) {
            const T v = valueAt<T>(i);
            std::fwrite(&v, sizeof v, 1, out);
        }
        std::fclose(out);
        FILE* in = std::fopen(path.constData(), "rb");
        T sum = 0, v = 0;
        for (int i = 0; i < kNumbers; ++i) {
            if (std::fread(&v, sizeof v, 1, in) == 1)
                sum += v;
        }
        std::fclose(in);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

template <typename T> void QDataStream_WriteRead(benchmark::State& state) {
    state.SetLabel(numbersLabel<T>());
    const QString path = scratchPath();
    for (auto _ : state) {
        {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            QDataStream out(&file);
            out.setByteOrder(QDataStream::LittleEndian);
            for (int i = 0; i < kNumbers; ++i)
                out << valueAt<T>(i);
        }
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QDataStream in(&file);
        in.setByteOrder(QDataStream::LittleEndian);
        T sum = 0, v = 0;
        for (int i = 0; i < kNumbers; ++i) {
            in >> v;
            sum += v;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * kNumbers);
}

ZKStringC shortString(int i) {
    return ZKStringC("item-") + ZKStringC::intStr(i % 1000);
}

void ZKBinaryFile_Strings(benchmark::State& state) {
    state.SetLabel("10^6 strings");
    const ZKStringW path(scratchPath());
    for (auto _ : state) {
        {
            ZKBinaryFile f(path, "wb");
            for (int i = 0; i < kStrings; ++i)
                f.writeStringC(shortString(i));
        }
        ZKBinaryFile f(path, "rb");
        ZKStringC s;
        long long total = 0;
        for (int i = 0; i < kStrings; ++i) {
            f.readStringC(s);
            total += s.size();
        }
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

void Stdio_Strings(benchmark::State& state) {
    state.SetLabel("10^6 strings");
    const QByteArray path = scratchPath().toUtf8();
    for (auto _ : state) {
        FILE* out = std::fopen(path.constData(), "wb");
        for (int i = 0; i < kStrings; ++i) {
            const ZKStringC s = shortString(i);
            const int n = s.size();
            std::fwrite(&n, 4, 1, out);
            std::fwrite(s.constData(), 1, size_t(n), out);
        }
        std::fclose(out);
        FILE* in = std::fopen(path.constData(), "rb");
        QByteArray s;
        long long total = 0;
        for (int i = 0; i < kStrings; ++i) {
            int n = 0;
            if (std::fread(&n, 4, 1, in) != 1)
                break;
            s.resize(n);
            total += static_cast<long long>(std::fread(s.data(), 1, size_t(n), in));
        }
        std::fclose(in);
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

void QDataStream_Strings(benchmark::State& state) {
    state.SetLabel("10^6 strings");
    const QString path = scratchPath();
    for (auto _ : state) {
        {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            QDataStream out(&file);
            for (int i = 0; i < kStrings; ++i)
                out << static_cast<const QByteArray&>(shortString(i));
        }
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QDataStream in(&file);
        QByteArray s;
        long long total = 0;
        for (int i = 0; i < kStrings; ++i) {
            in >> s;
            total += s.size();
        }
        benchmark::DoNotOptimize(total);
    }
    state.SetItemsProcessed(state.iterations() * kStrings);
}

} // namespace

BENCHMARK_TEMPLATE(ZKBinaryFile_WriteRead, int)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(Stdio_WriteRead, int)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(QDataStream_WriteRead, int)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(ZKBinaryFile_WriteRead, double)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(Stdio_WriteRead, double)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(QDataStream_WriteRead, double)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKBinaryFile_Strings)->Unit(benchmark::kMillisecond);
BENCHMARK(Stdio_Strings)->Unit(benchmark::kMillisecond);
BENCHMARK(QDataStream_Strings)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
