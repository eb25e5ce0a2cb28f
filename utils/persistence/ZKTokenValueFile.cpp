#include "ZKTokenValueFile.h"

#include "ZKDisk.h"
#include "internal/ZKFormat.h"

#include <cstdarg>
#include <cstring>

namespace {

constexpr int kUtf8Format = 1;

// From this many buffered pairs on, lookups go through a hash of the tokens.
constexpr long long kIndexedPairs = 32;

QString latin1(const char* text) {
    return QString::fromLatin1(text);
}

bool equalsNoCase(const ZKStringC& a, const char* b) {
    return qstricmp(a.constData(), b) == 0;
}

bool equalsNoCase(const ZKStringW& a, const char* b) {
    return static_cast<const QString&>(a).compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

template <typename S> bool boolFromValue(const S& value) {
    return !(equalsNoCase(value, "No") || equalsNoCase(value, "0") || equalsNoCase(value, "false"));
}

// fprintf of one line; false, writing nothing, without a file. fprintf's own
// result is not consulted.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
bool printLine(FILE* file, const char* format, ...) {
    if (!file)
        return false;
    va_list args;
    va_start(args, format);
    std::vfprintf(file, format, args);
    va_end(args);
    return true;
}

} // namespace

ZKTokenValueFile::ZKTokenValueFile() = default;

ZKTokenValueFile::~ZKTokenValueFile() = default;

void ZKTokenValueFile::onTokenValue(const ZKStringW& token, const ZKStringW& value) {
    (void)token;
    (void)value;
}

void ZKTokenValueFile::clear() {
    m_fileFormat = kUtf8Format;
    m_buffered = false;
    m_tokensC.clear();
    m_tokensW.clear();
    m_valuesW.clear();
    m_valuesC.clear();
    invalidateTokenIndex();
}

void ZKTokenValueFile::setFileFormat(int format) {
    (void)format;
    m_fileFormat = kUtf8Format; // kept: UTF-8 whatever the argument
}

bool ZKTokenValueFile::open(const ZKStringC& path, const char* mode) {
    close();
    if (!path.isEmpty())
        m_file = std::fopen(path.constData(), mode);
    return m_file != nullptr;
}

bool ZKTokenValueFile::open(const ZKStringW& path, const char* mode) {
    close();
    m_file = fopenUtf8(path, mode);
    return m_file != nullptr;
}

void ZKTokenValueFile::close() {
    if (m_file) {
        std::fclose(m_file);
        m_file = nullptr;
    }
}

bool ZKTokenValueFile::isEmpty() const {
    return m_tokensC.empty();
}

bool ZKTokenValueFile::readFile(const ZKStringW& path) {
    FILE* file = fopenUtf8(path, "r");
    if (!file)
        return false;
    ZKStringC line;
    while (ZKDisk::readTextLine(file, line))
        readLine(line.constData());
    std::fclose(file);
    return true;
}

bool ZKTokenValueFile::readLine(const char* line) {
    const char* equal = std::strchr(line, '=');
    if (!equal)
        return true;
    const ZKStringC tokenC(line, int(equal - line));
    const ZKStringC valueC(equal + 1);
    const ZKStringW tokenW = QString::fromUtf8(tokenC);
    const ZKStringW valueW = QString::fromUtf8(valueC);
    if (!tokenC.isEmpty() && valueC.isEmpty())
        ++m_nbEmptyValues;
    if (m_buffered)
        appendPair(tokenC, tokenW, valueW, valueC);
    onTokenValue(tokenW, valueW);
    return true;
}

bool ZKTokenValueFile::bufferedParseFile(const ZKStringW& path) {
    m_buffered = true;
    const bool ok = readFile(path);
    m_buffered = false;
    return ok;
}

long long ZKTokenValueFile::findToken(const char* token) const {
    const long long n = m_tokensC.size();
    const size_t length = std::strlen(token);
    if (n >= kIndexedPairs) {
        if (!m_tokenIndexValid) {
            m_tokenIndex.clear();
            m_tokenIndex.reserve(int(n));
            for (long long i = n - 1; i >= 0; --i)
                m_tokenIndex.insert(m_tokensC[i], i); // the first pair wins
            m_tokenIndexValid = true;
        }
        return m_tokenIndex.value(QByteArray::fromRawData(token, int(length)), -1);
    }
    for (long long i = 0; i < n; ++i) {
        const ZKStringC& t = m_tokensC[i];
        if (size_t(t.size()) == length && std::memcmp(t.constData(), token, length) == 0)
            return i;
    }
    return -1;
}

bool ZKTokenValueFile::hasToken(const char* token) const {
    return findToken(token) >= 0;
}

template <typename T, typename Convert>
bool ZKTokenValueFile::getValue(const char* token, T& value, Convert convert) const {
    const long long i = findToken(token);
    if (i < 0)
        return false;
    value = convert(i);
    return true;
}

bool ZKTokenValueFile::getStringC(const char* token, ZKStringC& value) const {
    return getValue(token, value, [this](long long i) { return m_valuesC[i]; });
}

bool ZKTokenValueFile::getStringW(const char* token, ZKStringW& value) const {
    return getValue(token, value, [this](long long i) { return m_valuesW[i]; });
}

bool ZKTokenValueFile::getStringW(const ZKStringW& token, ZKStringW& value) const {
    const long long n = m_tokensW.size();
    for (long long i = 0; i < n; ++i) {
        if (m_tokensW[i] == token) {
            value = m_valuesW[i];
            return true;
        }
    }
    return false;
}

bool ZKTokenValueFile::getInt(const char* token, int& value) const {
    return getValue(token, value, [this](long long i) { return valueAsInt(m_valuesW[i]); });
}

bool ZKTokenValueFile::getFloat(const char* token, float& value) const {
    return getValue(token, value, [this](long long i) { return valueAsFloat(m_valuesW[i]); });
}

bool ZKTokenValueFile::getDouble(const char* token, double& value) const {
    return getValue(token, value, [this](long long i) { return valueAsDouble(m_valuesW[i]); });
}

bool ZKTokenValueFile::getBool(const char* token, bool& value) const {
    return getValue(token, value, [this](long long i) { return valueAsBool(m_valuesW[i]); });
}

bool ZKTokenValueFile::getBool_(const char* token, bool defaultValue) const {
    bool value = defaultValue;
    getBool(token, value);
    return value;
}

bool ZKTokenValueFile::valueAsBool(const ZKStringC& value) {
    return boolFromValue(value);
}

bool ZKTokenValueFile::valueAsBool(const ZKStringW& value) {
    return boolFromValue(value);
}

int ZKTokenValueFile::valueAsInt(const ZKStringC& value) {
    return value.toInt(nullptr, 10);
}

int ZKTokenValueFile::valueAsInt(const ZKStringW& value) {
    return value.toInt(nullptr, 10);
}

float ZKTokenValueFile::valueAsFloat(const ZKStringC& value) {
    return value.toFloat(nullptr);
}

float ZKTokenValueFile::valueAsFloat(const ZKStringW& value) {
    return value.toFloat(nullptr);
}

double ZKTokenValueFile::valueAsDouble(const ZKStringC& value) {
    return value.toDouble(nullptr);
}

double ZKTokenValueFile::valueAsDouble(const ZKStringW& value) {
    return value.toDouble(nullptr);
}

void ZKTokenValueFile::appendPair(const ZKStringC& tokenC, const ZKStringW& tokenW,
                                  const ZKStringW& valueW, const ZKStringC& valueC) {
    if (m_tokenIndexValid && !m_tokenIndex.contains(tokenC))
        m_tokenIndex.insert(tokenC, m_tokensC.size());
    m_tokensC.push_back(tokenC);
    m_tokensW.push_back(tokenW);
    m_valuesW.push_back(valueW);
    m_valuesC.push_back(valueC);
}

bool ZKTokenValueFile::addTokenValue(const char* token, int value) {
    appendPair(token, latin1(token), ZKStringW::intStr(value), ZKStringC::intStr(value));
    return true;
}

bool ZKTokenValueFile::addTokenValue(const char* token, const ZKStringC& value) {
    appendPair(token, latin1(token), ZKStringW(value), value);
    return true;
}

bool ZKTokenValueFile::addTokenValue(const char* token, const ZKStringW& value) {
    appendPair(token, latin1(token), value, value.getAsStringC());
    return true;
}

bool ZKTokenValueFile::setPair(const char* token, const ZKStringW& valueW,
                               const ZKStringC& valueC) {
    const long long i = findToken(token);
    if (i < 0) {
        appendPair(token, latin1(token), valueW, valueC);
    } else {
        m_valuesW[i] = valueW;
        m_valuesC[i] = valueC;
    }
    return true;
}

bool ZKTokenValueFile::setTokenValue(const char* token, int value) {
    return setPair(token, ZKStringW::intStr(value), ZKStringC::intStr(value));
}

bool ZKTokenValueFile::setTokenValue(const char* token, const ZKStringW& value) {
    return setPair(token, value, value.getAsStringC());
}

bool ZKTokenValueFile::replaceToken(const char* token, const ZKStringW& value) {
    return setTokenValue(token, value);
}

bool ZKTokenValueFile::rmvTokenValue(const char* token) {
    const long long i = findToken(token);
    if (i < 0)
        return false;
    invalidateTokenIndex(); // later pairs move down by one
    m_tokensC.erase(i);
    m_tokensW.erase(i);
    m_valuesW.erase(i);
    m_valuesC.erase(i);
    return true;
}

bool ZKTokenValueFile::write(const char* token, const char* value) {
    return printLine(m_file, "%s=%s\n", token, value);
}

bool ZKTokenValueFile::writeStringC(const char* token, const ZKStringC& value) {
    return write(token, value.constData());
}

bool ZKTokenValueFile::writeStringW(const ZKStringW& token, const ZKStringW& value) {
    return write(token.toUtf8().constData(), value.toUtf8().constData());
}

bool ZKTokenValueFile::writeStringW(const ZKStringC& token, const ZKStringW& value) {
    return write(token.constData(), value.toUtf8().constData());
}

bool ZKTokenValueFile::writeInt(const char* token, int value) {
    return printLine(m_file, "%s=%d\n", token, value);
}

bool ZKTokenValueFile::writeFloat(const char* token, float value) {
    return writeDouble(token, double(value));
}

bool ZKTokenValueFile::writeDouble(const char* token, double value) {
    ZKInternal::CLocaleScope cLocale; // six decimals after a "." whatever the locale
    return printLine(m_file, "%s=%f\n", token, value);
}

bool ZKTokenValueFile::writeBool(const char* token, bool value) {
    return write(token, value ? "TRUE" : "FALSE");
}

bool ZKTokenValueFile::writeBufferedTokens(const ZKStringW& path) {
    const ZKStringC bytes = path.getAsStringC();
    FILE* file = bytes.isEmpty() ? nullptr : std::fopen(bytes.constData(), "w");
    if (!file)
        return false;
    const long long n = m_tokensC.size();
    for (long long i = 0; i < n; ++i)
        printLine(file, "%s=%s\n", m_tokensC[i].constData(), m_valuesW[i].toUtf8().constData());
    std::fclose(file);
    return true;
}
