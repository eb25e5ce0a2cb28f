// zkutil find, zkutil sysinfo: folder listings and what the system services see.
#include "ZKUtilCommon.h"

#include <ZKUtils/ZKUtils.h>

#include <QFileInfo>

#include <cstdio>

namespace zkutil {

int runFind(const QStringList& args) {
    if (args.isEmpty())
        return fail(QStringLiteral("find takes DIR [PATTERN...] (see zkutil find --help)"));
    const QString folder = args[0];
    if (!QFileInfo(folder).isDir())
        return fail(QStringLiteral("%1: no such folder").arg(folder));
    ZKFileFinder finder;
    finder.setFolder(ZKStringW(folder));
    for (int i = 1; i < args.size(); ++i)
        finder.addFileSpec(ZKStringW(args[i]));
    ZKArray<ZKStringW> files;
    if (!finder.extractAllFilesInFolder(files))
        return fail(QStringLiteral("%1: cannot be listed").arg(folder));
    for (const ZKStringW& f : files)
        std::printf("%s\n", f.toUtf8().constData());
    return kExitOk;
}

int runSysinfo(const QStringList& args) {
    if (!args.isEmpty())
        return fail(QStringLiteral("sysinfo takes no argument"));
    const ZKDateTime now = ZKDateTime::currentDateTime();
    const struct {
        const char* label;
        QString value;
    } lines[] = {
        {"user", ZKSystemServer::getUserName()},
        {"computer", ZKSystemServer::getComputerName()},
        {"temporary folder", ZKSystemServer::getTempFolder()},
        {"ideal thread count", QString::number(ZKSystemServer::idealThreadCount())},
        {"library file", ZKSystemServer::getCurrentModuleFileName()},
        {"library folder", ZKSystemServer::getCurrentModuleFolder()},
        {"executable", ZKProcessServer::getCurrentProcessFileName()},
        {"application folder", ZKProcessServer::getCurrentAppFolder()},
        {"date and time", now.getQDateTime().toString(Qt::ISODate)},
    };
    for (const auto& line : lines)
        std::printf("%-20s%s\n", line.label, line.value.toUtf8().constData());
    return kExitOk;
}

} // namespace zkutil
