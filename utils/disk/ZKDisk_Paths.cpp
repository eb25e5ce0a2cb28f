#include "ZKDisk.h"

#include "ZKStringServer.h"
#include "internal/ZKFormat.h"

#include <QDir>

#include <cstdarg>
#include <cstring>

namespace {

// Rewrites `from` into `to` directly in the storage `s` shares with its
// copies; false, with nothing written, when that storage is read-only
// (literals, fromRawData). Empty strings are left alone.
bool replaceInSharedStorage(const ZKStringC& s, char from, char to) {
    if (s.isEmpty())
        return true;
    // data_ptr() only hands out the pointer; neither the string nor its
    // sharing state changes here.
    QByteArray::DataPtr d = const_cast<ZKStringC&>(s).data_ptr();
    if (!d->isMutable())
        return false;
    char* p = d->data();
    const int n = d->size;
    for (int i = 0; i < n; ++i) {
        if (p[i] == from)
            p[i] = to;
    }
    return true;
}

// Kept: the byte forms write the slashes through the shared storage, so every
// copy of the argument sees them; only read-only storage gets a private copy.
ZKStringC unixifiedSharing(const ZKStringC& s) {
    ZKStringC result = s;
    if (!replaceInSharedStorage(result, '\\', '/'))
        result.replace('\\', '/');
    return result;
}

// The nine characters a file name cannot hold.
constexpr char kInvalidFileNameChars[9] = {'\\', '/', ':', '*', '?', '"', '<', '>', '|'};

ZKStringC formatWithoutArguments(const char* format, ...) {
    va_list args;
    va_start(args, format);
    ZKStringC result = ZKInternal::vformat4096(format, args);
    va_end(args);
    return result;
}

template <typename Str> int lastSeparator(const Str& path) {
    return path.findLast2('/', '\\');
}

template <typename Str> Str concatPath(const Str& folder, const Str& name) {
    Str result = folder;
    if (!folder.endsWith('/') && !folder.endsWith('\\'))
        result.append('/');
    result.append(name);
    return result;
}

template <typename Str>
void fileNameComponents(Str& folder, Str& name, Str& extension, const Str& path) {
    const Str p = path; // the outputs may alias `path`
    const int s = lastSeparator(p);
    const int d = p.lastIndexOf('.');
    if (s != -1) {
        folder = p.left(s + 1);
        if (d > s) {
            name = p.mid(s + 1, d - s - 1);
            extension = p.mid(d + 1);
        } else {
            name = p.mid(s + 1);
            extension.clear();
        }
        return;
    }
    folder.clear();
    if (d == -1) {
        name = p;
        extension.clear();
    } else {
        name = p.left(d);
        extension = p.mid(d + 1);
    }
}

enum class Component { Folder, Name };

template <typename Str> Str fileNameComponent(const Str& path, Component which) {
    Str folder, name, extension;
    fileNameComponents(folder, name, extension, path);
    return which == Component::Folder ? folder : name;
}

template <typename Str>
void pathComponents(Str& folder, Str& name, const Str& path, bool keepSeparator) {
    const Str p = path;
    const int s = lastSeparator(p);
    if (s == -1) {
        folder.clear();
        name = p;
        return;
    }
    folder = p.left(keepSeparator ? s + 1 : s);
    name = p.mid(s + 1);
}

template <typename Str> Str fileNameExtension(const Str& path) {
    const int d = path.lastIndexOf('.');
    if (d == -1 || lastSeparator(path) > d)
        return Str();
    return path.mid(d + 1);
}

template <typename Str> bool parentFolderInPlace(Str& inOut, bool keepSeparator) {
    const int s = lastSeparator(inOut);
    if (s == -1)
        return false;
    inOut.truncate(keepSeparator ? s + 1 : s);
    return true;
}

template <typename Str> bool removeFolder(Str& path) {
    const int s = lastSeparator(path);
    if (s != -1)
        path.remove(0, s + 1);
    return true;
}

template <typename Str> Str fileNameInPath(const Str& path, const Str& newName) {
    Str folder, name, extension;
    fileNameComponents(folder, name, extension, path);
    return concatPath(folder, newName);
}

template <typename Str> bool cutExtension(Str& name) {
    const int d = name.lastIndexOf('.');
    if (d == -1)
        return false;
    name.truncate(d);
    return true;
}

template <typename Str> Str incrementedFileName(const Str& path) {
    Str folder, name, extension;
    fileNameComponents(folder, name, extension, path);
    ZKStringServer::incrementSuffix(name, 1, 1);
    // Kept: the dot comes even without an extension; callers rely on it.
    name.append('.');
    name.append(extension);
    if (folder.isEmpty())
        return name;
    return concatPath(folder, name);
}

ZKStringC dottedExtension(const ZKStringC& extension) {
    if (extension.startsWith('.'))
        return extension;
    return ZKStringC(".") + extension;
}

} // namespace

bool ZKDisk::compareFileName(const ZKStringC& a, const ZKStringC& b) {
    const ZKStringC ua = unixifiedSharing(a);
    const ZKStringC ub = unixifiedSharing(b);
    return ua == ub;
}

bool ZKDisk::compareFileName(const ZKStringW& a, const ZKStringW& b) {
    return getUnixifiedFileName(a) == getUnixifiedFileName(b);
}

void ZKDisk::compareFileName_prepare(ZKStringW& s) {
    unixifyFileName(s);
    // Kept: ZKStringW::toLower leaves the text as it is, so prepared keys stay
    // case-sensitive, exactly like compareFileName.
    s.toLower();
}

bool ZKDisk::compareFileName_prepared1(const ZKStringW& key, const ZKStringW& b) {
    ZKStringW prepared = b;
    compareFileName_prepare(prepared);
    return key == prepared;
}

void ZKDisk::unixifyFileName(ZKStringC& s) {
    s = unixifiedSharing(s);
}

void ZKDisk::unixifyFileName(ZKStringW& s) {
    s.replace('\\', '/');
}

ZKStringC ZKDisk::getUnixifiedFileName(const ZKStringC& s) {
    return unixifiedSharing(s);
}

ZKStringW ZKDisk::getUnixifiedFileName(const ZKStringW& s) {
    ZKStringW result = s;
    unixifyFileName(result);
    return result;
}

void ZKDisk::windowsifyFileName(ZKStringC& s) {
    s.replace("/", "\\");
}

void ZKDisk::windowsifyFileName(ZKStringW& s) {
    s.replace('/', '\\');
}

ZKStringC ZKDisk::getWindowsifiedFileName(const ZKStringC& s) {
    ZKStringC result = s;
    windowsifyFileName(result);
    return result;
}

ZKStringW ZKDisk::getWindowsifiedFileName(const ZKStringW& s) {
    ZKStringW result = s;
    windowsifyFileName(result);
    return result;
}

ZKStringC ZKDisk::removeFilenameInvalidChars(const ZKStringC& s) {
    ZKStringC result;
    result.reserve(s.size() + 1);
    for (const char c : s) {
        if (std::memchr(kInvalidFileNameChars, c, sizeof kInvalidFileNameChars) == nullptr)
            result.append(c);
    }
    return result;
}

ZKStringW ZKDisk::removeFilenameInvalidChars(const ZKStringW& s) {
    return ZKStringServer::fromNonUnicode(removeFilenameInvalidChars(ZKStringServer::toAscii(s)));
}

ZKStringC ZKDisk::cleanPath(const ZKStringC& path) {
    return ZKStringServer::toAscii(QDir::cleanPath(QString::fromLatin1(path)));
}

ZKStringW ZKDisk::cleanPath(const ZKStringW& path) {
    return QDir::cleanPath(path);
}

ZKStringC ZKDisk::absolutePath(const ZKStringC& path, const ZKStringC& base, bool baseIsFile) {
    return ZKStringServer::toAscii(absolutePath(ZKStringServer::fromNonUnicode(path),
                                                ZKStringServer::fromNonUnicode(base), baseIsFile));
}

ZKStringW ZKDisk::absolutePath(const ZKStringW& path, const ZKStringW& base, bool baseIsFile) {
    if (!path.startsWith('.'))
        return cleanPath(path);
    ZKStringW folder = base;
    if (baseIsFile)
        getParentFolderFromFilename(folder, false);
    // Kept: only the first character goes, so "../x" resolves against the
    // folder itself, not its parent.
    return cleanPath(concatPath(folder, ZKStringW(path.mid(1))));
}

bool ZKDisk::isRelativePath(const ZKStringC& path) {
    return isRelativePath(ZKStringServer::fromNonUnicode(path));
}

bool ZKDisk::isRelativePath(const ZKStringW& path) {
    // Kept: "relative" means "begins with a dot", nothing more.
    return path.startsWith('.');
}

ZKStringC ZKDisk::concatPathAndFileName(const ZKStringC& folder, const ZKStringC& name) {
    return concatPath(folder, name);
}

ZKStringW ZKDisk::concatPathAndFileName(const ZKStringW& folder, const ZKStringW& name) {
    return concatPath(folder, name);
}

ZKStringW ZKDisk::concatPathAndFileName(const ZKStringC& folder, const ZKStringW& name) {
    return concatPath(ZKStringServer::fromNonUnicode(folder), name);
}

ZKStringW ZKDisk::concatPathAndFileName(const ZKStringW& folder, const ZKStringC& name) {
    return concatPath(folder, ZKStringServer::fromNonUnicode(name));
}

void ZKDisk::getFileNameComponents(ZKStringC& folder, ZKStringC& name, ZKStringC& extension,
                                   const ZKStringC& path) {
    fileNameComponents(folder, name, extension, path);
}

void ZKDisk::getFileNameComponents(ZKStringW& folder, ZKStringW& name, ZKStringW& extension,
                                   const ZKStringW& path) {
    fileNameComponents(folder, name, extension, path);
}

void ZKDisk::getPathComponents(ZKStringC& folder, ZKStringC& name, const ZKStringC& path,
                               bool keepSeparator) {
    pathComponents(folder, name, path, keepSeparator);
}

void ZKDisk::getPathComponents(ZKStringW& folder, ZKStringW& name, const ZKStringW& path,
                               bool keepSeparator) {
    pathComponents(folder, name, path, keepSeparator);
}

ZKStringC ZKDisk::getParentFolder(const ZKStringC& path) {
    return fileNameComponent(path, Component::Folder);
}

ZKStringW ZKDisk::getParentFolder(const ZKStringW& path) {
    return fileNameComponent(path, Component::Folder);
}

ZKStringC ZKDisk::getFileNameName(const ZKStringC& path) {
    return fileNameComponent(path, Component::Name);
}

ZKStringW ZKDisk::getFileNameName(const ZKStringW& path) {
    return fileNameComponent(path, Component::Name);
}

ZKStringC ZKDisk::getFileNameExtension(const ZKStringC& path) {
    return fileNameExtension(path);
}

ZKStringW ZKDisk::getFileNameExtension(const ZKStringW& path) {
    return fileNameExtension(path);
}

bool ZKDisk::getParentFolderFromFilename(ZKStringC& out, const ZKStringC& path,
                                         bool keepSeparator) {
    out = path;
    return parentFolderInPlace(out, keepSeparator);
}

bool ZKDisk::getParentFolderFromFilename(ZKStringW& out, const ZKStringW& path,
                                         bool keepSeparator) {
    out = path;
    return parentFolderInPlace(out, keepSeparator);
}

bool ZKDisk::getParentFolderFromFilename(ZKStringC& inOut, bool keepSeparator) {
    return parentFolderInPlace(inOut, keepSeparator);
}

bool ZKDisk::getParentFolderFromFilename(ZKStringW& inOut, bool keepSeparator) {
    return parentFolderInPlace(inOut, keepSeparator);
}

bool ZKDisk::removeFolderFromFilename(ZKStringC& path) {
    return removeFolder(path);
}

bool ZKDisk::removeFolderFromFilename(ZKStringW& path) {
    return removeFolder(path);
}

ZKStringC ZKDisk::changeFileNameInPath(const ZKStringC& path, const ZKStringC& newName) {
    return fileNameInPath(path, newName);
}

ZKStringW ZKDisk::changeFileNameInPath(const ZKStringW& path, const ZKStringW& newName) {
    return fileNameInPath(path, newName);
}

bool ZKDisk::setExtension(ZKStringC& name, const ZKStringC& extension) {
    if (extension.isEmpty()) {
        // Kept: an empty extension is a checked precondition that stops the
        // program with the message of the failed indexed access.
        qFatal("ASSERT: \"%s\" in file %s, line %d", "uint(i) < uint(size())", __FILE__, __LINE__);
    }
    const ZKStringC dotted = dottedExtension(extension);
    if (name.endsWith(dotted, false))
        return false;
    name.append(dotted);
    return true;
}

bool ZKDisk::setExtension(ZKStringW&, const ZKStringW&) {
    // Kept: the wide form does nothing, unlike the byte one; callers rely on it.
    return false;
}

bool ZKDisk::hasExtension(const ZKStringC& name, const ZKStringC& extension) {
    if (extension.isEmpty())
        return false;
    return name.endsWith(dottedExtension(extension), false);
}

bool ZKDisk::hasExtension(const ZKStringW& name, const ZKStringW& extension) {
    return hasExtension(ZKStringServer::toAscii(name), ZKStringServer::toAscii(extension));
}

bool ZKDisk::hasExtension(const ZKStringW& name, const ZKStringC& extension) {
    return hasExtension(name, ZKStringServer::fromNonUnicode(extension));
}

bool ZKDisk::changeExtension(ZKStringC& name, const ZKStringC& extension) {
    cutExtension(name);
    return setExtension(name, extension);
}

bool ZKDisk::changeExtension(ZKStringW& name, const ZKStringW& extension) {
    // Kept: the wide form has its own rule; it keeps the dot and never looks
    // at a dot in `extension`, so ".png" gives "a..png".
    const int d = name.lastIndexOf('.');
    if (d == -1)
        name.append('.');
    else
        name.truncate(d + 1);
    name.append(extension);
    return true;
}

bool ZKDisk::removeExtension(ZKStringC& name) {
    return cutExtension(name);
}

bool ZKDisk::removeExtension(ZKStringW& name) {
    return cutExtension(name);
}

ZKStringC ZKDisk::addSuffixToFileName(const ZKStringC& name, const ZKStringC& suffix) {
    // Kept: the byte suffix is a printf format ("%%" inserts one '%').
    const ZKStringC formatted = formatWithoutArguments(suffix.constData());
    const int d = name.lastIndexOf('.');
    ZKStringC result = name;
    if (d >= 0)
        result.insert(d, formatted);
    return result;
}

ZKStringW ZKDisk::addSuffixToFileName(const ZKStringW& name, const ZKStringW& suffix) {
    // Kept: the wide suffix is inserted literally, without formatting.
    ZKStringW result = name;
    result.insert(name.lastIndexOf('.'), suffix);
    return result;
}

ZKStringC ZKDisk::incrementFileName(const ZKStringC& path) {
    return incrementedFileName(path);
}

ZKStringW ZKDisk::incrementFileName(const ZKStringW& path) {
    return incrementedFileName(path);
}
