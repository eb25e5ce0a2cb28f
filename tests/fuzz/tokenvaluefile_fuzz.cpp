// Fuzzes ZKTokenValueFile parsing: the input is a settings file, parsed with
// buffering on, then queried, edited and written back.
#include "ZKFuzzSupport.h"

#include "ZKTokenValueFile.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

// Keeps the first pairs handed to the hook, and counts them all.
class RecordingFile : public ZKTokenValueFile {
public:
    void onTokenValue(const ZKStringW& token, const ZKStringW& value) override {
        if (m_tokens.size() < 8) {
            m_tokens.push_back(token);
            m_values.push_back(value);
        }
        ++m_calls;
    }

    ZKArray<ZKStringW> m_tokens;
    ZKArray<ZKStringW> m_values;
    long long m_calls = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ZKFuzz::ScratchFile input("tokenvaluefile");
    input.write(data, size);

    RecordingFile file;
    ZKFuzz::check(file.bufferedParseFile(input.pathW()), "an existing file parses");
    ZKFuzz::check(file.getCount() == file.m_calls, "every pair read is buffered once");
    ZKFuzz::check(file.getNbEmptyValues() <= file.m_calls, "empty values are pairs");
    // A pair is a line (as the byte stream reader splits them) whose text up to
    // its first zero byte holds a '='.
    long long pairs = 0;
    size_t position = 0;
    QByteArray line;
    while (ZKFuzz::nextByteLine(data, size, position, line)) {
        const char* text = line.constData();
        const char* equal = std::strchr(text, '=');
        if (!equal)
            continue;
        if (pairs < file.m_tokens.size()) {
            ZKFuzz::check(file.m_tokens[pairs] == QString::fromUtf8(text, int(equal - text)) &&
                              file.m_values[pairs] == QString::fromUtf8(equal + 1),
                          "the token is before the first '=', the value after it");
        }
        ++pairs;
    }
    ZKFuzz::check(file.getCount() == pairs, "every line with a '=' is one pair");

    for (long long i = 0; i < file.m_tokens.size(); ++i) {
        const ZKStringW& token = file.m_tokens[i];
        ZKStringW value;
        ZKFuzz::check(file.getStringW(token, value), "a pair read is found by its token");
        const ZKStringC tokenBytes = token.toUtf8();
        const char* t = tokenBytes.constData();
        ZKStringC valueC;
        int valueInt = 0;
        float valueFloat = 0;
        double valueDouble = 0;
        bool valueBool = false;
        file.hasToken(t);
        file.getStringC(t, valueC);
        file.getStringW(t, value);
        file.getInt(t, valueInt);
        file.getFloat(t, valueFloat);
        file.getDouble(t, valueDouble);
        file.getBool(t, valueBool);
        file.getBool_(t, true);
        ZKTokenValueFile::valueAsBool(file.m_values[i]);
        ZKTokenValueFile::valueAsInt(valueC);
        ZKTokenValueFile::valueAsDouble(valueC);
        if (i % 2)
            file.setTokenValue(t, file.m_values[i]);
        else
            file.rmvTokenValue(t);
    }

    static const ZKFuzz::ScratchFile output("tokenvaluefile_out");
    file.writeBufferedTokens(output.pathW());

    // Line by line as well: readLine takes C strings, so a zero byte ends one.
    ZKTokenValueFile lines;
    QByteArray text(reinterpret_cast<const char*>(data), int(size));
    lines.readLine(text.constData());
    return 0;
}
