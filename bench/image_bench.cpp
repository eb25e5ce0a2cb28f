// ZKImage pixel loops and the PNG codec side by side with QImage doing the
// same work: packing conversion, vertical mirroring, solid fill, mixing with
// a colour (QPainter source-over with a translucent colour), PNG load and save.
// QImage may spread a conversion over a thread pool: the CPU time measured is
// the whole process's.
#include "ZKImage.h"
#include "ZKImageIO_Utils.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>

namespace {

constexpr int kSide = 4096;
constexpr int kPngSide = 2048;

// A picture-like pattern: smooth gradients with some noise, so that PNG
// compression has real work to do.
void paint(unsigned char* p, int width, int height, int depth) {
    std::mt19937 rng(1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x, p += depth) {
            const unsigned noise = rng() & 7;
            p[0] = static_cast<unsigned char>(x + noise);
            p[1] = static_cast<unsigned char>(y + noise);
            p[2] = static_cast<unsigned char>((x ^ y) >> 3);
            if (depth == 4)
                p[3] = static_cast<unsigned char>(255 - (noise << 2));
        }
}

ZKImage makeImage(int side, _ZKImagePacking packing) {
    ZKImage image;
    image.init(ZKPixSize(side, side), packing);
    paint(image.getPixels(), side, side, image.getDepth());
    return image;
}

QImage makeQImage(int side, QImage::Format format, int depth) {
    QImage image(side, side, format);
    paint(image.bits(), side, side, depth);
    return image;
}

void setBytes(benchmark::State& state, long long bytesPerIteration, const char* size) {
    state.SetBytesProcessed(state.iterations() * bytesPerIteration);
    state.SetLabel(size);
}

void ZKImage_Convert(benchmark::State& state, _ZKImagePacking from, _ZKImagePacking to) {
    const ZKImage source = makeImage(kSide, from);
    ZKImage out;
    for (auto _ : state) {
        source.convertPacking(out, to);
        benchmark::DoNotOptimize(out.getPixels());
    }
    setBytes(state, (long long)(source.getDepth() + out.getDepth()) * kSide * kSide, "4096x4096");
}
BENCHMARK_CAPTURE(ZKImage_Convert, RgbToBgra, ZK_PACKING_RGB, ZK_PACKING_BGRA)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ZKImage_Convert, RgbaToBgra, ZK_PACKING_RGBA, ZK_PACKING_BGRA)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

void QImage_Convert(benchmark::State& state, QImage::Format from, int depth) {
    const QImage source = makeQImage(kSide, from, depth);
    for (auto _ : state) {
        QImage out = source.convertToFormat(QImage::Format_ARGB32);
        benchmark::DoNotOptimize(out.constBits());
    }
    setBytes(state, (long long)(depth + 4) * kSide * kSide, "4096x4096");
}
BENCHMARK_CAPTURE(QImage_Convert, RgbToBgra, QImage::Format_RGB888, 3)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(QImage_Convert, RgbaToBgra, QImage::Format_RGBA8888, 4)
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMillisecond);

void ZKImage_MirrorVertically(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.mirrorVertically();
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 8LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(ZKImage_MirrorVertically)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void QImage_MirrorVertically(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state) {
        image = image.mirrored(false, true);
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 8LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(QImage_MirrorVertically)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void ZKImage_FillWithColor(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.fillWithColor(ZKColor3ub(10, 20, 30));
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 4LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(ZKImage_FillWithColor)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void QImage_FillWithColor(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state) {
        image.fill(QColor(10, 20, 30));
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 4LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(QImage_FillWithColor)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void ZKImage_MixWithColor(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.mixWithColor(ZKColor3ub(200, 100, 50), 100);
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 8LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(ZKImage_MixWithColor)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void QImage_MixWithColor(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGB32, 4);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), QColor(200, 100, 50, 100));
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 8LL * kSide * kSide, "4096x4096 RGBA");
}
BENCHMARK(QImage_MixWithColor)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void ZKImage_SavePng(benchmark::State& state) {
    QTemporaryDir dir;
    const ZKStringW file = dir.filePath(QStringLiteral("bench.png"));
    const ZKImage image = makeImage(kPngSide, ZK_PACKING_RGBA);
    for (auto _ : state)
        benchmark::DoNotOptimize(ZKImageIO_Utils::saveImage_PNG(file, image));
    setBytes(state, 4LL * kPngSide * kPngSide, "2048x2048 RGBA");
}
BENCHMARK(ZKImage_SavePng)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void QImage_SavePng(benchmark::State& state) {
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bench.png"));
    const QImage image = makeQImage(kPngSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state)
        benchmark::DoNotOptimize(image.save(file, "PNG"));
    setBytes(state, 4LL * kPngSide * kPngSide, "2048x2048 RGBA");
}
BENCHMARK(QImage_SavePng)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

// Both loaders read the same file, written once by QImage.
class PngFile {
public:
    PngFile() : m_file(m_dir.filePath(QStringLiteral("load.png"))) {
        makeQImage(kPngSide, QImage::Format_RGBA8888, 4).save(m_file, "PNG");
    }
    const QString& name() const { return m_file; }

private:
    QTemporaryDir m_dir;
    QString m_file;
};

void ZKImage_LoadPng(benchmark::State& state) {
    const PngFile file;
    ZKImage image;
    for (auto _ : state) {
        if (!ZKImageIO_Utils::loadImage_PNG(file.name(), image))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 4LL * kPngSide * kPngSide, "2048x2048 RGBA");
}
BENCHMARK(ZKImage_LoadPng)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void QImage_LoadPng(benchmark::State& state) {
    const PngFile file;
    QImage image;
    for (auto _ : state) {
        if (!image.load(file.name(), "PNG"))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 4LL * kPngSide * kPngSide, "2048x2048 RGBA");
}
BENCHMARK(QImage_LoadPng)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
