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
    const double s = m_startTime;
    for (long long i = 0; i < m_times.size(); ++i) {
        const double t = m_times[i];
        // Kept: the stored time is already elapsed and the start is
        // subtracted again; the first entry's predecessor is the raw start.
        const double p = i == 0 ? s : m_times[i - 1];
        char line[512];
        {
            // Reports read "0.01234" whatever locale the application set.
            ZKInternal::CLocaleScope cLocale;
            std::snprintf(line, sizeof line, " %d: %s = %.5f  [%.5f]", int(i),
                          printable(m_labels[i]), t - s, t - p);
        }
        s_outFunction(line);
    }
}

int ZKDebugChrono::printFile(const char* path) const {
    FILE* file = path ? std::fopen(path, "w") : nullptr;
    // A path that cannot be opened reports what a failed close would.
    if (!file)
        return EOF;
    // The report reads "0.01234" whatever locale the application set.
    ZKInternal::CLocaleScope cLocale;
    const double s = m_startTime;
    const double l = m_times.empty() ? 0.0 : m_times.back();
    for (long long i = 0; i < m_times.size(); ++i) {
        const double t = m_times[i];
        // Kept: the same double subtraction of the start as print().
        const double p = i == 0 ? s : m_times[i - 1];
        std::fprintf(file, "%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n", int(i), printable(m_labels[i]),
                     t - s, t - p, (t - p) * 100 / (l - s));
    }
    return std::fclose(file);
}
