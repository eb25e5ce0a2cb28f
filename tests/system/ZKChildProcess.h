// Test support for the process tests: a copy of the test executable, started
// under ZKChildEnvironment, runs only the disabled test named there, which
// records its arguments to a file and waits for a stop file.
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QThread>

#include <functional>
#include <vector>

// Sets or unsets environment variables for its lifetime.
class ZKEnvGuard {
public:
    ZKEnvGuard() = default;
    ZKEnvGuard(const char* name, const QByteArray& value) { set(name, value); }
    ~ZKEnvGuard() {
        for (auto it = m_saved.rbegin(); it != m_saved.rend(); ++it)
            it->had ? void(qputenv(it->name, it->value)) : void(qunsetenv(it->name));
    }
    ZKEnvGuard(const ZKEnvGuard&) = delete;
    ZKEnvGuard& operator=(const ZKEnvGuard&) = delete;
    void set(const char* name, const QByteArray& value) {
        m_saved.push_back({name, qEnvironmentVariableIsSet(name), qgetenv(name)});
        qputenv(name, value);
    }
    void unset(const char* name) {
        m_saved.push_back({name, qEnvironmentVariableIsSet(name), qgetenv(name)});
        qunsetenv(name);
    }

private:
    struct Saved {
        const char* name;
        bool had;
        QByteArray value;
    };
    std::vector<Saved> m_saved;
};

// Polls `done` every 10 ms for up to `timeoutMs`.
inline bool zkWaitFor(const std::function<bool()>& done, int timeoutMs = 30000) {
    QElapsedTimer timer;
    timer.start();
    for (; !done(); QThread::msleep(10))
        if (timer.elapsed() > timeoutMs)
            return false;
    return true;
}

// A copy of the running test executable at folder/name.
inline QString zkCopyOfTestExecutable(const QString& folder, const QString& name) {
    const QString copy = folder + QLatin1Char('/') + name;
    if (!QFile::copy(QCoreApplication::applicationFilePath(), copy))
        return QString();
    QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::ExeOwner);
    return QFileInfo(copy).canonicalFilePath();
}

// While alive, programs started from this process run the disabled test
// `filter`, writing to `recordFile`.
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

// Waits for a recording child's arguments (and working folder); false after
// the timeout.
inline bool zkWaitForChildRecord(const QString& recordFile, QStringList& arguments,
                                 QString* workingFolder = nullptr) {
    return zkWaitFor([&] {
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
    });
}

// Tells a recording child to exit.
inline void zkStopChild(const QString& recordFile) {
    QFile(recordFile + QStringLiteral(".stop")).open(QIODevice::WriteOnly);
}
