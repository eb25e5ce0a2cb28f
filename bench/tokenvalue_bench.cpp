// ZKTokenValueFile against QSettings in IniFormat on one settings file of
// 100 000 token=value lines: parsing it whole (every value read into memory
// as text), writing it line by line, and looking up tokens in the parsed
// pairs.
//
// QSettings parses lazily: allKeys() makes it read and unescape every value,
// which is the work bufferedParseFile does. Its cache of parsed files does
// not apply here: a file of more than 200 keys is never kept.
#include "ZKTokenValueFile.h"

#include <QFile>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstdlib>

namespace {

constexpr int kLines = 100000;
constexpr int kLookups = 100;

QByteArray tokenAt(int i) {
    return QByteArray("token") + QByteArray::number(i);
}

// Plain words and numbers: text that both formats read the same way (no
// commas, quotes, backslashes or semicolons, which IniFormat would interpret).
QByteArray valueAt(int i) {
    if (i % 3 == 0)
        return QByteArray::number(i * 7);
    return QByteArray("value of line ") + QByteArray::number(i) + " for the settings";
}

QString scratchDir() {
    static QTemporaryDir dir;
    return dir.path();
}

// The file both readers parse, written once.
const QString& settingsFile() {
    static const QString path = [] {
        const QString p = scratchDir() + QStringLiteral("/settings.ini");
        QFile file(p);
        if (!file.open(QIODevice::WriteOnly))
            std::abort();
        QByteArray text;
        for (int i = 0; i < kLines; ++i)
            text += tokenAt(i) + '=' + valueAt(i) + '\n';
        file.write(text);
        return p;
    }();
    return path;
}

// Tokens spread evenly over the file.
QList<QByteArray> lookupTokens() {
    QList<QByteArray> tokens;
    for (int k = 0; k < kLookups; ++k)
        tokens.push_back(tokenAt(k * (kLines / kLookups) + kLines / (2 * kLookups)));
    return tokens;
}

void ZKTokenValueFile_Parse(benchmark::State& state) {
    const ZKStringW path(settingsFile());
    for (auto _ : state) {
        ZKTokenValueFile file;
        file.bufferedParseFile(path);
        if (file.getCount() != kLines) {
            state.SkipWithError("not every line was read");
            break;
        }
        benchmark::DoNotOptimize(file.getCount());
    }
    state.SetLabel("10^5 lines");
    state.SetItemsProcessed(state.iterations() * kLines);
}

void QSettings_Parse(benchmark::State& state) {
    const QString& path = settingsFile();
    for (auto _ : state) {
        QSettings settings(path, QSettings::IniFormat);
        const QStringList keys = settings.allKeys();
        if (keys.size() != kLines) {
            state.SkipWithError("not every line was read");
            break;
        }
        benchmark::DoNotOptimize(keys.size());
    }
    state.SetLabel("10^5 lines");
    state.SetItemsProcessed(state.iterations() * kLines);
}

void ZKTokenValueFile_Write(benchmark::State& state) {
    const QString path = scratchDir() + QStringLiteral("/written_zk.ini");
    const ZKStringW widePath(path);
    for (auto _ : state) {
        QFile::remove(path);
        ZKTokenValueFile file;
        file.open(widePath, "w");
        for (int i = 0; i < kLines; ++i)
            file.writeStringC(tokenAt(i).constData(), ZKStringC(valueAt(i)));
        file.close();
    }
    state.SetLabel("10^5 lines");
    state.SetItemsProcessed(state.iterations() * kLines);
}

void QSettings_Write(benchmark::State& state) {
    const QString path = scratchDir() + QStringLiteral("/written_qt.ini");
    for (auto _ : state) {
        QFile::remove(path);
        QSettings settings(path, QSettings::IniFormat);
        for (int i = 0; i < kLines; ++i)
            settings.setValue(QString::fromLatin1(tokenAt(i)), QString::fromLatin1(valueAt(i)));
        settings.sync();
    }
    state.SetLabel("10^5 lines");
    state.SetItemsProcessed(state.iterations() * kLines);
}

void ZKTokenValueFile_Lookup(benchmark::State& state) {
    ZKTokenValueFile file;
    file.bufferedParseFile(ZKStringW(settingsFile()));
    const QList<QByteArray> tokens = lookupTokens();
    for (auto _ : state) {
        long long total = 0;
        ZKStringC value;
        for (const QByteArray& token : tokens)
            if (file.getStringC(token.constData(), value))
                total += value.size();
        benchmark::DoNotOptimize(total);
    }
    state.SetLabel("10^2 of 10^5 tokens");
    state.SetItemsProcessed(state.iterations() * kLookups);
}

void QSettings_Lookup(benchmark::State& state) {
    QSettings settings(settingsFile(), QSettings::IniFormat);
    settings.allKeys();
    QStringList tokens;
    for (const QByteArray& token : lookupTokens())
        tokens.push_back(QString::fromLatin1(token));
    for (auto _ : state) {
        long long total = 0;
        for (const QString& token : tokens)
            total += settings.value(token).toString().size();
        benchmark::DoNotOptimize(total);
    }
    state.SetLabel("10^2 of 10^5 tokens");
    state.SetItemsProcessed(state.iterations() * kLookups);
}

} // namespace

BENCHMARK(ZKTokenValueFile_Parse)->Unit(benchmark::kMillisecond);
BENCHMARK(QSettings_Parse)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKTokenValueFile_Write)->Unit(benchmark::kMillisecond);
BENCHMARK(QSettings_Write)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKTokenValueFile_Lookup)->Unit(benchmark::kMicrosecond);
BENCHMARK(QSettings_Lookup)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
