// ZKDisk.h: paths, file names, files, folders and text files.
//
// ZKDisk is a server class: static functions only, no instances and no state.
// It offers
// - the path and file-name rules: pure string operations that never touch the
//   file system (ZKDisk_Paths.cpp);
// - whole text files and single lines on C streams or on strings held in
//   memory (ZKDisk_Text.cpp);
// - the operations on files and folders (ZKDisk_Files.cpp, ZKDisk_Folders.cpp).
//
// Both separators, '/' and '\', are recognised on input everywhere. A folder
// returned by the splitting operations keeps its trailing separator; an
// extension is returned without its dot. Most operations exist for ZKStringC
// and for ZKStringW; where the two differ, the comment of the member says so.
//
// Failures are false results (or empty strings); nothing is logged or thrown.
// Streams opened by an operation are closed by it; streams passed in belong to
// the caller.
//
// Threads: every member works on its arguments only. The byte-string
// unixifyFileName, getUnixifiedFileName and compareFileName write through
// storage shared with other copies of their arguments, so those copies must not
// be used from another thread meanwhile.
#pragma once

#include "ZKArray.h"
#include "ZKDateTime.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <cstdio>

// Opens a C stream on a wide path: an empty path gives a null stream without
// calling the C library; otherwise fopen(path as UTF-8, mode). The caller
// closes the stream. Every file-based reader and writer of the library opens
// its files through this helper.
ZKUTILS_EXPORT FILE* fopenUtf8(const ZKStringW& path, const char* mode);

class ZKUTILS_EXPORT ZKDisk {
public:
    ZKDisk() = delete;

    // The null stream: what fopenUtf8 returns when it cannot open a file.
    static constexpr FILE* s_invalidFile = nullptr;

    // Path and file-name rules. None of them touches the file system. The
    // "last separator" is the last '/' or '\'; the "extension dot" is the last
    // '.' of the whole string, even when it lies in a folder name.

    // Same file name after turning '\' into '/', compared exactly (case
    // matters). The byte form rewrites both arguments' shared storage (see
    // unixifyFileName).
    static bool compareFileName(const ZKStringC& a, const ZKStringC& b);
    static bool compareFileName(const ZKStringW& a, const ZKStringW& b);
    // Makes `s` a key for compareFileName_prepared1: '\' becomes '/' and then
    // ZKStringW::toLower is applied, which leaves the case as it is; the key
    // therefore compares case-sensitively, like compareFileName.
    static void compareFileName_prepare(ZKStringW& s);
    static bool compareFileName_prepared1(const ZKStringW& key, const ZKStringW& b);

    // '\' becomes '/'. The byte forms write through the storage that `s`
    // shares with its copies, without detaching: every copy sees the slashes,
    // and getUnixifiedFileName changes its argument too. Storage Qt holds
    // read-only (literals, raw data) is never written: such a string is
    // converted on a private copy instead. The wide forms work on a copy.
    static void unixifyFileName(ZKStringC& s);
    static void unixifyFileName(ZKStringW& s);
    static ZKStringC getUnixifiedFileName(const ZKStringC& s);
    static ZKStringW getUnixifiedFileName(const ZKStringW& s);
    // '/' becomes '\' (an ordinary replace, copies are not affected).
    static void windowsifyFileName(ZKStringC& s);
    static void windowsifyFileName(ZKStringW& s);
    static ZKStringC getWindowsifiedFileName(const ZKStringC& s);
    static ZKStringW getWindowsifiedFileName(const ZKStringW& s);

    // `s` without the characters \ / : * ? " < > | (dropped, not replaced).
    // The wide form goes through the 8-bit form (Latin-1 out, UTF-8 back in),
    // so characters from U+0080 up do not survive it.
    static ZKStringC removeFilenameInvalidChars(const ZKStringC& s);
    static ZKStringW removeFilenameInvalidChars(const ZKStringW& s);

    // QDir::cleanPath; the byte form reads the bytes as Latin-1 and writes
    // the result back as Latin-1.
    static ZKStringC cleanPath(const ZKStringC& path);
    static ZKStringW cleanPath(const ZKStringW& path);
    // A path that begins with '.' is made absolute: its first character is
    // dropped and the rest joined to `base` (to the folder of `base` when
    // `baseIsFile`), so "../x" resolves against that folder itself, not its
    // parent. Any other path is kept. The result is cleaned either way. The
    // byte form goes through the wide one (UTF-8 in, Latin-1 out).
    static ZKStringC absolutePath(const ZKStringC& path, const ZKStringC& base, bool baseIsFile);
    static ZKStringW absolutePath(const ZKStringW& path, const ZKStringW& base, bool baseIsFile);
    // True exactly when `path` begins with '.': "docs/a.txt" and "" are not
    // relative.
    static bool isRelativePath(const ZKStringC& path);
    static bool isRelativePath(const ZKStringW& path);

    // `folder`, a '/' unless it already ends with a separator, then `name`
    // as it is: "" and "x" give "/x", "a/" and "/b" give "a//b". The mixed
    // forms decode the byte argument as UTF-8.
    static ZKStringC concatPathAndFileName(const ZKStringC& folder, const ZKStringC& name);
    static ZKStringW concatPathAndFileName(const ZKStringW& folder, const ZKStringW& name);
    static ZKStringW concatPathAndFileName(const ZKStringC& folder, const ZKStringW& name);
    static ZKStringW concatPathAndFileName(const ZKStringW& folder, const ZKStringC& name);

    // Splits `path` into its folder (with the separator), name and extension
    // (without the dot): "a/b.c/d" gives "a/b.c/", "d", ""; "x.tar.gz" gives
    // "", "x.tar", "gz"; ".profile" gives "", "", "profile".
    static void getFileNameComponents(ZKStringC& folder, ZKStringC& name, ZKStringC& extension,
                                      const ZKStringC& path);
    static void getFileNameComponents(ZKStringW& folder, ZKStringW& name, ZKStringW& extension,
                                      const ZKStringW& path);
    // Splits at the last separator; `name` keeps its extension. Without a
    // separator `folder` is empty and `name` is `path`.
    static void getPathComponents(ZKStringC& folder, ZKStringC& name, const ZKStringC& path,
                                  bool keepSeparator);
    static void getPathComponents(ZKStringW& folder, ZKStringW& name, const ZKStringW& path,
                                  bool keepSeparator);
    // The folder and the name of getFileNameComponents.
    static ZKStringC getParentFolder(const ZKStringC& path);
    static ZKStringW getParentFolder(const ZKStringW& path);
    static ZKStringC getFileNameName(const ZKStringC& path);
    static ZKStringW getFileNameName(const ZKStringW& path);
    // What follows the last '.', or "" when there is none or a separator
    // follows it ("a.b/c" and "c." have no extension).
    static ZKStringC getFileNameExtension(const ZKStringC& path);
    static ZKStringW getFileNameExtension(const ZKStringW& path);
    // `out` becomes `path` cut at its last separator (kept with
    // `keepSeparator`); false, with `out` holding all of `path`, when there is
    // no separator. The one-string forms work in place.
    static bool getParentFolderFromFilename(ZKStringC& out, const ZKStringC& path,
                                            bool keepSeparator);
    static bool getParentFolderFromFilename(ZKStringW& out, const ZKStringW& path,
                                            bool keepSeparator);
    static bool getParentFolderFromFilename(ZKStringC& inOut, bool keepSeparator);
    static bool getParentFolderFromFilename(ZKStringW& inOut, bool keepSeparator);
    // Removes everything up to and including the last separator; always true.
    static bool removeFolderFromFilename(ZKStringC& path);
    static bool removeFolderFromFilename(ZKStringW& path);
    // The folder of `path` joined to `newName` (name and extension replaced);
    // without a folder the result is "/" followed by `newName`.
    static ZKStringC changeFileNameInPath(const ZKStringC& path, const ZKStringC& newName);
    static ZKStringW changeFileNameInPath(const ZKStringW& path, const ZKStringW& newName);

    // Byte form: appends `extension` (a dot added unless it has one) unless
    // `name` already ends with it, ignoring ASCII case; true when appended.
    // An existing different extension stays ("a.txt" with "png" gives
    // "a.txt.png"). An empty `extension` stops the program.
    static bool setExtension(ZKStringC& name, const ZKStringC& extension);
    // Wide form: does nothing and returns false, unlike the byte form.
    static bool setExtension(ZKStringW& name, const ZKStringW& extension);
    // Whether `name` ends with `extension` (a dot added unless it has one),
    // ignoring ASCII case; false for an empty extension. The wide forms ask
    // the byte one on the Latin-1 forms.
    static bool hasExtension(const ZKStringC& name, const ZKStringC& extension);
    static bool hasExtension(const ZKStringW& name, const ZKStringW& extension);
    static bool hasExtension(const ZKStringW& name, const ZKStringC& extension);
    // Byte form: cuts `name` at its last '.' and calls setExtension (so an
    // empty `extension` stops the program). Wide form: keeps everything up to
    // and including the last '.' (adding one when there is none) and appends
    // `extension` as it is; always true. Changing "a.txt" to ".png" gives
    // "a.png" in the byte form and "a..png" in the wide form.
    static bool changeExtension(ZKStringC& name, const ZKStringC& extension);
    static bool changeExtension(ZKStringW& name, const ZKStringW& extension);
    // Cuts `name` at its last '.' (the dot removed); false when it has none.
    static bool removeExtension(ZKStringC& name);
    static bool removeExtension(ZKStringW& name);

    // Inserts `suffix` before the last '.' of a copy of `name`; a name without
    // a dot comes back unchanged. The byte form first formats `suffix` as a
    // printf format without arguments (at most 4095 bytes), so "%%" gives "%"
    // and `suffix` must hold no other conversion; the wide form inserts
    // `suffix` literally.
    static ZKStringC addSuffixToFileName(const ZKStringC& name, const ZKStringC& suffix);
    static ZKStringW addSuffixToFileName(const ZKStringW& name, const ZKStringW& suffix);
    // Increments the number at the end of the name (appends 1 when there is
    // none) and puts the extension back after a dot; the dot comes even when
    // there is no extension: "a/img" gives "a/img1.", "img9.png" "img10.png".
    static ZKStringC incrementFileName(const ZKStringC& path);
    static ZKStringW incrementFileName(const ZKStringW& path);

    // Text files. Whole-file operations open and close the file themselves; a
    // byte path goes to fopen as raw bytes, a wide path through fopenUtf8.
    // Wide content is UTF-8 in the file. A negative `maxBytes` means no limit.

    // Reads the file (at most `maxBytes` bytes) with one read into `content`;
    // true when every byte asked for was read (a short read keeps what was
    // read). A file that cannot be opened empties `content`. The byte path is
    // decoded as UTF-8. The wide-content form sets `content` only on success.
    static bool readTextFileContent(const ZKStringW& path, ZKStringC& content, int maxBytes = -1);
    static bool readTextFileContent(const ZKStringC& path, ZKStringC& content, int maxBytes = -1);
    static bool readTextFileContent(const ZKStringW& path, ZKStringW& content, int maxBytes = -1);
    // Creates or truncates the file and writes `content`; true when all of it
    // reached the file.
    static bool writeTextFileContent(const ZKStringC& path, const ZKStringC& content);
    static bool writeTextFileContent(const ZKStringW& path, const ZKStringW& content);
    static bool writeTextFileContent(const ZKStringW& path, const ZKStringC& content);
    // Appends to the file (created when missing); false only when it cannot be
    // opened. `text` is itself a printf format, so "%%" writes one '%' and it
    // must hold no other conversion. The formatting forms format into at most
    // 4095 bytes and hand the result on as `text`: it is formatted twice, so
    // "%%%%" in `format` writes one '%'.
    static bool addTextToFile(const ZKStringC& path, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    static bool addTextToFile(const ZKStringC& path, const ZKStringC& text);
    static bool addTextToFile(const ZKStringW& path, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    static bool addTextToFile(const ZKStringW& path, const ZKStringC& text);

    // Line readers. On a byte stream a lone CR, CRLF and a lone LF each end one
    // line (a CR not followed by LF is given back); the last line needs no line
    // end; false at end of file with nothing read. On a wide stream the file
    // holds 32-bit units: 10 and 13 each end a line (CRLF gives two), the
    // result is false whenever the file ends first, and `line` takes as many
    // 16-bit units from the start of the unit buffer as 32-bit units were read.
    // False for a null stream, `line` untouched.
    static bool readTextLine(FILE* stream, ZKStringC& line);
    static bool readTextLine(FILE* stream, ZKStringW& line);
    // In-memory readers from `position`, which moves past the line and its
    // end. Byte form: LF ends a line and CR is dropped wherever it stands.
    // Wide form: LF and CR each end a line. False, with `line` untouched, when
    // nothing is left to read.
    static bool readTextLine(const ZKStringC& content, int& position, ZKStringC& line);
    static bool readTextLine(const ZKStringW& content, int& position, ZKStringW& line);
    // Writes the bytes (or the 16-bit units in machine order) of `line`, then
    // a line end of the same width when asked. False only for a null stream.
    static bool writeTextLine(FILE* stream, const ZKStringC& line, bool addNewLine);
    static bool writeTextLine(FILE* stream, const ZKStringW& line, bool addNewLine);
    // Reads bytes up to a zero byte or the end of the file into `text`; true
    // unless the stream is null. `scratch`, when given, is the reused buffer.
    static bool readCString(FILE* stream, ZKStringC& text, ZKArray<char>* scratch = nullptr);
    // Writes the bytes of `text` and a zero byte; true when anything was
    // written.
    static bool writeCString(FILE* stream, const ZKStringC& text);

    // Files and folders: each member is one or a few synchronous calls on
    // QFile, QDir or QFileInfo, reporting failure as false (or a size of 0)
    // and nothing else. Relative paths resolve against the current folder.
    // A byte path reaches Qt in the way its member names, which matters for
    // bytes above 0x7F: "Latin-1" (each byte one character), "UTF-8"
    // (ZKStringServer::fromNonUnicode, then the wide member) or "raw" (the
    // bytes go to the C library).

    // Any existing entry, folders included. UTF-8.
    static bool fileExists(const ZKStringC& path);
    static bool fileExists(const ZKStringW& path);
    // An existing folder (QDir(path).exists(): the empty path is the current
    // folder). UTF-8.
    static bool folderExists(const ZKStringC& path);
    static bool folderExists(const ZKStringW& path);
    // QFile::remove; false for an empty byte path. Latin-1.
    static bool deleteFile(const ZKStringC& path);
    static bool deleteFile(const ZKStringW& path);
    // Removes every entry of `folder` that matches the Qt name filter
    // `pattern` ("*.tmp"; several separated by ';' or spaces), skipping those
    // it cannot remove. False for an empty pattern, true otherwise, even when
    // nothing matched or was removed. UTF-8.
    static bool deleteMultipleFiles(const ZKStringC& folder, const ZKStringC& pattern);
    static bool deleteMultipleFiles(const ZKStringW& folder, const ZKStringW& pattern);
    // Deletes the folder and everything in it, hidden entries included,
    // folders first; a symbolic link is removed, never followed. Stops at the
    // first failure (false), leaving the rest in place. A folder that does not
    // exist counts as deleted (true); the existence test looks for the path
    // inside itself (QDir(folder).exists(folder)), so a relative path that
    // does not repeat below itself is reported missing. The empty path gives
    // false in the byte form and true in the wide form. UTF-8.
    static bool deleteFolder(const ZKStringC& folder);
    static bool deleteFolder(const ZKStringW& folder);
    // Byte form: the C library's rename on the raw bytes, which replaces an
    // existing `to`. Wide form: QFile::rename, which refuses an existing `to`.
    static bool renameFile(const ZKStringC& from, const ZKStringC& to);
    static bool renameFile(const ZKStringW& from, const ZKStringW& to);
    // QFile::rename: false when `to` exists. UTF-8.
    static bool moveFile(const ZKStringC& from, const ZKStringC& to);
    static bool moveFile(const ZKStringW& from, const ZKStringW& to);
    // QFile::copy: false when `to` exists. Latin-1.
    static bool copyFile(const ZKStringC& from, const ZKStringC& to);
    static bool copyFile(const ZKStringW& from, const ZKStringW& to);
    // Deletes an existing `to` first (a failure there is ignored), then
    // copyFile.
    static bool copyFile_override(const ZKStringC& from, const ZKStringC& to);
    static bool copyFile_override(const ZKStringW& from, const ZKStringW& to);
    // One level: the parent must exist. Latin-1.
    static bool createFolder(const ZKStringC& path);
    static bool createFolder(const ZKStringW& path);
    // Every missing level. Latin-1.
    static bool createPath(const ZKStringC& path);
    static bool createPath(const ZKStringW& path);
    // False, outputs untouched, when fileExists(path) is false; otherwise
    // fills each non-null output with the creation (birth, or metadata change
    // when the file system keeps no birth time), modification and last-read
    // date, in that order, and returns true. UTF-8.
    static bool getFileDates(const ZKStringC& path, ZKDateTime* created, ZKDateTime* modified,
                             ZKDateTime* lastRead);
    static bool getFileDates(const ZKStringW& path, ZKDateTime* created, ZKDateTime* modified,
                             ZKDateTime* lastRead);
    // Size in bytes; 0 for a missing file. UTF-8.
    static long long getFileSize(const ZKStringC& path);
    static long long getFileSize(const ZKStringW& path);
    // The process's current folder; the byte form as Latin-1 ("?" for
    // characters above U+00FF).
    static ZKStringC getCurrentPath();
    static ZKStringW getCurrentPathW();
    // QDir::setCurrent. Latin-1.
    static bool setCurrentPath(const ZKStringC& path);
    static bool setCurrentPath(const ZKStringW& path);
};
