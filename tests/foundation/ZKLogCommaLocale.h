// Test support: a process locale whose decimal point is a comma, compiled
// with localedef into a temporary folder; active() is false when that cannot
// be done (the tests then skip).
#pragma once

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
        QFile source(m_dir.filePath(QStringLiteral("comma")));
        if (localedef.isEmpty() || !m_dir.isValid() || !source.open(QIODevice::WriteOnly))
            return;
        source.write("LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\n"
                     "END LC_NUMERIC\n");
        source.close();
        // -c: the categories left out only bring warnings.
        QProcess::execute(localedef, {"-c", "-i", source.fileName(), "-f", "ANSI_X3.4-1968",
                                      m_dir.filePath(QStringLiteral("zk_comma"))});
        qputenv("LOCPATH", QFile::encodeName(m_dir.path()));
        char text[16] = "";
        if (std::setlocale(LC_NUMERIC, "zk_comma"))
            std::snprintf(text, sizeof text, "%.1f", 1.5);
        m_active = std::string(text) == "1,5";
    }
    ~ZKCommaDecimalLocale() {
        std::setlocale(LC_NUMERIC, m_oldNumeric.c_str());
        m_hadLocPath ? void(qputenv("LOCPATH", m_oldLocPath)) : void(qunsetenv("LOCPATH"));
    }
    ZKCommaDecimalLocale(const ZKCommaDecimalLocale&) = delete;
    ZKCommaDecimalLocale& operator=(const ZKCommaDecimalLocale&) = delete;
    bool active() const { return m_active; }

private:
    bool m_hadLocPath;
    QByteArray m_oldLocPath;
    std::string m_oldNumeric;
    QTemporaryDir m_dir;
    bool m_active = false;
};
