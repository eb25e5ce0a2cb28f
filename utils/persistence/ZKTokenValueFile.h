// ZKTokenValueFile.h: plain-text settings files of token=value lines.
//
// The format: each line holding a "=" is one pair; the token is every byte
// before the first "=", the value every byte after it up to the end of the
// line (it may hold more "="). No trimming, no comments, no quoting, no
// escaping: a line without "=" is ignored and blanks around "=" belong to the
// token or the value. Text is UTF-8. Lines are written as "%s=%s\n",
// "%s=%d\n", "%s=%f\n" (six decimals, C locale), "%s=TRUE\n" / "%s=FALSE\n".
// Booleans read leniently: "No", "0" and "false" in any case are false,
// every other value (the empty one included) is true.
//
// Two ways of use:
// - a streaming writer: open(), one write*() call per line, close();
// - a reader: readFile() hands every pair to the virtual onTokenValue(), and
//   bufferedParseFile() also keeps the pairs (four parallel arrays, file
//   order, duplicates kept) for the queries and edits below, which
//   writeBufferedTokens() writes back.
//
// The destructor does not close a file opened with open(): call close().
// Threads: an object must not be used from two threads at once.
#pragma once

#include "ZKArray.h"
#include "ZKExport.h"
#include "ZKStringC.h"
#include "ZKStringW.h"

#include <QHash>

#include <cstdio>

class ZKUTILS_EXPORT ZKTokenValueFile {
public:
    ZKTokenValueFile();

    ZKTokenValueFile(const ZKTokenValueFile&) = delete;
    ZKTokenValueFile& operator=(const ZKTokenValueFile&) = delete;

    // Called for every pair read, after it was buffered (when buffering is
    // on). The base class does nothing; derive and override to consume
    // settings as they are read. Kept as the first virtual slot: declared
    // before the destructor.
    virtual void onTokenValue(const ZKStringW& token, const ZKStringW& value);

    // Destroys the buffered pairs; does not close the file. Virtual so that
    // a derived reader can be deleted through this class; its slots follow
    // onTokenValue's.
    virtual ~ZKTokenValueFile();

    // Format back to UTF-8, buffering off, every buffered pair dropped. The
    // empty-value counter and the file are left as they are.
    void clear();
    // Kept: UTF-8 is the only format, so the argument is ignored and the
    // format stays 1.
    void setFileFormat(int format);
    int getFileFormat() const { return m_fileFormat; }

    // Close any open file, then fopen the path (its bytes as they are, or the
    // UTF-8 form of a wide path); an empty path opens nothing. True when a
    // file is open.
    bool open(const ZKStringC& path, const char* mode);
    bool open(const ZKStringW& path, const char* mode);
    void close();
    bool isOpen() const { return m_file != nullptr; }
    FILE* getFile() const { return m_file; }

    // True when no pair is buffered.
    bool isEmpty() const;
    // Number of buffered pairs.
    long long getCount() const { return m_tokensC.size(); }
    // Lines read so far with a non-empty token and an empty value.
    int getNbEmptyValues() const { return m_nbEmptyValues; }

    // Reads the file line by line, parsing each with readLine. False only
    // when the file cannot be opened. Independent of the file of open().
    bool readFile(const ZKStringW& path);
    // Parses one line; always true.
    bool readLine(const char* line);
    // readFile with buffering on. Pairs buffered before are kept.
    bool bufferedParseFile(const ZKStringW& path);

    // Queries on the buffered pairs: the first pair whose token has exactly
    // these bytes wins. True when the token was found; the target is left
    // unchanged otherwise. A value that is not a number reads as 0.
    bool hasToken(const char* token) const;
    bool getStringC(const char* token, ZKStringC& value) const;
    bool getStringW(const char* token, ZKStringW& value) const;
    bool getStringW(const ZKStringW& token, ZKStringW& value) const;
    bool getInt(const char* token, int& value) const;
    bool getFloat(const char* token, float& value) const;
    bool getDouble(const char* token, double& value) const;
    bool getBool(const char* token, bool& value) const;
    // The boolean of the token, or `defaultValue` when it is absent.
    bool getBool_(const char* token, bool defaultValue) const;

    static bool valueAsBool(const ZKStringC& value);
    static bool valueAsBool(const ZKStringW& value);
    static int valueAsInt(const ZKStringC& value);
    static int valueAsInt(const ZKStringW& value);
    static float valueAsFloat(const ZKStringC& value);
    static float valueAsFloat(const ZKStringW& value);
    static double valueAsDouble(const ZKStringC& value);
    static double valueAsDouble(const ZKStringW& value);

    // Edits of the buffered pairs. add* appends without looking for the token;
    // set* replaces the value of the first pair with the token, or adds one.
    bool addTokenValue(const char* token, int value);
    bool addTokenValue(const char* token, const ZKStringC& value);
    bool addTokenValue(const char* token, const ZKStringW& value);
    bool setTokenValue(const char* token, int value);
    bool setTokenValue(const char* token, const ZKStringW& value);
    bool replaceToken(const char* token, const ZKStringW& value);
    // Removes the first pair with the token; false when there is none.
    bool rmvTokenValue(const char* token);

    // One line each to the file of open(); false, writing nothing, when no
    // file is open. fprintf's result is not consulted.
    bool write(const char* token, const char* value);
    bool writeStringC(const char* token, const ZKStringC& value);
    bool writeStringW(const ZKStringW& token, const ZKStringW& value);
    bool writeStringW(const ZKStringC& token, const ZKStringW& value);
    bool writeInt(const char* token, int value);
    bool writeFloat(const char* token, float value);
    bool writeDouble(const char* token, double value);
    bool writeBool(const char* token, bool value);
    // Writes every buffered pair as "%s=%s\n" to a new file at the path (its
    // Latin-1 form); false when it cannot be created.
    bool writeBufferedTokens(const ZKStringW& path);

private:
    // Index of the first pair with exactly these token bytes, -1 when none.
    long long findToken(const char* token) const;
    void invalidateTokenIndex() { m_tokenIndexValid = false; }
    // Stores convert(index of the token's first pair) in value when found.
    template <typename T, typename Convert>
    bool getValue(const char* token, T& value, Convert convert) const;
    void appendPair(const ZKStringC& tokenC, const ZKStringW& tokenW, const ZKStringW& valueW,
                    const ZKStringC& valueC);
    bool setPair(const char* token, const ZKStringW& valueW, const ZKStringC& valueC);

    FILE* m_file = nullptr;
    int m_fileFormat = 1;
    bool m_buffered = false;
    ZKArray<ZKStringC> m_tokensC;
    ZKArray<ZKStringW> m_tokensW;
    ZKArray<ZKStringW> m_valuesW;
    ZKArray<ZKStringC> m_valuesC;
    int m_nbEmptyValues = 0;
    // Token bytes -> index of their first pair, built on the first lookup among
    // many pairs so that queries need not walk every token; it only speeds the
    // first-match-wins search up and never changes its answer.
    mutable QHash<QByteArray, long long> m_tokenIndex;
    mutable bool m_tokenIndexValid = false;
};
