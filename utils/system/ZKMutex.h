// ZKMutex.h: a plain, non-recursive mutex.
//
// A ZKMutex owns one heap QMutex; it cannot be copied. Locking it a second
// time from the thread that holds it deadlocks. unlock() must come from the
// thread that locked it.
//
// Threads: made to be shared between threads.
#pragma once

#include "ZKExport.h"

class QMutex;

class ZKUTILS_EXPORT ZKMutex {
public:
    ZKMutex();
    ~ZKMutex();
    ZKMutex(const ZKMutex&) = delete;
    ZKMutex& operator=(const ZKMutex&) = delete;

    void lock();
    void unlock();
    // Takes the lock only if it is free now; true when taken.
    bool tryLock();
    // Waits up to ms milliseconds for the lock (a negative ms waits for
    // ever); true when taken.
    bool tryLock(int ms);

private:
    QMutex* m_mutex;
};
