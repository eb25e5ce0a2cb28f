// zkutil: the command-line front door of the ZKUtils library.
#include "ZKUtilCommon.h"

#include <ZKUtils/ZKUtils.h>

#include <QCoreApplication>

#include <cstdio>

namespace {

void printToolHelp(FILE* out) {
    std::fprintf(out, "usage: zkutil COMMAND [ARGS...]\n\n"
                      "The ZKUtils library's demo and inspectors for its files.\n\ncommands:\n");
    int count = 0;
    const zkutil::Command* all = zkutil::commands(count);
    for (int i = 0; i < count; ++i)
        std::fprintf(out, "  %s\n", all[i].synopsis);
    std::fprintf(out, "\n'zkutil COMMAND --help' describes one command.\n");
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ZKProcessServer::setProcessPathFromArgv0(argv[0]);
    ZKTimeServer::InitTimeServer(); // the application clock of logs and timings
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    if (args.isEmpty()) {
        printToolHelp(stderr);
        return zkutil::kExitError;
    }
    const QString name = args.takeFirst();
    if (name == QLatin1String("--help") || name == QLatin1String("-h") ||
        name == QLatin1String("help")) {
        printToolHelp(stdout);
        return zkutil::kExitOk;
    }
    const zkutil::Command* command = zkutil::findCommand(name);
    if (!command)
        return zkutil::fail(QStringLiteral("unknown command '%1' (see zkutil --help)").arg(name));
    if (zkutil::wantsHelp(*command, args))
        return zkutil::kExitOk;
    return command->run(args);
}
