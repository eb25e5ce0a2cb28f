// ZKStringServer's splitting side by side with Qt on a 10 MB text: splitParts
// against QByteArray::split and QString::split at one separator, and
// splitMultiLine against QByteArray::split at line feeds (the text has no
// carriage return, so both give the same lines).
//
// The text never ends with a separator: splitParts drops a single trailing
// empty part where Qt keeps it, and with this text both give the same list,
// which is checked before timing.
#include "ZKStringServer.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <benchmark/benchmark.h>

#include <random>

namespace {

constexpr int kTextBytes = 10 * 1000 * 1000;

// Fields of 0 to 20 letters, some digits and blanks, joined by `sep`.
QByteArray makeText(char sep) {
    std::mt19937 rng(7);
    std::uniform_int_distribution<int> length(0, 20);
    std::uniform_int_distribution<int> letter(0, 37);
    static const char kAlphabet[] = "abcdefghijklmnopqrstuvwxyz0123456789  ";
    QByteArray text;
    text.reserve(kTextBytes + 32);
    while (text.size() < kTextBytes) {
        if (!text.isEmpty())
            text.append(sep);
        const int n = length(rng);
        for (int i = 0; i < n; ++i)
            text.append(kAlphabet[letter(rng)]);
    }
    text.append("end");
    return text;
}

const ZKStringC& commaText() {
    static const ZKStringC text(makeText(','));
    return text;
}

const ZKStringC& lineText() {
    static const ZKStringC text(makeText('\n'));
    return text;
}

const ZKStringW& wideCommaText() {
    static const ZKStringW text(QString::fromLatin1(commaText()));
    return text;
}

template <typename List, typename QtList> bool sameParts(const List& zk, const QtList& qt) {
    if (zk.size() != qt.size())
        return false;
    for (long long i = 0; i < zk.size(); ++i)
        if (zk[i] != qt[int(i)])
            return false;
    return true;
}

void setSize(benchmark::State& state) {
    state.SetLabel("10 MB");
    state.SetBytesProcessed(state.iterations() * kTextBytes);
}

void ZKStringServer_SplitBytes(benchmark::State& state) {
    const ZKStringC& text = commaText();
    {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitParts(list, text, ',');
        if (!sameParts(list, text.split(','))) {
            state.SkipWithError("splitParts and QByteArray::split differ");
            return;
        }
    }
    for (auto _ : state) {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitParts(list, text, ',');
        benchmark::DoNotOptimize(list.data());
    }
    setSize(state);
}

void QByteArray_SplitBytes(benchmark::State& state) {
    const QByteArray& text = commaText();
    for (auto _ : state) {
        const QList<QByteArray> list = text.split(',');
        benchmark::DoNotOptimize(list.size());
    }
    setSize(state);
}

void ZKStringServer_SplitWide(benchmark::State& state) {
    const ZKStringW& text = wideCommaText();
    {
        ZKArray<ZKStringW> list;
        ZKStringServer::splitParts(list, text, QChar(','));
        if (!sameParts(list, text.split(QChar(',')))) {
            state.SkipWithError("splitParts and QString::split differ");
            return;
        }
    }
    for (auto _ : state) {
        ZKArray<ZKStringW> list;
        ZKStringServer::splitParts(list, text, QChar(','));
        benchmark::DoNotOptimize(list.data());
    }
    setSize(state);
}

void QString_SplitWide(benchmark::State& state) {
    const QString& text = wideCommaText();
    for (auto _ : state) {
        const QStringList list = text.split(QChar(','));
        benchmark::DoNotOptimize(list.size());
    }
    setSize(state);
}

void ZKStringServer_SplitLines(benchmark::State& state) {
    const ZKStringC& text = lineText();
    {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitMultiLine(list, text);
        if (!sameParts(list, text.split('\n'))) {
            state.SkipWithError("splitMultiLine and QByteArray::split differ");
            return;
        }
    }
    for (auto _ : state) {
        ZKArray<ZKStringC> list;
        ZKStringServer::splitMultiLine(list, text);
        benchmark::DoNotOptimize(list.data());
    }
    setSize(state);
}

void QByteArray_SplitLines(benchmark::State& state) {
    const QByteArray& text = lineText();
    for (auto _ : state) {
        const QList<QByteArray> list = text.split('\n');
        benchmark::DoNotOptimize(list.size());
    }
    setSize(state);
}

} // namespace

BENCHMARK(ZKStringServer_SplitBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(QByteArray_SplitBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKStringServer_SplitWide)->Unit(benchmark::kMillisecond);
BENCHMARK(QString_SplitWide)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKStringServer_SplitLines)->Unit(benchmark::kMillisecond);
BENCHMARK(QByteArray_SplitLines)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
