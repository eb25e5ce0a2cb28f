#include "ZKUtilCommon.h"

#include <QFileInfo>

namespace zkutil {

namespace {

const Command kCommands[] = {
    {"demo", "demo [DIR]",
     "Runs the library's typical request end to end in DIR (default: a new folder in the\n"
     "temporary folder): saves a document with nested blocs, objects, strings, a bool array,\n"
     "matrices, vectors and colours, reopens and verifies it; writes and reads back a settings\n"
     "file; renders the colour scales and a palette into demo.png and loads it back; logs each\n"
     "step to zkutil-demo.log. Exits 0 only when every check passed.",
     runDemo},
    {"blocs", "blocs FILE",
     "Walks the bloc headers of a binary file from its start. One line per bloc:\n"
     "  OFFSET<TAB>DEPTH<TAB>ID<TAB>CHARS<TAB>SIZE\n"
     "CHARS is the id as four characters ('-' when not printable). The nesting is inferred:\n"
     "a bloc is entered when its content is made exactly of blocs. A bloc that runs past the\n"
     "end of the file is reported on a last line 'damaged<TAB>OFFSET<TAB>...' and the exit\n"
     "status is 1.",
     runBlocs},
    {"tv", "tv FILE [TOKEN]",
     "Lists the token=value pairs of a settings file in file order, or prints the value of\n"
     "TOKEN (its first pair). Exit status 1 when TOKEN is absent.",
     runTv},
    {"png", "png FILE",
     "Prints width, height, packing and depth of a PNG file as the library loads it.", runPng},
    {"convert", "convert IN OUT [--packing rgba|rgb|bgra|bgr|grey] [--flip] [--rotate cw|ccw]",
     "Reads a PNG or BMP file, optionally converts its packing, flips it vertically and\n"
     "rotates it by a quarter turn, and writes OUT as PNG.",
     runConvert},
    {"find", "find DIR [PATTERN...]",
     "Prints the path of every file below DIR, depth first (the files of a folder before\n"
     "those of its sub-folders), optionally only names matching the wildcard PATTERNs.",
     runFind},
    {"sysinfo", "sysinfo",
     "Prints user, computer, temporary folder, ideal thread count, library file and folder,\n"
     "executable and application folder, and today's date and time.",
     runSysinfo},
};

} // namespace

const Command* commands(int& count) {
    count = int(sizeof kCommands / sizeof kCommands[0]);
    return kCommands;
}

const Command* findCommand(const QString& name) {
    for (const Command& c : kCommands) {
        if (name == QLatin1String(c.name))
            return &c;
    }
    return nullptr;
}

QByteArray local8(const QString& s) {
    return s.toLocal8Bit();
}

int fail(const QString& what) {
    std::fprintf(stderr, "zkutil: %s\n", local8(what).constData());
    return kExitError;
}

int checkReadableFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists())
        return fail(QStringLiteral("%1: no such file").arg(path));
    if (info.isDir())
        return fail(QStringLiteral("%1: is a folder, not a file").arg(path));
    if (!info.isReadable())
        return fail(QStringLiteral("%1: cannot be read").arg(path));
    return kExitOk;
}

void printUsage(const Command& command, FILE* out) {
    std::fprintf(out, "usage: zkutil %s\n\n%s\n", command.synopsis, command.help);
}

bool wantsHelp(const Command& command, const QStringList& args) {
    if (args.contains(QStringLiteral("--help")) || args.contains(QStringLiteral("-h"))) {
        printUsage(command, stdout);
        return true;
    }
    return false;
}

} // namespace zkutil
