// Test support for the log and chronometer tests: a process locale whose
// decimal point is a comma, as an application running in a German or French
// locale has. The locale is compiled with localedef into a temporary folder,
// so that no system locale needs to be installed; active() is false when that
// cannot be done (the tests then skip).
#pragma once

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <clocale>
#include <cstdio>
#include <string>

class ZKCommaDecimalLocale {
public:
    ZKCommaDecimalLocale()
        : m_hadLocPath(qEnvironmentVariableIsSet("LOCPATH")), m_oldLocPath(qgetenv("LOCPATH")),
          m_oldNumeric(std::setlocale(LC_NUMERIC, nullptr)) {
        const QString localedef = QStandardPaths::findExecutable(QStringLiteral("localedef"));
        if (localedef.isEmpty() || !m_dir.isValid())
            return;
        QFile source(m_dir.filePath(QStringLiteral("comma")));
        if (!source.open(QIODevice::WriteOnly))
            return;
        source.write("LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\n"
                     "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\n"
                     "END LC_NUMERIC\n"
                     "LC_TIME\ncopy \"POSIX\"\nEND LC_TIME\n"
                     "LC_COLLATE\ncopy \"POSIX\"\nEND LC_COLLATE\n"
                     "LC_MONETARY\ncopy \"POSIX\"\nEND LC_MONETARY\n"
                     "LC_MESSAGES\ncopy \"POSIX\"\nEND LC_MESSAGES\n");
        source.close();
        // -c: the categories left out only bring warnings.
        QProcess::execute(localedef, {QStringLiteral("-c"), QStringLiteral("-i"), source.fileName(),
                                      QStringLiteral("-f"), QStringLiteral("ANSI_X3.4-1968"),
                                      m_dir.filePath(QStringLiteral("zk_comma"))});
        qputenv("LOCPATH", QFile::encodeName(m_dir.path()));
        if (!std::setlocale(LC_NUMERIC, "zk_comma"))
            return;
        char text[16];
        std::snprintf(text, sizeof text, "%.1f", 1.5);
        m_active = std::string(text) == "1,5";
    }
    ~ZKCommaDecimalLocale() {
        std::setlocale(LC_NUMERIC, m_oldNumeric.c_str());
        if (m_hadLocPath)
            qputenv("LOCPATH", m_oldLocPath);
        else
            qunsetenv("LOCPATH");
    }
    ZKCommaDecimalLocale(const ZKCommaDecimalLocale&) = delete;
    ZKCommaDecimalLocale& operator=(const ZKCommaDecimalLocale&) = delete;

    // True while the process formats 1.5 as "1,5".
    bool active() const { return m_active; }

private:
    bool m_hadLocPath;
    QByteArray m_oldLocPath;
    std::string m_oldNumeric;
    QTemporaryDir m_dir;
    bool m_active = false;
};
