#include "ZKMutex.h"

#include <QMutex>

ZKMutex::ZKMutex() : m_mutex(new QMutex(QMutex::NonRecursive)) {}

ZKMutex::~ZKMutex() {
    delete m_mutex;
}

void ZKMutex::lock() {
    m_mutex->lock();
}

void ZKMutex::unlock() {
    m_mutex->unlock();
}

bool ZKMutex::tryLock() {
    return m_mutex->tryLock(0);
}

bool ZKMutex::tryLock(int ms) {
    return m_mutex->tryLock(ms);
}
