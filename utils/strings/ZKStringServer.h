// ZKStringServer.h: static string utilities for ZKStringC and ZKStringW.
//
// A server class: static functions only, no state of its own beyond the
// vector formatting setting m_asStrFormat. Each operation exists for both
// string kinds, byte strings with char separators and wide strings with QChar
// separators; the algorithm is written once and both overloads call it.
// Separators and characters are compared exactly (case-sensitive).
//
// Parts and cursors: a position argument `pos` is a cursor into the source
// string, the index at which the next part begins, or -1 once the string is
// exhausted. Lists are appended to unless an operation says it empties them.
//
// Number suffixes: the longest run of ASCII digits "0" to "9" at the end of a
// string (the run may be the whole string); for wide strings only the ASCII
// digits count.
//
// Nothing reports failures: boolean results say whether a string was changed
// or a suffix found; formatted vector text is cut at 4095 bytes.
//
// Threads: every operation touches only its arguments, except that
// m_asStrFormat is a plain static: setting it while another thread formats a
// vector is not allowed.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

class ZKVec2f;
class ZKVec2i;
class ZKVec3d;
class ZKVec3f;

class ZKUTILS_EXPORT ZKStringServer {
public:
    ZKStringServer() = delete;

    // The C format of one vector component for vecAsStr: "%f" at load.
    static ZKStringC m_asStrFormat;

    // The name of a return code ("RC_OK" ... "RC_FILE_DO_NOT_EXIST"), or
    // "UNKNOWN RET CODE" for any other value, negative ones included.
    static ZKStringC retCodeAsString(int code);

    // Conversions between the two string kinds (see ZKStringW): byte to wide
    // decodes UTF-8 up to the first zero byte; wide to byte is Latin-1 with
    // "?" above U+00FF, cut at the first zero character. A null pointer gives
    // an empty string. wchar_t text is the platform's wide characters.
    static ZKStringW fromNonUnicode(const char* s);
    static ZKStringW fromNonUnicode(const ZKStringC& s);
    static ZKStringC toAscii(const ZKStringW& s);
    static ZKStringC toAscii(const wchar_t* s);
    // `out` is replaced by one converted string per element of `in`, in order.
    static void toUnicode(ZKArray<ZKStringW>& out, const ZKStaticArray<ZKStringC>& in);
    static void toAscii(ZKArray<ZKStringC>& out, const ZKStaticArray<ZKStringW>& in);

    // Extracts the part of `s` that starts at `pos` and ends before the next
    // separator. Found at i: `part` is s[pos, i) and `pos` moves past the
    // separator. Not found: `part` is the rest of `s` (empty when `pos` is at
    // or beyond the end, or negative) and `pos` becomes -1.
    static void extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos, char sep);
    static void extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos, QChar sep);
    // Either separator ends the part; the pair sep1 sep2 or sep2 sep1 counts as
    // one break ("\r\n" and "\n\r"), two equal separators in a row as two
    // ("\n\n") unless sep1 == sep2.
    static void extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos, char sep1,
                                char sep2);
    static void extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos, QChar sep1,
                                QChar sep2);
    // A separator string; `pos` moves past all of it. An empty separator is
    // never found, so the rest of `s` is one part.
    static void extractNextPart(ZKStringC& part, const ZKStringC& s, int& pos,
                                const ZKStringC& sep);
    static void extractNextPart(ZKStringW& part, const ZKStringW& s, int& pos,
                                const ZKStringW& sep);

    // Appends the parts of `s` to `list`: empty parts between separators are
    // kept, a single trailing empty part is dropped ("a,,b" gives "a", "",
    // "b"; "a,b," gives "a", "b"; "" gives nothing). The trailing int is not
    // used. The wide forms also take char separators (their Latin-1
    // characters), so that two chars never pick the one-separator form.
    static void splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, char sep, int = 0);
    static void splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, char sep1, char sep2,
                           int = 0);
    static void splitParts(ZKArray<ZKStringC>& list, const ZKStringC& s, const ZKStringC& sep,
                           int = 0);
    static void splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, QChar sep, int = 0);
    static void splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, QChar sep1, QChar sep2,
                           int = 0);
    static void splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, const ZKStringW& sep,
                           int = 0);
    static void splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, char sep, int = 0);
    static void splitParts(ZKArray<ZKStringW>& list, const ZKStringW& s, char sep1, char sep2,
                           int = 0);
    // splitParts with the separators line feed and carriage return.
    static void splitMultiLine(ZKArray<ZKStringC>& list, const ZKStringC& s);
    static void splitMultiLine(ZKArray<ZKStringW>& list, const ZKStringW& s);

    // Removes the blanks (U+0020 only, not tabs or line breaks) at both ends;
    // false when there were none (an empty string included).
    static bool removeSurroundingSpaces(ZKStringC& s);
    static bool removeSurroundingSpaces(ZKStringW& s);
    // Removes a pair of double quotes (when `doubleQuotes`) or else of
    // apostrophes (when `singleQuotes`) around `s`, and with `recursive` the
    // pairs inside it as well. A lone quote character counts as surrounded and
    // becomes empty. False when nothing was removed.
    static bool removeSurroundingQuotes(ZKStringC& s, bool recursive = false,
                                        bool singleQuotes = true, bool doubleQuotes = true);
    static bool removeSurroundingQuotes(ZKStringW& s, bool recursive = false,
                                        bool singleQuotes = true, bool doubleQuotes = true);
    // Puts `s` in double quotes; with `replaceSingleQuotes` a pair of
    // apostrophes around it is removed first. False when `s` is then already
    // in double quotes (the apostrophes stay removed).
    static bool makeWithDoubleQuotes(ZKStringC& s, bool replaceSingleQuotes = true);
    static bool makeWithDoubleQuotes(ZKStringW& s, bool replaceSingleQuotes = true);
    // The same with the apostrophe and the double quote exchanged.
    static bool makeWithSingleQuotes(ZKStringC& s, bool replaceDoubleQuotes = true);
    static bool makeWithSingleQuotes(ZKStringW& s, bool replaceDoubleQuotes = true);

    // Appends the arguments of a command line: blanks outside double quotes
    // separate them, runs of blanks give no empty argument, and the quote
    // characters stay in the arguments (`a "b c" d` gives a, "b c", d).
    static void splitCmdLineArgs(ZKArray<ZKStringC>& list, const ZKStringC& line);
    static void splitCmdLineArgs(ZKArray<ZKStringW>& list, const ZKStringW& line);
    // `list` is emptied and then holds the argc arguments in order (byte
    // arguments decoded as UTF-8 for the wide list); a null argument is an
    // empty string; a negative argc or a null argv gives an empty list.
    static void extractCmdLineArgs(ZKArray<ZKStringC>& list, int argc, char** argv);
    static void extractCmdLineArgs(ZKArray<ZKStringW>& list, int argc, char** argv);
    static void extractCmdLineArgs(ZKArray<ZKStringW>& list, int argc, wchar_t** argv);

    // When `s` ends in a number suffix: `suffix` becomes it, `*value` (when
    // not null) its decimal value, 0 when that does not fit an int, and the
    // result is true. Otherwise false, with `suffix` and `*value` untouched.
    static bool extractNumberSuffix(const ZKStringC& s, ZKStringC& suffix, int* value = nullptr);
    static bool extractNumberSuffix(const ZKStringW& s, ZKStringW& suffix, int* value = nullptr);
    // Appends `suffix` to `s`, first cutting off the number suffix of `s` when
    // `suffix` reads as a decimal int: "Layer12" with "7" gives "Layer7", with
    // "b" "Layer12b". Always true.
    static bool replaceOrAddNumberSuffix(ZKStringC& s, const ZKStringC& suffix);
    static bool replaceOrAddNumberSuffix(ZKStringW& s, const ZKStringW& suffix);
    // Replaces a number suffix n by n + increment ("%d", leading zeros lost:
    // "img009" gives "img10"), or appends startValue when there is none. The
    // wide form works on the Latin-1 form of `s` and decodes the result as
    // UTF-8, so characters from U+0080 up do not survive it.
    static void incrementSuffix(ZKStringC& s, int increment = 1, int startValue = 1);
    static void incrementSuffix(ZKStringW& s, int increment = 1, int startValue = 1);
    // Do nothing.
    static void incrementNumberInString(ZKStringC& s, int, int, int);
    static void incrementNumberInString(ZKStringW& s, int, int, int);

    // Length of the longest prefix (suffix) shared by every string of `list`:
    // 0 for an empty list, the length of the string for a list of one. Bytes
    // or UTF-16 code units are compared exactly.
    static int computeBiggestCommonPrefix(const ZKStaticArray<ZKStringC>& list);
    static int computeBiggestCommonPrefix(const ZKStaticArray<ZKStringW>& list);
    static int computeBiggestCommonSuffix(const ZKStaticArray<ZKStringC>& list);
    static int computeBiggestCommonSuffix(const ZKStaticArray<ZKStringW>& list);

    // "(x, y, z)" with `format` for each component, formatted by vsnprintf
    // into 4096 bytes (at most 4095 kept): "%.2f" gives "(1.00, 2.50, -3.00)".
    // The frame itself is built with the same bound. Float components are
    // passed as double. `format` is meant to hold one conversion for a double
    // (f, e, g or a, with flags, width, precision and the no-op "l"); a format
    // with a conversion of any other kind ("%d", "%s", "%n", "%*f", "%Lf",
    // "%1$f", ...) or with more conversions than there are components gives an
    // empty string instead of reading arguments that are not there.
    static ZKStringC vecAsStr(const ZKVec3f& v, const ZKStringC& format = m_asStrFormat);
    static ZKStringC vecAsStr(const ZKVec3d& v, const ZKStringC& format = m_asStrFormat);
    // "(x, y)" the same way.
    static ZKStringC vecAsStr(const ZKVec2f& v, const ZKStringC& format = m_asStrFormat);
    // "(%d, %d)".
    static ZKStringC vecAsStr(const ZKVec2i& v);
    // Replaces m_asStrFormat; not to be called while another thread formats.
    static void setAsStrFloatFormat(const ZKStringC& format);
};
