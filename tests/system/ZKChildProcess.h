// Test support for the process tests: the test executable doubles as the
// helper program. Started with the environment that ZKChildEnvironment sets,
// a copy of it runs only the disabled test named there (see
// ZKSystemServer_test.cpp), which records its arguments to a file and waits
// for a stop file. Copies live in a temporary folder so that a search by
// executable path finds the child, never the test process itself.
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QThread>

#include <functional>
#include <utility>
#include <vector>

// Sets or unsets environment variables for its lifetime.
class ZKEnvGuard {
public:
    ZKEnvGuard() = default;
    ZKEnvGuard(const char* name, const QByteArray& value) { set(name, value); }
    ~ZKEnvGuard() {
        for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it) {
            if (it->hadValue)
                qputenv(it->name.constData(), it->value);
            else
                qunsetenv(it->name.constData());
        }
    }
    ZKEnvGuard(const ZKEnvGuard&) = delete;
    ZKEnvGuard& operator=(const ZKEnvGuard&) = delete;

    void set(const char* name, const QByteArray& value) {
        save(name);
        qputenv(name, value);
    }
    void unset(const char* name) {
        save(name);
        qunsetenv(name);
    }

private:
    struct Saved {
        QByteArray name;
        bool hadValue;
        QByteArray value;
    };
    void save(const char* name) {
        m_saved.push_back({name, qEnvironmentVariableIsSet(name), qgetenv(name)});
    }
    std::vector<Saved> m_saved;
};

// Polls `done` every 10 ms for up to `timeoutMs`.
inline bool zkWaitFor(const std::function<bool()>& done, int timeoutMs = 30000) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QThread::msleep(10);
    }
    return true;
}

// A copy of the running test executable at folder/name (executable).
inline QString zkCopyOfTestExecutable(const QString& folder, const QString& name) {
    const QString copy = folder + QLatin1Char('/') + name;
    if (!QFile::copy(QCoreApplication::applicationFilePath(), copy))
        return QString();
    QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::ExeOwner);
    return QFileInfo(copy).canonicalFilePath();
}

// While alive, programs started from this process run as the recording child
// (the disabled test `filter`) writing to `recordFile`.
class ZKChildEnvironment {
public:
    explicit ZKChildEnvironment(const QString& recordFile,
                                const char* filter = "DISABLED_ZKChildProcess.*") {
        m_env.set("GTEST_FILTER", filter);
        m_env.set("GTEST_ALSO_RUN_DISABLED_TESTS", "1");
        m_env.set("ZK_CHILD_RECORD", QFile::encodeName(recordFile));
    }

private:
    ZKEnvGuard m_env;
};

// What a recording child wrote: its arguments (and its working folder);
// false while the child has not written yet.
inline bool zkReadChildRecord(const QString& recordFile, QStringList& arguments,
                              QString* workingFolder = nullptr) {
    QFile file(recordFile);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    if (lines.size() < 2 || lines.takeFirst() != QLatin1String("started"))
        return false;
    const QString folder = lines.takeFirst();
    if (workingFolder)
        *workingFolder = folder;
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    arguments = lines;
    return true;
}

// Waits for the child's record; false after the timeout.
inline bool zkWaitForChildRecord(const QString& recordFile, QStringList& arguments,
                                 QString* workingFolder = nullptr) {
    return zkWaitFor([&] { return zkReadChildRecord(recordFile, arguments, workingFolder); });
}

// Tells a recording child to exit.
inline void zkStopChild(const QString& recordFile) {
    QFile stop(recordFile + QStringLiteral(".stop"));
    if (stop.open(QIODevice::WriteOnly))
        stop.close();
}
