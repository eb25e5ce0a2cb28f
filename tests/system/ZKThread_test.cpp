#include "ZKMutex.h"
#include "ZKThread.h"

#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <type_traits>

namespace {

class RecordingThread : public ZKThread {
public:
    void run() override {
        runThread = QThread::currentThread();
        sawItselfCurrent = isCurrentThread();
        ++runs;
    }
    void onStarted() override { ++hooks; }
    void onFinished() override { ++hooks; }
    void onTerminated() override { ++hooks; }
    std::atomic<QThread*> runThread{nullptr};
    std::atomic<bool> sawItselfCurrent{false};
    std::atomic<int> runs{0}, hooks{0};
};

class EventLoopThread : public ZKThread {
public:
    void run() override {
        inLoop = true;
        exitCode = startEventLoop();
    }
    std::atomic<bool> inLoop{false};
    std::atomic<int> exitCode{-1};
};

bool waitFor(const std::atomic<bool>& flag) {
    for (int i = 0; i < 2000 && !flag; ++i)
        ZKThread::msleep(5);
    return flag;
}

// Tries a mutex from its own thread, at once (waitMs < 0) or with a wait.
class TryLockThread : public ZKThread {
public:
    TryLockThread(ZKMutex& mutex, int waitMs) : m_mutex(mutex), m_waitMs(waitMs) {}
    void run() override {
        started = true;
        const bool taken = m_waitMs < 0 ? m_mutex.tryLock() : m_mutex.tryLock(m_waitMs);
        if (taken)
            m_mutex.unlock();
        result = taken;
    }
    std::atomic<bool> started{false};
    std::atomic<int> result{-1};

private:
    ZKMutex& m_mutex;
    int m_waitMs;
};

} // namespace

TEST(ZKThread, RunsOnANewThreadPerStartAndIsWaitedFor) {
    RecordingThread t;
    EXPECT_FALSE(t.isRunning());
    EXPECT_TRUE(t.wait(0)); // never started: nothing to wait for
    for (int run = 1; run <= 2; ++run) {
        t.start();
        ASSERT_TRUE(t.wait());
        EXPECT_TRUE(t.isFinished());
        EXPECT_EQ(t.runs, run);
        EXPECT_NE(t.runThread.load(), nullptr);
        EXPECT_NE(t.runThread.load(), QThread::currentThread());
    }
    EXPECT_TRUE(t.sawItselfCurrent);
    EXPECT_FALSE(t.isCurrentThread());
    EXPECT_EQ(t.hooks, 0); // the hooks are for subclasses: the library never calls them
}

TEST(ZKThread, EventLoopRunsUntilQuitAndPriorityFollowsTheThread) {
    EventLoopThread t;
    EXPECT_EQ(t.getPriority(), int(QThread::InheritPriority));
    t.start();
    ASSERT_TRUE(waitFor(t.inLoop));
    EXPECT_FALSE(t.wait(20)); // still in its loop
    t.setPriority(int(QThread::LowPriority));
    t.setPriority(42); // not a priority: ignored
    EXPECT_EQ(t.getPriority(), int(QThread::LowPriority));
    t.quit();
    ASSERT_TRUE(t.wait(10000));
    EXPECT_EQ(t.exitCode, 0);
}

TEST(ZKThreadDeathTest, DestroyingARunningThreadNeitherStopsNorWaits) {
    // Kept: the destructor is not virtual and does not wait; Qt stops the
    // program when the running thread's object goes.
    EXPECT_FALSE(std::has_virtual_destructor<ZKThread>::value);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            EventLoopThread t;
            t.start();
            waitFor(t.inLoop);
        },
        "Destroyed while thread is still running");
}

TEST(ZKMutex, TryLockFromAnotherThread) {
    ZKMutex mutex;
    mutex.lock();
    EXPECT_FALSE(mutex.tryLock()); // not recursive
    for (int waitMs : {-1, 30}) {
        TryLockThread busy(mutex, waitMs);
        busy.start();
        ASSERT_TRUE(busy.wait(10000));
        EXPECT_EQ(busy.result, 0) << waitMs;
    }
    // A waiting try gets the lock once the holder lets it go.
    TryLockThread patient(mutex, 10000);
    patient.start();
    ASSERT_TRUE(waitFor(patient.started));
    ZKThread::msleep(20);
    mutex.unlock();
    ASSERT_TRUE(patient.wait(15000));
    EXPECT_EQ(patient.result, 1);
    EXPECT_TRUE(mutex.tryLock());
    mutex.unlock();
}
