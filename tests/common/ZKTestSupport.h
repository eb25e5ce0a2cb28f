// Helpers shared by the test suites.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtGlobal>

#include <string>
#include <vector>

// Folder of the data files committed under tests/data.
inline QString zkTestDataDir() {
    return QStringLiteral(ZK_TEST_DATA_DIR);
}

// The bytes of the file at `path`; "<missing>" when it cannot be read, so
// that a comparison with the expected bytes fails with a readable message.
inline QByteArray zkReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// Writes `bytes` as the whole content of the file at `path`; true when the
// file opened and took every byte.
inline bool zkWriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Collects the Qt messages emitted while it is alive.
class ZKQtMessageCapture {
public:
    struct Message {
        QtMsgType type;
        std::string text;
        std::string file;
        std::string function;
        std::string category;
        int line;
    };

    ZKQtMessageCapture() {
        s_current = this;
        m_previous = qInstallMessageHandler(&ZKQtMessageCapture::handler);
    }
    ~ZKQtMessageCapture() {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
    }
    ZKQtMessageCapture(const ZKQtMessageCapture&) = delete;
    ZKQtMessageCapture& operator=(const ZKQtMessageCapture&) = delete;

    const std::vector<Message>& messages() const { return m_messages; }

private:
    static void handler(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (!s_current)
            return;
        s_current->m_messages.push_back({type, text.toStdString(), context.file ? context.file : "",
                                         context.function ? context.function : "",
                                         context.category ? context.category : "", context.line});
    }

    static inline ZKQtMessageCapture* s_current = nullptr;
    QtMessageHandler m_previous = nullptr;
    std::vector<Message> m_messages;
};
