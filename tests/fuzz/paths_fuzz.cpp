// Fuzzes the ZKDisk path and file-name rules on byte and wide strings. The
// input gives a path, a base and an extension or suffix; the wide strings are
// either the UTF-8 decoding of those bytes or their raw UTF-16 units (lone
// surrogates included).
//
// Avoided on purpose: the byte forms of setExtension and changeExtension stop
// the program on an empty extension, and the byte addSuffixToFileName treats
// its suffix as a printf format that must hold no conversion, so those get a
// non-empty extension and a suffix without '%'.
#include "ZKFuzzSupport.h"

#include "ZKDisk.h"

#include <QString>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

ZKStringC bytesOf(const std::string& s) {
    return ZKStringC(QByteArray(s.data(), int(s.size())));
}

ZKStringW wideOf(const std::string& s, bool rawUnits) {
    if (rawUnits)
        return ZKStringW(QString(reinterpret_cast<const QChar*>(s.data()), int(s.size() / 2)));
    return ZKStringW(QString::fromUtf8(s.data(), int(s.size())));
}

bool is(char c, char ascii) {
    return c == ascii;
}

bool is(QChar c, char ascii) {
    return c.unicode() == ushort(ascii);
}

// The splitting rule written plainly: the last separator s and the last dot
// d; the folder keeps its separator, the extension loses its dot, and a dot
// before the last separator belongs to the name.
template <typename Str>
void modelComponents(const Str& path, Str& folder, Str& name, Str& extension) {
    int s = -1, d = -1;
    for (int i = 0; i < path.size(); ++i) {
        if (is(path.at(i), '/') || is(path.at(i), '\\'))
            s = i;
        else if (is(path.at(i), '.'))
            d = i;
    }
    folder = s >= 0 ? path.left(s + 1) : Str();
    const int nameStart = s + 1;
    const bool hasExtension = d > s;
    name = path.mid(nameStart, hasExtension ? d - nameStart : -1);
    extension = hasExtension ? path.mid(d + 1) : Str();
}

template <typename Str> void splitAndJoin(const Str& path, const Str& base, bool flag) {
    Str folder, name, extension;
    ZKDisk::getFileNameComponents(folder, name, extension, path);
    Str modelFolder, modelName, modelExtension;
    modelComponents(path, modelFolder, modelName, modelExtension);
    ZKFuzz::check(folder == modelFolder && name == modelName && extension == modelExtension,
                  "getFileNameComponents splits at the last separator and the last dot");
    ZKFuzz::check(ZKDisk::getParentFolder(path) == folder, "getParentFolder is the folder");
    ZKFuzz::check(ZKDisk::getFileNameName(path) == name, "getFileNameName is the name");
    ZKFuzz::check(ZKDisk::getFileNameExtension(path) == extension,
                  "getFileNameExtension is the extension");

    ZKDisk::getPathComponents(folder, name, path, flag);
    Str parent;
    ZKDisk::getParentFolderFromFilename(parent, path, flag);
    Str inPlace = path;
    ZKDisk::getParentFolderFromFilename(inPlace, !flag);
    Str noFolder = path;
    ZKDisk::removeFolderFromFilename(noFolder);
    ZKDisk::changeFileNameInPath(path, base);
    ZKDisk::concatPathAndFileName(path, base);
    ZKDisk::isRelativePath(path);
    ZKDisk::absolutePath(path, base, flag);
    ZKDisk::cleanPath(path);
    ZKDisk::incrementFileName(path);
    Str noExtension = path;
    ZKDisk::removeExtension(noExtension);
    ZKDisk::removeFilenameInvalidChars(path);
    ZKDisk::getUnixifiedFileName(path);
    ZKDisk::getWindowsifiedFileName(path);
    ZKDisk::compareFileName(path, base);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    const bool flag = input.ConsumeBool();
    const bool rawUnits = input.ConsumeBool();
    const std::string path = input.ConsumeRandomLengthString(1024);
    const std::string base = input.ConsumeRandomLengthString(1024);
    const std::string extension = input.ConsumeRemainingBytesAsString();

    const ZKStringC pathC = bytesOf(path);
    const ZKStringC baseC = bytesOf(base);
    const ZKStringC extC = bytesOf(extension);
    splitAndJoin(pathC, baseC, flag);

    const ZKStringW pathW = wideOf(path, rawUnits);
    const ZKStringW baseW = wideOf(base, rawUnits);
    const ZKStringW extW = wideOf(extension, rawUnits);
    splitAndJoin(pathW, baseW, flag);

    ZKStringW changedW = pathW;
    ZKFuzz::check(ZKDisk::changeExtension(changedW, extW), "the wide changeExtension is true");
    ZKStringW setW = pathW;
    ZKFuzz::check(!ZKDisk::setExtension(setW, extW) && setW == pathW,
                  "the wide setExtension changes nothing");
    ZKDisk::hasExtension(pathW, extW);
    ZKDisk::hasExtension(pathW, extC);
    ZKDisk::addSuffixToFileName(pathW, extW);
    ZKDisk::concatPathAndFileName(pathC, extW);
    ZKDisk::concatPathAndFileName(pathW, extC);
    ZKStringW key = pathW;
    ZKDisk::compareFileName_prepare(key);
    ZKDisk::compareFileName_prepared1(key, baseW);

    ZKDisk::hasExtension(pathC, extC);
    if (!extC.isEmpty()) {
        ZKStringC changedC = pathC;
        ZKDisk::changeExtension(changedC, extC);
        ZKStringC setC = pathC;
        if (ZKDisk::setExtension(setC, extC))
            ZKFuzz::check(ZKDisk::hasExtension(setC, extC), "an extension set is there");
    }
    if (!extC.contains('%'))
        ZKDisk::addSuffixToFileName(pathC, extC);
    return 0;
}
