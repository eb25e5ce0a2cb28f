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

template <typename Str> void splitAndJoin(const Str& path, const Str& base, bool flag) {
    Str folder, name, extension;
    ZKDisk::getFileNameComponents(folder, name, extension, path);
    ZKFuzz::check(path.startsWith(folder), "the folder is the start of the path");
    ZKFuzz::check(folder.size() + name.size() + extension.size() <= path.size(),
                  "the components come from the path");
    ZKFuzz::check(ZKDisk::getParentFolder(path) == folder, "getParentFolder is the folder");
    ZKFuzz::check(ZKDisk::getFileNameName(path) == name, "getFileNameName is the name");
    const Str ext = ZKDisk::getFileNameExtension(path);
    ZKFuzz::check(path.endsWith(ext), "the extension ends the path");

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
