// ZKDebugChrono.h: a stopwatch for timing the steps of a piece of code.
//
// start() once, pushTime("label") after each step, then print() through an
// output function of the application or printFile() to a text file. Times
// come from the application clock (ZKTimeServer::getAppTimeInS), in seconds.
//
// Numbers are written with a "." decimal point, whatever locale the
// application set.
//
// Ownership: labels and the name are kept as pointers, not copied: pass
// literals or text that outlives the chronometer.
//
// The stored times are already elapsed times (time since start), yet both
// printers subtract the start time once more for their second column and take
// the raw start time as the predecessor of the first entry. Kept on purpose:
// reports are compared with earlier ones. Only the differences between later
// entries are plain step durations.
//
// Threads: a chronometer belongs to one thread; the output function is a plain
// static, set it before timing starts.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"

class ZKUTILS_EXPORT ZKDebugChrono {
public:
    using OutFunction = void (*)(const char*);

    ZKDebugChrono() = default;

    // Keeps `name`, takes the start time, starts running, empties the entries
    // and reserves room for 15 so that timing a short sequence allocates
    // nothing.
    void start(const char* name);
    // Appends the time since start with `label`; before start() the start
    // time itself (0) is appended instead.
    void pushTime(const char* label);
    // The first entry whose label equals `label` (byte comparison): its time,
    // with `index` set to its position; 0.0 with `index` -1 when there is none.
    // The last argument is not used.
    double findTime(const char* label, int& index, int unused = 0) const;
    // Empties the entries and forgets the name; the start time and the running
    // state stay.
    void clearDebug();

    // One call of the output function per entry with
    // " %d: %s = %.5f  [%.5f]" (index, label, t - start, t - previous); nothing
    // without an output function.
    void print() const;
    // Replaces the file with one line per entry,
    // "%d: %s \t= %.5f   [%.5f]   [%.2f%%] \n" (index, label, t - start,
    // t - previous, share of the whole in percent), and returns fclose's
    // result; EOF when the file cannot be opened.
    int printFile(const char* path) const;

    static void setOutFunction(OutFunction function) { s_outFunction = function; }
    static OutFunction getOutFunction() { return s_outFunction; }

    double getStartTime() const { return m_startTime; }
    bool isRunning() const { return m_running; }
    const char* getName() const { return m_name; }
    const ZKStaticArray<double>& getTimes() const { return m_times; }
    const ZKStaticArray<const char*>& getLabels() const { return m_labels; }

private:
    static OutFunction s_outFunction;

    double m_startTime = 0.0;
    bool m_running = false;
    ZKArray<double> m_times;
    ZKArray<const char*> m_labels;
    const char* m_name = nullptr;
};
