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

// Times `split` (a ZKStringServer call filling a list) over `text`, after
// checking once that it gives the same parts as Qt's `reference` split.
template <typename Str, typename Split, typename Reference>
void timeSplit(benchmark::State& state, const Str& text, Split split, Reference reference,
               const char* mismatch) {
    {
        ZKArray<Str> list;
        split(list, text);
        if (!sameParts(list, reference(text))) {
            state.SkipWithError(mismatch);
            return;
        }
    }
    for (auto _ : state) {
        ZKArray<Str> list;
        split(list, text);
        benchmark::DoNotOptimize(list.data());
    }
    setSize(state);
}

// Times Qt's `split` over `text`.
template <typename Text, typename Split>
void timeQtSplit(benchmark::State& state, const Text& text, Split split) {
    for (auto _ : state) {
        const auto list = split(text);
        benchmark::DoNotOptimize(list.size());
    }
    setSize(state);
}

const auto splitBytesAtComma = [](const QByteArray& text) { return text.split(','); };
const auto splitWideAtComma = [](const QString& text) { return text.split(QChar(',')); };
const auto splitBytesAtLineFeed = [](const QByteArray& text) { return text.split('\n'); };

void ZKStringServer_SplitBytes(benchmark::State& state) {
    timeSplit(
        state, commaText(),
        [](ZKArray<ZKStringC>& list, const ZKStringC& text) {
            ZKStringServer::splitParts(list, text, ',');
        },
        splitBytesAtComma, "splitParts and QByteArray::split differ");
}

void QByteArray_SplitBytes(benchmark::State& state) {
    timeQtSplit(state, commaText(), splitBytesAtComma);
}

void ZKStringServer_SplitWide(benchmark::State& state) {
    timeSplit(
        state, wideCommaText(),
        [](ZKArray<ZKStringW>& list, const ZKStringW& text) {
            ZKStringServer::splitParts(list, text, QChar(','));
        },
        splitWideAtComma, "splitParts and QString::split differ");
}

void QString_SplitWide(benchmark::State& state) {
    timeQtSplit(state, wideCommaText(), splitWideAtComma);
}

void ZKStringServer_SplitLines(benchmark::State& state) {
    timeSplit(
        state, lineText(),
        [](ZKArray<ZKStringC>& list, const ZKStringC& text) {
            ZKStringServer::splitMultiLine(list, text);
        },
        splitBytesAtLineFeed, "splitMultiLine and QByteArray::split differ");
}

void QByteArray_SplitLines(benchmark::State& state) {
    timeQtSplit(state, lineText(), splitBytesAtLineFeed);
}

} // namespace

BENCHMARK(ZKStringServer_SplitBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(QByteArray_SplitBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKStringServer_SplitWide)->Unit(benchmark::kMillisecond);
BENCHMARK(QString_SplitWide)->Unit(benchmark::kMillisecond);
BENCHMARK(ZKStringServer_SplitLines)->Unit(benchmark::kMillisecond);
BENCHMARK(QByteArray_SplitLines)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
