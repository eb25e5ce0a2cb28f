// Regression test from the ThreadSanitizer runs: what a finished run() wrote
// is seen after wait(), also when wait() finds the thread already finished.
// Under the tsan preset this fails with a data race report if wait() does not
// order the finished run() visibly to the sanitizer.
#include "ZKThread.h"

#include <gtest/gtest.h>

namespace {

// Writes plain, unsynchronised fields: only wait() may order them.
class PlainWriterThread final : public ZKThread {
public:
    void run() override {
        for (int i = 0; i < 64; ++i)
            values[i] = i * i;
        done = true;
    }
    int values[64] = {};
    bool done = false;
};

} // namespace

TEST(ZKThread, WritesOfAFinishedRunAreSeenAfterWait) {
    for (int round = 0; round < 3; ++round) {
        auto* t = new PlainWriterThread;
        t->start();
        // Let the thread end first, so that wait() has nothing to wait for.
        for (int i = 0; i < 2000 && !t->isFinished(); ++i)
            ZKThread::msleep(5);
        ASSERT_TRUE(t->wait(10000));
        EXPECT_TRUE(t->done);
        EXPECT_EQ(t->values[0], 0);
        EXPECT_EQ(t->values[63], 63 * 63);
        // Freed memory is reused by the next round: also ordered by wait().
        delete t;
    }
}
