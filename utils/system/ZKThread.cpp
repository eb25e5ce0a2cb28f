#include "ZKThread.h"

#include <QThread>

#include <atomic>

// The private QThread: its run() hands over to the owner's virtual run().
class ZKThread::MyThreadData : public QThread {
public:
    explicit MyThreadData(ZKThread* owner) : QThread(nullptr), m_owner(owner) {}

    // QThread::exec is protected; the owner reaches it through this.
    int execEventLoop() { return exec(); }

    // After wait() saw the thread finish: takes the order of the finished
    // run() in a way ThreadSanitizer sees (QThread::wait takes it from a QMutex
    // of Qt's own, invisible to the sanitizer).
    void acquireEndedRun() const { (void)m_endedRuns.load(std::memory_order_acquire); }

protected:
    void run() override {
        m_owner->run();
        m_endedRuns.fetch_add(1, std::memory_order_release);
    }

private:
    ZKThread* m_owner;
    std::atomic<unsigned> m_endedRuns{0};
};

ZKThread::ZKThread() : m_thread(new MyThreadData(this)) {}

ZKThread::~ZKThread() {
    // Kept: deleted without stopping or waiting; Qt reports a running thread.
    delete m_thread;
}

void ZKThread::run() {}

void ZKThread::onStarted() {}

void ZKThread::onFinished() {}

void ZKThread::onTerminated() {}

void ZKThread::start() {
    m_thread->start(QThread::InheritPriority);
}

void ZKThread::quit() {
    m_thread->quit();
}

void ZKThread::terminate() {
    m_thread->terminate();
}

bool ZKThread::wait(unsigned long ms) {
    const bool finished = m_thread->wait(ms);
    if (finished)
        m_thread->acquireEndedRun();
    return finished;
}

bool ZKThread::isRunning() const {
    return m_thread->isRunning();
}

bool ZKThread::isFinished() const {
    return m_thread->isFinished();
}

int ZKThread::getPriority() const {
    return int(m_thread->priority());
}

void ZKThread::setPriority(int priority) {
    // An int outside the enumeration is not a QThread::Priority at all.
    if (priority < int(QThread::IdlePriority) || priority > int(QThread::InheritPriority))
        return;
    m_thread->setPriority(QThread::Priority(priority));
}

int ZKThread::startEventLoop() {
    return m_thread->execEventLoop();
}

bool ZKThread::isCurrentThread() const {
    return QThread::currentThread() == m_thread;
}

void ZKThread::yieldCurrentThread() {
    QThread::yieldCurrentThread();
}

void ZKThread::sleep(unsigned long s) {
    QThread::sleep(s);
}

void ZKThread::msleep(unsigned long ms) {
    QThread::msleep(ms);
}

void ZKThread::usleep(unsigned long us) {
    QThread::usleep(us);
}

void ZKThread::setCurrentThreadName(const ZKStringC&) {}
