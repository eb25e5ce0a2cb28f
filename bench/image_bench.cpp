// ZKImage pixel loops and the PNG codec side by side with QImage doing the
// same work: packing conversion, vertical mirroring, solid fill, mixing with
// a colour (QPainter source-over with a translucent colour), PNG load and save.
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

void setBytes(benchmark::State& state, long long bytesPerIteration) {
    state.SetBytesProcessed(state.iterations() * bytesPerIteration);
}

void BM_Convert_ZKImage(benchmark::State& state, _ZKImagePacking from, _ZKImagePacking to) {
    const ZKImage source = makeImage(kSide, from);
    ZKImage out;
    for (auto _ : state) {
        source.convertPacking(out, to);
        benchmark::DoNotOptimize(out.getPixels());
    }
    setBytes(state, (long long)(source.getDepth() + out.getDepth()) * kSide * kSide);
}
BENCHMARK_CAPTURE(BM_Convert_ZKImage, RgbToBgra, ZK_PACKING_RGB, ZK_PACKING_BGRA)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Convert_ZKImage, RgbaToBgra, ZK_PACKING_RGBA, ZK_PACKING_BGRA)
    ->Unit(benchmark::kMillisecond);

void BM_Convert_QImage(benchmark::State& state, QImage::Format from, int depth) {
    const QImage source = makeQImage(kSide, from, depth);
    for (auto _ : state) {
        QImage out = source.convertToFormat(QImage::Format_ARGB32);
        benchmark::DoNotOptimize(out.constBits());
    }
    setBytes(state, (long long)(depth + 4) * kSide * kSide);
}
BENCHMARK_CAPTURE(BM_Convert_QImage, RgbToBgra, QImage::Format_RGB888, 3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Convert_QImage, RgbaToBgra, QImage::Format_RGBA8888, 4)
    ->Unit(benchmark::kMillisecond);

void BM_MirrorVertically_ZKImage(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.mirrorVertically();
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 8LL * kSide * kSide);
}
BENCHMARK(BM_MirrorVertically_ZKImage)->Unit(benchmark::kMillisecond);

void BM_MirrorVertically_QImage(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state) {
        image = image.mirrored(false, true);
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 8LL * kSide * kSide);
}
BENCHMARK(BM_MirrorVertically_QImage)->Unit(benchmark::kMillisecond);

void BM_FillWithColor_ZKImage(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.fillWithColor(ZKColor3ub(10, 20, 30));
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 4LL * kSide * kSide);
}
BENCHMARK(BM_FillWithColor_ZKImage)->Unit(benchmark::kMillisecond);

void BM_FillWithColor_QImage(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state) {
        image.fill(QColor(10, 20, 30));
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 4LL * kSide * kSide);
}
BENCHMARK(BM_FillWithColor_QImage)->Unit(benchmark::kMillisecond);

void BM_MixWithColor_ZKImage(benchmark::State& state) {
    ZKImage image = makeImage(kSide, ZK_PACKING_RGBA);
    for (auto _ : state) {
        image.mixWithColor(ZKColor3ub(200, 100, 50), 100);
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 8LL * kSide * kSide);
}
BENCHMARK(BM_MixWithColor_ZKImage)->Unit(benchmark::kMillisecond);

void BM_MixWithColor_QImage(benchmark::State& state) {
    QImage image = makeQImage(kSide, QImage::Format_RGB32, 4);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), QColor(200, 100, 50, 100));
        painter.end();
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 8LL * kSide * kSide);
}
BENCHMARK(BM_MixWithColor_QImage)->Unit(benchmark::kMillisecond);

void BM_SavePng_ZKImage(benchmark::State& state) {
    QTemporaryDir dir;
    const ZKStringW file = dir.filePath(QStringLiteral("bench.png"));
    const ZKImage image = makeImage(kPngSide, ZK_PACKING_RGBA);
    for (auto _ : state)
        benchmark::DoNotOptimize(ZKImageIO_Utils::saveImage_PNG(file, image));
    setBytes(state, 4LL * kPngSide * kPngSide);
}
BENCHMARK(BM_SavePng_ZKImage)->Unit(benchmark::kMillisecond);

void BM_SavePng_QImage(benchmark::State& state) {
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bench.png"));
    const QImage image = makeQImage(kPngSide, QImage::Format_RGBA8888, 4);
    for (auto _ : state)
        benchmark::DoNotOptimize(image.save(file, "PNG"));
    setBytes(state, 4LL * kPngSide * kPngSide);
}
BENCHMARK(BM_SavePng_QImage)->Unit(benchmark::kMillisecond);

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

void BM_LoadPng_ZKImage(benchmark::State& state) {
    const PngFile file;
    ZKImage image;
    for (auto _ : state) {
        if (!ZKImageIO_Utils::loadImage_PNG(file.name(), image))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(image.getPixels());
    }
    setBytes(state, 4LL * kPngSide * kPngSide);
}
BENCHMARK(BM_LoadPng_ZKImage)->Unit(benchmark::kMillisecond);

void BM_LoadPng_QImage(benchmark::State& state) {
    const PngFile file;
    QImage image;
    for (auto _ : state) {
        if (!image.load(file.name(), "PNG"))
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(image.constBits());
    }
    setBytes(state, 4LL * kPngSide * kPngSide);
}
BENCHMARK(BM_LoadPng_QImage)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
