// ZKNative.h (internal): the operating-system services the library needs,
// behind one small interface. Exactly one backend folder is compiled:
// native/linux here, native/mac on macOS. No other file of the library tests
// the platform.
#pragma once

namespace ZKNative {

// Seconds on the platform's monotonic clock (Linux: CLOCK_MONOTONIC). The
// origin is arbitrary; only differences mean something.
double monotonicSeconds();

} // namespace ZKNative

// Process, keyboard and system services (ZKProcessServer, ZKKeyboardServer,
// ZKSystemServer). Paths cross this interface as bytes in the file system's
// encoding; a QString "reference" names an existing file as the system
// identifies it (Linux: its canonical path).
class QByteArray;
class QString;
class QStringList;

namespace ZKNative {

// Full path of the running executable; empty when the system cannot tell.
QByteArray executablePath();

// Full path of the loaded file (executable or shared library) that holds the
// code at `address`; false, with `fileName` untouched, when the loader cannot
// tell.
bool moduleFileNameOfAddress(const void* address, QByteArray& fileName);

// Host name of the machine (at most 511 bytes); empty on failure.
QByteArray hostName();

// The keys that are down right now, as ZKModifierFlags bits: 1 Shift, 2 Alt,
// 4 Control, 8 Command, 16 Caps Lock, 32 Tab. Only the left-hand modifier
// keys are read. 0 when no keyboard can be queried.
unsigned int keysDown();

// A running program as the Process Manager numbers it: high then low half;
// {0, 0} is no process. Linux keeps the pid in the low half.
struct ProcessSerial {
    unsigned int high = 0;
    unsigned int low = 0;
};

// The reference of the existing file at `path`; false when there is none.
bool fileReference(const QByteArray& path, QString& reference);
// The first running process started from the application `appReference`.
bool findRunningProcess(const QString& appReference, ProcessSerial& process);
// Calls `visit(pid, executablePath)` for each running process whose
// executable can be read, in increasing pid order, until it returns false.
void forEachRunningProcess(bool (*visit)(unsigned int pid, const QByteArray& executable,
                                         void* context),
                           void* context);
// Starts the application in the background; `process` receives it.
bool launchApplication(const QString& appReference, ProcessSerial& process);
// Hands the document to the application (launching it when needed); true
// when the application has been given the document.
bool openDocument(const QString& appReference, const QString& documentReference);
// Sends an open-application style event with `text` as its direct object.
bool sendEventToProcess(const ProcessSerial& process, unsigned int eventID, const QByteArray& text);
// Brings the process's windows to the front, where the platform can.
void bringToFront(const ProcessSerial& process);

// printf format with one %s (the path) that opens a file in its default
// application, in the background, through the shell.
const char* openFileCommandFormat();
// Runs a script of the platform's scripting language; false when there is
// none.
bool runScript(const QByteArray& script);
// The folder where users share documents (bytes, without trailing slash).
// The text lives for the whole run.
const char* sharedFolder();

} // namespace ZKNative
