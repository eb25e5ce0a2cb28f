#include "ZKDebugChrono.h"

#include "ZKTimeServer.h"
#include "internal/ZKFormat.h"

#include <QByteArray>

#include <cstdio>

ZKDebugChrono::OutFunction ZKDebugChrono::s_outFunction = nullptr;

namespace {

constexpr int kReservedEntries = 15;

// A null label prints as an empty one.
const char* printable(const char* label) {
    return label ? label : "";
}

// Calls f(index, label, t - start, t - previous) for each entry in order.
// Kept: the stored time is already elapsed and the start is subtracted
// again; the first entry's predecessor is the raw start.
template <typename F>
void forEachEntry(const ZKStaticArray<double>& times, const ZKStaticArray<const char*>& labels,
                  double start, F f) {
    for (long long i = 0; i < times.size(); ++i) {
        const double t = times[i];
        const double previous = i == 0 ? start : times[i - 1];
        f(int(i), printable(labels[i]), t - start, t - previous);
    }
}

} // namespace

void ZKDebugChrono::start(const char* name) {
    m_name = name;
    m_startTime = ZKTimeServer::getAppTimeInS();
    m_running = true;
    m_times.clear();
    m_labels.clear();
    m_times.reserve(kReservedEntries);
    m_labels.reserve(kReservedEntries);
}

void ZKDebugChrono::pushTime(const char* label) {
    m_times.push_back(m_running ? ZKTimeServer::getAppTimeInS() - m_startTime : m_startTime);
    m_labels.push_back(label);
}

double ZKDebugChrono::findTime(const char* label, int& index, int) const {
    for (long long i = 0; i < m_labels.size(); ++i) {
        if (qstrcmp(m_labels[i], label) == 0) {
            index = int(i);
            return m_times[i];
        }
    }
    index = -1;
    return 0.0;
}

void ZKDebugChrono::clearDebug() {
    m_times.clear();
    m_labels.clear();
    m_name = nullptr;
}

void ZKDebugChrono::print() const {
    if (!s_outFunction)
        return;
    forEachEntry(m_times, m_labels, m_startTime,
                 [](int i, const char* label, double sinceStart, double step) {
                     char line[512];
                     {
                         // Reports read "0.01234" whatever locale the application set.
                         ZKInternal::CLocaleScope cLocale;
                         std::snprintf(line, sizeof line, " %d: %s = %.5f  [%.5f]", i, label,
                                       sinceStart, step);
                     }
                     s_outFunction(line);
                 });
}

int ZKDebugChrono::printFile(const char* path) const {
    FILE* file = path ? std::fopen(path, "w") : nullptr;
    // A path that cannot be opened reports what a failed close would.
    if (!file)
        return EOF;
    // The report reads "0.01234" whatever locale the application set.
    ZKInternal::CLocaleScope cLocale;
    const double whole = (m_times.empty() ? 0.0 : m_times.back()) - m_startTime;
    forEachEntry(m_times, m_labels, m_startTime,
                 [file, whole](int i, const char* label, double sinceStart, double step) {
                     std::fprintf(file, "%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n", i, label,
                                  sinceStart, step, step * 100 / whole);
                 });
    return std::fclose(file);
}
