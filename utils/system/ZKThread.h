// ZKThread.h: a thread object that application code subclasses.
//
// Override run(): start() creates one new thread, which calls run() and ends
// when run() returns. A run() that calls startEventLoop() keeps the thread in
// its event loop until quit() is called.
//
// Ownership and lifetime: a ZKThread owns its private QThread. The destructor
// is deliberately not virtual and neither stops nor waits for the thread:
// call wait() before destroying a started ZKThread, and destroy a subclass
// object through its own type, never through a ZKThread pointer.
// onStarted, onFinished and onTerminated are hooks for subclasses; the library
// never calls them.
//
// Threads: start, quit, wait and the queries may be called from any thread;
// run() executes on the new thread.
#pragma once

#include "ZKExport.h"
#include "ZKStringC.h"

#include <climits>

class ZKUTILS_EXPORT ZKThread {
public:
    ZKThread();
    // Kept: not virtual, and the running thread is not waited for.
    ~ZKThread();
    ZKThread(const ZKThread&) = delete;
    ZKThread& operator=(const ZKThread&) = delete;

    // Executed on the new thread; does nothing by default.
    virtual void run();
    virtual void onStarted();
    virtual void onFinished();
    virtual void onTerminated();

    // Starts the thread with the priority of the calling thread.
    void start();
    // Ends the event loop entered by startEventLoop() (exit code 0).
    void quit();
    void terminate();
    // Blocks until run() has returned or ms milliseconds have passed (the
    // default waits for ever); true when the thread has finished or was never
    // started.
    bool wait(unsigned long ms = ULONG_MAX);
    bool isRunning() const;
    bool isFinished() const;
    // QThread::Priority values: 0 idle ... 6 time-critical, 7 inherit.
    int getPriority() const;
    // Only effective on a running thread; 7 (inherit) and values outside
    // 0 ... 7 change nothing.
    void setPriority(int priority);
    // Called from run(): runs the thread's event loop until quit() and
    // returns its exit code.
    int startEventLoop();
    // True when called from the thread this object started.
    bool isCurrentThread() const;

    static void yieldCurrentThread();
    static void sleep(unsigned long s);
    static void msleep(unsigned long ms);
    static void usleep(unsigned long us);
    // Does nothing.
    static void setCurrentThreadName(const ZKStringC& name);

private:
    class MyThreadData;
    MyThreadData* m_thread;
};
