// Shared pieces of the zkutil subcommands: the command table, argument
// checks and the conventional error reporting.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>

namespace zkutil {

// Exit statuses: 0 success, 1 a negative answer or a failed check (token
// absent, damaged file, demo check failed), 2 bad usage or unusable input.
constexpr int kExitOk = 0;
constexpr int kExitNo = 1;
constexpr int kExitError = 2;

struct Command {
    const char* name;
    const char* synopsis;
    const char* help;
    int (*run)(const QStringList& args);
};

int runDemo(const QStringList& args);
int runBlocs(const QStringList& args);
int runTv(const QStringList& args);
int runPng(const QStringList& args);
int runConvert(const QStringList& args);
int runFind(const QStringList& args);
int runSysinfo(const QStringList& args);

const Command* commands(int& count);
const Command* findCommand(const QString& name);

// "zkutil: <what>" on standard error; returns kExitError.
int fail(const QString& what);
// For a missing or unreadable input file: the one-line message and kExitError
// when the file cannot be read, 0 when it can.
int checkReadableFile(const QString& path);
// True when args asks for help; prints the subcommand's help then.
bool wantsHelp(const Command& command, const QStringList& args);
void printUsage(const Command& command, FILE* out);

QByteArray local8(const QString& s);

} // namespace zkutil
